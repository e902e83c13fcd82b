#include "ui/shell/ToolBarList.h"

#include "ui/kit/Theme.h"

#include <QDataStream>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

namespace {

constexpr int identifierRole = Qt::UserRole;
constexpr char entryMimeType[] = "application/x-vendaro-tool-bar-entry";
constexpr int gapLine = 2;

enum class ListKey { none, add, remove, moveUp, moveDown };

ListKey listKey(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::AltModifier && event.key() == Qt::Key_Up)
        return ListKey::moveUp;
    if (modifiers == Qt::AltModifier && event.key() == Qt::Key_Down)
        return ListKey::moveDown;
    if (modifiers != Qt::NoModifier)
        return ListKey::none;
    switch (event.key()) {
    case Qt::Key_Insert:
    case Qt::Key_Space: return ListKey::add;
    case Qt::Key_Delete:
    case Qt::Key_Backspace: return ListKey::remove;
    default: return ListKey::none;
    }
}

} // namespace

ToolBarList::ToolBarList(const QString& objectName, const QString& title) : PickList(title)
{
    setObjectName(objectName);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    // Ours is a line between the rows.
    setDropIndicatorShown(false);
}

QListWidgetItem* ToolBarList::addEntry(const QString& identifier, const QString& icon, const QString& title, Weight weight)
{
    QListWidgetItem* entry = PickList::addEntry(icon, title, weight);
    entry->setData(identifierRole, identifier);
    return entry;
}

QString ToolBarList::identifierAt(int row) const
{
    const QListWidgetItem* entry = item(row);
    return entry ? entry->data(identifierRole).toString() : QString();
}

// Keys

void ToolBarList::keyPressEvent(QKeyEvent* event)
{
    if (!pressKey(*event))
        PickList::keyPressEvent(event);
}

bool ToolBarList::pressKey(const QKeyEvent& event)
{
    switch (listKey(event)) {
    case ListKey::none: return false;
    case ListKey::add: Q_EMIT addKeyPressed(); break;
    case ListKey::remove: Q_EMIT removeKeyPressed(); break;
    case ListKey::moveUp: Q_EMIT moveKeyPressed(-1); break;
    case ListKey::moveDown: Q_EMIT moveKeyPressed(1); break;
    }
    return true;
}

// Dragging

/// The list's own would take the entry away wherever it was dropped.
void ToolBarList::startDrag(Qt::DropActions)
{
    if (!currentItem())
        return;
    const QRect place = visualItemRect(currentItem());
    auto* drag = new QDrag(this);
    drag->setMimeData(mimeData({currentItem()}));
    drag->setPixmap(viewport()->grab(place));
    drag->setHotSpot(viewport()->mapFromGlobal(QCursor::pos()) - place.topLeft());
    drag->exec(Qt::MoveAction);
}

QStringList ToolBarList::mimeTypes() const
{
    return {QString::fromLatin1(entryMimeType)};
}

QMimeData* ToolBarList::mimeData(const QList<QListWidgetItem*>& items) const
{
    if (items.isEmpty())
        return nullptr;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << objectName() << row(items.first()) << items.first()->data(identifierRole).toString();
    auto* carried = new QMimeData;
    carried->setData(QString::fromLatin1(entryMimeType), bytes);
    return carried;
}

std::optional<ToolBarList::Dragged> ToolBarList::takeable(const QMimeData* carried) const
{
    if (!carried || !carried->hasFormat(QString::fromLatin1(entryMimeType)))
        return std::nullopt;
    QDataStream stream(carried->data(QString::fromLatin1(entryMimeType)));
    Dragged dragged {};
    stream >> dragged.list >> dragged.row >> dragged.identifier;
    const bool isWhole = stream.status() == QDataStream::Ok;
    return isWhole && mayTake && mayTake(dragged) ? std::optional(dragged) : std::nullopt;
}

int ToolBarList::rowBefore(const QPoint& place) const
{
    const QListWidgetItem* below = itemAt(place);
    if (!below)
        return place.y() < 0 ? 0 : count();
    return row(below) + (place.y() > visualItemRect(below).center().y() ? 1 : 0);
}

void ToolBarList::showGap(int beforeRow)
{
    m_gap = m_dropping == Dropping::betweenEntries ? beforeRow : noGap;
    viewport()->update();
}

void ToolBarList::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(takeable(event->mimeData()).has_value());
}

void ToolBarList::dragMoveEvent(QDragMoveEvent* event)
{
    // For what is above or below the rows that are seen.
    PickList::dragMoveEvent(event);
    const bool isWelcome = takeable(event->mimeData()).has_value();
    showGap(isWelcome ? rowBefore(event->position().toPoint()) : noGap);
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(isWelcome);
}

void ToolBarList::dragLeaveEvent(QDragLeaveEvent* event)
{
    PickList::dragLeaveEvent(event);
    showGap(noGap);
}

void ToolBarList::dropEvent(QDropEvent* event)
{
    stopAutoScroll();
    setState(NoState);
    const std::optional<Dragged> dragged = takeable(event->mimeData());
    const int beforeRow = rowBefore(event->position().toPoint());
    showGap(noGap);
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(dragged.has_value());
    if (dragged)
        Q_EMIT entryDropped(*dragged, beforeRow);
}

void ToolBarList::paintEvent(QPaintEvent* event)
{
    PickList::paintEvent(event);
    if (m_gap == noGap)
        return;
    const QListWidgetItem* below = item(m_gap);
    const QListWidgetItem* above = item(m_gap - 1);
    const int y = below ? visualItemRect(below).top() : above ? visualItemRect(above).bottom() + 1 : 0;
    QPainter painter(viewport());
    painter.fillRect(QRect(0, std::max(0, y - gapLine / 2), viewport()->width(), gapLine), themeColour(Colour::accent));
}
