#include "contacts/ContactManager.h"

#include "contacts/DateFormatGate.h"
#include "contacts/OrderLinks.h"
#include "desktop/AlertTexts.h"
#include "desktop/TextTable.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"

#include <algorithm>
#include <unordered_set>

namespace {

bool isTopLevel(const Contact& contact)
{
    return !contact.isCompanyContact();
}

} // namespace

ContactManager::ContactManager(ContactManagerNeeds needs)
    : Collection(needs.sorting, needs.beeper)
    , companyEditor(*this, needs.gate, needs.commands)
    , companyContactEditor(*this, needs.gate, needs.alerts, needs.commands)
    , m_needs(std::move(needs))
    , m_commands(form, m_needs.commands)
{
    list.columns = {
        {"name", localText("Name"), 300},
        {"type", localText("Type"), 110},
        {"address", localText("Address"), 380},
        {"phone", localText("Phone"), 150},
        {"email", localText("E-mail"), 260},
    };
    form.save.run = [this] { finish(); };
    form.cancel.run = [this] { cancel(); };
    form.makeCompany.run = [this] { makeCompany(); };
    form.linkToCompany.run = [this] { linkToCompany(); };
    listForm.search.onEdited = [this] { filter(); };
    listForm.filter.onEdited = [this] { filter(); };
}

// Look-ups

template <class Test>
int ContactManager::countWhere(Test test) const
{
    return static_cast<int>(std::count_if(
        records().begin(), records().end(), [&](const dataObject* record) { return test(static_cast<const Contact&>(*record)); }));
}

template <class Test>
Contact* ContactManager::nthWhere(int n, Test test) const
{
    for (dataObject* record : records()) {
        auto& contact = static_cast<Contact&>(*record);
        if (test(contact) && n-- == 0)
            return &contact;
    }
    return nullptr;
}

Contact* ContactManager::getContactbyName(std::string_view name) const
{
    return nthWhere(0, [&](const Contact& contact) { return contact.getName() == name; });
}

Contact* ContactManager::getCompanyByName(std::string_view name) const
{
    return nthWhere(0, [&](const Contact& contact) { return contact.isCompany() && contact.getName() == name; });
}

Contact* ContactManager::weHaveThisOneAlready(const Contact& wanted) const
{
    return nthWhere(0, [&](const Contact& contact) { return contact.isTheSameContactAs(wanted); });
}

int ContactManager::countCompanies() const
{
    return countWhere(isTopLevel);
}
Contact* ContactManager::getnthCompany(int n) const
{
    return nthWhere(n, isTopLevel);
}
bool ContactManager::isSupplier(const Contact& contact)
{
    return contact.values().type == "Supplier";
}
int ContactManager::countSuppliers() const
{
    return countWhere(isSupplier);
}
Contact* ContactManager::getnthSupplier(int n) const
{
    return nthWhere(n, isSupplier);
}

int ContactManager::countVisibleCompanies() const
{
    return static_cast<int>(topLevel().size());
}

Contact* ContactManager::getnthVisibleCompany(int n) const
{
    const std::vector<Contact*> shown = topLevel();
    return n >= 0 && n < static_cast<int>(shown.size()) ? shown[static_cast<std::size_t>(n)] : nullptr;
}

std::vector<Contact*> ContactManager::topLevel() const
{
    std::vector<Contact*> shown;
    for (dataObject* record : visibleRows()) {
        auto& contact = static_cast<Contact&>(*record);
        if (isTopLevel(contact))
            shown.push_back(&contact);
    }
    return shown;
}

std::vector<Contact*> ContactManager::outline() const
{
    std::vector<Contact*> rows;
    for (Contact* contact : topLevel()) {
        rows.push_back(contact);
        if (!contact->isCompany())
            continue;
        const std::vector<Contact*>& people = contactsOfCompany(contact->getID());
        rows.insert(rows.end(), people.begin(), people.end());
    }
    return rows;
}

std::vector<Contact*> ContactManager::selectedContacts() const
{
    const std::unordered_set<const dataObject*> selection(selectedRecords().begin(), selectedRecords().end());
    std::vector<Contact*> rows = outline();
    std::erase_if(rows, [&](const Contact* row) { return !selection.contains(row); });
    return rows;
}

