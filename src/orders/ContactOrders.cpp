#include "orders/ContactOrders.h"

#include "desktop/TextTable.h"
#include "orders/OrderManager.h"

ContactOrders::ContactOrders(const SortSettings& sorting, Beeper& beeper, OrderManager& orders)
    : qvDataSource(sorting, beeper)
    , m_orders(orders)
{
    list.columns = {
        {"date", localText("Date"), 104},
        {"ordernum", localText("Number"), 120},
        {"title", localText("Title"), 240},
        {"status", localText("Status"), 110},
        {"totaldue", localText("Total"), 100, ColumnAlign::right},
        {"balanceremaining", localText("Balance"), 100, ColumnAlign::right},
    };
    orders.addObserver(*this);
}

ContactOrders::~ContactOrders()
{
    m_orders.removeObserver(*this);
}

void ContactOrders::showOrdersOf(int contactId)
{
    m_contactId = contactId;
    listAgain();
}

void ContactOrders::showNone()
{
    m_contactId.reset();
    m_rows.clear();
    reloadData();
}

void ContactOrders::listAgain()
{
    if (!m_contactId)
        return;
    m_rows.clear();
    for (int n = 0; n < m_orders.getCount(); ++n) {
        Order* order = m_orders.getnthSortedItem(n);
        if (order && (order->getContactId() == *m_contactId || order->getContact2Id(Order::Fallback::none) == *m_contactId))
            m_rows.push_back(order);
    }
    reloadData();
}

void ContactOrders::edit()
{
    if (dataObject* order = getSelectedItem())
        m_orders.editThisOrder(static_cast<Order&>(*order));
}

std::string ContactOrders::objectValue(std::string_view identifier, int row) const
{
    const dataObject* order = getnthVisibleItem(row);
    return order ? order->getFieldByName(identifier) : std::string();
}
