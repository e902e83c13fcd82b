// The contacts of the sample business.
#pragma once

#include "Chance.h"

#include "foundation/plist/PlistValue.h"

#include <string>
#include <vector>

struct People {
    PlistValue contacts = PlistValue::makeArray();
    /// Ids, by what they are to the business.
    std::vector<int> customers;
    std::vector<int> suppliers;
};

/// count contacts: companies with people of theirs, individuals, and suppliers.
People makePeople(Chance& chance, int count);
