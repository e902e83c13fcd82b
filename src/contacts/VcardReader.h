// Reads vCards of the versions 2.1, 3.0 and 4.0, as address books and telephones write them.
//
// A card that is damaged gives what is whole of it. What could not be read is told by line; pictures and everything else that no
// contact has is passed over without a word.
#pragma once

#include "contacts/AddressBook.h"

#include <QString>

#include <string_view>
#include <vector>

struct VcardTrouble {
    /// Counted from 1.
    int line;
    /// A sentence.
    QString sentence;
};

struct VcardPeople {
    std::vector<Person> people;
    std::vector<VcardTrouble> troubles;
    /// Whether there was the beginning of a card at all.
    bool hasCards = false;
};

/// The bytes are a file's whole contents: any number of cards.
VcardPeople readVcards(std::string_view bytes);
