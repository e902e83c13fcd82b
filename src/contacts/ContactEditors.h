// The controllers of the company editor and of the company contact editor.
#pragma once

#include "contacts/Contact.h"
#include "contacts/ContactCommands.h"
#include "contacts/ContactForm.h"

class Alerts;
class ContactManager;
class WriteGate;

/// Fills what all three editors hold from the contact.
void fillShared(ContactForm& form, const Contact& contact);
/// And copies it back.
void copyShared(const ContactForm& form, Contact& contact);

class CompanyEditor {
public:
    CompanyEditor(ContactManager& contacts, WriteGate& gate, const ContactCommandNeeds& commands);

    CompanyForm form;

    /// A new company.
    void create();
    void edit(Contact& company);
    /// The same without asking whether what is in the editor may go.
    void take(Contact& company);
    void finish();
    void cancel();
    /// Closes when it is this record that is open: it was deleted.
    void closeOn(const dataObject& record);
    Contact* currentItem() const { return m_currentItem; }

private:
    void setItem(const Contact& company);
    void openWebsite();

    ContactManager& m_contacts;
    WriteGate& m_gate;
    ContactCommands m_commands;
    Opener& m_opener;
    Beeper& m_beeper;
    Contact* m_currentItem = nullptr;
    std::unique_ptr<Contact> m_created;
};

class CompanyContactEditor {
public:
    CompanyContactEditor(ContactManager& contacts, WriteGate& gate, Alerts& alerts, const ContactCommandNeeds& commands);

    CompanyContactForm form;

    void edit(Contact& person);
    /// The same without asking whether what is in the editor may go.
    void take(Contact& person);
    void finish();
    void cancel();
    void closeOn(const dataObject& record);
    Contact* currentItem() const { return m_currentItem; }

private:
    void setItem(const Contact& person);
    /// The person is not edited any more, and was not saved.
    void leave();
    void linkToChosenCompany(Contact& person);

    ContactManager& m_contacts;
    WriteGate& m_gate;
    Alerts& m_alerts;
    ContactCommands m_commands;
    Contact* m_currentItem = nullptr;
};
