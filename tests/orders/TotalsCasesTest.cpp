// Runs every text case in tests/cases/totals; what a case may say stands in the README there.
#include "support/Scenario.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>

#include <map>

namespace {

const QString totalsCases = QStringLiteral(TEST_DATA_DIR "/cases/totals");

struct TotalsCase {
    /// The words of each instruction, in order.
    std::vector<QStringList> given;
    /// Name and value, in order.
    std::vector<std::pair<QString, QString>> expected;
};

TotalsCase readCase(const QString& name)
{
    QFile file(totalsCases + '/' + name);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + name.toStdString());
    TotalsCase result;
    bool expecting = false;
    for (const QByteArray& raw : file.readAll().split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line == "---")
            expecting = true;
        else if (expecting)
            result.expected.emplace_back(line.section(' ', 0, 0), line.section(' ', 1));
        else
            result.given.push_back(line.split(' '));
    }
    return result;
}

std::vector<std::string> caseNames()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(totalsCases).entryList({"*.txt"}, QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

class TotalsCases : public Scenario, public testing::WithParamInterface<std::string> {
protected:
    void prepare(const TotalsCase& test)
    {
        QByteArray rates;
        QByteArray prices = "0";
        QByteArray shippingCode;
        for (const QStringList& words : test.given) {
            if (words[0] == "rate")
                rates += "<dict><key>code</key><string>" + words[1].toUtf8() + "</string><key>rate</key><string>" + words[2].toUtf8()
                    + "</string></dict>";
            else if (words[0] == "prices")
                prices = words[1] == "exclusive" ? "1" : "0";
            else if (words[0] == "shipping-code")
                shippingCode = words[1].toUtf8();
        }
        writeSettings("<key>VendaroTaxRates</key><array>" + rates
            + "</array><key>VendaroDateFormat</key><string>0</string><key>VendaroHandlesTax</key><string>YES</string>"
              "<key>VendaroPricesTaxInclusive</key><string>"
            + prices + "</string><key>VendaroTaxShipping</key><string>" + shippingCode + "</string>");
        start();
        app().getOrderManager().create();
        order = app().getOrderManager().currentItem();
        ASSERT_NE(order, nullptr);
    }

    void carryOut(const QStringList& words)
    {
        const QString& what = words[0];
        OrderForm& form = app().getOrderManager().form;
        if (what == "type")
            form.type.edit(static_cast<int>(form.type.titles().indexOf(words.mid(1).join(' '))));
        else if (what == "line")
            addLine(words);
        else if (what == "shipping")
            form.shipping.edit(words[1]);
        else if (what == "discount")
            giveDiscount(words[1], words[2] == "percent" ? 0 : 1);
        else if (what == "payment")
            pay(words[1]);
        else if (what == "do")
            run(words.mid(1).join(' '));
        else if (what != "rate" && what != "prices" && what != "shipping-code")
            ADD_FAILURE() << "no such instruction: " << words.join(' ').toStdString();
    }

    QString figure(const QString& name)
    {
        const OrderForm& form = app().getOrderManager().form;
        const std::map<QString, QString> figures {{"subtotal", form.subtotal.text()}, {"shipping", form.shipping.text()},
            {"tax", form.taxAmount.text()}, {"net", form.net.text()}, {"remaining", form.balanceRemaining.text()},
            {"balance", QString::fromStdString(order->getFieldByName("balance"))},
            {"count", QString::fromStdString(app().getBOMManager().countTotalItemsPurchased())},
            {"saved-with-shipping", QString::fromStdString(order->getFieldByName("valueWithTax"))},
            {"total-due", QString::fromStdString(order->getTotalDue())}};
        const auto found = figures.find(name);
        return found == figures.end() ? "no such figure" : found->second;
    }

    Order* order = nullptr;

private:
    void addLine(const QStringList& words)
    {
        // line <total> <tax code> [qty <quantity>] [ships <charge>]
        int product = 0;
        if (const auto at = words.indexOf("ships"); at > 0) {
            auto item = std::make_unique<Item>(app().getItemManager().rules());
            item->setShipping(words[at + 1].toStdString());
            product = app().getItemManager().add(std::move(item)).getID();
        }
        BOMManager& lines = app().getBOMManager();
        auto line = std::make_unique<Material>(lines.rules(), order->getID(), product);
        line->setTotal(words[1].toStdString());
        line->setTaxCode(words[2].toStdString());
        if (const auto at = words.indexOf("qty"); at > 0)
            line->setQty(words[at + 1].toStdString());
        lines.add(std::move(line));
    }

    void giveDiscount(const QString& amount, int choice)
    {
        OrderForm& form = app().getOrderManager().form;
        form.applyDiscount.edit(true);
        form.discountChoice.edit(choice);
        form.discount.edit(amount);
    }

    void pay(const QString& amount)
    {
        TextStore store;
        app().getPaymentManager().addPaymentTo(*order, {store.add(amount.toStdString()), {}, {}});
    }

    void run(const QString& what)
    {
        OrderManager& orders = app().getOrderManager();
        if (what == "calculate tax")
            orders.form.calculateTax.trigger();
        else if (what == "shipping from items")
            orders.form.shippingFromItems.trigger();
        else if (what == "subtotal")
            orders.totals.insertBOMTotal(*order);
        else if (what == "save")
            orders.form.save.trigger();
        else
            ADD_FAILURE() << "nothing to do for: " << what.toStdString();
    }
};

TEST_P(TotalsCases, giveTheFiguresTheyName)
{
    const TotalsCase test = readCase(QString::fromStdString(GetParam()));
    ASSERT_FALSE(test.expected.empty());
    prepare(test);
    for (const QStringList& words : test.given)
        carryOut(words);
    for (const auto& [name, value] : test.expected)
        EXPECT_EQ(figure(name).toStdString(), value.toStdString()) << name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Text, TotalsCases, testing::ValuesIn(caseNames()), [](const auto& test) {
    std::string name = test.param.substr(0, test.param.size() - 4);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

TEST(TotalsCasesAsText, agreeWithAnIndependentCalculation)
{
    QProcess python;
    python.setProcessChannelMode(QProcess::MergedChannels);
    python.start("python3", {totalsCases + "/check.py"});
    ASSERT_TRUE(python.waitForFinished(60'000));
    EXPECT_EQ(python.exitCode(), 0) << python.readAll().toStdString();
}

} // namespace
