// The contacts' page: companies with their people below them, its selection and its words.
#include "ui/contacts/ContactsPage.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/RecordTree.h"
#include "ui/kit/TableHeader.h"

using namespace uitest;

namespace {

class ContactsOnPage : public Business {
protected:
    void SetUp() override
    {
        begin();
        m_page = std::make_unique<ContactsPage>(contacts());
        m_page->resize(900, 500);
        show(*m_page);
    }
    void TearDown() override { m_page.reset(); }

    void refresh()
    {
        contacts().filter();
        settle();
    }
    RecordTree& tree() { return *m_page->tree(); }
    static QStringList namesUnder(const QAbstractItemModel& model, const QModelIndex& parent)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(parent); ++row)
            names += model.index(row, 0, parent).data().toString();
        return names;
    }
    /// The index of the first row at any level that shows the name.
    QModelIndex rowOf(const char* name)
    {
        return tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    void click(const char* name)
    {
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualRect(rowOf(name)).center());
        settle();
    }

    std::unique_ptr<ContactsPage> m_page;
};

} // namespace

TEST_F(ContactsOnPage, withoutContactsItSaysHowToMakeOne)
{
    EXPECT_TRUE(m_page->findChild<EmptyState*>()->isVisible());
    EXPECT_FALSE(tree().isVisible());
}

TEST_F(ContactsOnPage, peopleStandBelowTheirCompany)
{
    Contact& works = firm("Aster Works");
    personOf(works, "Bea");
    personOf(works, "Cy");
    contact("Dora");
    refresh();
    const QAbstractItemModel& model = *tree().model();
    // New ones come first until the list is sorted.
    EXPECT_EQ(namesUnder(model, {}), QStringList({"Dora", "Aster Works"}));
    QStringList people = namesUnder(model, rowOf("Aster Works"));
    people.sort();
    EXPECT_EQ(people, QStringList({"Bea", "Cy"}));
    EXPECT_EQ(namesUnder(model, rowOf("Dora")), QStringList());
}

TEST_F(ContactsOnPage, aClickSelectsTheContactAndTheListTellsItBack)
{
    Contact& dora = contact("Dora");
    Contact& eve = contact("Eve");
    refresh();
    click("Eve");
    ASSERT_EQ(contacts().selectedRecords().size(), 1u);
    EXPECT_EQ(contacts().selectedRecords().front(), &eve);
    contacts().setSelectedRecords({&dora});
    settle();
    EXPECT_EQ(tree().currentIndex().data().toString(), QString("Dora"));
}

TEST_F(ContactsOnPage, whateverIsSelectedStaysSoOnBothLevelsWhenTheListIsMadeAnew)
{
    Contact& works = firm("Aster Works");
    personOf(works, "Bea");
    Contact& cy = personOf(works, "Cy");
    Contact& dan = personOf(works, "Dan");
    contact("Dora");
    Contact& eve = contact("Eve");
    Contact& fay = contact("Fay");
    refresh();
    contacts().setSelectedRecords({&fay, &cy, &eve, &works, &dan});
    refresh();
    QStringList selected;
    for (const QModelIndex& index : tree().selectionModel()->selectedRows())
        selected += index.data().toString();
    selected.sort();
    EXPECT_EQ(selected, QStringList({"Aster Works", "Cy", "Dan", "Eve", "Fay"}));
    EXPECT_EQ(tree().currentIndex().data().toString(), QString("Fay"));
    EXPECT_EQ(tree().selectionModel()->selectedRows(3).size(), 5) << "over all columns";
    EXPECT_EQ(contacts().selectedRecords().size(), 5u);
}

TEST_F(ContactsOnPage, anOpenCompanyStaysOpenWhenTheListIsFilteredAnew)
{
    Contact& works = firm("Aster Works");
    personOf(works, "Bea");
    refresh();
    tree().expand(rowOf("Aster Works"));
    contact("Dora");
    refresh();
    EXPECT_TRUE(tree().isExpanded(rowOf("Aster Works")));
    tree().collapse(rowOf("Aster Works"));
    refresh();
    EXPECT_FALSE(tree().isExpanded(rowOf("Aster Works")));
}

TEST_F(ContactsOnPage, returnOpensTheEditorOfTheRow)
{
    contact("Dora");
    refresh();
    click("Dora");
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Return);
    EXPECT_TRUE(contacts().form.isOpen());
    EXPECT_EQ(contacts().form.name.text(), QString("Dora"));
}

TEST_F(ContactsOnPage, aHeadingThatIsClickedSorts)
{
    contact("Dora");
    contact("Abel");
    refresh();
    TableHeader& header = *tree().tableHeader();
    const auto clickFirst = [&] { QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(30, header.height() / 2)); };
    clickFirst();
    settle();
    EXPECT_EQ(namesUnder(*tree().model(), {}), QStringList({"Abel", "Dora"}));
    clickFirst();
    settle();
    EXPECT_EQ(namesUnder(*tree().model(), {}), QStringList({"Dora", "Abel"}));
}
