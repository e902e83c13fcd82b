// Where people come from who are no contacts yet: the address book of the person at the screen.
#pragma once

#include "desktop/LongWork.h"

#include <QStringList>

#include <string>
#include <vector>

/// Somebody in an address book. All texts are clean UTF-8; what is not known is empty.
struct Person {
    struct Address {
        /// May have several lines.
        std::string street;
        std::string city;
        std::string state;
        std::string zip;
        std::string country;
    };
    struct Phone {
        /// "mobile", "home", or any word of the user's.
        std::string label;
        std::string number;
    };

    std::string firstName;
    std::string lastName;
    /// The first one is the one that counts.
    std::vector<Address> addresses;
    std::vector<Phone> phones;
    std::vector<std::string> emails;
    /// What the person is found by again; empty when the book has none.
    std::string uniqueId;
};

struct AddressBookPeople {
    /// In the order of the book.
    std::vector<Person> people;
    /// What could not be read: a sentence each, with file and line.
    QStringList troubles;
    /// The person did not want to wait; who was read until then is not everybody.
    bool wasStopped = false;
};

class AddressBook {
public:
    virtual ~AddressBook() = default;
    /// Everybody, read anew.
    virtual AddressBookPeople people(const GoesOn& goesOn) const = 0;
};
