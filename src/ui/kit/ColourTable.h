// Every colour of the screen, by what it is for, in light and dark. Nothing else in the program names a colour value.
#pragma once

#include <QColor>

#include <vector>

/// What a colour is used for.
enum class Colour {
    window,
    sidebar,
    surface,
    field,
    readOnlyField,
    hairline,
    controlBorder,
    controlBorderHover,
    text,
    secondaryText,
    placeholder,
    icon,
    accent,
    accentHover,
    accentPressed,
    onAccent,
    accentText,
    accentTint,
    hoverVeil,
    pressedVeil,
    errorText,
    errorBorder,
    warningText,
    warningGround,
    warningLine,
    warningIcon,
    moneyBack,
    scrim,
    tooltip,
    focusRing,
};

enum class Shade { light, dark };

/// One colour as written down: a solid colour and how much of it covers the ground, in percent.
struct Tone {
    QRgb rgb;
    int percent = 100;
    QColor colour() const;
};

struct ColourRow {
    Colour use;
    /// What the style sheet calls it: "@name".
    const char* name;
    Tone light;
    Tone dark;
};

/// The table, in the order of the enum.
const std::vector<ColourRow>& colourTable();
QColor colourOf(Colour use, Shade shade);
/// The tint a status colour gives its row.
QColor statusTint(const QColor& status, Shade shade);
