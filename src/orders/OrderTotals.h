// The money figures of the order in the editor, worked out from its lines and written into the form.
//
// Single precision, step by step; text that does not read counts as 0. One function per rule.
#pragma once

#include <string>

class BOMManager;
class MoneyFormatter;
class Order;
class OrderForm;
class SettingsForm;
class TextField;
struct OrderRules;

class OrderTotals {
public:
    OrderTotals(OrderForm& form, BOMManager& lines, const OrderRules& rules, const SettingsForm& preferences);

    /// Subtotal: the sum of the lines, less the discount. Then the balance.
    void insertBOMTotal(Order& order);
    /// Tax of a customer order: the lines' tax, and a plain percentage of the shipping. Then the balance.
    void insertBOMTax(Order& order);
    /// Shipping: what the items say, times the quantities. Then the balance.
    void insertBOMShipping(Order& order);
    /// The whole calculate-tax action.
    void calculateTax(Order& order);
    /// Writes the total into the order's balance at once, and what remains of it into the form.
    void calculateBalance(Order& order);
    /// What was paid so far, beside the balance.
    void showPaid(const Order& order);
    /// The total goes into the order's balance; answers what remains after the payments, never below 0.
    float getBalanceRemaining(Order& order);
    /// What adding, editing or removing a line asks for: the tax action when tax is handled, else subtotal and balance.
    void linesChanged(Order& order);

    float number(const TextField& field) const;
    std::string money(float amount) const;

private:
    bool appliesDiscount() const;
    bool discountIsPercentage() const;
    float lineTax() const;
    float lineTaxOfPurchaseOrder() const;
    float shippingTaxRate() const;
    float total(const Order& order) const;
    void calculatePurchaseOrderTax();
    void calculateCustomerTax(Order& order);
    void writeInto(TextField& field, float amount);

    OrderForm& m_form;
    BOMManager& m_lines;
    const OrderRules& m_rules;
    const SettingsForm& m_preferences;
};
