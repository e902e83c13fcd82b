// Arranging a tool bar: what can be added, removed and moved, and that only Done changes the bar.
#include "ui/shell/ToolBarSheet.h"

#include "UiTest.h"
#include "ui/WindowMemory.h"
#include "ui/shell/MainToolBar.h"
#include "ui/shell/ToolBarList.h"

#include <QAction>
#include <QComboBox>
#include <QMainWindow>
#include <QMimeData>
#include <QToolButton>

using namespace uitest;

namespace {

class ArrangedBar : public testing::Test {
protected:
    void SetUp() override
    {
        WindowMemory::rememberState("toolbar", {});
        WindowMemory::rememberState("toolbar parts", {});
        open();
    }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        window.reset();
        WindowMemory::rememberState("toolbar", {});
        WindowMemory::rememberState("toolbar parts", {});
    }

    /// The window as a new run of the program makes it.
    void open()
    {
        window = std::make_unique<QMainWindow>();
        window->resize(1200, 800);
        QHash<QString, QAction*> commands;
        const std::pair<const char*, const char*> known[] {{"deleteItemIdentifier", "Delete"}, {"editItemIdentifier", "Edit"},
            {"companyItemIdentifier", "New Company"}, {"contactItemIdentifier", "New Contact"}, {"orderItemIdentifier", "New Order"},
            {"itemItemIdentifier", "New Item"}, {"prefsItemIdentifier", "Preferences"}};
        for (const auto& [identifier, title] : known)
            commands.insert(identifier, new QAction(title, window.get()));
        commands["orderItemIdentifier"]->setShortcut(QKeySequence("Ctrl+N"));
        bar = new MainToolBar("Tool bar", commands, window.get());
        window->addToolBar(bar);
        show(*window);
    }
    QStringList buttons() const
    {
        QStringList texts;
        for (const QAction* action : bar->actions())
            texts += action->text().isEmpty() ? "-" : action->text();
        return texts;
    }
    ToolBarSheet& sheet()
    {
        bar->customise();
        auto* opened = qobject_cast<ToolBarSheet*>(SheetStack::instance().top());
        EXPECT_NE(opened, nullptr);
        return *opened;
    }
    static QStringList titles(const ToolBarSheet& sheet, const char* list)
    {
        const auto* entries = child<ToolBarList>(sheet, list);
        QStringList titles;
        for (int row = 0; row < entries->count(); ++row)
            titles += entries->item(row)->text();
        return titles;
    }
    static void choose(const ToolBarSheet& sheet, const char* list, int row) { child<ToolBarList>(sheet, list)->setCurrentRow(row); }
    static ToolBarList& list(const ToolBarSheet& sheet, const char* name) { return *child<ToolBarList>(sheet, name); }
    /// What a drag of the row carries.
    static std::unique_ptr<QMimeData> carried(ToolBarList& from, int row)
    {
        return std::unique_ptr<QMimeData>(from.model()->mimeData({from.model()->index(row, 0)}));
    }
    /// The middle of a row's upper or lower half; below all rows for their number.
    static QPoint place(const ToolBarList& list, int row, int quarters)
    {
        if (row == list.count())
            return {20, list.visualItemRect(list.item(row - 1)).bottom() + 12};
        const QRect rect = list.visualItemRect(list.item(row));
        return {20, rect.top() + rect.height() * quarters / 4};
    }
    /// Drags over that place and lets go; answers whether it was taken.
    static bool drop(ToolBarList& onto, const QMimeData& data, const QPoint& at)
    {
        QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto.viewport(), &enter);
        QDragMoveEvent over(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto.viewport(), &over);
        QDropEvent letGo(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto.viewport(), &letGo);
        EXPECT_EQ(enter.isAccepted(), over.isAccepted());
        EXPECT_EQ(over.isAccepted(), letGo.isAccepted());
        return letGo.isAccepted();
    }
    static QAbstractButton& button(const ToolBarSheet& sheet, const char* name) { return *child<QAbstractButton>(sheet, name); }

    std::unique_ptr<QMainWindow> window;
    MainToolBar* bar = nullptr;
};

} // namespace

TEST_F(ArrangedBar, comesWithDeletingAndMaking)
{
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item", "-", "Preferences"}));
}

