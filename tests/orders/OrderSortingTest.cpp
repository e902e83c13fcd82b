// The orders' list sorted by a column that is the contacts' own.
#include "storage/TextSearch.h"
#include "support/Business.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

using testing::ElementsAre;

class OrderSortingTest : public Business {
protected:
    std::vector<std::string> titles() { return shown(orders(), "title"); }
};

TEST_F(OrderSortingTest, sortingByContactGoesByTheirNamesWhateverTheCase)
{
    begin();
    Contact& zoe = contact("Zoe");
    Contact& bob = contact("bob Roe");
    Contact& carl = contact("Carl");
    Contact& ann = contact("Ann Lee");
    order("zoe's").setContact(&zoe);
    order("nobody's");
    order("bob's first").setContact(&bob);
    order("ann's").setContact(&ann);
    order("carl's").setContact(&carl);
    order("bob's second").setContact(&bob);
    // Who is deleted is still named by the orders.
    contacts().deleteItem(carl);

    orders().toggleSort("contactname");
    EXPECT_THAT(titles(), ElementsAre("nobody's", "ann's", "bob's first", "bob's second", "carl's", "zoe's"));
    orders().toggleSort("contactname");
    EXPECT_THAT(titles(), ElementsAre("zoe's", "carl's", "bob's first", "bob's second", "ann's", "nobody's"));

    bob.setName("Yorick");
    orders().toggleSort("contactname");
    EXPECT_THAT(titles(), ElementsAre("nobody's", "ann's", "carl's", "bob's first", "bob's second", "zoe's"));
}

TEST_F(OrderSortingTest, sortingByContactGivesWhatComparingTheColumnGives)
{
    begin();
    std::mt19937 random(5);
    std::vector<Contact*> people;
    for (const char* name : {"Lee", "lee", "Roe", "", "\xc3\x89mile", "\xc3\xa9mile", "Leeds", "Zoe", "roe 12345678", "Roe 12345677"})
        people.push_back(&contact(name));
    for (int n = 0; n < 300; ++n)
        order(std::to_string(n).c_str()).setContact(n % 7 == 0 ? nullptr : people[random() % people.size()]);
    contacts().deleteItem(*people[1]);
    contacts().deleteItem(*people[6]);

    std::vector<dataObject*> expected = orders().records();
    std::stable_sort(expected.begin(), expected.end(), [](const dataObject* a, const dataObject* b) {
        return foldCase(a->getFieldByName("contactname")) < foldCase(b->getFieldByName("contactname"));
    });
    orders().toggleSort("contactname");
    EXPECT_EQ(orders().getSortArray(), expected);
}

} // namespace
