// The program's icons: one set of line drawings, coloured when they are painted, so that they follow light and dark by themselves.
#pragma once

#include "ui/kit/ColourTable.h"

#include <QIcon>

enum class IconRole {
    /// On windows, buttons and bars.
    normal,
    /// In rows and fields.
    secondary,
    placeholder,
    /// On the accent fill.
    onAccent,
    /// Accent as a line colour: the chosen page, a text button.
    accent,
    warning,
    warningText,
    error,
};

class Icons {
public:
    /// An icon that is sharp at 16, 22 and 32 logical pixels on any screen. Disabled it turns grey; selected, a normal one takes the colour
    /// of the chosen page and a secondary one that of text on the accent.
    /// A name that is not part of the program gives an empty icon and a line in the log.
    static QIcon get(const QString& name, IconRole role = IconRole::normal);
    /// The same for painting by hand, in a colour of one's own.
    static QPixmap pixmap(const QString& name, const QColor& colour, int size, qreal devicePixelRatio);
    static bool exists(const QString& name);
    /// Every name that get() knows.
    static QStringList names();
    static Colour colourOfRole(IconRole role, QIcon::Mode mode);
};
