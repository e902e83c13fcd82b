// The settings of a first start, of older installations, and what a restart finds.
#include "support/Scenario.h"

#include "foundation/plist/PlistReader.h"

#include <QDir>
#include <QFile>

#include <map>

class SettingsScenarioTest : public Scenario {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    /// The value a running program answers, or "(none)".
    std::string setting(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }
    /// What stands on disk.
    PlistValue stored(const QString& path) const
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return PlistValue::makeDict();
        const Result<PlistValue> value = plist::read(file.readAll().toStdString());
        return value ? value.value() : PlistValue::makeDict();
    }
    std::string storedText(const char* key) const
    {
        const PlistValue settings = stored(settingsPath());
        const PlistValue* value = settings.find(key);
        return value ? value->asText() : "(none)";
    }
    std::string databaseText(const char* key) const
    {
        const PlistValue info = stored(databaseFolder() + "/info.plist");
        const PlistValue* value = info.find(key);
        return value ? value->asText() : "(none)";
    }
    static QByteArray text(const QByteArray& key, const QByteArray& value)
    {
        return "<key>" + key + "</key><string>" + value + "</string>";
    }
    void writeInfo(const QByteArray& keysAndValues) const { writeFile("info.plist", document("<dict>" + keysAndValues + "</dict>")); }
    bool isShown(qvDataSource& list, const char* column)
    {
        const ListColumn* found = list.list.column(column);
        EXPECT_NE(found, nullptr) << column;
        return found && found->visible;
    }
};

// The first start

TEST_F(SettingsScenarioTest, theFirstStartWritesTheInitialTexts)
{
    start();

    const std::map<const char*, const char*> expected {{"VendaroCurrency", "\xc2\xa3"}, {"VendaroCurrencyCode", "GBP"},
        {"VendaroOrderPrefix", ""}, {"VendaroItemPrefix", ""}, {"VendaroContactPrefix", "C"}, {"VendaroStockWarn", "0"},
        {"VendaroTermOrder", "Order"}, {"VendaroTermOrders", "Orders"}, {"VendaroTermItem", "Item"}, {"VendaroTermItems", "Items"},
        {"VendaroTermBOM", "Items ordered"}, {"termBOMItem", "Item"}, {"termBOMCode", "Code"}, {"termBOMVariation", "Variation"},
        {"termBOMBrand", "Brand"}, {"termBOMQty", "Qty"}, {"termBOMUnit", "Unit"}, {"termBOMPrice", "Price"}, {"termBOMTotal", "Total"},
        {"termBOMTaxCode", "Tax code"}, {"VendaroTaxRate", "20"}, {"VendaroPricesTaxInclusive", "1"}, {"VendaroTaxStatement", "VAT"},
        {"VendaroTaxShipping", "S"}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(setting(key), value) << key;
    quit();
    for (const auto& [key, value] : expected)
        EXPECT_EQ(storedText(key), value) << key;
}

TEST_F(SettingsScenarioTest, registeredDefaultsAreAnsweredAndNotWritten)
{
    start();
    EXPECT_EQ(setting("completeStatus"), "Complete");
    EXPECT_EQ(setting("timeLoggingRate"), "12.00");
    EXPECT_EQ(setting("timeLoggingUnit"), "Hours");
    quit();

    for (const char* key : {"completeStatus", "timeLoggingRate", "timeLoggingUnit"})
        EXPECT_EQ(storedText(key), "(none)") << key;
}

TEST_F(SettingsScenarioTest, theFirstStartHasTheFourTaxRates)
{
    start();

    const std::vector<TaxRate>& rates = preferences().getTaxRates();
    ASSERT_EQ(rates.size(), 4u);
    const char* const expected[][3] {{"S", "standard", "20"}, {"L", "lower", "5"}, {"Z", "zero", "0"}, {"E", "exempt", "0"}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(rates[i].code, expected[i][0]);
        EXPECT_EQ(rates[i].description, expected[i][1]);
        EXPECT_EQ(rates[i].rate, expected[i][2]);
    }
    EXPECT_EQ(preferences().getTaxRateForCode("L"), "5");
    EXPECT_FALSE(preferences().getTaxRateForCode("l").has_value());
    EXPECT_FALSE(preferences().getTaxRateForCode("").has_value());
}

TEST_F(SettingsScenarioTest, theFirstStartHandlesNoTaxAndAddsItToPrices)
{
    start();

    EXPECT_FALSE(preferences().handlesTax());
    EXPECT_EQ(setting("VendaroHandlesTax"), "(none)");
    EXPECT_EQ(form().pricesTaxInclusive.index(), PrefsForm::exclusive);
    EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Exclusive)");
    EXPECT_FALSE(form().taxStatement.isEnabled());
    EXPECT_FALSE(form().taxShipping.isEnabled());
    EXPECT_FALSE(form().pricesTaxInclusive.isEnabled());
    quit();
    EXPECT_EQ(storedText("VendaroHandlesTax"), "(none)");
}

