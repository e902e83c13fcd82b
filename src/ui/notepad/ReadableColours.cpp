#include "ui/notepad/ReadableColours.h"

#include "ui/kit/Theme.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace {

constexpr double wantedContrast = 4.5;
constexpr float lightnessStep = 0.02f;

double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrastBetween(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

ReadableColours::ReadableColours(QObject* parent) : QSyntaxHighlighter(parent)
{
    connect(&Theme::current(), &Theme::changed, this, &QSyntaxHighlighter::rehighlight);
}

QColor ReadableColours::readable(const QColor& colour, const QColor& ground)
{
    // Towards white or black, whichever stands out more.
    const float step = contrastBetween(Qt::white, ground) > contrastBetween(Qt::black, ground) ? lightnessStep : -lightnessStep;
    QColor shown = colour;
    while (contrastBetween(shown, ground) < wantedContrast) {
        const float lightness = shown.lightnessF();
        if (lightness <= 0 || lightness >= 1)
            return step > 0 ? Qt::white : Qt::black;
        shown.setHslF(std::max(0.0f, shown.hslHueF()), shown.hslSaturationF(), std::clamp(lightness + step, 0.0f, 1.0f));
    }
    return shown;
}

void ReadableColours::highlightBlock(const QString&)
{
    const QTextBlock block = currentBlock();
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        const bool hasColour = format.foreground().style() != Qt::NoBrush;
        const bool hasGround = format.background().style() != Qt::NoBrush;
        if (!hasColour && !hasGround && !format.isAnchor())
            continue;
        const QColor plain = themeColour(format.isAnchor() ? Colour::accentText : Colour::text);
        const QColor ground = hasGround ? format.background().color() : themeColour(Colour::surface);
        QTextCharFormat shown;
        shown.setForeground(readable(hasColour ? format.foreground().color() : plain, ground));
        setFormat(it.fragment().position() - block.position(), it.fragment().length(), shown);
    }
}
