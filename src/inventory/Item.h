// A product or stock line that the business sells or buys; a collective item is made of other items.
#pragma once

#include "foundation/Result.h"
#include "foundation/plist/PlistValue.h"
#include "storage/Record.h"

#include <array>
#include <span>
#include <vector>

class ItemPictures;
class MoneyFormatter;
class QImage;
class SettingsStore;

struct ItemValues {
    Text item;
    Text code;
    Text variation;
    Text brand;
    Text category;
    Text description;
    Text price;
    Text bought;
    Text qty;
    Text warnlevel;
    Text optimumQty;
    Text shipping;
    Text status;
    Text supplier;
    Text taxcode;
    Text type = literalText<"Item">();
    Text condition;
    Text ean;
    Text part;
    Text link;
    Text imageLink;
    Text buttoncode;
    Text websitefolder = literalText<"~/sites/mysite/">();
    Text qtymethod;
    bool decreaseQty = true;
    bool exportbrevand = false;
    bool exportgoogle = false;
    bool hidebuttoncode = true;

    bool operator==(const ItemValues&) const = default;
};

inline constexpr std::array itemFields {
    field<&ItemValues::category>("category").searched(),
    field<&ItemValues::brand>("brand").searched(),
    field<&ItemValues::code>("code").searched(),
    field<&ItemValues::part>("part").searched(),
    field<&ItemValues::condition>("condition").searched(),
    field<&ItemValues::description>("description").also("comments").searched(),
    field<&ItemValues::ean>("ean").searched(),
    field<&ItemValues::item>("item").searched(),
    field<&ItemValues::status>("status").searched(),
    field<&ItemValues::variation>("variation").searched(),
    field<&ItemValues::supplier>("supplier").searched(),
    field<&ItemValues::price>("price"),
    field<&ItemValues::bought>("bought"),
    field<&ItemValues::qty>("qty"),
    field<&ItemValues::warnlevel>("warnlevel"),
    field<&ItemValues::optimumQty>("optimumqty"),
    field<&ItemValues::shipping>("shipping"),
    field<&ItemValues::taxcode>("taxcode"),
    field<&ItemValues::type>("type"),
    field<&ItemValues::link>("link"),
    field<&ItemValues::imageLink>("imagelink"),
    field<&ItemValues::buttoncode>("buttoncode"),
    field<&ItemValues::websitefolder>("websitefolder"),
    field<&ItemValues::qtymethod>("quantitymethod").getOnly(),
    field<&ItemValues::decreaseQty>("decreaseqty").stores("decreaseQty").always(),
    field<&ItemValues::exportbrevand>("exportbrevand").always(),
    field<&ItemValues::exportgoogle>("exportgoogle").always(),
    field<&ItemValues::hidebuttoncode>("hidebuttoncode").always(),
};
static_assert(namesAreUnique(itemFields));

/// One part of a collective item: the dictionary as the file holds it, with the keys "id", "code", "item" and "qty".
class Constituent {
public:
    /// What is no dictionary names no item and has no quantity; it is kept as it is.
    explicit Constituent(PlistValue entry);
    Constituent(int id, std::string_view code, std::string_view item);

    int id() const { return m_id; }
    void setId(int id);
    float qty() const { return m_qty; }
    /// A whole number is kept as one; it counts as whole when it differs from its integer part by no more than 0.0001.
    void setQty(float qty);
    std::string text(std::string_view key) const;
    const PlistValue& entry() const { return m_entry; }

private:
    void readNumbers();

    PlistValue m_entry;
    /// What the entry says: stock moves by them.
    int m_id = 0;
    float m_qty = 0;
};

/// The trimmed, non-empty entries of a comma-separated list of categories.
std::vector<std::string> categoriesIn(std::string_view list);

/// What items' figures depend on, and where their pictures lie; without that place an item has none.
struct ItemRules {
    const SettingsStore& settings;
    const MoneyFormatter& money;
    ItemPictures* pictures = nullptr;
};

/// A quantity in stock: read through the formatter, or in the short form that stock is written in from a million on ("2e+06"), which
/// the formatter refuses.
std::optional<double> stockQuantity(const MoneyFormatter& money, std::string_view text);

class Item : public Record<Item, ItemValues> {
public:
    using Nested = std::vector<Constituent>;
    static constexpr bool idIsSettable = true;
    static constexpr auto& fieldRows() { return itemFields; }
    static std::span<const DerivedField<Item>> derivedFields();

    explicit Item(const ItemRules& rules) : m_rules(rules) { }

