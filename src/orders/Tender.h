// Taking payments for the order in the editor: the tender panel, the whole amount at once, and taking a payment back.
#pragma once

#include "orders/OrderForm.h"
#include "orders/Payment.h"

class Alerts;
class Beeper;
class Clock;
class Order;
class OrderTotals;
class PaymentManager;
class PaymentTable;
class SettingsForm;
class WriteGate;
struct OrderRules;

struct TenderNeeds {
    const OrderRules& rules;
    const SettingsForm& preferences;
    WriteGate& gate;
    Alerts& alerts;
    const Clock& clock;
    PaymentManager& payments;
    PaymentTable& table;
    OrderTotals& totals;
    OrderForm& editor;
};

class Tender {
public:
    explicit Tender(TenderNeeds needs);

    TenderForm form;

    /// Opens the panel on what is still due.
    void tender(Order& order);
    /// The amount tendered was typed: what remains, or the change to hand back.
    void updateTender();
    /// Takes the tendered amount, all of it, also when change is due.
    void tenderOK();
    /// Takes what is due, today; nothing when nothing is.
    void tenderFullAmount(Order& order);
    /// Closes the panel; nothing is taken.
    void tenderCancel();
    /// Takes the selected payment off the order after asking. The money-in list keeps it until the next load.
    void tenderRemove(Order& order);
    /// Today as the user writes dates.
    std::string today() const;

private:
    void take(Order& order, std::string amount, std::string datePaid);

    TenderNeeds m_needs;
    Order* m_order = nullptr;
};
