// What settings mean, value by value, and what committing makes of them.
#include "app/PrefsController.h"

#include "support/Scenario.h"

#include <QDir>
#include <QFile>

#include <map>

class PrefsControllerTest : public Scenario {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    std::string setting(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }
    static QByteArray text(const QByteArray& key, const QByteArray& value)
    {
        return "<key>" + key + "</key><string>" + value + "</string>";
    }
    static QByteArray rates(const std::vector<std::pair<QByteArray, QByteArray>>& rows)
    {
        QByteArray entries;
        for (const auto& [code, rate] : rows)
            entries += "<dict>" + text("code", code) + text("description", "mine") + text("rate", rate) + "</dict>";
        return "<key>VendaroTaxRates</key><array>" + entries + "</array>";
    }
    /// Starts anew with just these settings.
    void startWith(const QByteArray& keysAndValues)
    {
        crash();
        QFile::remove(databaseFolder() + "/lock.xml");
        writeSettings(keysAndValues);
        start();
    }
};

// Tax

TEST_F(PrefsControllerTest, aStoredTableGoesBeforeTheOlderSingleRateWhichFollowsIt)
{
    startWith(text("VendaroTaxRate", "17.5") + rates({{"S", "21"}, {"X", "3"}}));

    ASSERT_EQ(preferences().getTaxRates().size(), 2u);
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "21");
    EXPECT_FALSE(preferences().getTaxRateForCode("L").has_value());
    EXPECT_EQ(setting("VendaroTaxRate"), "21");
}

TEST_F(PrefsControllerTest, aTableWithoutAStandardRowLeavesTheSingleRateAlone)
{
    startWith(text("VendaroTaxRate", "17.5") + rates({{"X", "3"}}));

    EXPECT_EQ(setting("VendaroTaxRate"), "17.5");
    preferences().OKButton();
    EXPECT_EQ(setting("VendaroTaxRate"), "17.5");
}

TEST_F(PrefsControllerTest, ofTwoRowsWithOneCodeTheFirstAnswers)
{
    startWith(rates({{"L", "5"}, {"L", "6"}, {"", "7"}}));

    EXPECT_EQ(preferences().getTaxRateForCode("L"), "5");
    EXPECT_EQ(preferences().getTaxRateForCode(""), "7");
}

TEST_F(PrefsControllerTest, aRateThatIsNoNumberIsKeptAsItIs)
{
    startWith(rates({{"S", "a fifth"}}));

    EXPECT_EQ(preferences().getTaxRateForCode("S"), "a fifth");
    EXPECT_EQ(setting("VendaroTaxRate"), "a fifth");
}

TEST_F(PrefsControllerTest, anEmptyTableIsATable)
{
    startWith(rates({}));

    EXPECT_TRUE(preferences().getTaxRates().empty());
}

TEST_F(PrefsControllerTest, shippingWithoutItsCodeInTheTableHasNoRate)
{
    startWith(text("VendaroTaxShipping", "Q"));

    EXPECT_FALSE(preferences().getRateForShipping().has_value());
}

TEST_F(PrefsControllerTest, taxIsHandledExactlyForYes)
{
    for (const char* other : {"NO", "yes", "1", ""}) {
        startWith(text("VendaroHandlesTax", other));
        EXPECT_FALSE(preferences().handlesTax()) << other;
        EXPECT_EQ(setting("VendaroPricesTaxInclusive"), "0") << "whatever it says, it was there";
    }
}

TEST_F(PrefsControllerTest, pricesAreExclusiveExactlyForOne)
{
    for (const char* other : {"0", "YES", "", "2"}) {
        startWith(text("VendaroPricesTaxInclusive", other));
        EXPECT_EQ(form().pricesTaxInclusive.index(), PrefsForm::inclusive) << other;
        EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Inclusive)");
    }
    startWith(text("VendaroPricesTaxInclusive", "1"));
    EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Exclusive)");
}

