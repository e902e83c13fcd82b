// Arranging a tool bar: what can be added, removed and moved, and that only Done changes the bar.
#include "ui/shell/ToolBarSheet.h"

#include "UiTest.h"
#include "ui/WindowMemory.h"
#include "ui/kit/PickList.h"
#include "ui/shell/MainToolBar.h"

#include <QAction>
#include <QComboBox>
#include <QMainWindow>
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
            {"itemItemIdentifier", "New Item"}};
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
        const auto* entries = child<PickList>(sheet, list);
        QStringList titles;
        for (int row = 0; row < entries->count(); ++row)
            titles += entries->item(row)->text();
        return titles;
    }
    static void choose(const ToolBarSheet& sheet, const char* list, int row) { child<PickList>(sheet, list)->setCurrentRow(row); }
    static QAbstractButton& button(const ToolBarSheet& sheet, const char* name) { return *child<QAbstractButton>(sheet, name); }

    std::unique_ptr<QMainWindow> window;
    MainToolBar* bar = nullptr;
};

} // namespace

TEST_F(ArrangedBar, comesWithDeletingAndMaking)
{
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item"}));
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
        QStringList({"Delete", "Edit", "New Company", "New Contact", "New Order", "New Item", "Space", "Flexible Space"}));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order", "New Item"}));
}

TEST_F(ArrangedBar, aCommandIsAddedBehindTheChosenEntryAndOnlyOnce)
{
    const ToolBarSheet& open = sheet();
    choose(open, "available", 1);
    choose(open, "shown", 0);
    press(button(open, "add"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Edit", "Space", "New Contact", "New Order", "New Item"}));
    EXPECT_FALSE(button(open, "add").isEnabled());
    choose(open, "available", 6);
    EXPECT_TRUE(button(open, "add").isEnabled());
    press(button(open, "add"));
    press(button(open, "add"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Edit", "Space", "Space", "Space", "New Contact", "New Order", "New Item"}));
}

TEST_F(ArrangedBar, entriesMoveAndGoAndTheButtonsSayWhenTheyCannot)
{
    const ToolBarSheet& open = sheet();
    EXPECT_FALSE(button(open, "remove").isEnabled());
    choose(open, "shown", 0);
    EXPECT_FALSE(button(open, "up").isEnabled());
    press(button(open, "down"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Space", "Delete", "New Contact", "New Order", "New Item"}));
    press(button(open, "up"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order", "New Item"}));
    choose(open, "shown", 4);
    EXPECT_FALSE(button(open, "down").isEnabled());
    press(button(open, "remove"));
    EXPECT_EQ(titles(open, "shown"), QStringList({"Delete", "Space", "New Contact", "New Order"}));
}

TEST_F(ArrangedBar, cancelLeavesTheBarAsItWas)
{
    const ToolBarSheet& open = sheet();
    choose(open, "shown", 0);
    press(button(open, "remove"));
    press(button(open, "cancel"));
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item"}));
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
    const QStringList arranged {"-", "New Contact", "New Order", "New Item", "New Company"};
    EXPECT_EQ(buttons(), arranged);
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    open();
    EXPECT_EQ(buttons(), arranged);
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    const ToolBarSheet& second = sheet();
    press(button(second, "restore"));
    EXPECT_EQ(child<QComboBox>(second, "parts")->currentIndex(), 0);
    press(button(second, "done"));
    EXPECT_EQ(buttons(), QStringList({"Delete", "-", "New Contact", "New Order", "New Item"}));
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

TEST_F(ArrangedBar, anEmptyBarStaysEmptyOfCommands)
{
    const ToolBarSheet& first = sheet();
    for (int times = 0; times < 5; ++times) {
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
