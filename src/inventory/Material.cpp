#include "inventory/Material.h"

#include "contacts/Contact.h"
#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "inventory/ItemManager.h"
#include "inventory/OrderLookup.h"
#include "storage/PresentItem.h"

namespace {

std::string contactTextOfLine(const Material& line, std::string_view field)
{
    const Contact* contact = line.rules().orders.contactOfOrder(line.getOrder());
    return contact ? contact->getFieldByName(field) : std::string();
}

std::string categoryOfLine(const Material& line)
{
    const Item* item = presentItem(line.rules().items, line.getProduct());
    return item ? std::string(item->getCategory()) : std::string();
}

constexpr std::array materialDerivedFields {
    DerivedField<Material> {"order:type", [](const Material& line) { return line.getOrderType(); }},
    DerivedField<Material> {"order:number", [](const Material& line) { return line.rules().orders.orderNumber(line.getOrder()); }},
    DerivedField<Material> {"order:date", [](const Material& line) { return line.rules().orders.orderDate(line.getOrder()); }},
    DerivedField<Material> {"order:contact:email", [](const Material& line) { return contactTextOfLine(line, "email"); }},
    DerivedField<Material> {"order:contact:type", [](const Material& line) { return contactTextOfLine(line, "type"); }},
    DerivedField<Material> {"item:category", categoryOfLine},
};

} // namespace

std::span<const DerivedField<Material>> Material::derivedFields()
{
    return materialDerivedFields;
}

Material::Material(const LineRules& rules, int order, int product) : m_rules(rules)
{
    newValues().order = order;
    newValues().product = product;
}

float Material::getQtyasFloat() const
{
    return m_rules.money.value(values().qty);
}
int Material::getWholeQty() const
{
    // What reads lies within limits that an int holds.
    const std::optional<double> number = m_rules.money.read(values().qty);
    return number ? static_cast<int>(*number) : numbers::leadingInt(values().qty);
}
float Material::getCostasFloat() const
{
    return m_rules.money.value(values().cost);
}
float Material::getTotalasFloat() const
{
    return m_rules.money.value(values().total);
}

QDate Material::getDateaddedasdate() const
{
    return dates::readDate(values().dateAdded, dates::dayFirstLong).value_or(dates::fallback());
}

std::int64_t Material::getDateByName(std::string_view nameAsDate) const
{
    return nameAsDate == "dateaddedasdate" ? getDateaddedasdate().toJulianDay() : Record::getDateByName(nameAsDate);
}

void Material::recalcTotal()
{
    const float total = getQtyasFloat() * getCostasFloat();
    setTotal(m_rules.money.write(static_cast<double>(total)));
}
