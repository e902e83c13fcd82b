#include "orders/OrderManager.h"

#include "contacts/ContactManager.h"
#include "contacts/DateFormatGate.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Dates.h"
#include "foundation/Log.h"
#include "foundation/Money.h"
#include "foundation/Numbers.h"
#include "inventory/BOMManager.h"
#include "inventory/ItemManager.h"
#include "orders/BillManager.h"
#include "orders/PaymentManager.h"
#include "orders/StatusColours.h"
#include "storage/FetchAhead.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"
#include "storage/qvPicker.h"

#include <algorithm>

namespace {

QString mailAddress(const Contact& contact)
{
    return toQString(contact.getEmail());
}

const dataObject* contactOfOrder(const dataObject& order)
{
    return static_cast<const Order&>(order).getContact();
}

/// So that whoever scans sees what came.
void selectLast(BOMManager& lines)
{
    lines.selectRow(lines.numberOfRows() - 1);
}

} // namespace

OrderManager::OrderManager(OrderManagerNeeds needs)
    : Collection(needs.sorting, needs.beeper)
    , paymentTable(needs.sorting, needs.beeper, needs.rules, needs.gate)
    , totals(form, needs.lines, needs.rules, needs.preferences)
    , tender({needs.rules, needs.preferences, needs.gate, needs.alerts, needs.clock, needs.payments, paymentTable, totals, form})
    , lineEntry({form, needs.items.finder, needs.beeper,
          [this](Item& item, int count) {
              const bool made = addItemToCurrentOrder(item, count);
              if (made)
                  selectLast(m_needs.lines);
              return made;
          },
          [this](const QString& description) { return addFreeLine(description); }})
    , m_needs(needs)
    , m_selectedLine(needs.lines, [this] { showRemovable(); })
    , m_selectedPayment(paymentTable, [this] { showRemovable(); })
{
    list.columns = {
        {"date", localText("Date"), 104},
        {"ordernum", localText("Number"), 120},
        {"title", localText("Title"), 520},
        {"contactname", localText("Contact"), 270},
        {"status", localText("Status"), 140},
    };
    connectForm();
    showRemovable();
    showContactCommands();
}

void OrderManager::number(Order& order)
{
    order.setOrderNum(m_needs.preferences.getOrderPrefix() + std::to_string(order.getID()));
}

int OrderManager::freeId()
{
    int id = nextFreeId(*this);
    // Lines may lie under the id of an order that a crash took: they are not this one's. At the end of all ids the next stays the same.
    for (int next = id; !m_needs.lines.recordsOfOrder(id).empty() && (next = nextFreeId(*this)) != id;)
        id = next;
    return id;
}

Order& OrderManager::addNewOrder()
{
    auto made = std::make_unique<Order>(m_needs.rules);
    made->setID(freeId());
    Order& order = add(std::move(made));
    number(order);
    return order;
}

void OrderManager::create()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    m_needs.shell.hideSplash();
    if (!m_needs.dateFormat.isChosen()) {
        m_needs.dateFormat.initialiseDateFormat();
        return;
    }
    if (!form.isFreeForAnother())
        return;
    m_creating = true;
    Order& order = addNewOrder();
    order.setDate(tender.today());
    setItem(order);
    form.open();
    form.focus(form.orderTitle);
}

void OrderManager::createPurchaseOrder()
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    if (!m_needs.dateFormat.isChosen()) {
        m_needs.dateFormat.initialiseDateFormat();
        return;
    }
    if (!form.isFreeForAnother())
        return;
    m_creating = true;
    Order& order = addNewOrder();
    // The word itself, not today's date.
    order.setDate(dateOfNewPurchaseOrder);
    order.setType(purchaseOrderType);
    setItem(order);
    form.open();
    form.focus(form.orderTitle);
}

Order& OrderManager::createAndAddDataObject()
{
    Order& order = addNewOrder();
    order.setDate(tender.today());
    return order;
}

void OrderManager::edit()
{
    if (Order* order = getSelectedItem())
        editThisOrder(*order);
}

void OrderManager::editThisOrder(Order& order)
{
    if (form.isOpen() && m_currentItem == &order)
        return form.open();
    if (!form.isFreeForAnother())
        return;
    m_creating = false;
    setItem(order);
    form.open();
}

void OrderManager::cancel()
{
    form.close();
    if (!m_creating)
        return;
    m_creating = false;
    if (m_currentItem)
        deleteOrder(*m_currentItem);
}

