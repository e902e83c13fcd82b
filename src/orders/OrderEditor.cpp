// The order editor: how an order gets into the form and back.
#include "orders/OrderManager.h"

#include "contacts/ContactManager.h"
#include "desktop/Alerts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "foundation/Dates.h"
#include "foundation/Log.h"
#include "foundation/Money.h"
#include "inventory/BOMManager.h"
#include "inventory/ItemManager.h"
#include "orders/BillManager.h"
#include "storage/PresentItem.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"

#include <QRegularExpression>

namespace {

const QStringList orderTypes {toQString(customerType), "Enquiry", "Estimate", toQString(purchaseOrderType)};
const QStringList paymentMethods {"web", "Cash", "Card", "Bank transfer", "Cheque"};
const QStringList repeatFrequencies {"week", "fortnight", "month", "year"};

void showText(TextField& field, std::string_view text)
{
    field.setText(toQString(text));
}

/// The contact's lines as the editor shows them: what is empty is left out, and every value stands on one line.
QString contactDetails(const Contact& contact)
{
    static const QRegularExpression breaks(QStringLiteral("[\\t\\n\\v\\f\\r\\x{85}\\x{2028}\\x{2029}]+"));
    constexpr std::array fields {"add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email", "ref"};
    QStringList lines;
    for (const char* name : fields) {
        const std::string value = contact.getFieldByName(name);
        if (!value.empty())
            lines += QString::fromLatin1(name) + '\t' + toQString(value).split(breaks, Qt::SkipEmptyParts).join(", ");
    }
    return lines.join('\n');
}

/// A contact is a contact without a name too.
QString shownName(const Contact& contact)
{
    return contact.getName().empty() ? localText("Contact without a name") : toQString(contact.getName());
}

QDate plusOnePeriodAsShown(const QDate& last, const QString& frequency)
{
    // Only months are told apart here; every other frequency is announced a week on.
    return frequency == "month" ? last.addMonths(1) : last.addDays(7);
}

} // namespace

std::vector<CheckedField> OrderManager::valueFields()
{
    const ValueCheck amount = values::amount(m_needs.rules.money);
    const ValueCheck date = recordDateCheck(m_needs.settings);
    return {
        // The program's own word is nothing to find fault with.
        {&form.date, [date](std::string_view text) { return text == dateOfNewPurchaseOrder ? QString() : date(text); }},
        {&form.discount, values::number(m_needs.rules.money)},
        {&form.shipping, amount},
        {&form.net, amount},
        {&form.taxAmount, amount},
        // Read back day first, whatever format the user chose.
        {&form.balancePaid, values::date([] { return dates::dayFirst; })},
    };
}

void OrderManager::connectForm()
{
    fillChoices();
    connectFields();
    connectButtons();
    listForm.search.onEdited = [this] { filter(); };
    listForm.filter.onEdited = [this] {
        m_needs.settings.setText(settings::orderManagerFilter, listForm.filter.title().toStdString());
        filter();
    };
}

void OrderManager::fillChoices()
{
    form.type.setTitles(orderTypes);
    form.paymentMethod.setTitles(paymentMethods);
    form.repeatFrequency.setTitles(repeatFrequencies);
    form.discountChoice.setTitles({"%", {}});
    form.tab.setTitles({localText("Order"), localText("Contact"), localText("Second contact"), localText("Payments"),
        localText("Repeat and attachments")});
    form.tab.setIndex(OrderForm::orderTab);
    checkFields(form, valueFields());
    for (TextField* computed : {&form.subtotal, &form.balanceRemaining, &form.repeatInformation, &form.attachments})
        computed->setReadOnly(true);
}

void OrderManager::connectFields()
{
    // The panel belongs to the order in the editor.
    QObject::connect(&form, &Form::closed, &form, [this] { tender.tenderCancel(); });
    form.type.onEdited = [this] { chooseType(); };
    form.tab.onEdited = [this] { showContactCommands(); };
    form.status.onEdited = [this] { m_needs.settings.setText(settings::selectedStatus, std::to_string(form.status.index())); };
    form.applyDiscount.onEdited = [this] {
        showDiscountControls();
        discountChanged();
    };
    form.discount.onEdited = [this] { discountChanged(); };
    form.discountChoice.onEdited = [this] { discountChanged(); };
    const auto balance = [this] {
        if (m_currentItem)
            totals.calculateBalance(*m_currentItem);
    };
    form.shipping.onEdited = balance;
    form.taxAmount.onEdited = balance;
    paymentTable.onEdited = balance;
    form.repeats.onEdited = [this] { setRepeatInformativeText(); };
    form.repeatFrequency.onEdited = [this] { setRepeatInformativeText(); };
    form.stationery.onEdited = [this] { m_needs.settings.setText(settings::chosenTemplate, std::to_string(form.stationery.index())); };
}

