// Reads vCards of the versions 2.1, 3.0 and 4.0, as address books and telephones write them.
//
// A card that is damaged gives what is whole of it. What could not be read is told by line; pictures and everything else that no
// contact has is passed over without a word. However large the file and whatever it holds, no more memory is taken than its people
// need.
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
    /// The first of them: more would bury what they are about.
    std::vector<VcardTrouble> troubles;
    std::size_t furtherTroubles = 0;
    /// Whether there was the beginning of a card at all.
    bool hasCards = false;
    /// goesOn answered false; the people are those until then.
    bool wasStopped = false;
};

inline constexpr std::size_t mostVcardTroubles = 10;
/// Numbers, addresses and the like that are taken of one card.
inline constexpr int longestVcard = 10'000;

/// The bytes are a file's whole contents: any number of cards.
VcardPeople readVcards(std::string_view bytes, const GoesOn& goesOn = {});
