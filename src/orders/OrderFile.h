// "orders.xml": the orders with their payments.
#pragma once

#include "orders/OrderManager.h"
#include "storage/CollectionFile.h"

class OrderFile : public CollectionFile<Order> {
public:
    OrderFile(OrderManager& orders, PaymentManager& payments, const OrderRules& rules);

    /// Whether the last load met an order whose payments are in the older form and call for the template upgrade.
    bool metOlderPayments() const { return m_metOlderPayments; }
    void forget() override;
    const char* recordName() const override { return "Order"; }
    std::optional<std::uint64_t> changes() const override;

protected:
    std::span<const NestedKey<Order>> nestedKeys() const override;
    std::unique_ptr<Order> make() const override { return std::make_unique<Order>(m_rules); }
    bool complete(StoredRecord<Order>& stored) const override;
    void added(Order& order, const StoredRecord<Order>& stored) override;
    void replaced(Order& order, const StoredRecord<Order>& stored) override;
    Order::Nested nestedOf(const Order& order) const override;
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Order>& stored, TextStore&, const UseLink& use) const override;

private:
    // Not the number: it is made from the id, and comes with it.
    static constexpr std::array<std::string_view, 5> telling {"title", "date", "contact", "description", "transactionref"};
    static constexpr std::array<std::string_view, 2> keys {"ordernum", "title"};

    PaymentManager& m_payments;
    const OrderRules& m_rules;
    bool m_metOlderPayments = false;
};
