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
    const bool nothingThere = records == 0;
    setTexts(
        nothingThere ? m_title : tr("Nothing found"), nothingThere ? m_hint : tr("No entry holds all of these words under this choice."));
    m_make->setVisible(nothingThere && m_making);
    m_showAll->setVisible(!nothingThere);
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
