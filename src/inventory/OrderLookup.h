// What lines and items ask of the orders.
#pragma once

#include <string>
#include <string_view>

class Contact;
class Item;

/// Two of the types that an order can have; a line has one of these two, as its order has.
inline constexpr std::string_view customerType = "Customer";
inline constexpr std::string_view purchaseOrderType = "Purchase Order";

class OrderLookup {
public:
    virtual ~OrderLookup() = default;
    /// Of the order with that id; empty when there is none.
    virtual std::string orderNumber(int orderId) const = 0;
    virtual std::string orderDate(int orderId) const = 0;
    virtual std::string orderType(int orderId) const = 0;
    /// The order's contact, resolved; none when there is no such order or contact.
    virtual const Contact* contactOfOrder(int orderId) const = 0;
    /// The id of the order's contact; 0 for none.
    virtual int contactIdOfOrder(int orderId) const = 0;
};

/// The order being edited.
class LineTarget {
public:
    virtual ~LineTarget() = default;
    virtual bool currentItemIsPurchaseOrder() const = 0;
    /// A line was edited or removed: the figures are worked out anew.
    virtual void linesChanged() = 0;
    /// Puts the item on the order being edited.
    virtual void addItemToCurrentOrder(Item& item) = 0;
};