Contact* ContactManager::shownBefore(const Contact& contact) const
{
    // The people of the company above may be folded away.
    const std::vector<Contact*> rows = contact.isCompanyContact() ? outline() : topLevel();
    const auto found = std::find(rows.begin(), rows.end(), &contact);
    return found == rows.end() || found == rows.begin() ? nullptr : *std::prev(found);
}

const std::unordered_map<int, std::vector<Contact*>>& ContactManager::peopleByCompany() const
{
    if (m_peopleValid)
        return m_peopleByCompany;
    m_peopleByCompany.clear();
    for (dataObject* record : records()) {
        auto& contact = static_cast<Contact&>(*record);
        if (contact.isCompanyContact())
            m_peopleByCompany[contact.getCompany()].push_back(&contact);
    }
    m_peopleValid = true;
    return m_peopleByCompany;
}

const std::vector<Contact*>& ContactManager::contactsOfCompany(int companyId) const
{
    static const std::vector<Contact*> nobody;
    const auto found = peopleByCompany().find(companyId);
    return found == peopleByCompany().end() ? nobody : found->second;
}

int ContactManager::countContactsforThisCompany(int companyId) const
{
    return static_cast<int>(contactsOfCompany(companyId).size());
}

Contact* ContactManager::getnthContact(int n, int forCompany) const
{
    const std::vector<Contact*>& people = contactsOfCompany(forCompany);
    return n >= 0 && n < static_cast<int>(people.size()) ? people[static_cast<std::size_t>(n)] : nullptr;
}

void ContactManager::recordAdded(dataObject&)
{
    m_peopleValid = false;
}
void ContactManager::recordRemoved(dataObject& record)
{
    m_peopleValid = false;
    // Nothing may be saved into a contact that is gone.
    if (m_currentItem == &record)
        form.close();
    companyEditor.closeOn(record);
    companyContactEditor.closeOn(record);
}

void ContactManager::recordChanged(dataObject&)
{
    m_peopleValid = false;
}
void ContactManager::recordsCleared()
{
    m_peopleValid = false;
}

// The editor

std::string ContactManager::newReference(int id) const
{
    return m_needs.preferences.getContactPrefix() + std::to_string(id);
}

Contact& ContactManager::join(std::unique_ptr<Contact> created)
{
    const int proposed = created->getID();
    if (presentItem(*this, proposed)) {
        created->setID(nextFreeId(*this));
        if (created->getRef() == newReference(proposed))
            created->setRef(newReference(created->getID()));
    }
    return add(std::move(created));
}

void ContactManager::begin()
{
    m_created = std::make_unique<Contact>();
    m_created->setID(nextFreeId(*this));
    m_created->setRef(newReference(m_created->getID()));
    m_currentItem = m_created.get();
    setItem(*m_currentItem);
    form.open();
    form.focus(form.name);
}

void ContactManager::create()
{
    createNew();
}

bool ContactManager::createNew()
{
    if (!m_needs.gate.readOnlyCheck())
        return false;
    if (!m_needs.dateFormat.isChosen()) {
        m_needs.dateFormat.initialiseDateFormat();
        return false;
    }
    if (!form.isFreeForAnother())
        return false;
    begin();
    if (m_forOrder && !isBeingEdited(m_forOrder->contact))
        m_forOrder.reset();
    return true;
}

void ContactManager::createForCurrentOrder(int orderId)
{
    if (createNew())
        m_forOrder = {m_created.get(), orderId};
}

void ContactManager::edit()
{
    if (const std::vector<Contact*> selected = selectedContacts(); !selected.empty())
        editThisContact(*selected.front());
}

bool ContactManager::isBeingEdited(const Contact* contact) const
{
    return (form.isOpen() && m_currentItem == contact) || (companyEditor.form.isOpen() && companyEditor.currentItem() == contact)
        || (companyContactEditor.form.isOpen() && companyContactEditor.currentItem() == contact);
}

void ContactManager::editThisContact(Contact& contact)
{
    if (contact.isCompany()) {
        companyEditor.edit(contact);
    } else if (contact.isCompanyContact()) {
        companyContactEditor.edit(contact);
    } else if (form.isOpen() && m_currentItem == &contact) {
        form.open();
    } else if (form.isFreeForAnother()) {
        m_created.reset();
        m_currentItem = &contact;
        setItem(contact);
        form.open();
    }
    // It was opened by itself, or in the place of the one that was for an order.
    if (m_forOrder && (m_forOrder->contact == &contact || !isBeingEdited(m_forOrder->contact)))
        m_forOrder.reset();
}

