// The one record behind every order document: customer orders and invoices, enquiries, estimates, purchase orders.
//
// Money figures are texts in money form; getTotalDue() and getBalanceRemaining() are always worked out from them and the
// payments at the moment of asking. All arithmetic is in single precision, step by step.
#pragma once

#include "inventory/OrderLookup.h"
#include "orders/Payment.h"
#include "storage/Record.h"

#include <array>
#include <span>
#include <vector>

class Contact;
class MoneyFormatter;
class SettingsStore;

struct OrderValues {
    Text title;
    Text date;
    Text description;
    Text status = literalText<"Enquiry">();
    Text type = literalText<"Customer">();
    Text orderNum;
    Text value;
    Text shipping;
    Text tax;
    Text net;
    Text taxRate;
    Text valueWithTax;
    Text balance;
    Text balancePaid;
    Text deposit;
    Text depositPaid;
    Text paymentMethod = literalText<"web">();
    Text transactionRef;
    Text totalItemsPurchased;
    Text repeatFrequency = literalText<"month">();
    Text lastRepeatDate;
    Text discount;
    int contactId = 0;
    int contact2Id = 0;
    int billId = 0;
    /// 0 not known, 1 new customer, 2 returning customer.
    int newCustomer = 0;
    bool includeBOM = false;
    bool sent = false;
    bool stockAdded = false;
    bool repeats = false;
    bool applyDiscount = false;
    bool discountIsPercentage = true;

    bool operator==(const OrderValues&) const = default;
};

inline constexpr std::array orderFields {
    field<&OrderValues::title>("title").searched(),
    field<&OrderValues::date>("date").searched(),
    field<&OrderValues::status>("status").searched(),
    field<&OrderValues::type>("type").searched(),
    field<&OrderValues::orderNum>("ordernum").alsoRead("orderNum").searched(),
    field<&OrderValues::description>("description"),
    field<&OrderValues::value>("value").alsoRead("subtotal"),
    field<&OrderValues::shipping>("shipping"),
    field<&OrderValues::tax>("tax"),
    field<&OrderValues::net>("net"),
    field<&OrderValues::taxRate>("taxRate").getOnly().alsoSet("taxrate").stores("taxrate"),
    field<&OrderValues::valueWithTax>("valueWithTax").getOnly().alsoSet("valuewithtax").stores("valuewithtax"),
    field<&OrderValues::balance>("balance"),
    field<&OrderValues::balancePaid>("balancepaid").also("balancePaid"),
    field<&OrderValues::deposit>("deposit"),
    field<&OrderValues::depositPaid>("depositpaid").also("depositPaid"),
    field<&OrderValues::paymentMethod>("paymentmethod"),
    field<&OrderValues::transactionRef>("transactionref"),
    field<&OrderValues::totalItemsPurchased>("totalitemspurchased"),
    field<&OrderValues::discount>("discount").getOnly(),
    field<&OrderValues::repeatFrequency>("repeatfrequency").unnamed(),
    field<&OrderValues::lastRepeatDate>("lastrepeatdate").unnamed(),
    field<&OrderValues::contactId>("contact").unnamed().always(),
    field<&OrderValues::contact2Id>("contact2").unnamed().always(),
    field<&OrderValues::billId>("bill").unnamed().always(),
    field<&OrderValues::newCustomer>("newcustomer").setOnly().always(),
    field<&OrderValues::includeBOM>("includeBOM").alsoSet("includebom").shownAs(FlagWords::capital).setsBy(FlagSetBy::capitalYes).always(),
    // Setting "sent" by name goes by the word "No"; imports rely on it.
    field<&OrderValues::sent>("sent").shownAs(FlagWords::capital).setsBy(FlagSetBy::capitalNo).always(),
    // Written under one spelling and read under another: after a reload the mark is always off.
    field<&OrderValues::stockAdded>("stockadded").unnamed().readsFrom("stockAdded").always(),
    field<&OrderValues::repeats>("repeats").unnamed().always(),
    field<&OrderValues::applyDiscount>("applydiscount").getOnly().shownAs(FlagWords::lower).always(),
    field<&OrderValues::discountIsPercentage>("discountispercentage").unnamed().always(),
};
static_assert(namesAreUnique(orderFields));

