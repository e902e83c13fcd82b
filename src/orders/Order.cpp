#include "orders/Order.h"

#include "contacts/Contact.h"
#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "foundation/Numbers.h"
#include "inventory/TaxRate.h"
#include "storage/Settings.h"

#include <algorithm>

namespace {

std::string customerMark(const Order& order)
{
    constexpr std::array words {"Not known", "New customer", "Returning customer"};
    const int mark = order.getNewCustomer();
    return mark >= 0 && mark < static_cast<int>(words.size()) ? words[static_cast<std::size_t>(mark)] : "";
}

constexpr std::array orderDerivedFields {
    DerivedField<Order> {"balanceremaining", [](const Order& order) { return order.getBalanceRemaining(); }},
    DerivedField<Order> {"totaldue", [](const Order& order) { return order.getTotalDue(); }},
    DerivedField<Order> {
        "discountispercentage", [](const Order& order) { return std::string(order.getDiscountIsPercentage() ? "percent" : "flat"); }},
    DerivedField<Order> {"discountdescription", [](const Order& order) { return order.getDiscountDescription(); }},
    DerivedField<Order> {"newcustomer", customerMark},
    DerivedField<Order> {"one", [](const Order&) { return std::string("1"); }},
    DerivedField<Order> {"contactname", [](const Order& order) { return order.getContactname(); }},
};

/// The names behind "contact:" and "contact2:", and the contact's own names for them.
struct ContactFieldName {
    std::string_view asked;
    std::string_view own;
};
constexpr std::array orderContactFields {
    ContactFieldName {"add1", "add1"},
    ContactFieldName {"add2", "add2"},
    ContactFieldName {"add3", "add3"},
    ContactFieldName {"comments", "comments"},
    ContactFieldName {"companyname", "companyname"},
    ContactFieldName {"email", "email"},
    ContactFieldName {"country", "country"},
    ContactFieldName {"county", "county"},
    ContactFieldName {"extension", "extension"},
    ContactFieldName {"fax", "fax"},
    ContactFieldName {"jobtitle", "jobTitle"},
    ContactFieldName {"kind", "kind"},
    ContactFieldName {"mobile", "mobile"},
    ContactFieldName {"name", "name"},
    ContactFieldName {"surname", "surname"},
    ContactFieldName {"firstname", "firstname"},
    ContactFieldName {"phone", "phone"},
    ContactFieldName {"postcode", "postcode"},
    ContactFieldName {"title", "title"},
    ContactFieldName {"type", "type"},
    ContactFieldName {"website", "website"},
};

std::string contactFieldOfOrder(const Contact* contact, std::string_view name)
{
    if (!contact)
        return {};
    if (name == "id")
        return std::to_string(contact->getID());
    const auto found = std::find_if(
        orderContactFields.begin(), orderContactFields.end(), [&](const ContactFieldName& entry) { return entry.asked == name; });
    return found == orderContactFields.end() ? std::string() : contact->getFieldByName(found->own);
}

std::string secondContactField(const Order& order, std::string_view name)
{
    // The postcode comes from the first contact, and the first name goes by its own name; both are relied on.
    if (name == "postcode")
        return contactFieldOfOrder(order.getContact(), name);
    return name == "firstname" ? std::string() : contactFieldOfOrder(order.getContact2(Order::Fallback::none), name);
}

QDate dateOrFallback(std::string_view text, const char* format)
{
    return dates::readDate(text, format).value_or(dates::fallback());
}

} // namespace

bool OrderRules::pricesAreExclusive() const
{
    return ::pricesAreExclusive(settings);
}

std::span<const DerivedField<Order>> Order::derivedFields()
{
    return orderDerivedFields;
}

void Order::setContact(Contact* contact)
{
    m_contact = contact;
    set(&OrderValues::contactId, contact ? contact->getID() : 0);
    noteLink();
}

Contact* Order::getContact2(Fallback fallback) const
{
    return !m_contact2 && fallback == Fallback::firstContact ? m_contact : m_contact2;
}

int Order::getContact2Id(Fallback fallback) const
{
    return values().contact2Id == 0 && fallback == Fallback::firstContact ? values().contactId : values().contact2Id;
}