TEST_F(SettingsScenarioTest, theFirstStartShowsTheNewestFirstAndSortsCodesByTheirDigits)
{
    start();

    EXPECT_TRUE(preferences().getDefaultSortNew());
    EXPECT_TRUE(app().getOrderManager().defaultSortNew());
    EXPECT_EQ(form().codeSort.index(), 0);
    EXPECT_EQ(setting("VendaroDefaultSort"), "(none)");
    EXPECT_EQ(setting("VendaroCodeSort"), "(none)");
    quit();
    EXPECT_EQ(storedText("VendaroDefaultSort"), "0");
    EXPECT_EQ(storedText("VendaroCodeSort"), "0");
}

TEST_F(SettingsScenarioTest, theDateFormatIsDayFirstButStaysUnsetUntilItIsChosen)
{
    start();
    EXPECT_TRUE(preferences().isUKFormat());
    EXPECT_EQ(form().dateFormat.caption(), "dd/mm/yy");
    restart();
    EXPECT_EQ(setting("VendaroDateFormat"), "(none)");

    app().chooseDateFormat(PrefsForm::monthFirst);
    EXPECT_EQ(setting("VendaroDateFormat"), "1");
    restart();
    EXPECT_FALSE(preferences().isUKFormat());
    EXPECT_EQ(form().dateFormat.caption(), "mm/dd/yy");
    EXPECT_EQ(storedText("VendaroDateFormat"), "1");

    form().dateFormat.edit(PrefsForm::dayFirst);
    EXPECT_EQ(form().dateFormat.caption(), "dd/mm/yy");
    restart();
    EXPECT_EQ(storedText("VendaroDateFormat"), "0");
}

TEST_F(SettingsScenarioTest, theFirstStartOffersStatusesAndCategoriesAndNoContactTypes)
{
    start();

    EXPECT_EQ(preferences().getStatusList(), (QStringList {"Enquiry", "Quoted", "Ordered", "Invoiced", "Paid", "Flagged", "Complete"}));
    EXPECT_GT(preferences().getInvoiceCategoryList().size(), 1);
    EXPECT_FALSE(preferences().getContactTypeList().has_value());
    EXPECT_EQ(setting("VendaroStatuses"), "Enquiry\nQuoted\nOrdered\nInvoiced\nPaid\nFlagged\nComplete");
    EXPECT_EQ(setting("VendaroInvoiceCategories"), form().invoiceCategories.text().toStdString());
    EXPECT_EQ(setting("VendaroContactTypes"), "(none)");
    quit();
    EXPECT_EQ(storedText("VendaroStatuses"), "Enquiry\nQuoted\nOrdered\nInvoiced\nPaid\nFlagged\nComplete");
    EXPECT_EQ(storedText("VendaroContactTypes"), "");
}