/// What every order's figures and dates depend on.
struct OrderRules {
    const SettingsStore& settings;
    const MoneyFormatter& money;

    /// Prices are entered without tax, and tax is added on top.
    bool pricesAreExclusive() const;
};

class Order : public Record<Order, OrderValues> {
public:
    /// The payments as the file holds them.
    struct Nested {
        std::vector<StoredPayment> payments;
        /// What stands among them and is no payment; null when nothing does.
        std::shared_ptr<const ForeignPaymentEntries> foreignPayments;
        /// False in the older form, which knew a deposit and a balance instead.
        bool hasPaymentArray = false;
    };
    static constexpr bool idIsSettable = true;
    static constexpr auto& fieldRows() { return orderFields; }
    static std::span<const DerivedField<Order>> derivedFields();

    explicit Order(const OrderRules& rules) : m_rules(rules) { }

    std::string_view getTitle() const { return values().title; }
    std::string_view getDate() const { return values().date; }
    std::string_view getDescription() const { return values().description; }
    std::string_view getStatus() const { return values().status; }
    std::string getType() const override { return values().type.string(); }
    std::string_view getOrderNum() const { return values().orderNum; }
    std::string_view getOrdernum() const { return values().orderNum; }
    std::string_view getValue() const { return values().value; }
    std::string_view getShipping() const { return values().shipping; }
    std::string_view getTax() const { return values().tax; }
    std::string_view getNet() const { return values().net; }
    std::string_view getTaxRate() const { return values().taxRate; }
    std::string_view getValueWithTax() const { return values().valueWithTax; }
    std::string_view getBalance() const { return values().balance; }
    std::string_view getBalancePaid() const { return values().balancePaid; }
    std::string_view getDeposit() const { return values().deposit; }
    std::string_view getDepositPaid() const { return values().depositPaid; }
    std::string_view getPaymentMethod() const { return values().paymentMethod; }
    std::string_view getTransactionRef() const { return values().transactionRef; }
    std::string_view getTotalItemsPurchased() const { return values().totalItemsPurchased; }
    std::string_view getRepeatFrequency() const { return values().repeatFrequency; }
    std::string_view getLastRepeatDate() const { return values().lastRepeatDate; }
    std::string_view getDiscount() const { return values().discount; }
    int getContactId() const { return values().contactId; }
    int getBillId() const { return values().billId; }
    int getNewCustomer() const { return values().newCustomer; }
    bool getIncludeBOM() const { return values().includeBOM; }
    bool getSent() const { return values().sent; }
    bool getStockAdded() const { return values().stockAdded; }
    bool getRepeats() const { return values().repeats; }
    bool getApplyDiscount() const { return values().applyDiscount; }
    bool getDiscountIsPercentage() const { return values().discountIsPercentage; }
    bool isPurchaseOrder() const { return values().type == purchaseOrderType; }

