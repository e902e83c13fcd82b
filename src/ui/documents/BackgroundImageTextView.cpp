#include "ui/documents/BackgroundImageTextView.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Theme.h"

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QPainter>
#include <QTextDocument>
#include <QTextFrame>

namespace {

qreal screenUnits(qreal points)
{
    constexpr qreal dotsPerInch = 96;
    constexpr qreal pointsPerInch = 72;
    return points * dotsPerInch / pointsPerInch;
}

} // namespace

BackgroundImageTextView::BackgroundImageTextView(QWidget* parent) : QTextEdit(parent)
{
    setObjectName("invoiceTextView");
    setAccessibleName(tr("Document"));
    setFrameShape(QFrame::NoFrame);
    // The caret shows where typing goes; a ring around the sheet would say nothing.
    FocusRing::exempt(this);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Paper is white in the dark as well.
    setStyleSheet("QTextEdit { background: transparent; border: none; color: black; padding: 0 }");
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { Q_EMIT caretMoved(cursorRect()); });
}

void BackgroundImageTextView::show(QTextDocument& document, const PageSetup& setup, const PageBackground& background)
{
    m_setup = setup;
    m_background = background;
    QTextFrameFormat format = document.rootFrame()->frameFormat();
    format.setLeftMargin(screenUnits(setup.margins.left()));
    format.setTopMargin(screenUnits(setup.margins.top()));
    format.setRightMargin(screenUnits(setup.margins.right()));
    format.setBottomMargin(screenUnits(setup.margins.bottom()));
    document.rootFrame()->setFrameFormat(format);
    document.clearUndoRedoStacks();
    setDocument(&document);
    setFixedWidth(qRound(screenUnits(setup.sheet().width())));
    connect(document.documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this, &BackgroundImageTextView::fitHeight);
    fitHeight();
}

void BackgroundImageTextView::fitHeight()
{
    const int paper = qRound(screenUnits(m_setup.sheet().height()));
    setFixedHeight(std::max(paper, qRound(document()->size().height())));
}

void BackgroundImageTextView::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(viewport());
        painter.fillRect(event->rect(), Qt::white);
        const QMarginsF& margins = m_setup.margins;
        const QRectF area = QRectF(viewport()->rect())
                                .adjusted(screenUnits(margins.left()), screenUnits(margins.top()), -screenUnits(margins.right()),
                                    -screenUnits(margins.bottom()));
        painter.save();
        painter.translate(area.topLeft());
        painter.scale(screenUnits(1), screenUnits(1));
        paintPageBackground(painter, m_background, {QPointF(), area.size() / screenUnits(1)});
        painter.restore();
    }
    QTextEdit::paintEvent(event);
    QPainter edge(viewport());
    edge.setPen(themeColour(Colour::hairline));
    edge.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

bool BackgroundImageTextView::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasText();
}

void BackgroundImageTextView::insertFromMimeData(const QMimeData* source)
{
    // Words only: what other programs put beside them may want to load things.
    insertPlainText(source->text());
}
