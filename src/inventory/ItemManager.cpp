#include "inventory/ItemManager.h"

#include "contacts/ContactManager.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "inventory/CollectiveMove.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace {

QString joinedNames(const std::vector<Item*>& items)
{
    QStringList names;
    for (const Item* item : items)
        names += toQString(item->getItem());
    return names.join(", ");
}

} // namespace

ItemManager::ItemManager(ItemManagerNeeds needs)
    : Collection(needs.sorting, needs.beeper)
    , constituentTable(needs.sorting, needs.beeper, needs.gate)
    , usedIn(needs.sorting, needs.beeper)
    , shortages(needs.sorting, needs.beeper)
    , m_needs(needs)
    , m_webExport(needs.user)
{
    list.columns = {
        {"code", localText("Code"), 110},
        {"item", localText("Item"), 340},
        {"variation", localText("Variation"), 150},
        {"brand", localText("Brand"), 150},
        {"category", localText("Category"), 190},
        {"price", localText("Price"), 110, ColumnAlign::right},
        {"qty", localText("In stock"), 110, ColumnAlign::right},
    };
    checkFields(form, valueFields());
    form.quantityMethod.setTitles(WebExport::quantityMethods());
    connectForms();
    constituentTable.onEdited = [this] { showQtyOfCollective(); };
    constituentTable.onSelected = [this] { form.removeConstituent.setEnabled(constituentTable.selectedConstituent() >= 0); };
    constituentTable.onSelected();
    listForm.search.onEdited = [this] { filter(); };
    listForm.filter.onEdited = [this] { filter(); };
}

void ItemManager::connectForms()
{
    form.save.run = [this] { finish(); };
    form.cancel.run = [this] { cancel(); };
    form.createSimilar.run = [this] { createSimilar(); };
    form.pickSupplier.run = [this] { pickSupplier(); };
    form.pickConstituent.run = [this] { pickConstituent(); };
    form.removeConstituent.run = [this] { removeConstituent(); };
    form.addStock.run = [this] { addStockToItem(); };
    form.choosePicture.run = [this] { choosePicture(); };
    form.removePicture.run = [this] { removePicture(); };
    form.picture.onOffered = [this](const QMimeData& data) { pictureOffered(data); };
    form.selectWebsiteLocation.run = [this] { selectWebsiteLocation(); };
    form.collective.onEdited = [this] { makeCollectiveItem(); };
    form.numberToMake.onEdited = [this] { showShortages(); };
    addStockForm.ok.run = [this] { addStockDialogOK(); };
    addStockForm.cancel.run = [this] { addStockForm.close(); };
    QObject::connect(&form, &Form::closed, &form, [this] {
        addStockForm.close();
        restoreType();
        // It may be large.
        form.picture.setPicture({});
    });
}

// Collective items

float ItemManager::getQtyForCollectiveItem(const Item& item) const
{
    if (!item.isCollectiveItem())
        return 0;
    float least = std::numeric_limits<float>::max();
    bool any = false;
    for (const Constituent& part : item.getConstituents()) {
        const Item* held = presentItem(*this, part.id());
        if (!held || part.qty() <= 0)
            continue;
        least = std::min(least, held->getQtyAsFloat() / part.qty());
        any = true;
    }
    return any ? std::max(least, 0.0f) : 0;
}

bool ItemManager::collectiveItemContainsItem(const Item& collective, const Item& item) const
{
    if (!collective.isCollectiveItem())
        return false;
    const std::vector<Constituent>& parts = collective.getConstituents();
    return std::any_of(parts.begin(), parts.end(), [&](const Constituent& part) { return presentItem(*this, part.id()) == &item; });
}

std::vector<Item*> ItemManager::whereUsed(const Item& item) const
{
    std::vector<Item*> users;
    for (dataObject* record : records()) {
        auto& candidate = static_cast<Item&>(*record);
        if (collectiveItemContainsItem(candidate, item))
            users.push_back(&candidate);
    }
    return users;
}

bool ItemManager::isSelfReferential(const Item& candidate, std::vector<const Item*>& seen) const
{
    std::unordered_set<const Item*> met(seen.begin(), seen.end());
    if (!candidate.isCollectiveItem())
        return met.contains(&candidate);
    struct Step {
        const Item* item;
        std::size_t next = 0;
    };
    // Without recursion: a file may hold any number of levels.
    std::vector<Step> way;
    const auto enter = [&](const Item& item) {
        if (item.getConstituents().empty())
            return false;
        if (!met.insert(&item).second)
            return true;
        seen.push_back(&item);
        way.push_back({&item});
        return false;
    };
    if (enter(candidate))
        return true;
    while (!way.empty()) {
        Step& step = way.back();
        if (step.next == step.item->getConstituents().size()) {
            way.pop_back();
            continue;
        }
        const Item* part = presentItem(*this, step.item->getConstituents()[step.next++].id());
        if (part && (met.contains(part) || (part->isCollectiveItem() && enter(*part))))
            return true;
    }
    return false;
}

// Stock

bool ItemManager::adjustQtyFor(Item& item, float by)
{
    if (!item.isCollectiveItem())
        return adjustPlain(item, by);
    CollectiveMove move(*this,
        {[this](const Item& collective, float amount) { return mayMoveCollective(collective, amount); },
            [this](Item& part, float amount) { adjustPlain(part, amount); }});
    return move.run(item, by);
}

