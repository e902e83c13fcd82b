// The lines of all orders, and the table of the lines of the order being edited.
#pragma once

#include "inventory/Material.h"
#include "storage/CollectionFile.h"

#include <span>
#include <unordered_map>

class Alerts;
class Clock;
class Item;
class ItemManager;
class LineTarget;
class SettingsForm;
class SettingsStore;
class WriteGate;

/// What a time line is made from.
struct TimeLine {
    std::string title;
    std::string startDate;
    std::string totalTime;
    std::string unit;
    std::string rate;
    std::string totalCharge;
};

struct BOMManagerNeeds {
    const SortSettings& sorting;
    const SettingsStore& settings;
    const SettingsForm& preferences;
    const LineRules& rules;
    WriteGate& gate;
    Alerts& alerts;
    Beeper& beeper;
    const Clock& clock;
    ItemManager& items;
    LineTarget& target;
};

class BOMManager : public Collection<Material> {
public:
    explicit BOMManager(BOMManagerNeeds needs);

    /// The order whose lines the table shows.
    void setCurrentOrder(int orderId);
    int currentOrder() const { return m_currentOrder; }
    int numberForThisOrder() const;
    /// The n-th line of the order in collection order; the first line of all when there is no such line.
    Material* getnthItem(int n, int forThisOrder) const;
    using Collection::getnthItem;
    /// The lines of the order, in collection order.
    const std::vector<dataObject*>& recordsOfOrder(int orderId) const;
    std::vector<Material*> linesOfOrder(int orderId) const;

    /// Makes the line for an item on the current order, at the cost price on a purchase order.
    Material& addProduct(const Item& item, bool purchaseOrder);
    Material& addTimeLine(const TimeLine& time);
    /// A line on the current order that is from no item: one of what the description says, at no price yet.
    Material& create(std::string_view description = {});
    /// Takes one line off its order; managed stock comes back, except from purchase orders.
    void deleteLine(Material& line);
    void deleteKey() override;
    void deleteAllForCurrentOrder();
    /// Takes the lines of orders that are deleted: no stock moves, and the caller writes.
    void dropLinesOfOrders(std::span<const int> orderIds);
    void duplicateMaterialsFromOrder(int fromOrder, int toOrder);

    float getTotalforCurrentOrder() const;
    float getShippingforCurrentOrder() const;
    /// The lines' tax by their codes; a flat discount is spread evenly over the lines. The rate asked with does not count.
    float getTaxforCurrentOrderatRate(float rate, bool applyDiscount, float withDiscount, bool percentage) const;
    /// The same for purchase orders: always on top of the price.
    float getTaxExclusiveForCurrentOrderatRate(float rate, bool applyDiscount, float withDiscount, bool percentage) const;
    std::string countTotalItemsPurchased() const;

    /// The line's item, when it is in stock lists still and its stock is managed.
    Item* managedItemOf(const Material& line) const;
    /// A line tells purchase orders from all others.
    void copyOrderType(Material& line) const;
    /// The order's kind changed.
    void updateOrderTypes(int orderId);
    void setContactfor(Material& line) const;
    void setContacts();
    void updateAllMaterialsForOrder(int orderId, int withContactID);
    bool currentItemIsPurchaseOrder() const;

    std::string objectValue(std::string_view identifier, int row) const override;
    bool setObjectValue(std::string_view identifier, int row, std::string_view value) override;
    /// A number that does not read, and a tax code without a rate.
    QString cellFault(std::string_view identifier, int row) const override;

    const LineRules& rules() const { return m_needs.rules; }

protected:
    const std::vector<dataObject*>& visibleRows() const override;
    void recordAdded(dataObject& record) override;
    void recordRemoved(dataObject& record) override;
    /// A line whose order was set by name goes to that order.
    void recordChanged(dataObject& record) override;
    void recordsCleared() override;

private:
    enum class TaxMode { onTop, included };
    float lineTax(const Material& line, TaxMode mode, bool applyDiscount, float discount, bool percentage) const;
    float taxOfCurrentOrder(TaxMode mode, bool applyDiscount, float discount, bool percentage) const;
    std::optional<std::string> acceptedText(std::string_view identifier, std::string_view value) const;
    bool moveStockForEdit(Material& line, std::string_view newQty);
    /// On the current order, dated today, at the standard tax code.
    std::unique_ptr<Material> newLine(int product) const;
    Material& join(std::unique_ptr<Material> line);
    void returnStock(const Material& line);

    BOMManagerNeeds m_needs;
    int m_currentOrder = 0;
    std::unordered_map<int, std::vector<dataObject*>> m_linesByOrder;
};

/// "itemsordered.xml".
class MaterialFile : public CollectionFile<Material> {
public:
    explicit MaterialFile(BOMManager& lines) : CollectionFile(lines, recordFiles::lines, "materials", "materials"), m_lines(lines) { }

    const char* recordName() const override { return "Line"; }

protected:
    std::unique_ptr<Material> make() const override { return std::make_unique<Material>(m_lines.rules()); }
    bool complete(StoredRecord<Material>& stored) const override;
    void added(Material& line, const StoredRecord<Material>& stored) override;
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> fixedKeys() const override { return fixed; }
    std::span<const std::string_view> filledInKeys() const override { return filledIn; }
    void visitLinks(StoredRecord<Material>& stored, TextStore&, const UseLink& use) const override;
    int ownerOf(const StoredRecord<Material>& stored) const override { return stored.values->order; }

private:
    static constexpr std::array<std::string_view, 2> keys {"code", "item"};
    static constexpr std::array<std::string_view, 3> fixed {"order", "product", "dateadded"};
    static constexpr std::array<std::string_view, 1> filledIn {"contact"};
    BOMManager& m_lines;
};
