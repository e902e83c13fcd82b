#include "documents/rtf/RtfFormat.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct ShownFont {
    const char* named;
    const char* family;
};
/// Fonts that are drawn in a family of ours with letters of the same widths. The first of each family is what the family is written as.
constexpr std::array shownFonts {ShownFont {"Helvetica", "Liberation Sans"}, ShownFont {"HelveticaNeue", "Liberation Sans"},
    ShownFont {"Helvetica Neue", "Liberation Sans"}, ShownFont {"Arial", "Liberation Sans"}, ShownFont {"", "Liberation Sans"},
    ShownFont {"Times", "Liberation Serif"}, ShownFont {"Times New Roman", "Liberation Serif"},
    ShownFont {"TimesNewRomanPS", "Liberation Serif"}, ShownFont {"Courier", "Liberation Mono"}, ShownFont {"Menlo", "Liberation Mono"},
    ShownFont {"Monaco", "Liberation Mono"}, ShownFont {"Courier New", "Liberation Mono"}};

constexpr qreal pointsOfAPixel = 0.75;

/// "Menlo-BoldItalic" is the family Menlo in the style BoldItalic.
QString familyPart(const QString& fontName)
{
    const qsizetype hyphen = fontName.lastIndexOf('-');
    return hyphen < 0 ? fontName : fontName.left(hyphen);
}

QString stylePart(const QString& fontName)
{
    const qsizetype hyphen = fontName.lastIndexOf('-');
    return hyphen < 0 ? QString() : fontName.mid(hyphen + 1);
}

/// A name for a family that no file has named.
QString nameForFamily(const QString& family)
{
    const auto shown =
        std::find_if(shownFonts.begin(), shownFonts.end(), [&](const ShownFont& font) { return family == QLatin1String(font.family); });
    if (shown != shownFonts.end())
        return QLatin1String(shown->named);
    QString name = family;
    name.remove(';');
    return name.contains('-') ? name + "-Regular" : name;
}

/// The name the file gave the font, as long as family and style are still those of the name.
QString fontNameOf(const QTextCharFormat& format, const QString& family, bool bold, bool italic)
{
    const QString given = format.stringProperty(rtf::fontNameProperty);
    if (given.isEmpty() || rtf::familyOf(given) != family)
        return nameForFamily(family);
    if ((bold || !rtf::isBoldByName(given)) && (italic || !rtf::isItalicByName(given)))
        return given;
    const QString plain = familyPart(given);
    return !plain.isEmpty() && !plain.contains('-') ? plain : nameForFamily(family);
}

qreal sizeOf(const QTextCharFormat& format, const QFont& base)
{
    qreal size = format.fontPointSize();
    if (size <= 0 && format.hasProperty(QTextFormat::FontPixelSize))
        size = format.intProperty(QTextFormat::FontPixelSize) * pointsOfAPixel;
    if (size <= 0)
        size = base.pointSizeF();
    return size > 0 ? std::clamp(std::round(size * 2) / 2, 1.0, 400.0) : 12;
}

QColor colourOf(const QBrush& brush)
{
    if (brush.style() == Qt::NoBrush)
        return {};
    const QColor colour = brush.color();
    return colour.isValid() ? QColor(colour.red(), colour.green(), colour.blue()) : QColor();
}

} // namespace

namespace rtf {

qreal unitsFromTwips(int twips)
{
    return twips / 15.0;
}

int twipsFromUnits(qreal units)
{
    return static_cast<int>(std::lround(units * 15));
}

qreal pointsFromTwips(int twips)
{
    return twips / 20.0;
}

int twipsFromPoints(qreal points)
{
    return static_cast<int>(std::lround(points * 20));
}

QString familyOf(const QString& fontName)
{
    const QString family = familyPart(fontName);
    const auto shown =
        std::find_if(shownFonts.begin(), shownFonts.end(), [&](const ShownFont& font) { return family == QLatin1String(font.named); });
    return shown == shownFonts.end() ? family : QLatin1String(shown->family);
}

bool isBoldByName(const QString& fontName)
{
    return stylePart(fontName).contains("Bold");
}

bool isItalicByName(const QString& fontName)
{
    const QString style = stylePart(fontName);
    return style.contains("Italic") || style.contains("Oblique");
}

QTextCharFormat formatOf(const CharacterStyle& style)
{
    QTextCharFormat format;
    format.setFontFamilies({familyOf(style.font)});
    format.setProperty(fontNameProperty, style.font);
    format.setFontPointSize(style.size);
    format.setFontWeight(style.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(style.italic);
    format.setFontUnderline(style.underline);
    format.setFontStrikeOut(style.strike);
    if (style.vertical != 0)
        format.setVerticalAlignment(style.vertical > 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
    if (style.colour.isValid())
        format.setForeground(style.colour);
    if (style.background.isValid())
        format.setBackground(style.background);
    if (!style.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(style.link);
    }
    return format;
}

QTextBlockFormat writtenPartOf(const QTextBlockFormat& format)
{
    // Formats compare their properties in the order they were set in.
    constexpr std::array written {QTextFormat::BlockAlignment, QTextFormat::BlockLeftMargin, QTextFormat::BlockRightMargin,
        QTextFormat::TextIndent, QTextFormat::BlockTopMargin, QTextFormat::BlockBottomMargin, QTextFormat::TabPositions};
    QTextBlockFormat result;
    for (const QTextFormat::Property property : written) {
        if (format.hasProperty(property))
            result.setProperty(property, format.property(property));
    }
    if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
        result.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    return result;
}

CharacterStyle styleOf(const QTextCharFormat& format, const QFont& base)
{
    CharacterStyle style;
    const QString family = format.fontFamilies().toStringList().value(0);
    style.size = sizeOf(format, base);
    style.bold = format.fontWeight() >= QFont::DemiBold;
    style.italic = format.fontItalic();
    style.font = fontNameOf(format, family.isEmpty() ? base.family() : family, style.bold, style.italic);
    style.underline = format.fontUnderline();
    style.strike = format.fontStrikeOut();
    if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript)
        style.vertical = 1;
    else if (format.verticalAlignment() == QTextCharFormat::AlignSubScript)
        style.vertical = -1;
    style.colour = colourOf(format.foreground());
    style.background = colourOf(format.background());
    if (format.isAnchor())
        style.link = format.anchorHref();
    return style;
}

} // namespace rtf
