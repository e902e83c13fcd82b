// One line of an order: what was sold, bought or charged. It keeps the item's name, code and price of the day it was made.
#pragma once

#include "storage/Record.h"

#include <array>
#include <span>

class MoneyFormatter;
class OrderLookup;
class ItemManager;

struct MaterialValues {
    Text item;
    Text qty = literalText<"1">();
    Text cost;
    Text unit;
    Text total;
    Text code;
    Text taxCode;
    Text dateAdded;
    Text variation;
    /// Ids of the order, the item (0 when the line is not from one) and the order's contact.
    int order = 0;
    int product = 0;
    int contact = 0;

    bool operator==(const MaterialValues&) const = default;
};

inline constexpr std::array materialFields {
    field<&MaterialValues::item>("item"),
    field<&MaterialValues::qty>("qty"),
    field<&MaterialValues::cost>("cost"),
    field<&MaterialValues::unit>("unit"),
    field<&MaterialValues::total>("total"),
    field<&MaterialValues::code>("code"),
    field<&MaterialValues::taxCode>("taxcode"),
    field<&MaterialValues::dateAdded>("dateadded"),
    field<&MaterialValues::variation>("variation"),
    field<&MaterialValues::order>("order").always(),
    field<&MaterialValues::product>("product").always(),
    field<&MaterialValues::contact>("order:contact:id").stores("contact").always(),
};
static_assert(namesAreUnique(materialFields));

/// What lines read through to.
struct LineRules {
    const MoneyFormatter& money;
    const OrderLookup& orders;
    const ItemManager& items;
};

class Material : public Record<Material, MaterialValues> {
public:
    struct Nested { };
    static constexpr bool idIsSettable = false;
    static constexpr auto& fieldRows() { return materialFields; }
    static std::span<const DerivedField<Material>> derivedFields();

    explicit Material(const LineRules& rules) : m_rules(rules) { }
    Material(const LineRules& rules, int order, int product = 0);

    std::string_view getItem() const { return values().item; }
    std::string_view getQty() const { return values().qty; }
    std::string_view getCost() const { return values().cost; }
    std::string_view getUnit() const { return values().unit; }
    std::string_view getTotal() const { return values().total; }
    std::string_view getCode() const { return values().code; }
    std::string_view getTaxCode() const { return values().taxCode; }
    std::string_view getDateAdded() const { return values().dateAdded; }
    std::string_view getVariation() const { return values().variation; }
    int getOrder() const { return values().order; }
    int getProduct() const { return values().product; }
    int getContact() const { return values().contact; }
    const std::string& getOrderType() const { return m_orderType; }

    void setItem(std::string_view text) { set(&MaterialValues::item, text); }
    void setQty(std::string_view text) { set(&MaterialValues::qty, text); }
    void setCost(std::string_view text) { set(&MaterialValues::cost, text); }
    void setUnit(std::string_view text) { set(&MaterialValues::unit, text); }
    void setTotal(std::string_view text) { set(&MaterialValues::total, text); }
    void setCode(std::string_view text) { set(&MaterialValues::code, text); }
    void setTaxCode(std::string_view text) { set(&MaterialValues::taxCode, text); }
    void setDateAdded(std::string_view text) { set(&MaterialValues::dateAdded, text); }
    void setVariation(std::string_view text) { set(&MaterialValues::variation, text); }
    void setProduct(int id) { set(&MaterialValues::product, id); }
    void setContact(int id) { set(&MaterialValues::contact, id); }
    void setOrderType(std::string_view type) { m_orderType = type; }

    /// The order whose list of lines holds this one; the collection keeps it in step.
    int filedUnder() const { return m_filedUnder; }
    void fileUnder(int orderId) { m_filedUnder = orderId; }

    float getQtyasFloat() const;
    /// The quantity as an integer, cut off after the point: what goods move by. A text that is no number counts by the
    /// digits it starts with.
    int getWholeQty() const;
    float getCostasFloat() const;
    float getTotalasFloat() const;
    QDate getDateaddedasdate() const;
    std::int64_t getDateByName(std::string_view nameAsDate) const override;
    float getNumericCode() const override { return numbers::digitsOf(values().code); }
    /// total = quantity times unit price, in money form.
    void recalcTotal();

    const LineRules& rules() const { return m_rules; }

private:
    const LineRules& m_rules;
    /// The owning order's kind, copied onto the line; not stored.
    std::string m_orderType;
    int m_filedUnder = 0;
};
