// Everything the shop can be asked for. Each command is a whole day: the program starts, does it, and quits.
#include "Shop.h"

#include <QDir>
#include <QFile>

#include <memory>

namespace {

void edit(TextField& field, const char* text)
{
    field.edit(QString::fromUtf8(text));
}

void choose(ChoiceField& field, const char* title)
{
    field.edit(static_cast<int>(field.titles().indexOf(title)));
}

/// A request whose only trouble can be the records' own files.
template <class Work>
void ask(Shop& shop, const char* what, Work work)
{
    shop.request(what, [&] {
        work();
        return QString();
    });
}

/// Of the collection at that place; none when the file could not be read.
template <class Manager>
auto* recordAt(Manager& manager, int place)
{
    return place < manager.getCount() ? &manager.at(place) : nullptr;
}

void makeContact(Shop& shop, const char* name)
{
    ask(shop, "contact", [&] {
        shop.contacts().create();
        edit(shop.contacts().form.name, name);
        edit(shop.contacts().form.add1, "1 High Street");
        shop.contacts().form.save.trigger();
    });
}

void makeItem(Shop& shop, const char* name, const char* qty)
{
    ask(shop, "item", [&] {
        shop.items().create();
        edit(shop.items().form.item, name);
        edit(shop.items().form.price, "4.50");
        edit(shop.items().form.qty, qty);
        shop.items().form.save.trigger();
    });
}

void addLine(Shop& shop, int item)
{
    if (Item* found = recordAt(shop.items(), item))
        shop.orders().addItemToCurrentOrder(*found);
}

void makeOrder(Shop& shop, const char* title, int item)
{
    ask(shop, "order", [&] {
        OrderForm& form = shop.orders().form;
        shop.orders().create();
        if (!shop.orders().currentItem())
            return;
        edit(form.orderTitle, title);
        if (Contact* contact = recordAt(shop.contacts(), 0))
            shop.orders().connectContact(*contact, *shop.orders().currentItem());
        addLine(shop, item);
        addLine(shop, 1);
        edit(form.shipping, "5");
        form.calculateTax.trigger();
        form.tab.edit(OrderForm::paymentsTab);
        form.tender.trigger();
        choose(shop.orders().tender.form.paymentMethod, "Cash");
        edit(shop.orders().tender.form.amountTendered, "5");
        shop.orders().tender.form.ok.trigger();
        form.save.trigger();
    });
}

void makePurchaseOrder(Shop& shop)
{
    ask(shop, "purchase order", [&] {
        OrderForm& form = shop.orders().form;
        shop.orders().createPurchaseOrder();
        edit(form.orderTitle, "Clay");
        addLine(shop, 0);
        edit(form.balancePaid, "01/03/24");
        form.save.trigger();
    });
}

QString settingsTrouble(Shop& shop)
{
    const Result<void> flushed = shop.app().settingsStore().flush();
    return flushed ? QString() : QString::fromStdString(flushed.error().message);
}

QString putFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? QString() : path + " could not be made";
}

void attachScan(Shop& shop, int order)
{
    shop.request("attachment", [&] {
        Order* found = recordAt(shop.orders(), order);
        if (!found)
            return QString("no order");
        const Result<void> attached = shop.orders().fileDropped(shop.home() + "/scan.pdf", *found);
        return attached ? QString() : QString::fromStdString(attached.error().message);
    });
}

