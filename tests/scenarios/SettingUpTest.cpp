// A person sets up a business in the settings: words, currency, tax, statuses, colours, a second database and back. What lies on disk
// afterwards is compared value by value.
#include "support/Business.h"

#include "foundation/plist/PlistReader.h"

#include <QFile>

#include <map>

namespace {

using Texts = std::map<std::string, std::string>;

class SettingUpTest : public Business {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    static PlistValue stored(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return plist::read(file.readAll().toStdString()).value();
    }
    /// All texts of the file.
    static Texts texts(const QString& path)
    {
        Texts found;
        const PlistValue values = stored(path);
        for (const auto& [key, value] : values.dict()) {
            if (value.hasText())
                found[std::string(key)] = value.asText();
        }
        return found;
    }
    QString second() const { return supportFolder() + "/market.vendb"; }

    void setUpFirst()
    {
        preferences().openWindow();
        form().termOrder.edit("Job");
        form().termOrders.edit("Jobs");
        form().headingQty.edit("Number");
        form().currency.edit("\u20ac");
        form().currencyCode.edit("EUR");
        form().orderPrefix.edit("J-");
        form().handlesTax.edit(true);
        preferences().setTaxRateValue("rate", 0, "21");
        form().addTaxRate.trigger();
        preferences().setTaxRateValue("code", 4, "R");
        form().pricesTaxInclusive.edit(PrefsForm::inclusive);
        form().statuses.edit("New\nDone");
        form().completeStatus.edit(1);
        form().colourStatus.edit(1);
        preferences().setColorForStatus({0, 0.5f, 1});
        form().lineBrandColumn.edit(false);
        form().ok.trigger();
    }
    void makeSecond()
    {
        preferences().newDatabaseMenuItem();
        preferences().newDatabase.displayName.edit("Market stall");
        preferences().newDatabase.fileName.edit("market");
        preferences().newDatabase.confirm.trigger();
    }
};

} // namespace

TEST_F(SettingUpTest, aBusinessWithASecondDatabaseAndBack)
{
    start();
    setUpFirst();
    contact("Ada Quill");
    makeSecond();

    EXPECT_EQ(contacts().getCount(), 0);
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Market stall");
    EXPECT_EQ(preferences().getOrderPrefix(), "J-") << "a new database begins with what the user has";
    preferences().openWindow();
    EXPECT_EQ(form().databases.titles(), (QStringList {"Market stall", "vendarodatabase"}));
    form().currency.edit("\u00a3");
    form().orderPrefix.edit("M-");
    form().ok.trigger();
    alerts.answer("OK");
    preferences().setDbLocationToDefault();

    EXPECT_EQ(contacts().getCount(), 1);
    EXPECT_EQ(preferences().getCurrency(), "\u20ac");
    EXPECT_EQ(preferences().getOrderPrefix(), "J-");
    quit();

    EXPECT_EQ(texts(databaseFolder() + "/info.plist"),
        (Texts {{"VendaroCurrency", "\u20ac"}, {"VendaroCurrencyCode", "EUR"}, {"VendaroOrderPrefix", "J-"}, {"VendaroItemPrefix", ""},
            {"VendaroContactPrefix", "C"}}));
    EXPECT_EQ(texts(second() + "/info.plist"),
        (Texts {{"dbName", "Market stall"}, {"VendaroCurrency", "\u00a3"}, {"VendaroCurrencyCode", "EUR"}, {"VendaroOrderPrefix", "M-"},
            {"VendaroItemPrefix", ""}, {"VendaroContactPrefix", "C"}}));
    EXPECT_FALSE(QFile::exists(second() + "/lock.xml"));
    EXPECT_FALSE(hasFile("lock.xml"));

    const Texts settings = texts(settingsPath());
    const Texts expected {{"VendaroDbLocation", "~/Library/Application Support/Vendaro/vendarodatabase.vendb"}, {"VendaroTermOrder", "Job"},
        {"VendaroTermOrders", "Jobs"}, {"VendaroTermItem", "Item"}, {"termBOMQty", "Number"}, {"termBOMPrice", "Price"},
        {"VendaroCurrency", "\u20ac"}, {"VendaroCurrencyCode", "EUR"}, {"VendaroOrderPrefix", "J-"}, {"VendaroItemPrefix", ""},
        {"VendaroContactPrefix", "C"}, {"VendaroHandlesTax", "YES"}, {"VendaroTaxRate", "21"}, {"VendaroTaxStatement", "VAT"},
        {"VendaroTaxShipping", "S"}, {"VendaroPricesTaxInclusive", "0"}, {"VendaroDateFormat", "0"}, {"VendaroDefaultSort", "0"},
        {"VendaroCodeSort", "0"}, {"VendaroStatuses", "New\nDone"}, {"completeStatus", "Done"}, {"VendaroStockWarn", "0"},
        {"VendaroContactTypes", ""}, {"BOMTableBrandColumn", "NO"}, {"BOMTableTitleColumn", "YES"}, {"orderTableStatusColumn", "YES"}};
    for (const auto& [key, value] : expected) {
        const auto found = settings.find(key);
        ASSERT_NE(found, settings.end()) << key;
        EXPECT_EQ(found->second, value) << key;
    }
    EXPECT_FALSE(settings.contains("timeLoggingRate")) << "nobody edited it";

    const PlistValue all = stored(settingsPath());
    const auto& rates = all.find("VendaroTaxRates")->array();
    ASSERT_EQ(rates.size(), 5u);
    EXPECT_EQ(rates[0].find("rate")->asText(), "21");
    EXPECT_EQ(rates[1].find("rate")->asText(), "5");
    EXPECT_EQ(rates[4].find("code")->asText(), "R");
    EXPECT_EQ(rates[4].find("description")->asText(), "Edit me");
    EXPECT_EQ(rates[4].find("rate")->asText(), "0");
    const auto& colours = all.find("VendaroFlagColours")->array();
    ASSERT_EQ(colours.size(), 1u);
    EXPECT_EQ(colours[0].find("Status")->asText(), "Done");
    EXPECT_EQ(colours[0].find("redComponent")->asText(), "0.000000");
    EXPECT_EQ(colours[0].find("greenComponent")->asText(), "0.500000");
    EXPECT_EQ(colours[0].find("blueComponent")->asText(), "1.000000");
    EXPECT_EQ(colours[0].find("alphaComponent")->asText(), "1.000000");
}

TEST_F(SettingUpTest, allOfItIsThereAtTheNextStart)
{
    start();
    setUpFirst();
    restart();

    EXPECT_EQ(preferences().getTermOrder(), "Job");
    EXPECT_EQ(preferences().getStatusList(), (QStringList {"New", "Done"}));
    EXPECT_TRUE(preferences().handlesTax());
    EXPECT_EQ(preferences().getTaxRateForCode("R"), "0");
    EXPECT_EQ(form().completeStatus.title(), "Done");
    EXPECT_FALSE(lines().list.column("brand")->visible);
    EXPECT_EQ(lines().list.column("qty")->heading, "Number");
    Order& done = order("Stools", "Done");
    ASSERT_TRUE(orders().labelColorForRow(orders().rowOf(done)).has_value());
    EXPECT_EQ(orders().labelColorForRow(orders().rowOf(done))->green, 0.5f);
    orders().listForm.filter.setTitle("Incomplete");
    orders().filter();
    EXPECT_EQ(orders().numberOfRows(), 0);
}
