// The list of what was kept, as the person sees it.
#include "app/KeptList.h"

#include "support/Business.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class KeptListTest : public Scenario {
protected:
    static std::vector<std::string> rowsOf(const KeptList& list)
    {
        std::vector<std::string> rows;
        for (int row = 0; row < list.numberOfRows(); ++row)
            rows.push_back(list.objectValue("field1", row) + " | " + list.objectValue("field2", row) + " | "
                + list.objectValue("field3", row) + " | " + list.objectValue("field4", row));
        return rows;
    }
    void startWithDamagedOrders()
    {
        writeFile("orders.xml", "not a list");
        start();
    }
    QString keptOrders() const { return supportFolder() + "/Recovery/20240301-101530 orders.xml"; }
};

} // namespace

TEST_F(KeptListTest, tellsWhenWhatAndWhy)
{
    startWithDamagedOrders();

    EXPECT_EQ(rowsOf(*app().makeKeptList()),
        std::vector<std::string> {
            "2024-03-01 10:15 | orders.xml | Could not be read | " + (databaseFolder() + "/orders.xml").toStdString()});
}

TEST_F(KeptListTest, isEmptyWhenNothingHadToBeKept)
{
    start();

    EXPECT_EQ(app().makeKeptList()->numberOfRows(), 0);
}

TEST_F(KeptListTest, showsTheFolderInTheFileBrowser)
{
    startWithDamagedOrders();
    const auto list = app().makeKeptList();
    list->show();
    EXPECT_TRUE(opener.folders.isEmpty()) << "nothing is selected";

    list->selectRow(0);
    list->show();

    EXPECT_EQ(opener.folders, QStringList {supportFolder() + "/Recovery"});
}

TEST_F(KeptListTest, aCopyGoesWhereThePersonWantsIt)
{
    startWithDamagedOrders();
    const auto list = app().makeKeptList();
    list->selectRow(0);
    panels.choose(home() + "/rescued.xml");

    list->saveCopy();

    QFile copy(home() + "/rescued.xml");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), "not a list");
    EXPECT_TRUE(QFileInfo::exists(keptOrders()));
}

TEST_F(KeptListTest, aCopyThatCannotBeMadeIsSaid)
{
    startWithDamagedOrders();
    const auto list = app().makeKeptList();
    list->selectRow(0);
    panels.choose(settingsPath());
    writeSettings("");
    alerts.answer(0);

    list->saveCopy();

    EXPECT_EQ(alerts.asked().back().title, "Save a copy");
    EXPECT_TRUE(alerts.asked().back().text.contains("exists already"));
}

TEST_F(KeptListTest, whatIsOldGoesAtTheStart)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    ASSERT_TRUE(QDir().mkpath(home() + "/data"));
    qputenv("XDG_DATA_HOME", (home() + "/data").toUtf8());
    startWithDamagedOrders();
    clock.moment = clock.moment.addDays(91);

    restart();

    EXPECT_EQ(app().makeKeptList()->numberOfRows(), 0);
    EXPECT_FALSE(QFileInfo::exists(keptOrders()));
    EXPECT_TRUE(logged("1 things older than 90 days went from the recovery store into the trash"));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST_F(KeptListTest, whatTheNoteOfTheLastQuitNamesIsThereWhenItIsTold)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", (home() + "/data").toUtf8());
    RecoveryStore store(supportFolder() + "/Recovery", clock);
    const Result<QString> kept = store.keepBytes(databaseFolder() + "/orders.xml", "orders", KeptFor::unsaved);
    const Result<QString> other = store.keepBytes(databaseFolder() + "/items.xml", "items", KeptFor::unsaved);
    ASSERT_TRUE(kept.ok() && other.ok());
    start();
    store.leaveNote({"What orders.xml should hold is kept as " + kept.value() + "."});
    clock.moment = clock.moment.addDays(91);

    restart();

    EXPECT_TRUE(QFileInfo::exists(kept.value()));
    EXPECT_FALSE(QFileInfo::exists(other.value()));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}
