// The main window on the running application.
#include "MainOnScreen.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/ToolBar.h"
#include "ui/shell/RecoveryWindow.h"
#include "ui/shell/Sheets.h"
#include "ui/shell/ToolBarSheet.h"
#include "ui/shell/WelcomeView.h"

#include <QClipboard>
#include <QMenuBar>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>

using namespace uitest;

TEST_F(MainOnScreen, welcomesWhoeverHasNoOrdersWithTheKeyboardOnTheFirstThingToDo)
{
    launch();
    auto* welcome = window->findChild<WelcomeView*>();
    ASSERT_NE(welcome, nullptr);
    EXPECT_TRUE(welcome->isVisible());
    auto* focus = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->accessibleName(), QString("New Contact"));
    EXPECT_EQ(status(), QString("No orders"));
}

TEST_F(MainOnScreen, saysNothingOfTheListsUntilTheDatabaseIsRead)
{
    haveRecords();
    desktop =
        std::make_unique<Vendaro>(VendaroDesktop {alerts, beeper, clock, user, panels, opener, printing, clipboard, resources, locale});
    desktop->start();
    window = std::make_unique<MainWindow>(*desktop, MainWindow::Lists::later);
    uitest::show(*window);
    EXPECT_EQ(status(), QString("Opening the database…"));
    window->makeLists();
    EXPECT_EQ(status(), QString("Opening the database…"));
    EXPECT_FALSE(list("Orders")->isVisible());
    EXPECT_FALSE(window->findChild<WelcomeView*>()->isVisible());

    desktop->finishLaunching();
    EXPECT_TRUE(list("Orders")->isVisible());
    EXPECT_EQ(status(), QString("2 orders"));
    EXPECT_EQ(QApplication::focusWidget(), list("Orders"));
}

TEST_F(MainOnScreen, returnAndSpacePressWhatHasTheKeyboard)
{
    chooseDates();
    launch();
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_TRUE(desktop->getContactManager().form.isOpen());
    desktop->getContactManager().form.cancel.trigger();
    QTest::keyClick(keyboard(), Qt::Key_Space);
    EXPECT_TRUE(desktop->getContactManager().form.isOpen());
}

TEST_F(MainOnScreen, asksForTheDateFormatOnceAndKeepsTheAnswer)
{
    launch();
    command("newOrder")->trigger();
    auto* sheet = qobject_cast<DateFormatSheet*>(SheetStack::instance().top());
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(child<QRadioButton>(*sheet, "dayFirst")->isChecked());
    press(*child<QAbstractButton>(*sheet, "monthFirst"));
    press(*child<QAbstractButton>(*sheet, "ok"));
    EXPECT_EQ(desktop->settingsStore().text(settings::dateFormat).value_or("none"), "1");
    command("newOrder")->trigger();
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_TRUE(desktop->getOrderManager().form.isOpen());
    EXPECT_EQ(desktop->getOrderManager().form.date.text(), QString("03/01/24"));
}

TEST_F(MainOnScreen, cancellingTheQuestionLeavesItForTheNextTime)
{
    launch();
    command("newContact")->trigger();
    ASSERT_NE(SheetStack::instance().top(), nullptr);
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_EQ(desktop->settingsStore().text(settings::dateFormat).value_or("none"), "none");
    command("newContact")->trigger();
    EXPECT_NE(SheetStack::instance().top(), nullptr);
}

TEST_F(MainOnScreen, showsTheOrdersOfAStartedBusiness)
{
    haveRecords();
    launch();
    EXPECT_FALSE(window->findChild<WelcomeView*>()->isVisible());
    EXPECT_EQ(list("Orders")->model()->rowCount(), 2);
    EXPECT_TRUE(list("Orders")->isVisible());
    EXPECT_TRUE(list("Orders")->hasFocus());
    EXPECT_EQ(status(), QString("2 orders"));
}

TEST_F(MainOnScreen, pagesAreReachedByKeysAndBySideBar)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(window->page(), Page::contacts);
    EXPECT_TRUE(list("Contacts")->hasFocus());
    EXPECT_EQ(status(), QString("3 contacts"));
    QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(window->page(), Page::items);
    EXPECT_TRUE(list("Items")->hasFocus());
    EXPECT_EQ(status(), QString("1 item"));
    auto* bar = window->findChild<SideBar*>();
    QTest::mouseClick(bar->viewport(), Qt::LeftButton, {}, bar->visualItemRect(bar->item(1)).center());
    EXPECT_EQ(window->page(), Page::orders);
    EXPECT_TRUE(list("Orders")->isVisible());
}

