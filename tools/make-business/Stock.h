// The items of the sample business, plain and collective.
#pragma once

#include "Chance.h"

#include "foundation/plist/PlistValue.h"

#include <string>
#include <vector>

struct StockItem {
    int id = 0;
    std::string code;
    std::string name;
    std::string variation;
    std::string unit;
    int priceInPence = 0;
    int costInPence = 0;
    int qty = 0;
    std::string taxCode;
};

struct Stock {
    PlistValue items = PlistValue::makeArray();
    std::vector<StockItem> list;
};

/// "1234.50" for 123450.
std::string pounds(int pence);

Stock makeStock(Chance& chance, int count, const std::vector<int>& suppliers);
