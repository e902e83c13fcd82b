#include "documents/TextPages.h"

#include "documents/PageMarks.h"

#include <QPainter>

namespace {

/// The setup of the text between title and number.
PageSetup betweenMarks(const PageSetup& setup)
{
    PageSetup inner = setup;
    inner.verticallyCentred = false;
    inner.margins = setup.margins + QMarginsF(0, pageMarks::titleHeight, 0, pageMarks::footHeight);
    return inner;
}

} // namespace

TextPages::TextPages(const QTextDocument& text, const QString& title, const PageSetup& setup)
    : m_title(title)
    , m_setup(setup)
    , m_body(QRectF(QPointF(), setup.sheet()).marginsRemoved(setup.margins))
    , m_pages(text, betweenMarks(setup))
{
}

void TextPages::paintPage(QPainter& painter, int page) const
{
    painter.save();
    painter.setPen(Qt::black);
    pageMarks::paintTitle(painter, m_body, m_title);
    painter.restore();
    m_pages.paintPage(painter, page);
    painter.save();
    painter.setPen(Qt::black);
    pageMarks::paintFoot(painter, m_body, {}, page, pageCount());
    painter.restore();
}

bool TextPages::paint(QPagedPaintDevice& device) const
{
    return paintPages(device, m_setup, pageCount(), [this](QPainter& painter, int page) { paintPage(painter, page); });
}
