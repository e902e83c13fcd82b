// A rich-text document between its file and the screen: paragraphs of runs, and tables of cells of paragraphs.
#pragma once

#include <QImage>
#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <memory>
#include <variant>
#include <vector>

class QTextDocument;

struct RichRun {
    QString text;
    QTextCharFormat format;
    /// File name of a picture that stands here instead of text; size in layout units, 0 for its own.
    QString picture;
    QSizeF pictureSize;
};

struct RichParagraph {
    QTextBlockFormat format;
    std::vector<RichRun> runs;
};

struct RichCell {
    std::vector<RichParagraph> paragraphs;
    /// Right edge in layout units from the left of the table, 0 when not given.
    qreal rightEdge = 0;
    bool bordered = false;
};

struct RichTable {
    std::vector<std::vector<RichCell>> rows;
};

struct RichText {
    std::vector<std::variant<RichParagraph, RichTable>> blocks;
    /// In points; empty when the file does not say.
    QSizeF paper;
    QMarginsF margins;
    bool hasMargins = false;
};

/// A document that loads nothing from anywhere: only pictures put into it are shown.
std::unique_ptr<QTextDocument> makeSealedDocument();

/// The document with the pictures of the folder; a picture that is missing or too large leaves an empty place.
std::unique_ptr<QTextDocument> makeDocument(const RichText& text, const QString& pictureFolder);

/// The same document once more, pictures included, sealed as well.
std::unique_ptr<QTextDocument> copyOf(const QTextDocument& document);

/// The words of a document: paragraphs on lines of their own, the cells of a row one behind the other, each ended by U+001F; U+FFFC for
/// a picture.
QString plainTextOf(const QTextDocument& document);
