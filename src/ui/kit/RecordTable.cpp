#include "ui/kit/RecordTable.h"

#include "ui/kit/TableHeader.h"
#include "ui/kit/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

namespace {

int firstInsetOf(RecordTable::Place place)
{
    switch (place) {
    case RecordTable::Place::page: return 20;
    case RecordTable::Place::sheet: return 24;
    case RecordTable::Place::card: break;
    }
    return RowDelegate::inset;
}

} // namespace

RecordTable::RecordTable(Place place, QWidget* parent)
    : QTableView(parent)
    , m_header(new TableHeader(this))
    , m_delegate(new RowDelegate(this))
{
    setHorizontalHeader(m_header);
    setItemDelegate(m_delegate);
    m_header->setFirstInset(firstInsetOf(place));
    m_delegate->setFirstInset(firstInsetOf(place));
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setRowHeight(m_delegate->rowHeight());
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    verticalScrollBar()->setSingleStep(m_delegate->rowHeight());
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setUnit(RowDelegate::Unit::rows);
}

void RecordTable::setRowHeight(int height)
{
    m_delegate->setRowHeight(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void RecordTable::setVisibleRows(int count)
{
    setFixedHeight(TableHeader::rowHeight + count * m_delegate->rowHeight());
}

void RecordTable::setUnit(RowDelegate::Unit unit)
{
    m_delegate->setUnit(unit);
    const bool byCell = unit == RowDelegate::Unit::cells;
    setSelectionMode(byCell ? SingleSelection : ExtendedSelection);
    setEditTriggers(byCell ? EditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed) : EditTriggers(NoEditTriggers));
}

void RecordTable::setSorted(int column, Qt::SortOrder order)
{
    m_header->setSortIndicatorShown(true);
    m_header->setSortIndicator(column, order);
}

void RecordTable::clearSorted()
{
    m_header->setSortIndicatorShown(false);
}

void RecordTable::setEmptyText(const QString& text)
{
    m_emptyText = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void RecordTable::paintEmptyText()
{
    if (m_emptyText.isEmpty() || (model() && model()->rowCount(rootIndex()) > 0))
        return;
    QPainter painter(viewport());
    painter.setPen(themeColour(Colour::secondaryText));
    const QRect row(0, 0, viewport()->width(), m_delegate->rowHeight());
    painter.drawText(row.adjusted(m_delegate->firstInset(), 0, -RowDelegate::inset, 0), Qt::AlignLeft | Qt::AlignVCenter, m_emptyText);
}

void RecordTable::keyPressEvent(QKeyEvent* event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && !event->isAutoRepeat();
    // A cell's editor passes on the Return that closes it.
    const bool isOurs = isPlain && m_delegate->unit() == RowDelegate::Unit::cells && state() != EditingState;
    const bool removes = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    const bool edits = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isOurs && removes)
        Q_EMIT removalWanted();
    else if (isOurs && edits && (currentIndex().flags() & Qt::ItemIsEditable))
        edit(currentIndex());
    else
        QTableView::keyPressEvent(event);
}

void RecordTable::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    paintEmptyText();
    const int end = m_header->length() - m_header->offset();
    const int rest = viewport()->width() - end;
    if (!model() || rest <= 0)
        return;
    // Rows go on to the edge where the columns end before it.
    QPainter painter(viewport());
    for (int row = qMax(0, rowAt(0)); row < model()->rowCount(rootIndex()); ++row) {
        const int top = rowViewportPosition(row);
        if (top >= viewport()->height())
            break;
        const QModelIndex first = model()->index(row, 0, rootIndex());
        m_delegate->paintGround(&painter, QRect(end, top, rest, rowHeight(row)), first, selectionModel()->isSelected(first));
    }
}

void RecordTable::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    viewport()->update();
}

void RecordTable::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

QModelIndex RecordTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveNext || action == MovePrevious)
        return nextEditable(action == MoveNext ? 1 : -1);
    return QTableView::moveCursor(action, modifiers);
}

QModelIndex RecordTable::nextEditable(int step) const
{
    if (!model() || !currentIndex().isValid())
        return {};
    const int columns = model()->columnCount(rootIndex());
    const int cells = columns * model()->rowCount(rootIndex());
    int place = currentIndex().row() * columns + m_header->visualIndex(currentIndex().column());
    for (place += step; place >= 0 && place < cells; place += step) {
        const QModelIndex cell = model()->index(place / columns, m_header->logicalIndex(place % columns), rootIndex());
        if (!isColumnHidden(cell.column()) && (cell.flags() & Qt::ItemIsEditable))
            return cell;
    }
    return {};
}

void RecordTable::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    updateRowOf(previous);
    updateRowOf(current);
}

void RecordTable::updateRowOf(const QModelIndex& index)
{
    if (index.isValid())
        viewport()->update(0, rowViewportPosition(index.row()), viewport()->width(), rowHeight(index.row()));
}