TEST_F(SettingsScenarioTest, theFirstStartShowsEveryColumn)
{
    start();

    for (const char* column : {"date", "ordernum", "title", "contactname", "status"})
        EXPECT_TRUE(isShown(app().getOrderManager(), column)) << column;
    for (const char* column : {"code", "item", "variation", "brand", "unit"})
        EXPECT_TRUE(isShown(app().getBOMManager(), column)) << column;
    // Without tax handling its column goes, whatever its switch says.
    EXPECT_FALSE(isShown(app().getBOMManager(), "taxcode"));
    quit();
    for (const char* key : {"orderTableDateColumn", "orderTableCodeColumn", "orderTableTitleColumn", "orderTableContactColumn",
             "orderTableStatusColumn", "BOMTableCodeColumn", "BOMTableTitleColumn", "BOMTableVariationColumn", "BOMTableBrandColumn",
             "BOMTableUnitColumn", "BOMTableTaxColumn"})
        EXPECT_EQ(storedText(key), "YES") << key;
}

TEST_F(SettingsScenarioTest, theFirstStartUsesTheDefaultDatabase)
{
    start();

    EXPECT_EQ(preferences().getDbLocation(), "~/Library/Application Support/Vendaro/vendarodatabase.vendb");
    EXPECT_EQ(preferences().actualDbLocation(), databaseFolder());
    EXPECT_EQ(preferences().getDatabaseName(), "");
    EXPECT_EQ(setting("VendaroDbLocation"), "(none)");
}

// Installations that have been used

TEST_F(SettingsScenarioTest, anInstallationThatHandledTaxKeepsItsPricesWithTax)
{
    writeSettings(text("VendaroHandlesTax", "YES"));
    start();

    EXPECT_TRUE(preferences().handlesTax());
    EXPECT_EQ(setting("VendaroPricesTaxInclusive"), "0");
    EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Inclusive)");
    EXPECT_TRUE(form().taxShipping.isEnabled());
    EXPECT_TRUE(isShown(app().getBOMManager(), "taxcode"));
}

TEST_F(SettingsScenarioTest, anOlderSingleTaxRateBecomesTheStandardOne)
{
    writeSettings(text("VendaroTaxRate", "17.5"));
    start();

    ASSERT_EQ(preferences().getTaxRates().size(), 4u);
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "17.5");
    EXPECT_EQ(preferences().getTaxRateForCode("L"), "5");
    EXPECT_EQ(setting("VendaroTaxRate"), "17.5");
}

TEST_F(SettingsScenarioTest, ofTwoStandardRatesTheLaterOneIsKeptInStep)
{
    writeSettings("<key>VendaroTaxRates</key><array><dict>" + text("code", "S") + text("rate", "20") + "</dict><dict>" + text("code", "s")
        + text("rate", "12.5") + "</dict></array>");
    start();

    EXPECT_EQ(setting("VendaroTaxRate"), "12.5");
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "20");
    EXPECT_EQ(preferences().getTaxRateForCode("s"), "12.5");
}

TEST_F(SettingsScenarioTest, theShippingRateIsThatOfItsCode)
{
    writeSettings(text("VendaroTaxShipping", "L") + text("VendaroTaxStatement", "  VAT \n"));
    start();

    EXPECT_EQ(preferences().getRateForShipping(), "5");
    EXPECT_EQ(preferences().getTaxStatement(), "VAT");
}

TEST_F(SettingsScenarioTest, switchingTaxHandlingOffIsNeverStored)
{
    writeSettings(text("VendaroHandlesTax", "YES"));
    start();
    form().handlesTax.edit(false);
    EXPECT_FALSE(preferences().handlesTax());
    EXPECT_FALSE(form().taxShipping.isEnabled());

    restart();

    EXPECT_TRUE(preferences().handlesTax());
}

TEST_F(SettingsScenarioTest, aColumnIsShownExactlyForYes)
{
    writeSettings(text("orderTableTitleColumn", "NO") + text("BOMTableBrandColumn", "yes") + text("BOMTableUnitColumn", "YES"));
    start();

    EXPECT_FALSE(isShown(app().getOrderManager(), "title"));
    EXPECT_FALSE(isShown(app().getBOMManager(), "brand"));
    EXPECT_TRUE(isShown(app().getBOMManager(), "unit"));
    EXPECT_TRUE(isShown(app().getOrderManager(), "date"));
}

