// A document on its paper, editable: as wide as the sheet, as long as the text needs.
#pragma once

#include "documents/Paginator.h"

#include <QTextEdit>

class BackgroundImageTextView : public QTextEdit {
    Q_OBJECT
public:
    explicit BackgroundImageTextView(QWidget* parent = nullptr);

    /// The document stays the caller's.
    void show(QTextDocument& document, const PageSetup& setup, const PageBackground& background);

Q_SIGNALS:
    /// The place that is being typed at, in the view's own coordinates.
    void caretMoved(const QRect& caret);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void fitHeight();

    PageSetup m_setup;
    PageBackground m_background;
};
