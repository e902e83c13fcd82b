#include "ui/ListBinder.h"

#include "ui/ColumnMemory.h"
#include "ui/RowCopy.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

ListBinder::ListBinder(qvDataSource& source, RecordTable* table, const QString& name)
    : QObject(table)
    , m_source(source)
    , m_table(table)
    , m_widths(new ColumnMemory(source.list, table->tableHeader(), name))
    , m_model(source)
{
    RowRoles roles;
    roles.statusColour = RecordListModel::StatusColourRole;
    roles.finished = RecordListModel::FinishedRole;
    roles.fault = RecordListModel::FaultRole;
    table->rowDelegate()->setRoles(roles);
    table->setModel(&m_model);
    table->installEventFilter(this);
    takeColumns();
    connect(&m_model, &RecordListModel::columnsReset, this, &ListBinder::takeColumns);
    connect(&m_model, &RecordListModel::selectionWanted, this, &ListBinder::takeSelection);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListBinder::giveSelection);
    connect(table->tableHeader(), &QHeaderView::sectionClicked, this, &ListBinder::sortBy);
    // A table whose cells are edited keeps the order of its record.
    table->tableHeader()->setSectionsClickable(table->rowDelegate()->unit() == RowDelegate::Unit::rows);
    takeSelection();
}

bool ListBinder::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
        return false;
    copyRows(*m_table);
    return true;
}

void ListBinder::takeColumns()
{
    m_widths->show();
    showSort();
}

void ListBinder::sortBy(int section)
{
    m_source.toggleSort(m_model.column(section).identifier);
}

void ListBinder::showSort()
{
    m_table->clearSorted();
    if (m_source.list.sortDescriptors.empty())
        return;
    const SortDescriptor& sort = m_source.list.sortDescriptors.front();
    for (int section = 0; section < m_model.columnCount(); ++section) {
        if (m_model.column(section).identifier == sort.key)
            m_table->setSorted(section, sort.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

void ListBinder::takeSelection()
{
    if (m_giving)
        return;
    const QScopedValueRollback<bool> taking(m_taking, true);
    QItemSelection selection;
    int first = -1;
    for (const int row : m_source.selectedRows()) {
        const QModelIndex index = m_model.index(row, 0);
        selection.select(index, index.siblingAtColumn(m_model.columnCount() - 1));
        if (first < 0)
            first = row;
    }
    QItemSelectionModel* selected = m_table->selectionModel();
    const bool byCell = m_table->rowDelegate()->unit() == RowDelegate::Unit::cells;
    if (first >= 0 && (!byCell || selected->currentIndex().row() != first))
        selected->setCurrentIndex(m_model.index(first, 0), QItemSelectionModel::NoUpdate);
    selected->select(selection, QItemSelectionModel::ClearAndSelect);
}

void ListBinder::giveSelection()
{
    if (m_taking)
        return;
    std::vector<int> rows;
    // The view is in the middle of its own change.
    const QScopedValueRollback<bool> giving(m_giving, true);
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows.push_back(index.row());
    if (rows.empty() && m_table->currentIndex().isValid() && m_table->selectionModel()->hasSelection())
        rows.push_back(m_table->currentIndex().row());
    m_source.setSelectedRows(rows);
}
