#include "documents/StationeryTags.h"

#include "Paperwork.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

/// Everything that can stand behind "<contact", "<contact2", "<contact:" and "<contact2:".
const QStringList contactWords {"ref", "title", "salutation", "name", "surname", "firstname", "company", "jobtitle", "add1", "add2", "add3",
    "county", "postcode", "country", "comments", "phone", "mobile", "email"};

class StationeryTagsTest : public Paperwork {
protected:
    StationeryTagsTest()
    {
        fill(contact, "1");
        fill(second, "2");
    }
    static void fill(Contact& person, const std::string& mark)
    {
        person.setRef("ref" + mark);
        person.setTitle("title" + mark);
        person.setSalutation("salutation" + mark);
        person.setName("Ann" + mark + " Lee" + mark);
        person.setCompanyName("company" + mark);
        person.setJobTitle("jobtitle" + mark);
        person.setAdd1("add1" + mark);
        person.setAdd2("add2" + mark);
        person.setAdd3("add3" + mark);
        person.setCounty("county" + mark);
        person.setPostcode("postcode" + mark);
        person.setCountry("country" + mark);
        person.setComments("comments" + mark);
        person.setPhone("phone" + mark);
        person.setMobile("mobile" + mark);
        person.setEmail("email" + mark);
    }
    static QString valueOf(const QString& word, const QString& mark)
    {
        if (word == "name")
            return "Ann" + mark + " Lee" + mark;
        if (word == "firstname")
            return "Ann" + mark;
        if (word == "surname")
            return "Lee" + mark;
        return word + mark;
    }
    /// Every word with that prefix gives the contact's value, but for those named: they give the text named with them.
    void expectEach(const QString& prefix, const Order* with, const Contact* given, const QString& mark,
        const std::map<QString, QString>& exceptions = {})
    {
        for (const QString& word : contactWords) {
            const QString tag = prefix + word + '>';
            const auto exception = exceptions.find(word);
            const QString expected = exception != exceptions.end() ? exception->second : mark.isEmpty() ? QString() : valueOf(word, mark);
            // Something stands right behind the tag, so that no line or blank goes with it.
            EXPECT_EQ(filled("[" + tag + "]", with, given), ("[" + expected + "]").toStdString()) << tag.toStdString();
        }
    }
};

// The order's contact

TEST_F(StationeryTagsTest, anOrdersContactFillsItsTagsButNotTheFirstName)
{
    order.setContact(&contact);
    expectEach("<contact", &order, nullptr, "1", {{"firstname", ""}});
}

TEST_F(StationeryTagsTest, withColonTheFirstNameIsFilledToo)
{
    order.setContact(&contact);
    expectEach("<contact:", &order, nullptr, "1");
}

TEST_F(StationeryTagsTest, anOrderWithoutContactEmptiesThem)
{
    expectEach("<contact", &order, nullptr, "", {{"comments", "<contactcomments>"}});
    expectEach("<contact:", &order, nullptr, "");
}

TEST_F(StationeryTagsTest, aTagSpelledOneLetterShortIsEmptiedWithoutContact)
{
    EXPECT_EQ(filled("[<contactitle>]", &order), "[]");
}

TEST_F(StationeryTagsTest, aTagSpelledOneLetterShortStaysWithAContactAndWithoutAnOrder)
{
    order.setContact(&contact);
    EXPECT_EQ(filled("[<contactitle>]", &order), "[<contactitle>]");
    EXPECT_EQ(filled("[<contactitle>]", nullptr, &contact), "[<contactitle>]");
}

TEST_F(StationeryTagsTest, whatTheOrdersContactDoesNotFillTheGivenOneFills)
{
    order.setContact(&contact);
    EXPECT_EQ(filled("[<contactfirstname>] [<contactname>]", &order, &second), "[Ann2] [Ann1 Lee1]");
}

