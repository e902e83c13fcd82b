// What stands in the place of an empty list, and the ways out of it.
#include "ui/EmptyList.h"

#include "UiTest.h"
#include "storage/ListForm.h"

#include <QAction>
#include <QLabel>

using namespace uitest;

namespace {

class Emptiness : public testing::Test {
protected:
    void SetUp() override
    {
        form.filter.setTitles({"All", "Furniture"});
        form.filter.setIndex(0);
        empty.resize(600, 400);
        show(empty);
        empty.setMaking(&making);
    }
    QStringList words() const
    {
        QStringList words;
        for (const QLabel* label : empty.findChildren<QLabel*>())
            words += label->text();
        return words;
    }
    Button& make() const { return *child<Button>(empty, "make"); }
    Button& showAll() const { return *child<Button>(empty, "showAll"); }

    ListForm form;
    QAction making {"New Item"};
    EmptyList empty {"tag", "No items yet", "Make your first one.", form};
};

} // namespace

TEST_F(Emptiness, withoutRecordsItOffersToMakeOne)
{
    empty.tell(0, 0);
    EXPECT_TRUE(empty.isVisible());
    EXPECT_EQ(words(), QStringList({"No items yet", "Make your first one."}));
    EXPECT_TRUE(make().isVisible());
    EXPECT_FALSE(showAll().isVisible());
    int made = 0;
    QObject::connect(&making, &QAction::triggered, &making, [&] { ++made; });
    empty.takeKeyboard();
    EXPECT_EQ(keyboard(), &make());
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(made, 1);
}

TEST_F(Emptiness, theButtonFollowsTheWordsOfItsCommand)
{
    EXPECT_EQ(make().text(), QString("New Item"));
    making.setText("New Product");
    EXPECT_EQ(make().text(), QString("New Product"));
}

TEST_F(Emptiness, whatWasNotFoundIsNotCalledMissing)
{
    empty.tell(0, 3);
    EXPECT_EQ(words().first(), QString("Nothing found"));
    EXPECT_FALSE(make().isVisible());
    EXPECT_TRUE(showAll().isVisible());
}

TEST_F(Emptiness, showingEverythingTakesSearchAndFilterAway)
{
    form.search.setText("zebra");
    form.filter.setIndex(1);
    int filtered = 0;
    form.search.onEdited = [&] { ++filtered; };
    form.filter.onEdited = [&] { ++filtered; };
    int shown = 0;
    QObject::connect(&empty, &EmptyList::everythingShown, &empty, [&] { ++shown; });
    empty.tell(0, 3);
    press(showAll());
    EXPECT_EQ(form.search.text(), QString());
    EXPECT_EQ(form.filter.index(), 0);
    EXPECT_EQ(filtered, 2);
    EXPECT_EQ(shown, 1);
}

TEST_F(Emptiness, isNotSeenWhileThereAreRows)
{
    empty.tell(2, 3);
    EXPECT_FALSE(empty.isVisible());
    empty.tell(0, 3);
    EXPECT_TRUE(empty.isVisible());
}