TEST_F(ArrangedBar, tellsTheKeysOfACommandInItsTooltip)
{
    for (const QAction* action : bar->actions()) {
        const QWidget* button = bar->widgetForAction(const_cast<QAction*>(action));
        if (action->text() == "New Order") {
            EXPECT_EQ(button->toolTip(), QString("New Order (Ctrl+N)"));
        }
        if (action->text() == "New Item") {
            EXPECT_EQ(button->toolTip(), QString("New Item"));
        }
    }
}

TEST_F(ArrangedBar, theSheetOffersEverythingAndShowsWhatIsThere)
{
    const ToolBarSheet& open = sheet();
    EXPECT_EQ(titles(open, "available"),
        QStringList({"Delete", "Edit", "New Company", "New Contact", "New Order", "New Item", "Space", "Flexible Space", "Preferences"}));
    EXPECT_EQ(
        titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
}

TEST_F(ArrangedBar, aCommandIsAddedBehindTheChosenEntryAndOnlyOnce)
{
    const ToolBarSheet& open = sheet();
    choose(open, "available", 1);
    choose(open, "shown", 0);
    press(button(open, "add"));
    EXPECT_EQ(titles(open, "shown"),
        QStringList({"Delete", "Edit", "Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
    EXPECT_FALSE(button(open, "add").isEnabled());
    choose(open, "available", 6);
    EXPECT_TRUE(button(open, "add").isEnabled());
    press(button(open, "add"));
    press(button(open, "add"));
    EXPECT_EQ(titles(open, "shown"),
        QStringList(
            {"Delete", "Edit", "Space", "Space", "Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
}

TEST_F(ArrangedBar, entriesMoveAndGoAndTheButtonsSayWhenTheyCannot)
{
    const ToolBarSheet& open = sheet();
    EXPECT_FALSE(button(open, "remove").isEnabled());
    choose(open, "shown", 0);
    EXPECT_FALSE(button(open, "up").isEnabled());
    press(button(open, "down"));
    EXPECT_EQ(
        titles(open, "shown"), QStringList({"Space", "Delete", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
    press(button(open, "up"));
    EXPECT_EQ(
        titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
    choose(open, "shown", 6);
    EXPECT_FALSE(button(open, "down").isEnabled());
    press(button(open, "remove"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order", "New Item", "Flexible Space"}));
}

TEST_F(ArrangedBar, cancelLeavesTheBarAsItWas)
{
    const ToolBarSheet& open = sheet();
    choose(open, "shown", 0);
    press(button(open, "remove"));
    press(button(open, "cancel"));
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item", "-", "Preferences"}));
    EXPECT_EQ(WindowMemory::state("toolbar"), QByteArray());
}

TEST_F(ArrangedBar, doneChangesTheBarAndTheNextRunHasItStill)
{
    const ToolBarSheet& first = sheet();
    choose(first, "available", 2);
    choose(first, "shown", 4);
    press(button(first, "add"));
    choose(first, "shown", 0);
    press(button(first, "remove"));
    child<QComboBox>(first, "parts")->setCurrentIndex(1);
    press(button(first, "done"));
    settle();
    const QStringList arranged {"-", "New Contact", "New Order", "New Item", "New Company", "-", "Preferences"};
    EXPECT_EQ(buttons(), arranged);
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    open();
    EXPECT_EQ(buttons(), arranged);
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    const ToolBarSheet& second = sheet();
    press(button(second, "restore"));
    EXPECT_EQ(child<QComboBox>(second, "parts")->currentIndex(), 0);
    press(button(second, "done"));
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item", "-", "Preferences"}));
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

TEST_F(ArrangedBar, anEmptyBarStaysEmptyOfCommands)
{
    const ToolBarSheet& first = sheet();
    for (int times = 0; times < 7; ++times) {
        choose(first, "shown", 0);
        press(button(first, "remove"));
    }
    press(button(first, "done"));
    EXPECT_EQ(buttons(), QStringList());
    open();
    EXPECT_EQ(buttons(), QStringList({"-"}));
}

TEST_F(ArrangedBar, aRememberedCommandThatIsNoLongerKnownIsLeftOut)
{
    WindowMemory::rememberState("toolbar", "deleteItemIdentifier,teleportItemIdentifier,orderItemIdentifier");
    open();
    EXPECT_EQ(buttons(), QStringList({"Delete", "New Order"}));
}

TEST_F(ArrangedBar, returnTakesTheArrangementAndEscapeDropsIt)
{
    const ToolBarSheet& first = sheet();
    choose(first, "shown", 0);
    press(button(first, "remove"));
    QTest::keyClick(child<QWidget>(first, "shown"), Qt::Key_Escape);
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_EQ(buttons().first(), QString("Delete"));
    const ToolBarSheet& second = sheet();
    choose(second, "shown", 0);
    press(button(second, "remove"));
    child<QWidget>(second, "shown")->setFocus();
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_EQ(buttons().first(), QString("-"));
}

// Dragging

TEST_F(ArrangedBar, anEntryIsDraggedIntoTheBarToWhereItIsDropped)
{
    const ToolBarSheet& open = sheet();
    ToolBarList& available = list(open, "available");
    ToolBarList& shown = list(open, "shown");
    EXPECT_TRUE(drop(shown, *carried(available, 1), place(shown, 1, 1)));
    EXPECT_EQ(titles(open, "shown"),
        QStringList({"Delete", "Edit", "Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
    EXPECT_EQ(shown.currentRow(), 1);
    EXPECT_TRUE(drop(shown, *carried(available, 2), place(shown, 1, 3)));
    EXPECT_EQ(titles(open, "shown").mid(0, 4), QStringList({"Delete", "Edit", "New Company", "Space"}));
    EXPECT_TRUE(drop(shown, *carried(available, 6), place(shown, shown.count(), 0)));
    EXPECT_EQ(titles(open, "shown").last(), QString("Space"));
    EXPECT_EQ(titles(open, "available").size(), 9);
    press(button(open, "done"));
    EXPECT_EQ(
        buttons(), QStringList({"Delete", "Edit", "New Company", "-", "New Contact", "New Order", "New Item", "-", "Preferences", "-"}));
}

TEST_F(ArrangedBar, aCommandThatIsThereIsNotTakenOnceMore)
{
    const ToolBarSheet& open = sheet();
    const QStringList before = titles(open, "shown");
    EXPECT_FALSE(drop(list(open, "shown"), *carried(list(open, "available"), 0), place(list(open, "shown"), 3, 1)));
    EXPECT_EQ(titles(open, "shown"), before);
}

TEST_F(ArrangedBar, anEntryIsDraggedToAnotherPlace)
{
    const ToolBarSheet& open = sheet();
    ToolBarList& shown = list(open, "shown");
    EXPECT_TRUE(drop(shown, *carried(shown, 0), place(shown, 3, 3)));
    EXPECT_EQ(
        titles(open, "shown"), QStringList({"Space", "New Contact", "New Order", "Delete", "New Item", "Flexible Space", "Preferences"}));
    EXPECT_EQ(shown.currentRow(), 3);
    EXPECT_TRUE(drop(shown, *carried(shown, 6), place(shown, 0, 1)));
    EXPECT_EQ(
        titles(open, "shown"), QStringList({"Preferences", "Space", "New Contact", "New Order", "Delete", "New Item", "Flexible Space"}));
    EXPECT_TRUE(drop(shown, *carried(shown, 0), place(shown, shown.count(), 0)));
    EXPECT_EQ(titles(open, "shown").last(), QString("Preferences"));
}

TEST_F(ArrangedBar, droppedWhereItStandsItStays)
{
    const ToolBarSheet& open = sheet();
    ToolBarList& shown = list(open, "shown");
    const QStringList before = titles(open, "shown");
    EXPECT_TRUE(drop(shown, *carried(shown, 2), place(shown, 2, 1)));
    EXPECT_TRUE(drop(shown, *carried(shown, 2), place(shown, 2, 3)));
    EXPECT_TRUE(drop(shown, *carried(shown, 2), place(shown, 3, 1)));
    EXPECT_EQ(titles(open, "shown"), before);
}

TEST_F(ArrangedBar, anEntryIsDraggedOutOfTheBar)
{
    const ToolBarSheet& open = sheet();
    EXPECT_TRUE(drop(list(open, "available"), *carried(list(open, "shown"), 0), {20, 20}));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Space", "New Contact", "New Order", "New Item", "Flexible Space", "Preferences"}));
    EXPECT_EQ(titles(open, "available").size(), 9);
    EXPECT_FALSE(drop(list(open, "available"), *carried(list(open, "available"), 0), {20, 20}));
}

TEST_F(ArrangedBar, whatComesFromElsewhereIsNotTaken)
{
    const ToolBarSheet& open = sheet();
    const QStringList before = titles(open, "shown");
    QMimeData text;
    text.setText("deleteItemIdentifier");
    QMimeData broken;
    broken.setData(carried(list(open, "shown"), 0)->formats().first(), "xx");
    for (const QMimeData* data : {&text, &broken}) {
        EXPECT_FALSE(drop(list(open, "shown"), *data, place(list(open, "shown"), 0, 1)));
        EXPECT_FALSE(drop(list(open, "available"), *data, {20, 20}));
    }
    EXPECT_EQ(titles(open, "shown"), before);
}

// The same by keys

TEST_F(ArrangedBar, keysAddRemoveAndMove)
{
    const ToolBarSheet& open = sheet();
    ToolBarList& available = list(open, "available");
    ToolBarList& shown = list(open, "shown");
    choose(open, "available", 1);
    QTest::keyClick(&available, Qt::Key_Insert);
    EXPECT_EQ(titles(open, "shown").last(), QString("Edit"));
    QTest::keyClick(&available, Qt::Key_Insert);
    EXPECT_EQ(titles(open, "shown").size(), 8);
    choose(open, "available", 6);
    QTest::keyClick(&available, Qt::Key_Space);
    EXPECT_EQ(titles(open, "shown").last(), QString("Space"));
    QTest::keyClick(&shown, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(titles(open, "shown").mid(7), QStringList({"Space", "Edit"}));
    EXPECT_EQ(shown.currentRow(), 7);
    QTest::keyClick(&shown, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&shown, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(titles(open, "shown").mid(7), QStringList({"Edit", "Space"}));
    QTest::keyClick(&shown, Qt::Key_Delete);
    EXPECT_EQ(titles(open, "shown").last(), QString("Edit"));
    QTest::keyClick(&shown, Qt::Key_Backspace);
    EXPECT_EQ(titles(open, "shown").last(), QString("Preferences"));
    choose(open, "shown", -1);
    QTest::keyClick(&shown, Qt::Key_Delete);
    QTest::keyClick(&shown, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(titles(open, "shown").size(), 7);
}

TEST_F(ArrangedBar, theButtonsTellTheKeys)
{
    const ToolBarSheet& open = sheet();
    EXPECT_EQ(button(open, "add").toolTip(), QString("Add (Ins)"));
    EXPECT_EQ(button(open, "remove").toolTip(), QString("Remove (Del)"));
    EXPECT_EQ(button(open, "up").toolTip(), QString("Move Up (Alt+Up)"));
    EXPECT_EQ(button(open, "down").toolTip(), QString("Move Down (Alt+Down)"));
}

// Everything that can be in the bar

TEST_F(ArrangedBar, withAllCommandsItComesInItsOrderAndOffersTheGoalTwice)
{
    window = std::make_unique<QMainWindow>();
    QHash<QString, QAction*> commands;
    for (const char* name : {"contact", "company", "print", "order", "item", "delete", "edit", "goal", "todo", "html", "csv", "prefs",
             "bill", "pad", "checkout", "help", "logTime"})
        commands.insert(QString(name) + "ItemIdentifier", new QAction(name, window.get()));
    bar = new MainToolBar("Tool bar", commands, window.get());
    window->resize(1200, 800);
    window->addToolBar(bar);
    show(*window);
    EXPECT_EQ(buttons(),
        QStringList({"print", "delete", "-", "contact", "order", "item", "bill", "goal", "todo", "-", "logTime", "-", "checkout", "-",
            "prefs", "help"}));
    EXPECT_EQ(titles(sheet(), "available"),
        QStringList({"print", "delete", "edit", "company", "contact", "order", "bill", "goal", "todo", "item", "goal", "pad", "logTime",
            "html", "csv", "checkout", "Space", "Flexible Space", "prefs", "help"}));
}

TEST_F(ArrangedBar, aCommandRememberedTwiceStandsThereOnce)
{
    WindowMemory::rememberState("toolbar", "deleteItemIdentifier,space,orderItemIdentifier,deleteItemIdentifier,space");
    open();
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Order", "-"}));
}
