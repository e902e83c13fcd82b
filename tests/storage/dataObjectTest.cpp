#include "storage/dataObject.h"

#include <gtest/gtest.h>

TEST(dataObject, aRecordStartsWithoutIdVisibleAndWithoutDate)
{
    dataObject record;

    EXPECT_EQ(record.getID(), 0);
    EXPECT_TRUE(record.getVisible());
    EXPECT_FALSE(record.getNSDate().has_value());
    EXPECT_FALSE(record.getTempSortNSNumber().has_value());
    EXPECT_EQ(record.getFieldByName("id"), "");
    EXPECT_FALSE(record.setFieldByName("name", "x"));
    EXPECT_TRUE(record.contains("anything"));
    EXPECT_EQ(record.getActualFieldNameFor("field1"), "");
    EXPECT_EQ(record.getNumericCode(), 0.0f);
    EXPECT_EQ(record.getNumericOrdernum(), 0.0f);
    EXPECT_FALSE(record.isComplete());
    EXPECT_EQ(record.getType(), "");
}

TEST(dataObject, settingNoDateKeepsTheOldOne)
{
    dataObject record;
    const QDateTime date(QDate(2024, 3, 1), QTime(0, 0));
    record.setNSDate(date);
    record.setNSDate(std::nullopt);

    EXPECT_EQ(record.getNSDate(), date);
}

TEST(dataObject, exactlySevenNamesAreDates)
{
    for (const char* name : {"date", "depositpaid", "balancepaid", "dateadded", "datepaid", "enddate", "startdate"})
        EXPECT_TRUE(dataObject::isDate(name)) << name;
    for (const char* name : {"", "Date", "date ", "order:date", "dates", "lastrepeatdate", "paid"})
        EXPECT_FALSE(dataObject::isDate(name)) << name;
}

TEST(dataObject, moneyAndQuantitiesAreNumbersWhateverTheSetting)
{
    for (const char* codeSort : {"", "0", "1", "2"}) {
        for (const char* name : {"qty", "cost", "item:cost", "amount", "payment:amount", "total", "bought", "price", "stockcost",
                 "stockretail", "optimumqty", "reorderqty", "shipping", "balance", "deposit", "value", "valuewithtax", "net", "vat", "tax"})
            EXPECT_TRUE(dataObject::isNumber(name, codeSort)) << name;
        for (const char* name : {"", "id", "name", "Price", "date", "item:price", "taxrate", "item:code", "discount"})
            EXPECT_FALSE(dataObject::isNumber(name, codeSort)) << name;
    }
}

TEST(dataObject, codesAreNumbersUnlessTheSettingIsOne)
{
    for (const char* name : {"code", "ordernum", "order:number"}) {
        EXPECT_TRUE(dataObject::isNumber(name, "")) << name;
        EXPECT_TRUE(dataObject::isNumber(name, "0")) << name;
        EXPECT_TRUE(dataObject::isNumber(name, "2")) << name;
        EXPECT_FALSE(dataObject::isNumber(name, "1")) << name;
    }
}
