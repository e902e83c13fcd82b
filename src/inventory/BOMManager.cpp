#include "inventory/BOMManager.h"

#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "inventory/ItemManager.h"
#include "inventory/OrderLookup.h"
#include "inventory/TaxRate.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"

#include <cmath>
#include <limits>

namespace {

constexpr char fallbackTaxCode[] = "S";

bool isMoneyCell(std::string_view identifier)
{
    return identifier == "cost" || identifier == "total";
}

/// "=2*3.50" worked out, anything else as it is.
std::optional<std::string> workedOut(std::string_view value)
{
    if (!value.starts_with('='))
        return std::string(value);
    const std::optional<double> result = numbers::arithmetic(value.substr(1));
    return result ? std::optional(numbers::plain(*result)) : std::nullopt;
}

/// Cut off after the point; what no int can hold becomes the nearest one that can.
int wholeWithinInt(float number)
{
    using Limits = std::numeric_limits<int>;
    // The lowest int is a float, the highest is not: the first one beyond it is.
    constexpr float lowest = static_cast<float>(Limits::min());
    if (number >= -lowest)
        return Limits::max();
    return number <= lowest ? Limits::min() : static_cast<int>(number);
}

} // namespace

BOMManager::BOMManager(BOMManagerNeeds needs) : Collection(needs.sorting, needs.beeper), m_needs(needs)
{
    const auto editable = [](const char* identifier, int width, ColumnAlign align) {
        return ListColumn {identifier, {}, width, align, true, true};
    };
    list.columns = {
        editable("code", 80, ColumnAlign::left),
        editable("item", 176, ColumnAlign::left),
        editable("variation", 96, ColumnAlign::left),
        {"brand", {}, 96},
        editable("qty", 54, ColumnAlign::right),
        editable("unit", 64, ColumnAlign::left),
        editable("cost", 78, ColumnAlign::right),
        editable("total", 80, ColumnAlign::right),
        editable("taxcode", 86, ColumnAlign::left),
    };
}

// Lines by order

void BOMManager::recordAdded(dataObject& record)
{
    auto& line = static_cast<Material&>(record);
    line.fileUnder(line.getOrder());
    m_linesByOrder[line.getOrder()].push_back(&record);
}

void BOMManager::recordChanged(dataObject& record)
{
    auto& line = static_cast<Material&>(record);
    if (line.filedUnder() == line.getOrder() || !holds(line))
        return;
    std::erase(m_linesByOrder[line.filedUnder()], &record);
    line.fileUnder(line.getOrder());
    // In collection order, wherever in it the line stands.
    std::vector<dataObject*>& lines = m_linesByOrder[line.getOrder()];
    lines.clear();
    std::copy_if(records().begin(), records().end(), std::back_inserter(lines),
        [&](const dataObject* other) { return static_cast<const Material*>(other)->filedUnder() == line.getOrder(); });
}

void BOMManager::recordRemoved(dataObject& record)
{
    std::erase(m_linesByOrder[static_cast<Material&>(record).filedUnder()], &record);
}

void BOMManager::recordsCleared()
{
    m_linesByOrder.clear();
    m_currentOrder = 0;
}

const std::vector<dataObject*>& BOMManager::recordsOfOrder(int orderId) const
{
    static const std::vector<dataObject*> none;
    const auto found = m_linesByOrder.find(orderId);
    return found == m_linesByOrder.end() ? none : found->second;
}

std::vector<Material*> BOMManager::linesOfOrder(int orderId) const
{
    std::vector<Material*> lines;
    for (dataObject* record : recordsOfOrder(orderId))
        lines.push_back(static_cast<Material*>(record));
    return lines;
}

const std::vector<dataObject*>& BOMManager::visibleRows() const
{
    return recordsOfOrder(m_currentOrder);
}

void BOMManager::setCurrentOrder(int orderId)
{
    m_currentOrder = orderId;
    reloadData();
}

