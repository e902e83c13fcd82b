// A rich-text document between its file and the screen: paragraphs of runs, and tables of cells of paragraphs.
#pragma once

#include <QImage>
#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <map>
#include <memory>
#include <variant>
#include <vector>

class QTextDocument;

struct RichRun {
    QString text;
    QTextCharFormat format;
    /// File name of a picture that stands here instead of text; size in layout units, empty for its own.
    QString picture;
    QSizeF pictureSize;

    bool operator==(const RichRun&) const = default;
};

struct RichParagraph {
    QTextBlockFormat format;
    std::vector<RichRun> runs;

    bool operator==(const RichParagraph&) const = default;
};

struct RichCell {
    std::vector<RichParagraph> paragraphs;
    /// Right edge in layout units from the left of the table, 0 when not given.
    qreal rightEdge = 0;
    bool bordered = false;

    bool operator==(const RichCell&) const = default;
};

struct RichTable {
    std::vector<std::vector<RichCell>> rows;

    bool operator==(const RichTable&) const = default;
};

struct RichText {
    std::vector<std::variant<RichParagraph, RichTable>> blocks;
    /// In points; empty when the file does not say.
    QSizeF paper;
    QMarginsF margins;
    bool hasMargins = false;

    bool operator==(const RichText&) const = default;
};

/// Those in the cells of tables too, in their order.
template <class Use>
void forEachParagraph(RichText& text, const Use& use)
{
    for (auto& block : text.blocks) {
        if (auto* paragraph = std::get_if<RichParagraph>(&block)) {
            use(*paragraph);
            continue;
        }
        for (std::vector<RichCell>& row : std::get<RichTable>(block).rows) {
            for (RichCell& cell : row) {
                for (RichParagraph& inCell : cell.paragraphs)
                    use(inCell);
            }
        }
    }
}

/// A document that loads nothing from anywhere: only pictures put into it are shown.
std::unique_ptr<QTextDocument> makeSealedDocument();

/// The document with the pictures of the folder; a picture that is missing or too large leaves an empty place.
std::unique_ptr<QTextDocument> makeDocument(const RichText& text, const QString& pictureFolder);

/// A document taken apart again, to be written.
struct DocumentParts {
    RichText text;
    /// The pictures as the document shows them, by the file names that the text gives them. Those that could not be read are missing.
    std::map<QString, QImage> pictures;
};
/// What makeDocument made comes back the same. Where the document holds more than a file can (lists, frames, tables in cells), its text stays.
/// A picture that no file has yet gets a name made from its contents.
DocumentParts takeApart(const QTextDocument& document);

/// A file name that the same picture always gets.
QString nameFromContents(const QImage& picture);
/// The file in the package that a picture's name means, whatever folders it speaks of.
QString pictureFileName(const QString& name);

/// The same document once more, pictures included, sealed as well.
std::unique_ptr<QTextDocument> copyOf(const QTextDocument& document);

/// The words of a document: paragraphs on lines of their own, the cells of a row one behind the other, each ended by U+001F; U+FFFC for
/// a picture.
QString plainTextOf(const QTextDocument& document);
