// Several address books as one.
#pragma once

#include "contacts/AddressBook.h"

#include <iterator>
#include <utility>

class JoinedBook : public AddressBook {
public:
    /// In the order given; those that are not there may stand among them. The books must outlive it.
    explicit JoinedBook(std::vector<const AddressBook*> books) : m_books(std::move(books)) { }

    AddressBookPeople people() const override
    {
        AddressBookPeople all;
        for (const AddressBook* book : m_books) {
            if (!book)
                continue;
            AddressBookPeople read = book->people();
            std::move(read.people.begin(), read.people.end(), std::back_inserter(all.people));
            all.troubles += read.troubles;
        }
        return all;
    }

private:
    std::vector<const AddressBook*> m_books;
};