void OrderManager::pickMaterial()
{
    if (!m_currentItem)
        return;
    m_needs.picker.beginfor([this](dataObject& item) { addItemToCurrentOrder(static_cast<Item&>(item)); }, m_needs.items,
        {"code", "item", "variation"}, {80, 320, 100}, {localText("Code"), localText("Item"), localText("Variation")},
        QString::fromStdString(m_needs.preferences.getTermItem()));
}

bool OrderManager::mayChangeCurrentOrder()
{
    return m_currentItem && holds(*m_currentItem) && m_needs.gate.readOnlyCheck();
}

bool OrderManager::addItemToCurrentOrder(Item& item, int count)
{
    if (!mayChangeCurrentOrder())
        return false;
    const bool purchaseOrder = m_currentItem->isPurchaseOrder();
    // Whatever the stock questions were answered, the line is made; the answer only decides about the stock.
    if (!purchaseOrder)
        m_needs.items.adjustQtyFor(item, static_cast<float>(-count));
    Material& line = m_needs.lines.addProduct(item, purchaseOrder);
    if (count != 1) {
        line.setQty(std::to_string(count));
        line.recalcTotal();
        m_needs.lines.reloadCells();
    }
    m_needs.items.reloadCells();
    m_needs.items.exportItemAsBrevandObject(item);
    totals.linesChanged(*m_currentItem);
    return true;
}

void OrderManager::createItemForCurrentOrder()
{
    if (m_needs.items.createForCurrentOrder())
        m_orderOfNewItem = m_currentItem;
}

void OrderManager::addNewItem(Item& item)
{
    const Order* const order = std::exchange(m_orderOfNewItem, nullptr);
    if (!order || (order == m_currentItem && form.isOpen()))
        addItemToCurrentOrder(item);
    else
        m_needs.shell.showStatus(localText("Saved. The order it was made for is no longer open, so it has no line for it."));
}

bool OrderManager::addFreeLine(const QString& description)
{
    if (!mayChangeCurrentOrder())
        return false;
    m_needs.lines.create(cleanUtf8(description));
    selectLast(m_needs.lines);
    totals.linesChanged(*m_currentItem);
    return true;
}

void OrderManager::increaseQuantitiesForPurchaseOrder()
{
    if (!m_currentItem || !m_currentItem->isPurchaseOrder() || !m_needs.gate.readOnlyCheck())
        return;
    for (Material* line : m_needs.lines.linesOfOrder(m_currentItem->getID())) {
        Item* item = m_needs.lines.managedItemOf(*line);
        if (!item)
            continue;
        const int quantity = line->getWholeQty();
        logFormat("increasing stock of item by %i", quantity);
        m_needs.items.adjustQtyFor(*item, static_cast<float>(quantity));
    }
    m_currentItem->setStockAdded(true);
    form.addStock.setEnabled(false);
    m_needs.items.reloadCells();
}

void OrderManager::deleteOrder(Order& order)
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    dataObject* const one = &order;
    if (remove({&one, 1}).empty())
        return;
    // Orders and lines together: the order must not come back without its lines.
    m_needs.gate.writeDatabase(*this);
    reloadData();
}

/// Answers which are gone: an order stays when its attachments cannot be kept, since left behind they would come with the next order of
/// that number.
std::vector<dataObject*> OrderManager::remove(std::span<dataObject* const> orders)
{
    std::vector<dataObject*> gone;
    std::copy_if(orders.begin(), orders.end(), std::back_inserter(gone),
        [this](const dataObject* order) { return letAttachmentsGo(static_cast<const Order&>(*order)); });
    std::vector<int> ids;
    std::vector<dataObject*> payments;
    std::vector<dataObject*> bills;
    for (dataObject* record : gone) {
        auto& order = static_cast<Order&>(*record);
        ids.push_back(order.getID());
        payments.insert(payments.end(), order.getPaymentArray().begin(), order.getPaymentArray().end());
        if (Bill* bill = billOf(order))
            bills.push_back(bill);
        // The number is given again: an order that comes back is billed anew.
        order.setBillId(0);
    }
    // Once for each collection: each of them looks through all of its records.
    m_needs.lines.dropLinesOfOrders(ids);
    m_needs.payments.deleteItems(payments);
    m_needs.bills.deleteItems(bills);
    deleteItems(gone);
    return gone;
}

bool OrderManager::letAttachmentsGo(const Order& order)
{
    const Result<void> removed = m_needs.attachments.deleteAttachments(order.getID());
    if (removed)
        return true;
    logLine(removed.error().message);
    m_needs.alerts.ask({localText(alerts::deleteOrder.title), QString::fromStdString(removed.error().message), {localText("OK")}});
    return false;
}

