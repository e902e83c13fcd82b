// Lists leave the program as files: which list, what is asked, and every byte of what is written.
#include "support/Scenario.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QPdfWriter>
#include <QTextDocument>

class ListExportTest : public Scenario {
protected:
    /// Two orders, the newest in front, as the orders' page shows them.
    void begin()
    {
        start();
        app().getPrefsController().chooseDateFormat(PrefsForm::dayFirst);
        makeOrder("Three stools", "INV/1", "Quoted");
        makeOrder("A \"round\" table, oak\tand pine", "INV/2", "Paid");
        app().setMainWindowIsKey(true);
    }
    void makeOrder(const char* title, const char* number, const char* status)
    {
        Order& order = app().getOrderManager().createAndAddDataObject();
        order.setTitle(title);
        order.setOrderNum(number);
        order.setDate("04/03/24");
        order.setStatus(status);
        app().getOrderManager().filter();
    }
    QString chooseFile(const QString& name)
    {
        const QString path = home() + '/' + name;
        panels.choose(path);
        return path;
    }
    /// What comes out of the printer.
    QByteArray printed()
    {
        QByteArray paper;
        QBuffer buffer(&paper);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        printing.device = &writer;
        app().printMenuItem();
        printing.device = nullptr;
        return paper;
    }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
    }
};

TEST_F(ListExportTest, commaSeparatedTextHoldsWhatTheOrdersShow)
{
    begin();
    const QString path = chooseFile("Orders.csv");
    app().exportCSVMenuItem();

    EXPECT_EQ(contents(path),
        "Date,Number,Title,Contact,Status\r"
        "\"04/03/24\",\"INV/2\",\"A 'round' table, oak\tand pine\",\"\",\"Paid\"\r"
        "\"04/03/24\",\"INV/1\",\"Three stools\",\"\",\"Quoted\"\r");
    ASSERT_EQ(panels.savePanels.size(), 1u);
    EXPECT_EQ(panels.savePanels[0].fileType, "csv");
    EXPECT_EQ(panels.savePanels[0].name, "Orders");
    EXPECT_EQ(log().back(), "writing csv");
}

TEST_F(ListExportTest, tabDelimitedTextTurnsTabsIntoBlanks)
{
    begin();
    const QString path = chooseFile("Orders.txt");
    app().exportTDLMenuItem();

    EXPECT_EQ(contents(path),
        "Date\tNumber\tTitle\tContact\tStatus\r"
        "04/03/24\tINV/2\tA \"round\" table, oak and pine\t\tPaid\r"
        "04/03/24\tINV/1\tThree stools\t\tQuoted\r");
    EXPECT_EQ(panels.savePanels.at(0).fileType, "txt");
    EXPECT_FALSE(logged("writing csv"));
}

TEST_F(ListExportTest, aPageIsWrittenInSixteenBitsWithAByteOrderMark)
{
    begin();
    app().getOrderManager().getnthVisibleItem(0)->setTitle("Caf\xc3\xa9 <b> \xf0\x9f\x98\x80");
    for (const char* hidden : {"date", "ordernum", "contactname"})
        app().getOrderManager().list.column(hidden)->visible = false;
    const QString path = chooseFile("Orders.html");
    app().exportHTMLMenuItem();

    const QString page =
        "<html><head><title>Data Export from Vendaro</title><body><table width=100%><tr><th class = title>Title</th>"
        "<th class = status>Status</th></tr><tr><td class = title>Caf\u00e9 <b> \U0001F600</td><td class = status>Paid</td></tr>"
        "<tr><td class = \"title alt\">Three stools</td><td class = \"status alt\">Quoted</td></tr></table><br /></body></head>"
        "</html>";
    QByteArray wanted("\xff\xfe");
    for (const QChar unit : page) {
        wanted += static_cast<char>(unit.unicode() & 0xff);
        wanted += static_cast<char>(unit.unicode() >> 8);
    }
    EXPECT_EQ(contents(path), wanted);
    EXPECT_EQ(panels.savePanels.at(0).fileType, "html");
}