    std::string_view getItem() const { return values().item; }
    std::string_view getCode() const { return values().code; }
    std::string_view getVariation() const { return values().variation; }
    std::string_view getBrand() const { return values().brand; }
    std::string_view getCategory() const { return values().category; }
    std::string_view getDescription() const { return values().description; }
    std::string_view getPrice() const { return values().price; }
    std::string_view getBought() const { return values().bought; }
    std::string_view getQty() const { return values().qty; }
    std::string_view getWarnlevel() const { return values().warnlevel; }
    std::string_view getOptimumQty() const { return values().optimumQty; }
    std::string_view getShipping() const { return values().shipping; }
    std::string_view getSupplier() const { return values().supplier; }
    std::string_view getTaxcode() const { return values().taxcode; }
    std::string_view getCondition() const { return values().condition; }
    std::string_view getEan() const { return values().ean; }
    std::string_view getPart() const { return values().part; }
    std::string_view getLink() const { return values().link; }
    std::string_view getImageLink() const { return values().imageLink; }
    std::string_view getStatus() const { return values().status; }
    std::string_view getButtoncode() const { return values().buttoncode; }
    std::string_view getWebsitefolder() const { return values().websitefolder; }
    std::string_view getQuantityMethod() const { return values().qtymethod; }
    std::string getType() const override { return values().type.string(); }
    bool getDecreaseQty() const { return values().decreaseQty; }
    bool getExportbrevand() const { return values().exportbrevand; }
    bool getExportgoogle() const { return values().exportgoogle; }
    bool getHidebuttoncode() const { return values().hidebuttoncode; }

    void setItem(std::string_view text) { set(&ItemValues::item, text); }
    void setCode(std::string_view text) { set(&ItemValues::code, text); }
    void setVariation(std::string_view text) { set(&ItemValues::variation, text); }
    void setBrand(std::string_view text) { set(&ItemValues::brand, text); }
    void setCategory(std::string_view text) { set(&ItemValues::category, text); }
    void setDescription(std::string_view text) { set(&ItemValues::description, text); }
    void setPrice(std::string_view text) { set(&ItemValues::price, text); }
    void setBought(std::string_view text) { set(&ItemValues::bought, text); }
    void setQty(std::string_view text) { set(&ItemValues::qty, text); }
    void setWarnlevel(std::string_view text) { set(&ItemValues::warnlevel, text); }
    void setOptimumQty(std::string_view text) { set(&ItemValues::optimumQty, text); }
    void setShipping(std::string_view text) { set(&ItemValues::shipping, text); }
    void setSupplier(std::string_view text) { set(&ItemValues::supplier, text); }
    void setTaxcode(std::string_view text) { set(&ItemValues::taxcode, text); }
    void setCondition(std::string_view text) { set(&ItemValues::condition, text); }
    void setEan(std::string_view text) { set(&ItemValues::ean, text); }
    void setPart(std::string_view text) { set(&ItemValues::part, text); }
    void setLink(std::string_view text) { set(&ItemValues::link, text); }
    void setImageLink(std::string_view text) { set(&ItemValues::imageLink, text); }
    void setStatus(std::string_view text) { set(&ItemValues::status, text); }
    void setButtoncode(std::string_view text) { set(&ItemValues::buttoncode, text); }
    void setWebsitefolder(std::string_view text) { set(&ItemValues::websitefolder, text); }
    void setQuantityMethod(std::string_view text) { set(&ItemValues::qtymethod, text); }
    void setDecreaseQty(bool on) { set(&ItemValues::decreaseQty, on); }
    void setExportbrevand(bool on) { set(&ItemValues::exportbrevand, on); }
    void setExportgoogle(bool on) { set(&ItemValues::exportgoogle, on); }
    void setHidebuttoncode(bool on) { set(&ItemValues::hidebuttoncode, on); }

    /// Read through the number formatter; what does not read is 0.
    float getPriceAsFloat() const;
    float getQtyAsFloat() const;
    /// The whole number the quantity starts with, or what the short form stands for, cut off after the point.
    int getWholeQty() const;
    float getOptimumQtyAsFloat() const;
    float getBoughtAsFloat() const;

    bool isCollectiveItem() const { return values().type == "Collective item"; }
    /// The constituents are kept either way.
    void makeCollectiveItem(bool collective);
    /// Adds to the quantity, written with "%g"; answers the new quantity.
    float adjustQty(float delta);
    void incQty();
    void decQty();

    void addCategory(std::string_view name);
    /// What remains comes in reverse order; the last category cannot be removed this way.
    void removeCategory(std::string_view name);
    bool isTheSameItemAs(const Item& other) const;

    const std::vector<Constituent>& getConstituents() const { return m_constituents; }
    void setConstituents(std::vector<Constituent> constituents);
    void addConstituent(const Item& part);
    void removeConstituentAtIndex(int index);
    void setConstituentQty(int index, float qty);

    /// Null when there is none, or none that can be shown.
    QImage getImage() const;
    /// A null picture takes it away. What was there before goes to the recovery store.
    Result<void> setImage(const QImage& picture);

    /// A figure in money form.
    std::string money(float amount) const;
    std::string currencyCode() const;
    float getNumericCode() const override;

private:
    float number(Text text) const;

    const ItemRules& m_rules;
    std::vector<Constituent> m_constituents;
};