TEST_F(MainOnScreen, countsWhatIsShownAndSelected)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(keyboard(), "bench");
    EXPECT_EQ(status(), QString("1 of 2 orders"));
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(status(), QString("2 orders"));
    desktop->getOrderManager().setSelectedRows({0, 1});
    EXPECT_EQ(status(), QString("2 orders, 2 selected"));
    QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(list("Contacts"), Qt::Key_Down);
    EXPECT_EQ(status(), QString("3 contacts, 1 selected"));
}

TEST_F(MainOnScreen, saysWhenNothingIsFound)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(keyboard(), "zebra");
    EXPECT_FALSE(list("Orders")->isVisible());
    bool told = false;
    for (const QLabel* label : window->findChildren<QLabel*>())
        told = told || (label->isVisible() && label->text() == "Nothing found");
    EXPECT_TRUE(told);
    EXPECT_EQ(status(), QString("0 of 2 orders"));
}

TEST_F(MainOnScreen, everyMenuEntryCanBeReachedAndShortcutsAreUnique)
{
    launch();
    QStringList keys;
    for (const QAction* menu : window->menuBar()->actions()) {
        EXPECT_TRUE(menu->text().contains('&')) << menu->text().toStdString();
        for (const QAction* entry : menu->menu()->actions()) {
            if (!entry->shortcut().isEmpty())
                keys += entry->shortcut().toString();
        }
    }
    EXPECT_EQ(keys.removeDuplicates(), 0);
    const std::pair<const char*, QKeySequence> expected[] {{"newOrder", QKeySequence::New}, {"find", QKeySequence::Find},
        {"undo", QKeySequence::Undo}, {"redo", QKeySequence::Redo}, {"cut", QKeySequence::Cut}, {"copyText", QKeySequence::Copy},
        {"paste", QKeySequence::Paste}, {"selectAll", QKeySequence::SelectAll}, {"delete", QKeySequence::Delete},
        {"quit", QKeySequence::Quit}};
    for (const auto& [name, sequence] : expected)
        EXPECT_EQ(command(name)->shortcut(), sequence) << name;
}

TEST_F(MainOnScreen, commandsOpenTheirEditors)
{
    chooseDates();
    launch();
    command("newContact")->trigger();
    EXPECT_TRUE(desktop->getContactManager().form.isOpen());
    command("newCompany")->trigger();
    EXPECT_TRUE(desktop->getContactManager().companyEditor.form.isOpen());
    command("newItem")->trigger();
    EXPECT_TRUE(desktop->getItemManager().form.isOpen());
    command("newOrder")->trigger();
    EXPECT_TRUE(desktop->getOrderManager().form.isOpen());
    EXPECT_FALSE(desktop->getOrderManager().currentItem()->isPurchaseOrder());
    command("newPurchaseOrder")->trigger();
    EXPECT_TRUE(desktop->getOrderManager().currentItem()->isPurchaseOrder());
}