void Order::setContact2(Contact* contact)
{
    m_contact2 = contact;
    set(&OrderValues::contact2Id, contact ? contact->getID() : 0);
}

void Order::forgetContacts()
{
    m_contact = nullptr;
    m_contact2 = nullptr;
    noteLink();
}

std::string Order::getContactname() const
{
    return m_contact ? std::string(m_contact->getName()) : std::string();
}

QDate Order::getDateasdate() const
{
    return dateOrFallback(values().date, recordDateFormat(m_rules.settings));
}

QDate Order::getBalancePaidAsDate() const
{
    return dateOrFallback(values().balancePaid, dates::dayFirst);
}

QDate Order::getDepositpaidasdate() const
{
    return dateOrFallback(values().depositPaid, dates::dayFirst);
}

std::int64_t Order::getDateByName(std::string_view nameAsDate) const
{
    if (nameAsDate == "dateasdate")
        return getDateasdate().toJulianDay();
    if (nameAsDate == "balancepaidasdate")
        return getBalancePaidAsDate().toJulianDay();
    if (nameAsDate == "depositpaidasdate")
        return getDepositpaidasdate().toJulianDay();
    return Record::getDateByName(nameAsDate);
}

float Order::getNumericOrdernum() const
{
    return numbers::digitsOf(values().orderNum);
}

void Order::addPayment(Payment& payment)
{
    payment.setOrder(this);
    m_payments.push_back(&payment);
    noteChange();
}

void Order::removePaymentAtIndex(int index)
{
    if (index < 0 || index >= static_cast<int>(m_payments.size()))
        return;
    m_payments.erase(m_payments.begin() + index);
    noteChange();
}

float Order::money(Text text) const
{
    return m_rules.money.value(text);
}

float Order::getTotalPayments() const
{
    float sum = 0;
    for (const Payment* payment : m_payments)
        sum += m_rules.money.value(payment->getAmount());
    return sum;
}

std::string Order::getPayments() const
{
    const std::string currency = m_rules.settings.text(settings::currency).value_or("");
    std::string lines;
    for (const Payment* payment : m_payments) {
        lines.append("payment: ").append(currency).append(payment->getAmount());
        lines.append(" made by ").append(payment->getPaymentMethod());
        lines.append(" on: ").append(payment->getDatePaid()).append("\n");
    }
    return lines;
}

float Order::totalOfStoredFigures() const
{
    float total = money(values().value) + money(values().shipping);
    if (isPurchaseOrder() || m_rules.pricesAreExclusive())
        total += money(values().tax);
    return total;
}

std::string Order::getTotalDue() const
{
    return m_rules.money.write(std::max(totalOfStoredFigures(), 0.0f));
}

std::string Order::getBalanceRemaining() const
{
    return m_rules.money.write(std::max(totalOfStoredFigures() - getTotalPayments(), 0.0f));
}

std::string Order::getDiscountDescription() const
{
    if (!values().applyDiscount)
        return {};
    const std::string figure = values().discount.string();
    if (values().discountIsPercentage)
        return "discount: -" + figure + "% ";
    return "discount: -" + m_rules.settings.text(settings::currency).value_or("") + figure + " ";
}

std::span<Text OrderValues::*const> Order::shownTexts()
{
    static constexpr std::array texts {&OrderValues::orderNum, &OrderValues::title};
    return texts;
}

void Order::fetch(int step) const
{
    Record::fetch(step);
    if (!m_contact)
        return;
    if (step == 0)
        __builtin_prefetch(m_contact);
    else
        m_contact->fetch(step - 1);
}

std::string Order::getFieldByName(std::string_view name) const
{
    constexpr std::string_view first = "contact:";
    constexpr std::string_view second = "contact2:";
    if (name.starts_with(first))
        return contactFieldOfOrder(m_contact, name.substr(first.size()));
    if (name.starts_with(second))
        return secondContactField(*this, name.substr(second.size()));
    if (name == "contact2firstname")
        return contactFieldOfOrder(m_contact2, "firstname");
    return Record::getFieldByName(name);
}
