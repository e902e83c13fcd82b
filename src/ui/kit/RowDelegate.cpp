#include "ui/kit/RowDelegate.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Icons.h"
#include "ui/kit/Look.h"
#include "ui/kit/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTableView>
#include <QToolTip>
#include <QTreeView>

namespace {

const QHeaderView* columnsOf(const QAbstractItemView* view)
{
    if (const auto* table = qobject_cast<const QTableView*>(view))
        return table->horizontalHeader();
    if (const auto* tree = qobject_cast<const QTreeView*>(view))
        return tree->header();
    return nullptr;
}

} // namespace

RowDelegate::RowDelegate(QAbstractItemView* view) : QStyledItemDelegate(view), m_view(view)
{
    view->setMouseTracking(true);
    view->viewport()->installEventFilter(this);
    connect(view, &QAbstractItemView::entered, this, &RowDelegate::hover);
    connect(view, &QAbstractItemView::viewportEntered, this, [this] { hover({}); });
}

void RowDelegate::setSteeredBy(QWidget* field)
{
    m_steering = field;
    field->installEventFilter(this);
    m_view->viewport()->update();
}

bool RowDelegate::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view->viewport()) {
        if (event->type() == QEvent::Leave)
            hover({});
        return false;
    }
    if (watched == m_steering) {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            m_view->viewport()->update();
        return false;
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

void RowDelegate::hover(const QModelIndex& index)
{
    const QModelIndex before = m_hovered;
    m_hovered = index.siblingAtColumn(0);
    if (before == m_hovered)
        return;
    updateRow(before);
    updateRow(m_hovered);
}

void RowDelegate::updateRow(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QRect cell = m_view->visualRect(index);
    m_view->viewport()->update(0, cell.top(), m_view->viewport()->width(), cell.height());
}

bool RowDelegate::isActive() const
{
    const QWidget* focus = QApplication::focusWidget();
    if (!focus || !m_view->isActiveWindow())
        return false;
    return focus == m_view || m_view->isAncestorOf(focus) || focus == m_steering;
}

bool RowDelegate::isFirstColumn(const QModelIndex& index) const
{
    const QHeaderView* columns = columnsOf(m_view);
    if (!columns)
        return index.column() == 0;
    for (int place = 0; place < columns->visualIndex(index.column()); ++place) {
        if (!columns->isSectionHidden(columns->logicalIndex(place)))
            return false;
    }
    return true;
}

bool RowDelegate::isHovered(const QModelIndex& index) const
{
    return m_hovered.isValid() && m_hovered.row() == index.row() && m_hovered.parent() == index.parent();
}

QColor RowDelegate::statusOf(const QModelIndex& index) const
{
    return index.siblingAtColumn(0).data(m_roles.statusColour).value<QColor>();
}

void RowDelegate::paintGround(QPainter* painter, const QRect& rect, const QModelIndex& index, bool selected) const
{
    const QColor status = statusOf(index);
    const bool filled = selected && m_unit == Unit::rows && isActive();
    if (filled) {
        painter->fillRect(rect, themeColour(Colour::accent));
        return;
    }
    const bool tinted = selected && m_unit == Unit::rows;
    if (status.isValid() && !tinted)
        painter->fillRect(rect, Theme::current().rowTint(status));
    if (selected)
        painter->fillRect(rect, themeColour(Colour::accentTint));
    else if (isHovered(index))
        painter->fillRect(rect, themeColour(Colour::hoverVeil));
    if (!tinted)
        painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), themeColour(Colour::hairline));
}

QRect RowDelegate::textRect(const QRect& cell, const QModelIndex& index) const
{
    const bool first = isFirstColumn(index);
    int left = first ? m_firstInset : inset;
    if (!index.data(m_roles.icon).toString().isEmpty())
        left += iconAdvance;
    return cell.adjusted(left, 0, -inset, 0);
}

QColor RowDelegate::textColour(const QModelIndex& index, bool filled) const
{
    if (filled)
        return themeColour(Colour::onAccent);
    if (index.data(m_roles.fault).toBool())
        return themeColour(Colour::errorText);
    const QVariant ownColour = index.data(Qt::ForegroundRole);
    if (ownColour.canConvert<QBrush>())
        return ownColour.value<QBrush>().color();
    if (!(index.flags() & Qt::ItemIsEnabled) || !m_view->isEnabled())
        return themeColour(Colour::placeholder);
    const bool light = m_weight == Weight::onFirstColumn && index.column() > 0;
    const bool quiet = light || index.data(m_roles.secondary).toBool() || index.siblingAtColumn(0).data(m_roles.finished).toBool();
    return themeColour(quiet ? Colour::secondaryText : Colour::text);
}

