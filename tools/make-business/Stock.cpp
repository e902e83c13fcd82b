#include "Stock.h"

#include "Vocabulary.h"

#include "foundation/Numbers.h"

#include <algorithm>
#include <limits>

namespace {

void setItemText(PlistValue& record, const char* key, const std::string& text)
{
    if (!text.empty())
        record.set(key, PlistValue(text));
}

StockItem plainItem(Chance& chance, int id)
{
    const vocabulary::Product& product = vocabulary::products[static_cast<std::size_t>(id) % vocabulary::products.size()];
    StockItem item;
    item.id = id;
    item.code = std::string(product.code) + "-" + std::to_string(id);
    item.name = std::string(product.name);
    item.variation = chance.oneIn(3) ? std::string() : std::string(chance.from(vocabulary::variations));
    item.unit = std::string(product.unit);
    item.priceInPence = product.priceInPence + 25 * chance.between(0, 12);
    item.costInPence = item.priceInPence * 55 / 100;
    item.taxCode = product.category == "Books" ? "Z" : "S";
    item.qty = chance.between(0, 60);
    return item;
}

PlistValue recordOf(const StockItem& item)
{
    PlistValue record = PlistValue::makeDict();
    setItemText(record, "id", std::to_string(item.id));
    setItemText(record, "decreaseQty", "YES");
    setItemText(record, "exportbrevand", "NO");
    setItemText(record, "exportgoogle", "NO");
    setItemText(record, "hidebuttoncode", "YES");
    setItemText(record, "code", item.code);
    setItemText(record, "item", item.name);
    setItemText(record, "variation", item.variation);
    setItemText(record, "price", pounds(item.priceInPence));
    setItemText(record, "bought", pounds(item.costInPence));
    setItemText(record, "taxcode", item.taxCode);
    setItemText(record, "type", "Item");
    setItemText(record, "condition", "New");
    setItemText(record, "websitefolder", "~/sites/mysite/");
    return record;
}

void addStockFigures(PlistValue& record, Chance& chance, const StockItem& item, const std::vector<int>& suppliers)
{
    const vocabulary::Product& product = vocabulary::products[static_cast<std::size_t>(item.id) % vocabulary::products.size()];
    setItemText(record, "brand", std::string(product.brand));
    setItemText(record, "category", std::string(product.category));
    setItemText(record, "qty", std::to_string(item.qty));
    setItemText(record, "optimumqty", "24");
    setItemText(record, "warnlevel", "4");
    setItemText(record, "shipping", chance.oneIn(3) ? "2.50" : "");
    setItemText(record, "supplier", std::to_string(chance.from(suppliers)));
    setItemText(record, "ean", "50" + std::to_string(chance.between(10000000, 99999999)) + std::to_string(chance.between(100, 999)));
}

/// Some of the parts, and how many kits they make.
void makeKit(PlistValue& record, Chance& chance, const std::vector<StockItem>& parts)
{
    PlistValue constituents = PlistValue::makeArray();
    float inStock = std::numeric_limits<float>::max();
    const std::size_t first = chance.next() % parts.size();
    const int count = chance.between(2, 4);
    for (int i = 0; i < count; ++i) {
        const StockItem& part = parts[(first + 3 * static_cast<std::size_t>(i)) % parts.size()];
        PlistValue entry = PlistValue::makeDict();
        entry.set("id", PlistValue::makeInteger(part.id));
        entry.set("code", PlistValue(part.code));
        entry.set("item", PlistValue(part.name));
        const int needed = chance.between(1, 3);
        entry.set("qty", PlistValue::makeInteger(needed));
        constituents.append(std::move(entry));
        inStock = std::min(inStock, static_cast<float>(part.qty) / static_cast<float>(needed));
    }
    record.set("type", PlistValue(std::string("Collective item")));
    record.set("constituents", std::move(constituents));
    record.set("qty", PlistValue(numbers::general(static_cast<double>(inStock))));
}

} // namespace

std::string pounds(int pence)
{
    const int whole = pence / 100;
    const int rest = pence % 100;
    std::string text = std::to_string(whole);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, ",");
    return text + (rest < 10 ? ".0" : ".") + std::to_string(rest);
}

Stock makeStock(Chance& chance, int count, const std::vector<int>& suppliers)
{
    Stock stock;
    std::vector<StockItem> parts;
    for (int id = 1; id <= count; ++id) {
        StockItem item = plainItem(chance, id);
        const bool isKit = id % 10 == 0 && parts.size() >= 16;
        if (isKit) {
            item.code = "KIT-" + std::to_string(id);
            item.name = std::string(vocabulary::kits[static_cast<std::size_t>(id / 10) % vocabulary::kits.size()]);
            item.unit.clear();
        }
        PlistValue record = recordOf(item);
        if (isKit) {
            makeKit(record, chance, parts);
        } else {
            addStockFigures(record, chance, item, suppliers);
            parts.push_back(item);
        }
        stock.items.append(std::move(record));
        stock.list.push_back(std::move(item));
    }
    return stock;
}
