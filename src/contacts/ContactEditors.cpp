// The three contact editors: how contacts get into their forms and back.
#include "contacts/ContactEditors.h"

#include "contacts/ContactLinks.h"
#include "contacts/ContactManager.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "storage/PresentItem.h"
#include "storage/WriteGate.h"

namespace {

/// A text of the contact and the control that shows it, in all three editors.
struct SharedControl {
    TextField ContactForm::*control;
    std::string_view (Contact::*get)() const;
    void (Contact::*set)(std::string_view);
};
constexpr std::array sharedControls {
    SharedControl {&ContactForm::ref, &Contact::getRef, &Contact::setRef},
    SharedControl {&ContactForm::contactTitle, &Contact::getTitle, &Contact::setTitle},
    SharedControl {&ContactForm::name, &Contact::getName, &Contact::setName},
    SharedControl {&ContactForm::salutation, &Contact::getSalutation, &Contact::setSalutation},
    SharedControl {&ContactForm::add1, &Contact::getAdd1, &Contact::setAdd1},
    SharedControl {&ContactForm::add2, &Contact::getAdd2, &Contact::setAdd2},
    SharedControl {&ContactForm::add3, &Contact::getAdd3, &Contact::setAdd3},
    SharedControl {&ContactForm::county, &Contact::getCounty, &Contact::setCounty},
    SharedControl {&ContactForm::postcode, &Contact::getPostcode, &Contact::setPostcode},
    SharedControl {&ContactForm::country, &Contact::getCountry, &Contact::setCountry},
    SharedControl {&ContactForm::phone, &Contact::getPhone, &Contact::setPhone},
    SharedControl {&ContactForm::mobile, &Contact::getMobile, &Contact::setMobile},
    SharedControl {&ContactForm::fax, &Contact::getFax, &Contact::setFax},
    SharedControl {&ContactForm::email, &Contact::getEmail, &Contact::setEmail},
    SharedControl {&ContactForm::comments, &Contact::getComments, &Contact::setComments},
};

void copyType(const ChoiceField& field, Contact& contact)
{
    if (!field.title().isEmpty())
        contact.setType(field.title().toStdString());
}

} // namespace

void fillShared(ContactForm& form, const Contact& contact)
{
    for (const SharedControl& shared : sharedControls)
        (form.*shared.control).setText(toQString((contact.*shared.get)()));
    for (TextField* said : {&form.ref, &form.name})
        said->setFault({});
    form.changedByCommand = false;
    ++form.timesFilled;
}

void copyShared(const ContactForm& form, Contact& contact)
{
    for (const SharedControl& shared : sharedControls)
        (contact.*shared.set)((form.*shared.control).text().toStdString());
}

void ContactManager::setItem(const Contact& contact)
{
    fillShared(form, contact);
    form.type.setOrAddTitle(toQString(contact.getType()));
    form.setTitle(m_created ? localText("New Contact") : toQString(contact.getName()));
}

void ContactManager::copyEditorInto(Contact& contact)
{
    copyShared(form, contact);
    copyType(form.type, contact);
}

// Companies

CompanyEditor::CompanyEditor(ContactManager& contacts, WriteGate& gate, const ContactCommandNeeds& commands)
    : m_contacts(contacts)
    , m_gate(gate)
    , m_commands(form, commands)
    , m_opener(commands.opener)
    , m_beeper(commands.beeper)
{
    form.openWebsite.run = [this] { openWebsite(); };
    form.follow({&form.website}, &form, [this] { form.openWebsite.setEnabled(!form.website.text().trimmed().isEmpty()); });
    form.save.run = [this] { finish(); };
    form.cancel.run = [this] { cancel(); };
    form.people.setReadOnly(true);
}

void CompanyEditor::create()
{
    if (!m_gate.readOnlyCheck() || !form.isFreeForAnother())
        return;
    m_created = std::make_unique<Contact>();
    m_created->makeCompany();
    m_created->setID(nextFreeId(m_contacts));
    m_created->setRef(m_contacts.newReference(m_created->getID()));
    m_currentItem = m_created.get();
    setItem(*m_currentItem);
    form.open();
    form.focus(form.name);
}

void CompanyEditor::edit(Contact& company)
{
    if (!m_gate.readOnlyCheck())
        return;
    if (form.isOpen() && m_currentItem == &company)
        return form.open();
    if (form.isFreeForAnother())
        take(company);
}

