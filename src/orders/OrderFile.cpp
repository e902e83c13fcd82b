#include "orders/OrderFile.h"

#include "foundation/plist/PlistScanner.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "orders/PaymentManager.h"

namespace {

constexpr FieldRow<PaymentValues> paymentRow(std::size_t index)
{
    return paymentFields[index];
}

void writePayment(const PaymentValues& payment, PlistWriter& writer)
{
    writer.openDict();
    for (std::size_t i = 0; i < paymentFields.size(); ++i) {
        writer.key(paymentRow(i).key);
        writer.text(payment.*paymentRow(i).text);
    }
    writer.closeDict();
}

void writePayments(const StoredRecord<Order>& stored, PlistWriter& writer)
{
    writer.openArray();
    for (const PaymentValues& payment : stored.nested.payments)
        writePayment(payment, writer);
    writer.closeArray();
}

PaymentValues readPayment(const PlistValue& value, TextStore& store)
{
    PaymentValues payment;
    for (std::size_t i = 0; i < paymentFields.size(); ++i) {
        const PlistValue* text = value.find(paymentRow(i).key);
        if (text && text->hasText())
            payment.*paymentRow(i).text = store.add(cleanUtf8(text->asText()));
    }
    return payment;
}

bool readPayments(StoredRecord<Order>& stored, const PlistValue& value, TextStore& store)
{
    if (!value.isArray())
        return false;
    stored.nested.hasPaymentArray = true;
    for (const PlistValue& payment : value.array()) {
        if (payment.isDict())
            stored.nested.payments.push_back(readPayment(payment, store));
    }
    return true;
}

bool readExpectedPayment(PaymentValues& payment, PlistScanner& scanner, TextStore& store)
{
    for (std::size_t i = 0; i < paymentFields.size(); ++i) {
        if (!scanner.take("\n\t\t\t\t\t<key>") || !scanner.take(paymentRow(i).key) || !scanner.take("</key>\n\t\t\t\t\t<string>"))
            return false;
        const std::optional<std::string_view> text = scanner.takePlainText();
        if (!text)
            return false;
        payment.*paymentRow(i).text = store.add(*text);
    }
    return scanner.take("\n\t\t\t\t</dict>");
}

bool readExpectedPayments(StoredRecord<Order>& stored, PlistScanner& scanner, TextStore& store)
{
    if (!scanner.take("\n\t\t\t<array>"))
        return false;
    std::vector<PaymentValues> payments;
    while (scanner.take("\n\t\t\t\t<dict>")) {
        if (!readExpectedPayment(payments.emplace_back(), scanner, store))
            return false;
    }
    if (!scanner.take("\n\t\t\t</array>"))
        return false;
    stored.nested = {std::move(payments), true};
    return true;
}

constexpr std::array orderNestedKeys {
    NestedKey<Order> {
        "paymentarray",
        [](const StoredRecord<Order>& stored) { return !stored.nested.payments.empty(); },
        writePayments,
        readPayments,
        readExpectedPayments,
    },
};

} // namespace

OrderFile::OrderFile(OrderManager& orders, PaymentManager& payments, const OrderRules& rules)
    : CollectionFile(orders, "orders.xml", "orders", "orders")
    , m_payments(payments)
    , m_rules(rules)
{
}

std::span<const NestedKey<Order>> OrderFile::nestedKeys() const
{
    return orderNestedKeys;
}

void OrderFile::forget()
{
    CollectionFile::forget();
    m_metOlderPayments = false;
}

void OrderFile::added(Order& order, const StoredRecord<Order>& stored)
{
    if (stored.nested.hasPaymentArray)
        adoptPayments(order, stored);
    else
        adoptOlderPayments(order);
}

void OrderFile::adoptPayments(Order& order, const StoredRecord<Order>& stored)
{
    for (const PaymentValues& payment : stored.nested.payments)
        m_payments.addPaymentTo(order, payment);
}

void OrderFile::adoptOlderPayments(Order& order)
{
    const OrderValues& values = order.values();
    if (!values.deposit.isEmpty())
        m_payments.addPaymentTo(order, {values.deposit, values.depositPaid, values.paymentMethod});
    if (values.balance.isEmpty() || values.balancePaid.isEmpty())
        return;
    m_metOlderPayments = true;
    m_payments.addPaymentTo(order, {values.balance, values.balancePaid, values.paymentMethod});
}

Order::Nested OrderFile::nestedOf(const Order& order) const
{
    Order::Nested nested;
    for (const Payment* payment : order.getPaymentArray())
        nested.payments.push_back(payment->values());
    return nested;
}
