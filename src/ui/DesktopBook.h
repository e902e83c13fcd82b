// The address book that the desktop's programs share, through Evolution's data server. A program that was built without its library
// finds nobody there.
#pragma once

#include "contacts/AddressBook.h"

class DesktopBook : public AddressBook {
public:
    /// Everybody of every book that is switched on, book by book. A desktop without such a server has none.
    AddressBookPeople people(const GoesOn& goesOn) const override;
};