void CompanyEditor::take(Contact& company)
{
    m_created.reset();
    m_currentItem = &company;
    setItem(company);
    form.open();
}

void CompanyEditor::setItem(const Contact& company)
{
    fillShared(form, company);
    form.type.setOrAddTitle(toQString(company.getType()));
    form.website.setText(toQString(company.getWebsite()));
    QStringList people;
    for (const Contact* person : m_contacts.contactsOfCompany(company.getID()))
        people += toQString(person->getName());
    form.people.setText(people.join('\n'));
    form.setTitle(m_created ? localText("New Company") : toQString(company.getName()));
}

void CompanyEditor::openWebsite()
{
    const QUrl page = webLink(form.website.text());
    if (page.isEmpty())
        m_beeper.beep();
    else
        m_opener.openUrl(page);
}

void CompanyEditor::cancel()
{
    form.close();
    if (m_created) {
        m_created.reset();
        m_currentItem = nullptr;
        m_contacts.findAndSetHighestId();
    }
}

void CompanyEditor::finish()
{
    if (!m_gate.readOnlyCheck()) {
        form.close();
        return;
    }
    if (!m_currentItem)
        return;
    copyShared(form, *m_currentItem);
    copyType(form.type, *m_currentItem);
    m_currentItem->setWebsite(form.website.text().toStdString());
    if (m_created)
        m_currentItem = &m_contacts.join(std::move(m_created));
    form.close();
    m_contacts.saved(*m_currentItem);
}

// People of companies

CompanyContactEditor::CompanyContactEditor(ContactManager& contacts, WriteGate& gate, Alerts& alerts, const ContactCommandNeeds& commands)
    : m_contacts(contacts)
    , m_gate(gate)
    , m_alerts(alerts)
    , m_commands(form, commands)
{
    form.save.run = [this] { finish(); };
    form.cancel.run = [this] { cancel(); };
}

void CompanyContactEditor::edit(Contact& person)
{
    if (form.isOpen() && m_currentItem == &person)
        return form.open();
    if (form.isFreeForAnother())
        take(person);
}

void CompanyContactEditor::take(Contact& person)
{
    if (form.isOpen())
        leave();
    m_currentItem = &person;
    setItem(person);
    form.open();
}

void CompanyContactEditor::setItem(const Contact& person)
{
    fillShared(form, person);
    form.jobTitle.setText(toQString(person.getJobTitle()));
    form.extension.setText(toQString(person.getExtension()));
    QStringList companies;
    for (const dataObject* record : m_contacts.records()) {
        const auto& contact = static_cast<const Contact&>(*record);
        if (contact.isCompany())
            companies += toQString(contact.getName());
    }
    form.company.setTitles(companies);
    const Contact* company = presentItem(m_contacts, person.getCompany());
    form.company.setTitle(company ? toQString(company->getName()) : QString());
    form.setTitle(toQString(person.getName()));
}

void CompanyContactEditor::leave()
{
    // Without a company the person would stand under nobody in the list.
    if (!m_currentItem || !m_currentItem->isCompanyContact() || m_currentItem->getCompany() != 0 || m_gate.isReadOnly())
        return;
    m_currentItem->setKind("Individual");
    m_contacts.reloadData();
}

void CompanyContactEditor::cancel()
{
    form.close();
    leave();
}

void CompanyContactEditor::linkToChosenCompany(Contact& person)
{
    const Contact* company = form.company.title().isEmpty() ? nullptr : m_contacts.getCompanyByName(form.company.title().toStdString());
    if (company) {
        if (company->getID() != 0)
            person.setCompany(company->getID());
        return;
    }
    m_alerts.ask(alerts::savingCompanyContact);
    person.setKind("Individual");
}

void CompanyContactEditor::finish()
{
    if (!m_gate.readOnlyCheck()) {
        form.close();
        return;
    }
    if (!m_currentItem)
        return;
    linkToChosenCompany(*m_currentItem);
    copyShared(form, *m_currentItem);
    m_currentItem->setJobTitle(form.jobTitle.text().toStdString());
    m_currentItem->setExtension(form.extension.text().toStdString());
    form.close();
    m_contacts.saved(*m_currentItem);
}

void CompanyEditor::closeOn(const dataObject& record)
{
    if (m_currentItem == &record)
        form.close();
}

void CompanyContactEditor::closeOn(const dataObject& record)
{
    if (m_currentItem == &record)
        form.close();
}
