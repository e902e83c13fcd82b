#include "ui/kit/SheetStack.h"

#include "ui/kit/Sheet.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>

namespace {

/// Looks through popups and dialogs up to the widgets they were opened from.
bool belongsTo(const QWidget* widget, const QWidget* ancestor)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget == ancestor)
            return true;
    }
    return false;
}

constexpr char usableProperty[] = "usableBesideSheets";

bool isUse(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: return true;
    default: return false;
    }
}

} // namespace

SheetStack& SheetStack::instance()
{
    static SheetStack stack;
    return stack;
}

void SheetStack::add(Sheet* sheet)
{
    if (m_open.isEmpty())
        qApp->installEventFilter(this);
    m_open.append(sheet);
}

void SheetStack::remove(Sheet* sheet)
{
    if (m_open.removeAll(sheet) > 0 && m_open.isEmpty() && qApp)
        qApp->removeEventFilter(this);
}

Sheet* SheetStack::top() const
{
    return m_open.isEmpty() ? nullptr : m_open.constLast();
}

void SheetStack::cancelAll()
{
    while (Sheet* sheet = top())
        sheet->cancel();
}

QWidget* SheetStack::frontWindow()
{
    QWidget* window = QApplication::activeWindow();
    while (window && !window->isVisible())
        window = window->parentWidget();
    return window ? window->window() : nullptr;
}

void SheetStack::leaveUsable(QWidget& window)
{
    window.setProperty(usableProperty, true);
}

bool SheetStack::isBlocked(const QWidget* widget) const
{
    const QWidget* window = widget->window();
    const bool looseMenu = window->windowType() == Qt::Popup && !window->parentWidget();
    const bool usable = window->property(usableProperty).toBool();
    const bool modalDialog = window == QApplication::activeModalWidget();
    if (looseMenu)
        return false;
    for (auto sheet = m_open.crbegin(); sheet != m_open.crend(); ++sheet) {
        if (belongsTo(widget, *sheet))
            return false;
        if (window == (*sheet)->hostWindow())
            return true;
        if ((*sheet)->blocks() == Sheet::Blocks::theProgram && !modalDialog && !usable)
            return true;
    }
    return false;
}

bool SheetStack::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (!watched->isWidgetType() || (!isUse(type) && type != QEvent::Close && type != QEvent::ShortcutOverride))
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (!isBlocked(widget))
        return false;
    // An accepted override keeps shortcuts from running; an ignored close keeps the window.
    if (type == QEvent::Close)
        event->ignore();
    else
        event->accept();
    return true;
}
