#include "inventory/Item.h"

#include "foundation/Money.h"
#include "foundation/Trimmed.h"
#include "inventory/ItemPictures.h"
#include "storage/Settings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

std::string conditionForFeed(const Item& item)
{
    if (item.getCondition() == "New")
        return "new";
    return item.getCondition() == "Refurbished" ? "refurbished" : "used";
}

constexpr std::array itemDerivedFields {
    DerivedField<Item> {"id", [](const Item& item) { return std::to_string(item.getID()); }},
    DerivedField<Item> {"availability", [](const Item& item) { return std::string(item.getWholeQty() < 1 ? "out of stock" : "in stock"); }},
    DerivedField<Item> {"currencycode", [](const Item& item) { return item.currencyCode(); }},
    DerivedField<Item> {"pricewithcode", [](const Item& item) { return std::string(item.getPrice()) + ' ' + item.currencyCode(); }},
    DerivedField<Item> {"conditionforgoogle", conditionForFeed},
    DerivedField<Item> {"shippingforgoogle", [](const Item& item) { return ":::" + std::string(item.getShipping()); }},
    DerivedField<Item> {"stockcost", [](const Item& item) { return item.money(item.getBoughtAsFloat() * item.getQtyAsFloat()); }},
    DerivedField<Item> {"stockretail", [](const Item& item) { return item.money(item.getPriceAsFloat() * item.getQtyAsFloat()); }},
    DerivedField<Item> {"reorderqty", [](const Item& item) { return item.money(item.getOptimumQtyAsFloat() - item.getQtyAsFloat()); }},
};

/// What "%g" wrote with an exponent, and only that.
std::optional<double> shortForm(std::string_view text)
{
    double number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = end.ec == std::errc() && end.ptr == text.data() + text.size();
    const bool hasExponent = text.find('e') != std::string_view::npos;
    const bool isFloat = std::fabs(number) <= std::numeric_limits<float>::max();
    return isWhole && hasExponent && isFloat && numbers::general(number) == text ? std::optional(number) : std::nullopt;
}

/// What is no number any more is none.
float quantityIn(const PlistValue& value)
{
    const float number = numbers::leadingFloat(value.asText());
    return std::isfinite(number) ? number : 0;
}

} // namespace

std::optional<double> stockQuantity(const MoneyFormatter& money, std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    const std::optional<double> plain = money.read(text);
    return plain ? plain : shortForm(text);
}

std::vector<std::string> categoriesIn(std::string_view list)
{
    std::vector<std::string> categories;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        if (const std::string_view category = trimmed(list.substr(0, comma)); !category.empty())
            categories.emplace_back(category);
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return categories;
}

Constituent::Constituent(int id, std::string_view code, std::string_view item) : m_entry(PlistValue::makeDict())
{
    m_entry.set("id", PlistValue::makeInteger(id));
    m_entry.set("code", PlistValue(std::string(code)));
    m_entry.set("item", PlistValue(std::string(item)));
    m_entry.set("qty", PlistValue::makeInteger(1));
    readNumbers();
}

Constituent::Constituent(PlistValue entry) : m_entry(std::move(entry))
{
    readNumbers();
}

void Constituent::readNumbers()
{
    m_id = numbers::leadingInt(text("id"));
    const PlistValue* qty = m_entry.find("qty");
    m_qty = qty ? quantityIn(*qty) : 0;
}

std::string Constituent::text(std::string_view key) const
{
    const PlistValue* value = m_entry.find(key);
    return value ? value->asText() : std::string();
}

void Constituent::setId(int id)
{
    if (!m_entry.isDict())
        return;
    m_entry.set("id", PlistValue::makeInteger(id));
    readNumbers();
}

void Constituent::setQty(float qty)
{
    if (!m_entry.isDict())
        return;
    const float whole = std::trunc(qty);
    const bool isWhole = std::fabs(qty - whole) <= 0.0001f && std::fabs(qty) < 2e9f;
    m_entry.set("qty", isWhole ? PlistValue::makeInteger(static_cast<int>(whole)) : PlistValue::makeReal(static_cast<double>(qty)));
    readNumbers();
}