void OrderManager::deleteKey()
{
    const std::vector<dataObject*> selected = selectedItems();
    if (selected.empty() || m_needs.alerts.ask(alerts::deleteOrder) != 0)
        return;
    if (!m_needs.gate.readOnlyCheck())
        return;
    const int first = selectedRow();
    const std::vector<dataObject*> gone = remove(selected);
    if (gone.empty())
        return;
    m_needs.gate.writeDatabase(*this);
    finishDeleting(gone, first);
    m_needs.gate.setChangeFlag();
    m_needs.shell.showStatus(gone.size() == 1
            ? localText("Deleted. Undo brings the order back with its payments, without its lines and attachments.")
            : localText("Deleted. Undo brings the orders back with their payments, without their lines and attachments."));
}

void OrderManager::recordRemoved(dataObject& record)
{
    // Nothing may be saved into an order that is gone.
    if (&record != m_currentItem || !form.isOpen())
        return;
    m_creating = false;
    form.close();
}

void OrderManager::recordChanged(dataObject& record)
{
    // Whoever gave the order a contact, its commands go by it.
    if (&record == m_currentItem)
        showContactCommands();
}

void OrderManager::connectContactByTab(Contact& contact, Order& order)
{
    if (form.tab.index() == OrderForm::contactTab)
        order.setContact(&contact);
    else if (form.tab.index() == OrderForm::secondContactTab)
        order.setContact2(&contact);
    markNewCustomer(contact, order);
    if (&order == m_currentItem)
        showContacts(order);
    reloadData();
}

void OrderManager::connectContact(Contact& contact, Order& order)
{
    order.setContact(&contact);
}

void OrderManager::connectContact2(Contact& contact, Order& order)
{
    order.setContact2(&contact);
}

void OrderManager::connectContactById(int contactId, Order& order)
{
    if (Contact* contact = presentItem(m_needs.contacts, contactId))
        connectContact(*contact, order);
}

void OrderManager::connectContact2ById(int contactId, Order& order)
{
    if (Contact* contact = presentItem(m_needs.contacts, contactId))
        connectContact2(*contact, order);
}

void OrderManager::markNewCustomer(Contact& contact, Order& order)
{
    const int orders = countOrdersForContactID(contact.getID());
    if (orders > 0)
        order.setNewCustomer(orders == 1 ? 1 : 2);
}

int OrderManager::countOrdersForContactID(int contactId) const
{
    return static_cast<int>(std::count_if(records().begin(), records().end(),
        [&](const dataObject* record) { return static_cast<const Order*>(record)->getContactId() == contactId; }));
}

void OrderManager::setContact(Contact& contact)
{
    if (!m_currentItem || !m_needs.gate.readOnlyCheck())
        return;
    connectContactByTab(contact, *m_currentItem);
    m_needs.lines.updateAllMaterialsForOrder(m_currentItem->getID(), contact.getID());
}

void OrderManager::pickContact()
{
    m_needs.picker.beginfor([this](dataObject& contact) { setContact(static_cast<Contact&>(contact)); }, m_needs.contacts,
        {"name", "address"}, {150, 350}, {localText("Name"), localText("Address")}, localText("Contact"));
}

void OrderManager::linkContacts()
{
    // A contact that was deleted and came back is another record of the same id.
    const auto isThere = [this](const Contact* contact) { return contact && m_needs.contacts.holds(*contact); };
    for (std::size_t n = 0; n < records().size(); ++n) {
        fetchFollowing([&](std::size_t more) { return n + more < records().size() ? records()[n + more] : nullptr; });
        constexpr std::size_t ahead = 8;
        if (n + ahead < records().size())
            __builtin_prefetch(m_needs.contacts.getItemById(static_cast<const Order&>(*records()[n + ahead]).getContactId()));
        auto& order = static_cast<Order&>(*records()[n]);
        if (!isThere(order.getContact()))
            connectContactById(order.getContactId(), order);
        if (!isThere(order.getContact2(Order::Fallback::none)))
            connectContact2ById(order.getContact2Id(Order::Fallback::none), order);
    }
}

void OrderManager::attach()
{
    if (!m_currentItem || !m_needs.gate.readOnlyCheck())
        return;
    if (const std::optional<QString> chosen = m_needs.panels.openFile(localText("Attach a file")))
        fileDropped(*chosen);
}

