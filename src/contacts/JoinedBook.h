// Several address books as one.
#pragma once

#include "contacts/AddressBook.h"

#include <iterator>
#include <utility>

class JoinedBook : public AddressBook {
public:
    /// In the order given; those that are not there may stand among them. The books must outlive it.
    explicit JoinedBook(std::vector<const AddressBook*> books) : m_books(std::move(books)) { }

    AddressBookPeople people(const GoesOn& goesOn) const override
    {
        AddressBookPeople all;
        const auto count = static_cast<double>(m_books.size());
        for (std::size_t n = 0; n < m_books.size() && !all.wasStopped; ++n) {
            if (!m_books[n])
                continue;
            AddressBookPeople read = m_books[n]->people([&](double share) { return goesOn((static_cast<double>(n) + share) / count); });
            std::move(read.people.begin(), read.people.end(), std::back_inserter(all.people));
            all.troubles += read.troubles;
            all.wasStopped = read.wasStopped;
        }
        return all;
    }

private:
    std::vector<const AddressBook*> m_books;
};
