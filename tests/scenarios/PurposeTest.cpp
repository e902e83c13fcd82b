// What the program is for, from one end to the other: an empty home, one sale, and all of it there the next morning. The
// files are judged by python's own reader of property lists.
#include "support/Business.h"

#include <QProcess>

namespace {

class PurposeTest : public Business {
protected:
    /// Runs a python program over the files of the database, whose lists it finds by the files' names; expects silence.
    void expectPython(const char* program)
    {
        const QByteArray preamble = "import plistlib, os, sys\n"
                                    "folder = sys.argv[1]\n"
                                    "def load(name):\n"
                                    "    with open(os.path.join(folder, name), 'rb') as file:\n"
                                    "        return plistlib.load(file)\n";
        QProcess python;
        python.setProcessChannelMode(QProcess::MergedChannels);
        python.start("python3", {"-c", QString::fromUtf8(preamble + program), databaseFolder()});
        ASSERT_TRUE(python.waitForFinished(60'000));
        EXPECT_EQ(python.readAll().toStdString(), "");
        EXPECT_EQ(python.exitCode(), 0);
    }
    static void type(TextField& field, const char* text) { field.edit(QString::fromUtf8(text)); }
    static void choose(ChoiceField& field, const char* title) { field.edit(static_cast<int>(field.titles().indexOf(title))); }

    void makeContact()
    {
        contacts().create();
        type(contacts().form.name, "Zo\xc3\xab \"Z\" Lee & Co <x>");
        type(contacts().form.add1, "1 High Street");
        type(contacts().form.postcode, "OL1 1AA");
        contacts().form.save.trigger();
    }
    void makeItem(const char* name, const char* price, const char* qty)
    {
        items().create();
        type(items().form.item, name);
        type(items().form.price, price);
        type(items().form.qty, qty);
        choose(items().form.taxcode, "S");
        items().form.save.trigger();
    }
    void pickFromList(const char* word)
    {
        qvPicker& picker = app().getPicker();
        picker.form.search.edit(word);
        ASSERT_EQ(picker.numberOfRows(), 1) << word;
        picker.selectRow(0);
        picker.chooseSelected();
    }
    void makeOrder()
    {
        OrderForm& form = orders().form;
        orders().create();
        type(form.orderTitle, "Tea set");
        form.tab.edit(OrderForm::contactTab);
        form.pickContact.trigger();
        pickFromList("lee");
        form.tab.edit(OrderForm::orderTab);
        form.pickMaterial.trigger();
        pickFromList("mug");
        form.pickMaterial.trigger();
        pickFromList("teapot");
        ASSERT_TRUE(lines().setObjectValue("qty", 0, "6"));
        type(form.shipping, "5");
        form.calculateTax.trigger();
    }
    void payFifty()
    {
        orders().form.tab.edit(OrderForm::paymentsTab);
        orders().form.tender.trigger();
        choose(orders().tender.form.paymentMethod, "Cash");
        type(orders().tender.form.amountTendered, "50");
        orders().tender.form.ok.trigger();
    }
};

TEST_F(PurposeTest, aSaleIsMadePaidSavedAndFoundAgain)
{
    // Given a home that never saw the program, and a person who adds 20 percent tax and taxes shipping.
    begin(taxSettings());
    makeContact();
    makeItem("Mug", "4.50", "10");
    makeItem("Teapot", "21.00", "3");

    // When six mugs and a teapot are sold with 5.00 shipping, and 50.00 is paid.
    makeOrder();
    // Then 27.00 and 21.00 come to 48.00; the tax is 9.60 and 1.00 for the shipping; 63.60 are due.
    OrderForm& form = orders().form;
    EXPECT_EQ(form.subtotal.text(), "48.00");
    EXPECT_EQ(form.taxAmount.text(), "10.60");
    EXPECT_EQ(form.net.text(), "48.00");
    EXPECT_EQ(form.balanceRemaining.text(), "63.60");
    payFifty();
    EXPECT_EQ(form.balanceRemaining.text(), "13.60");
    form.save.trigger();
    EXPECT_EQ(items().at(0).getQty(), "4");
    EXPECT_EQ(items().at(1).getQty(), "2");
    EXPECT_TRUE(alerts.asked().empty()) << alerts.texts().join('\n').toStdString();

    // Then the files say so too, to somebody else's reader.
    quit();
    EXPECT_FALSE(hasFile("lock.xml"));
    expectPython(R"(
contact, = load('contacts.xml')['contacts']
assert contact['name'] == 'Zo\u00eb "Z" Lee & Co <x>', contact
assert contact['kind'] == 'Individual' and contact['postcode'] == 'OL1 1AA', contact
mug, teapot = load('items.xml')['products']
assert (mug['item'], mug['qty'], teapot['item'], teapot['qty']) == ('Mug', '4', 'Teapot', '2'), (mug, teapot)
order, = load('orders.xml')['orders']
expected = {'title': 'Tea set', 'value': '48.00', 'shipping': '5.00', 'tax': '10.60', 'net': '48.00', 'balance': '63.60',
            'valuewithtax': '53.00', 'totalitemspurchased': '7', 'date': '01/03/24', 'ordernum': order['id'],
            'contact': contact['id'], 'status': 'Enquiry', 'type': 'Customer', 'balancepaid': '01/03/24'}
for key, value in expected.items():
    assert str(order[key]) == str(value), (key, order[key], value)
payment, = order['paymentarray']
assert payment == {'amount': '50.00', 'datepaid': '01/03/24', 'paymentmethod': 'Cash'}, payment
first, second = load('itemsordered.xml')['materials']
assert (first['item'], first['qty'], first['cost'], first['total']) == ('Mug', '6', '4.50', '27.00'), first
assert (second['item'], second['qty'], second['total'], second['taxcode']) == ('Teapot', '1', '21.00', 'S'), second
for line in (first, second):
    assert line['order'] == order['id'] and line['contact'] == contact['id'], line
assert first['product'] == mug['id'] and second['product'] == teapot['id']
)");

    // When the program starts again the next morning.
    clock.moment = clock.moment.addDays(1);
    start();
    ASSERT_EQ(orders().getCount(), 1);
    Order& sale = orders().at(0);
    orders().selectRow(0);
    orders().edit();
    // Then everything is where it was left.
    EXPECT_EQ(orders().form.contactName.text(), QString::fromUtf8("Zo\xc3\xab \"Z\" Lee & Co <x>"));
    EXPECT_EQ(orders().form.subtotal.text(), "48.00");
    EXPECT_EQ(orders().form.balanceRemaining.text(), "13.60");
    EXPECT_EQ(shown(lines(), "item"), (std::vector<std::string> {"Mug", "Teapot"}));
    EXPECT_EQ(sale.getTotalDue(), "63.60");
    EXPECT_EQ(sale.getFieldByName("newcustomer"), "New customer");
    EXPECT_EQ(app().getPaymentManager().getCount(), 1);
    EXPECT_FALSE(app().splashShown());

    // And the rest can be paid.
    orders().form.tenderFullAmount.trigger();
    EXPECT_EQ(sale.getBalanceRemaining(), "0.00");
    EXPECT_EQ(sale.getPaymentArray().back()->getDatePaid(), "02/03/24");
}

TEST_F(PurposeTest, startingAndQuittingAgainLeavesEveryByteAsItWas)
{
    begin(taxSettings());
    makeContact();
    makeItem("Mug", "4.50", "10");
    makeItem("Teapot", "21.00", "3");
    makeOrder();
    payFifty();
    orders().form.save.trigger();
    quit();
    const QStringList files {"contacts.xml", "items.xml", "orders.xml", "itemsordered.xml"};
    QList<QByteArray> before;
    for (const QString& file : files) {
        before += readFile(file);
        EXPECT_FALSE(before.back().isEmpty()) << file.toStdString();
    }
    start();
    quit();
    for (qsizetype i = 0; i < files.size(); ++i)
        EXPECT_EQ(readFile(files[i]).toStdString(), before[i].toStdString()) << files[i].toStdString();
}

TEST_F(PurposeTest, aProgramThatStopsWithoutQuittingKeepsWhatWasSaved)
{
    begin(taxSettings());
    makeContact();
    makeItem("Mug", "4.50", "10");
    makeItem("Teapot", "21.00", "3");
    makeOrder();
    orders().form.save.trigger();
    app().folder().drain();
    crash();
    EXPECT_TRUE(hasFile("lock.xml"));
    start();
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(contacts().getCount(), 1);
    ASSERT_EQ(orders().getCount(), 1);
    EXPECT_EQ(orders().at(0).getTotalDue(), "63.60");
    EXPECT_EQ(lines().getCount(), 2);
}

} // namespace
