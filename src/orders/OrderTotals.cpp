#include "orders/OrderTotals.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/Money.h"
#include "foundation/Numbers.h"
#include "inventory/BOMManager.h"
#include "inventory/TaxRate.h"
#include "orders/Order.h"
#include "orders/OrderForm.h"
#include "storage/Settings.h"

#include <algorithm>

OrderTotals::OrderTotals(OrderForm& form, BOMManager& lines, const OrderRules& rules, const SettingsForm& preferences)
    : m_form(form)
    , m_lines(lines)
    , m_rules(rules)
    , m_preferences(preferences)
{
}

float OrderTotals::number(const TextField& field) const
{
    return m_rules.money.value(field.text().toStdString());
}

std::string OrderTotals::money(float amount) const
{
    return m_rules.money.write(amount);
}

void OrderTotals::writeInto(TextField& field, float amount)
{
    field.setText(QString::fromStdString(money(amount)));
}

bool OrderTotals::appliesDiscount() const
{
    return m_form.applyDiscount.isOn();
}

bool OrderTotals::discountIsPercentage() const
{
    return m_form.discountChoice.index() == 0;
}

float OrderTotals::shippingTaxRate() const
{
    return taxRateIn(m_preferences.getRateForShipping().value_or(""), m_rules.money);
}

float OrderTotals::lineTax() const
{
    return m_lines.getTaxforCurrentOrderatRate(shippingTaxRate(), appliesDiscount(), number(m_form.discount), discountIsPercentage());
}

float OrderTotals::lineTaxOfPurchaseOrder() const
{
    return m_lines.getTaxExclusiveForCurrentOrderatRate(
        shippingTaxRate(), appliesDiscount(), number(m_form.discount), discountIsPercentage());
}

void OrderTotals::insertBOMTotal(Order& order)
{
    float sum = m_lines.getTotalforCurrentOrder();
    if (appliesDiscount()) {
        const float discount = number(m_form.discount);
        if (discountIsPercentage()) {
            logFormat("substracting %f %%", static_cast<double>(discount));
            sum = sum + sum * discount / -100.0f;
        } else {
            logFormat("substracting %f", static_cast<double>(discount));
            sum = sum - discount;
        }
    }
    writeInto(m_form.subtotal, sum);
    calculateBalance(order);
}

void OrderTotals::insertBOMShipping(Order& order)
{
    writeInto(m_form.shipping, m_lines.getShippingforCurrentOrder());
    calculateBalance(order);
}

void OrderTotals::insertBOMTax(Order& order)
{
    // The shipping's tax comes on top in both modes, also where prices include theirs.
    const float tax = lineTax() + (shippingTaxRate() / 100.0f) * number(m_form.shipping);
    writeInto(m_form.taxAmount, tax);
    calculateBalance(order);
}

void OrderTotals::calculateTax(Order& order)
{
    insertBOMTotal(order);
    if (order.isPurchaseOrder())
        calculatePurchaseOrderTax();
    else
        calculateCustomerTax(order);
    m_form.taxNote.setText({});
    calculateBalance(order);
}

void OrderTotals::calculatePurchaseOrderTax()
{
    m_form.net.setText(m_form.subtotal.text());
    writeInto(m_form.taxAmount, lineTaxOfPurchaseOrder());
}

void OrderTotals::calculateCustomerTax(Order& order)
{
    insertBOMTax(order);
    if (m_rules.pricesAreExclusive()) {
        m_form.net.setText(m_form.subtotal.text());
        return;
    }
    const float net = number(m_form.subtotal) - lineTax() + number(m_form.shipping);
    writeInto(m_form.net, net);
}

float OrderTotals::total(const Order& order) const
{
    float total = number(m_form.subtotal) + number(m_form.shipping);
    if (order.isPurchaseOrder() || m_rules.pricesAreExclusive())
        total += number(m_form.taxAmount);
    return total;
}

float OrderTotals::getBalanceRemaining(Order& order)
{
    const float due = total(order);
    order.setBalance(money(due));
    return std::max(due - order.getTotalPayments(), 0.0f);
}

void OrderTotals::calculateBalance(Order& order)
{
    writeInto(m_form.balanceRemaining, getBalanceRemaining(order));
    showPaid(order);
}

void OrderTotals::showPaid(const Order& order)
{
    const QString paid = QString::fromStdString(money(order.getTotalPayments()));
    m_form.paidNote.setText(order.getPaymentArray().empty() ? QString() : fillText(localText("%@ paid"), {paid}));
}

void OrderTotals::linesChanged(Order& order)
{
    if (m_preferences.handlesTax())
        calculateTax(order);
    else
        insertBOMTotal(order);
}
