#include "foundation/Money.h"
#include "orders/Order.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <QDate>

namespace {

class PaymentTest : public testing::Test {
protected:
    PaymentTest()
    {
        order.setTitle("Garden Bench");
        order.setOrderNum("INV-42");
    }
    MemorySettings memory;
    MoneyFormatter formatter {"en_GB"};
    OrderRules rules {memory, formatter};
    Order order {rules};
    Payment payment {memory};
};

TEST_F(PaymentTest, aNewPaymentIsEmptyAndBelongsToNoOrder)
{
    for (const char* name : {"amount", "datepaid", "paymentmethod", "title", "ordernum", "order:number", "order:title"})
        EXPECT_EQ(payment.getFieldByName(name), "") << name;
    EXPECT_EQ(payment.getOrder(), nullptr);
}

TEST_F(PaymentTest, itsOwnFieldsAreSetAndReadByName)
{
    for (const char* name : {"amount", "datepaid", "paymentmethod"}) {
        EXPECT_TRUE(payment.setFieldByName(name, std::string("my ") + name));
        EXPECT_EQ(payment.getFieldByName(name), std::string("my ") + name);
    }
}

TEST_F(PaymentTest, itsOrdersTitleAndNumberAreReadThroughIt)
{
    order.addPayment(payment);
    EXPECT_EQ(payment.getOrder(), &order);
    EXPECT_EQ(payment.getTitle(), "Garden Bench");
    EXPECT_EQ(payment.getFieldByName("title"), "Garden Bench");
    EXPECT_EQ(payment.getFieldByName("order:title"), "Garden Bench");
    EXPECT_EQ(payment.getFieldByName("ordernum"), "INV-42");
    EXPECT_EQ(payment.getFieldByName("order:number"), "INV-42");
    EXPECT_EQ(payment.getNumericOrdernum(), 42.0f);
}

TEST_F(PaymentTest, otherNamesAnswerAndSetNothing)
{
    order.addPayment(payment);
    for (const char* name : {"Amount", "datePaid", "paymentMethod", "order", "id", "status", ""})
        EXPECT_EQ(payment.getFieldByName(name), "") << name;
    for (const char* name : {"title", "ordernum", "id", "datePaid"})
        EXPECT_FALSE(payment.setFieldByName(name, "x")) << name;
}

TEST_F(PaymentTest, theDateIsMonthFirstForOneAndWhileNoFormatWasChosen)
{
    payment.setDatePaid("02/03/24");
    EXPECT_EQ(payment.getDatepaidasdate(), QDate(2024, 2, 3));
    memory.setText(settings::dateFormat, "1");
    EXPECT_EQ(payment.getDatepaidasdate(), QDate(2024, 2, 3));
    memory.setText(settings::dateFormat, "0");
    EXPECT_EQ(payment.getDatepaidasdate(), QDate(2024, 3, 2));
    payment.setDatePaid("one day");
    EXPECT_EQ(payment.getDatepaidasdate(), QDate(2000, 1, 1));
}

TEST_F(PaymentTest, untilTheWayToWriteDatesIsChosenNeitherWayIsAFault)
{
    const ValueCheck check = recordDateCheck(memory);
    for (const char* right : {"25/12/24", "12/25/24", "01/02/24", ""})
        EXPECT_EQ(check(right), "") << right;
    EXPECT_EQ(check("25/25/24"), "This is not a date like 12/25/24; it counts as 01/01/00.");

    memory.setText(settings::dateFormat, "1");
    EXPECT_EQ(check("25/12/24"), "This is not a date like 12/25/24; it counts as 01/01/00.");
    EXPECT_EQ(check("12/25/24"), "");
}

TEST_F(PaymentTest, searchingLooksIntoAmountMethodAndTheOrder)
{
    payment.setAmount("1,250.00");
    payment.setPaymentMethod("Bank transfer");
    payment.setDatePaid("02/03/24");
    EXPECT_FALSE(payment.contains("bench"));
    order.addPayment(payment);
    for (const char* text : {"1,250", "BANK", "garden", "inv-4"})
        EXPECT_TRUE(payment.contains(text)) << text;
    for (const char* text : {"02/03", "1250", "enquiry"})
        EXPECT_FALSE(payment.contains(text)) << text;
}

} // namespace