TEST_F(SettingsScenarioTest, theStatusColumnGoesOnlyWhileTheContactColumnIsThere)
{
    writeSettings(text("orderTableStatusColumn", "NO"));
    start();
    EXPECT_FALSE(isShown(app().getOrderManager(), "status"));
    quit();

    writeSettings(text("orderTableStatusColumn", "NO") + text("orderTableContactColumn", "NO"));
    start();
    EXPECT_TRUE(isShown(app().getOrderManager(), "status"));
    EXPECT_FALSE(isShown(app().getOrderManager(), "contactname"));
}

TEST_F(SettingsScenarioTest, storedChoicesAreTaken)
{
    writeSettings(text("VendaroDateFormat", "1") + text("VendaroDefaultSort", "1") + text("VendaroCodeSort", "2")
        + text("VendaroPricesTaxInclusive", "0") + text("VendaroTermOrder", "Job") + text("termBOMItem", "Work")
        + text("VendaroStockWarn", "5") + text("VendaroStatuses", "New\nDone") + text("VendaroContactTypes", "Friend\nPress")
        + text("VendaroInvoiceCategories", ""));
    start();

    EXPECT_FALSE(preferences().isUKFormat());
    EXPECT_FALSE(preferences().getDefaultSortNew());
    EXPECT_FALSE(app().getContactManager().defaultSortNew());
    EXPECT_EQ(form().codeSort.index(), 2);
    EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Inclusive)");
    EXPECT_EQ(preferences().getTermOrder(), "Job");
    EXPECT_EQ(app().getBOMManager().list.column("item")->heading, "Work");
    EXPECT_EQ(preferences().getStockWarn(), "5");
    EXPECT_EQ(preferences().getStatusList(), (QStringList {"New", "Done"}));
    EXPECT_EQ(preferences().getContactTypeList(), (QStringList {"Friend", "Press"}));
    EXPECT_EQ(preferences().getInvoiceCategoryList(), QStringList {""});
}

TEST_F(SettingsScenarioTest, anEditedValueCountsBeforeItIsCommittedAndIsCommittedByQuitting)
{
    start();
    form().currency.edit("$");
    EXPECT_EQ(preferences().getCurrency(), "$");
    EXPECT_EQ(setting("VendaroCurrency"), "\xc2\xa3");

    restart();

    EXPECT_EQ(preferences().getCurrency(), "$");
    EXPECT_EQ(storedText("VendaroCurrency"), "$");
    EXPECT_EQ(databaseText("VendaroCurrency"), "$");
}

// What travels with a database

TEST_F(SettingsScenarioTest, aDatabasesOwnCurrencyWinsAndBecomesTheUsers)
{
    writeSettings(text("VendaroCurrency", "$") + text("VendaroCurrencyCode", "USD"));
    writeInfo(text("VendaroCurrency", "\xe2\x82\xac") + text("VendaroCurrencyCode", "EUR"));
    start();

    EXPECT_EQ(preferences().getCurrency(), "\xe2\x82\xac");
    EXPECT_EQ(preferences().getCurrencyCode(), "EUR");
    EXPECT_EQ(setting("VendaroCurrency"), "\xe2\x82\xac");
    EXPECT_EQ(setting("VendaroCurrencyCode"), "EUR");
}

TEST_F(SettingsScenarioTest, aDatabasesOwnPrefixesWinButStayItsOwn)
{
    writeSettings(text("VendaroOrderPrefix", "A") + text("VendaroItemPrefix", "B") + text("VendaroContactPrefix", "X"));
    writeInfo(text("VendaroOrderPrefix", "INV-") + text("VendaroItemPrefix", "I-") + text("VendaroContactPrefix", "K-"));
    start();

    EXPECT_EQ(preferences().getOrderPrefix(), "INV-");
    EXPECT_EQ(preferences().getItemPrefix(), "I-");
    EXPECT_EQ(preferences().getContactPrefix(), "K-");
    EXPECT_EQ(setting("VendaroOrderPrefix"), "A");
    EXPECT_EQ(setting("VendaroItemPrefix"), "B");
    EXPECT_EQ(setting("VendaroContactPrefix"), "X");
}