void OrderManager::fileDropped(const QString& path)
{
    if (m_currentItem)
        static_cast<void>(fileDropped(path, *m_currentItem)); // the editor itself says what failed
}

Result<void> OrderManager::fileDropped(const QString& path, const Order& order)
{
    if (!m_needs.gate.readOnlyCheck())
        return Error {"the database is open for reading only"};
    Result<void> filed = m_needs.attachments.file(order.getID(), path);
    if (!filed)
        logLine(filed.error().message);
    if (&order != m_currentItem)
        return filed;
    form.attachmentTrouble.setText(filed ? QString() : QString::fromStdString(filed.error().message));
    if (filed)
        ++m_numberofAttachments;
    setAttachmentStatus();
    return filed;
}

void OrderManager::viewAttachments()
{
    if (m_currentItem)
        m_needs.opener.revealFolder(m_needs.attachments.folder(m_currentItem->getID()));
}

void OrderManager::setAttachmentStatus()
{
    form.attachments.setText(Attachments::statusText(m_numberofAttachments));
    form.viewAttachments.setEnabled(m_numberofAttachments > 0);
}

void OrderManager::installStationary()
{
    form.stationery.setTitles(m_needs.stationery.installStationary());
    form.stationery.setIndex(numbers::leadingInt(m_needs.settings.text(settings::chosenTemplate).value_or("0")));
}

void OrderManager::printInvoice()
{
    if (!m_currentItem)
        return;
    finish(Finish::keepOpen);
    m_needs.stationery.openDocument(form.stationery.title(), *m_currentItem);
}

void OrderManager::sendEmail()
{
    if (const Contact* contact = contactToWriteTo())
        m_needs.opener.openUrl(QUrl("mailto:" + QString::fromLatin1(QUrl::toPercentEncoding(mailAddress(*contact), "@,+"))));
}

void OrderManager::populateLists(const QStringList& statuses)
{
    const QString statusInEditor = form.status.title();
    form.status.setTitles(statuses);
    chooseUsualStatus();
    if (form.isOpen())
        form.status.setOrAddTitle(statusInEditor);
    QStringList choices {localText("All"), localText("Incomplete"), localText("Purchase orders")};
    choices += statuses;
    const QString filteredBy = listForm.filter.title();
    listForm.filter.setTitles(choices);
    // A status may be empty.
    const std::optional<std::string> stored = m_needs.settings.text(settings::orderManagerFilter);
    listForm.filter.setTitle(stored ? QString::fromStdString(*stored) : choices.front());
    if (listForm.filter.index() < 0)
        listForm.filter.setIndex(0);
    if (listForm.filter.title() != filteredBy)
        filter();
}

void OrderManager::hideByFilter()
{
    const std::string choice = listForm.filter.title().toStdString();
    if (listForm.filter.index() <= 0)
        return;
    const bool incomplete = listForm.filter.index() == 1;
    const bool purchaseOrders = listForm.filter.index() == 2;
    const std::string complete = completeStatus();
    for (dataObject* record : records()) {
        const auto& order = static_cast<const Order&>(*record);
        const bool passes = purchaseOrders ? order.isPurchaseOrder()
            : incomplete                   ? order.getStatus() != complete
                                           : order.getStatus() == choice;
        if (!passes)
            record->setVisible(false);
    }
}

void OrderManager::applyFilter()
{
    makeAllVisible();
    hideByFilter();
    hideWithoutWords(listForm.search.text().toStdString(), m_needs.contacts, contactOfOrder);
}

std::optional<qvDataSource::LinkedColumn> OrderManager::linkedColumn(std::string_view column) const
{
    if (column != "contactname")
        return std::nullopt;
    return LinkedColumn {m_needs.contacts, contactOfOrder, "name"};
}

std::string OrderManager::objectValue(std::string_view identifier, int row) const
{
    const Order* order = getnthVisibleItem(row);
    return order ? order->getFieldByName(identifier) : std::string();
}

std::string OrderManager::completeStatus() const
{
    return m_needs.settings.text(settings::completeStatus).value_or(Order::usualCompleteStatus);
}

bool OrderManager::isFinishedRow(int row) const
{
    const Order* order = getnthVisibleItem(row);
    return order && order->getStatus() == completeStatus();
}

std::optional<RgbColour> OrderManager::labelColorForRow(int row) const
{
    const Order* order = getnthVisibleItem(row);
    const PlistValue* colours = m_needs.settings.value(settings::flagColours);
    if (!order || !colours)
        return std::nullopt;
    return statusColour(*colours, order->getStatus());
}
