#include "contacts/JoinedBook.h"

#include <gtest/gtest.h>

namespace {

bool always(double)
{
    return true;
}

struct BookOf : AddressBook {
    BookOf(std::string name, QStringList said) : lastName(std::move(name)), troubles(std::move(said)) { }
    AddressBookPeople people(const GoesOn& goesOn) const override
    {
        AddressBookPeople all;
        all.wasStopped = !goesOn(0.5);
        all.people.emplace_back().lastName = lastName;
        all.troubles = troubles;
        return all;
    }
    std::string lastName;
    QStringList troubles;
};

TEST(JoinedBookTest, hasThePeopleAndTroublesOfEachBookInTheirOrder)
{
    const BookOf first("A", {"one"});
    const BookOf second("B", {"two"});
    const AddressBookPeople all = JoinedBook({&first, nullptr, &second}).people(always);
    ASSERT_EQ(all.people.size(), 2u);
    EXPECT_EQ(all.people[0].lastName, "A");
    EXPECT_EQ(all.people[1].lastName, "B");
    EXPECT_EQ(all.troubles, QStringList({"one", "two"}));
}

TEST(JoinedBookTest, eachBookIsItsShareOfTheWorkAndStoppingOneStopsAll)
{
    const BookOf first("A", {});
    const BookOf second("B", {});
    std::vector<double> shares;
    const auto untilSecond = [&](double share) {
        shares.push_back(share);
        return share < 0.5;
    };
    const AddressBookPeople all = JoinedBook({&first, &second, &first, &first}).people(untilSecond);
    EXPECT_EQ(shares, std::vector<double>({0.125, 0.375, 0.625}));
    EXPECT_TRUE(all.wasStopped);
    EXPECT_EQ(all.people.size(), 3u);
}

TEST(JoinedBookTest, noBooksHoldNobody)
{
    EXPECT_TRUE(JoinedBook({nullptr}).people(always).people.empty());
    EXPECT_TRUE(JoinedBook({}).people(always).troubles.isEmpty());
}

} // namespace
