#include "contacts/ContactCommands.h"

#include "contacts/AddressBookDetails.h"
#include "contacts/AddressText.h"
#include "contacts/ContactEditors.h"
#include "contacts/ContactLinks.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "storage/qvPicker.h"

#include <array>
#include <span>

namespace {

using AddressLine = TextField ContactForm::*;

/// Where the lines of a pasted address go, by how many there are. With three the last one is a line of the address as well.
std::span<const AddressLine> placesOfLines(qsizetype count)
{
    static constexpr std::array<AddressLine, 2> few {&ContactForm::name, &ContactForm::add1};
    static constexpr std::array<AddressLine, 3> three {&ContactForm::name, &ContactForm::add1, &ContactForm::add2};
    static constexpr std::array<AddressLine, 4> four {&ContactForm::name, &ContactForm::add1, &ContactForm::add2, &ContactForm::postcode};
    static constexpr std::array<AddressLine, 5> five {
        &ContactForm::name, &ContactForm::add1, &ContactForm::add2, &ContactForm::add3, &ContactForm::postcode};
    static constexpr std::array<AddressLine, 7> more {&ContactForm::name, &ContactForm::add1, &ContactForm::add2, &ContactForm::add3,
        &ContactForm::county, &ContactForm::postcode, &ContactForm::country};
    switch (count) {
    case 0:
    case 1:
    case 2: return std::span(few).first(static_cast<std::size_t>(count));
    case 3: return three;
    case 4: return four;
    case 5: return five;
    case 6: return std::span(more).first(6);
    default: return more;
    }
}

} // namespace

ContactCommands::ContactCommands(ContactForm& form, ContactCommandNeeds needs) : m_form(form), m_needs(std::move(needs))
{
    form.capitalise.run = [this] { capitalise(); };
    form.copyContact.run = [this] { copyContact(); };
    form.pasteContact.run = [this] { pasteContact(); };
    form.sendEmail.run = [this] { sendEmail(); };
    form.pickFromAddressBook.run = [this] { pickFromAddressBook(); };
    form.updateFromAddressBook.run = [this] { updateContactFromABMenuItem(); };
    form.follow({&form.email}, &form, [&form] { form.sendEmail.setEnabled(!form.email.text().trimmed().isEmpty()); });
    form.follow(
        {&form.ref}, &form, [&form] { form.updateFromAddressBook.setVisible(isAddressBookReference(form.ref.text().toStdString())); });
    // What was said was about what stood there before.
    for (TextField* said : {&form.ref, &form.name})
        said->onEdited = [said] { said->setFault({}); };
}

void ContactCommands::capitalise()
{
    for (const AddressLine line :
        {&ContactForm::name, &ContactForm::add1, &ContactForm::add2, &ContactForm::add3, &ContactForm::county, &ContactForm::country})
        (m_form.*line).setText(capitalised((m_form.*line).text()));
    m_form.postcode.setText(m_form.postcode.text().toUpper());
    m_form.changedByCommand = true;
}

void ContactCommands::copyContact()
{
    const QString title = m_form.contactTitle.text();
    const QString name = m_form.name.text();
    m_needs.clipboard.setText(QStringList {title.isEmpty() ? name : title + ' ' + name, m_form.add1.text(), m_form.add2.text(),
        m_form.add3.text(), m_form.county.text(), m_form.postcode.text()}
                                  .join('\r'));
}

void ContactCommands::pasteContact()
{
    const QString text = m_needs.clipboard.text();
    if (text.size() > longestPastedAddress)
        return refuseToPaste(localText("What is on the clipboard is too long for an address."));
    const QStringList lines = pastedLines(text);
    if (lines.isEmpty())
        return refuseToPaste(localText("There is no address on the clipboard."));
    m_form.name.setFault({});
    qsizetype next = 0;
    for (const AddressLine place : placesOfLines(lines.size()))
        (m_form.*place).setText(lines[next++]);
    if (lines.size() == 3)
        m_form.postcode.setText(lines.constLast());
    m_form.changedByCommand = true;
}

void ContactCommands::refuseToPaste(const QString& why)
{
    m_needs.beeper.beep();
    m_form.name.setFault(why);
}

void ContactCommands::sendEmail()
{
    // Several addresses stand between semicolons here, and between commas in a link.
    QString addresses = m_form.email.text().trimmed();
    addresses.replace("; ", ",").replace(';', ',');
    if (!addresses.isEmpty())
        m_needs.opener.openUrl(mailLink(addresses));
}

void ContactCommands::takeDetails(const Person& person)
{
    Contact contact;
    copyShared(m_form, contact);
    setContactDetailsFromAB(contact, person);
    if (!person.uniqueId.empty())
        contact.setRef(person.uniqueId);
    fillShared(m_form, contact);
    m_form.changedByCommand = true;
}

void ContactCommands::pickFromAddressBook()
{
    std::optional<std::vector<Person>> people = m_needs.readAddressBook();
    if (!people)
        return;
    auto listed = std::make_unique<Collection<Contact>>(m_needs.sorting, m_needs.beeper);
    listed->makeRoom(people->size());
    for (const Person& person : *people)
        setContactDetailsFromAB(listed->add(std::make_unique<Contact>()), person);
    const int filling = m_form.timesFilled;
    const auto take = [this, filling](const dataObject& chosen) {
        // The editor may hold somebody else by now.
        if (m_form.isOpen() && m_form.timesFilled == filling)
            takeDetails(m_people[static_cast<std::size_t>(chosen.getID()) - 1]);
    };
    m_needs.picker.beginFromAddressBookFor(take, listed->records(), {"name", "email", "address"}, {240, 240, 300},
        {localText("Name"), localText("E-mail"), localText("Address")}, localText("Contact"));
    // An empty book opens no chooser, and one that is open goes on with whom it shows.
    if (people->empty())
        return;
    m_people = std::move(*people);
    m_listed = std::move(listed);
}

void ContactCommands::updateContactFromABMenuItem()
{
    const std::optional<std::vector<Person>> people = m_needs.readAddressBook();
    if (!people)
        return;
    if (const Person* person = personWithId(*people, m_form.ref.text().toStdString()))
        takeDetails(*person);
    else
        m_form.ref.setFault(localText("The address book has nobody of this reference."));
}
