// The payments of the order in the editor, as a table whose cells can be edited.
#pragma once

#include "storage/qvDataSource.h"

#include <functional>

class Order;
class WriteGate;
struct OrderRules;

class PaymentTable : public qvDataSource {
public:
    PaymentTable(const SortSettings& sorting, Beeper& beeper, const OrderRules& rules, WriteGate& gate);

    /// The order whose payments are shown; none empties the table.
    void setOrder(Order* order);
    /// A payment was added or removed.
    void paymentsChanged();
    /// Runs after a cell was edited.
    std::function<void()> onEdited;

    std::string objectValue(std::string_view identifier, int row) const override;
    /// An amount that is no number is refused with a beep; one that is gets money form.
    bool setObjectValue(std::string_view identifier, int row, std::string_view value) override;
    /// Any date is taken as typed, so one that does not read says so.
    QString cellFault(std::string_view identifier, int row) const override;

protected:
    const std::vector<dataObject*>& visibleRows() const override { return m_rows; }

private:
    Order* m_order = nullptr;
    const OrderRules& m_rules;
    WriteGate& m_gate;
    std::vector<dataObject*> m_rows;
};