TEST_F(MainOnScreen, returnOpensTheSelectedRecordAndDeleteRemovesIt)
{
    haveRecords();
    launch();
    QTest::keyClick(list("Orders"), Qt::Key_Down);
    QTest::keyClick(list("Orders"), Qt::Key_Return);
    EXPECT_TRUE(desktop->getOrderManager().form.isOpen());
    desktop->getOrderManager().form.cancel.trigger();
    alerts.answer("OK");
    QTest::keyClick(list("Orders"), Qt::Key_Delete);
    EXPECT_EQ(desktop->getOrderManager().getCount(), 1);
    EXPECT_EQ(status(), QString("Deleted. Undo brings the order back with its payments, without its lines and attachments."));
    QTest::keyClick(list("Orders"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(desktop->getOrderManager().getCount(), 2);
}

TEST_F(MainOnScreen, theItemsStayInTheirRowsWhileAnOrderTakesFromStock)
{
    chooseDates();
    begin();
    for (int n = 0; n < 60; ++n)
        item("Mug");
    item("Plate", "7");
    app().session().writeDatabase(items());
    quit();
    launch();
    command("showItems")->trigger();
    ItemManager& shown = desktop->getItemManager();
    shown.sortByColumn("item", true);
    shown.reloadData();
    QAbstractItemView* table = list("Items");
    table->setCurrentIndex(table->model()->index(60, 0));
    table->scrollToBottom();
    settle();
    const int scrolled = table->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    QSignalSpy resets(table->model(), &QAbstractItemModel::modelReset);
    desktop->getOrderManager().create();

    desktop->getOrderManager().addItemToCurrentOrder(*shown.getSelectedItem(), 2);

    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(table->currentIndex().row(), 60);
    EXPECT_EQ(table->verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(table->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(table->model()->index(60, table->model()->columnCount() - 1).data().toString(), QString("5"));
}

TEST_F(MainOnScreen, deletingTheLastRecordCanBeUndone)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier);
    list("Items")->selectAll();
    alerts.answer("OK");
    QTest::keyClick(list("Items"), Qt::Key_Delete);
    ASSERT_EQ(desktop->getItemManager().getCount(), 0);
    settle();
    QTest::keyClick(keyboard(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(desktop->getItemManager().getCount(), 1);
}

TEST_F(MainOnScreen, theToolBarWorksOnTheListThatHadTheKeyboard)
{
    haveRecords();
    launch();
    QTest::keyClick(list("Orders"), Qt::Key_Down);
    auto* bar = window->findChild<ToolBar*>();
    QWidget* remove = bar->widgetForAction(command("delete"));
    ASSERT_NE(remove, nullptr);
    remove->setFocus();
    alerts.answer("OK");
    QTest::keyClick(remove, Qt::Key_Space);
    EXPECT_EQ(desktop->getOrderManager().getCount(), 1);
}

TEST_F(MainOnScreen, theToolBarIsCustomisedFromTheViewMenu)
{
    launch();
    command("customiseToolBar")->trigger();
    EXPECT_NE(qobject_cast<ToolBarSheet*>(SheetStack::instance().top()), nullptr);
}

TEST_F(MainOnScreen, copyTakesTextFromFieldsAndRowsFromLists)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier);
    QTest::keyClick(list("Items"), Qt::Key_Down);
    command("copyText")->trigger();
    const QStringList cells = QApplication::clipboard()->text().split('\t');
    EXPECT_EQ(cells.size(), list("Items")->model()->columnCount());
    EXPECT_TRUE(cells.contains("Oak stool"));
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(keyboard(), "oak");
    command("selectAll")->trigger();
    command("copyText")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QString("oak"));
    command("cut")->trigger();
    auto* search = qobject_cast<QLineEdit*>(keyboard());
    ASSERT_NE(search, nullptr);
    EXPECT_EQ(search->text(), QString());
    command("paste")->trigger();
    EXPECT_EQ(search->text(), QString("oak"));
    command("undo")->trigger();
    EXPECT_EQ(search->text(), QString());
    command("redo")->trigger();
    EXPECT_EQ(search->text(), QString("oak"));
}

TEST_F(MainOnScreen, selectAllSelectsEveryRowAndCopyTakesThemInOrder)
{
    haveRecords();
    launch();
    command("selectAll")->trigger();
    EXPECT_EQ(desktop->getOrderManager().selectedRecords().size(), 2u);
    command("copyText")->trigger();
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 2);
    const QAbstractItemModel& model = *list("Orders")->model();
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(lines[row].section('\t', 0, 0), model.index(row, 0).data().toString());
}

TEST_F(MainOnScreen, listsOfferTheirCommandsByTheRightButton)
{
    haveRecords();
    launch();
    for (const char* name : {"Contacts", "Orders", "Items"}) {
        EXPECT_EQ(list(name)->contextMenuPolicy(), Qt::ActionsContextMenu) << name;
        EXPECT_EQ(list(name)->actions(), QList<QAction*>({command("edit"), command("delete")})) << name;
    }
}

