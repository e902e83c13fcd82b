#include "ui/kit/Fields.h"

#include "ui/kit/Look.h"

#include <QStyledItemDelegate>
#include <QWheelEvent>

NumberField::NumberField(QWidget* parent) : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void NumberField::setSize(Size size)
{
    look::set(this, "measure", size == Size::big ? "big" : size == Size::figures ? "figures" : "normal");
    updateGeometry();
}

Figure::Figure(const QString& text, QWidget* parent) : QLineEdit(parent)
{
    look::setKind(this, "figure");
    setReadOnly(true);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFigure(text);
}

void Figure::setFigure(const QString& text)
{
    setText(text);
    setCursorPosition(0);
}

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    // The list's own delegate ignores the style sheet's row height.
    setItemDelegate(new QStyledItemDelegate(this));
    setMaxVisibleItems(16);
}

ChoiceBox::ChoiceBox(const QStringList& titles, QWidget* parent) : ChoiceBox(parent)
{
    addItems(titles);
}

void ChoiceBox::showEvent(QShowEvent* event)
{
    // Screen readers take what is chosen for the name of a pop-up list, so its own name is told as its description.
    if (accessibleDescription().isEmpty())
        setAccessibleDescription(accessibleName());
    QComboBox::showEvent(event);
}

void ChoiceBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}