void OrderManager::connectButtons()
{
    const auto onCurrent = [this](auto operation) {
        return [this, operation] {
            if (m_currentItem)
                operation(*m_currentItem);
        };
    };
    form.calculateTax.run = onCurrent([this](Order& order) { totals.calculateTax(order); });
    form.shippingFromItems.run = onCurrent([this](Order& order) { totals.insertBOMShipping(order); });
    form.tender.run = onCurrent([this](Order& order) { tender.tender(order); });
    form.tenderFullAmount.run = onCurrent([this](Order& order) { tender.tenderFullAmount(order); });
    form.tenderRemove.run = onCurrent([this](Order& order) { tender.tenderRemove(order); });
    form.newContact.run = onCurrent([this](Order& order) { m_needs.shell.createContactForOrder(order); });
    form.editContact.run = onCurrent([this](Order& order) {
        if (Contact* contact = contactOfTab())
            m_needs.shell.editContactForOrder(*contact, order);
    });
    form.pickMaterial.run = [this] { pickMaterial(); };
    form.newItem.run = onCurrent([this](Order&) { createItemForCurrentOrder(); });
    form.removeMaterial.run = [this] { m_needs.lines.deleteKey(); };
    form.pickContact.run = [this] { pickContact(); };
    form.addStock.run = [this] { increaseQuantitiesForPurchaseOrder(); };
    form.attach.run = [this] { attach(); };
    form.viewAttachments.run = [this] { viewAttachments(); };
    form.printInvoice.run = [this] { printInvoice(); };
    form.sendEmail.run = [this] { sendEmail(); };
    form.cancel.run = [this] { cancel(); };
    form.save.run = [this] { finish(Finish::close); };
}

void OrderManager::setItem(Order& order)
{
    tender.tenderCancel();
    lineEntry.clear();
    m_currentItem = &order;
    m_needs.lines.setCurrentOrder(order.getID());
    showText(form.orderTitle, order.getTitle());
    showText(form.date, order.getDate());
    showText(form.orderNum, order.getOrderNum());
    showText(form.description, order.getDescription());
    showText(form.balancePaid, order.getBalancePaid());
    fillChoices(order);
    fillFlags(order);
    fillFigures(order);
    showDiscountControls();
    showTaxControls();
    showPurchaseOrderControls(order);
    showContacts(order);
    paymentTable.setOrder(&order);
    m_numberofAttachments = m_needs.attachments.countAttachments(order.getID());
    form.attachmentTrouble.setText({});
    setAttachmentStatus();
    setRepeatInformativeText();
    form.tab.setIndex(OrderForm::orderTab);
    showContactCommands();
}

void OrderManager::fillChoices(const Order& order)
{
    // What another order brought along is not offered for this one.
    form.type.setTitles(orderTypes);
    form.paymentMethod.setTitles(paymentMethods);
    form.repeatFrequency.setTitles(repeatFrequencies);
    form.type.setOrAddTitle(toQString(order.getType()));
    form.paymentMethod.setOrAddTitle(toQString(order.getPaymentMethod()));
    form.repeatFrequency.setOrAddTitle(toQString(order.getRepeatFrequency()));
    const QString status = toQString(order.getStatus());
    // A new order starts with a status of the user's: what it was born with does not join their list.
    if (m_creating && !form.status.titles().contains(status))
        chooseUsualStatus();
    else
        form.status.setOrAddTitle(status);
}

void OrderManager::chooseUsualStatus()
{
    form.status.setIndex(numbers::leadingInt(m_needs.settings.text(settings::selectedStatus).value_or("0")));
}

void OrderManager::fillFlags(const Order& order)
{
    // Ticked for every order that is loaded, whatever the record says.
    form.includeBOM.setOn(true);
    form.sent.setOn(order.getSent());
    form.repeats.setOn(order.getRepeats());
    form.applyDiscount.setOn(order.getApplyDiscount());
}

