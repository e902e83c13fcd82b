// The items: their collection, the list, stock arithmetic, collective items and the editor's controller.
#pragma once

#include "inventory/ConstituentTable.h"
#include "inventory/Item.h"
#include "inventory/ItemFinder.h"
#include "inventory/ItemForm.h"
#include "inventory/ItemRows.h"
#include "inventory/OrderLookup.h"
#include "inventory/PartsNeeded.h"
#include "inventory/WebExport.h"
#include "storage/CollectionFile.h"
#include "storage/ListForm.h"

#include <functional>
#include <optional>
#include <span>
#include <unordered_map>

class Alerts;
class ContactManager;
class FilePanels;
class SettingsForm;
class WriteGate;
struct CheckedField;
class qvPicker;

struct ItemManagerNeeds {
    const SortSettings& sorting;
    const SettingsForm& preferences;
    const ItemRules& rules;
    WriteGate& gate;
    Alerts& alerts;
    Beeper& beeper;
    const ContactManager& contacts;
    qvPicker& picker;
    LineTarget& lineTarget;
    const User& user;
    FilePanels& panels;
    /// Shows one line in the status bar.
    std::function<void(const QString&)> showStatus;
};

class ItemManager : public Collection<Item> {
public:
    explicit ItemManager(ItemManagerNeeds needs);

    ItemForm form;
    AddStockForm addStockForm;
    ListForm listForm;
    ConstituentTable constituentTable;
    ItemFinder finder {*this};
    UsedInRows usedIn;
    ShortageRows shortages;

    Item* currentItem() const { return m_currentItem; }
    const ItemRules& rules() const { return m_needs.rules; }
    /// What the editor's item was saved as; none while there is no such item.
    std::optional<Text> savedType() const { return m_currentItem && !m_created ? m_typeBefore : std::nullopt; }

    /// What the parts of a collective item make, counted by the scarcest part; not rounded. 0 for any other item.
    float getQtyForCollectiveItem(const Item& item) const;
    /// The collective items that list the item directly, in collection order.
    std::vector<Item*> whereUsed(const Item& item) const;
    bool collectiveItemContainsItem(const Item& collective, const Item& item) const;
    /// Whether the candidate reaches one of the items seen, or reaches one collective item by two ways.
    bool isSelfReferential(const Item& candidate, std::vector<const Item*>& seen) const;
    /// The one operation by which orders move stock. by is negative when stock leaves; the questions it asks may end it with no.
    bool adjustQtyFor(Item& item, float by);

    void create();
    /// Saves what is in the editor and goes on with a new item that is like it but for its code; nothing while no item is open.
    void createSimilar();
    /// A new item that becomes a line of the order being edited once it is saved. Answers whether it was made.
    bool createForCurrentOrder();
    void edit() override;
    void editThisItem(Item& item);
    void finish();
    void cancel();
    /// The selected items in one go, from the last row to the first; one that is used in a collective item still is told and stays.
    void deleteKey() override;
    void pickConstituent();
    void addConstituent(Item& part);
    void removeConstituent();
    void pickSupplier();
    /// The collective switch of the editor.
    void makeCollectiveItem();
    /// Opens the collective item that is selected in the list of where the item is used; what was changed is dropped.
    void openUsedIn();
    /// Whether a command changed the editor since it was filled: nothing was typed then, and still there is something to save.
    bool wasChangedByCommand() const { return m_changedByCommand; }

    // Stock by hand
    /// Asks how much came in; with no item open it beeps.
    void addStockToItem();
    /// What came in is added to the quantity shown; it beeps when that is nothing.
    void addStockDialogOK();
    /// Turns stock management off for every item, and tells for how many.
    void removeAllQtyManagement();

    // Pictures
    void choosePicture();
    void pictureOffered(const QMimeData& data);
    void removePicture();

    // The website
    /// Writes the item's data file, if it is marked for a website; the log tells how that went.
    void exportItemAsBrevandObject(const Item& item) const;
    /// Is told how many are done of how many, before each item and at the end; answering false stops.
    using GoesOn = std::function<bool(int done, int total)>;
    /// The same for every item that is marked, then it is told; not when it was stopped.
    void exportAsBrevandObjects(const GoesOn& goesOn = {});
    void selectWebsiteLocation();
    /// Titles the editor with the user's word for what is in it.
    void showTitle();