TEST_F(ListExportTest, onlyWhatTheFilterLeavesIsExportedInTheOrderOfTheSort)
{
    begin();
    makeOrder("Stool covers", "INV/3", "Quoted");
    app().getOrderManager().listForm.search.edit("stool");
    app().getOrderManager().toggleSort("title");
    const QString path = chooseFile("Orders.txt");
    app().exportTDLMenuItem();

    EXPECT_EQ(contents(path),
        "Date\tNumber\tTitle\tContact\tStatus\r"
        "04/03/24\tINV/3\tStool covers\t\tQuoted\r"
        "04/03/24\tINV/1\tThree stools\t\tQuoted\r");
}

TEST_F(ListExportTest, whatIsNoUtf8IsReplaced)
{
    begin();
    app().getOrderManager().getnthVisibleItem(0)->setTitle("a\xff");
    for (const char* hidden : {"date", "ordernum", "contactname", "status"})
        app().getOrderManager().list.column(hidden)->visible = false;
    const QString path = chooseFile("Orders.csv");
    app().exportCSVMenuItem();

    EXPECT_EQ(contents(path), "Title\r\"a\xef\xbf\xbd\"\r\"Three stools\"\r");
}

TEST_F(ListExportTest, thePageInFrontIsExported)
{
    begin();
    ItemManager& items = app().getItemManager();
    items.add(std::make_unique<Item>(items.rules())).setItem("Plank");
    items.filter();
    app().setFrontPage(Page::items);
    const QString path = chooseFile("Items.csv");
    app().exportCSVMenuItem();

    EXPECT_TRUE(contents(path).contains("\"Plank\"")) << contents(path).toStdString();
    EXPECT_EQ(panels.savePanels.at(0).name, "Items");
    app().setFrontPage(Page::contacts);
    EXPECT_EQ(app().determineFrontDataSource(), &app().getContactManager());
}

TEST_F(ListExportTest, whileAnotherWindowIsInFrontNothingIsAsked)
{
    begin();
    app().setMainWindowIsKey(false);
    for (void (Vendaro::*command)() : {&Vendaro::exportCSVMenuItem, &Vendaro::exportTDLMenuItem, &Vendaro::exportHTMLMenuItem}) {
        (app().*command)();
        EXPECT_EQ(log().back(), "qvds is nil");
    }
    EXPECT_TRUE(panels.savePanels.empty());
    EXPECT_EQ(app().determineFrontDataSource(), nullptr);
}

TEST_F(ListExportTest, whileAnotherWindowIsInFrontNothingIsDeletedOpenedOrBroughtBack)
{
    begin();
    OrderManager& orders = app().getOrderManager();
    orders.setSelectedRecords({orders.getnthVisibleItem(0)});
    app().setFocusedList(&orders);
    app().setMainWindowIsKey(false);
    app().deleteMenuItem();
    app().editMenuItem();
    app().undoMenuItem();
    EXPECT_EQ(orders.getCount(), 2);
    EXPECT_FALSE(orders.form.isOpen());
    EXPECT_TRUE(alerts.asked().empty());

    app().setMainWindowIsKey(true);
    alerts.answer("OK");
    app().deleteMenuItem();
    EXPECT_EQ(orders.getCount(), 1);
    app().undoMenuItem();
    EXPECT_EQ(orders.getCount(), 2);
    orders.setSelectedRecords({orders.getnthVisibleItem(0)});
    app().editMenuItem();
    EXPECT_TRUE(orders.form.isOpen());
}

TEST_F(ListExportTest, aListWithoutTheKeyboardIsNotDeletedFrom)
{
    begin();
    OrderManager& orders = app().getOrderManager();
    orders.setSelectedRecords({orders.getnthVisibleItem(0)});
    app().setFocusedList(nullptr);
    app().deleteMenuItem();
    app().editMenuItem();
    EXPECT_EQ(orders.getCount(), 2);
    EXPECT_FALSE(orders.form.isOpen());
    EXPECT_EQ(beeper.beeps, 0);
    app().undoMenuItem();
    EXPECT_EQ(beeper.beeps, 1);
}

