#include "ui/contacts/ContactsPage.h"

#include "contacts/ContactManager.h"
#include "contacts/ContactOutlineModel.h"
#include "ui/ColumnMemory.h"
#include "ui/EmptyList.h"
#include "ui/FormBinder.h"
#include "ui/kit/Fields.h"
#include "ui/kit/PageHeader.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/TableHeader.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace {

/// Rows that follow each other are one range: with thousands of ranges a view takes seconds.
QItemSelection rangesOf(std::vector<QModelIndex> rows)
{
    const auto place = [](const QModelIndex& index) { return std::pair(index.internalId(), index.row()); };
    std::sort(rows.begin(), rows.end(), [&](const QModelIndex& a, const QModelIndex& b) { return place(a) < place(b); });
    QItemSelection ranges;
    for (auto first = rows.begin(); first != rows.end();) {
        auto last = first;
        for (auto next = std::next(last); next != rows.end() && place(*next) == std::pair(last->internalId(), last->row() + 1); ++next)
            last = next;
        ranges.select(*first, last->siblingAtColumn(last->model()->columnCount() - 1));
        first = std::next(last);
    }
    return ranges;
}

} // namespace

ContactsPage::ContactsPage(ContactManager& contacts, QWidget* parent)
    : QWidget(parent)
    , m_contacts(contacts)
    , m_header(new PageHeader(tr("Contacts"), tr("Search contacts"), this))
    , m_tree(new RecordTree(this))
    , m_empty(new EmptyList(
          "view-pim-contacts", tr("No contacts yet"), tr("Make your first contact with New Contact."), contacts.listForm, this))
    , m_model(new ContactOutlineModel(contacts, this))
{
    m_header->searchField()->setObjectName("search");
    m_header->searchField()->setAccessibleName(tr("Search contacts"));
    m_header->filter()->setObjectName("filter");
    m_header->filter()->setAccessibleName(tr("Show"));
    m_header->searchField()->steer(m_tree);
    RowRoles roles;
    roles.icon = ContactOutlineModel::IconRole;
    m_tree->rowDelegate()->setRoles(roles);
    m_tree->rowDelegate()->setWeight(RowDelegate::Weight::onFirstColumn);
    m_tree->setModel(m_model);
    m_tree->setAccessibleName(tr("Contacts"));
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    auto* widths = new ColumnMemory(contacts.list, m_tree->tableHeader(), "contacts");
    m_tree->tableHeader()->setSectionsClickable(true);
    m_tree->tableHeader()->setStretchLastSection(true);
    widths->show();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_tree, 1);
    column->addWidget(m_empty, 1);
    new FormBinder(contacts.listForm, this);

    connect(m_tree->tableHeader(), &QHeaderView::sectionClicked, this,
        [this](int section) { m_contacts.toggleSort(m_model->column(section).identifier); });
    connect(m_tree, &QAbstractItemView::activated, this, [this] { m_contacts.edit(); });
    connect(
        m_tree, &QTreeView::expanded, this, [this](const QModelIndex& index) { m_expanded.insert(m_model->contactAt(index)->getID()); });
    connect(
        m_tree, &QTreeView::collapsed, this, [this](const QModelIndex& index) { m_expanded.remove(m_model->contactAt(index)->getID()); });
    connect(m_model, &ContactOutlineModel::selectionWanted, this, &ContactsPage::takeSelection);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        // Emptied: what comes next is another database, where the ids are other companies'.
        if (m_contacts.getCount() == 0)
            m_expanded.clear();
        restoreExpanded();
        showEmptiness();
        showSort();
    });
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ContactsPage::giveSelection);
    connect(m_empty, &EmptyList::everythingShown, this, &ContactsPage::takeKeyboard);
    showEmptiness();
}

void ContactsPage::search()
{
    m_header->searchField()->setFocus(Qt::ShortcutFocusReason);
    m_header->searchField()->selectAll();
}

void ContactsPage::restoreExpanded()
{
    const QScopedValueRollback<bool> taking(m_taking, true);
    for (const int id : QSet<int>(m_expanded)) {
        const Contact* company = m_contacts.getContactbyId(id);
        const QModelIndex index = company ? m_model->indexOf(*company) : QModelIndex();
        if (index.isValid())
            m_tree->expand(index);
    }
}

void ContactsPage::takeSelection()
{
    if (m_giving)
        return;
    const QScopedValueRollback<bool> taking(m_taking, true);
    std::vector<QModelIndex> rows;
    for (const dataObject* record : m_contacts.selectedRecords()) {
        const QModelIndex index = m_model->indexOf(static_cast<const Contact&>(*record));
        if (index.isValid())
            rows.push_back(index);
    }
    const QModelIndex current = rows.empty() ? QModelIndex() : rows.front();
    m_tree->selectionModel()->select(rangesOf(std::move(rows)), QItemSelectionModel::ClearAndSelect);
    if (current.isValid())
        m_tree->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

void ContactsPage::giveSelection()
{
    if (m_taking)
        return;
    // The view is in the middle of its own change.
    const QScopedValueRollback<bool> giving(m_giving, true);
    std::vector<dataObject*> records;
    for (const QModelIndex& index : m_tree->selectionModel()->selectedRows()) {
        if (Contact* contact = m_model->contactAt(index))
            records.push_back(contact);
    }
    m_contacts.setSelectedRecords(records);
}

void ContactsPage::showSort()
{
    m_tree->tableHeader()->setSortIndicatorShown(false);
    if (m_contacts.list.sortDescriptors.empty())
        return;
    const SortDescriptor& sort = m_contacts.list.sortDescriptors.front();
    for (int section = 0; section < m_model->columnCount(); ++section) {
        if (m_model->column(section).identifier == sort.key)
            m_tree->setSorted(section, sort.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

void ContactsPage::setMaking(QAction* command)
{
    m_empty->setMaking(command);
}

void ContactsPage::takeKeyboard()
{
    if (m_tree->isVisibleTo(this))
        m_tree->setFocus();
    else
        m_empty->takeKeyboard();
}

void ContactsPage::showEmptiness()
{
    // What is hidden loses the keyboard to whatever comes next; the list, or the way out of its emptiness, is meant.
    const QWidget* keyboard = window()->focusWidget();
    const bool hadKeyboard = keyboard && (keyboard == m_tree || m_empty->isAncestorOf(keyboard));
    const int rows = m_model->rowCount();
    m_empty->tell(rows, m_contacts.getCount());
    m_tree->setVisible(rows > 0);
    if (hadKeyboard)
        takeKeyboard();
}
