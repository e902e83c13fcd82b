// What contacts ask of the orders.
#pragma once

class Contact;

class OrderLinks {
public:
    virtual ~OrderLinks() = default;
    /// Connects the contact to the order of that id, as its first or second contact, as the order's editor stands.
    virtual void connectContactToOrderId(Contact& contact, int orderId) = 0;
};