void RowDelegate::paintIcon(QPainter* painter, const QRect& cell, const QModelIndex& index, bool filled) const
{
    const QString name = index.data(m_roles.icon).toString();
    if (name.isEmpty())
        return;
    const QColor colour = themeColour(filled ? Colour::onAccent : Colour::secondaryText);
    const int left = textRect(cell, index).left() - iconAdvance;
    const int top = cell.top() + (cell.height() - iconSize) / 2;
    painter->drawPixmap(left, top, Icons::pixmap(name, colour, iconSize, painter->device()->devicePixelRatioF()));
}

void RowDelegate::paintCurrentFrame(QPainter* painter, const QRect& rect, const QModelIndex& index, bool selected) const
{
    if (m_unit == Unit::cells && m_view->currentIndex() == index && isActive()) {
        painter->setPen(QPen(themeColour(Colour::accent), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter->drawRect(rect.adjusted(1, 1, -1, -2));
    }
    // The keyboard is on a row that is not selected: a line on both sides shows where.
    const QModelIndex current = m_view->currentIndex();
    if (m_unit == Unit::rows && !selected && isActive() && current.row() == index.row() && current.parent() == index.parent()) {
        // From the edge, also where a tree indents its first column.
        const int left = isFirstColumn(index) ? qMin(0, rect.left()) : rect.left();
        for (const int y : {rect.top(), rect.bottom()})
            painter->fillRect(QRect(QPoint(left, y), QPoint(rect.right(), y)), themeColour(Colour::accent));
    }
}

void RowDelegate::paintText(QPainter* painter, const QStyleOptionViewItem& cell, const QModelIndex& index, bool filled) const
{
    const QRectF place = textRect(cell.rect, index);
    if (cell.text.isEmpty() || place.width() <= 0)
        return;
    const QTextLine line = m_texts.shown(cell.text, int(place.width()), cell.font).lineAt(0);
    const double left = place.width() - line.horizontalAdvance();
    const Qt::Alignment alignment = QStyle::visualAlignment(cell.direction, cell.displayAlignment);
    const double x = alignment & Qt::AlignRight ? left : alignment & Qt::AlignHCenter ? left / 2 : 0;
    painter->setPen(textColour(index, filled));
    line.draw(painter, place.topLeft() + QPointF(x, (place.height() - line.height()) / 2));
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell(option);
    initStyleOption(&cell, index);
    const bool selected = cell.state & QStyle::State_Selected;
    const bool filled = selected && m_unit == Unit::rows && isActive();
    painter->save();
    if (m_ground == Ground::cell)
        paintGround(painter, option.rect, index, selected);
    if (const QColor status = statusOf(index); status.isValid() && isFirstColumn(index)) {
        const int lineBelow = selected && m_unit == Unit::rows ? 0 : 1;
        painter->fillRect(QRect(option.rect.left(), option.rect.top(), statusBarWidth, option.rect.height() - lineBelow), status);
    }
    paintIcon(painter, option.rect, index, filled);
    paintText(painter, cell, index, filled);
    paintCurrentFrame(painter, option.rect, index, selected);
    painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell(option);
    initStyleOption(&cell, index);
    const QRect place = textRect(QRect(0, 0, 1000, m_rowHeight), index);
    return {1000 - place.width() + cell.fontMetrics.horizontalAdvance(cell.text) + 1, m_rowHeight};
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    auto* editor = new QLineEdit(parent);
    look::setKind(editor, "cell");
    FocusRing::exempt(editor);
    const QVariant alignment = index.data(Qt::TextAlignmentRole);
    editor->setAlignment(alignment.isValid() ? Qt::Alignment(alignment.toInt()) : Qt::AlignLeft | Qt::AlignVCenter);
    editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    // Inside its frame a field keeps 2 px of its own before the text.
    const QRect place = textRect(QRect(0, 0, 1000, m_rowHeight), index);
    editor->setTextMargins(place.left() - inset, 0, 0, 0);
    return editor;
}

void RowDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex&) const
{
    // The hairline below the row stays visible, as under the frame of the current cell.
    editor->setGeometry(option.rect.adjusted(0, 0, 0, -1));
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (!index.isValid() || event->type() != QEvent::ToolTip || !index.data(Qt::ToolTipRole).toString().isEmpty())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QStyleOptionViewItem cell(option);
    initStyleOption(&cell, index);
    const bool isCut = cell.fontMetrics.horizontalAdvance(cell.text) > textRect(option.rect, index).width();
    QToolTip::showText(event->globalPos(), isCut ? cell.text.toHtmlEscaped() : QString(), view->viewport(), option.rect);
    return true;
}
