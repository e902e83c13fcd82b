// Shows the colours that texts were given so that they can be read on the present ground, light or dark. The document keeps the colours
// as they are.
#pragma once

#include <QColor>
#include <QSyntaxHighlighter>

class ReadableColours : public QSyntaxHighlighter {
    Q_OBJECT
public:
    /// Works on the document that is set.
    explicit ReadableColours(QObject* parent);

    /// The colour, or the nearest lighter or darker one that has a contrast of 4.5 : 1 on the ground.
    static QColor readable(const QColor& colour, const QColor& ground);

protected:
    void highlightBlock(const QString& text) override;
};
