#include "contacts/ContactOutlineModel.h"

#include "contacts/ContactManager.h"
#include "storage/RowText.h"

#include <QMimeData>

#include <algorithm>

namespace {

/// Top-level rows carry 0, the people of a company its row plus one.
constexpr quintptr topLevelId = 0;

} // namespace

ContactOutlineModel::ContactOutlineModel(ContactManager& contacts, QObject* parent)
    : QAbstractItemModel(parent)
    , m_contacts(contacts)
    , m_columns(contacts.list.visibleColumns())
    , m_top(contacts.topLevel())
{
    contacts.addObserver(*this);
}

ContactOutlineModel::~ContactOutlineModel()
{
    m_contacts.removeObserver(*this);
}

Contact* ContactOutlineModel::contactAt(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    if (index.internalId() == topLevelId)
        return m_top[static_cast<std::size_t>(index.row())];
    const Contact* company = m_top[index.internalId() - 1];
    return m_contacts.getnthContact(index.row(), company->getID());
}

QModelIndex ContactOutlineModel::indexOf(const Contact& contact) const
{
    if (const int row = topRowOf(&contact); row >= 0)
        return createIndex(row, 0, topLevelId);
    const Contact* company = m_contacts.getContactbyId(contact.getCompany());
    const int companyRow = company && company->isCompany() ? topRowOf(company) : -1;
    const std::vector<Contact*>& people = m_contacts.contactsOfCompany(contact.getCompany());
    const auto person = std::find(people.begin(), people.end(), &contact);
    if (companyRow < 0 || person == people.end())
        return {};
    return createIndex(static_cast<int>(person - people.begin()), 0, static_cast<quintptr>(companyRow) + 1);
}

int ContactOutlineModel::topRowOf(const Contact* contact) const
{
    if (m_rows.empty()) {
        m_rows.reserve(m_top.size());
        for (std::size_t row = 0; row < m_top.size(); ++row)
            m_rows.emplace(m_top[row], static_cast<int>(row));
    }
    const auto found = m_rows.find(contact);
    return found == m_rows.end() ? -1 : found->second;
}

QModelIndex ContactOutlineModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : topLevelId);
}

QModelIndex ContactOutlineModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == topLevelId)
        return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, topLevelId);
}

int ContactOutlineModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(m_top.size());
    if (parent.internalId() != topLevelId || parent.column() != 0)
        return 0;
    const Contact* contact = m_top[static_cast<std::size_t>(parent.row())];
    return contact->isCompany() ? m_contacts.countContactsforThisCompany(contact->getID()) : 0;
}

int ContactOutlineModel::columnCount(const QModelIndex&) const
{
    return static_cast<int>(m_columns.size());
}

QVariant ContactOutlineModel::data(const QModelIndex& index, int role) const
{
    const Contact* contact = contactAt(index);
    if (!contact)
        return {};
    if (role == Qt::DisplayRole)
        return toQString(contact->getFieldByName(column(index.column()).identifier));
    if (role == IconRole && index.column() == 0)
        return QString(contact->isCompany() ? "group" : "user");
    return {};
}

QVariant ContactOutlineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= columnCount())
        return {};
    return column(section).heading;
}

Qt::ItemFlags ContactOutlineModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? QAbstractItemModel::flags(index) | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QStringList ContactOutlineModel::mimeTypes() const
{
    return {"text/plain"};
}

QMimeData* ContactOutlineModel::mimeData(const QModelIndexList& indexes) const
{
    return rowData(indexes).release();
}

void ContactOutlineModel::reset()
{
    beginResetModel();
    m_columns = m_contacts.list.visibleColumns();
    m_top = m_contacts.topLevel();
    m_rows.clear();
    endResetModel();
    Q_EMIT selectionWanted();
}

void ContactOutlineModel::listReset()
{
    reset();
}

void ContactOutlineModel::rowChanged(int)
{
    reset();
}

void ContactOutlineModel::selectionChanged()
{
    Q_EMIT selectionWanted();
}

void ContactOutlineModel::columnsChanged()
{
    reset();
}
