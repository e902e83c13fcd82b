#include "support/Business.h"

namespace {

/// The payments of the one order in the file, as somebody else's program may have left them.
class OrderFileTest : public Business {
protected:
    /// A saved order whose list of payments is replaced by these lines, which stand at the list's own indent.
    QByteArray fileWithPayments(const QByteArray& entries)
    {
        begin();
        payment(order("Bench"), "10.00");
        quit();
        QByteArray file = readFile("orders.xml");
        const QByteArray opening = "<key>paymentarray</key>\n\t\t\t<array>\n";
        const qsizetype from = file.indexOf(opening) + opening.size();
        const qsizetype to = file.indexOf("\t\t\t</array>", from);
        EXPECT_GE(from, opening.size());
        EXPECT_GT(to, from);
        file.replace(from, to - from, entries);
        writeFile("orders.xml", file);
        return file;
    }
    static QByteArray entry(const QByteArray& lines) { return "\t\t\t\t<dict>\n" + lines + "\t\t\t\t</dict>\n"; }
    static QByteArray text(const QByteArray& key, const QByteArray& value)
    {
        return "\t\t\t\t\t<key>" + key + "</key>\n\t\t\t\t\t<string>" + value + "</string>\n";
    }
    static QByteArray known(const QByteArray& amount)
    {
        return text("amount", amount) + text("datepaid", "01/03/24") + text("paymentmethod", "Cash");
    }
    const std::vector<Payment*>& payments() { return orders().at(0).getPaymentArray(); }
};

TEST_F(OrderFileTest, whatAPaymentDoesNotKnowIsWrittenAgainAsItStood)
{
    const QByteArray strange = "\t\t\t\t\t<key>bank</key>\n\t\t\t\t\t<dict>\n\t\t\t\t\t\t<key>iban</key>\n\t\t\t\t\t\t<string>DE &amp; "
                               "44</string>\n\t\t\t\t\t</dict>\n";
    const QByteArray list = "\t\t\t\t\t<key>zeros</key>\n\t\t\t\t\t<array>\n\t\t\t\t\t\t<integer>0</integer>\n\t\t\t\t\t</array>\n";
    const QByteArray before = fileWithPayments(entry(known("10.00"))
        + entry(
            text("amount", "5.00") + strange + text("datepaid", "02/03/24") + text("note", "by hand") + text("paymentmethod", "") + list));
    start();
    ASSERT_EQ(payments().size(), 2u);
    EXPECT_EQ(payments()[1]->getAmount(), "5.00");
    EXPECT_EQ(payments()[1]->getDatePaid(), "02/03/24");

    quit();

    EXPECT_EQ(readFile("orders.xml"), before);
}

TEST_F(OrderFileTest, aKnownKeyWithoutATextIsKeptUntilThereIsOne)
{
    const QByteArray noText = "\t\t\t\t\t<key>amount</key>\n\t\t\t\t\t<array>\n\t\t\t\t\t\t<string>10.00</string>\n\t\t\t\t\t</array>\n";
    const QByteArray rest = text("datepaid", "01/03/24") + text("paymentmethod", "Cash");
    const QByteArray before = fileWithPayments(entry(noText + rest));
    restart();
    EXPECT_EQ(payments()[0]->getAmount(), "");
    EXPECT_EQ(readFile("orders.xml"), before);

    payments()[0]->setAmount("12.00");
    quit();

    QByteArray after = before;
    EXPECT_EQ(readFile("orders.xml"), after.replace(noText, text("amount", "12.00")));
}

TEST_F(OrderFileTest, whatIsNoPaymentKeepsItsPlaceAmongThem)
{
    const QByteArray foreign = "\t\t\t\t<string>a &lt;note&gt;</string>\n";
    const QByteArray number = "\t\t\t\t<integer>7</integer>\n";
    const QByteArray before =
        fileWithPayments(foreign + number + entry(known("10.00")) + number + entry(known("5.00")) + "\t\t\t\t<array/>\n");
    start();
    ASSERT_EQ(payments().size(), 2u);
    EXPECT_EQ(app().getPaymentManager().getCount(), 2);

    quit();

    EXPECT_EQ(readFile("orders.xml"), before);
}

TEST_F(OrderFileTest, aListWithoutAnyPaymentIsKeptToo)
{
    const QByteArray before = fileWithPayments("\t\t\t\t<string>none yet</string>\n");
    start();
    EXPECT_TRUE(payments().empty());

    quit();

    EXPECT_EQ(readFile("orders.xml"), before);
}

TEST_F(OrderFileTest, whatIsNoPaymentOutlivesThePaymentsBeforeIt)
{
    const QByteArray number = "\t\t\t\t<integer>7</integer>\n";
    const QByteArray before = fileWithPayments(entry(known("10.00")) + entry(known("5.00")) + number + entry(known("2.00")));
    start();
    orders().at(0).removePaymentAtIndex(0);
    orders().at(0).removePaymentAtIndex(0);

    quit();

    QByteArray after = before;
    after.replace(entry(known("10.00")), "").replace(entry(known("5.00")), "").replace(number, "");
    after.replace(entry(known("2.00")), entry(known("2.00")) + number);
    EXPECT_EQ(readFile("orders.xml"), after);
}

} // namespace