TEST_F(SettingsScenarioTest, aDatabaseWithoutPropertiesGetsTheCurrentValues)
{
    writeFile("contacts.xml", document("<dict><key>contacts</key><array/></dict>"));
    writeSettings(text("VendaroCurrency", "$") + text("VendaroOrderPrefix", "A"));
    start();

    EXPECT_EQ(databaseText("VendaroCurrency"), "$");
    EXPECT_EQ(databaseText("VendaroCurrencyCode"), "GBP");
    EXPECT_EQ(databaseText("VendaroOrderPrefix"), "A");
    EXPECT_EQ(databaseText("VendaroItemPrefix"), "");
    EXPECT_EQ(databaseText("VendaroContactPrefix"), "C");
}

TEST_F(SettingsScenarioTest, theVeryFirstDatabaseHasItsPropertiesAfterQuitting)
{
    start();
    quit();

    EXPECT_EQ(databaseText("VendaroCurrency"), "\xc2\xa3");
    EXPECT_EQ(databaseText("VendaroContactPrefix"), "C");
}

TEST_F(SettingsScenarioTest, theDatabasesNameStandsInTheTitle)
{
    writeInfo(text("dbName", "My shop"));
    start();
    EXPECT_EQ(preferences().getDatabaseName(), "My shop");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - My shop");
}

TEST_F(SettingsScenarioTest, anotherDatabaseIsNamedAfterItsFolder)
{
    writeSettings(text("VendaroDbLocation", "~/Library/Application Support/Vendaro/Side business.vendb"));
    start();

    EXPECT_EQ(preferences().getDatabaseName(), "Side business");
    EXPECT_EQ(app().session().originalDbLocation(), supportFolder() + "/Side business.vendb");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Side business");
}

TEST_F(SettingsScenarioTest, anEmptyLocationCountsAsNone)
{
    writeSettings(text("VendaroDbLocation", ""));
    start();

    EXPECT_EQ(app().session().originalDbLocation(), databaseFolder());
}

TEST_F(SettingsScenarioTest, aSwitchTakesTheNewDatabasesValuesAndLeavesTheOldOnes)
{
    writeInfo(text("VendaroCurrency", "$") + text("VendaroOrderPrefix", "OLD"));
    start();
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    QFile info(other + "/info.plist");
    ASSERT_TRUE(info.open(QIODevice::WriteOnly));
    info.write(document("<dict>" + text("VendaroCurrency", "\xe2\x82\xac") + text("VendaroOrderPrefix", "NEW") + "</dict>"));
    info.close();
    preferences().setDbLocation(other);
    app().session().switchDatabase();

    EXPECT_EQ(preferences().getCurrency(), "\xe2\x82\xac");
    EXPECT_EQ(preferences().getOrderPrefix(), "NEW");
    quit();
    EXPECT_EQ(databaseText("VendaroCurrency"), "$");
    EXPECT_EQ(databaseText("VendaroOrderPrefix"), "OLD");
}

// Committing

TEST_F(SettingsScenarioTest, committingIsLoggedInItsOrder)
{
    start();
    preferences().OKButton();

    EXPECT_EQ(log().filter("Saving"), QStringList({"Saving terms", "Saving tax rates", "Saving lists", "Saving notepad"}));
}

TEST_F(SettingsScenarioTest, theTaxTableIsCommittedRowByRow)
{
    start();
    quit();

    const PlistValue settings = stored(settingsPath());
    const PlistValue* rates = settings.find("VendaroTaxRates");
    ASSERT_NE(rates, nullptr);
    ASSERT_EQ(rates->array().size(), 4u);
    EXPECT_EQ(rates->array()[1].find("code")->asText(), "L");
    EXPECT_EQ(rates->array()[1].find("description")->asText(), "lower");
    EXPECT_EQ(rates->array()[1].find("rate")->asText(), "5");
}