    /// A comma-separated list; what the menu lacks is added to it.
    void addCategories(std::string_view categories);
    QStringList getCategories() const;
    /// After loading: every category the items have, and the tax codes to choose from.
    void populateLists(const QStringList& taxCodes);
    std::string objectValue(std::string_view identifier, int row) const override;

protected:
    void recordAdded(dataObject& record) override;
    void recordChanged(dataObject& record) override;
    void recordRemoved(dataObject& record) override;
    void recordsCleared() override;
    void applyFilter() override;

private:
    /// The collective items that list an item, in collection order, by the item's id.
    using UsersById = std::unordered_map<int, std::vector<Item*>>;
    UsersById usersOf(std::span<dataObject* const> items) const;
    void tellInUse(const Item& item, const std::vector<Item*>& users);
    std::vector<dataObject*> deleteUnlessUsed(std::span<dataObject* const> items);
    /// Which fields of the editor hold what kind of value.
    std::vector<CheckedField> valueFields();
    /// Whether the editor now holds a new item.
    bool begin(bool forOrder);
    std::unique_ptr<Item> makeNew();
    void connectForms();
    /// Everything of saving that comes before the editor closes.
    void saveEditor();
    void publish();
    void savePicture(Item& item, bool isNew);
    void takePicture(const Result<QImage>& picture);
    void showPicture(const Item& item);
    void showUsers();
    void showParts();
    void showShortages();
    /// The code proposed for a new item: the user's prefix and the id.
    std::string newCode(int id) const;
    /// A new item joins the collection. When its id went to another one meanwhile it gets the next, and so does its code.
    Item& join(std::unique_ptr<Item> created);
    void setItem(const Item& item);
    void restoreType();
    void copyEditorInto(Item& item);
    std::string supplierIdFor(const std::string& name) const;
    void showQtyOfCollective();
    bool mayMoveCollective(const Item& item, float by);
    bool adjustPlain(Item& item, float by);
    bool takesStockAnyway(const Item& item, float by);

    ItemManagerNeeds m_needs;
    Item* m_currentItem = nullptr;
    std::unique_ptr<Item> m_created;
    /// The kind changes while the editor is open, since the quantity shown depends on it; this is what it was, until the item is saved.
    std::optional<Text> m_typeBefore;
    bool m_forOrder = false;
    /// The quantity as the editor was given it.
    QString m_qtyShown;
    bool m_pictureChanged = false;
    bool m_changedByCommand = false;
    WebExport m_webExport;
    std::optional<PartsNeeded> m_partsNeeded;
    QStringList m_categories;
    QStringList m_taxCodes;
};

/// "items.xml".
class ItemFile : public CollectionFile<Item> {
public:
    explicit ItemFile(ItemManager& items) : CollectionFile(items, recordFiles::items, "products", "items"), m_items(items) { }

    const char* recordName() const override { return "Item"; }
    /// What is edited and not saved yet does not count.
    std::optional<std::uint64_t> changes() const override { return std::nullopt; }

protected:
    std::span<const NestedKey<Item>> nestedKeys() const override;
    std::unique_ptr<Item> make() const override { return std::make_unique<Item>(m_items.rules()); }
    void added(Item& item, const StoredRecord<Item>& stored) override { item.setConstituents(stored.nested); }
    Item::Nested nestedOf(const Item& item) const override { return item.getConstituents(); }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Item>& stored, TextStore& store, const UseLink& use) const override;
    /// What is switched in the editor and not saved stays out of the file.
    void collect(StoredRecords<Item>& records) const override;

private:
    static constexpr std::array<std::string_view, 2> keys {"code", "item"};
    // Not the code: it is made from the id as long as nobody writes another.
    static constexpr std::array<std::string_view, 6> telling {"item", "description", "part", "ean", "link", "imagelink"};
    ItemManager& m_items;
};
