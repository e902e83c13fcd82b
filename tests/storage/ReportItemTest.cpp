#include "storage/ReportItem.h"

#include <gtest/gtest.h>

class ReportItemTest : public testing::Test {
protected:
    ReportItemTest()
    {
        row.addValue("Tea", ReportValueKind::string);
        row.addValue("3.50", ReportValueKind::number);
        row.addValue("01/03/24", ReportValueKind::date);
    }

    ReportItem row {nullptr};
};

TEST_F(ReportItemTest, valuesAnswerUnderTheirNumbers)
{
    EXPECT_EQ(row.getFieldByName("field1"), "Tea");
    EXPECT_EQ(row.getFieldByName("field2"), "3.50");
    EXPECT_EQ(row.getFieldByName("field3"), "01/03/24");
}

TEST_F(ReportItemTest, otherNamesAreEmpty)
{
    for (const char* name : {"field0", "field4", "field-1", "field", "Field1", "1", "", "field99999999999"})
        EXPECT_EQ(row.getFieldByName(name), "") << name;
}

TEST_F(ReportItemTest, eachValueHasItsKind)
{
    EXPECT_EQ(row.kindOf("field1"), "STRING");
    EXPECT_EQ(row.kindOf("field2"), "NUMBER");
    EXPECT_EQ(row.kindOf("field3"), "DATE");
    EXPECT_EQ(row.kindOf("field4"), "STRING");
}

TEST_F(ReportItemTest, anyValueIsSearched)
{
    EXPECT_TRUE(row.contains("tea"));
    EXPECT_TRUE(row.contains("3.5"));
    EXPECT_FALSE(row.contains("coffee"));
    EXPECT_FALSE(row.contains("tea3"));
    std::string text;
    row.appendSearchText(text);
    EXPECT_EQ(text, "Tea\n3.50\n01/03/24\n");
}

TEST_F(ReportItemTest, withoutARecordItsNumbersAreNothing)
{
    EXPECT_EQ(row.getdObject(), nullptr);
    EXPECT_EQ(row.getNumericCode(), 0);
    EXPECT_EQ(row.getNumericOrdernum(), 0);
}

TEST_F(ReportItemTest, itsNumbersAreThoseOfItsRecord)
{
    class Numbered : public dataObject {
    public:
        float getNumericCode() const override { return 12; }
        float getNumericOrdernum() const override { return 34; }
    };
    Numbered record;
    const ReportItem behind(&record);

    EXPECT_EQ(behind.getdObject(), &record);
    EXPECT_EQ(behind.getNumericCode(), 12);
    EXPECT_EQ(behind.getNumericOrdernum(), 34);
}