    void setTitle(std::string_view text) { set(&OrderValues::title, text); }
    void setDate(std::string_view text) { set(&OrderValues::date, text); }
    void setDescription(std::string_view text) { set(&OrderValues::description, text); }
    void setStatus(std::string_view text) { set(&OrderValues::status, text); }
    void setType(std::string_view text) { set(&OrderValues::type, text); }
    void setOrderNum(std::string_view text) { set(&OrderValues::orderNum, text); }
    void setValue(std::string_view text) { set(&OrderValues::value, text); }
    void setShipping(std::string_view text) { set(&OrderValues::shipping, text); }
    void setTax(std::string_view text) { set(&OrderValues::tax, text); }
    void setNet(std::string_view text) { set(&OrderValues::net, text); }
    void setTaxRate(std::string_view text) { set(&OrderValues::taxRate, text); }
    void setValueWithTax(std::string_view text) { set(&OrderValues::valueWithTax, text); }
    void setBalance(std::string_view text) { set(&OrderValues::balance, text); }
    void setBalancePaid(std::string_view text) { set(&OrderValues::balancePaid, text); }
    void setDeposit(std::string_view text) { set(&OrderValues::deposit, text); }
    void setDepositPaid(std::string_view text) { set(&OrderValues::depositPaid, text); }
    void setPaymentMethod(std::string_view text) { set(&OrderValues::paymentMethod, text); }
    void setTransactionRef(std::string_view text) { set(&OrderValues::transactionRef, text); }
    void setTotalItemsPurchased(std::string_view text) { set(&OrderValues::totalItemsPurchased, text); }
    void setRepeatFrequency(std::string_view text) { set(&OrderValues::repeatFrequency, text); }
    void setLastRepeatDate(std::string_view text) { set(&OrderValues::lastRepeatDate, text); }
    void setDiscount(std::string_view text) { set(&OrderValues::discount, text); }
    void setBillId(int id) { set(&OrderValues::billId, id); }
    void setNewCustomer(int mark) { set(&OrderValues::newCustomer, mark); }
    void setIncludeBOM(bool on) { set(&OrderValues::includeBOM, on); }
    void setSent(bool on) { set(&OrderValues::sent, on); }
    void setStockAdded(bool on) { set(&OrderValues::stockAdded, on); }
    void setRepeats(bool on) { set(&OrderValues::repeats, on); }
    void setApplyDiscount(bool on) { set(&OrderValues::applyDiscount, on); }
    void setDiscountIsPercentage(bool on) { set(&OrderValues::discountIsPercentage, on); }

    /// The resolved contact; none when the id was never resolved.
    Contact* getContact() const { return m_contact; }
    /// The contact and its id together; none clears both.
    void setContact(Contact* contact);
    /// The second contact; with a fallback, the first when there is no second.
    enum class Fallback { none, firstContact };
    Contact* getContact2(Fallback fallback) const;
    int getContact2Id(Fallback fallback) const;
    void setContact2(Contact* contact);
    /// Lets go of both contacts; their ids stay, and linkContacts() finds them again.
    void forgetContacts();
    std::string getContactname() const;

    /// The order's date; what does not read is the date of 1/1/00.
    QDate getDateasdate() const;
    /// These two are day first whatever the user's format is.
    QDate getBalancePaidAsDate() const;
    QDate getDepositpaidasdate() const;
    /// The status of a finished order as long as the user names no other.
    static constexpr const char* usualCompleteStatus = "Complete";
    /// 1 for that status, whatever the user named, else 0.
    int getColour() const { return values().status == usualCompleteStatus ? 1 : 0; }

    // Payments, in the order they were added. They belong to the payments collection.
    const std::vector<Payment*>& getPaymentArray() const { return m_payments; }
    /// What the file's list of payments held beside payments; kept so that saving gives it back. May be null.
    const std::shared_ptr<const ForeignPaymentEntries>& foreignPayments() const { return m_foreignPayments; }
    void setForeignPayments(std::shared_ptr<const ForeignPaymentEntries> entries) { m_foreignPayments = std::move(entries); }
    void addPayment(Payment& payment);
    void removePaymentAtIndex(int index);
    /// Their sum, read through the money formatter.
    float getTotalPayments() const;
    /// One line a payment, for documents.
    std::string getPayments() const;

    /// The total before payments, and what remains of it; money text, never below 0.
    std::string getTotalDue() const;
    std::string getBalanceRemaining() const;
    std::string getDiscountDescription() const;

    std::string getFieldByName(std::string_view name) const override;
    std::int64_t getDateByName(std::string_view nameAsDate) const override;
    float getNumericOrdernum() const override;
    /// What lists show of an order is its contact's too.
    void fetch(int step) const override;
    static std::span<Text OrderValues::*const> shownTexts();

private:
    float totalOfStoredFigures() const;
    float money(Text text) const;

    const OrderRules& m_rules;
    Contact* m_contact = nullptr;
    Contact* m_contact2 = nullptr;
    std::vector<Payment*> m_payments;
    std::shared_ptr<const ForeignPaymentEntries> m_foreignPayments;
};
