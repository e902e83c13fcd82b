// Runs every text case in tests/cases/stationery; what a case may say stands in the README there.
#include "Paperwork.h"

#include <algorithm>

namespace {

const QString stationeryCases = QStringLiteral(TEST_DATA_DIR "/cases/stationery");

struct StationeryCase {
    QStringList given;
    QString text;
    QString expected;
};

StationeryCase readStationeryCase(const std::string& name)
{
    QFile file(stationeryCases + '/' + QString::fromStdString(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + name);
    QStringList parts {QString()};
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line == "---")
            parts += QString();
        else
            parts.back() += line + '\n';
    }
    if (parts.size() != 3)
        throw std::runtime_error(name + " does not have three parts");
    // Each part ends before the line end that stands before the next one.
    parts[1].chop(1);
    parts[2].chop(2);
    return {parts[0].split('\n', Qt::SkipEmptyParts), parts[1], parts[2]};
}

std::vector<std::string> stationeryCaseNames()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(stationeryCases).entryList({"*.txt"}, QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

class StationeryCases : public Paperwork, public testing::WithParamInterface<std::string> {
protected:
    void carryOut(const QString& line)
    {
        const QString what = line.section(' ', 0, 0);
        const std::string name = line.section(' ', 1, 1).toStdString();
        const std::string value = line.section(' ', 2).replace("\\n", "\n").toStdString();
        if (what == "order")
            changeOrder(name, value);
        else if (what == "contact" || what == "second" || what == "given")
            changeContact(what, name, value);
        else if (what == "setting")
            settings.setText(name, value);
        else if (what == "payment")
            pay(line.section(' ', 1).split(' '));
        else if (what == "row")
            addRow(line.section(' ', 1).split('|'));
        else
            ADD_FAILURE() << "no such instruction: " << line.toStdString();
    }

    bool hasOrder = true;
    bool hasGiven = false;

private:
    void changeOrder(const std::string& name, const std::string& value)
    {
        if (name == "none")
            hasOrder = false;
        else if (name == "without-lines")
            order.setIncludeBOM(false);
        else if (name == "applydiscount")
            order.setApplyDiscount(value == "yes");
        else if (name == "discount")
            order.setDiscount(value);
        else if (name == "taxRate")
            order.setTaxRate(value);
        else if (name == "valueWithTax")
            order.setValueWithTax(value);
        else
            EXPECT_TRUE(order.setFieldByName(name, value)) << name;
    }

    void changeContact(const QString& which, const std::string& name, const std::string& value)
    {
        Contact& person = which == "contact" ? contact : which == "second" ? second : given;
        if (which == "contact")
            order.setContact(&contact);
        else if (which == "second")
            order.setContact2(&second);
        else
            hasGiven = true;
        if (name == "companyname")
            person.setCompanyName(value);
        else
            EXPECT_TRUE(person.setFieldByName(name, value)) << name;
    }

    void pay(const QStringList& words)
    {
        auto payment = std::make_unique<Payment>(settings);
        payment->setAmount(words.value(0).toStdString());
        payment->setPaymentMethod(words.value(1).toStdString());
        payment->setDatePaid(words.value(2).toStdString());
        order.addPayment(*payment);
        payments.push_back(std::move(payment));
    }

    void addRow(const QStringList& cells)
    {
        if (!m_ownRows)
            rows.cells.clear();
        m_ownRows = true;
        rows.cells.push_back({cells.value(0).toStdString(), cells.value(1).toStdString()});
    }

    bool m_ownRows = false;

protected:
    Contact given;
    std::vector<std::unique_ptr<Payment>> payments;
};

TEST_P(StationeryCases, giveTheTextTheyName)
{
    const StationeryCase test = readStationeryCase(GetParam());
    for (const QString& line : test.given) {
        if (!line.startsWith('#'))
            carryOut(line);
    }
    writeTemplate(test.text);
    std::string text = filled(hasOrder ? &order : nullptr, hasGiven ? &given : nullptr);
    std::replace(text.begin(), text.end(), '\x1f', '|');
    EXPECT_EQ(text, test.expected.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Text, StationeryCases, testing::ValuesIn(stationeryCaseNames()), [](const auto& test) {
    std::string name = test.param.substr(0, test.param.size() - 4);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

} // namespace
