// What the reader and the writer of rich text share: units, limits, fonts, and what they keep of a text's format.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

namespace rtf {

/// In twips.
inline constexpr int largestIndent = 20'000;
inline constexpr int largestTab = 40'000;
inline constexpr int widestTable = 200'000;
inline constexpr int largestPaper = 60'000;
inline constexpr int largestPicture = 100'000;

/// Twips, twentieths of a point, to the layout's unit, the 96th of an inch, and back.
qreal unitsFromTwips(int twips);
int twipsFromUnits(qreal units);
qreal pointsFromTwips(int twips);
int twipsFromPoints(qreal points);

/// What formats of a document carry besides what the screen shows, so that it can be written again as it was read.
enum Property {
    /// Of a text: its font as the file calls it.
    fontNameProperty = 0x100000 + 0x5200 /* QTextFormat::UserProperty */,
    /// Of a picture: its file name in the package.
    pictureNameProperty,
    /// Of a paragraph that only stands there because a table needs one before it.
    placeForTableProperty,
    /// Of a table's cell: its right edge, whether it has a border, whether it only fills up a row that ends sooner.
    cellEdgeProperty,
    cellBorderProperty,
    cellFillsRowProperty,
    /// Of the whole document, in points.
    paperProperty,
    marginsProperty
};

/// How a text looks, as far as it is read and written.
struct CharacterStyle {
    /// As the file calls it: "Helvetica-Bold". The family and the style that the name carries are bold and italic below as well.
    QString font;
    qreal size = 12;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    /// 1 above the line, -1 below it.
    int vertical = 0;
    /// Not valid where it is the reader's own.
    QColor colour;
    QColor background;
    QString link;
};

QTextCharFormat formatOf(const CharacterStyle& style);
/// base: the font of texts whose format names none.
CharacterStyle styleOf(const QTextCharFormat& format, const QFont& base);

/// What a file can say of a paragraph, and only what was said of this one. Formats that say the same are equal.
QTextBlockFormat writtenPartOf(const QTextBlockFormat& format);

/// The family the screen shows for the font the file names.
QString familyOf(const QString& fontName);
bool isBoldByName(const QString& fontName);
bool isItalicByName(const QString& fontName);

} // namespace rtf
