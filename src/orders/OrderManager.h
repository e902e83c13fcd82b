// The orders: their collection, the list, and the editor's controller.
#pragma once

#include "orders/Attachments.h"
#include "orders/LineEntry.h"
#include "orders/Order.h"
#include "orders/OrderForm.h"
#include "orders/OrderTotals.h"
#include "orders/PaymentTable.h"
#include "orders/Shell.h"
#include "orders/Tender.h"
#include "storage/ListForm.h"
#include "storage/SelectionWatch.h"
#include "storage/qvDataSource.h"

#include <QStringList>

#include <span>

class Alerts;
class BOMManager;
class Bill;
class BillManager;
class Clock;
struct CheckedField;
class ContactManager;
class DateFormatGate;
class FilePanels;
class Item;
class ItemManager;
class Opener;
class PaymentManager;
class SettingsForm;
class SettingsStore;
class WriteGate;
class qvPicker;

struct OrderManagerNeeds {
    const SortSettings& sorting;
    SettingsStore& settings;
    const SettingsForm& preferences;
    const OrderRules& rules;
    WriteGate& gate;
    Alerts& alerts;
    Beeper& beeper;
    const Clock& clock;
    FilePanels& panels;
    Opener& opener;
    ContactManager& contacts;
    ItemManager& items;
    BOMManager& lines;
    PaymentManager& payments;
    BillManager& bills;
    DateFormatGate& dateFormat;
    Stationery& stationery;
    Shell& shell;
    Attachments& attachments;
    qvPicker& picker;
};

/// What a new purchase order has for a date until the person writes one.
inline constexpr char dateOfNewPurchaseOrder[] = "today";

class OrderManager : public Collection<Order> {
public:
    explicit OrderManager(OrderManagerNeeds needs);

    OrderForm form;
    ListForm listForm;
    PaymentTable paymentTable;
    OrderTotals totals;
    Tender tender;
    LineEntry lineEntry;

    /// The order being edited, or the one last worked on; none at first.
    Order* currentItem() const { return m_currentItem; }
    bool isCreating() const { return m_creating; }

    // Making orders
    void create();
    void createPurchaseOrder();
    /// A new order for other parts of the program; not shown.
    Order& createAndAddDataObject();

    // The editor
    void setItem(Order& order);
    /// Opens the selected order.
    void edit() override;
    void editThisOrder(Order& order);
    enum class Finish { close, keepOpen };
    /// Copies the editor into the order. Closing also files the purchase order's bill and writes in the background.
    void finish(Finish how);
    void cancel();
    /// Picks an item from stock and puts it on the order as a line.
    void pickMaterial();
    /// So many of the item go on the order being edited as one line, taking stock unless it is a purchase order. Answers whether the line
    /// was made.
    bool addItemToCurrentOrder(Item& item, int count = 1);
    /// Makes an item that becomes a line of this order once it is saved.
    void createItemForCurrentOrder();
    /// That item was saved: its line is made unless the order was left meanwhile.
    void addNewItem(Item& item);
    /// A line that is from no item. Answers whether it was made.
    bool addFreeLine(const QString& description);
    void increaseQuantitiesForPurchaseOrder();
    void setRepeatInformativeText();
    /// Titles the editor with the user's word for what is in it.
    void showTitle();

    // Deleting
    /// The order with its attachments, lines, payments and bill. Stock stays as it is.
    void deleteOrder(Order& order);
    void deleteKey() override;

    // Contacts
    /// Connects by the tab that is showing: the first or the second contact.
    void connectContactByTab(Contact& contact, Order& order);
    void connectContact(Contact& contact, Order& order);
    void connectContact2(Contact& contact, Order& order);
    void connectContactById(int contactId, Order& order);
    void connectContact2ById(int contactId, Order& order);
    /// The picker's answer for the current order.
    void setContact(Contact& contact);
    int countOrdersForContactID(int contactId) const;
    void pickContact();
    /// Resolves every order's contacts after loading, and after contacts or orders came back from an earlier state.
    void linkContacts();

    // Attachments
    void attach();
    void fileDropped(const QString& path);
    /// The same for an order that need not be the one in the editor.
    Result<void> fileDropped(const QString& path, const Order& order);
    void viewAttachments();
    int getNumberOfAttachments() const { return m_numberofAttachments; }

    // Documents
    void installStationary();
    void printInvoice();
    void sendEmail();

    // The list
    /// All, Incomplete, Purchase orders, and the user's statuses; restores the last choice.
    void populateLists(const QStringList& statuses);
    std::string objectValue(std::string_view identifier, int row) const override;
    std::optional<RgbColour> labelColorForRow(int row) const override;
    /// Orders of the complete status.
    bool isFinishedRow(int row) const override;

protected:
    void recordRemoved(dataObject& record) override;
    void recordChanged(dataObject& record) override;
    std::optional<LinkedColumn> linkedColumn(std::string_view column) const override;
    void applyFilter() override;

private:
    // Editor, part by part
    void fillFigures(const Order& order);
    void fillChoices(const Order& order);
    void fillFlags(const Order& order);
    void showDiscountControls();
    void showPurchaseOrderControls(const Order& order);
    void showTaxControls();
    void showContacts(const Order& order);
    /// A command that would find nothing to work on is greyed.
    void showContactCommands();
    void showRemovable();
    /// The contact that the tab that is showing is about; the first on all tabs but the second's own.
    Contact* contactOfTab() const;
    /// Whom a message goes to: the first contact on its own tab, else the second.
    Contact* contactToWriteTo() const;
    void setAttachmentStatus();
    /// The figure in money form; what does not read stays as it was typed.
    std::string moneyText(const TextField& field) const;
    void copyEditorInto(Order& order);
    void copyChoices(Order& order);
    /// The purchase order's bill; none when it never had one or it was deleted.
    Bill* billOf(const Order& order) const;
    void fileBill(Order& order);
    void chooseUsualStatus();
    std::vector<dataObject*> remove(std::span<dataObject* const> orders);
    /// Into the recovery store; the person is told when that fails.
    bool letAttachmentsGo(const Order& order);
    /// Which fields of the editor hold what kind of value.
    std::vector<CheckedField> valueFields();
    void connectForm();
    void fillChoices();
    void connectFields();
    void connectButtons();
    void chooseType();
    void discountChanged();
    bool mayChangeCurrentOrder();
    void markNewCustomer(Contact& contact, Order& order);
    void number(Order& order);
    Order& addNewOrder();
    /// The next id that no order in the list has and no line names as its order's.
    int freeId();
    void hideByFilter();
    std::string completeStatus() const;

    OrderManagerNeeds m_needs;
    Order* m_currentItem = nullptr;
    bool m_creating = false;
    /// The one that the item being made is for.
    const Order* m_orderOfNewItem = nullptr;
    int m_numberofAttachments = 0;
    SelectionWatch m_selectedLine;
    SelectionWatch m_selectedPayment;
};
