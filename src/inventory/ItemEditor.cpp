// The item editor: how an item gets into the form and back, and the parts of a collective item.
#include "inventory/ItemManager.h"

#include "contacts/ContactManager.h"
#include "contacts/SupplierDataSource.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "foundation/Numbers.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"
#include "storage/qvPicker.h"

namespace {

/// A text of the item and the control that shows it.
struct ItemControl {
    TextField ItemForm::*control;
    std::string_view (Item::*get)() const;
    void (Item::*set)(std::string_view);
};
constexpr std::array itemControls {
    ItemControl {&ItemForm::item, &Item::getItem, &Item::setItem},
    ItemControl {&ItemForm::code, &Item::getCode, &Item::setCode},
    ItemControl {&ItemForm::variation, &Item::getVariation, &Item::setVariation},
    ItemControl {&ItemForm::brand, &Item::getBrand, &Item::setBrand},
    ItemControl {&ItemForm::category, &Item::getCategory, &Item::setCategory},
    ItemControl {&ItemForm::description, &Item::getDescription, &Item::setDescription},
    ItemControl {&ItemForm::price, &Item::getPrice, &Item::setPrice},
    ItemControl {&ItemForm::bought, &Item::getBought, &Item::setBought},
    ItemControl {&ItemForm::shipping, &Item::getShipping, &Item::setShipping},
    ItemControl {&ItemForm::warnlevel, &Item::getWarnlevel, &Item::setWarnlevel},
    ItemControl {&ItemForm::optimumQty, &Item::getOptimumQty, &Item::setOptimumQty},
    ItemControl {&ItemForm::ean, &Item::getEan, &Item::setEan},
    ItemControl {&ItemForm::part, &Item::getPart, &Item::setPart},
    ItemControl {&ItemForm::link, &Item::getLink, &Item::setLink},
    ItemControl {&ItemForm::imageLink, &Item::getImageLink, &Item::setImageLink},
    ItemControl {&ItemForm::status, &Item::getStatus, &Item::setStatus},
    ItemControl {&ItemForm::websitefolder, &Item::getWebsitefolder, &Item::setWebsitefolder},
    ItemControl {&ItemForm::buttoncode, &Item::getButtoncode, &Item::setButtoncode},
};

/// A switch of the item and the control that shows it.
struct ItemSwitch {
    FlagField ItemForm::*control;
    bool (Item::*get)() const;
    void (Item::*set)(bool);
};
constexpr std::array itemSwitches {
    ItemSwitch {&ItemForm::decreaseQty, &Item::getDecreaseQty, &Item::setDecreaseQty},
    ItemSwitch {&ItemForm::exportbrevand, &Item::getExportbrevand, &Item::setExportbrevand},
    ItemSwitch {&ItemForm::exportgoogle, &Item::getExportgoogle, &Item::setExportgoogle},
    ItemSwitch {&ItemForm::hidebuttoncode, &Item::getHidebuttoncode, &Item::setHidebuttoncode},
};

/// A choice of the item and the control that shows it; no choice leaves the item as it is.
struct ItemChoice {
    ChoiceField ItemForm::*control;
    std::string_view (Item::*get)() const;
    void (Item::*set)(std::string_view);
};
constexpr std::array itemChoices {
    ItemChoice {&ItemForm::condition, &Item::getCondition, &Item::setCondition},
    ItemChoice {&ItemForm::taxcode, &Item::getTaxcode, &Item::setTaxcode},
    ItemChoice {&ItemForm::quantityMethod, &Item::getQuantityMethod, &Item::setQuantityMethod},
};

const QStringList itemConditions {"New", "Refurbished", "Used"};

} // namespace