std::span<const DerivedField<Item>> Item::derivedFields()
{
    return itemDerivedFields;
}

float Item::number(Text text) const
{
    return m_rules.money.value(text);
}

float Item::getPriceAsFloat() const
{
    return number(values().price);
}
float Item::getQtyAsFloat() const
{
    return static_cast<float>(stockQuantity(m_rules.money, values().qty).value_or(0));
}
int Item::getWholeQty() const
{
    using Limits = std::numeric_limits<int>;
    const std::optional<double> brief = shortForm(values().qty);
    if (!brief)
        return numbers::leadingInt(values().qty);
    return static_cast<int>(std::clamp<double>(std::trunc(*brief), Limits::min(), Limits::max()));
}
float Item::getOptimumQtyAsFloat() const
{
    return number(values().optimumQty);
}
float Item::getBoughtAsFloat() const
{
    return number(values().bought);
}

QImage Item::getImage() const
{
    if (!m_rules.pictures)
        return {};
    const Result<QImage> picture = m_rules.pictures->getImage(getID());
    return picture ? picture.value() : QImage();
}

Result<void> Item::setImage(const QImage& picture)
{
    if (!m_rules.pictures)
        return Error {"There is no place for pictures."};
    return m_rules.pictures->setImage(getID(), picture);
}

std::string Item::money(float amount) const
{
    return m_rules.money.write(static_cast<double>(amount));
}

std::string Item::currencyCode() const
{
    return m_rules.settings.text(settings::currencyCode).value_or("");
}

float Item::getNumericCode() const
{
    return numbers::digitsOf(values().code);
}

void Item::makeCollectiveItem(bool collective)
{
    set(&ItemValues::type, collective ? "Collective item" : "Item");
}

float Item::adjustQty(float delta)
{
    // Amounts of a damaged file must not make it something that is no number.
    constexpr float most = std::numeric_limits<float>::max();
    const float quantity = std::clamp(getQtyAsFloat() + delta, -most, most);
    setQty(numbers::general(static_cast<double>(quantity)));
    return quantity;
}

void Item::incQty()
{
    setQty(std::to_string(static_cast<std::int64_t>(getWholeQty()) + 1));
}

void Item::decQty()
{
    setQty(std::to_string(static_cast<std::int64_t>(getWholeQty()) - 1));
}

void Item::addCategory(std::string_view name)
{
    const std::string_view category = trimmed(name);
    const std::vector<std::string> present = categoriesIn(values().category);
    if (std::find(present.begin(), present.end(), category) != present.end())
        return;
    if (values().category.isEmpty())
        setCategory(category);
    else
        setCategory(values().category.string() + ", " + std::string(category));
}

void Item::removeCategory(std::string_view name)
{
    std::vector<std::string> kept = categoriesIn(values().category);
    std::erase(kept, std::string(trimmed(name)));
    if (kept.empty())
        return;
    std::string joined;
    for (auto category = kept.rbegin(); category != kept.rend(); ++category)
        joined += (joined.empty() ? "" : ", ") + *category;
    setCategory(joined);
}

bool Item::isTheSameItemAs(const Item& other) const
{
    return foldCase(getCode()) == foldCase(other.getCode());
}

void Item::setConstituents(std::vector<Constituent> constituents)
{
    m_constituents = std::move(constituents);
    noteChange();
}

void Item::addConstituent(const Item& part)
{
    m_constituents.emplace_back(part.getID(), part.getCode(), part.getItem());
    noteChange();
}

void Item::removeConstituentAtIndex(int index)
{
    if (index < 0 || index >= static_cast<int>(m_constituents.size()))
        return;
    m_constituents.erase(m_constituents.begin() + index);
    noteChange();
}

void Item::setConstituentQty(int index, float qty)
{
    if (index < 0 || index >= static_cast<int>(m_constituents.size()))
        return;
    m_constituents[static_cast<std::size_t>(index)].setQty(qty);
    noteChange();
}
