#include "ui/HelpTopic.h"

#include <QApplication>
#include <QVariant>
#include <QWidget>

namespace {

constexpr char topicProperty[] = "helpTopic";

} // namespace

void helpTopic::set(QWidget& widget, const QString& topic)
{
    widget.setProperty(topicProperty, topic);
}

QString helpTopic::of(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (const QString topic = widget->property(topicProperty).toString(); !topic.isEmpty())
            return topic;
    }
    return {};
}

QString helpTopic::inFront()
{
    const QWidget* keyboard = QApplication::focusWidget();
    return of(keyboard ? keyboard : QApplication::activeWindow());
}
