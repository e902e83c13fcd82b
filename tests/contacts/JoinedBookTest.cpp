#include "contacts/JoinedBook.h"

#include <gtest/gtest.h>

namespace {

struct BookOf : AddressBook {
    BookOf(std::string name, QStringList said) : lastName(std::move(name)), troubles(std::move(said)) { }
    AddressBookPeople people() const override
    {
        AddressBookPeople all;
        all.people.emplace_back().lastName = lastName;
        all.troubles = troubles;
        return all;
    }
    std::string lastName;
    QStringList troubles;
};

TEST(JoinedBookTest, HasThePeopleAndTroublesOfEachBookInTheirOrder)
{
    const BookOf first("A", {"one"});
    const BookOf second("B", {"two"});
    const AddressBookPeople all = JoinedBook({&first, nullptr, &second}).people();
    ASSERT_EQ(all.people.size(), 2u);
    EXPECT_EQ(all.people[0].lastName, "A");
    EXPECT_EQ(all.people[1].lastName, "B");
    EXPECT_EQ(all.troubles, QStringList({"one", "two"}));
}

TEST(JoinedBookTest, NoBooksHoldNobody)
{
    EXPECT_TRUE(JoinedBook({nullptr}).people().people.empty());
    EXPECT_TRUE(JoinedBook({}).people().troubles.isEmpty());
}

} // namespace