TEST_F(StationeryTagsTest, whatAnOrderWithoutContactLeavesTheGivenContactFills)
{
    EXPECT_EQ(
        filled("[<contacttitle>][<contactcomments>][<contact:firstname>][<contactname>]", &order, &second), "[title2][comments2][Ann2][]");
}

// The second contact

TEST_F(StationeryTagsTest, theSecondContactFillsItsTags)
{
    order.setContact(&contact);
    order.setContact2(&second);
    expectEach("<contact2", &order, nullptr, "2");
}

TEST_F(StationeryTagsTest, withColonTheSecondContactsFirstNameStays)
{
    order.setContact2(&second);
    expectEach("<contact2:", &order, nullptr, "2", {{"firstname", "<contact2:firstname>"}});
}

TEST_F(StationeryTagsTest, withoutASecondContactTheFirstFillsItsTags)
{
    order.setContact(&contact);
    expectEach("<contact2", &order, nullptr, "1");
    expectEach("<contact2:", &order, nullptr, "1", {{"firstname", "<contact2:firstname>"}});
}

TEST_F(StationeryTagsTest, withoutAnyContactTheSecondContactsTagsAreEmptiedButForTwo)
{
    expectEach("<contact2", &order, nullptr, "", {{"firstname", "<contact2firstname>"}, {"comments", "<contact2comments>"}});
    expectEach("<contact2:", &order, nullptr, "");
}

TEST_F(StationeryTagsTest, aGivenContactDoesNotFillTheSecondContactsTags)
{
    EXPECT_EQ(filled("[<contact2name>]", nullptr, &contact), "[<contact2name>]");
}

// The order

TEST_F(StationeryTagsTest, orderTagsGiveTheOrdersStoredTexts)
{
    const std::map<std::string, std::string> values {{"<balance>", "1.01"}, {"<balancepaid>", "01/02/24"}, {"<date>", "02/03/24"},
        {"<deposit>", "1.02"}, {"<depositpaid>", "03/04/24"}, {"<description>", "Some words"}, {"<ordernumber>", "INV7"}, {"<net>", "1.03"},
        {"<status>", "Complete"}, {"<shipping>", "1.04"}, {"<tax>", "1.05"}, {"<title>", "A title"}, {"<type>", "Estimate"},
        {"<subtotal>", "1.06"}, {"<total>", "1.07"}, {"<totalitemspurchased>", "12"}, {"<paymentmethod>", "cheque"}};
    order.setBalance("1.01");
    order.setBalancePaid("01/02/24");
    order.setDate("02/03/24");
    order.setDeposit("1.02");
    order.setDepositPaid("03/04/24");
    order.setDescription("Some words");
    order.setOrderNum("INV7");
    order.setNet("1.03");
    order.setStatus("Complete");
    order.setShipping("1.04");
    order.setTax("1.05");
    order.setTitle("A title");
    order.setType("Estimate");
    order.setValue("1.06");
    order.setValueWithTax("1.07");
    order.setTotalItemsPurchased("12");
    order.setPaymentMethod("cheque");
    for (const auto& [tag, value] : values)
        EXPECT_EQ(filled(QString::fromStdString("[" + tag + "]"), &order), "[" + value + "]") << tag;
}

TEST_F(StationeryTagsTest, twoAmountsAreWorkedOutWhenTheDocumentIsMade)
{
    settings.setText("VendaroPricesTaxInclusive", "0");
    order.setValue("10.00");
    order.setShipping("2.00");
    Payment payment(settings);
    payment.setAmount("5.00");
    order.addPayment(payment);
    EXPECT_EQ(filled("<totaldue> <balanceremaining>", &order), "12.00 7.00");
}

TEST_F(StationeryTagsTest, discountTagsAreTheRawFields)
{
    settings.setText("VendaroCurrency", "$");
    order.setApplyDiscount(true);
    order.setDiscount("10");
    EXPECT_EQ(filled("[<discount>][<applydiscount>][<discountispercentage>][<discountdescription>]", &order),
        "[10][yes][percent][discount: -10% ]");
    order.setDiscountIsPercentage(false);
    EXPECT_EQ(filled("[<discountispercentage>][<discountdescription>]", &order), "[flat][discount: -$10 ]");
    order.setApplyDiscount(false);
    EXPECT_EQ(filled("[<applydiscount>][<discountdescription>]", &order), "[no][]");
}

