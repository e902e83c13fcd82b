// The orders of a contact, as the contact's editor lists them.
#include "orders/ContactOrders.h"

#include "support/Business.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ContactOrdersTest : public Business {
protected:
    ContactOrders& list() { return app().ordersIn(contacts().form); }
    std::vector<std::string> titles() { return titlesIn(list()); }
    static std::vector<std::string> titlesIn(const ContactOrders& orders)
    {
        std::vector<std::string> cells;
        for (int row = 0; row < orders.numberOfRows(); ++row)
            cells.push_back(orders.objectValue("title", row));
        return cells;
    }
    /// Two contacts; orders of the one, of the other, of nobody, and one that has both.
    void SetUp() override
    {
        begin();
        ann = &contact("Ann");
        bob = &contact("Bob");
        orders().connectContact(*ann, order("Anns first"));
        orders().connectContact(*bob, order("Bobs"));
        order("Nobodys");
        orders().connectContact(*ann, order("Anns second"));
        Order& both = order("Of both");
        orders().connectContact(*bob, both);
        orders().connectContact2(*ann, both);
        orders().filter();
    }

    Contact* ann = nullptr;
    Contact* bob = nullptr;
};

TEST_F(ContactOrdersTest, theEditorListsTheContactsOrdersNewestFirst)
{
    contacts().editThisContact(*ann);
    EXPECT_THAT(titles(), ElementsAre("Of both", "Anns second", "Anns first"));
    contacts().editThisContact(*bob);
    EXPECT_THAT(titles(), ElementsAre("Of both", "Bobs"));
    contacts().form.cancel.trigger();
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ContactOrdersTest, theyStandAsTheListOfOrdersIsSortedWhateverItHides)
{
    contacts().editThisContact(*ann);
    orders().toggleSort("title");
    EXPECT_THAT(titles(), ElementsAre("Anns first", "Anns second", "Of both"));
    orders().listForm.search.edit("nobody");
    EXPECT_THAT(titles(), ElementsAre("Anns first", "Anns second", "Of both"));
}

TEST_F(ContactOrdersTest, ordersThatComeGoOrChangeAreSeenAtOnce)
{
    contacts().editThisContact(*ann);
    Order& third = order("Anns third");
    orders().connectContact(*ann, third);
    orders().filter();
    EXPECT_THAT(titles(), ElementsAre("Anns third", "Of both", "Anns second", "Anns first"));
    third.setTitle("Another word");
    orders().filterAfterChange(third);
    EXPECT_EQ(titles().front(), "Another word");
    orders().deleteOrder(third);
    orders().reloadData();
    EXPECT_THAT(titles(), ElementsAre("Of both", "Anns second", "Anns first"));
}

TEST_F(ContactOrdersTest, theFiguresAreWhatIsToBePaidAndWhatIsLeftOfIt)
{
    Order& both = orders().at(4);
    both.setValue("100.00");
    both.setShipping("5.50");
    payment(both, "30.00");
    contacts().editThisContact(*ann);
    EXPECT_EQ(list().objectValue("totaldue", 0), "105.50");
    EXPECT_EQ(list().objectValue("balanceremaining", 0), "75.50");
}

TEST_F(ContactOrdersTest, openingTheSelectedOneOpensItsEditor)
{
    contacts().editThisContact(*ann);
    list().edit();
    EXPECT_FALSE(orders().form.isOpen()) << "nothing is selected";
    list().selectRow(1);
    list().edit();
    EXPECT_TRUE(orders().form.isOpen());
    EXPECT_EQ(currentOrder().getTitle(), "Anns second");
}

TEST_F(ContactOrdersTest, eachEditorHasItsOwn)
{
    Contact& tarn = firm("Tarn");
    Contact& eve = personOf(tarn, "Eve");
    orders().connectContact(tarn, order("Tarns"));
    orders().connectContact(eve, order("Eves"));
    contacts().editThisContact(*bob);
    contacts().editThisContact(tarn);
    contacts().editThisContact(eve);
    EXPECT_THAT(titles(), ElementsAre("Of both", "Bobs"));
    EXPECT_THAT(titlesIn(app().ordersIn(contacts().companyEditor.form)), ElementsAre("Tarns"));
    EXPECT_THAT(titlesIn(app().ordersIn(contacts().companyContactEditor.form)), ElementsAre("Eves"));
}

TEST_F(ContactOrdersTest, aNewContactHasNoneEvenUnderAnIdThatADeletedOneHad)
{
    Contact& gone = contact("Gone");
    orders().connectContact(gone, order("Of the deleted one"));
    const int id = gone.getID();
    contacts().deleteContact(gone);
    contacts().create();
    ASSERT_EQ(contacts().currentItem()->getID(), id);
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ContactOrdersTest, aSwitchOfTheDatabaseEmptiesThem)
{
    contacts().editThisContact(*ann);
    app().session().switchDatabase();
    EXPECT_THAT(titles(), IsEmpty());
}

} // namespace
