// The window with what was kept, and with the earlier states of the database.
#include "ui/shell/RecoveryWindow.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/Button.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/PickList.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"

#include <QTabWidget>

using namespace uitest;

namespace {

class RecoveryWindowTest : public Business {
protected:
    void open(RecoveryWindow::Tab tab)
    {
        window = new RecoveryWindow(app());
        window->showTab(tab);
        show(*window);
        waitForList();
    }
    void waitForList() const
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return child<Button>(*window, "cancelReading")->isHidden(); }, 60'000));
    }
    void TearDown() override { delete window; }
    /// Ada was in the database yesterday evening and is not any more.
    void beginWithoutAda()
    {
        begin();
        contact("Ada Hill");
        contact("Bert Rivers");
        restart();
        clock.moment = clock.moment.addDays(1);
        restart();
        contacts().deleteItem(*contacts().getnthItem(0));
    }
    RecordTable* table() const { return window->findChild<QTabWidget*>()->currentWidget()->findChild<RecordTable*>(); }
    QStringList rows(int column) const
    {
        QStringList texts;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            texts += table()->model()->index(row, column).data().toString();
        return texts;
    }

    QPointer<RecoveryWindow> window;
};

} // namespace

TEST_F(RecoveryWindowTest, beginsInTheListOfWhatWasKeptWithTheFirstRowChosen)
{
    writeFile("orders.xml", "not a list");
    begin();
    open(RecoveryWindow::Tab::kept);

    EXPECT_EQ(rows(1), QStringList {"orders.xml"});
    EXPECT_EQ(keyboard(), table());
    EXPECT_TRUE(child<Button>(*window, "show")->isEnabled());
    EXPECT_TRUE(child<Button>(*window, "saveCopy")->isEnabled());
    table()->clearSelection();
    EXPECT_FALSE(child<Button>(*window, "show")->isEnabled());
    EXPECT_FALSE(child<Button>(*window, "saveCopy")->isEnabled());
    table()->selectRow(0);

    child<Button>(*window, "show")->click();

    EXPECT_EQ(opener.folders, QStringList {supportFolder() + "/Recovery"});
}

TEST_F(RecoveryWindowTest, showsTheNewestEarlierStateAndBringsTheChosenRecordBack)
{
    beginWithoutAda();
    open(RecoveryWindow::Tab::earlier);
    EXPECT_EQ(child<PickList>(*window, "generations")->count(), 1);
    ASSERT_EQ(rows(1), QStringList {"Ada Hill"});
    EXPECT_FALSE(child<Button>(*window, "bringBack")->isEnabled());
    EXPECT_TRUE(child<Button>(*window, "bringAllBack")->isEnabled());

    table()->selectRow(0);
    child<Button>(*window, "bringBack")->click();

    EXPECT_EQ(contacts().getCount(), 2);
    EXPECT_TRUE(rows(1).isEmpty());
    EXPECT_FALSE(child<Button>(*window, "bringAllBack")->isEnabled());
    EXPECT_EQ(child<PickList>(*window, "generations")->count(), 2) << "how things stood before is kept";
}

TEST_F(RecoveryWindowTest, saysInPlaceWhyNothingComesBack)
{
    beginWithoutAda();
    open(RecoveryWindow::Tab::earlier);
    contacts().create();

    child<Button>(*window, "bringAllBack")->click();

    QStringList messages;
    for (const MessageBar* bar : window->findChildren<MessageBar*>())
        messages += bar->text();
    EXPECT_TRUE(messages.contains("Close the editors that are open first."));
    EXPECT_EQ(contacts().getCount(), 1);
}

TEST_F(RecoveryWindowTest, goesWhenAnotherDatabaseIsOpened)
{
    beginWithoutAda();
    open(RecoveryWindow::Tab::earlier);

    app().session().switchDatabase();
    settle();

    EXPECT_TRUE(window.isNull() || !window->isVisible());
}

TEST_F(RecoveryWindowTest, readingCanBeStoppedAndBegunAgain)
{
    beginWithoutAda();
    window = new RecoveryWindow(app());
    show(*window);
    window->showTab(RecoveryWindow::Tab::earlier);
    auto* cancel = child<Button>(*window, "cancelReading");
    ASSERT_TRUE(cancel->isVisible());
    EXPECT_FALSE(child<Button>(*window, "bringAllBack")->isEnabled());

    cancel->click();

    EXPECT_FALSE(cancel->isVisible());
    settle();
    EXPECT_TRUE(rows(1).isEmpty());
    EXPECT_FALSE(child<Button>(*window, "bringAllBack")->isEnabled());
    EXPECT_EQ(table()->accessibleDescription(), QString("Choose an earlier state to see what is different."));

    child<PickList>(*window, "generations")->setCurrentRow(0);
    EXPECT_TRUE(cancel->isVisible());
    waitForList();
    EXPECT_EQ(rows(1), QStringList {"Ada Hill"});
}
