#include "orders/PaymentManager.h"

#include "orders/Order.h"

Payment& PaymentManager::addPaymentTo(Order& order, const PaymentValues& values)
{
    auto payment = std::make_unique<Payment>(m_settings);
    payment->setStore(order.store());
    payment->setAmount(values.amount);
    payment->setDatePaid(values.datePaid);
    payment->setPaymentMethod(values.paymentMethod);
    return addTo(order, std::move(payment));
}

Payment& PaymentManager::addReadPaymentTo(Order& order, const PaymentValues& values)
{
    auto payment = std::make_unique<Payment>(m_settings);
    SharedValues<PaymentValues> read;
    read.change() = values;
    payment->setValues(std::move(read), order.store());
    return addTo(order, std::move(payment));
}

Payment& PaymentManager::addTo(Order& order, std::unique_ptr<Payment> payment)
{
    Payment& added = add(std::move(payment));
    order.addPayment(added);
    return added;
}