std::vector<CheckedField> ItemManager::valueFields()
{
    const MoneyFormatter& money = m_needs.rules.money;
    const ValueCheck amount = values::amount(money);
    return {
        {&form.price, amount},
        {&form.bought, amount},
        {&form.shipping, amount},
        {&form.qty, values::number([&money](std::string_view text) { return stockQuantity(money, text).has_value(); })},
        {&form.warnlevel, values::wholeNumber()},
        {&form.optimumQty, values::number(money)},
        {&form.numberToMake, values::number(money)},
    };
}

void ItemManager::restoreType()
{
    if (m_typeBefore && m_currentItem)
        m_currentItem->setFieldByName("type", *m_typeBefore);
    m_typeBefore.reset();
}

std::string ItemManager::newCode(int id) const
{
    return m_needs.preferences.getItemPrefix() + std::to_string(id);
}

Item& ItemManager::join(std::unique_ptr<Item> created)
{
    const int proposed = created->getID();
    if (presentItem(*this, proposed)) {
        created->setID(nextFreeId(*this));
        if (created->getCode() == newCode(proposed))
            created->setCode(newCode(created->getID()));
    }
    return add(std::move(created));
}

std::unique_ptr<Item> ItemManager::makeNew()
{
    auto item = std::make_unique<Item>(m_needs.rules);
    item->setID(nextFreeId(*this));
    item->setCode(newCode(item->getID()));
    item->setWarnlevel(m_needs.preferences.getStockWarn());
    return item;
}

bool ItemManager::begin(bool forOrder)
{
    if (!m_needs.gate.readOnlyCheck() || !form.isFreeForAnother())
        return false;
    m_forOrder = forOrder;
    restoreType();
    m_created = makeNew();
    m_currentItem = m_created.get();
    setItem(*m_currentItem);
    form.open();
    form.focus(form.item);
    return true;
}

void ItemManager::create()
{
    begin(false);
}

bool ItemManager::createForCurrentOrder()
{
    return begin(true);
}

void ItemManager::edit()
{
    if (Item* item = getSelectedItem())
        editThisItem(*item);
}

void ItemManager::editThisItem(Item& item)
{
    if (form.isOpen() && m_currentItem == &item)
        return form.open();
    if (!form.isFreeForAnother())
        return;
    restoreType();
    m_created.reset();
    m_forOrder = false;
    m_currentItem = &item;
    m_typeBefore = item.values().type;
    setItem(item);
    form.open();
}

void ItemManager::cancel()
{
    form.close();
    constituentTable.setItem(nullptr);
    if (m_created) {
        m_created.reset();
        m_currentItem = nullptr;
        findAndSetHighestId();
    }
}

void ItemManager::setItem(const Item& item)
{
    for (const ItemControl& shown : itemControls)
        (form.*shown.control).setText(toQString((item.*shown.get)()));
    const Contact* supplier = presentItem(m_needs.contacts, numbers::leadingInt(item.getSupplier()));
    form.supplier.setText(supplier ? toQString(supplier->getName()) : QString());
    // What another item brought along is not offered for this one.
    form.condition.setTitles(itemConditions);
    form.taxcode.setTitles(m_taxCodes);
    form.quantityMethod.setTitles(WebExport::quantityMethods());
    for (const ItemChoice& shown : itemChoices)
        (form.*shown.control).setOrAddTitle(toQString((item.*shown.get)()));
    for (const ItemSwitch& shown : itemSwitches)
        (form.*shown.control).setOn((item.*shown.get)());
    form.collective.setOn(item.isCollectiveItem());
    constituentTable.setItem(m_currentItem);
    showPicture(item);
    showUsers();
    form.numberToMake.setText("1");
    makeCollectiveItem();
    m_changedByCommand = false;
}

void ItemManager::showTitle()
{
    const QString word = QString::fromStdString(m_needs.preferences.getTermItem());
    form.setTitle(form.collective.isOn() ? fillText(localText("Collective %@"), {word}) : word);
}

