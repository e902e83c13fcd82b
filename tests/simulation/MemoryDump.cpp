#include "simulation/MemoryDump.h"

#include "app/Vendaro.h"

#include <QJsonArray>

namespace {

QString keyOf(std::string_view key)
{
    return QString::fromUtf8(key.data(), static_cast<int>(key.size()));
}

/// The fields under their keys of the file; empty texts are left out.
template <class R>
QJsonObject fieldsOf(const R& record)
{
    QJsonObject fields {{"id", record.getID()}};
    for (const auto& row : R::fieldRows()) {
        if (row.integer)
            fields[keyOf(row.key)] = record.values().*row.integer;
        else if (row.flag)
            fields[keyOf(row.key)] = record.values().*row.flag;
        else if (const Text& text = record.values().*row.text; !text.isEmpty())
            fields[keyOf(row.key)] = toQString(text);
    }
    return fields;
}

QJsonArray paymentOf(const Payment& payment)
{
    return {toQString(payment.getAmount()), toQString(payment.getDatePaid()), toQString(payment.getPaymentMethod())};
}

template <class R>
QJsonObject recordOf(const R& record, const ContactManager&)
{
    return fieldsOf(record);
}

QJsonObject recordOf(const Order& order, const ContactManager& contacts)
{
    QJsonObject fields = fieldsOf(order);
    QJsonArray payments;
    for (const Payment* payment : order.getPaymentArray())
        payments.append(paymentOf(*payment));
    fields["paymentarray"] = payments;
    // Whom documents are made out to; a deleted contact's id with a minus.
    const auto linked = [&](const Contact* contact) {
        return !contact ? 0 : contacts.holds(*contact) ? contact->getID() : -contact->getID();
    };
    fields["linked"] = QJsonArray {linked(order.getContact()), linked(order.getContact2(Order::Fallback::none))};
    return fields;
}

QJsonObject recordOf(const Item& item, const ContactManager&)
{
    QJsonObject fields = fieldsOf(item);
    QJsonArray parts;
    for (const Constituent& part : item.getConstituents()) {
        QJsonArray entry;
        for (const char* key : {"id", "code", "item", "qty"})
            entry.append(QString::fromStdString(part.text(key)));
        parts.append(entry);
    }
    fields["constituents"] = parts;
    return fields;
}

QJsonObject recordOf(const Goal& goal, const ContactManager&)
{
    QJsonObject fields = fieldsOf(goal);
    QJsonArray tasks;
    for (const int id : goal.getActionsAsID())
        tasks.append(id);
    fields["actions"] = tasks;
    return fields;
}

QJsonObject recordOf(const Payment& payment, const ContactManager&)
{
    return {{"order", payment.getOrder() ? payment.getOrder()->getID() : 0}, {"payment", paymentOf(payment)}};
}

template <class Records>
QJsonArray idsOf(const Records& records)
{
    QJsonArray ids;
    for (const dataObject* record : records)
        ids.append(record->getID());
    return ids;
}

template <class R>
QJsonObject collectionOf(const Collection<R>& collection, const ContactManager& contacts)
{
    QJsonArray records;
    for (int n = 0; n < collection.getCount(); ++n)
        records.append(recordOf(collection.at(n), contacts));
    std::vector<const dataObject*> shown;
    for (int row = 0; row < collection.numberOfRows(); ++row)
        shown.push_back(collection.getnthVisibleItem(row));
    return {{"records", records}, {"shown", idsOf(shown)}, {"highest", collection.highestId()}, {"undo", idsOf(collection.deleteBuffer())}};
}

} // namespace

QJsonObject MemoryDump::changed()
{
    const ContactManager& contacts = m_app.getContactManager();
    const auto dumped = [&](const auto& collection) { return collectionOf(collection, contacts); };
    const QJsonObject now {{"contacts", dumped(contacts)}, {"orders", dumped(m_app.getOrderManager())},
        {"items", dumped(m_app.getItemManager())}, {"lines", dumped(m_app.getBOMManager())}, {"bills", dumped(m_app.getBillManager())},
        {"tasks", dumped(m_app.getActionManager())}, {"goals", dumped(m_app.getGoalManager())},
        {"payments", dumped(m_app.getPaymentManager())}};
    QJsonObject changed;
    for (auto entry = now.begin(); entry != now.end(); ++entry) {
        if (m_last[entry.key()] != entry.value())
            changed[entry.key()] = entry.value();
    }
    m_last = now;
    return changed;
}
