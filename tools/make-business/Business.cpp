#include "Business.h"

#include "Chance.h"
#include "People.h"
#include "Stock.h"
#include "Vocabulary.h"

#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistWriter.h"

#include <algorithm>
#include <array>

namespace {

constexpr int ordersAtScaleOne = 400;
constexpr int contactsAtScaleOne = 200;
constexpr int itemsAtScaleOne = 80;
constexpr int tasksAtScaleOne = 60;
constexpr int goalsAtScaleOne = 6;
const QDate lastDay(2026, 11, 20);
constexpr int daysOfBusiness = 730;

/// Lines and payments of ten orders in a row: three lines and 1.2 payments an order.
constexpr std::array linesPerOrder {3, 2, 4, 1, 5, 3, 2, 4, 1, 5};
constexpr std::array paymentsPerOrder {1, 0, 2, 1, 1, 3, 0, 1, 2, 1};

/// A record file that is written while its records are made: a large business never stands in memory as a whole.
class RecordWriter {
public:
    RecordWriter(const std::string& path, const char* key)
        : m_target(path)
        , m_writer([this](std::string_view bytes) { m_target.append(bytes); })
    {
        m_writer.openDict();
        m_writer.key(key);
        m_writer.openArray();
    }
    void append(const PlistValue& record) { m_writer.value(record); }
    Result<void> finish()
    {
        m_writer.closeArray();
        m_writer.closeDict();
        m_writer.finish();
        return m_target.commit();
    }

private:
    SafeFile m_target;
    PlistWriter m_writer;
};

struct Business {
    explicit Business(const std::string& folder)
        : orders(folder + "/orders.xml", "orders")
        , lines(folder + "/itemsordered.xml", "materials")
        , bills(folder + "/bills.xml", "bills")
        , tasks(folder + "/actions.xml", "actions")
        , goals(folder + "/goals.xml", "goals")
    {
    }

    RecordWriter orders;
    RecordWriter lines;
    RecordWriter bills;
    RecordWriter tasks;
    RecordWriter goals;
    int nextLine = 1;
    int nextBill = 1;
};

class Maker {
public:
    Maker(const std::string& folder, int scale)
        : m_scale(scale)
        , m_people(makePeople(m_chance, contactsAtScaleOne * scale))
        , m_stock(makeStock(m_chance, itemsAtScaleOne * scale, m_people.suppliers))
        , m_business(folder)
    {
    }

    void makeOrders()
    {
        for (int id = 1; id <= ordersAtScaleOne * m_scale; ++id)
            makeOrder(id);
    }

    void makeTasks();
    void makeGoals();

    const People& people() const { return m_people; }
    const Stock& stock() const { return m_stock; }
    Business& business() { return m_business; }

private:
    struct Figures {
        double subtotal = 0;
        double tax = 0;
        int pieces = 0;
    };

    static void put(PlistValue& record, const char* key, const std::string& text)
    {
        if (!text.empty())
            record.set(key, PlistValue(text));
    }
    std::string money(double amount) const { return m_money.write(amount); }
    static std::string day(const QDate& date) { return dates::write(date, dates::dayFirst); }

    QDate dateOf(int order) const
    {
        const int orders = ordersAtScaleOne * m_scale;
        return lastDay.addDays(-static_cast<qint64>(daysOfBusiness) * (orders - order) / orders);
    }

    void makeOrder(int id);
    Figures makeLines(int id, int contact, bool purchase, const QDate& date);
    PlistValue makeLine(int id, int contact, bool purchase, const QDate& date, const StockItem& item, int quantity);
    void addDiscount(PlistValue& order, int id, Figures& figures) const;
    void addPayments(PlistValue& order, int id, double total, const QDate& date);
    void addBill(PlistValue& order, double total, double tax, const QDate& date);
    std::string statusOf(int id, int payments, bool settled) const;

