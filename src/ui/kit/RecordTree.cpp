#include "ui/kit/RecordTree.h"

#include "ui/kit/TableHeader.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace {

/// After the chevron's column the text of the first column needs hardly any more room.
constexpr int insetAfterChevron = 2;

} // namespace

RecordTree::RecordTree(QWidget* parent) : QTreeView(parent), m_header(new TableHeader(this)), m_delegate(new RowDelegate(this))
{
    setHeader(m_header);
    m_header->setStretchLastSection(false);
    m_header->setFirstInset(levelWidth + 2);
    setItemDelegate(m_delegate);
    m_delegate->setGround(RowDelegate::Ground::view);
    m_delegate->setFirstInset(insetAfterChevron);
    setIndentation(levelWidth);
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
}

void RecordTree::setSorted(int column, Qt::SortOrder order)
{
    m_header->setSortIndicatorShown(true);
    m_header->setSortIndicator(column, order);
}

void RecordTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QRect row(0, option.rect.top(), viewport()->width(), option.rect.height());
    m_delegate->paintGround(painter, row, index, selectionModel() && selectionModel()->isSelected(index));
    QTreeView::drawRow(painter, option, index);
}

void RecordTree::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    if (!model()->hasChildren(index))
        return;
    const bool filled = selectionModel()->isSelected(index) && m_delegate->isActive();
    const QPointF middle(rect.right() - 9, rect.center().y() + 0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(themeColour(filled ? Colour::onAccent : Colour::secondaryText), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (isExpanded(index))
        painter->drawPolyline(QPolygonF({middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)}));
    else
        painter->drawPolyline(QPolygonF({middle + QPointF(-2, -4), middle + QPointF(2, 0), middle + QPointF(-2, 4)}));
    painter->restore();
}

void RecordTree::focusInEvent(QFocusEvent* event)
{
    QTreeView::focusInEvent(event);
    viewport()->update();
}

void RecordTree::focusOutEvent(QFocusEvent* event)
{
    QTreeView::focusOutEvent(event);
    viewport()->update();
}
