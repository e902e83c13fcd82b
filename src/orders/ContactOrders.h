// The orders of one contact as a list: what the contact's editor shows of them. The records are the orders' own.
#pragma once

#include "storage/qvDataSource.h"

class OrderManager;

class ContactOrders : public qvDataSource, private ListObserver {
public:
    ContactOrders(const SortSettings& sorting, Beeper& beeper, OrderManager& orders);
    ~ContactOrders() override;

    /// Lists the orders whose first or second contact it is, sorted as the list of orders is.
    void showOrdersOf(int contactId);
    void showNone();
    /// Opens the selected order.
    void edit() override;
    std::string objectValue(std::string_view identifier, int row) const override;

protected:
    const std::vector<dataObject*>& visibleRows() const override { return m_rows; }

private:
    void listReset() override { listAgain(); }
    void rowChanged(int) override { listAgain(); }
    void listAgain();

    OrderManager& m_orders;
    std::optional<int> m_contactId;
    std::vector<dataObject*> m_rows;
};