TEST_F(StationeryTagsTest, paymentsStandOneALine)
{
    settings.setText("VendaroCurrency", "$");
    Payment first(settings);
    first.setAmount("5.00");
    first.setPaymentMethod("cash");
    first.setDatePaid("01/02/24");
    Payment last(settings);
    last.setAmount("6.00");
    last.setPaymentMethod("card");
    last.setDatePaid("02/02/24");
    order.addPayment(first);
    order.addPayment(last);
    EXPECT_EQ(filled("[<payments>]", &order), "[payment: $5.00 made by cash on: 01/02/24\npayment: $6.00 made by card on: 02/02/24\n]");
}

TEST_F(StationeryTagsTest, fourSettingsHaveTags)
{
    settings.setText("VendaroCurrency", "€");
    settings.setText("VendaroCurrencyCode", "EUR");
    settings.setText("VendaroTaxRate", "19");
    settings.setText("VendaroTaxStatement", "VAT no. 1");
    EXPECT_EQ(filled("<currencysymbol> <currencycode> <taxrate> <taxdescription>", &order), "€ EUR 19 VAT no. 1");
}

TEST_F(StationeryTagsTest, aSettingThatIsNotSetIsLoggedAndCountsAsEmpty)
{
    EXPECT_EQ(filled("[<taxrate>]", &order), "[]");
    EXPECT_TRUE(logged("replaceAllOccurencesOf: passed nil as replace string for <taxrate>"));
}

TEST_F(StationeryTagsTest, withoutAnOrderItsTagsStay)
{
    for (const char* tag : {"<balance>", "<balancepaid>", "<balanceremaining>", "<totaldue>", "<date>", "<deposit>", "<depositpaid>",
             "<description>", "<discountdescription>", "<discount>", "<applydiscount>", "<discountispercentage>", "<ordernumber>", "<net>",
             "<status>", "<shipping>", "<tax>", "<title>", "<type>", "<subtotal>", "<total>", "<totalitemspurchased>", "<paymentmethod>",
             "<payments>", "<currencysymbol>", "<currencycode>", "<taxrate>", "<taxdescription>"}) {
        EXPECT_EQ(filled(tag, nullptr, &contact), tag);
    }
}

// The contact given directly

TEST_F(StationeryTagsTest, aGivenContactFillsEverything)
{
    expectEach("<contact", nullptr, &contact, "1");
    expectEach("<contact:", nullptr, &contact, "1");
    EXPECT_TRUE(logged("do we have contact Ann1 Lee1"));
}

TEST_F(StationeryTagsTest, withoutOneTheTagsAreEmptiedButForTheComments)
{
    expectEach("<contact", nullptr, nullptr, "", {{"comments", "<contactcomments>"}});
    expectEach("<contact:", nullptr, nullptr, "");
    EXPECT_TRUE(logged("do we have contact (null)"));
}

// What the order of the steps brings about

TEST_F(StationeryTagsTest, aValueWithALaterTagIsFilled)
{
    order.setContact(&contact);
    contact.setComments("Order <ordernumber> of <contact:firstname>");
    order.setOrderNum("INV7");
    EXPECT_EQ(filled("<contactcomments>", &order), "Order INV7 of Ann1");
}

TEST_F(StationeryTagsTest, aValueWithAnEarlierTagShowsIt)
{
    order.setContact(&contact);
    order.setTitle("For <contactref>");
    order.setOrderNum("<balance>");
    // The contact's own tags come round once more for the contact given directly, and empty.
    EXPECT_EQ(filled("<title>/<ordernumber>", &order), "For /<balance>");
}

} // namespace