/// The business that every other command starts from.
void base(Shop& shop)
{
    QDir().mkpath(shop.home() + "/Library/Preferences");
    putFile(shop.home() + "/Library/Preferences/Vendaro.plist",
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>VendaroDateFormat</key><string>0</string>"
        "<key>VendaroHandlesTax</key><string>YES</string><key>VendaroTaxShipping</key><string>S</string>"
        "<key>VendaroTaxRates</key><array><dict><key>code</key><string>S</string><key>rate</key><string>20</string></dict></array>"
        "<key>askAboutUpgrading</key><true/><key>dontShowTip</key><true/></dict></plist>\n");
    putFile(shop.home() + "/scan.pdf", QByteArray(3000, 's'));
    shop.start();
    shop.request("settings", [&] {
        edit(shop.preferences().form.currency, "\u20ac");
        edit(shop.preferences().form.currencyCode, "EUR");
        edit(shop.preferences().form.orderPrefix, "P");
        shop.preferences().OKButton();
        return settingsTrouble(shop);
    });
    makeContact(shop, "Ann Lee");
    makeContact(shop, "Potters Ltd");
    makeContact(shop, "Zo\xc3\xab \"Z\" & Co <x>");
    makeItem(shop, "Mug", "10");
    makeItem(shop, "Teapot", "5");
    makeItem(shop, "Saucer", "20");
    ask(shop, "set", [&] {
        Item& set = shop.items().at(2);
        shop.items().editThisItem(set);
        shop.items().form.collective.edit(true);
        shop.items().addConstituent(shop.items().at(0));
        shop.items().addConstituent(shop.items().at(1));
        shop.items().form.save.trigger();
    });
    makeOrder(shop, "Tea set", 0);
    makeOrder(shop, "Second order", 1);
    makePurchaseOrder(shop);
    attachScan(shop, 0);
    const auto task = [&](const char* title) -> Action& {
        auto made = std::make_unique<Action>();
        made->setFieldByName("title", title);
        return shop.app().getActionManager().add(std::move(made));
    };
    auto goal = std::make_unique<Goal>();
    goal->setName("Spring fair");
    goal->addAction(task("Book the stall"));
    goal->addAction(task("Fire the kiln"));
    shop.app().getGoalManager().add(std::move(goal));
    shop.quit();
}

void contact(Shop& shop)
{
    shop.start();
    makeContact(shop, "Bo Ek");
    shop.quit();
}

void editContact(Shop& shop)
{
    shop.start();
    ask(shop, "edit contact", [&] {
        if (Contact* found = recordAt(shop.contacts(), 0))
            shop.contacts().editThisContact(*found);
        edit(shop.contacts().form.comments, "Rings in the morning");
        shop.contacts().form.save.trigger();
    });
    shop.quit();
}

void deleteContact(Shop& shop)
{
    shop.start();
    ask(shop, "delete contact", [&] {
        shop.contacts().selectRow(1);
        shop.contacts().deleteKey();
    });
    shop.quit();
}

void company(Shop& shop)
{
    shop.start();
    ask(shop, "company", [&] {
        shop.contacts().companyEditor.create();
        edit(shop.contacts().companyEditor.form.name, "Kiln & Sons");
        shop.contacts().companyEditor.form.save.trigger();
    });
    shop.quit();
}

void item(Shop& shop)
{
    shop.start();
    makeItem(shop, "Bowl", "7");
    shop.quit();
}

void editItem(Shop& shop)
{
    shop.start();
    ask(shop, "edit item", [&] {
        if (Item* found = recordAt(shop.items(), 1))
            shop.items().editThisItem(*found);
        edit(shop.items().form.price, "23.00");
        shop.items().form.save.trigger();
    });
    shop.quit();
}

void deleteItem(Shop& shop)
{
    shop.start();
    ask(shop, "delete item", [&] {
        shop.items().selectRow(0);
        shop.items().deleteKey();
    });
    shop.quit();
}

void order(Shop& shop)
{
    shop.start();
    makeOrder(shop, "Wedding list", 0);
    shop.quit();
}

/// Two orders and a contact, one after the other: what failed is tried again with what comes next.
void busyDay(Shop& shop)
{
    shop.start();
    makeOrder(shop, "Morning", 0);
    makeContact(shop, "Cy Dee");
    makeOrder(shop, "Afternoon", 1);
    shop.quit();
}

void editOrder(Shop& shop)
{
    shop.start();
    // A line is saved as soon as it is changed, its order with the editor.
    ask(shop, "edit line", [&] {
        if (Order* found = recordAt(shop.orders(), 0))
            shop.orders().editThisOrder(*found);
        shop.lines().setObjectValue("qty", 0, "3");
    });
    ask(shop, "edit order", [&] {
        edit(shop.orders().form.orderTitle, "Tea set for six");
        shop.orders().form.calculateTax.trigger();
        shop.orders().form.save.trigger();
    });
    shop.quit();
}

void payOrder(Shop& shop)
{
    shop.start();
    ask(shop, "pay order", [&] {
        if (Order* found = recordAt(shop.orders(), 1))
            shop.orders().editThisOrder(*found);
        shop.orders().form.tenderFullAmount.trigger();
        shop.orders().form.save.trigger();
    });
    shop.quit();
}

void deleteOrder(Shop& shop)
{
    shop.start();
    shop.request("delete order", [&] {
        Order* found = recordAt(shop.orders(), 0);
        if (found)
            shop.orders().deleteOrder(*found);
        return found && shop.orders().holds(*found) ? QString("the order stays") : QString();
    });
    shop.quit();
}

