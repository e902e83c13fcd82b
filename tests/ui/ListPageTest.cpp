// A page of the main window: its search, and what it says when it shows nothing.
#include "ui/shell/ListPage.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/RecordTable.h"

#include <QLabel>

using namespace uitest;

namespace {

class PageOnScreen : public Business {
protected:
    void open()
    {
        m_page = std::make_unique<ListPage>(
            items(), items().listForm, ListPageTexts {"page", "Items", "Search items", "view-list", "No items yet", "Make your first."});
        m_page->resize(900, 500);
        show(*m_page);
    }
    void TearDown() override { m_page.reset(); }

    QLineEdit& searchField() { return *child<QLineEdit>(*m_page, "search"); }
    /// The words in the middle of the page; none while the list is seen.
    QStringList emptyWords() const
    {
        const auto* empty = m_page->findChild<EmptyState*>();
        QStringList words;
        if (!empty->isVisible())
            return words;
        for (const QLabel* label : empty->findChildren<QLabel*>())
            words += label->text();
        return words;
    }

    std::unique_ptr<ListPage> m_page;
};

} // namespace

TEST_F(PageOnScreen, anEmptyListSaysWhatIsMissingAndWhatToDo)
{
    begin();
    open();
    EXPECT_EQ(emptyWords(), QStringList({"No items yet", "Make your first."}));
    EXPECT_FALSE(m_page->table()->isVisible());
}

TEST_F(PageOnScreen, theFirstRecordTakesThePlaceOfTheWords)
{
    begin();
    open();
    item("Lamp");
    items().filter();
    settle();
    EXPECT_EQ(emptyWords(), QStringList());
    EXPECT_TRUE(m_page->table()->isVisible());
}

TEST_F(PageOnScreen, aSearchWithoutAFindSaysSoAndNotThatThereIsNothing)
{
    begin();
    item("Lamp");
    open();
    QTest::keyClicks(&searchField(), "chair");
    settle();
    EXPECT_EQ(emptyWords().value(0), QString("Nothing found"));
    m_page->setTexts({"page", "Products", "Search products", "view-list", "No products yet", "Make your first product."});
    EXPECT_EQ(emptyWords().value(0), QString("Nothing found")) << "words that change meanwhile say nothing else";
    searchField().selectAll();
    QTest::keyClick(&searchField(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(emptyWords(), QStringList());
}

TEST_F(PageOnScreen, searchTakesTheKeyboardWithTheOldWordsMarked)
{
    begin();
    item("Lamp");
    open();
    QTest::keyClicks(&searchField(), "la");
    m_page->table()->setFocus();
    m_page->search();
    EXPECT_TRUE(searchField().hasFocus());
    EXPECT_EQ(searchField().selectedText(), QString("la"));
}

TEST_F(PageOnScreen, theUsersWordsStandWhereverThePageNamesItsRecords)
{
    begin();
    open();
    m_page->setTexts({"page", "Products", "Search products", "view-list", "No products yet", "Make your first product."});
    EXPECT_EQ(m_page->table()->accessibleName(), QString("Products"));
    EXPECT_EQ(child<QLabel>(*m_page, "pageTitle")->text(), QString("Products"));
    EXPECT_EQ(searchField().placeholderText(), QString("Search products"));
    EXPECT_EQ(searchField().accessibleName(), QString("Search products"));
    EXPECT_EQ(emptyWords(), QStringList({"No products yet", "Make your first product."}));
    EXPECT_EQ(&m_page->source(), &items());
}
