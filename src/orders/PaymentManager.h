// The money-in list: the payments of all orders. On disk they stand inside their orders.
#pragma once

#include "orders/Payment.h"
#include "storage/qvDataSource.h"

class PaymentManager : public Collection<Payment> {
public:
    PaymentManager(const SortSettings& sorting, Beeper& beeper, const SettingsStore& settings)
        : Collection(sorting, beeper)
        , m_settings(settings)
    {
    }

    /// A payment against the order, added to the list and to the order's payments.
    Payment& addPaymentTo(Order& order, const PaymentValues& values);
    /// The same for one that was read with its order: its texts are in the order's store already.
    Payment& addReadPaymentTo(Order& order, const PaymentValues& values);

private:
    Payment& addTo(Order& order, std::unique_ptr<Payment> payment);

    const SettingsStore& m_settings;
};