TEST_F(MainOnScreen, deletingWhileTypingASearchTouchesNoRecord)
{
    haveRecords();
    launch();
    QTest::keyClick(list("Orders"), Qt::Key_Down);
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(keyboard(), Qt::Key_Delete);
    command("delete")->trigger();
    EXPECT_EQ(desktop->getOrderManager().getCount(), 2);
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(MainOnScreen, undoInTheSearchFieldUndoesTheTyping)
{
    haveRecords();
    launch();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    auto* search = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(search, nullptr);
    QTest::keyClicks(search, "bench");
    command("undo")->trigger();
    EXPECT_EQ(search->text(), QString());
}

TEST_F(MainOnScreen, usesThePersonsWords)
{
    writeSettings("<key>VendaroTermOrders</key><string>Jobs</string><key>VendaroTermOrder</key><string>Job</string>"
                  "<key>VendaroTermItems</key><string>Parts</string><key>VendaroTermItem</key><string>Part</string>");
    launch();
    EXPECT_EQ(command("newOrder")->iconText(), QString("New Job"));
    EXPECT_EQ(command("newItem")->iconText(), QString("New Part"));
    auto* bar = window->findChild<SideBar*>();
    EXPECT_EQ(bar->item(1)->text(), QString("Jobs"));
    EXPECT_EQ(bar->item(2)->text(), QString("Parts"));
    EXPECT_EQ(status(), QString("No jobs"));
}

TEST_F(MainOnScreen, aWordInCapitalsKeepsThemInTheStatusLine)
{
    writeSettings("<key>VendaroTermOrders</key><string>R&amp;D jobs</string><key>VendaroTermItems</key><string>DVDs</string>");
    launch();
    EXPECT_EQ(status(), QString("No R&D jobs"));
    window->showPage(Page::items);
    EXPECT_EQ(status(), QString("No DVDs"));
}

TEST_F(MainOnScreen, theRecoveryWindowGoesWithTheMainOne)
{
    haveRecords();
    launch();
    command("recovery")->trigger();
    QPointer<RecoveryWindow> recovery;
    for (QWidget* top : QApplication::topLevelWidgets())
        recovery = recovery ? recovery : QPointer<RecoveryWindow>(qobject_cast<RecoveryWindow*>(top));
    ASSERT_FALSE(recovery.isNull());
    recovery->showTab(RecoveryWindow::Tab::earlier);

    window.reset();

    EXPECT_TRUE(recovery.isNull());
}

TEST_F(MainOnScreen, closingTheWindowWantsToQuitAndLeavesTheDecision)
{
    launch();
    QSignalSpy wanted(window.get(), &MainWindow::quitWanted);
    window->close();
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_TRUE(window->isVisible());
    command("quit")->trigger();
    EXPECT_EQ(wanted.count(), 2);
}

TEST_F(MainOnScreen, remembersItsSizeHoweverTheProgramEnds)
{
    launch();
    window->resize(1000, 610);
    command("quit")->trigger();
    window.reset();
    window = std::make_unique<MainWindow>(*desktop);
    EXPECT_EQ(window->height(), 610);
}

TEST_F(MainOnScreen, companiesOpenToShowTheirPeople)
{
    begin();
    Contact& company = contact("Penrose Ltd");
    company.makeCompany();
    Contact& person = contact("Ada Penrose");
    person.setKind("Company Contact");
    person.setCompany(company.getID());
    quit();
    launch();
    QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
    auto* tree = qobject_cast<RecordTree*>(list("Contacts"));
    ASSERT_NE(tree, nullptr);
    ASSERT_EQ(tree->model()->rowCount(), 1);
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Right);
    EXPECT_TRUE(tree->isExpanded(tree->model()->index(0, 0)));
    QTest::keyClick(tree, Qt::Key_Down);
    ASSERT_NE(desktop->getContactManager().getSelectedItem(), nullptr);
    EXPECT_EQ(desktop->getContactManager().getSelectedItem()->getName(), "Ada Penrose");
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_TRUE(desktop->getContactManager().companyContactEditor.form.isOpen());
}

TEST_F(MainOnScreen, commandsWithoutASelectionSayWhatIsMissing)
{
    haveRecords();
    launch();
    list("Orders")->clearSelection();
    for (const char* name : {"edit", "delete"}) {
        EXPECT_TRUE(command(name)->isEnabled());
        command(name)->trigger();
        EXPECT_EQ(status(), QString("Nothing is selected. Choose a row of the list first.")) << name;
    }
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_FALSE(desktop->getOrderManager().form.isOpen());
    QTest::keyClick(list("Orders"), Qt::Key_Down);
    EXPECT_EQ(status(), QString("2 orders, 1 selected"));
    command("edit")->trigger();
    EXPECT_TRUE(desktop->getOrderManager().form.isOpen());
}

TEST_F(MainOnScreen, commandsDoNothingWhileAnotherWindowHasTheKeyboard)
{
    haveRecords();
    launch();
    QTest::keyClick(list("Orders"), Qt::Key_Down);
    ASSERT_EQ(desktop->getOrderManager().selectedRecords().size(), 1u);
    QWidget settings;
    settings.show();
    settings.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&settings));
    for (const char* name : {"delete", "edit", "undo"})
        command(name)->trigger();

    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(desktop->getOrderManager().getCount(), 2);
    EXPECT_FALSE(desktop->getOrderManager().form.isOpen());
}

TEST_F(MainOnScreen, theOrdersComeToTheFrontFromAnotherPageAndWindow)
{
    haveRecords();
    launch();
    window->showPage(Page::items);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Q_EMIT desktop->pageWanted(Page::orders);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_TRUE(list("Orders")->isVisible());
    EXPECT_EQ(desktop->determineFrontDataSource(), &desktop->getOrderManager());
}

TEST_F(MainOnScreen, afterTheFirstOrderTheKeyboardIsOnTheListAndAfterTheLastOneOnTheWayOut)
{
    chooseDates();
    launch();
    command("newOrder")->trigger();
    OrderManager& orders = desktop->getOrderManager();
    orders.form.orderTitle.edit("Three stools");
    orders.form.save.trigger();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    settle();
    EXPECT_EQ(keyboard(), list("Orders"));
    orders.setSelectedRows({0});
    alerts.answer("OK");
    command("delete")->trigger();
    settle();
    EXPECT_EQ(orders.getCount(), 0);
    auto* button = qobject_cast<QAbstractButton*>(keyboard());
    ASSERT_NE(button, nullptr) << keyboard()->metaObject()->className();
    EXPECT_TRUE(button->isVisible());
    command("undo")->trigger();
    settle();
    EXPECT_EQ(orders.getCount(), 1);
    EXPECT_EQ(keyboard(), list("Orders"));
}
