#include "ui/EmptyList.h"

#include "storage/ListForm.h"
#include "ui/kit/Look.h"

#include <QAction>

EmptyList::EmptyList(const QString& icon, const QString& title, const QString& hint, ListForm& form, QWidget* parent)
    : EmptyState(icon, title, hint, parent)
    , m_form(form)
    , m_title(title)
    , m_hint(hint)
    , m_make(new Button)
    , m_showAll(new Button(tr("Show Everything")))
{
    look::setKind(this, "surface");
    setAttribute(Qt::WA_StyledBackground);
    m_make->setObjectName("make");
    m_showAll->setObjectName("showAll");
    addButton(m_make);
    addButton(m_showAll);
    connect(m_showAll, &QPushButton::clicked, this, &EmptyList::showEverything);
}

void EmptyList::setWords(const QString& title, const QString& hint)
{
    m_title = title;
    m_hint = hint;
    showWords();
}

void EmptyList::showWords()
{
    if (m_nothingThere)
        setTexts(m_title, m_hint);
    else
        setTexts(tr("Nothing found"), tr("No entry holds all of these words under this choice."));
}

void EmptyList::setMaking(QAction* command)
{
    m_making = command;
    m_make->setText(command->text());
    connect(command, &QAction::changed, this, [this, command] { m_make->setText(command->text()); });
    connect(m_make, &QPushButton::clicked, command, &QAction::trigger);
    m_make->setVisible(!m_showAll->isVisibleTo(this));
}

void EmptyList::tell(int rows, int records)
{
    m_nothingThere = records == 0;
    showWords();
    m_make->setVisible(m_nothingThere && m_making);
    m_showAll->setVisible(!m_nothingThere);
    setVisible(rows == 0);
}

void EmptyList::takeKeyboard()
{
    Button* helps = m_showAll->isVisibleTo(this) ? m_showAll : m_make;
    helps->setFocus(Qt::OtherFocusReason);
}

void EmptyList::showEverything()
{
    m_form.search.edit({});
    m_form.filter.edit(0);
    Q_EMIT everythingShown();
}
