#include "ui/kit/FormGrid.h"

#include "ui/kit/Label.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

namespace {

/// Where the first line of a tall field stands.
constexpr int firstLineTop = 7;
/// A note stands nearer to its own field than to the next.
constexpr int noteBottom = 6;

bool isTall(const QWidget* field)
{
    return qobject_cast<const QPlainTextEdit*>(field) || qobject_cast<const QTextEdit*>(field);
}

/// The control that a row's label is about: the first to type into or choose from, rather than a button beside it.
QWidget* labelledControl(const QList<QWidget*>& controls)
{
    QWidget* button = nullptr;
    for (QWidget* control : controls) {
        if (!(control->focusPolicy() & Qt::TabFocus))
            continue;
        if (!qobject_cast<QPushButton*>(control))
            return control;
        if (!button)
            button = control;
    }
    return button || controls.isEmpty() ? button : controls.constFirst();
}

bool hasFixedWidth(const QWidget* widget)
{
    return widget->minimumWidth() == widget->maximumWidth();
}

} // namespace

FormGrid::FormGrid(Labels labels, QWidget* parent) : QGridLayout(parent), m_labels(labels)
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
    // Plain texts and buttons are read by themselves; a name would hide what they say.
    const bool saysItself = qobject_cast<QLabel*>(buddy) || qobject_cast<QAbstractButton*>(buddy);
    if (buddy && buddy->accessibleName().isEmpty() && !saysItself)
        buddy->setAccessibleName(text);
    addWidget(label, m_row, 0);
    return label;
}

Label* FormGrid::addRow(const QString& label, QWidget* field, int width)
{
    Label* words = makeLabel(label, field);
    if (width > 0) {
        field->setFixedWidth(width);
        addWidget(field, m_row, 1, Qt::AlignLeft);
    } else {
        addWidget(field, m_row, 1);
    }
    m_row += rowsForOne;
    return words;
}

QHBoxLayout* FormGrid::line(const QList<QWidget*>& controls)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    // The last field takes the room there is; buttons and what has a width of its own keep theirs.
    QWidget* grows = nullptr;
    for (QWidget* control : controls) {
        row->addWidget(control);
        if (!hasFixedWidth(control) && !qobject_cast<QPushButton*>(control))
            grows = control;
    }
    if (grows)
        row->setStretchFactor(grows, 1);
    else
        row->addStretch(1);
    return row;
}

Label* FormGrid::addRow(const QString& label, const QList<QWidget*>& controls)
{
    Label* words = makeLabel(label, labelledControl(controls));
    addLayout(line(controls), m_row, 1);
    m_row += rowsForOne;
    return words;
}

void FormGrid::addLabelledBy(QWidget* control, const QList<QWidget*>& controls)
{
    addWidget(control, m_row, 0);
    addLayout(line(controls), m_row, 1);
    m_row += rowsForOne;
}

void FormGrid::addWide(QWidget* control)
{
    addWidget(control, m_row++, 0, 1, 2);
}

int FormGrid::rowOf(QWidget* field) const
{
    for (int i = 0; i < count(); ++i) {
        const QLayoutItem* item = itemAt(i);
        if (item->widget() != field
            && !(const_cast<QLayoutItem*>(item)->layout() && const_cast<QLayoutItem*>(item)->layout()->indexOf(field) >= 0))
            continue;
        int row = -1, column = 0, rows = 0, columns = 0;
        getItemPosition(i, &row, &column, &rows, &columns);
        return row;
    }
    return -1;
}

bool FormGrid::setNote(QWidget* field, const QString& sentence)
{
    const int row = rowOf(field);
    if (row < 0)
        return false;
    QLayoutItem* below = itemAtPosition(row + 1, 1);
    auto* note = below ? qobject_cast<Label*>(below->widget()) : nullptr;
    if (!note && sentence.isEmpty())
        return true;
    if (!note) {
        note = new Label({}, LabelSize::small, LabelTone::error);
        note->setWordWrap(true);
        note->setContentsMargins(0, 0, 0, noteBottom);
        // Side panels are narrow: there a note has the whole row.
        const bool wide = m_labels == Labels::left;
        addWidget(note, row + 1, wide ? 0 : 1, 1, wide ? 2 : 1);
    }
    note->setText(sentence);
    note->setVisible(!sentence.isEmpty());
    return true;
}

void FormGrid::addGap(int height)
{
    setRowMinimumHeight(m_row++, qMax(0, height - verticalSpacing()));
}

void FormGrid::setLabelWidth(int width)
{
    setColumnMinimumWidth(0, width);
}
