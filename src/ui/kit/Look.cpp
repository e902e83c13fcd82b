#include "ui/kit/Look.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void look::set(QWidget* widget, const char* property, const char* value)
{
    const QVariant wanted = QString::fromLatin1(value);
    if (widget->property(property) == wanted)
        return;
    widget->setProperty(property, wanted);
    refresh(widget);
}

void look::setKind(QWidget* widget, const char* kind)
{
    set(widget, "look", kind);
}

void look::setFault(QWidget* field, Fault fault)
{
    set(field, "error", fault == Fault::wrong ? "true" : "false");
}

void look::refresh(QWidget* widget)
{
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}
