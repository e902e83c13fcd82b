// What the collections and controllers ask of each other, answered by the application that knows them all.
#include "app/Vendaro.h"

#include "foundation/Log.h"
#include "storage/PresentItem.h"

std::string Vendaro::codeSort() const
{
    return m_settings.text(settings::codeSort).value_or("");
}

bool Vendaro::isChosen() const
{
    return m_settings.text(settings::dateFormat).has_value();
}

void Vendaro::initialiseDateFormat()
{
    Q_EMIT dateFormatWanted();
}

void Vendaro::connectContactToOrderId(Contact& contact, int orderId)
{
    logFormat("Vendaro connectContact - connecting contact %i to order %i", contact.getID(), orderId);
    if (Order* order = presentItem(m_orders, orderId))
        m_orders.connectContactByTab(contact, *order);
}

std::string Vendaro::orderNumber(int orderId) const
{
    const Order* order = presentItem(m_orders, orderId);
    return order ? std::string(order->getOrderNum()) : std::string();
}

std::string Vendaro::orderDate(int orderId) const
{
    const Order* order = presentItem(m_orders, orderId);
    return order ? std::string(order->getDate()) : std::string();
}

std::string Vendaro::orderType(int orderId) const
{
    const Order* order = presentItem(m_orders, orderId);
    return order ? order->getType() : std::string();
}

const Contact* Vendaro::contactOfOrder(int orderId) const
{
    const Order* order = presentItem(m_orders, orderId);
    return order ? order->getContact() : nullptr;
}

int Vendaro::contactIdOfOrder(int orderId) const
{
    const Order* order = presentItem(m_orders, orderId);
    return order ? order->getContactId() : 0;
}

bool Vendaro::currentItemIsPurchaseOrder() const
{
    const Order* order = m_orders.currentItem();
    return order && order->isPurchaseOrder();
}

void Vendaro::linesChanged()
{
    if (Order* order = m_orders.currentItem())
        m_orders.totals.linesChanged(*order);
}

void Vendaro::addItemToCurrentOrder(Item& item)
{
    m_orders.addNewItem(item);
}

void Vendaro::hideSplash()
{
    if (!std::exchange(m_splash, false))
        return;
    Q_EMIT splashChanged(false);
}

void Vendaro::bringOrdersToFront()
{
    Q_EMIT pageWanted(Page::orders);
}

void Vendaro::showStatus(const QString& line)
{
    Q_EMIT statusWanted(line);
}

void Vendaro::editContactForOrder(Contact& contact, Order& order)
{
    m_contacts.editThisContact(contact, order.getID());
}

void Vendaro::createContactForOrder(Order& order)
{
    m_contacts.createForCurrentOrder(order.getID());
}
