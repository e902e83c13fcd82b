#include "ui/kit/SegmentedChoice.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Look.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QToolButton>

SegmentedChoice::SegmentedChoice(const QStringList& titles, QWidget* parent) : QFrame(parent), m_buttons(new QButtonGroup(this))
{
    look::setKind(this, "segments");
    setFixedHeight(30);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    connect(m_buttons, &QButtonGroup::idClicked, this, &SegmentedChoice::chosen);
    setTitles(titles);
}

int SegmentedChoice::index() const
{
    return m_buttons->checkedId();
}

void SegmentedChoice::setIndex(int index)
{
    if (QAbstractButton* button = m_buttons->button(index))
        button->setChecked(true);
}

QStringList SegmentedChoice::titles() const
{
    QStringList titles;
    for (const QAbstractButton* button : m_buttons->buttons())
        titles << button->text();
    return titles;
}

void SegmentedChoice::setTitles(const QStringList& titles)
{
    const int kept = qMax(0, qMin(index(), int(titles.size()) - 1));
    qDeleteAll(m_buttons->buttons());
    for (int index = 0; index < titles.size(); ++index) {
        auto* button = new QToolButton(this);
        button->setText(titles[index]);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        FocusRing::surround(button, this);
        m_buttons->addButton(button, index);
        layout()->addWidget(button);
    }
    setIndex(kept);
    nameButtons();
}

void SegmentedChoice::setName(const QString& name)
{
    m_name = name;
    setAccessibleName(name);
    nameButtons();
}

void SegmentedChoice::nameButtons()
{
    for (QAbstractButton* button : m_buttons->buttons())
        button->setAccessibleName(m_name.isEmpty() ? button->text() : m_name + QLatin1String(": ") + button->text());
}
