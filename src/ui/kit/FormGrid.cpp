#include "ui/kit/FormGrid.h"

#include "ui/kit/Label.h"

#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

/// Where the first line of a tall field stands.
constexpr int firstLineTop = 7;

bool isTall(const QWidget* field)
{
    return qobject_cast<const QPlainTextEdit*>(field) || qobject_cast<const QTextEdit*>(field);
}

QWidget* firstForKeyboard(const QList<QWidget*>& controls)
{
    for (QWidget* control : controls) {
        if (control->focusPolicy() & Qt::TabFocus)
            return control;
    }
    return controls.isEmpty() ? nullptr : controls.constFirst();
}

bool hasFixedWidth(const QWidget* widget)
{
    return widget->minimumWidth() == widget->maximumWidth();
}

}

FormGrid::FormGrid(Labels labels, QWidget* parent)
    : QGridLayout(parent)
    , m_labels(labels)
{
    setContentsMargins(0, 0, 0, 0);
    setHorizontalSpacing(12);
    setVerticalSpacing(8);
    setColumnStretch(1, 1);
}

Label* FormGrid::makeLabel(const QString& text, QWidget* buddy)
{
    auto* label = new Label(text, LabelSize::body, LabelTone::secondary);
    const bool tall = buddy && isTall(buddy);
    label->setAlignment((m_labels == Labels::right ? Qt::AlignRight : Qt::AlignLeft) | (tall ? Qt::AlignTop : Qt::AlignVCenter));
    label->setContentsMargins(0, tall ? firstLineTop : 0, 0, 0);
    label->setBuddy(buddy);
    // A plain text under a label is read by itself; a name would hide what it says.
    if (buddy && buddy->accessibleName().isEmpty() && !qobject_cast<QLabel*>(buddy))
        buddy->setAccessibleName(text);
    addWidget(label, m_row, 0);
    return label;
}

Label* FormGrid::addRow(const QString& label, QWidget* field, int width)
{
    Label* words = makeLabel(label, field);
    if (width > 0) {
        field->setFixedWidth(width);
        addWidget(field, m_row++, 1, Qt::AlignLeft);
    } else {
        addWidget(field, m_row++, 1);
    }
    return words;
}

QHBoxLayout* FormGrid::line(const QList<QWidget*>& controls)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (QWidget* control : controls)
        row->addWidget(control, control == controls.constLast() && !hasFixedWidth(control) ? 1 : 0);
    if (!controls.isEmpty() && hasFixedWidth(controls.constLast()))
        row->addStretch(1);
    return row;
}

Label* FormGrid::addRow(const QString& label, const QList<QWidget*>& controls)
{
    Label* words = makeLabel(label, firstForKeyboard(controls));
    addLayout(line(controls), m_row++, 1);
    return words;
}

void FormGrid::addLabelledBy(QWidget* control, const QList<QWidget*>& controls)
{
    addWidget(control, m_row, 0);
    addLayout(line(controls), m_row++, 1);
}

void FormGrid::addWide(QWidget* control)
{
    addWidget(control, m_row++, 0, 1, 2);
}

void FormGrid::addGap(int height)
{
    setRowMinimumHeight(m_row++, qMax(0, height - verticalSpacing()));
}

void FormGrid::setLabelWidth(int width)
{
    setColumnMinimumWidth(0, width);
}