void OrderManager::fillFigures(const Order& order)
{
    showText(form.subtotal, order.getValue());
    showText(form.shipping, order.getShipping());
    showText(form.taxAmount, order.getTax());
    showText(form.net, order.getNet());
    const bool discount = order.getApplyDiscount();
    showText(form.discount, discount ? order.getDiscount() : std::string_view());
    form.discountChoice.setIndex(discount && !order.getDiscountIsPercentage() ? 1 : 0);
    showText(form.balanceRemaining, order.getBalanceRemaining());
    form.balanceRemaining.setCaption(QString::fromStdString(m_needs.preferences.getCurrency()));
    totals.showPaid(order);
    form.taxNote.setText({});
}

void OrderManager::showDiscountControls()
{
    const bool applies = form.applyDiscount.isOn();
    // The choice is one of place: the currency may have been another when it was made.
    const int chosen = form.discountChoice.index();
    form.discountChoice.setTitles({"%", QString::fromStdString(m_needs.preferences.getCurrency())});
    form.discountChoice.setIndex(chosen);
    form.discount.setVisible(applies);
    form.discountChoice.setVisible(applies);
}

void OrderManager::showTaxControls()
{
    const bool handled = m_needs.preferences.handlesTax();
    form.net.setEnabled(handled);
    form.taxAmount.setEnabled(handled);
    form.calculateTax.setEnabled(handled);
    const QString name = QString::fromStdString(m_needs.preferences.getTaxStatement());
    form.taxAmount.setCaption(name.isEmpty() ? localText("Tax") : name);
}

void OrderManager::showPurchaseOrderControls(const Order& order)
{
    const bool purchaseOrder = order.isPurchaseOrder();
    form.addStock.setVisible(purchaseOrder);
    form.addStock.setEnabled(purchaseOrder && !order.getStockAdded());
    form.balancePaid.setVisible(purchaseOrder);
    form.sent.setCaption(purchaseOrder ? localText("Order placed") : localText("Invoice sent"));
    showTitle();
}

void OrderManager::showTitle()
{
    const bool purchaseOrder = m_currentItem && m_currentItem->isPurchaseOrder();
    form.newItem.setCaption(fillText(localText("New %@"), {QString::fromStdString(m_needs.preferences.getTermItem())}));
    form.setTitle(purchaseOrder ? localText("Purchase Order") : QString::fromStdString(m_needs.preferences.getTermOrder()));
}

void OrderManager::showContacts(const Order& order)
{
    const auto show = [](const Contact* contact, TextField& name, TextField& details) {
        name.setText(contact ? shownName(*contact) : QString());
        details.setText(contact ? contactDetails(*contact) : QString());
    };
    const Contact* first = order.getContact();
    show(first, form.contactName, form.contactDetails);
    show(order.getContact2(Order::Fallback::none), form.contact2Name, form.contact2Details);
    const std::string mark = order.getNewCustomer() > 0 ? " · " + order.getFieldByName("newcustomer") : std::string();
    showText(form.contactNote, first ? first->getType() + mark : std::string());
    const Contact* second = order.getContact2(Order::Fallback::none);
    showText(form.contact2Note, second ? second->getType() : std::string());
    showContactCommands();
}

Contact* OrderManager::contactOfTab() const
{
    if (!m_currentItem)
        return nullptr;
    return form.tab.index() == OrderForm::secondContactTab ? m_currentItem->getContact2(Order::Fallback::none)
                                                           : m_currentItem->getContact();
}

Contact* OrderManager::contactToWriteTo() const
{
    if (!m_currentItem)
        return nullptr;
    return form.tab.index() == OrderForm::contactTab ? m_currentItem->getContact() : m_currentItem->getContact2(Order::Fallback::none);
}

void OrderManager::showContactCommands()
{
    form.editContact.setEnabled(contactOfTab() != nullptr);
    form.sendEmail.setEnabled(contactToWriteTo() != nullptr);
}

void OrderManager::showRemovable()
{
    form.removeMaterial.setEnabled(m_needs.lines.getSelectedItem() != nullptr);
    form.tenderRemove.setEnabled(paymentTable.selectedRow() >= 0);
}

void OrderManager::chooseType()
{
    if (!m_currentItem)
        return;
    if (!m_needs.gate.readOnlyCheck()) {
        form.type.setOrAddTitle(toQString(m_currentItem->getType()));
        return;
    }
    m_currentItem->setType(form.type.title().toStdString());
    m_needs.lines.updateOrderTypes(m_currentItem->getID());
    showPurchaseOrderControls(*m_currentItem);
}

void OrderManager::discountChanged()
{
    if (!m_currentItem)
        return;
    totals.insertBOMTotal(*m_currentItem);
    if (m_needs.preferences.handlesTax())
        form.taxNote.setText(localText("The tax does not count this change yet."));
}