void ContactManager::editThisContact(Contact& contact, int forOrder)
{
    editThisContact(contact);
    if (isBeingEdited(&contact))
        m_forOrder = {&contact, forOrder};
}

void ContactManager::cancel()
{
    form.close();
    if (m_forOrder && m_forOrder->contact == m_currentItem)
        m_forOrder.reset();
    if (m_created) {
        m_created.reset();
        m_currentItem = nullptr;
        // The id that was set aside for it goes to the next one.
        findAndSetHighestId();
    }
}

void ContactManager::finish()
{
    if (!m_needs.gate.readOnlyCheck()) {
        form.close();
        return;
    }
    if (!m_currentItem)
        return;
    copyEditorInto(*m_currentItem);
    if (m_created)
        m_currentItem = &join(std::move(m_created));
    form.close();
    saved(*m_currentItem);
}

void ContactManager::saved(Contact& contact)
{
    if (m_forOrder && m_forOrder->contact == &contact) {
        m_needs.orders.connectContactToOrderId(contact, m_forOrder->orderId);
        m_forOrder.reset();
    }
    filter();
    m_needs.gate.writeDatabase(*this);
}

void ContactManager::makeCompany()
{
    if (!m_currentItem || !m_needs.gate.readOnlyCheck() || !companyEditor.form.isFreeForAnother())
        return;
    const std::optional<ForOrder> order = m_forOrder;
    m_currentItem->makeCompany();
    finish();
    companyEditor.take(*m_currentItem);
    m_forOrder = order;
}

void ContactManager::linkToCompany()
{
    if (!m_currentItem || !m_needs.gate.readOnlyCheck() || !companyContactEditor.form.isFreeForAnother())
        return;
    m_currentItem->setKind("Company Contact");
    finish();
    companyContactEditor.take(*m_currentItem);
}

// Deleting

void ContactManager::deleteContact(Contact& contact)
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    deleteItem(contact);
    reloadData();
}

void ContactManager::deleteKey()
{
    const std::vector<Contact*> selected = selectedContacts();
    if (selected.empty() || m_needs.alerts.ask(alerts::deleteContact) != 0 || !m_needs.gate.readOnlyCheck())
        return;
    dataObject* next = shownBefore(*selected.front());
    const std::vector<dataObject*> lastToFirst(selected.rbegin(), selected.rend());
    deleteItems(lastToFirst);
    setDeleteBuffer(lastToFirst);
    reloadData();
    if (!next)
        next = getnthVisibleCompany(0);
    setSelectedRecords(next ? std::vector<dataObject*> {next} : std::vector<dataObject*>());
    m_needs.gate.setChangeFlag();
    m_needs.showStatus(lastToFirst.size() == 1 ? localText("Deleted. Undo brings the contact back.")
                                               : localText("Deleted. Undo brings the contacts back."));
}

// The list

void ContactManager::populateLists(const std::optional<QStringList>& userTypes)
{
    const QStringList types = QStringList {localText("Customer"), localText("Supplier")} + userTypes.value_or(QStringList());
    form.type.setTitles(types);
    companyEditor.form.type.setTitles(types);
    const QString filteredBy = listForm.filter.title();
    listForm.filter.setTitles(QStringList {localText("All")} + types);
    if (listForm.filter.index() < 0)
        listForm.filter.setIndex(0);
    if (listForm.filter.title() != filteredBy)
        filter();
}

void ContactManager::applyFilter()
{
    makeAllVisible();
    hideWithoutWords(listForm.search.text().toStdString());
    if (listForm.filter.index() > 0) {
        const std::string type = listForm.filter.title().toStdString();
        for (dataObject* record : records()) {
            if (static_cast<const Contact*>(record)->values().type != type)
                record->setVisible(false);
        }
    }
}

std::string ContactManager::objectValue(std::string_view identifier, int row) const
{
    const Contact* contact = getnthVisibleItem(row);
    return contact ? contact->getFieldByName(identifier) : std::string();
}

bool ContactFile::complete(StoredRecord<Contact>& stored) const
{
    const bool hasRef = !stored.values->ref.isEmpty();
    if (!hasRef)
        stored.values.change().ref = stored.idText;
    const bool isAlone = stored.values->kind == "Company Contact" && stored.values->company == 0;
    if (isAlone)
        stored.values.change().kind = literalText<"Individual">();
    return hasRef && !isAlone;
}