TEST_F(PrefsControllerTest, choosingHowPricesAreEnteredIsCommittedAndLabelled)
{
    startWith(text("VendaroHandlesTax", "YES"));
    form().pricesTaxInclusive.edit(PrefsForm::exclusive);
    EXPECT_EQ(form().pricesTaxInclusive.caption(), "(Exclusive)");

    preferences().OKButton();

    EXPECT_EQ(setting("VendaroPricesTaxInclusive"), "1");
}

TEST_F(PrefsControllerTest, rowsOfTheTableAreAddedEditedAndTakenAway)
{
    start();
    int told = 0;
    QObject::connect(&preferences(), &PrefsController::taxRatesChanged, [&] { ++told; });

    preferences().addTaxRate();
    ASSERT_EQ(preferences().getTaxRates().size(), 5u);
    EXPECT_EQ(preferences().getTaxRates()[4].code, "");
    EXPECT_EQ(preferences().getTaxRates()[4].description, "Edit me");
    EXPECT_EQ(preferences().getTaxRates()[4].rate, "0");
    EXPECT_TRUE(logged("add tax rate"));
    preferences().setTaxRateValue("code", 4, "R");
    preferences().setTaxRateValue("description", 4, "reduced");
    preferences().setTaxRateValue("rate", 4, "12.5");
    preferences().setTaxRateValue("colour", 4, "red");
    EXPECT_EQ(preferences().getTaxRateForCode("R"), "12.5");
    EXPECT_EQ(preferences().getTaxRates()[4].description, "reduced");
    preferences().deleteTaxRate(1);
    EXPECT_FALSE(preferences().getTaxRateForCode("L").has_value());
    EXPECT_EQ(told, 6);
}

TEST_F(PrefsControllerTest, withoutARowNothingIsEditedOrTakenAway)
{
    start();
    for (const int row : {-1, 4}) {
        preferences().deleteTaxRate(row);
        preferences().setTaxRateValue("rate", row, "1");
    }

    EXPECT_EQ(preferences().getTaxRates().size(), 4u);
    EXPECT_EQ(preferences().getTaxRateForCode("E"), "0");
}

TEST_F(PrefsControllerTest, anEditedStandardRateReachesTheSingleRateWhenCommitted)
{
    start();
    preferences().setTaxRateValue("rate", 0, "22");
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "22");
    EXPECT_EQ(setting("VendaroTaxRate"), "20");

    restart();

    EXPECT_EQ(setting("VendaroTaxRate"), "22");
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "22");
}

// Colours

TEST_F(PrefsControllerTest, aStatusWithoutAColourIsWhite)
{
    start();
    form().colourStatus.edit(1);

    const RgbColour colour = preferences().shownStatusColour();

    EXPECT_EQ(colour.red, 1);
    EXPECT_EQ(colour.green, 1);
    EXPECT_EQ(colour.blue, 1);
}

TEST_F(PrefsControllerTest, aColourIsStoredForItsStatusAndReplacedInItsPlace)
{
    start();
    int told = 0;
    QObject::connect(&preferences(), &PrefsController::statusColourChanged, [&] { ++told; });
    EXPECT_EQ(form().colourStatus.titles(), preferences().getStatusList());
    form().colourStatus.edit(4);
    preferences().setColorForStatus({0.5f, 0.25f, 1});
    form().colourStatus.edit(5);
    preferences().setColorForStatus({1, 0, 0});
    form().colourStatus.edit(4);
    EXPECT_EQ(preferences().shownStatusColour().green, 0.25f);
    preferences().setColorForStatus({0, 0.125f, 0});

    const PlistValue* stored = app().settingsStore().value("VendaroFlagColours");
    ASSERT_NE(stored, nullptr);
    ASSERT_EQ(stored->array().size(), 2u);
    const PlistValue& first = stored->array()[0];
    EXPECT_EQ(first.find("Status")->asText(), "Paid");
    EXPECT_EQ(first.find("redComponent")->asText(), "0.000000");
    EXPECT_EQ(first.find("greenComponent")->asText(), "0.125000");
    EXPECT_EQ(first.find("blueComponent")->asText(), "0.000000");
    EXPECT_EQ(first.find("alphaComponent")->asText(), "1.000000");
    EXPECT_EQ(stored->array()[1].find("Status")->asText(), "Flagged");
    EXPECT_EQ(stored->array()[1].find("redComponent")->asText(), "1.000000");
    EXPECT_EQ(preferences().shownStatusColour().green, 0.125f);
    EXPECT_EQ(told, 6) << "chosen three times, coloured three times";
}