void OrderManager::setRepeatInformativeText()
{
    const std::string_view text = m_currentItem ? m_currentItem->getLastRepeatDate() : std::string_view();
    if (text.empty()) {
        form.repeatInformation.setText({});
        return;
    }
    const std::optional<QDate> last = dates::readDate(text, dates::dayFirst);
    const char* format = m_needs.preferences.isUKFormat() ? dates::dayFirst : dates::monthFirst;
    const QString lastShown = last ? QString::fromStdString(dates::write(*last, format)) : toQString(text);
    QString information = fillText(localText("Last repeated on %@. "), {lastShown});
    if (last && form.repeats.isOn()) {
        const QDate due = plusOnePeriodAsShown(*last, form.repeatFrequency.title());
        information += fillText(localText("Next due to be repeated on %@ "), {QString::fromStdString(dates::write(due, dates::dayFirst))});
    }
    form.repeatInformation.setText(information);
}

void OrderManager::copyChoices(Order& order)
{
    order.setPaymentMethod(form.paymentMethod.title().toStdString());
    if (!form.status.title().isEmpty())
        order.setStatus(form.status.title().toStdString());
    if (!form.repeatFrequency.title().isEmpty())
        order.setRepeatFrequency(form.repeatFrequency.title().toStdString());
    if (!form.type.title().isEmpty())
        order.setType(form.type.title().toStdString());
}

std::string OrderManager::moneyText(const TextField& field) const
{
    const std::string typed = field.text().toStdString();
    return m_needs.rules.money.normalised(typed).value_or(typed);
}

void OrderManager::copyEditorInto(Order& order)
{
    order.setDate(form.date.text().toStdString());
    order.setDescription(form.description.text().toStdString());
    order.setOrderNum(form.orderNum.text().toStdString());
    copyChoices(order);
    order.setShipping(moneyText(form.shipping));
    order.setTax(moneyText(form.taxAmount));
    order.setNet(moneyText(form.net));
    order.setTitle(form.orderTitle.text().toStdString());
    order.setValue(moneyText(form.subtotal));
    order.setValueWithTax(totals.money(totals.number(form.subtotal) + totals.number(form.shipping)));
    order.setTotalItemsPurchased(m_needs.lines.countTotalItemsPurchased());
    order.setIncludeBOM(form.includeBOM.isOn());
    order.setSent(form.sent.isOn());
    order.setRepeats(form.repeats.isOn());
    if (form.balancePaid.isVisible())
        order.setBalancePaid(form.balancePaid.text().toStdString());
    const bool discount = form.applyDiscount.isOn();
    order.setApplyDiscount(discount);
    order.setDiscount(discount ? form.discount.text().toStdString() : std::string());
    order.setDiscountIsPercentage(!discount || form.discountChoice.index() == 0);
    if (form.repeats.isOn() && order.getLastRepeatDate().empty())
        order.setLastRepeatDate(dates::write(m_needs.clock.today(), dates::dayFirst));
}

void OrderManager::finish(Finish how)
{
    if (!m_currentItem || !holds(*m_currentItem))
        return;
    if (!m_needs.gate.readOnlyCheck()) {
        form.close();
        return;
    }
    Order& order = *m_currentItem;
    copyEditorInto(order);
    if (how == Finish::keepOpen)
        return;
    m_creating = false;
    if (order.isPurchaseOrder() && !form.balancePaid.text().isEmpty()) {
        fileBill(order);
        // Before the order that names it: an order must not point at a bill that is not there.
        m_needs.gate.writeDatabaseInBackground(m_needs.bills);
    }
    form.close();
    filterAfterChange(order);
    m_needs.gate.writeDatabaseInBackground(*this);
    m_needs.gate.writeDatabaseInBackground(m_needs.items);
}

Bill* OrderManager::billOf(const Order& order) const
{
    return order.getBillId() > 0 ? presentItem(m_needs.bills, order.getBillId()) : nullptr;
}

void OrderManager::fileBill(Order& order)
{
    Bill* bill = billOf(order);
    if (!bill) {
        bill = &m_needs.bills.createAndAddDataObject();
        order.setBillId(bill->getID());
    }
    bill->setAmount(order.getBalance());
    bill->setDatePaid(order.getBalancePaid());
    bill->setNet(order.getNet());
    bill->setVAT(order.getTax());
    bill->setName(order.getTitle());
}