void deleteNewest(Shop& shop)
{
    shop.request("delete orders", [&] {
        const int before = shop.orders().getCount();
        shop.orders().selectRow(0);
        shop.orders().deleteKey();
        return shop.orders().getCount() == before ? QString("the order stays") : QString();
    });
}

void deleteNewestAndMakeAnother(Shop& shop)
{
    shop.start();
    deleteNewest(shop);
    // It gets the number of the one that went.
    makeOrder(shop, "In its place", 1);
    shop.quit();
}

void deleteAndUndo(Shop& shop)
{
    shop.start();
    deleteNewest(shop);
    shop.orders().undo();
    shop.quit();
}

void removeLine(Shop& shop)
{
    shop.start();
    ask(shop, "remove line", [&] {
        if (Order* found = recordAt(shop.orders(), 1))
            shop.orders().editThisOrder(*found);
        shop.lines().selectRow(0);
        shop.orders().form.removeMaterial.trigger();
    });
    ask(shop, "save order", [&] { shop.orders().form.save.trigger(); });
    shop.quit();
}

void sellSet(Shop& shop)
{
    shop.start();
    makeOrder(shop, "The whole set", 2);
    shop.quit();
}

void purchaseBill(Shop& shop)
{
    shop.start();
    makePurchaseOrder(shop);
    shop.quit();
}

void settings(Shop& shop)
{
    shop.start();
    shop.request("settings", [&] {
        edit(shop.preferences().form.stockWarn, "3");
        edit(shop.preferences().form.statuses, "Enquiry\nFired\nPaid");
        shop.preferences().OKButton();
        return settingsTrouble(shop);
    });
    shop.quit();
}

void newDatabase(Shop& shop)
{
    shop.start();
    shop.request("new database", [&] {
        shop.preferences().newDatabaseMenuItem();
        edit(shop.preferences().newDatabase.displayName, "Bakery");
        shop.preferences().newDatabase.confirm.trigger();
        return shop.preferences().newDatabase.isOpen() ? QString("the sheet stays open") : settingsTrouble(shop);
    });
    makeContact(shop, "Di Ash");
    shop.quit();
}

/// A deletion that waits for the next write, then a switch, a contact, and back.
void switchDatabase(Shop& shop)
{
    shop.start();
    const auto goTo = [&](const QString& folder) {
        shop.request("switch", [&] {
            shop.preferences().setDbLocation(folder);
            shop.app().session().switchDatabase();
            return settingsTrouble(shop);
        });
    };
    if (Item* found = recordAt(shop.items(), 1))
        found->setQty("77");
    goTo("~/Library/Application Support/Vendaro/Other.vendb");
    makeContact(shop, "Eve Fay");
    goTo("~/Library/Application Support/Vendaro/vendarodatabase.vendb");
    shop.quit();
}

void copyDatabase(Shop& shop)
{
    shop.start();
    shop.request("copy", [&] {
        shop.panels().path = shop.home() + "/Travel.vendb";
        shop.app().session().copyDatabase();
        return shop.lastAlert();
    });
    shop.quit();
}

void unlock(Shop& shop)
{
    shop.start();
    shop.request("unlock", [&] {
        shop.app().session().unlockDatabase();
        return QString();
    });
    if (!shop.app().session().isReadOnly())
        makeContact(shop, "Gil Hay");
    shop.quit();
}

/// What no editor saved goes to the disk with quitting: stock that was counted, and an editor left open.
void quitWithUnsaved(Shop& shop)
{
    shop.start();
    if (Item* found = recordAt(shop.items(), 0))
        found->setQty("99");
    shop.contacts().create();
    edit(shop.contacts().form.name, "Never saved");
    shop.quit();
}

void attach(Shop& shop)
{
    shop.start();
    attachScan(shop, 1);
    shop.quit();
}

void savePdf(Shop& shop)
{
    shop.start();
    shop.request("pdf", [&] {
        Order* found = recordAt(shop.orders(), 1);
        if (!found)
            return QString("no order");
        CustomInvoiceController* document = nullptr;
        QObject::connect(&shop.app(), &Vendaro::documentOpened, [&](CustomInvoiceController* opened) { document = opened; });
        shop.orders().editThisOrder(*found);
        shop.orders().form.stationery.setTitle("Invoice");
        shop.orders().form.printInvoice.trigger();
        QObject::disconnect(&shop.app(), &Vendaro::documentOpened, nullptr, nullptr);
        if (!document)
            return QString("no document");
        document->savePDF();
        return shop.lastAlert() == "PDF Saved" ? QString() : "the alert said " + shop.lastAlert();
    });
    shop.quit();
}

