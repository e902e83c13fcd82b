#include "ui/HelpKey.h"

#include "ui/HelpTopic.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

HelpKey::HelpKey(std::function<void(const QString&)> show) : m_show(std::move(show))
{
    qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    if (pressed->key() != Qt::Key_F1 || pressed->modifiers() != Qt::NoModifier)
        return false;
    if (!pressed->isAutoRepeat())
        m_show(helpTopic::of(static_cast<QWidget*>(watched)));
    return true;
}
