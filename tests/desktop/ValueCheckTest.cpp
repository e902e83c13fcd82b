#include "desktop/ValueCheck.h"

#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "foundation/Numbers.h"

#include <gtest/gtest.h>

namespace {

class BillForm : public Form {
public:
    TextField amount {*this, "amount"};
    TextField day {*this, "day"};
    TextField title {*this, "title"};
};

class ValueCheckTest : public testing::Test {
protected:
    MoneyFormatter pounds {"en_GB"};
    MoneyFormatter euros {"de_DE"};
};

TEST_F(ValueCheckTest, anAmountIsWhatTheMoneyReaderReads)
{
    const ValueCheck check = values::amount(pounds);
    for (const char* fine : {"", " ", "5", "1,234.50", "-3", " 7.5 "})
        EXPECT_EQ(check(fine), "") << fine;
    for (const char* wrong : {"free", "5 pounds", "1e3", "10,000,000.01", "£5", "5.5.5"})
        EXPECT_EQ(check(wrong), "This does not read as an amount; it counts as 0.") << wrong;
}

TEST_F(ValueCheckTest, anAmountIsReadTheUsersWay)
{
    const ValueCheck check = values::amount(euros);
    EXPECT_EQ(check("1.234,50"), "");
    EXPECT_NE(check("1,234.50"), "");
}

TEST_F(ValueCheckTest, aNumberIsNamedAsOne)
{
    const ValueCheck check = values::number(pounds);
    EXPECT_EQ(check("12.5"), "");
    EXPECT_EQ(check("ten"), "This does not read as a number; it counts as 0.");
}

TEST_F(ValueCheckTest, ofAWholeNumberTheSentenceTellsWhatCounts)
{
    const ValueCheck check = values::wholeNumber();
    for (const char* fine : {"", "  ", "0", "12", " -3 ", "+4"})
        EXPECT_EQ(check(fine), "") << fine;
    EXPECT_EQ(check("2.5"), "This does not read as a whole number; it counts as 2.");
    EXPECT_EQ(check("1,000"), "This does not read as a whole number; it counts as 1.");
    EXPECT_EQ(check("few"), "This does not read as a whole number; it counts as 0.");
    EXPECT_EQ(check("-"), "This does not read as a whole number; it counts as 0.");
}

TEST_F(ValueCheckTest, aDateIsReadByThePatternOfThatMoment)
{
    const char* pattern = dates::dayFirst;
    const ValueCheck check = values::date([&pattern] { return pattern; });
    EXPECT_EQ(check("25/12/24"), "");
    EXPECT_EQ(check("1/2/2024"), "");
    EXPECT_EQ(check(""), "");
    EXPECT_EQ(check("today"), "This is not a date like 25/12/24; it counts as 01/01/00.");
    EXPECT_EQ(check("31/02/24"), "This is not a date like 25/12/24; it counts as 01/01/00.");
    pattern = dates::monthFirst;
    EXPECT_EQ(check("25/12/24"), "This is not a date like 12/25/24; it counts as 01/01/00.");
}

TEST_F(ValueCheckTest, aFieldIsCheckedWhoeverChangesItAndTheOthersAreLeftAlone)
{
    BillForm form;
    checkFields(form, {{&form.amount, values::amount(pounds)}, {&form.day, values::date([] { return dates::dayFirst; })}});
    form.amount.edit("a lot");
    EXPECT_NE(form.amount.fault(), "");
    EXPECT_EQ(form.amount.text(), "a lot");
    form.day.setText("soon");
    EXPECT_NE(form.day.fault(), "");
    form.title.edit("a lot");
    EXPECT_EQ(form.title.fault(), "");
    form.amount.edit("12");
    EXPECT_EQ(form.amount.fault(), "");
    form.day.setText("");
    EXPECT_EQ(form.day.fault(), "");
}

TEST_F(ValueCheckTest, aFaultIsToldToTheWindowOnceAndOnlyWhenItChanges)
{
    BillForm form;
    checkFields(form, {{&form.amount, values::amount(pounds)}});
    int told = 0;
    QObject::connect(&form, &Form::fieldChanged, [&told] { ++told; });
    form.amount.edit("x"); // the text and its fault
    EXPECT_EQ(told, 2);
    form.amount.edit("xy"); // the same fault
    EXPECT_EQ(told, 3);
    form.amount.edit("7"); // the text, and no fault any more
    EXPECT_EQ(told, 5);
}

TEST_F(ValueCheckTest, ofANumberWithARestTheNumberCounts)
{
    const ValueCheck check = values::leadingNumber(numbers::leadingFloat);
    for (const char* good : {"", "  ", "0", "12.5", " -3 ", "+.5"})
        EXPECT_EQ(check(good), QString()) << good;
    EXPECT_EQ(check("12.5%"), QString("This does not read as a number; it counts as 12.5."));
    EXPECT_EQ(check("none"), QString("This does not read as a number; it counts as 0."));
    EXPECT_EQ(check("17,5"), QString("This does not read as a number; it counts as 17."));
}

} // namespace
