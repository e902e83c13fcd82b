#include "orders/Order.h"
#include "contacts/Contact.h"
#include "foundation/Money.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <QDate>

namespace {

class OrderTest : public testing::Test {
protected:
    Payment& pay(Order& target, const char* amount, const char* date = "01/03/24", const char* method = "cash")
    {
        payments.push_back(std::make_unique<Payment>(memory));
        Payment& payment = *payments.back();
        payment.setAmount(amount);
        payment.setDatePaid(date);
        payment.setPaymentMethod(method);
        target.addPayment(payment);
        return payment;
    }
    static void fill(Contact& contact, const std::string& mark)
    {
        for (const char* name : {"add1", "add2", "add3", "comments", "email", "country", "county", "extension", "fax", "kind", "mobile",
                 "phone", "postcode", "title", "type", "website"})
            contact.setFieldByName(name, mark + name);
        contact.setName(mark + "Ann Lee");
        contact.setCompanyName(mark + "companyname");
        contact.setJobTitle(mark + "jobtitle");
    }

    MemorySettings memory;
    MoneyFormatter formatter {"en_GB"};
    OrderRules rules {memory, formatter};
    Order order {rules};
    std::vector<std::unique_ptr<Payment>> payments;
};

// A new order

TEST_F(OrderTest, aNewOrderIsAnEnquiryOfACustomerPaidByWeb)
{
    EXPECT_EQ(order.getStatus(), "Enquiry");
    EXPECT_EQ(order.getType(), "Customer");
    EXPECT_EQ(order.getPaymentMethod(), "web");
    EXPECT_EQ(order.getRepeatFrequency(), "month");
    EXPECT_TRUE(order.getDiscountIsPercentage());
}

TEST_F(OrderTest, aNewOrdersOtherTextsAreEmpty)
{
    for (const char* name : {"title", "date", "description", "deposit", "discount", "value", "subtotal", "shipping", "tax", "net",
             "taxRate", "valueWithTax", "totalitemspurchased", "transactionref", "orderNum", "ordernum", "balance", "balancePaid",
             "balancepaid", "depositPaid", "depositpaid", "contactname", "discountdescription", "contact:name"})
        EXPECT_EQ(order.getFieldByName(name), "") << name;
    EXPECT_EQ(order.getLastRepeatDate(), "");
}

TEST_F(OrderTest, aNewOrdersNumbersAreZeroAndItsOtherFlagsOff)
{
    EXPECT_EQ(order.getID(), 0);
    EXPECT_EQ(order.getNumericOrdernum(), 0.0f);
    EXPECT_EQ(order.getContactId(), 0);
    EXPECT_EQ(order.getContact2Id(Order::Fallback::none), 0);
    EXPECT_EQ(order.getBillId(), 0);
    EXPECT_EQ(order.getNewCustomer(), 0);
    EXPECT_EQ(order.getContact(), nullptr);
    EXPECT_FALSE(order.getIncludeBOM() || order.getSent() || order.getStockAdded() || order.getRepeats() || order.getApplyDiscount());
    EXPECT_TRUE(order.getPaymentArray().empty());
}

// The number

TEST_F(OrderTest, theNumericNumberIsMadeFromAllDigitsInTheirOrder)
{
    const std::pair<const char*, float> cases[] = {
        {"PO-12a3", 123}, {"INV 0042", 42}, {"ABC", 0}, {"", 0}, {"7", 7}, {"-5", 5}, {"1.5", 15}, {"2024/07/11", 20240711}};
    for (const auto& [text, number] : cases) {
        order.setOrderNum(text);
        EXPECT_EQ(order.getNumericOrdernum(), number) << text;
        EXPECT_EQ(order.getOrderNum(), text);
        EXPECT_EQ(order.getOrdernum(), text);
    }
}

TEST_F(OrderTest, digitsOfOtherScriptsAreNotDigitsOfANumber)
{
    order.setOrderNum("PO-\xd9\xa1\xd9\xa2"
                      "34");
    EXPECT_EQ(order.getNumericOrdernum(), 34.0f);
}

// Dates

TEST_F(OrderTest, theDateIsMonthFirstWhileNoFormatWasChosen)
{
    order.setDate("02/03/24");
    EXPECT_EQ(order.getDateasdate(), QDate(2024, 2, 3));
}

TEST_F(OrderTest, theDateIsMonthFirstForTheSettingOneAndDayFirstForAnyOther)
{
    order.setDate("02/03/24");
    memory.setText(settings::dateFormat, "1");
    EXPECT_EQ(order.getDateasdate(), QDate(2024, 2, 3));
    for (const char* other : {"0", "2", ""}) {
        memory.setText(settings::dateFormat, other);
        EXPECT_EQ(order.getDateasdate(), QDate(2024, 3, 2)) << other;
    }
}

TEST_F(OrderTest, aDateThatDoesNotReadIsTheFirstOfJanuary2000)
{
    for (const char* text : {"", "tomorrow", "31/02/24", "13/13/24", "1/2", "01/02/24 and more"}) {
        order.setDate(text);
        order.setBalancePaid(text);
        order.setDepositPaid(text);
        EXPECT_EQ(order.getDateasdate(), QDate(2000, 1, 1)) << text;
        EXPECT_EQ(order.getBalancePaidAsDate(), QDate(2000, 1, 1)) << text;
        EXPECT_EQ(order.getDepositpaidasdate(), QDate(2000, 1, 1)) << text;
    }
}

TEST_F(OrderTest, balanceAndDepositDatesAreDayFirstWhateverTheFormat)
{
    order.setBalancePaid("02/03/24");
    order.setDepositPaid("04/05/24");
    for (const char* format : {"0", "1"}) {
        memory.setText(settings::dateFormat, format);
        EXPECT_EQ(order.getBalancePaidAsDate(), QDate(2024, 3, 2));
        EXPECT_EQ(order.getDepositpaidasdate(), QDate(2024, 5, 4));
    }
}

// Contacts

TEST_F(OrderTest, theSecondContactFallsBackToTheFirstOnlyWhenAsked)
{
    Contact ann;
    ann.setID(7);
    order.setContact(&ann);

    EXPECT_EQ(order.getContact2(Order::Fallback::none), nullptr);
    EXPECT_EQ(order.getContact2Id(Order::Fallback::none), 0);
    EXPECT_EQ(order.getContact2(Order::Fallback::firstContact), &ann);
    EXPECT_EQ(order.getContact2Id(Order::Fallback::firstContact), 7);
}

TEST_F(OrderTest, aSecondContactStandsBeforeTheFallback)
{
    Contact ann;
    ann.setID(7);
    Contact bob;
    bob.setID(8);
    order.setContact(&ann);
    order.setContact2(&bob);

    EXPECT_EQ(order.getContact2(Order::Fallback::firstContact), &bob);
    EXPECT_EQ(order.getContact2Id(Order::Fallback::firstContact), 8);
}

TEST_F(OrderTest, withoutAnyContactTheFallbackFindsNone)
{
    EXPECT_EQ(order.getContact2(Order::Fallback::firstContact), nullptr);
    EXPECT_EQ(order.getContact2Id(Order::Fallback::firstContact), 0);
}

TEST_F(OrderTest, fieldsOfTheFirstContactAnswerBehindItsPrefix)
{
    Contact ann;
    fill(ann, "1");
    ann.setID(31);
    order.setContact(&ann);

    for (const std::string name : {"add1", "add2", "add3", "comments", "companyname", "email", "country", "county", "extension", "fax",
             "jobtitle", "kind", "mobile", "phone", "postcode", "title", "type", "website"})
        EXPECT_EQ(order.getFieldByName("contact:" + name), "1" + name);
    EXPECT_EQ(order.getFieldByName("contact:id"), "31");
    EXPECT_EQ(order.getFieldByName("contact:name"), "1Ann Lee");
    EXPECT_EQ(order.getFieldByName("contact:firstname"), "1Ann");
    EXPECT_EQ(order.getFieldByName("contact:surname"), "Lee");
    EXPECT_EQ(order.getFieldByName("contactname"), "1Ann Lee");
    EXPECT_EQ(order.getContactname(), "1Ann Lee");
}

TEST_F(OrderTest, fieldsOfTheSecondContactAnswerBehindTheirsButForPostcodeAndFirstName)
{
    Contact ann;
    Contact bob;
    fill(ann, "1");
    fill(bob, "2");
    bob.setID(32);
    order.setContact(&ann);
    order.setContact2(&bob);

    for (const std::string name : {"add1", "add2", "add3", "comments", "companyname", "email", "country", "county", "extension", "fax",
             "jobtitle", "kind", "mobile", "phone", "title", "type", "website"})
        EXPECT_EQ(order.getFieldByName("contact2:" + name), "2" + name);
    EXPECT_EQ(order.getFieldByName("contact2:id"), "32");
    EXPECT_EQ(order.getFieldByName("contact2:name"), "2Ann Lee");
    EXPECT_EQ(order.getFieldByName("contact2:surname"), "Lee");
    EXPECT_EQ(order.getFieldByName("contact2firstname"), "2Ann");
    EXPECT_EQ(order.getFieldByName("contact2:firstname"), "");
    EXPECT_EQ(order.getFieldByName("contact2:postcode"), "1postcode");
}

TEST_F(OrderTest, contactFieldsThatAreNotListedAnswerNothing)
{
    Contact ann;
    fill(ann, "1");
    ann.setRef("R-1");
    ann.setSalutation("Dear Ann");
    order.setContact(&ann);

    for (const char* name : {"contact:ref", "contact:salutation", "contact:jobTitle", "contact:address", "contact:", "contact",
             "contact:Name", "contact2:name", "contact2"})
        EXPECT_EQ(order.getFieldByName(name), "") << name;
}

TEST_F(OrderTest, takingTheContactAwayClearsItsIdToo)
{
    Contact ann;
    ann.setID(7);
    order.setContact(&ann);
    order.setContact(nullptr);
    EXPECT_EQ(order.getContactId(), 0);
    EXPECT_EQ(order.getFieldByName("contact:id"), "");
}

// Reading by name

TEST_F(OrderTest, storedFieldsReadByTheirNames)
{
    order.setTitle("a");
    order.setDate("b");
    order.setStatus("c");
    order.setDescription("d");
    order.setDeposit("e");
    order.setDiscount("f");
    order.setValue("g");
    order.setShipping("h");
    order.setType("i");
    order.setTax("j");
    order.setNet("k");
    order.setTaxRate("l");
    order.setValueWithTax("m");
    order.setTotalItemsPurchased("n");
    order.setPaymentMethod("o");
    order.setTransactionRef("p");
    order.setOrderNum("q");
    order.setBalance("r");
    order.setBalancePaid("s");
    order.setDepositPaid("t");

    const std::pair<const char*, const char*> expected[] = {{"title", "a"}, {"date", "b"}, {"status", "c"}, {"description", "d"},
        {"deposit", "e"}, {"discount", "f"}, {"value", "g"}, {"subtotal", "g"}, {"shipping", "h"}, {"type", "i"}, {"tax", "j"},
        {"net", "k"}, {"taxRate", "l"}, {"valueWithTax", "m"}, {"totalitemspurchased", "n"}, {"paymentmethod", "o"},
        {"transactionref", "p"}, {"orderNum", "q"}, {"ordernum", "q"}, {"balance", "r"}, {"balancePaid", "s"}, {"balancepaid", "s"},
        {"depositPaid", "t"}, {"depositpaid", "t"}, {"one", "1"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(order.getFieldByName(name), value) << name;
}

TEST_F(OrderTest, namesOfFieldsAreMatchedExactly)
{
    order.setTitle("a");
    order.setTaxRate("20");
    order.setRepeatFrequency("week");
    order.setBillId(3);
    for (const char* name : {"Title", "TITLE", "title ", "", "taxrate", "valuewithtax", "OrderNum", "paymentMethod", "transactionRef",
             "includebom", "Sent", "newCustomer", "repeatfrequency", "lastrepeatdate", "bill", "stockadded", "repeats", "id", "unknown"})
        EXPECT_EQ(order.getFieldByName(name), "") << name;
}

TEST_F(OrderTest, flagsReadInTheirOwnWords)
{
    EXPECT_EQ(order.getFieldByName("includeBOM"), "No");
    EXPECT_EQ(order.getFieldByName("sent"), "No");
    EXPECT_EQ(order.getFieldByName("applydiscount"), "no");
    EXPECT_EQ(order.getFieldByName("discountispercentage"), "percent");
    order.setIncludeBOM(true);
    order.setSent(true);
    order.setApplyDiscount(true);
    order.setDiscountIsPercentage(false);
    EXPECT_EQ(order.getFieldByName("includeBOM"), "Yes");
    EXPECT_EQ(order.getFieldByName("sent"), "Yes");
    EXPECT_EQ(order.getFieldByName("applydiscount"), "yes");
    EXPECT_EQ(order.getFieldByName("discountispercentage"), "flat");
}

TEST_F(OrderTest, theCustomerMarkReadsInWordsAndAnUnknownOneAsNothing)
{
    const std::pair<int, const char*> cases[] = {{0, "Not known"}, {1, "New customer"}, {2, "Returning customer"}, {3, ""}, {-1, ""}};
    for (const auto& [mark, words] : cases) {
        order.setNewCustomer(mark);
        EXPECT_EQ(order.getFieldByName("newcustomer"), words) << mark;
    }
}

// Setting by name

TEST_F(OrderTest, fieldsThatImportsKnowAreSetByName)
{
    for (const char* name : {"balance", "balancePaid", "date", "deposit", "depositPaid", "description", "title", "ordernum",
             "paymentmethod", "value", "status", "shipping", "type", "tax", "net", "totalitemspurchased", "transactionref"}) {
        EXPECT_TRUE(order.setFieldByName(name, std::string("new ") + name)) << name;
        EXPECT_EQ(order.getFieldByName(name), std::string("new ") + name);
    }
    EXPECT_TRUE(order.setFieldByName("balancepaid", "b"));
    EXPECT_TRUE(order.setFieldByName("depositpaid", "d"));
    EXPECT_TRUE(order.setFieldByName("taxrate", "20"));
    EXPECT_TRUE(order.setFieldByName("valuewithtax", "12.00"));
    EXPECT_EQ(order.getBalancePaid(), "b");
    EXPECT_EQ(order.getDepositPaid(), "d");
    EXPECT_EQ(order.getTaxRate(), "20");
    EXPECT_EQ(order.getValueWithTax(), "12.00");
}

TEST_F(OrderTest, otherNamesSetNothing)
{
    for (const char* name : {"taxRate", "valueWithTax", "orderNum", "subtotal", "discount", "applydiscount", "discountispercentage",
             "totaldue", "contactname", "contact", "one", "Title", "repeats", "stockadded"})
        EXPECT_FALSE(order.setFieldByName(name, "5")) << name;
    EXPECT_EQ(order.values(), Order(rules).values());
}

TEST_F(OrderTest, theNumberSetByNameSortsByItsDigits)
{
    order.setFieldByName("ordernum", "W-19");
    EXPECT_EQ(order.getNumericOrdernum(), 19.0f);
}

TEST_F(OrderTest, idAndCustomerMarkTakeTheIntegerOfTheText)
{
    order.setFieldByName("id", "42");
    order.setFieldByName("newcustomer", "2");
    EXPECT_EQ(order.getID(), 42);
    EXPECT_EQ(order.getNewCustomer(), 2);
    order.setFieldByName("newcustomer", "none");
    EXPECT_EQ(order.getNewCustomer(), 0);
}

TEST_F(OrderTest, theLinesAreIncludedExactlyForTheWordYes)
{
    for (const char* name : {"includebom", "includeBOM"}) {
        for (const char* other : {"yes", "YES", "No", "", "1", "true"}) {
            order.setIncludeBOM(true);
            order.setFieldByName(name, other);
            EXPECT_FALSE(order.getIncludeBOM()) << name << "=" << other;
        }
        order.setFieldByName(name, "Yes");
        EXPECT_TRUE(order.getIncludeBOM());
    }
}

TEST_F(OrderTest, sentIsSetByTheWordNoAndByNoOther)
{
    order.setFieldByName("sent", "No");
    EXPECT_TRUE(order.getSent());
    for (const char* other : {"Yes", "YES", "no", "NO", "", "1"}) {
        order.setSent(true);
        order.setFieldByName("sent", other);
        EXPECT_FALSE(order.getSent()) << other;
    }
}

// Searching

TEST_F(OrderTest, searchingLooksIntoFiveFieldsWhateverTheCase)
{
    order.setDate("01/03/24");
    order.setTitle("Garden Bench");
    order.setStatus("Quoted");
    order.setType("Estimate");
    order.setOrderNum("INV-42");
    for (const char* text : {"01/03", "gARDEN", "bench", "QUOTED", "estim", "inv-4"})
        EXPECT_TRUE(order.contains(text)) << text;
    for (const char* text : {"Garden  Bench", "bench quoted", "43"})
        EXPECT_FALSE(order.contains(text)) << text;
}

TEST_F(OrderTest, searchingDoesNotLookIntoOtherFields)
{
    Contact ann;
    ann.setName("needle");
    order.setContact(&ann);
    order.setDescription("needle");
    order.setPaymentMethod("needle");
    order.setTransactionRef("needle");
    order.setValue("needle");
    order.setLastRepeatDate("needle");
    EXPECT_FALSE(order.contains("needle"));
}

TEST_F(OrderTest, onlyTheStatusCompleteColoursTheRow)
{
    for (const char* status : {"Enquiry", "complete", "Complete ", "Completed", ""}) {
        order.setStatus(status);
        EXPECT_EQ(order.getColour(), 0) << status;
    }
    order.setStatus("Complete");
    EXPECT_EQ(order.getColour(), 1);
}

// Payments

TEST_F(OrderTest, paymentsAreSummedInTheirOrderAndUnreadableOnesCountAsNothing)
{
    pay(order, "1,000.00");
    pay(order, "abc");
    pay(order, "");
    pay(order, "-0.50");
    EXPECT_EQ(order.getTotalPayments(), 999.5f);
}

TEST_F(OrderTest, paymentsAreSummedInSinglePrecision)
{
    // Around eight million single precision knows halves only: 0.20 is lost, 0.30 becomes a half.
    pay(order, "8,000,000.00");
    pay(order, "0.20");
    EXPECT_EQ(order.getTotalPayments(), 8000000.0f);
    pay(order, "0.30");
    EXPECT_EQ(order.getTotalPayments(), 8000000.5f);
}

TEST_F(OrderTest, withoutPaymentsTheirSumIsNothing)
{
    EXPECT_EQ(order.getTotalPayments(), 0.0f);
    EXPECT_EQ(order.getPayments(), "");
}

TEST_F(OrderTest, paymentsReadAsOneLineEach)
{
    memory.setText(settings::currency, "\xc2\xa3");
    pay(order, "10.00", "01/03/24", "cash");
    pay(order, "5.50", "02/03/24", "web");
    EXPECT_EQ(order.getPayments(),
        "payment: \xc2\xa3"
        "10.00 made by cash on: 01/03/24\npayment: \xc2\xa3"
        "5.50 made by web on: 02/03/24\n");
}

TEST_F(OrderTest, removingAPaymentTakesTheOneAtThatPlace)
{
    Payment& first = pay(order, "1.00");
    pay(order, "2.00");
    Payment& third = pay(order, "3.00");
    order.removePaymentAtIndex(1);
    EXPECT_EQ(order.getPaymentArray(), (std::vector<Payment*> {&first, &third}));
    order.removePaymentAtIndex(2);
    order.removePaymentAtIndex(-1);
    EXPECT_EQ(order.getPaymentArray().size(), 2u);
}

// Totals of the record

TEST_F(OrderTest, theTotalLeavesTaxOutUnlessPricesAreExclusive)
{
    order.setValue("100.00");
    order.setShipping("10.00");
    order.setTax("22.00");
    EXPECT_EQ(order.getTotalDue(), "110.00");
    for (const char* inclusive : {"0", "", "2", "YES", "01"}) {
        memory.setText(settings::pricesTaxInclusive, inclusive);
        EXPECT_EQ(order.getTotalDue(), "110.00") << inclusive;
    }
    memory.setText(settings::pricesTaxInclusive, "1");
    EXPECT_EQ(order.getTotalDue(), "132.00");
    EXPECT_EQ(order.getFieldByName("totaldue"), "132.00");
}

TEST_F(OrderTest, theTotalOfAPurchaseOrderAlwaysCountsTax)
{
    order.setType("Purchase Order");
    order.setValue("100.00");
    order.setShipping("10.00");
    order.setTax("22.00");
    EXPECT_EQ(order.getTotalDue(), "132.00");
    memory.setText(settings::pricesTaxInclusive, "0");
    EXPECT_EQ(order.getTotalDue(), "132.00");
}

TEST_F(OrderTest, theKindPurchaseOrderIsSpelledExactly)
{
    order.setValue("1.00");
    order.setTax("1.00");
    for (const char* type : {"purchase order", "Purchase order", "PurchaseOrder", "Estimate"}) {
        order.setType(type);
        EXPECT_EQ(order.getTotalDue(), "1.00") << type;
    }
}

TEST_F(OrderTest, theTotalIsBeforePaymentsAndTheBalanceAfter)
{
    order.setValue("1,100.00");
    pay(order, "100.00");
    EXPECT_EQ(order.getTotalDue(), "1,100.00");
    EXPECT_EQ(order.getBalanceRemaining(), "1,000.00");
    EXPECT_EQ(order.getFieldByName("balanceremaining"), "1,000.00");
}

TEST_F(OrderTest, aTotalBelowNothingIsNothing)
{
    order.setValue("-5.00");
    EXPECT_EQ(order.getTotalDue(), "0.00");
    EXPECT_EQ(order.getBalanceRemaining(), "0.00");
}

TEST_F(OrderTest, paymentsBeyondTheTotalLeaveNothing)
{
    order.setValue("10.00");
    pay(order, "10.01");
    EXPECT_EQ(order.getBalanceRemaining(), "0.00");
}

TEST_F(OrderTest, theBalanceTakesThePaymentsFromTheTotalBeforeThatIsHeldAtNothing)
{
    // -5 and a repayment of 7: 2 remain. Held at nothing first it would be 7.
    order.setValue("-5.00");
    pay(order, "-7.00");
    EXPECT_EQ(order.getBalanceRemaining(), "2.00");
}

TEST_F(OrderTest, figuresThatDoNotReadCountAsNothing)
{
    order.setValue("ten");
    order.setShipping("5.00 extra");
    EXPECT_EQ(order.getTotalDue(), "0.00");
    order.setValue("10000000.01");
    EXPECT_EQ(order.getTotalDue(), "0.00");
    order.setValue("10000000");
    EXPECT_EQ(order.getTotalDue(), "10,000,000.00");
}

TEST_F(OrderTest, depositAndStoredBalanceTakeNoPartInTheTotal)
{
    order.setValue("50.00");
    order.setDeposit("20.00");
    order.setBalance("1.00");
    order.setValueWithTax("99.00");
    EXPECT_EQ(order.getTotalDue(), "50.00");
    EXPECT_EQ(order.getBalanceRemaining(), "50.00");
}

TEST_F(OrderTest, figuresAreReadAndWrittenInTheUsersLocale)
{
    const MoneyFormatter german("de_DE");
    const OrderRules germanRules {memory, german};
    Order bestellung(germanRules);
    bestellung.setValue("1.234,50");
    bestellung.setShipping("0,50");
    EXPECT_EQ(bestellung.getTotalDue(), "1.235,00");
}

// The discount in words

TEST_F(OrderTest, withoutADiscountThereAreNoWordsForIt)
{
    order.setDiscount("10");
    EXPECT_EQ(order.getFieldByName("discountdescription"), "");
}

TEST_F(OrderTest, aPercentageReadsWithItsSignAndATrailingBlank)
{
    order.setApplyDiscount(true);
    order.setDiscount("10");
    EXPECT_EQ(order.getFieldByName("discountdescription"), "discount: -10% ");
}

TEST_F(OrderTest, aFlatDiscountReadsWithTheCurrency)
{
    memory.setText(settings::currency, "$");
    order.setApplyDiscount(true);
    order.setDiscountIsPercentage(false);
    order.setDiscount("7.50");
    EXPECT_EQ(order.getFieldByName("discountdescription"), "discount: -$7.50 ");
}

} // namespace
