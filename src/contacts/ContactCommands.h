// What the buttons of a contact editor do to the texts in its fields. All of it is in the editor only, until that is saved.
#pragma once

#include "contacts/AddressBook.h"
#include "contacts/Contact.h"
#include "storage/qvDataSource.h"

#include <functional>
#include <memory>
#include <optional>

class Clipboard;
class ContactForm;
class Opener;
class qvPicker;

struct ContactCommandNeeds {
    Clipboard& clipboard;
    Opener& opener;
    Beeper& beeper;
    /// Everybody in the address book; nothing when the person stopped the reading. Has told what could not be read.
    std::function<std::optional<std::vector<Person>>()> readAddressBook;
    qvPicker& picker;
    const SortSettings& sorting;
};

class ContactCommands {
public:
    ContactCommands(ContactForm& form, ContactCommandNeeds needs);

    /// Capitals at the beginnings of the words of name and address, and everywhere in the postcode.
    void capitalise();
    /// The address as plain text, its lines ended by carriage returns, onto the clipboard.
    void copyContact();
    /// The clipboard's lines into name and address.
    void pasteContact();
    /// Opens a letter to the contact.
    void sendEmail();
    /// Takes name, address and numbers from somebody of the address book whom the person chooses, and links the contact to them.
    void pickFromAddressBook();
    /// The same from whom the contact is linked to. Nothing changes when the address book has nobody of that reference.
    void updateContactFromABMenuItem();

private:
    void refuseToPaste(const QString& why);
    void takeDetails(const Person& person);

    ContactForm& m_form;
    ContactCommandNeeds m_needs;
    /// Whom the chooser shows, and the same as contacts.
    std::vector<Person> m_people;
    std::unique_ptr<Collection<Contact>> m_listed;
};