    int m_scale;
    Chance m_chance {20261120};
    MoneyFormatter m_money {"en_GB"};
    People m_people;
    Stock m_stock;
    Business m_business;
};

PlistValue Maker::makeLine(int id, int contact, bool purchase, const QDate& date, const StockItem& item, int quantity)
{
    const int pence = purchase ? item.costInPence : item.priceInPence;
    PlistValue line = PlistValue::makeDict();
    put(line, "id", std::to_string(m_business.nextLine++));
    put(line, "order", std::to_string(id));
    put(line, "product", std::to_string(item.id));
    put(line, "contact", std::to_string(contact));
    put(line, "item", item.name);
    put(line, "code", item.code);
    put(line, "variation", item.variation);
    put(line, "unit", item.unit);
    put(line, "dateadded", dates::write(date, dates::dayFirstLong));
    put(line, "qty", std::to_string(quantity));
    put(line, "cost", pounds(pence));
    put(line, "total", pounds(pence * quantity));
    put(line, "taxcode", item.taxCode);
    return line;
}

Maker::Figures Maker::makeLines(int id, int contact, bool purchase, const QDate& date)
{
    Figures figures;
    const int count = linesPerOrder[static_cast<std::size_t>(id % 10)];
    for (int i = 0; i < count; ++i) {
        const StockItem& item = m_chance.from(m_stock.list);
        const int quantity = item.priceInPence > 20000 ? 1 : m_chance.between(1, 6);
        const double total = (purchase ? item.costInPence : item.priceInPence) * quantity / 100.0;
        m_business.lines.append(makeLine(id, contact, purchase, date, item, quantity));
        figures.subtotal += total;
        figures.tax += item.taxCode == "S" ? total * 0.2 : 0;
        figures.pieces += quantity;
    }
    return figures;
}

void Maker::addDiscount(PlistValue& order, int id, Figures& figures) const
{
    const bool applies = id % 9 == 4;
    put(order, "applydiscount", applies ? "YES" : "NO");
    put(order, "discountispercentage", "YES");
    if (!applies)
        return;
    put(order, "discount", "10");
    figures.subtotal *= 0.9;
    figures.tax *= 0.9;
}

std::string Maker::statusOf(int id, int payments, bool settled) const
{
    const int age = ordersAtScaleOne * m_scale - id;
    const bool recent = age < 40 * m_scale;
    if (payments == 0)
        return !recent ? (id % 3 == 0 ? "Flagged" : "Quoted") : id % 2 == 0 ? "Enquiry" : "Ordered";
    if (!settled)
        return "Invoiced";
    return recent ? "Paid" : "Complete";
}

void Maker::addPayments(PlistValue& order, int id, double total, const QDate& date)
{
    const int count = paymentsPerOrder[static_cast<std::size_t>(id % 10)];
    const bool settled = count > 0 && id % 7 != 3;
    put(order, "status", statusOf(id, count, settled));
    if (count == 0)
        return;
    PlistValue payments = PlistValue::makeArray();
    double left = settled ? total : total / 2;
    for (int i = 0; i < count; ++i) {
        const double amount = i + 1 == count ? left : std::min(left, static_cast<double>(static_cast<int>(left / 2)));
        left -= amount;
        PlistValue payment = PlistValue::makeDict();
        payment.set("amount", PlistValue(money(amount)));
        payment.set("datepaid", PlistValue(day(std::min(date.addDays(3 + 6 * i), lastDay))));
        payment.set("paymentmethod", PlistValue(std::string(m_chance.from(vocabulary::paymentMethods))));
        payments.append(std::move(payment));
    }
    order.set("paymentarray", std::move(payments));
    put(order, "balancepaid", day(std::min(date.addDays(3 + 6 * (count - 1)), lastDay)));
}

void Maker::addBill(PlistValue& order, double total, double tax, const QDate& date)
{
    const QDate paid = std::min(date.addDays(20), lastDay);
    PlistValue bill = PlistValue::makeDict();
    put(bill, "id", std::to_string(m_business.nextBill));
    put(bill, "number", "S" + std::to_string(4000 + m_business.nextBill));
    put(bill, "name", order.find("title")->asText());
    put(bill, "category", "Stock");
    put(bill, "datepaid", day(paid));
    put(bill, "amount", money(total));
    put(bill, "net", money(total - tax));
    put(bill, "vat", money(tax));
    order.set("bill", PlistValue(std::to_string(m_business.nextBill++)));
    m_business.bills.append(std::move(bill));
}

void Maker::makeOrder(int id)
{
    const bool purchase = id % 20 == 6;
    const QDate date = dateOf(id);
    const int contact = m_chance.from(purchase ? m_people.suppliers : m_people.customers);
    PlistValue order = PlistValue::makeDict();
    put(order, "id", std::to_string(id));
    put(order, "contact", std::to_string(contact));
    put(order, "contact2", m_chance.oneIn(12) ? std::to_string(m_chance.from(m_people.customers)) : "0");
    put(order, "bill", "0");
    put(order, "newcustomer", id % 3 == 0 ? "1" : "2");
    put(order, "includeBOM", "YES");
    put(order, "sent", id % 4 == 0 ? "NO" : "YES");
    put(order, "stockadded", "NO");
    const bool repeats = id % 50 == 10;
    put(order, "repeats", repeats ? "YES" : "NO");
    put(order, "repeatfrequency", "month");
    put(order, "lastrepeatdate", repeats ? day(lastDay.addDays(-10)) : "");
    put(order, "date", day(date));
    put(order, "ordernum", "INV" + std::to_string(id));
    put(order, "title", purchase ? "Stock order" : std::string(m_chance.from(vocabulary::orderTitles)));
    put(order, "description", std::string(m_chance.from(vocabulary::descriptions)));
    put(order, "type", purchase ? "Purchase Order" : id % 10 == 1 ? "Estimate" : "Customer");
    put(order, "paymentmethod", "Bank transfer");

    Figures figures = makeLines(id, contact, purchase, date);
    addDiscount(order, id, figures);
    const double shipping = purchase || id % 3 != 0 ? 0 : 12;
    const double tax = figures.tax + (purchase ? 0 : shipping * 0.2);
    const double total = figures.subtotal + shipping + tax;
    put(order, "value", money(figures.subtotal));
    put(order, "net", money(figures.subtotal));
    put(order, "shipping", money(shipping));
    put(order, "tax", money(tax));
    put(order, "valuewithtax", money(figures.subtotal + shipping));
    put(order, "balance", money(total));
    put(order, "totalitemspurchased", std::to_string(figures.pieces));
    addPayments(order, id, total, date);
    if (purchase) {
        put(order, "status", "Ordered");
        addBill(order, total, tax, date);
    }
    m_business.orders.append(std::move(order));
}

void Maker::makeTasks()
{
    for (int id = 1; id <= tasksAtScaleOne * m_scale; ++id) {
        const QDate due = lastDay.addDays(id % 30 - 12);
        const bool complete = id % 3 == 0;
        PlistValue task = PlistValue::makeDict();
        const auto always = [&](const char* key, const std::string& text) { task.set(key, PlistValue(text)); };
        always("id", std::to_string(id));
        always("title", std::string(m_chance.from(vocabulary::tasks)));
        always("details", id % 5 == 0 ? "See the notes in the order.\nAsk for Elsie." : "");
        always("type", "Task");
        always("startdate", day(due.addDays(-2)));
        always("starttime", "09:00");
        always("enddate", day(due));
        always("endtime", "17:00");
        always("rate", "");
        always("totaltime", "");
        always("totaltimeunits", "Hours");
        always("totalcharge", "");
        always("complete", complete ? "YES" : "NO");
        always("alarm", "NO");
        always("alarmacknowledged", "NO");
        always("order", id % 4 == 0 ? std::to_string(m_chance.between(1, ordersAtScaleOne * m_scale)) : "0");
        always("material", "0");
        m_business.tasks.append(std::move(task));
    }
}

void Maker::makeGoals()
{
    for (int id = 1; id <= goalsAtScaleOne * m_scale; ++id) {
        PlistValue goal = PlistValue::makeDict();
        goal.set("id", PlistValue(std::to_string(id)));
        goal.set("name", PlistValue(std::string(vocabulary::goals[static_cast<std::size_t>(id - 1) % vocabulary::goals.size()])));
        goal.set("details", PlistValue(std::string("By the end of the year.")));
        PlistValue tasks = PlistValue::makeArray();
        for (int i = 0; i < 3; ++i)
            tasks.append(PlistValue(std::to_string(m_chance.between(1, tasksAtScaleOne * m_scale))));
        goal.set("actions", std::move(tasks));
        m_business.goals.append(std::move(goal));
    }
}

Result<void> writeRecords(const std::string& folder, const char* file, const char* key, const PlistValue& records)
{
    RecordWriter writer(folder + "/" + file, key);
    for (const PlistValue& record : records.array())
        writer.append(record);
    return writer.finish();
}

PlistValue textDict(std::initializer_list<std::pair<const char*, const char*>> entries)
{
    PlistValue dict = PlistValue::makeDict();
    for (const auto& [key, text] : entries)
        dict.set(key, PlistValue(std::string(text)));
    return dict;
}

PlistValue settings()
{
    PlistValue values = textDict({{"VendaroCurrency", "£"}, {"VendaroCurrencyCode", "GBP"}, {"VendaroDateFormat", "0"},
        {"VendaroDefaultSort", "0"}, {"VendaroCodeSort", "0"}, {"VendaroHandlesTax", "YES"}, {"VendaroPricesTaxInclusive", "1"},
        {"VendaroTaxStatement", "VAT"}, {"VendaroTaxShipping", "S"}, {"VendaroOrderPrefix", "INV"}, {"VendaroContactPrefix", "C"},
        {"VendaroItemPrefix", ""}, {"VendaroStockWarn", "0"}, {"VendaroTermOrder", "Order"}, {"VendaroTermOrders", "Orders"},
        {"VendaroTermItem", "Item"}, {"VendaroTermItems", "Items"}, {"VendaroTermBOM", "Items ordered"},
        {"VendaroStatuses", "Enquiry\nQuoted\nOrdered\nInvoiced\nPaid\nFlagged\nComplete"}, {"completeStatus", "Complete"}});
    PlistValue rates = PlistValue::makeArray();
    rates.append(textDict({{"code", "S"}, {"description", "standard"}, {"rate", "20"}}));
    rates.append(textDict({{"code", "L"}, {"description", "lower"}, {"rate", "5"}}));
    rates.append(textDict({{"code", "Z"}, {"description", "zero"}, {"rate", "0"}}));
    rates.append(textDict({{"code", "E"}, {"description", "exempt"}, {"rate", "0"}}));
    values.set("VendaroTaxRates", std::move(rates));
    PlistValue colours = PlistValue::makeArray();
    const auto colour = [&](const char* status, const char* red, const char* green, const char* blue) {
        colours.append(textDict({{"Status", status}, {"redComponent", red}, {"greenComponent", green}, {"blueComponent", blue},
            {"alphaComponent", "1.000000"}}));
    };
    colour("Quoted", "0.560000", "0.400000", "0.780000");
    colour("Ordered", "0.850000", "0.600000", "0.080000");
    colour("Invoiced", "0.150000", "0.540000", "0.800000");
    colour("Paid", "0.160000", "0.590000", "0.400000");
    colour("Flagged", "0.820000", "0.250000", "0.220000");
    values.set("VendaroFlagColours", std::move(colours));
    return values;
}

} // namespace

Result<void> writeBusiness(const std::string& folder, const std::string& settingsPath, int scale)
{
    Maker maker(folder, scale);
    maker.makeOrders();
    maker.makeTasks();
    maker.makeGoals();
    Business& business = maker.business();
    const PlistValue info = textDict({{"dbName", "Sample Business"}, {"VendaroCurrency", "£"}, {"VendaroCurrencyCode", "GBP"},
        {"VendaroOrderPrefix", "INV"}, {"VendaroItemPrefix", ""}, {"VendaroContactPrefix", "C"}});
    const std::array results {
        writeRecords(folder, "contacts.xml", "contacts", maker.people().contacts),
        business.orders.finish(),
        writeRecords(folder, "items.xml", "products", maker.stock().items),
        business.lines.finish(),
        business.bills.finish(),
        business.tasks.finish(),
        business.goals.finish(),
        writeFileSafely(folder + "/info.plist", plist::write(info)),
        writeFileSafely(settingsPath, plist::write(settings())),
    };
    const auto failed = std::find_if(results.begin(), results.end(), [](const Result<void>& result) { return !result.ok(); });
    return failed == results.end() ? Result<void>() : *failed;
}
