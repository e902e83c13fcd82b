// What of a person in the address book goes into a contact, and where.
#pragma once

#include "contacts/AddressBook.h"
#include "contacts/Contact.h"

/// Name, address, telephone numbers and e-mail addresses of the contact become the person's. The address stays when the book has none.
void setContactDetailsFromAB(Contact& contact, const Person& person);

/// The first one of that identifier; none when the identifier is empty or nobody has it.
const Person* personWithId(const std::vector<Person>& people, std::string_view uniqueId);

/// Whether a contact's reference names somebody in an address book.
bool isAddressBookReference(std::string_view ref);
