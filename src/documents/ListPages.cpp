#include "documents/ListPages.h"

#include "documents/PageMarks.h"
#include "foundation/Text.h"
#include "storage/qvDataSource.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

// Points
constexpr qreal rowHeight = 15;
constexpr qreal headingHeight = 18;
constexpr qreal columnGap = 8;

const QColor ruleColour(0xb0, 0xb0, 0xb0);

/// A cell is one line, whatever its text has in it.
QString oneLine(const std::string& text)
{
    return toQString(text).simplified();
}

} // namespace

ListPages::ListPages(const qvDataSource& list, const QString& title, const PageSetup& setup) : m_list(list), m_title(title), m_setup(setup)
{
    const QRectF paper(QPointF(), setup.sheet());
    m_body = paper.marginsRemoved(setup.margins);
    layOutColumns();
}

/// As wide on paper, in proportion, as on screen.
void ListPages::layOutColumns()
{
    const std::vector<const ListColumn*> shown = m_list.list.visibleColumns();
    if (shown.empty())
        return;
    qreal onScreen = 0;
    for (const ListColumn* column : shown)
        onScreen += std::max(1, column->width);
    const qreal room = std::max(1.0, m_body.width() - columnGap * static_cast<qreal>(shown.size() - 1));
    qreal left = 0;
    for (const ListColumn* column : shown) {
        const qreal width = room * std::max(1, column->width) / onScreen;
        m_columns.push_back({column, left, width});
        left += width + columnGap;
    }
}

qreal ListPages::rowsTop(int page) const
{
    return m_body.top() + (page == 0 ? pageMarks::titleHeight : 0) + headingHeight;
}

int ListPages::rowsOn(int page) const
{
    return std::max(1, static_cast<int>((m_body.bottom() - pageMarks::footHeight - rowsTop(page)) / rowHeight));
}

int ListPages::firstRowOn(int page) const
{
    return page == 0 ? 0 : rowsOn(0) + (page - 1) * rowsOn(1);
}

int ListPages::pageCount() const
{
    const int left = m_list.numberOfRows() - rowsOn(0);
    return left <= 0 ? 1 : 1 + (left + rowsOn(1) - 1) / rowsOn(1);
}

void ListPages::paintCell(QPainter& painter, const Column& column, const QString& text, qreal top) const
{
    const QRectF cell(m_body.left() + column.left, top, column.width, rowHeight);
    const QString fitting = QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, cell.width());
    const auto side = column.shown->align == ColumnAlign::right ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(cell, side | Qt::AlignVCenter | Qt::TextSingleLine, fitting);
}

void ListPages::paintHeadings(QPainter& painter, qreal top) const
{
    painter.setFont(pageMarks::font(9, QFont::DemiBold));
    for (const Column& column : m_columns)
        paintCell(painter, column, column.shown->heading, top);
    painter.setPen(QPen(ruleColour, 0.5));
    const qreal rule = top + headingHeight - 2;
    painter.drawLine(QPointF(m_body.left(), rule), QPointF(m_body.right(), rule));
    painter.setPen(Qt::black);
}

void ListPages::paintRow(QPainter& painter, int row, qreal top) const
{
    for (const Column& column : m_columns)
        paintCell(painter, column, oneLine(m_list.objectValue(column.shown->identifier, row)), top);
}

void ListPages::paintPage(QPainter& painter, int page) const
{
    painter.save();
    painter.setPen(Qt::black);
    if (page == 0)
        pageMarks::paintTitle(painter, m_body, m_title);
    paintHeadings(painter, rowsTop(page) - headingHeight);
    painter.setFont(pageMarks::font(9));
    const int first = firstRowOn(page);
    const int end = std::min(first + rowsOn(page), m_list.numberOfRows());
    for (int row = first; row < end; ++row)
        paintRow(painter, row, rowsTop(page) + (row - first) * rowHeight);
    pageMarks::paintFoot(painter, m_body, page == 0 ? QString() : m_title, page, pageCount());
    painter.restore();
}

bool ListPages::paint(QPagedPaintDevice& device) const
{
    return paintPages(device, m_setup, pageCount(), [this](QPainter& painter, int page) { paintPage(painter, page); });
}
