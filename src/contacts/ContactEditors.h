// The controllers of the company editor and of the company contact editor.
#pragma once

#include "contacts/Contact.h"
#include "contacts/ContactForm.h"

class Alerts;
class ContactManager;
class WriteGate;

class CompanyEditor {
public:
    CompanyEditor(ContactManager& contacts, WriteGate& gate);

    CompanyForm form;

    /// A new company.
    void create();
    void edit(Contact& company);
    void finish();
    void cancel();
    /// Closes when it is this record that is open: it was deleted.
    void closeOn(const dataObject& record);
    Contact* currentItem() const { return m_currentItem; }

private:
    void setItem(const Contact& company);

    ContactManager& m_contacts;
    WriteGate& m_gate;
    Contact* m_currentItem = nullptr;
    std::unique_ptr<Contact> m_created;
};

class CompanyContactEditor {
public:
    CompanyContactEditor(ContactManager& contacts, WriteGate& gate, Alerts& alerts);

    CompanyContactForm form;

    void edit(Contact& person);
    void finish();
    void cancel();
    void closeOn(const dataObject& record);

private:
    void setItem(const Contact& person);
    void linkToChosenCompany(Contact& person);

    ContactManager& m_contacts;
    WriteGate& m_gate;
    Alerts& m_alerts;
    Contact* m_currentItem = nullptr;
};