int BOMManager::numberForThisOrder() const
{
    return static_cast<int>(recordsOfOrder(m_currentOrder).size());
}

Material* BOMManager::getnthItem(int n, int forThisOrder) const
{
    const std::vector<dataObject*>& lines = recordsOfOrder(forThisOrder);
    if (n >= 0 && n < static_cast<int>(lines.size()))
        return static_cast<Material*>(lines[static_cast<std::size_t>(n)]);
    return getFirstItem();
}

bool BOMManager::currentItemIsPurchaseOrder() const
{
    return m_needs.target.currentItemIsPurchaseOrder();
}

// Making lines

std::unique_ptr<Material> BOMManager::newLine(int product) const
{
    auto line = std::make_unique<Material>(m_needs.rules, m_currentOrder, product);
    line->setDateAdded(dates::write(m_needs.clock.today(), dates::dayFirstLong));
    line->setTaxCode(fallbackTaxCode);
    copyOrderType(*line);
    setContactfor(*line);
    return line;
}

Material& BOMManager::addProduct(const Item& item, bool purchaseOrder)
{
    std::unique_ptr<Material> line = newLine(item.getID());
    line->setItem(item.getItem());
    line->setCode(item.getCode());
    line->setVariation(item.getVariation());
    if (!item.getTaxcode().empty())
        line->setTaxCode(item.getTaxcode());
    line->setCost(purchaseOrder ? item.getBought() : item.getPrice());
    line->recalcTotal();
    return join(std::move(line));
}

Material& BOMManager::join(std::unique_ptr<Material> line)
{
    Material& added = add(std::move(line));
    reloadData();
    return added;
}

Material& BOMManager::create(std::string_view description)
{
    std::unique_ptr<Material> line = newLine(0);
    line->setItem(description);
    line->recalcTotal();
    return join(std::move(line));
}

Material& BOMManager::addTimeLine(const TimeLine& time)
{
    constexpr qsizetype codeLength = 5;
    const QString startDate = toQString(time.startDate);
    std::unique_ptr<Material> line = newLine(0);
    line->setItem(time.title);
    if (startDate.size() > codeLength)
        line->setCode(startDate.left(codeLength).toStdString());
    line->setQty(time.totalTime);
    line->setUnit(time.unit);
    line->setCost(time.rate);
    line->setTotal(time.totalCharge);
    return join(std::move(line));
}

void BOMManager::duplicateMaterialsFromOrder(int fromOrder, int toOrder)
{
    const bool monthFirst = m_needs.settings.text(settings::dateFormat) == "1";
    const std::string today = dates::write(m_needs.clock.today(), monthFirst ? dates::monthFirstLong : dates::dayFirstLong);
    for (const Material* source : linesOfOrder(fromOrder)) {
        auto line = std::make_unique<Material>(m_needs.rules, toOrder, source->getProduct());
        line->setItem(source->getItem());
        line->setCode(source->getCode());
        line->setQty(source->getQty());
        line->setUnit(source->getUnit());
        line->setCost(source->getCost());
        line->setTotal(source->getTotal());
        line->setTaxCode(source->getTaxCode());
        line->setVariation(source->getVariation());
        line->setDateAdded(today);
        copyOrderType(*line);
        add(std::move(line));
    }
    reloadData();
}

void BOMManager::copyOrderType(Material& line) const
{
    const bool purchase = m_needs.rules.orders.orderType(line.getOrder()) == purchaseOrderType;
    line.setOrderType(purchase ? purchaseOrderType : customerType);
}

void BOMManager::updateOrderTypes(int orderId)
{
    for (Material* line : linesOfOrder(orderId))
        copyOrderType(*line);
}

Item* BOMManager::managedItemOf(const Material& line) const
{
    Item* item = presentItem(m_needs.items, line.getProduct());
    return item && item->getDecreaseQty() ? item : nullptr;
}

void BOMManager::setContactfor(Material& line) const
{
    line.setContact(m_needs.rules.orders.contactIdOfOrder(line.getOrder()));
}