void ItemManager::makeCollectiveItem()
{
    const bool collective = form.collective.isOn();
    showTitle();
    form.qty.setReadOnly(collective);
    for (FormField* stock : std::initializer_list<FormField*> {&form.warnlevel, &form.optimumQty, &form.decreaseQty, &form.addStock})
        stock->setVisible(!collective);
    for (FormField* ofParts : std::initializer_list<FormField*> {
             &form.pickConstituent, &form.removeConstituent, &form.canBeMade, &form.limitedBy, &form.numberToMake})
        ofParts->setVisible(collective);
    if (!m_currentItem)
        return;
    // The parts are looked through as those of a collective item from the moment the switch is on.
    m_currentItem->makeCollectiveItem(collective);
    if (collective) {
        showQtyOfCollective();
    } else {
        form.qty.setText(toQString(m_currentItem->getQty()));
        m_partsNeeded.reset();
        showShortages();
    }
    m_qtyShown = form.qty.text();
}

void ItemManager::showQtyOfCollective()
{
    if (!m_currentItem)
        return;
    form.qty.setText(QString::fromStdString(numbers::general(static_cast<double>(getQtyForCollectiveItem(*m_currentItem)))));
    showParts();
}

std::string ItemManager::supplierIdFor(const std::string& name) const
{
    const Contact* supplier = m_needs.contacts.getContactbyName(name);
    return std::to_string(supplier ? supplier->getID() : 0);
}

void ItemManager::copyEditorInto(Item& item)
{
    for (const ItemControl& shown : itemControls)
        (item.*shown.set)((form.*shown.control).text().toStdString());
    // Stock that orders moved meanwhile stays as it is.
    if (form.qty.text() != m_qtyShown)
        item.setQty(form.qty.text().toStdString());
    for (const ItemChoice& shown : itemChoices) {
        if (const QString title = (form.*shown.control).title(); !title.isEmpty())
            (item.*shown.set)(title.toStdString());
    }
    item.setSupplier(supplierIdFor(form.supplier.text().toStdString()));
    for (const ItemSwitch& shown : itemSwitches)
        (item.*shown.set)((form.*shown.control).isOn());
    addCategories(form.category.text().toStdString());
    item.makeCollectiveItem(form.collective.isOn());
    if (item.isCollectiveItem())
        item.setQty(numbers::general(static_cast<double>(getQtyForCollectiveItem(item))));
}

void ItemManager::finish()
{
    if (!m_needs.gate.readOnlyCheck()) {
        form.close();
        return;
    }
    if (!m_currentItem)
        return;
    saveEditor();
    form.close();
    publish();
}

void ItemManager::saveEditor()
{
    copyEditorInto(*m_currentItem);
    m_typeBefore.reset();
    const bool isNew = m_created != nullptr;
    if (isNew)
        m_currentItem = &join(std::move(m_created));
    if (std::exchange(m_forOrder, false))
        m_needs.lineTarget.addItemToCurrentOrder(*m_currentItem);
    savePicture(*m_currentItem, isNew);
    filterAfterChange(*m_currentItem);
}

/// On its website, and on disk.
void ItemManager::publish()
{
    exportItemAsBrevandObject(*m_currentItem);
    m_needs.gate.writeDatabase(*this);
}

void ItemManager::createSimilar()
{
    if (!m_currentItem || !form.isOpen() || !m_needs.gate.readOnlyCheck())
        return;
    saveEditor();
    publish();
    const Item& previous = *m_currentItem;
    m_created = makeNew();
    m_created->setConstituents(previous.getConstituents());
    m_currentItem = m_created.get();
    form.code.setText(toQString(m_created->getCode()));
    constituentTable.setItem(m_currentItem);
    showUsers();
    m_currentItem->makeCollectiveItem(form.collective.isOn());
    // What is shown becomes the new item's, the quantity too.
    m_qtyShown.clear();
    m_pictureChanged = false;
    m_changedByCommand = false;
    form.open();
    form.focus(form.code);
}

