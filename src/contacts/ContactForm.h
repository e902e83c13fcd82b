// The state of the three contact editors: people, companies, and people of companies.
#pragma once

#include "desktop/Form.h"

/// What all three editors hold.
class ContactForm : public Form {
public:
    TextField ref {*this, "ref"};
    TextField contactTitle {*this, "title"};
    TextField name {*this, "name"};
    TextField salutation {*this, "salutation"};
    TextField add1 {*this, "add1"};
    TextField add2 {*this, "add2"};
    TextField add3 {*this, "add3"};
    TextField county {*this, "county"};
    TextField postcode {*this, "postcode"};
    TextField country {*this, "country"};
    TextField phone {*this, "phone"};
    TextField mobile {*this, "mobile"};
    TextField fax {*this, "fax"};
    TextField email {*this, "email"};
    TextField comments {*this, "comments"};
    CommandField capitalise {*this, "capitalise"};
    CommandField copyContact {*this, "copyContact"};
    CommandField pasteContact {*this, "pasteContact"};
    CommandField sendEmail {*this, "sendEmail"};
    CommandField pickFromAddressBook {*this, "pickFromAddressBook"};
    /// Offered for a contact that is linked to the address book.
    CommandField updateFromAddressBook {*this, "updateContactFromABMenuItem"};
    CommandField cancel {*this, "cancel"};
    CommandField save {*this, "save"};

    /// Whether a command changed the fields since they were filled.
    bool changedByCommand = false;
    /// Goes up whenever the fields are filled: what was asked for the contact before is not for this one.
    int timesFilled = 0;
};

/// A person by themselves.
class IndividualForm : public ContactForm {
public:
    ChoiceField type {*this, "type"};
    CommandField makeCompany {*this, "makeCompany"};
    CommandField linkToCompany {*this, "linkToCompany"};
};

class CompanyForm : public ContactForm {
public:
    ChoiceField type {*this, "type"};
    TextField website {*this, "website"};
    CommandField openWebsite {*this, "openWebsite"};
    /// The people of the company, one a line, for reading.
    TextField people {*this, "people"};
};

/// A person of a company. Type and website are not theirs to say.
class CompanyContactForm : public ContactForm {
public:
    TextField jobTitle {*this, "jobTitle"};
    TextField extension {*this, "extension"};
    ChoiceField company {*this, "company"};
};
