// Contacts, items, bills, tasks and goals: made, edited, cancelled, deleted, brought back.
#include "simulation/ShopServer.h"

#include "storage/PresentItem.h"

namespace {

template <class Manager>
auto* presentRecord(Manager& manager, const QJsonObject& asked)
{
    return presentItem(manager, asked["id"].toInt());
}

void finishForm(CommandField& save, CommandField& cancel, const QJsonValue& how)
{
    (how.toString() == "cancel" ? cancel : save).trigger();
}

// Contacts

void finishCompany(CompanyEditor& editor, const QJsonObject& asked)
{
    editForm(editor.form, asked["edits"].toArray());
    finishForm(editor.form.save, editor.form.cancel, asked["then"]);
}

void finishPerson(CompanyContactEditor& editor, const QJsonObject& asked)
{
    editForm(editor.form, asked["edits"].toArray());
    finishForm(editor.form.save, editor.form.cancel, asked["then"]);
}

/// "id" 0 makes one: a "company" or a person. "next" says what the second editor does that linking and making a company open.
void contact(ShopServer& server, const QJsonObject& asked)
{
    ContactManager& contacts = server.shop().contacts();
    if (Contact* found = presentRecord(contacts, asked))
        contacts.editThisContact(*found);
    else if (asked["company"].toBool())
        contacts.companyEditor.create();
    else
        contacts.create();
    if (contacts.companyEditor.form.isOpen())
        return finishCompany(contacts.companyEditor, asked);
    if (contacts.companyContactEditor.form.isOpen())
        return finishPerson(contacts.companyContactEditor, asked);
    if (!contacts.form.isOpen())
        return;
    editForm(contacts.form, asked["edits"].toArray());
    const QString then = asked["then"].toString();
    if (then == "makeCompany")
        contacts.form.makeCompany.trigger();
    else if (then == "link")
        contacts.form.linkToCompany.trigger();
    else
        return finishForm(contacts.form.save, contacts.form.cancel, then);
    if (contacts.companyEditor.form.isOpen())
        finishCompany(contacts.companyEditor, asked["next"].toObject());
    if (contacts.companyContactEditor.form.isOpen())
        finishPerson(contacts.companyContactEditor, asked["next"].toObject());
}

// Lists

qvDataSource* listNamed(Shop& shop, const QString& name)
{
    if (name == "contacts")
        return &shop.contacts();
    return name == "items" ? static_cast<qvDataSource*>(&shop.items()) : &shop.orders();
}

void deleteSelected(ShopServer& server, const QJsonObject& asked)
{
    qvDataSource& list = *listNamed(server.shop(), asked["list"].toString());
    std::vector<dataObject*> selected;
    const QJsonArray ids = asked["ids"].toArray();
    for (dataObject* record : list.records()) {
        if (ids.contains(record->getID()))
            selected.push_back(record);
    }
    list.setSelectedRecords(selected);
    list.deleteKey();
}

void undo(ShopServer& server, const QJsonObject& asked)
{
    server.app().setMainWindowIsKey(true);
    server.app().setFocusedList(listNamed(server.shop(), asked["list"].toString()));
    server.app().undoMenuItem();
}

// Items

void editParts(ItemManager& items, const QJsonArray& parts)
{
    for (const QJsonValue& part : parts) {
        const QString what = part[0].toString();
        Item* found = what == "add" ? presentItem(items, part[1].toInt()) : nullptr;
        if (found)
            items.addConstituent(*found);
        if (what == "qty")
            items.constituentTable.setObjectValue("qty", part[1].toInt(), part[2].toString().toStdString());
        if (what == "remove") {
            items.constituentTable.selectConstituent(part[1].toInt());
            items.form.removeConstituent.trigger();
        }
    }
}

void item(ShopServer& server, const QJsonObject& asked)
{
    ItemManager& items = server.shop().items();
    if (Item* found = presentRecord(items, asked))
        items.editThisItem(*found);
    else
        items.create();
    if (!items.form.isOpen())
        return;
    editForm(items.form, asked["edits"].toArray());
    editParts(items, asked["parts"].toArray());
    finishForm(items.form.save, items.form.cancel, asked["then"]);
}

// Records without an editor of their own

/// Sets fields by name, or takes the record away; then the collection is written.
template <class Manager, class Make>
void plainRecord(ShopServer& server, const QJsonObject& asked, Manager& manager, Make make)
{
    if (!server.app().session().readOnlyCheck())
        return;
    auto* record = presentRecord(manager, asked);
    if (record && asked["delete"].toBool()) {
        manager.deleteItem(*record);
    } else {
        auto& target = record ? *record : make();
        for (const QJsonValue& edit : asked["edits"].toArray())
            target.setFieldByName(edit[0].toString().toStdString(), edit[1].toString().toStdString());
    }
    server.app().session().writeDatabase(manager);
}

void bill(ShopServer& server, const QJsonObject& asked)
{
    BillManager& bills = server.app().getBillManager();
    plainRecord(server, asked, bills, [&]() -> Bill& { return bills.createAndAddDataObject(); });
}

void task(ShopServer& server, const QJsonObject& asked)
{
    ActionManager& tasks = server.app().getActionManager();
    plainRecord(server, asked, tasks, [&]() -> Action& { return tasks.add(std::make_unique<Action>()); });
}

void goal(ShopServer& server, const QJsonObject& asked)
{
    GoalManager& goals = server.app().getGoalManager();
    plainRecord(server, asked, goals, [&]() -> Goal& { return goals.add(std::make_unique<Goal>()); });
    Goal* made = presentItem(goals, asked["id"].toInt() ? asked["id"].toInt() : goals.highestId());
    Action* task = presentItem(server.app().getActionManager(), asked["task"].toInt());
    if (!made || !task || server.app().session().isReadOnly())
        return;
    made->addAction(*task);
    server.app().session().writeDatabase(goals);
}

} // namespace

ShopDeed recordDeed(const QString& name)
{
    static const QHash<QString, ShopDeed> deeds {
        {"contact", contact}, {"item", item}, {"delete", deleteSelected}, {"undo", undo}, {"bill", bill}, {"task", task}, {"goal", goal}};
    return deeds.value(name);
}