TEST_F(PrefsControllerTest, withoutAStatusNoColourIsStored)
{
    start();
    form().colourStatus.setIndex(-1);

    preferences().setColorForStatus({1, 0, 0});

    EXPECT_EQ(app().settingsStore().value("VendaroFlagColours"), nullptr);
}

// Choices

TEST_F(PrefsControllerTest, onlyOneMeansMonthFirstAndOldestFirst)
{
    for (const char* other : {"0", "2", "", "YES"}) {
        startWith(text("VendaroDateFormat", other) + text("VendaroDefaultSort", other));
        EXPECT_TRUE(preferences().isUKFormat()) << other;
        EXPECT_TRUE(preferences().getDefaultSortNew()) << other;
    }
}

TEST_F(PrefsControllerTest, anUnknownSortOfCodesMeansByTheirDigits)
{
    for (const char* other : {"7", "-1", "by name", ""}) {
        startWith(text("VendaroCodeSort", other));
        EXPECT_EQ(form().codeSort.index(), PrefsForm::byDigits) << other;
        preferences().OKButton();
        EXPECT_EQ(setting("VendaroCodeSort"), "0") << other;
    }
    startWith(text("VendaroCodeSort", "1"));
    EXPECT_EQ(form().codeSort.index(), PrefsForm::asText);
}

TEST_F(PrefsControllerTest, switchingTheDateFormatIsToldAndRewritesNoDate)
{
    writeFile("bills.xml",
        document("<dict><key>bills</key><array><dict><key>id</key><string>1</string><key>datepaid</key><string>03/04/24</string></dict></"
                 "array></dict>"));
    start();
    int told = 0;
    QObject::connect(&preferences(), &PrefsController::dateFormatChanged, [&] { ++told; });

    form().dateFormat.edit(PrefsForm::monthFirst);

    EXPECT_EQ(told, 1);
    EXPECT_FALSE(preferences().isUKFormat());
    EXPECT_EQ(form().dateFormat.caption(), "mm/dd/yy");
    EXPECT_EQ(app().getBillManager().at(0).getFieldByName("datepaid"), "03/04/24");
    EXPECT_EQ(setting("VendaroDateFormat"), "(none)") << "not before it is committed";
    preferences().OKButton();
    EXPECT_EQ(setting("VendaroDateFormat"), "1");
}

// Words and lists

TEST_F(PrefsControllerTest, theNineHeadingsNameTheirColumns)
{
    const std::map<std::string, std::string> columnOf {{"termBOMItem", "item"}, {"termBOMCode", "code"}, {"termBOMVariation", "variation"},
        {"termBOMBrand", "brand"}, {"termBOMQty", "qty"}, {"termBOMUnit", "unit"}, {"termBOMPrice", "cost"}, {"termBOMTotal", "total"},
        {"termBOMTaxCode", "taxcode"}};
    QByteArray settings;
    for (const auto& [key, column] : columnOf)
        settings += text(key.c_str(), ("My " + column).c_str());
    startWith(settings);

    for (const auto& [key, column] : columnOf) {
        const ListColumn* found = app().getBOMManager().list.column(column);
        ASSERT_NE(found, nullptr) << column;
        EXPECT_EQ(found->heading.toStdString(), "My " + column) << key;
    }
}

