#include "ui/kit/EmptyState.h"

#include "ui/kit/IconLabel.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"

#include <QHBoxLayout>

namespace {

Label* centredLine(const QString& text, LabelSize size, LabelTone tone)
{
    auto* line = new Label(text, size, tone);
    line->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    line->setWordWrap(true);
    return line;
}

} // namespace

EmptyState::EmptyState(const QString& iconName, const QString& missing, const QString& whatToDo, QWidget* parent)
    : QWidget(parent)
    , m_missing(centredLine(missing, LabelSize::group, LabelTone::normal))
    , m_whatToDo(centredLine(whatToDo, LabelSize::body, LabelTone::secondary))
    , m_buttons(new QHBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(6);
    column->addStretch(2);
    column->addWidget(new IconLabel(iconName, IconRole::placeholder, 32), 0, Qt::AlignHCenter);
    column->addSpacing(6);
    column->addWidget(m_missing);
    column->addWidget(m_whatToDo);
    column->addSpacing(8);
    m_buttons->setSpacing(8);
    m_buttons->addStretch(1);
    m_buttons->addStretch(1);
    column->addLayout(m_buttons);
    column->addStretch(3);
}

void EmptyState::setTexts(const QString& missing, const QString& whatToDo)
{
    m_missing->setText(missing);
    m_whatToDo->setText(whatToDo);
}

void EmptyState::addButton(QWidget* button)
{
    m_buttons->insertWidget(m_buttons->count() - 1, button);
}

ActionCard::ActionCard(const QString& iconName, const QString& title, const QString& detail, Rank rank, QWidget* parent)
    : Button({}, parent)
    , m_title(new Label(title, LabelSize::strong))
{
    look::setKind(this, "action");
    setAccessibleName(title);
    setAccessibleDescription(detail);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 0, 16, 0);
    row->setSpacing(16);
    row->addWidget(new IconLabel(iconName, rank == Rank::first ? IconRole::accent : IconRole::normal, 22));
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addStretch();
    words->addWidget(m_title);
    words->addWidget(new Label(detail, LabelSize::small, LabelTone::secondary));
    words->addStretch();
    row->addLayout(words, 1);
    row->addWidget(new IconLabel(QStringLiteral("go-next"), IconRole::placeholder, 16));
    for (QWidget* part : findChildren<QWidget*>())
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ActionCard::setTitle(const QString& title)
{
    m_title->setText(title);
    setAccessibleName(title);
}

QSize ActionCard::sizeHint() const
{
    return layout()->sizeHint().expandedTo({0, 68});
}