void ItemManager::pickConstituent()
{
    m_needs.picker.beginfor([this](dataObject& item) { addConstituent(static_cast<Item&>(item)); }, *this, {"code", "item", "variation"},
        {80, 320, 100}, {localText("Code"), localText("Item"), localText("Variation")},
        QString::fromStdString(m_needs.preferences.getTermItem()));
}

void ItemManager::addConstituent(Item& part)
{
    if (!m_currentItem || !m_needs.gate.readOnlyCheck())
        return;
    std::vector<const Item*> seen {m_currentItem};
    const QString name = toQString(part.getItem());
    if (&part == m_currentItem || isSelfReferential(part, seen)) {
        m_needs.alerts.ask(makeAlert(alerts::selfReferential, {}, {name}));
        return;
    }
    if (collectiveItemContainsItem(*m_currentItem, part)) {
        // A new item has its name in the editor only.
        const QString own = m_currentItem->getItem().empty() ? form.item.text() : toQString(m_currentItem->getItem());
        m_needs.alerts.ask(makeAlert(alerts::alreadyContains, {}, {name, own}));
        return;
    }
    m_currentItem->addConstituent(part);
    constituentTable.setItem(m_currentItem);
    constituentTable.selectConstituent(constituentTable.numberOfRows() - 1);
    showQtyOfCollective();
}

void ItemManager::removeConstituent()
{
    if (!m_currentItem || constituentTable.selectedConstituent() < 0 || !m_needs.gate.readOnlyCheck())
        return;
    m_currentItem->removeConstituentAtIndex(constituentTable.selectedConstituent());
    constituentTable.setItem(m_currentItem);
    showQtyOfCollective();
}

void ItemManager::pickSupplier()
{
    const SupplierDataSource suppliers(m_needs.sorting, m_needs.beeper, m_needs.contacts);
    const auto take = [this](dataObject& supplier) {
        form.supplier.setText(toQString(static_cast<Contact&>(supplier).getName()));
        m_changedByCommand = true;
    };
    m_needs.picker.beginfor(
        take, suppliers, {"name", "address"}, {150, 350}, {localText("Name"), localText("Address")}, localText("Supplier"));
}

// The file

namespace {

void writeConstituents(const StoredRecord<Item>& stored, PlistWriter& writer)
{
    writer.openArray();
    for (const Constituent& part : stored.nested)
        writer.value(part.entry());
    writer.closeArray();
}

bool readConstituents(StoredRecord<Item>& stored, const PlistValue& value, TextStore&)
{
    if (!value.isArray())
        return false;
    for (const PlistValue& entry : value.array())
        stored.nested.emplace_back(entry);
    return true;
}

constexpr std::array itemNestedKeys {
    NestedKey<Item> {
        "constituents", [](const StoredRecord<Item>& stored) { return !stored.nested.empty(); }, writeConstituents, readConstituents},
};

} // namespace

void ItemFile::visitLinks(StoredRecord<Item>& stored, TextStore& store, const UseLink& use) const
{
    for (Constituent& part : stored.nested) {
        int id = part.id();
        use(recordFiles::items, id);
        if (id != part.id())
            part.setId(id);
    }
    // The supplier stands as a text.
    const int supplier = numbers::leadingInt(stored.values->supplier);
    int id = supplier;
    use(recordFiles::contacts, id);
    if (id != supplier)
        stored.values.change().supplier = store.add(std::to_string(id));
}

void ItemFile::collect(StoredRecords<Item>& records) const
{
    CollectionFile::collect(records);
    const std::optional<Text> saved = m_items.savedType();
    if (!saved)
        return;
    const std::vector<dataObject*>& all = m_items.records();
    const auto edited = std::find(all.begin(), all.end(), m_items.currentItem());
    if (edited != all.end())
        records[static_cast<std::size_t>(edited - all.begin())].values.change().type = *saved;
}

std::span<const NestedKey<Item>> ItemFile::nestedKeys() const
{
    return itemNestedKeys;
}
