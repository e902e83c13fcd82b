#include "orders/PaymentTable.h"

#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "foundation/Money.h"
#include "orders/Order.h"
#include "storage/WriteGate.h"

PaymentTable::PaymentTable(const SortSettings& sorting, Beeper& beeper, const OrderRules& rules, WriteGate& gate)
    : qvDataSource(sorting, beeper)
    , m_rules(rules)
    , m_gate(gate)
{
    list.columns = {
        {"datepaid", localText("Date paid"), 140, ColumnAlign::left, true, true},
        {"paymentmethod", localText("Method"), 320, ColumnAlign::left, true, true},
        {"amount", localText("Amount"), 130, ColumnAlign::right, true, true},
    };
}

void PaymentTable::setOrder(Order* order)
{
    m_order = order;
    paymentsChanged();
}

void PaymentTable::paymentsChanged()
{
    m_rows.clear();
    if (m_order)
        m_rows.assign(m_order->getPaymentArray().begin(), m_order->getPaymentArray().end());
    reloadData();
}

std::string PaymentTable::objectValue(std::string_view identifier, int row) const
{
    const dataObject* payment = getnthVisibleItem(row);
    return payment ? payment->getFieldByName(identifier) : std::string();
}

bool PaymentTable::setObjectValue(std::string_view identifier, int row, std::string_view value)
{
    dataObject* payment = getnthVisibleItem(row);
    if (!payment || !m_gate.readOnlyCheck())
        return false;
    std::string text(value);
    if (identifier == "amount" && !value.empty()) {
        const std::optional<std::string> amount = m_rules.money.normalised(value);
        if (!amount) {
            beeper().beep();
            return false;
        }
        text = *amount;
    }
    payment->setFieldByName(identifier, text);
    reloadData();
    if (onEdited)
        onEdited();
    return true;
}

QString PaymentTable::cellFault(std::string_view identifier, int row) const
{
    if (identifier == "datepaid")
        return recordDateCheck(m_rules.settings)(objectValue(identifier, row));
    return identifier == "amount" ? values::amount(m_rules.money)(objectValue(identifier, row)) : QString();
}
