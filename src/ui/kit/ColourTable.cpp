#include "ui/kit/ColourTable.h"

QColor Tone::colour() const
{
    QColor colour(rgb);
    colour.setAlphaF(float(percent) / 100.0F);
    return colour;
}

const std::vector<ColourRow>& colourTable()
{
    static const std::vector<ColourRow> table {
        {Colour::window, "window", {0xf5f6f8}, {0x1c1e23}},
        {Colour::sidebar, "sidebar", {0xeef0f3}, {0x212429}},
        {Colour::surface, "surface", {0xffffff}, {0x24272d}},
        {Colour::field, "field", {0xffffff}, {0x2b2f36}},
        {Colour::readOnlyField, "readOnlyField", {0xeff1f4}, {0x24272d}},
        {Colour::hairline, "hairline", {0xe2e5ea}, {0x34383f}},
        {Colour::controlBorder, "controlBorder", {0xc8ced8}, {0x484e59}},
        {Colour::controlBorderHover, "controlBorderHover", {0xa9b2c0}, {0x636b79}},
        {Colour::text, "text", {0x1a1f29}, {0xe7e9ed}},
        {Colour::secondaryText, "secondaryText", {0x586173}, {0xa8b0bd}},
        {Colour::placeholder, "placeholder", {0x7c8596}, {0x858e9c}},
        {Colour::icon, "icon", {0x3d4554}, {0xc3c9d3}},
        {Colour::accent, "accent", {0x2a62d6}, {0x3470e0}},
        {Colour::accentHover, "accentHover", {0x2356c2}, {0x4480ee}},
        {Colour::accentPressed, "accentPressed", {0x1d49a8}, {0x2b61c6}},
        {Colour::onAccent, "onAccent", {0xffffff}, {0xffffff}},
        {Colour::accentText, "accentText", {0x2156c4}, {0x8db5ff}},
        {Colour::accentTint, "accentTint", {0x2a62d6, 11}, {0x588efa, 20}},
        {Colour::hoverVeil, "hoverVeil", {0x18243c, 5}, {0xffffff, 5}},
        {Colour::pressedVeil, "pressedVeil", {0x18243c, 12}, {0xffffff, 11}},
        {Colour::errorText, "errorText", {0xb02a22}, {0xff938a}},
        {Colour::errorBorder, "errorBorder", {0xc2372e}, {0xd1493f}},
        {Colour::warningText, "warningText", {0x7a4f00}, {0xf0c572}},
        {Colour::warningGround, "warningGround", {0xfff6e1}, {0x373020}},
        {Colour::warningLine, "warningLine", {0xefd595}, {0x5c4c26}},
        {Colour::warningIcon, "warningIcon", {0xc98500}, {0xf0c572}},
        {Colour::moneyBack, "moneyBack", {0x1b7f47}, {0x6fd09b}},
        {Colour::scrim, "scrim", {0x161c28, 28}, {0x000000, 47}},
        {Colour::tooltip, "tooltip", {0x262b35}, {0x3a3f49}},
        {Colour::focusRing, "focusRing", {0x2a62d6, 45}, {0x8db5ff, 60}},
    };
    return table;
}

QColor colourOf(Colour use, Shade shade)
{
    const ColourRow& row = colourTable()[size_t(use)];
    return shade == Shade::dark ? row.dark.colour() : row.light.colour();
}

QColor statusTint(const QColor& status, Shade shade)
{
    QColor tint = status;
    tint.setAlphaF(shade == Shade::dark ? 0.15F : 0.11F);
    return tint;
}
