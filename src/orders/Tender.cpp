#include "orders/Tender.h"

#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "orders/Order.h"
#include "orders/OrderTotals.h"
#include "orders/PaymentManager.h"
#include "orders/PaymentTable.h"
#include "storage/Settings.h"
#include "storage/WriteGate.h"

Tender::Tender(TenderNeeds needs) : m_needs(needs)
{
    form.setTitle(localText("Tender"));
    checkFields(
        form, {{&form.datePaid, recordDateCheck(m_needs.rules.settings)}, {&form.amountTendered, values::amount(m_needs.rules.money)}});
    form.amountTendered.onEdited = [this] { updateTender(); };
    form.ok.run = [this] { tenderOK(); };
    form.cancel.run = [this] { tenderCancel(); };
}

std::string Tender::today() const
{
    return dates::write(m_needs.clock.today(), m_needs.preferences.isUKFormat() ? dates::dayFirst : dates::monthFirst);
}

void Tender::tender(Order& order)
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    m_order = &order;
    const QString due = QString::fromStdString(m_needs.totals.money(m_needs.totals.getBalanceRemaining(order)));
    form.datePaid.setText(QString::fromStdString(today()));
    form.amountDue.setText(due);
    form.remainingBalance.setText(due);
    form.remainingBalance.setCaption(localText("Balance Remaining"));
    form.amountTendered.setText({});
    form.paymentMethod.setTitles(m_needs.editor.paymentMethod.titles());
    form.paymentMethod.setTitle(m_needs.editor.paymentMethod.title());
    form.ok.setEnabled(false);
    form.open();
    form.focus(form.amountTendered);
}

void Tender::updateTender()
{
    const float remaining = m_needs.totals.number(m_needs.editor.balanceRemaining) - m_needs.totals.number(form.amountTendered);
    const bool change = remaining <= 0;
    form.remainingBalance.setCaption(localText(change ? "Change Due" : "Balance Remaining"));
    form.remainingBalance.setText(QString::fromStdString(m_needs.totals.money(change ? -remaining : remaining)));
    // A payment whose amount does not read would be recorded as nothing.
    form.ok.setEnabled(m_needs.rules.money.read(form.amountTendered.text().toStdString()).has_value());
}

void Tender::tenderOK()
{
    if (!m_order)
        return;
    const std::string datePaid = form.datePaid.text().toStdString();
    const std::optional<std::string> amount = m_needs.rules.money.normalised(form.amountTendered.text().toStdString());
    take(*m_order, amount.value_or(m_needs.totals.money(0)), datePaid);
}

void Tender::tenderCancel()
{
    m_order = nullptr;
    form.close();
}

void Tender::tenderFullAmount(Order& order)
{
    if (!m_needs.gate.readOnlyCheck())
        return;
    const float remaining = m_needs.totals.getBalanceRemaining(order);
    if (remaining == 0)
        return;
    form.paymentMethod.setTitles(m_needs.editor.paymentMethod.titles());
    form.paymentMethod.setTitle(m_needs.editor.paymentMethod.title());
    take(order, m_needs.totals.money(remaining), today());
}

void Tender::take(Order& order, std::string amount, std::string datePaid)
{
    TextStore store;
    const PaymentValues values {store.add(amount), store.add(cleanUtf8(datePaid)), store.add(cleanUtf8(form.paymentMethod.title()))};
    m_needs.payments.addPaymentTo(order, values);
    m_needs.totals.calculateBalance(order);
    order.setBalancePaid(datePaid);
    m_needs.editor.balancePaid.setText(QString::fromStdString(datePaid));
    tenderCancel();
    m_needs.table.paymentsChanged();
}

void Tender::tenderRemove(Order& order)
{
    const int row = m_needs.table.selectedRow();
    if (row < 0 || !m_needs.gate.readOnlyCheck() || m_needs.alerts.ask(alerts::deletePayment) != 0)
        return;
    order.removePaymentAtIndex(row);
    m_needs.table.paymentsChanged();
    m_needs.totals.calculateBalance(order);
}
