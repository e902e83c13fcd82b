// An address book of vCard files.
#pragma once

#include "contacts/AddressBook.h"

#include <functional>

class VcardBook : public AddressBook {
public:
    /// paths: the files, and the folders whose vCard files count; asked at every reading.
    explicit VcardBook(std::function<QStringList()> paths) : m_paths(std::move(paths)) { }

    /// File by file in the order of the paths, those of a folder by name.
    AddressBookPeople people(const GoesOn& goesOn) const override;

private:
    std::function<QStringList()> m_paths;
};