void BOMManager::setContacts()
{
    for (dataObject* record : records())
        setContactfor(static_cast<Material&>(*record));
}

void BOMManager::updateAllMaterialsForOrder(int orderId, int withContactID)
{
    for (Material* line : linesOfOrder(orderId))
        line->setContact(withContactID);
}

// Removing lines

void BOMManager::returnStock(const Material& line)
{
    Item* item = managedItemOf(line);
    if (item && !currentItemIsPurchaseOrder())
        m_needs.items.adjustQtyFor(*item, std::trunc(line.getQtyasFloat()));
}

void BOMManager::deleteLine(Material& line)
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    returnStock(line);
    deleteItem(line);
    reloadData();
    m_needs.items.reloadCells();
}

void BOMManager::deleteKey()
{
    Material* line = getSelectedItem();
    if (!line)
        return;
    const QString item = QString::fromStdString(m_needs.preferences.getTermItem());
    const QString order = QString::fromStdString(m_needs.preferences.getTermOrder());
    if (m_needs.alerts.ask(makeAlert(alerts::removeLine, {}, {item, order, item})) == 0) {
        deleteLine(*line);
        m_needs.target.linesChanged();
    }
    m_needs.gate.writeDatabase(*this);
}

void BOMManager::deleteAllForCurrentOrder()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    std::vector<dataObject*> lines = recordsOfOrder(m_currentOrder);
    std::reverse(lines.begin(), lines.end());
    for (const dataObject* line : lines)
        returnStock(static_cast<const Material&>(*line));
    deleteItems(lines);
    reloadData();
    m_needs.items.reloadCells();
    m_needs.target.linesChanged();
    m_needs.gate.writeDatabase(*this);
}

void BOMManager::dropLinesOfOrders(std::span<const int> orderIds)
{
    std::vector<dataObject*> dropped;
    for (const int id : orderIds) {
        const std::vector<dataObject*>& lines = recordsOfOrder(id);
        dropped.insert(dropped.end(), lines.begin(), lines.end());
    }
    deleteItems(dropped);
    reloadData();
}

// Figures

float BOMManager::getTotalforCurrentOrder() const
{
    float sum = 0;
    for (const Material* line : linesOfOrder(m_currentOrder))
        sum += line->getTotalasFloat();
    return sum;
}

float BOMManager::getShippingforCurrentOrder() const
{
    float sum = 0;
    for (const Material* line : linesOfOrder(m_currentOrder)) {
        if (const Item* item = presentItem(m_needs.items, line->getProduct()))
            sum += m_needs.rules.money.value(item->getShipping()) * line->getQtyasFloat();
    }
    return sum;
}

float BOMManager::lineTax(const Material& line, TaxMode mode, bool applyDiscount, float discount, bool percentage) const
{
    float total = line.getTotalasFloat();
    if (applyDiscount && percentage)
        total = total + total * discount / -100.0f;
    else if (applyDiscount)
        total = total - discount / static_cast<float>(numberForThisOrder());
    const float rate = taxRateIn(m_needs.preferences.getTaxRateForCode(line.getTaxCode()).value_or(""), m_needs.rules.money);
    if (mode == TaxMode::onTop)
        return total * (rate / 100.0f);
    return total / (rate + 100.0f) * rate;
}

float BOMManager::taxOfCurrentOrder(TaxMode mode, bool applyDiscount, float discount, bool percentage) const
{
    float sum = 0;
    for (const Material* line : linesOfOrder(m_currentOrder))
        sum += lineTax(*line, mode, applyDiscount, discount, percentage);
    return sum;
}

float BOMManager::getTaxforCurrentOrderatRate(float, bool applyDiscount, float withDiscount, bool percentage) const
{
    return taxOfCurrentOrder(
        pricesAreExclusive(m_needs.settings) ? TaxMode::onTop : TaxMode::included, applyDiscount, withDiscount, percentage);
}