TEST_F(ListExportTest, aPageWithoutAListOfItsOwnHasNoneInFront)
{
    begin();
    app().setFrontPage(Page::reports);
    app().exportCSVMenuItem();
    EXPECT_EQ(log().back(), "qvds is nil");
}

TEST_F(ListExportTest, cancellingWritesNothing)
{
    begin();
    const QStringList before = QDir(home()).entryList(QDir::Files | QDir::Hidden);
    panels.cancel();
    app().exportCSVMenuItem();
    EXPECT_EQ(QDir(home()).entryList(QDir::Files | QDir::Hidden), before);
    EXPECT_FALSE(logged("writing csv"));
}

TEST_F(ListExportTest, aFileThatCannotBeWrittenIsLoggedAndShown)
{
    begin();
    QString shown;
    QObject::connect(&app(), &Vendaro::statusWanted, [&shown](const QString& line) { shown = line; });
    const QString path = chooseFile("no folder/Orders.csv");
    app().exportCSVMenuItem();
    const QString logLine = log().back();
    EXPECT_TRUE(logLine.startsWith("Unsuccessful exporting data to " + path + " \nerror:")) << logLine.toStdString();
    EXPECT_TRUE(shown.startsWith("Not exported: " + path)) << shown.toStdString();
    EXPECT_TRUE(alerts.asked().empty());

    chooseFile("no folder/Orders.html");
    app().exportHTMLMenuItem();
    EXPECT_EQ(log().back(), "Unsuccessful exporting data to " + home() + "/no folder/Orders.html\n");
}

TEST_F(ListExportTest, whatStoodInTheFileStaysUntilAllIsWritten)
{
    begin();
    const QString path = chooseFile("Orders.csv");
    ASSERT_TRUE(QDir().mkpath(path));
    app().exportCSVMenuItem();
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_EQ(QDir(home()).entryList({".*tmp"}, QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(ListExportTest, anEmptyListExportsItsHeadings)
{
    start();
    app().setMainWindowIsKey(true);
    const QString path = chooseFile("Orders.txt");
    app().exportTDLMenuItem();
    EXPECT_EQ(contents(path), "Date\tNumber\tTitle\tContact\tStatus\r");
}

TEST_F(ListExportTest, theListInFrontGoesOnPaper)
{
    begin();
    const QByteArray paper = printed();
    EXPECT_EQ(printing.titles, QStringList("Orders"));
    EXPECT_TRUE(paper.startsWith("%PDF"));

    printing.accepts = false;
    app().printMenuItem();
    EXPECT_EQ(log().back(), "Orders could not be printed");

    app().setMainWindowIsKey(false);
    app().printMenuItem();
    EXPECT_EQ(printing.titles.size(), 2);
}

TEST_F(ListExportTest, whatHasTheKeyboardInAnotherWindowGoesOnPaper)
{
    begin();
    auto text = std::make_shared<QTextDocument>("Ring Ada");
    FrontView responder {"Notepad", nullptr, text};
    app().setFirstResponder([&] { return responder; });
    app().printMenuItem();
    EXPECT_EQ(printing.titles, QStringList("Orders")) << "the main window has the keyboard";

    app().setMainWindowIsKey(false);
    const QByteArray paper = printed();
    EXPECT_EQ(printing.titles.last(), "Notepad");
    EXPECT_TRUE(paper.startsWith("%PDF"));

    responder = {"Items ordered", &app().getBOMManager(), nullptr};
    app().printMenuItem();
    EXPECT_EQ(printing.titles.last(), "Items ordered");

    responder = {"A button", nullptr, nullptr};
    app().printMenuItem();
    EXPECT_EQ(printing.titles.size(), 3);
}

TEST_F(ListExportTest, aUsersWordIsMadeAFileName)
{
    begin();
    app().getPrefsController().form.termOrders.edit("Jobs/Orders");
    panels.cancel();
    app().exportCSVMenuItem();
    EXPECT_EQ(panels.savePanels.at(0).name, "Jobs-Orders");
}
