// What the contacts do many at a time: import, the e-mail list, and putting addresses right.
#include "contacts/AddressBookDetails.h"
#include "contacts/ContactManager.h"
#include "contacts/EmailExporter.h"
#include "desktop/AlertTexts.h"
#include "desktop/TextTable.h"
#include "storage/WriteGate.h"

#include <array>
#include <utility>

void ContactManager::importAllContactsFromAB()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    const std::optional<std::vector<Person>> people = m_needs.commands.readAddressBook();
    if (!people)
        return m_needs.showStatus(localText("Stopped. Nobody was imported."));
    if (people->empty())
        return m_needs.showStatus(localText("There is nobody in the address book. The preferences say where it lies."));
    std::vector<std::unique_ptr<dataObject>> made;
    made.reserve(people->size());
    for (const Person& person : *people) {
        auto contact = std::make_unique<Contact>();
        contact->setStore(textStore());
        setContactDetailsFromAB(*contact, person);
        made.push_back(std::move(contact));
    }
    addAll(std::move(made));
    filter();
    m_needs.gate.writeDatabase(*this);
    m_needs.alerts.ask(makeAlert(alerts::contactsImported, {}, {QString::number(people->size())}));
}

std::vector<const Contact*> ContactManager::getSelectedContactsForExport() const
{
    const std::vector<Contact*> selected = selectedContacts();
    return {selected.begin(), selected.end()};
}

void ContactManager::generateEmailList()
{
    const std::vector<const Contact*> selected = getSelectedContactsForExport();
    if (selected.empty())
        return;
    EmailExporter exporter(m_needs.panels);
    exporter.setCollection(selected);
    const QString outcome = exporter.exportCSV();
    if (!outcome.isEmpty())
        m_needs.showStatus(outcome);
}

/// Saving an open editor would put the lines back.
void ContactManager::moveInEditorOf(const Contact& contact)
{
    const std::array<std::pair<const Contact*, ContactForm*>, 3> editors {std::pair<const Contact*, ContactForm*> {m_currentItem, &form},
        {companyEditor.currentItem(), &companyEditor.form}, {companyContactEditor.currentItem(), &companyContactEditor.form}};
    for (const auto& [edited, editor] : editors) {
        if (edited != &contact || !editor->isOpen() || !editor->county.text().isEmpty())
            continue;
        editor->county.setText(editor->add3.text());
        editor->add3.setText({});
    }
}

void ContactManager::moveAdd3ToCounty()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    int moved = 0;
    for (dataObject* record : records()) {
        auto& contact = static_cast<Contact&>(*record);
        if (contact.getAdd3().empty() || !contact.getCounty().empty())
            continue;
        contact.setCounty(contact.getAdd3());
        contact.setAdd3({});
        moveInEditorOf(contact);
        ++moved;
    }
    if (moved > 0) {
        filter();
        m_needs.gate.writeDatabase(*this);
    }
    m_needs.alerts.ask(makeAlert(moved == 1 ? alerts::oneContactUpdated : alerts::contactsUpdated, {}, {QString::number(moved)}));
}
