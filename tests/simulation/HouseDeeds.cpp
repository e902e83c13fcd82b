// What concerns the whole house: settings, filters, databases, locks, and bringing back what was.
#include "simulation/ShopServer.h"

#include <QEventLoop>

namespace {

void flushSettings(ShopServer& server)
{
    const Result<void> flushed = server.app().settingsStore().flush();
    server.say("trouble", flushed ? QString() : QString::fromStdString(flushed.error().message));
}

void changeSettings(ShopServer& server, const QJsonObject& asked)
{
    editForm(server.shop().preferences().form, asked["edits"].toArray());
    server.shop().preferences().OKButton();
    flushSettings(server);
}

template <class Manager>
void filterList(Manager& manager, const QJsonObject& asked)
{
    editForm(manager.listForm, asked["edits"].toArray());
}

void filter(ShopServer& server, const QJsonObject& asked)
{
    const QString list = asked["list"].toString();
    if (list == "contacts")
        filterList(server.shop().contacts(), asked);
    else if (list == "items")
        filterList(server.shop().items(), asked);
    else
        filterList(server.shop().orders(), asked);
}

void switchTo(ShopServer& server, const QJsonObject& asked)
{
    server.shop().preferences().setDbLocation(asked["location"].toString());
    server.app().session().switchDatabase();
    flushSettings(server);
}

void newDatabase(ShopServer& server, const QJsonObject& asked)
{
    PrefsController& preferences = server.shop().preferences();
    preferences.newDatabaseMenuItem();
    // Compilers do not agree on whether an array in braces is one in an array or itself.
    QJsonArray edits;
    edits.append(QJsonArray {"displayName", asked["name"]});
    editForm(preferences.newDatabase, edits);
    preferences.newDatabase.confirm.trigger();
    flushSettings(server);
}

void copyDatabase(ShopServer& server, const QJsonObject& asked)
{
    server.shop().panels().path = asked["path"].toString();
    server.app().session().copyDatabase();
}

void unlock(ShopServer& server, const QJsonObject&)
{
    server.app().session().unlockDatabase();
}

/// What failed before is tried again, as the timer does.
void retry(ShopServer& server, const QJsonObject&)
{
    server.app().session().retry();
}

/// Reads the state as the recovery window does, and waits for it. Answers what is told of files that could not be read.
QStringList look(Restoring& restoring, const Generation& generation)
{
    QEventLoop untilRead;
    QStringList told;
    restoring.onLooked = [&](const QStringList& troubles) {
        told = troubles;
        untilRead.quit();
    };
    restoring.startLooking(generation);
    if (restoring.isLooking())
        untilRead.exec();
    return told;
}

/// Looks at the state in the folder of that name; brings back the differences of the "rows", or all. Answers the differences as listed.
void restore(ShopServer& server, const QJsonObject& asked)
{
    const std::unique_ptr<Restoring> restoring = server.app().makeRestoring();
    for (const Generation& generation : restoring->generations()) {
        if (generation.folder.endsWith('/' + asked["state"].toString()))
            server.say("unread", QJsonArray::fromStringList(look(*restoring, generation)));
    }
    QJsonArray rows;
    for (int row = 0; row < restoring->numberOfRows(); ++row) {
        const auto cell = [&](const char* field) { return QString::fromStdString(restoring->objectValue(field, row)); };
        rows.append(QJsonArray {cell("field1"), cell("field2"), cell("field3")});
    }
    server.say("differences", rows);
    std::vector<int> chosen;
    for (const QJsonValue& row : asked["rows"].toArray())
        chosen.push_back(row.toInt());
    restoring->setSelectedRows(chosen);
    const Result<void> done = asked["all"].toBool() ? restoring->bringBackAll() : restoring->bringBackSelected();
    server.say("trouble", done ? QString() : QString::fromStdString(done.error().message));
}

/// Copies the thing of that name out of the recovery store.
void saveKept(ShopServer& server, const QJsonObject& asked)
{
    QString trouble = "no such thing";
    for (const KeptThing& thing : server.app().recovery().things()) {
        if (!thing.path.endsWith('/' + asked["thing"].toString()))
            continue;
        const Result<void> copied = RecoveryStore::copyOut(thing, asked["path"].toString());
        trouble = copied ? QString() : QString::fromStdString(copied.error().message);
    }
    server.say("trouble", trouble);
}

} // namespace

ShopDeed houseDeed(const QString& name)
{
    static const QHash<QString, ShopDeed> deeds {{"settings", changeSettings}, {"filter", filter}, {"switch", switchTo},
        {"newDatabase", newDatabase}, {"copy", copyDatabase}, {"unlock", unlock}, {"retry", retry}, {"restore", restore},
        {"saveKept", saveKept}};
    return deeds.value(name);
}