float BOMManager::getTaxExclusiveForCurrentOrderatRate(float, bool applyDiscount, float withDiscount, bool percentage) const
{
    return taxOfCurrentOrder(TaxMode::onTop, applyDiscount, withDiscount, percentage);
}

std::string BOMManager::countTotalItemsPurchased() const
{
    int count = 0;
    for (const Material* line : linesOfOrder(m_currentOrder))
        count = wholeWithinInt(static_cast<float>(count) + line->getQtyasFloat());
    return std::to_string(count);
}

// The table

std::string BOMManager::objectValue(std::string_view identifier, int row) const
{
    const Material* line = getnthVisibleItem(row);
    if (!line)
        return {};
    if (identifier != "brand")
        return line->getFieldByName(identifier);
    const Item* item = presentItem(m_needs.items, line->getProduct());
    return item ? std::string(item->getBrand()) : std::string();
}

std::optional<std::string> BOMManager::acceptedText(std::string_view identifier, std::string_view value) const
{
    const bool isNumberCell = isMoneyCell(identifier) || identifier == "qty";
    if (!isNumberCell)
        return std::string(value);
    const std::optional<std::string> text = workedOut(value);
    if (!text || text->empty())
        return text;
    if (isMoneyCell(identifier))
        return m_needs.rules.money.normalised(*text);
    return m_needs.rules.money.read(*text) ? text : std::nullopt;
}

bool BOMManager::moveStockForEdit(Material& line, std::string_view newQty)
{
    Item* item = managedItemOf(line);
    const float before = line.getQtyasFloat();
    const float after = m_needs.rules.money.value(newQty);
    if (!item || currentItemIsPurchaseOrder() || before == after)
        return true;
    if (!m_needs.items.adjustQtyFor(*item, before - after))
        return false;
    m_needs.items.reloadCells();
    m_needs.items.exportItemAsBrevandObject(*item);
    return true;
}

bool BOMManager::setObjectValue(std::string_view identifier, int row, std::string_view value)
{
    Material* line = getnthVisibleItem(row);
    if (!line || !m_needs.gate.readOnlyCheck())
        return false;
    const std::optional<std::string> text = acceptedText(identifier, value);
    const ListColumn* column = list.column(identifier);
    const bool editable = column && column->editable;
    if (!editable || !text || (identifier == "qty" && !moveStockForEdit(*line, *text))) {
        beeper().beep();
        return false;
    }
    line->setFieldByName(identifier, *text);
    if (identifier == "cost" || identifier == "qty")
        line->recalcTotal();
    reloadData();
    m_needs.target.linesChanged();
    m_needs.gate.writeDatabase(*this);
    return true;
}

QString BOMManager::cellFault(std::string_view identifier, int row) const
{
    const Material* line = getnthVisibleItem(row);
    if (!line)
        return {};
    if (isMoneyCell(identifier))
        return values::amount(m_needs.rules.money)(line->getFieldByName(identifier));
    if (identifier == "qty")
        return values::number(m_needs.rules.money)(line->getQty());
    const bool untaxed =
        identifier == "taxcode" && m_needs.preferences.handlesTax() && !m_needs.preferences.getTaxRateForCode(line->getTaxCode());
    return untaxed ? localText("No tax rate has this code; it counts as 0.") : QString();
}

bool MaterialFile::complete(StoredRecord<Material>& stored) const
{
    if (stored.values->contact != 0)
        return true;
    stored.values.change().contact = m_lines.rules().orders.contactIdOfOrder(stored.values->order);
    return stored.values->contact == 0;
}

void MaterialFile::visitLinks(StoredRecord<Material>& stored, TextStore&, const UseLink& use) const
{
    use(recordFiles::orders, stored.values.change().order);
    use(recordFiles::items, stored.values.change().product);
    use(recordFiles::contacts, stored.values.change().contact);
}

void MaterialFile::added(Material& line, const StoredRecord<Material>&)
{
    m_lines.copyOrderType(line);
}