TEST_F(SettingsScenarioTest, whatElseATaxRateHoldsOutlastsACommit)
{
    writeSettings("<key>VendaroTaxRates</key><array><dict><key>code</key><string>S</string><key>country</key><string>GB</string>"
                  "<key>rate</key><string>20</string><key>description</key><array><string>a</string></array></dict>"
                  "<dict><key>code</key><string>L</string></dict></array>");
    start();
    preferences().setTaxRateValue("rate", 0, "17.5");
    preferences().addTaxRate();
    quit();

    const PlistValue settings = stored(settingsPath());
    const PlistValue* rates = settings.find("VendaroTaxRates");
    ASSERT_NE(rates, nullptr);
    ASSERT_EQ(rates->array().size(), 3u);
    const PlistValue& standard = rates->array()[0];
    EXPECT_EQ(standard.find("rate")->asText(), "17.5");
    ASSERT_NE(standard.find("country"), nullptr);
    EXPECT_EQ(standard.find("country")->asText(), "GB");
    EXPECT_TRUE(standard.find("description")->isArray()) << "nothing was written in its place";
    EXPECT_EQ(rates->array()[1].find("rate")->asText(), "");
    EXPECT_EQ(rates->array()[2].dict().size(), 3u);
}

TEST_F(SettingsScenarioTest, aRowOfTheTaxTableThatIsNoneIsKeptWithTheWholeFile)
{
    const QByteArray rates = "<key>VendaroTaxRates</key><array><string>S 20</string></array>";
    writeSettings(rates);
    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });

    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith("The setting \"VendaroTaxRates\" could not be read. The original is kept as ")) << told[0].toStdString();
}

TEST_F(SettingsScenarioTest, damagedSettingsAreKeptAndTheDefaultsCount)
{
    ASSERT_TRUE(QDir().mkpath(home() + "/Library/Preferences"));
    QFile file(settingsPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plist><dict><key>VendaroCurrency</key>");
    file.close();

    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });

    EXPECT_EQ(preferences().getCurrency(), "\xc2\xa3");
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith("The settings could not be read (")) << told[0].toStdString();
    QFile kept(supportFolder() + "/Recovery/20240301-101530 Vendaro.plist");
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "<plist><dict><key>VendaroCurrency</key>");
}

TEST_F(SettingsScenarioTest, settingsOfAnotherKindAreKeptAndToldBeforeOurOwnTakeTheirPlace)
{
    writeSettings("<key>VendaroTaxRates</key><string>S 20, L 5</string><key>VendaroTermOrder</key><array><string>Job</string></array>"
                  "<key>VendaroContactTypes</key><array/>");
    QFile settings(settingsPath());
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QByteArray before = settings.readAll();
    settings.close();
    QStringList told;
    const auto watch = [&](Vendaro& program) {
        told.clear();
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    };
    startWatched(watch);

    const QString kept = "The original is kept as " + supportFolder() + "/Recovery/20240301-101530 Vendaro.plist.";
    EXPECT_EQ(told,
        QStringList(
            {"The setting \"VendaroTaxRates\" could not be read. " + kept, "The setting \"VendaroTermOrder\" could not be read. " + kept}));
    EXPECT_EQ(preferences().getTaxRates().size(), 4u);
    EXPECT_EQ(preferences().getTermOrder(), "Order");
    quit();
    QFile copy(supportFolder() + "/Recovery/20240301-101530 Vendaro.plist");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), before);

    // What came up only at the end is told by the next start, and then no more.
    startWatched(watch);
    EXPECT_EQ(told, QStringList("The setting \"VendaroContactTypes\" could not be read. " + kept));
    quit();
    startWatched(watch);
    EXPECT_EQ(told, QStringList());
}