bool ItemManager::adjustPlain(Item& item, float by)
{
    if (!item.getDecreaseQty())
        return true;
    if (by < 0 && item.getQtyAsFloat() < -by && !takesStockAnyway(item, by))
        return false;
    const float left = item.adjustQty(by);
    if (by < 0 && left <= static_cast<float>(numbers::leadingInt(item.getWarnlevel()))) {
        const QString figure = QString::fromStdString(numbers::twoDigits(static_cast<double>(left)));
        m_needs.alerts.ask(makeAlert(alerts::lowStock, {}, {figure, toQString(item.getItem())}));
    }
    return true;
}

bool ItemManager::takesStockAnyway(const Item& item, float by)
{
    const QString figure = QString::fromStdString(numbers::general(static_cast<double>(-by)));
    return m_needs.alerts.ask(makeAlert(alerts::outOfStock, {}, {toQString(item.getItem()), figure})) == 0;
}

bool ItemManager::mayMoveCollective(const Item& item, float by)
{
    return by >= 0 || getQtyForCollectiveItem(item) > 0
        || m_needs.alerts.ask(makeAlert(alerts::collectiveOutOfStock, {}, {toQString(item.getItem())})) == 0;
}

// Deleting

void ItemManager::recordAdded(dataObject&)
{
    finder.forget();
}

void ItemManager::recordChanged(dataObject& record)
{
    finder.changed(static_cast<const Item&>(record));
}

void ItemManager::recordRemoved(dataObject& record)
{
    finder.forget();
    // Nothing may be saved into an item that is gone.
    if (m_currentItem == &record)
        form.close();
}

void ItemManager::recordsCleared()
{
    finder.forget();
    m_categories.clear();
    addCategories({});
}

void ItemManager::tellInUse(const Item& item, const std::vector<Item*>& users)
{
    m_needs.alerts.ask(makeAlert(alerts::itemInUse, {}, {toQString(item.getItem()), joinedNames(users)}));
}

ItemManager::UsersById ItemManager::usersOf(std::span<dataObject* const> items) const
{
    UsersById users;
    for (const dataObject* item : items)
        users[item->getID()];
    for (dataObject* record : records()) {
        auto& candidate = static_cast<Item&>(*record);
        if (!candidate.isCollectiveItem())
            continue;
        for (const Constituent& part : candidate.getConstituents()) {
            const auto found = users.find(part.id());
            // It may list the same part twice.
            if (found != users.end() && (found->second.empty() || found->second.back() != &candidate))
                found->second.push_back(&candidate);
        }
    }
    return users;
}

/// Answers which are gone. An item that only items deleted before it used goes, too. What was deleted is off the list before anything is
/// told.
std::vector<dataObject*> ItemManager::deleteUnlessUsed(std::span<dataObject* const> items)
{
    UsersById usersById = usersOf(items);
    std::unordered_set<const dataObject*> going;
    std::vector<dataObject*> deleted;
    std::size_t offTheList = 0;
    const auto takeOffTheList = [&] {
        deleteItems(std::span(deleted).subspan(offTheList));
        offTheList = deleted.size();
        reloadData();
    };
    for (dataObject* record : items) {
        const auto& item = static_cast<const Item&>(*record);
        std::vector<Item*> users = presentItem(*this, item.getID()) == &item ? usersById[item.getID()] : std::vector<Item*>();
        std::erase_if(users, [&](const Item* user) { return going.contains(user); });
        if (users.empty()) {
            going.insert(record);
            deleted.push_back(record);
            continue;
        }
        takeOffTheList();
        tellInUse(item, users);
    }
    takeOffTheList();
    return deleted;
}

void ItemManager::deleteKey()
{
    const std::vector<dataObject*> selected = selectedItems();
    if (selected.empty() || m_needs.alerts.ask(alerts::deleteItems) != 0 || !m_needs.gate.readOnlyCheck())
        return;
    const int first = selectedRow();
    const std::vector<dataObject*> deleted = deleteUnlessUsed(selected);
    finishDeleting(deleted, first);
    m_needs.gate.setChangeFlag();
    if (!deleted.empty())
        m_needs.showStatus(
            deleted.size() == 1 ? localText("Deleted. Undo brings the item back.") : localText("Deleted. Undo brings the items back."));
}

// The list

void ItemManager::addCategories(std::string_view categories)
{
    for (const std::string& category : categoriesIn(categories)) {
        const QString title = QString::fromStdString(category);
        if (title != localText("All") && title != localText("In stock") && !m_categories.contains(title))
            m_categories += title;
    }
    listForm.filter.setTitles(QStringList {localText("All"), localText("In stock")} + m_categories);
    if (listForm.filter.index() < 0)
        listForm.filter.setIndex(0);
}

QStringList ItemManager::getCategories() const
{
    return m_categories;
}

void ItemManager::populateLists(const QStringList& taxCodes)
{
    m_taxCodes = taxCodes;
    form.taxcode.setTitles(m_taxCodes);
    std::string all;
    for (const dataObject* record : records()) {
        if (const std::string_view category = static_cast<const Item*>(record)->getCategory(); !category.empty())
            all.append(category).append(1, ',');
    }
    addCategories(all);
}

void ItemManager::applyFilter()
{
    makeAllVisible();
    hideWithoutWords(listForm.search.text().toStdString());
    const int choice = listForm.filter.index();
    const std::string category = listForm.filter.title().toStdString();
    for (dataObject* record : records()) {
        const auto& item = static_cast<const Item&>(*record);
        const bool outOfStock = choice == 1 && !item.getQty().empty() && item.getWholeQty() <= 0;
        const bool otherCategory = choice > 1 && item.getCategory().find(category) == std::string_view::npos;
        if (outOfStock || otherCategory)
            record->setVisible(false);
    }
}

std::string ItemManager::objectValue(std::string_view identifier, int row) const
{
    const Item* item = getnthVisibleItem(row);
    return item ? item->getFieldByName(identifier) : std::string();
}