TEST_F(PrefsControllerTest, anEditedHeadingNamesItsColumnOnceCommitted)
{
    start();
    form().headingQty.edit("Number");
    EXPECT_EQ(app().getBOMManager().list.column("qty")->heading, "Qty");

    preferences().OKButton();

    EXPECT_EQ(app().getBOMManager().list.column("qty")->heading, "Number");
    EXPECT_EQ(setting("termBOMQty"), "Number");
}

TEST_F(PrefsControllerTest, anEmptyListHasOneEmptyEntryButNoContactTypes)
{
    startWith(text("VendaroStatuses", "") + text("VendaroContactTypes", "") + text("VendaroInvoiceCategories", "One\n\nThree\n"));

    EXPECT_EQ(preferences().getStatusList(), QStringList {""});
    EXPECT_FALSE(preferences().getContactTypeList().has_value());
    EXPECT_EQ(preferences().getInvoiceCategoryList(), (QStringList {"One", "", "Three", ""}));
}

TEST_F(PrefsControllerTest, committingTellsTheListsAnew)
{
    start();
    int told = 0;
    QObject::connect(&preferences(), &PrefsController::listsChanged, [&] { ++told; });

    preferences().OKButton();

    EXPECT_EQ(told, 1);
}

// Committing

TEST_F(PrefsControllerTest, committingClosesTheWindow)
{
    start();
    form().open();

    preferences().OKButton();

    EXPECT_FALSE(form().isOpen());
}

TEST_F(PrefsControllerTest, columnSwitchesAreCommittedAndTakeEffectAtTheNextStart)
{
    start();
    form().orderTitleColumn.edit(false);
    form().lineBrandColumn.edit(false);
    preferences().OKButton();
    EXPECT_EQ(setting("orderTableTitleColumn"), "NO");
    EXPECT_EQ(setting("BOMTableBrandColumn"), "NO");
    EXPECT_EQ(setting("orderTableDateColumn"), "YES");

    restart();

    EXPECT_FALSE(app().getOrderManager().list.column("title")->visible);
    EXPECT_FALSE(app().getBOMManager().list.column("brand")->visible);
    EXPECT_TRUE(app().getOrderManager().list.column("date")->visible);
}

TEST_F(PrefsControllerTest, theCurrencyAndPrefixesAreCommittedToTheUserAndTheDatabase)
{
    start();
    form().currency.edit("$");
    form().orderPrefix.edit("INV-");
    preferences().OKButton();

    EXPECT_EQ(setting("VendaroCurrency"), "$");
    EXPECT_EQ(setting("VendaroOrderPrefix"), "INV-");
    EXPECT_TRUE(readFile("info.plist").contains("<string>$</string>"));
    EXPECT_TRUE(readFile("info.plist").contains("<string>INV-</string>"));
}

TEST_F(PrefsControllerTest, committingMakesTheDefaultDatabasesFolder)
{
    writeSettings(text("VendaroDbLocation", (home() + "/Shop.vendb").toUtf8()));
    start();
    ASSERT_FALSE(QDir(databaseFolder()).exists());

    preferences().OKButton();

    EXPECT_TRUE(QDir(databaseFolder()).exists());
}

TEST_F(PrefsControllerTest, whatWasNeverEditedIsCommittedAsItShows)
{
    start();
    preferences().OKButton();

    EXPECT_EQ(setting("VendaroTaxStatement"), form().taxStatement.text().toStdString());
    EXPECT_EQ(setting("VendaroTaxShipping"), form().taxShipping.text().toStdString());
    EXPECT_EQ(setting("VendaroHandlesTax"), "(none)");
    EXPECT_EQ(setting("VendaroDateFormat"), "(none)");
    EXPECT_EQ(setting("VendaroDefaultSort"), "0");
}
