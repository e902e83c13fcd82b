// Orders: a whole session in the editor at once, deletions, attachments.
#include "simulation/ShopServer.h"

#include "storage/PresentItem.h"

namespace {

void takePayment(OrderManager& orders, const QJsonValue& step)
{
    orders.form.tender.trigger();
    TenderForm& panel = orders.tender.form;
    if (!panel.isOpen())
        return;
    editForm(panel, step[1].toArray());
    (step[2].toString() == "cancel" ? panel.cancel : panel.ok).trigger();
}

void removeLine(ShopServer& server, const QJsonValue& step)
{
    server.shop().lines().selectRow(step[1].toInt());
    server.shop().orders().form.removeMaterial.trigger();
}

void removePayment(OrderManager& orders, const QJsonValue& step)
{
    orders.paymentTable.selectRow(step[1].toInt());
    orders.form.tenderRemove.trigger();
}

void addItem(ShopServer& server, const QJsonValue& step)
{
    if (Item* found = presentItem(server.shop().items(), step[1].toInt()))
        server.shop().orders().addItemToCurrentOrder(*found);
}

void connectContact(ShopServer& server, const QJsonValue& step)
{
    OrderManager& orders = server.shop().orders();
    orders.form.tab.edit(step[2].toInt());
    if (Contact* found = presentItem(server.shop().contacts(), step[1].toInt()))
        orders.setContact(*found);
}

void setCell(qvDataSource& table, const QJsonValue& step)
{
    table.setObjectValue(step[2].toString().toStdString(), step[1].toInt(), step[3].toString().toStdString());
}

void doStep(ShopServer& server, const QJsonValue& step)
{
    OrderManager& orders = server.shop().orders();
    const QString what = step[0].toString();
    if (what == "edit")
        editForm(orders.form, step[1].toArray());
    else if (what == "item")
        addItem(server, step);
    else if (what == "cell")
        setCell(server.shop().lines(), step);
    else if (what == "remove line")
        removeLine(server, step);
    else if (what == "tax")
        orders.form.calculateTax.trigger();
    else if (what == "shipping")
        orders.form.shippingFromItems.trigger();
    else if (what == "pay")
        takePayment(orders, step);
    else if (what == "pay all")
        orders.form.tenderFullAmount.trigger();
    else if (what == "payment cell")
        setCell(orders.paymentTable, step);
    else if (what == "remove payment")
        removePayment(orders, step);
    else if (what == "contact")
        connectContact(server, step);
    else if (what == "add stock")
        orders.form.addStock.trigger();
}

/// "id" 0 makes one: a "purchase" order or a customer's.
void order(ShopServer& server, const QJsonObject& asked)
{
    OrderManager& orders = server.shop().orders();
    if (Order* found = presentItem(orders, asked["id"].toInt()))
        orders.editThisOrder(*found);
    else if (asked["purchase"].toBool())
        orders.createPurchaseOrder();
    else
        orders.create();
    if (!orders.form.isOpen())
        return;
    for (const QJsonValue& step : asked["steps"].toArray())
        doStep(server, step);
    (asked["then"].toString() == "cancel" ? orders.form.cancel : orders.form.save).trigger();
}

void deleteOneOrder(ShopServer& server, const QJsonObject& asked)
{
    if (Order* found = presentItem(server.shop().orders(), asked["id"].toInt()))
        server.shop().orders().deleteOrder(*found);
}

void attach(ShopServer& server, const QJsonObject& asked)
{
    Order* found = presentItem(server.shop().orders(), asked["id"].toInt());
    const Result<void> attached =
        found ? server.shop().orders().fileDropped(asked["path"].toString(), *found) : Result<void>(Error {"no such order"});
    server.say("trouble", attached ? QString() : QString::fromStdString(attached.error().message));
}

} // namespace

ShopDeed orderDeed(const QString& name)
{
    static const QHash<QString, ShopDeed> deeds {{"order", order}, {"deleteOrder", deleteOneOrder}, {"attach", attach}};
    return deeds.value(name);
}
