#include "orders/PaymentManager.h"

#include "orders/Order.h"

Payment& PaymentManager::addPaymentTo(Order& order, const PaymentValues& values)
{
    auto payment = std::make_unique<Payment>(m_settings);
    payment->setStore(order.store());
    payment->setAmount(values.amount);
    payment->setDatePaid(values.datePaid);
    payment->setPaymentMethod(values.paymentMethod);
    Payment& added = add(std::move(payment));
    order.addPayment(added);
    return added;
}
