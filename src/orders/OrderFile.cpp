#include "orders/OrderFile.h"

#include "foundation/plist/PlistScanner.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "orders/PaymentManager.h"

#include <algorithm>

namespace {

constexpr FieldRow<PaymentValues> paymentRow(std::size_t index)
{
    return paymentFields[index];
}

void writePayment(const StoredPayment& payment, PlistWriter& writer)
{
    PlistValue entry = payment.unknownKeys ? *payment.unknownKeys : PlistValue::makeDict();
    for (std::size_t i = 0; i < paymentFields.size(); ++i) {
        const Text& text = payment.values.*paymentRow(i).text;
        // Nothing of its own to put in the place of a value that could not be read as text.
        if (!text.isEmpty() || !entry.find(paymentRow(i).key))
            entry.set(paymentRow(i).key, PlistValue(text.string()));
    }
    writer.value(entry);
}

void writeKnownPayment(const PaymentValues& payment, PlistWriter& writer)
{
    // Root, orders, order, its payments, payment.
    constexpr std::size_t depthOfKeys = 5;
    static const std::vector<PlistWriter::Opening> openings = [] {
        std::vector<PlistWriter::Opening> made;
        for (const auto& row : paymentFields)
            made.push_back(PlistWriter::opening(row.key, depthOfKeys));
        return made;
    }();
    writer.openDict();
    for (std::size_t i = 0; i < paymentFields.size(); ++i)
        writer.textAfter(openings[i], payment.*paymentRow(i).text);
    writer.closeDict();
}

void writePayments(const StoredRecord<Order>& stored, PlistWriter& writer)
{
    std::span<const ForeignPaymentEntry> foreign;
    if (stored.nested.foreignPayments)
        foreign = *stored.nested.foreignPayments;
    auto next = foreign.begin();
    std::size_t place = 0;
    const auto writeForeign = [&] {
        for (; next != foreign.end() && next->place == place; ++next, ++place)
            writer.value(next->value);
    };
    writer.openArray();
    for (const StoredPayment& payment : stored.nested.payments) {
        writeForeign();
        if (payment.unknownKeys)
            writePayment(payment, writer);
        else
            writeKnownPayment(payment.values, writer);
        ++place;
    }
    // Payments may have gone since: what stood behind them comes at the end.
    for (; next != foreign.end(); ++next)
        writer.value(next->value);
    writer.closeArray();
}

const FieldRow<PaymentValues>* paymentRowFor(std::string_view key)
{
    const auto row = std::find_if(paymentFields.begin(), paymentFields.end(), [&](const auto& candidate) { return candidate.key == key; });
    return row == paymentFields.end() ? nullptr : &*row;
}

StoredPayment readPayment(const PlistValue& entry, TextStore& store)
{
    StoredPayment payment;
    PlistValue unknown = PlistValue::makeDict();
    for (const auto& [key, value] : entry.dict()) {
        const FieldRow<PaymentValues>* row = paymentRowFor(key);
        if (row && value.hasText())
            payment.values.*row->text = store.addRepeating(cleanUtf8(value.asText()));
        else
            unknown.set(key, value);
    }
    if (!unknown.dict().empty())
        payment.unknownKeys = std::make_shared<PlistValue>(std::move(unknown));
    return payment;
}

bool readPayments(StoredRecord<Order>& stored, const PlistValue& value, TextStore& store)
{
    if (!value.isArray())
        return false;
    stored.nested.hasPaymentArray = true;
    ForeignPaymentEntries foreign;
    for (std::size_t place = 0; place < value.array().size(); ++place) {
        const PlistValue& entry = value.array()[place];
        if (entry.isDict())
            stored.nested.payments.push_back(readPayment(entry, store));
        else
            foreign.push_back({place, entry});
    }
    if (!foreign.empty())
        stored.nested.foreignPayments = std::make_shared<ForeignPaymentEntries>(std::move(foreign));
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
        payment.*paymentRow(i).text = store.addRepeating(*text);
    }
    return scanner.take("\n\t\t\t\t</dict>");
}

bool readExpectedPayments(StoredRecord<Order>& stored, PlistScanner& scanner, TextStore& store)
{
    if (!scanner.take("\n\t\t\t<array>"))
        return false;
    std::vector<StoredPayment> payments;
    while (scanner.take("\n\t\t\t\t<dict>")) {
        if (!readExpectedPayment(payments.emplace_back().values, scanner, store))
            return false;
    }
    if (!scanner.take("\n\t\t\t</array>"))
        return false;
    stored.nested = {std::move(payments), {}, true};
    return true;
}

constexpr std::array orderNestedKeys {
    NestedKey<Order> {
        "paymentarray",
        [](const StoredRecord<Order>& stored) { return !stored.nested.payments.empty() || stored.nested.foreignPayments; },
        writePayments,
        readPayments,
        readExpectedPayments,
    },
};

bool hasOlderBalance(const OrderValues& values)
{
    return !values.balance.isEmpty() && !values.balancePaid.isEmpty();
}

} // namespace

OrderFile::OrderFile(OrderManager& orders, PaymentManager& payments, const OrderRules& rules)
    : CollectionFile(orders, recordFiles::orders, "orders", "orders")
    , m_payments(payments)
    , m_rules(rules)
{
}

std::span<const NestedKey<Order>> OrderFile::nestedKeys() const
{
    return orderNestedKeys;
}

/// With their payments.
std::optional<std::uint64_t> OrderFile::changes() const
{
    return collection().changes() + m_payments.changes();
}

void OrderFile::forget()
{
    CollectionFile::forget();
    m_metOlderPayments = false;
}

/// The older form: no list of payments, but a deposit and a balance with their dates.
bool OrderFile::complete(StoredRecord<Order>& stored) const
{
    if (stored.nested.hasPaymentArray)
        return true;
    const OrderValues& values = *stored.values;
    if (!values.deposit.isEmpty())
        stored.nested.payments.push_back({{values.deposit, values.depositPaid, values.paymentMethod}, {}});
    if (hasOlderBalance(values))
        stored.nested.payments.push_back({{values.balance, values.balancePaid, values.paymentMethod}, {}});
    return stored.nested.payments.empty();
}

void OrderFile::visitLinks(StoredRecord<Order>& stored, TextStore&, const UseLink& use) const
{
    use(recordFiles::contacts, stored.values.change().contactId);
    use(recordFiles::contacts, stored.values.change().contact2Id);
    use(recordFiles::bills, stored.values.change().billId);
}

void OrderFile::added(Order& order, const StoredRecord<Order>& stored)
{
    for (const StoredPayment& payment : stored.nested.payments)
        m_payments.addReadPaymentTo(order, payment.values).setUnknownKeys(payment.unknownKeys);
    order.setForeignPayments(stored.nested.foreignPayments);
    if (!stored.nested.hasPaymentArray && hasOlderBalance(order.values()))
        m_metOlderPayments = true;
}

void OrderFile::replaced(Order& order, const StoredRecord<Order>& stored)
{
    const std::vector<dataObject*> payments(order.getPaymentArray().begin(), order.getPaymentArray().end());
    m_payments.deleteItems(payments);
    while (!order.getPaymentArray().empty())
        order.removePaymentAtIndex(0);
    // Those it names now may be others.
    order.forgetContacts();
    added(order, stored);
}

Order::Nested OrderFile::nestedOf(const Order& order) const
{
    Order::Nested nested;
    nested.payments.reserve(order.getPaymentArray().size());
    for (const Payment* payment : order.getPaymentArray())
        nested.payments.push_back({payment->values(), payment->unknownKeys()});
    nested.foreignPayments = order.foreignPayments();
    return nested;
}
