#include "orders/Bill.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <QDate>

namespace {

class BillTest : public testing::Test {
protected:
    MemorySettings memory;
    Bill bill {memory};
};

TEST_F(BillTest, aNewBillIsEmpty)
{
    for (const char* name :
        {"amount", "net", "vat", "category", "datePaid", "datepaid", "details", "comments", "number", "name", "surname"})
        EXPECT_EQ(bill.getFieldByName(name), "") << name;
}

TEST_F(BillTest, fieldsAreSetAndReadByTheirNames)
{
    for (const char* name : {"amount", "net", "vat", "category", "datepaid", "details", "number", "name"}) {
        EXPECT_TRUE(bill.setFieldByName(name, std::string("my ") + name)) << name;
        EXPECT_EQ(bill.getFieldByName(name), std::string("my ") + name);
    }
}

TEST_F(BillTest, someFieldsGoByTwoNames)
{
    bill.setFieldByName("comments", "clay");
    EXPECT_EQ(bill.getFieldByName("details"), "clay");
    EXPECT_EQ(bill.getFieldByName("comments"), "clay");
    bill.setFieldByName("datePaid", "01/03/24");
    EXPECT_EQ(bill.getFieldByName("datepaid"), "01/03/24");
    EXPECT_EQ(bill.getFieldByName("datePaid"), "01/03/24");
}

TEST_F(BillTest, theNameIsReadAsASurnameButNotSetAsOne)
{
    bill.setName("Potters Ltd");
    EXPECT_EQ(bill.getFieldByName("surname"), "Potters Ltd");
    EXPECT_FALSE(bill.setFieldByName("surname", "Other"));
    EXPECT_EQ(bill.getName(), "Potters Ltd");
}

TEST_F(BillTest, otherNamesAnswerAndSetNothing)
{
    bill.setVAT("20.00");
    for (const char* name : {"VAT", "tax", "Name", "id", "order", ""})
        EXPECT_EQ(bill.getFieldByName(name), "") << name;
    EXPECT_FALSE(bill.setFieldByName("VAT", "x"));
}

TEST_F(BillTest, onlyTheDatePaidIsADate)
{
    EXPECT_TRUE(Bill::isDate("datepaid"));
    for (const char* name : {"date", "datePaid", "startdate", "amount", ""})
        EXPECT_FALSE(Bill::isDate(name)) << name;
}

TEST_F(BillTest, searchingLooksIntoCategoryNameDetailsAndNumber)
{
    for (const char* name : {"category", "name", "details", "number"}) {
        Bill searched(memory);
        searched.setFieldByName(name, "a Needle here");
        EXPECT_TRUE(searched.contains("nEEDLE")) << name;
    }
    for (const char* name : {"amount", "net", "vat", "datepaid"}) {
        Bill searched(memory);
        searched.setFieldByName(name, "needle");
        EXPECT_FALSE(searched.contains("needle")) << name;
    }
}

} // namespace
