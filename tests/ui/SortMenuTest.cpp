// Sorting without the mouse: the menu that names the columns of the list that is shown.
#include "ui/shell/SortMenu.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/TableHeader.h"
#include "ui/shell/MainWindow.h"

#include <QHeaderView>
#include <QMenuBar>
#include <QTreeView>

using namespace uitest;

namespace {

class Sorting : public Business {
protected:
    /// Two orders, three contacts of which one is a company with a person, and an item, in the main window.
    void SetUp() override
    {
        Business::SetUp();
        writeSettings("<key>VendaroDateFormat</key><string>0</string>");
        begin();
        order("Cupboard");
        order("Bench");
        contact("Cleo Rivers");
        personOf(firm("Ashworth Ltd"), "Bert Hill");
        item("Oak stool");
        item("Ash stool");
        quit();
        desktop =
            std::make_unique<Vendaro>(VendaroDesktop {alerts, beeper, clock, user, panels, opener, printing, clipboard, resources, locale});
        desktop->start();
        window = std::make_unique<MainWindow>(*desktop);
        uitest::show(*window);
        desktop->finishLaunching();
        settle();
    }
    void TearDown() override
    {
        desktop->quit();
        window.reset();
        desktop.reset();
        Business::TearDown();
    }

    /// The menu as a person finds it: View opened first.
    SortMenu& menu() const
    {
        auto* found = window->findChild<SortMenu*>("sortBy");
        Q_EMIT static_cast<QMenu*>(found->parentWidget())->aboutToShow();
        return *found;
    }
    QStringList words() const
    {
        QStringList texts;
        for (const QAction* action : menu().actions())
            texts += action->isSeparator() ? QString("-") : action->text();
        return texts;
    }
    /// What is marked and can be chosen.
    QStringList marked() const
    {
        QStringList texts;
        for (const QAction* action : menu().actions()) {
            if (action->isChecked() && action->isEnabled())
                texts += action->text();
        }
        return texts;
    }
    void choose(const QString& text) const
    {
        for (QAction* action : menu().actions()) {
            if (action->text() == text)
                return action->trigger();
        }
        ADD_FAILURE() << "no entry " << text.toStdString();
    }
    static QStringList shown(const qvDataSource& list, const char* column)
    {
        QStringList texts;
        for (int row = 0; row < list.numberOfRows(); ++row)
            texts += QString::fromStdString(list.objectValue(column, row));
        return texts;
    }

    std::unique_ptr<Vendaro> desktop;
    std::unique_ptr<MainWindow> window;
};

} // namespace

TEST_F(Sorting, namesTheColumnsOfThePageShownAndBothDirections)
{
    window->showPage(Page::orders);
    EXPECT_EQ(words(), QStringList({"Date", "Number", "Title", "Contact", "Status", "-", "Ascending", "Descending"}));
    window->showPage(Page::items);
    EXPECT_EQ(words().mid(0, 2), QStringList({"Code", "Item"}));
    window->showPage(Page::contacts);
    EXPECT_EQ(words().mid(0, 2), QStringList({"Name", "Type"}));
}

TEST_F(Sorting, choosingAColumnSortsByItAndChoosingItAgainTurnsTheDirection)
{
    window->showPage(Page::orders);
    choose("Title");
    EXPECT_EQ(shown(desktop->getOrderManager(), "title"), QStringList({"Bench", "Cupboard"}));
    EXPECT_EQ(marked(), QStringList({"Title", "Ascending"}));
    choose("Title");
    EXPECT_EQ(shown(desktop->getOrderManager(), "title"), QStringList({"Cupboard", "Bench"}));
    EXPECT_EQ(marked(), QStringList({"Title", "Descending"}));
}

TEST_F(Sorting, theDirectionIsChosenByItselfToo)
{
    window->showPage(Page::items);
    choose("Item");
    choose("Descending");
    EXPECT_EQ(shown(desktop->getItemManager(), "item"), QStringList({"Oak stool", "Ash stool"}));
    choose("Descending");
    EXPECT_EQ(shown(desktop->getItemManager(), "item"), QStringList({"Oak stool", "Ash stool"})) << "it is the direction already";
    choose("Ascending");
    EXPECT_EQ(shown(desktop->getItemManager(), "item"), QStringList({"Ash stool", "Oak stool"}));
}

TEST_F(Sorting, withoutASortThereIsNoDirectionToChoose)
{
    window->showPage(Page::items);
    EXPECT_EQ(marked(), QStringList());
    const QList<QAction*> entries = menu().actions();
    for (const QAction* action : entries.last(2))
        EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
}

TEST_F(Sorting, theListOfTwoLevelsIsSortedAsWellAndItsHeadingShowsIt)
{
    window->showPage(Page::contacts);
    choose("Name");
    auto* tree = window->findChild<QTreeView*>();
    ASSERT_NE(tree, nullptr);
    const auto top = [tree] { return tree->model()->index(0, 0).data().toString(); };
    EXPECT_EQ(top(), QString("Ashworth Ltd"));
    EXPECT_EQ(tree->header()->sortIndicatorSection(), 0);
    choose("Name");
    EXPECT_EQ(top(), QString("Cleo Rivers"));
    EXPECT_EQ(tree->header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(tree->model()->rowCount(), 2);
}

TEST_F(Sorting, isReachedByTheKeyboardAlone)
{
    window->showPage(Page::orders);
    QTest::keyClick(window.get(), Qt::Key_V, Qt::AltModifier);
    auto* view = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(view, nullptr);
    QTest::keyClicks(view, "b");
    auto* sort = qobject_cast<SortMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(sort, nullptr);
    QTest::keyClick(sort, Qt::Key_Down);
    QTest::keyClick(sort, Qt::Key_Down);
    QTest::keyClick(sort, Qt::Key_Return);
    EXPECT_EQ(shown(desktop->getOrderManager(), "title"), QStringList({"Bench", "Cupboard"}));
}