void renameDatabase(Shop& shop)
{
    shop.start();
    shop.request("rename database", [&] {
        shop.preferences().listDatabases();
        if (shop.preferences().form.databases.titles().isEmpty())
            return QString("no database is listed");
        shop.preferences().renameDatabase("Pottery");
        return QString();
    });
    shop.quit();
}

/// Nothing but starting and quitting: what a folder goes through that an earlier run left as it was.
void open(Shop& shop)
{
    shop.start();
    if (shop.app().session().isReadOnly())
        shop.app().session().unlockDatabase();
    shop.quit();
}

/// The same for every database of the user, ending with the one that was open.
void openAll(Shop& shop)
{
    shop.start();
    const auto takeLock = [&] {
        if (shop.app().session().isReadOnly())
            shop.app().session().unlockDatabase();
    };
    takeLock();
    const QString before = QString::fromStdString(shop.preferences().getDbLocation());
    QStringList places = QDir(shop.supportFolder()).entryList({"*.vendb"}, QDir::Dirs | QDir::Hidden);
    for (QString& place : places)
        place = "~/Library/Application Support/Vendaro/" + place;
    places += before;
    for (const QString& place : places) {
        shop.preferences().setDbLocation(place);
        shop.app().session().switchDatabase();
        takeLock();
    }
    shop.quit();
}

/// An order on a folder that another run left locked.
void orderUnlocked(Shop& shop)
{
    shop.start();
    if (shop.app().session().isReadOnly())
        shop.app().session().unlockDatabase();
    if (!shop.app().session().isReadOnly())
        makeOrder(shop, "After the crash", 0);
    shop.quit();
}

/// A new record in every list, none of which touches what was there.
void addEverywhere(Shop& shop)
{
    shop.start();
    if (shop.app().session().isReadOnly())
        shop.app().session().unlockDatabase();
    makeContact(shop, "Added");
    makeItem(shop, "Added", "1");
    ask(shop, "order", [&] {
        Order& order = shop.orders().createAndAddDataObject();
        order.setTitle("Added");
        shop.app().session().writeDatabase(shop.orders());
    });
    shop.quit();
}

/// The very first start of the program.
void firstStart(Shop& shop)
{
    shop.start();
    shop.request("settings", [&] {
        shop.preferences().chooseDateFormat(PrefsForm::dayFirst);
        return settingsTrouble(shop);
    });
    makeContact(shop, "The first");
    makeItem(shop, "Plate", "1");
    makeOrder(shop, "First sale", 0);
    shop.quit();
}

struct NamedCommand {
    const char* name;
    ShopCommand run;
};
constexpr NamedCommand commands[] = {{"base", base}, {"open", open}, {"contact", contact}, {"editContact", editContact},
    {"deleteContact", deleteContact}, {"company", company}, {"item", item}, {"editItem", editItem}, {"deleteItem", deleteItem},
    {"order", order}, {"busyDay", busyDay}, {"editOrder", editOrder}, {"payOrder", payOrder}, {"deleteOrder", deleteOrder},
    {"deleteNewestAndMakeAnother", deleteNewestAndMakeAnother}, {"deleteAndUndo", deleteAndUndo}, {"removeLine", removeLine},
    {"sellSet", sellSet}, {"purchaseBill", purchaseBill}, {"settings", settings}, {"newDatabase", newDatabase},
    {"switchDatabase", switchDatabase}, {"copyDatabase", copyDatabase}, {"unlock", unlock}, {"quitWithUnsaved", quitWithUnsaved},
    {"attach", attach}, {"savePdf", savePdf}, {"renameDatabase", renameDatabase}, {"openAll", openAll}, {"orderUnlocked", orderUnlocked},
    {"firstStart", firstStart}, {"addEverywhere", addEverywhere}};

} // namespace

ShopCommand shopCommand(const QString& name)
{
    for (const NamedCommand& command : commands) {
        if (name == command.name)
            return command.run;
    }
    return nullptr;
}

QStringList shopCommands()
{
    QStringList names;
    for (const NamedCommand& command : commands)
        names += command.name;
    return names;
}
