// The commands that write the list in front into a file, from the menu and from the tool bar.
#include "MainOnScreen.h"

#include "support/AddressBookFile.h"
#include "ui/kit/ProgressCard.h"
#include "ui/kit/SheetStack.h"
#include "ui/kit/ToolBar.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>

using namespace uitest;

namespace {

class ExportCommands : public MainOnScreen {
protected:
    QByteArray exported(const char* name, const QString& file)
    {
        const QString path = home() + '/' + file;
        panels.choose(path);
        command(name)->trigger();
        QFile written(path);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray("(not there)");
    }
    /// So many items, marked for a website that is there.
    void haveWebsite(int count)
    {
        ASSERT_TRUE(QDir().mkpath(website()));
        for (int i = 0; i < count; ++i) {
            auto item = std::make_unique<Item>(desktop->getItemManager().rules());
            item->setCode(std::to_string(i));
            item->setExportbrevand(true);
            desktop->getItemManager().add(std::move(item));
        }
    }
    QString website() const { return home() + "/sites/mysite/data"; }
    int exportedItems() const { return static_cast<int>(QDir(website()).entryList(QDir::Files).size()); }
};

} // namespace

TEST_F(ExportCommands, writeTheListOfThePageThatIsShown)
{
    haveRecords();
    launch();
    const QByteArray orders = exported("exportCSV", "Orders.csv");
    EXPECT_TRUE(orders.contains("\"Three stools\"")) << orders.toStdString();
    EXPECT_EQ(status(), QString("Exported to Orders.csv"));

    window->showPage(Page::items);
    const QByteArray items = exported("exportTDL", "Items.txt");
    EXPECT_TRUE(items.contains("Oak stool")) << items.toStdString();
    EXPECT_FALSE(items.contains("Three stools"));

    window->showPage(Page::contacts);
    EXPECT_TRUE(exported("exportHTML", "Contacts.html").startsWith("\xff\xfe<"));
    EXPECT_TRUE(exported("exportTDL", "Contacts.txt").contains("Bert Hill"));
}

TEST_F(ExportCommands, standInTheFileMenuAndAmongTheToolBarsItems)
{
    launch();
    QStringList texts;
    for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>()) {
        for (const QAction* action : menu->actions()) {
            if (menu->title().remove('&') == "Export")
                texts += action->text().remove('&');
        }
    }
    EXPECT_EQ(texts, QStringList({"To Spreadsheet", "To Tab-Delimited Text", "To HTML", "To Website", "E-mail List…"}));
    command("customiseToolBar")->trigger();
    ASSERT_NE(SheetStack::instance().top(), nullptr);
    const auto* available = SheetStack::instance().top()->findChild<QListWidget*>("available");
    ASSERT_NE(available, nullptr);
    for (const char* text : {"To HTML", "To Spreadsheet"})
        EXPECT_EQ(available->findItems(text, Qt::MatchExactly).size(), 1) << text;
    EXPECT_TRUE(command("exportCSV")->isEnabled());
}

TEST_F(ExportCommands, doNothingWhileAnotherWindowHasTheKeyboard)
{
    haveRecords();
    launch();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(exported("exportCSV", "Orders.csv"), QByteArray("(not there)"));
    EXPECT_EQ(log().back(), QString("qvds is nil"));
}

// The website

TEST_F(ExportCommands, theItemsGoToTheirWebsiteBehindACardThatIsGoneWhenItIsTold)
{
    launch();
    haveWebsite(3);
    alerts.answer("OK");
    command("exportWebsite")->trigger();
    EXPECT_EQ(exportedItems(), 3);
    EXPECT_EQ(alerts.texts(), QStringList("Finished exporting items."));
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
}

TEST_F(ExportCommands, withNothingToExportThereIsNoCard)
{
    launch();
    alerts.answer("OK");
    command("exportWebsite")->trigger();
    EXPECT_EQ(alerts.texts(), QStringList("Finished exporting items."));
}

TEST_F(ExportCommands, escapeStopsTheExport)
{
    launch();
    haveWebsite(400);
    QTimer::singleShot(0, window.get(), [] {
        auto* card = qobject_cast<ProgressCard*>(SheetStack::instance().top());
        ASSERT_NE(card, nullptr);
        QTest::keyClick(card, Qt::Key_Escape);
    });
    command("exportWebsite")->trigger();
    EXPECT_LT(exportedItems(), 400);
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_TRUE(status().startsWith("Export stopped: ")) << status().toStdString();
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
}

TEST_F(ExportCommands, stockManagementIsStoppedByAnAgent)
{
    launch();
    haveWebsite(2);
    alerts.answer("OK");
    command("removeAllQtyManagement")->trigger();
    EXPECT_EQ(alerts.texts(), QStringList("2 Items updated"));
}

TEST_F(ExportCommands, contactsHaveAnEmailListAnImportAndAnAgentInTheMenus)
{
    haveRecords();
    launch();
    ContactManager& contactList = desktop->getContactManager();
    contactList.setSelectedRecords({&contactList.at(0)});
    EXPECT_EQ(exported("emailList", "list.csv"), "\"email\",\"firstname\",\"surname\",\"title\"\n\"\",\"Ada\",\"Penrose\",\"\"\n");

    haveAddressBook(*desktop, home(), "BEGIN:VCARD\nN:Quill;Eve\nADR:;;1 Road\\n2\\nKent;;;;\nEND:VCARD\n");
    alerts.answer("OK");
    command("importAddressBook")->trigger();
    EXPECT_EQ(alerts.asked().back().text, QString("1 contacts imported"));
    alerts.answer("OK");
    command("moveAdd3ToCounty")->trigger();
    EXPECT_EQ(alerts.asked().back().text, QString("1 Contact updated"));
    EXPECT_EQ(contactList.at(3).getCounty(), "Kent");
}

TEST_F(ExportCommands, anEmptyAddressBookIsSaidInTheStatusLine)
{
    launch();
    command("importAddressBook")->trigger();
    EXPECT_EQ(status(), QString("There is nobody in the address book. The preferences say where it lies."));
}
