#include "ui/shell/SortMenu.h"

#include "storage/qvDataSource.h"
#include "ui/kit/Literal.h"

#include <QActionGroup>

namespace {

const SortDescriptor* sortOf(const qvDataSource& list)
{
    return list.list.sortDescriptors.empty() ? nullptr : &list.list.sortDescriptors.front();
}

/// The entry belongs to its group, and goes with it.
QAction* addMarked(QMenu& menu, QActionGroup& group, const QString& text, bool marked)
{
    QAction* action = group.addAction(literal(text));
    action->setCheckable(true);
    action->setChecked(marked);
    menu.addAction(action);
    return action;
}

} // namespace

SortMenu::SortMenu(const QString& title, QWidget* parent) : QMenu(title, parent)
{
    setObjectName("sortBy");
}

void SortMenu::showColumnsOf(qvDataSource& list)
{
    qDeleteAll(findChildren<QActionGroup*>());
    clear();
    addColumns(list);
    addSeparator();
    addDirections(list);
}

void SortMenu::addColumns(qvDataSource& list)
{
    auto* columns = new QActionGroup(this);
    const SortDescriptor* sort = sortOf(list);
    for (const ListColumn* column : list.list.visibleColumns()) {
        const std::string key = column->identifier;
        QAction* action = addMarked(*this, *columns, column->heading, sort && sort->key == key);
        connect(action, &QAction::triggered, this, [&list, key] { list.toggleSort(key); });
    }
}

void SortMenu::addDirections(qvDataSource& list)
{
    auto* directions = new QActionGroup(this);
    const SortDescriptor* sort = sortOf(list);
    const auto add = [&](const QString& text, bool ascending) {
        QAction* action = addMarked(*this, *directions, text, sort && sort->ascending == ascending);
        action->setEnabled(sort);
        connect(action, &QAction::triggered, this, [&list, ascending] {
            if (const SortDescriptor* now = sortOf(list); now && now->ascending != ascending)
                list.toggleSort(now->key);
        });
    };
    add(tr("Ascending"), true);
    add(tr("Descending"), false);
}
