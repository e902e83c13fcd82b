// What editing the settings does before anything is committed, and what is told beside their fields.
#include "app/PrefsController.h"

#include "support/Business.h"
#include "support/ListResets.h"

class PrefsEditingTest : public Business {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    TaxRateTable& table() { return preferences().taxTable; }
    std::string setting(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }
    static bool isShown(qvDataSource& list, const char* column) { return list.list.column(column)->visible; }
    static QByteArray text(const QByteArray& key, const QByteArray& value)
    {
        return "<key>" + key + "</key><string>" + value + "</string>";
    }
};

// Leaving

TEST_F(PrefsEditingTest, okCommitsAndClosesAndTheDateFormatIsChosenFromThenOn)
{
    start();
    preferences().openWindow();
    form().termOrder.edit("Job");
    form().ok.trigger();

    EXPECT_FALSE(form().isOpen());
    EXPECT_EQ(setting("VendaroTermOrder"), "Job");
    EXPECT_EQ(setting("VendaroDateFormat"), "0");
}

TEST_F(PrefsEditingTest, leavingKeepsWhatWasEditedForTheNextCommit)
{
    start();
    preferences().openWindow();
    form().termOrder.edit("Job");
    form().leave.trigger();

    EXPECT_FALSE(form().isOpen());
    EXPECT_EQ(preferences().getTermOrder(), "Job");
    EXPECT_EQ(setting("VendaroTermOrder"), "Order");
    EXPECT_EQ(setting("VendaroDateFormat"), "(none)");
    restart();
    EXPECT_EQ(preferences().getTermOrder(), "Job");
    EXPECT_EQ(setting("VendaroDateFormat"), "(none)");
}

// At once

TEST_F(PrefsEditingTest, theEditorsThatAreOpenAreTitledWithTheWords)
{
    begin();
    orders().editThisOrder(order("Three stools"));
    Item& set = collectiveItem("Stool set", {});
    items().editThisItem(set);
    EXPECT_EQ(orders().form.title(), "Order");
    EXPECT_EQ(items().form.title(), "Collective Item");

    form().termOrder.edit("Job");
    form().termItem.edit("Product");

    EXPECT_EQ(orders().form.title(), "Job");
    EXPECT_EQ(items().form.title(), "Collective Product");
    orders().form.cancel.trigger();
    Order& purchase = order("Timber");
    purchase.setType("Purchase Order");
    orders().editThisOrder(purchase);
    form().termOrder.edit("Task");
    EXPECT_EQ(orders().form.title(), "Purchase Order");
}

TEST_F(PrefsEditingTest, wordsAreToldAsTheyAreTyped)
{
    start();
    int told = 0;
    QObject::connect(&preferences(), &PrefsController::wordsChanged, [&] { ++told; });
    for (TextField* word : {&form().termOrder, &form().termOrders, &form().termItem, &form().termItems, &form().termBOM})
        word->edit("Job");

    EXPECT_EQ(told, 5);
}

TEST_F(PrefsEditingTest, columnsComeAndGoWithTheirSwitches)
{
    begin(taxSettings());
    form().orderTitleColumn.edit(false);
    form().lineBrandColumn.edit(false);
    EXPECT_FALSE(isShown(orders(), "title"));
    EXPECT_FALSE(isShown(lines(), "brand"));
    EXPECT_TRUE(isShown(lines(), "taxcode"));
    form().handlesTax.edit(false);
    EXPECT_FALSE(isShown(lines(), "taxcode"));
    form().handlesTax.edit(true);
    EXPECT_TRUE(isShown(lines(), "taxcode"));
    form().lineTaxColumn.edit(false);
    EXPECT_FALSE(isShown(lines(), "taxcode"));
    form().orderTitleColumn.edit(true);
    EXPECT_TRUE(isShown(orders(), "title"));
}

TEST_F(PrefsEditingTest, theStatusColumnStaysWhileTheContactColumnIsHidden)
{
    begin();
    form().orderStatusColumn.edit(false);
    EXPECT_FALSE(isShown(orders(), "status"));
    form().orderContactColumn.edit(false);
    EXPECT_TRUE(isShown(orders(), "status"));
    form().orderContactColumn.edit(true);
    EXPECT_FALSE(isShown(orders(), "status"));
}

TEST_F(PrefsEditingTest, aColourIsSeenInTheListAtOnce)
{
    begin();
    order("Stools", "Paid");
    ListResets resets;
    orders().addObserver(resets);
    form().colourStatus.setTitle("Paid");
    preferences().setColorForStatus({1, 0, 0});

    orders().removeObserver(resets);
    EXPECT_GT(resets.count, 0);
    ASSERT_TRUE(orders().labelColorForRow(0).has_value());
    EXPECT_EQ(orders().labelColorForRow(0)->red, 1);
}

TEST_F(PrefsEditingTest, theStatusesToChooseFromFollowTheirList)
{
    start();
    EXPECT_EQ(form().colourStatus.title(), "Enquiry");
    EXPECT_EQ(form().completeStatus.title(), "Complete");

    form().statuses.edit("New\nDone");

    EXPECT_EQ(form().colourStatus.titles(), (QStringList {"New", "Done"}));
    EXPECT_EQ(form().colourStatus.title(), "New");
    EXPECT_EQ(form().completeStatus.titles(), (QStringList {"New", "Done", "Complete"})) << "what counts is still offered";
    EXPECT_EQ(form().completeStatus.title(), "Complete");
}

TEST_F(PrefsEditingTest, theCompleteStatusAndTheClockCountAsSoonAsTheyAreEdited)
{
    begin();
    order("Stools", "Paid");
    orders().listForm.filter.setTitle("Incomplete");
    orders().filter();
    EXPECT_EQ(orders().numberOfRows(), 1);
    form().completeStatus.edit(static_cast<int>(form().completeStatus.titles().indexOf("Paid")));
    form().timeRate.edit("35");
    form().timeUnit.edit(1);

    EXPECT_EQ(orders().numberOfRows(), 0);
    EXPECT_EQ(setting("completeStatus"), "Paid");
    EXPECT_EQ(setting("timeLoggingRate"), "35");
    EXPECT_EQ(setting("timeLoggingUnit"), "Days");
    restart();
    EXPECT_EQ(form().completeStatus.title(), "Paid");
    EXPECT_EQ(form().timeRate.text(), "35");
    EXPECT_EQ(form().timeUnit.title(), "Days");
}

TEST_F(PrefsEditingTest, aUnitOfTimeFromElsewhereIsKept)
{
    begin(text("timeLoggingUnit", "Sessions"));
    EXPECT_EQ(form().timeUnit.title(), "Sessions");
    restart();
    EXPECT_EQ(setting("timeLoggingUnit"), "Sessions");
}

// Colours by their parts

TEST_F(PrefsEditingTest, theChosenStatusShowsThePartsOfItsColour)
{
    start();
    EXPECT_EQ(form().colourRed.text(), "255");
    form().colourStatus.edit(4);
    preferences().setColorForStatus({1, 0.5f, 0});

    EXPECT_EQ(form().colourRed.text(), "255");
    EXPECT_EQ(form().colourGreen.text(), "128");
    EXPECT_EQ(form().colourBlue.text(), "0");
    form().colourStatus.edit(0);
    EXPECT_EQ(form().colourBlue.text(), "255") << "white has none";
}

TEST_F(PrefsEditingTest, aTypedPartIsStoredAndWhatIsNoneIsToldAndKept)
{
    start();
    form().colourStatus.edit(4);
    form().colourRed.edit("0");
    form().colourGreen.edit("51");
    form().colourBlue.edit("blue");

    const PlistValue& entry = app().settingsStore().value("VendaroFlagColours")->array().at(0);
    EXPECT_EQ(entry.find("Status")->asText(), "Paid");
    EXPECT_EQ(entry.find("redComponent")->asText(), "0.000000");
    EXPECT_EQ(entry.find("greenComponent")->asText(), "0.200000");
    EXPECT_EQ(entry.find("blueComponent")->asText(), "0.000000");
    EXPECT_EQ(form().colourBlue.text(), "blue");
    EXPECT_EQ(form().colourBlue.fault(), "This is no number from 0 to 255; it counts as 0.");
    form().colourBlue.edit("300");
    EXPECT_EQ(form().colourBlue.fault(), "This is no number from 0 to 255; it counts as 255.");
    EXPECT_EQ(preferences().shownStatusColour().blue, 1);
    form().colourBlue.edit(" 7 ");
    EXPECT_EQ(form().colourBlue.fault(), "");
}

// Numbers that do not read

TEST_F(PrefsEditingTest, numbersThatDoNotReadAreToldAndKept)
{
    start();
    form().stockWarn.edit("a few");
    form().timeRate.edit("12.50 an hour");

    EXPECT_EQ(form().stockWarn.fault(), "This does not read as a whole number; it counts as 0.");
    EXPECT_EQ(form().timeRate.fault(), "This does not read as a number; it counts as 12.5.");
    EXPECT_EQ(setting("timeLoggingRate"), "12.50 an hour");
    form().timeRate.edit("12.50");
    EXPECT_EQ(form().timeRate.fault(), "");
}

TEST_F(PrefsEditingTest, aShippingCodeThatNoRateHasIsTold)
{
    begin(taxSettings());
    EXPECT_EQ(form().taxShipping.fault(), "");
    form().taxShipping.edit("Q");
    EXPECT_EQ(form().taxShipping.fault(), "No rate has this code, so shipping has no tax.");
    preferences().addTaxRate();
    table().setObjectValue("code", 1, "Q");
    EXPECT_EQ(form().taxShipping.fault(), "");
    preferences().deleteTaxRate(1);
    EXPECT_NE(form().taxShipping.fault(), "");
    form().taxShipping.edit("");
    EXPECT_EQ(form().taxShipping.fault(), "");
}

// The table of rates

TEST_F(PrefsEditingTest, theTableShowsTheRatesAndEditsThem)
{
    start();
    ASSERT_EQ(table().numberOfRows(), 4);
    EXPECT_EQ(table().objectValue("code", 1), "L");
    EXPECT_EQ(table().objectValue("description", 1), "lower");
    EXPECT_EQ(table().objectValue("rate", 1), "5");
    EXPECT_EQ(table().objectValue("rate", 4), "");
    EXPECT_EQ(table().objectValue("colour", 1), "");

    EXPECT_TRUE(table().setObjectValue("rate", 1, "6"));
    EXPECT_FALSE(table().setObjectValue("rate", 4, "6"));

    EXPECT_EQ(preferences().getTaxRateForCode("L"), "6");
}

TEST_F(PrefsEditingTest, ratesAreAddedAndTakenAwayByCommandWhileTaxIsHandled)
{
    start();
    form().addTaxRate.trigger();
    EXPECT_EQ(table().numberOfRows(), 4) << "tax is not handled";
    form().handlesTax.edit(true);
    form().deleteTaxRate.trigger();
    EXPECT_EQ(table().numberOfRows(), 4) << "none is selected";
    form().addTaxRate.trigger();
    EXPECT_EQ(table().objectValue("description", 4), "Edit me");
    table().selectRate(4);
    form().deleteTaxRate.trigger();

    EXPECT_EQ(table().numberOfRows(), 4);
    EXPECT_EQ(table().selectedRate(), 3);
}

TEST_F(PrefsEditingTest, aRateThatIsNoNumberIsToldWithWhatItCountsAs)
{
    start();
    EXPECT_EQ(table().trouble(), "");
    for (const char* good : {"17.5", " 17.5 ", "-2", "", "0"}) {
        table().setObjectValue("rate", 0, good);
        EXPECT_EQ(table().cellFault("rate", 0), "") << good;
    }
    table().setObjectValue("rate", 0, "a fifth");
    EXPECT_EQ(table().cellFault("rate", 0), "This does not read as a number; it counts as 0.");
    table().setObjectValue("rate", 0, "12.5%");
    EXPECT_EQ(table().cellFault("rate", 0), "This does not read as a number; it counts as 12.5.");
    EXPECT_EQ(table().trouble(), "Code \"S\", rate \"12.5%\": This does not read as a number; it counts as 12.5.");
    EXPECT_EQ(preferences().getTaxRateForCode("S"), "12.5%") << "kept as it is";
    EXPECT_EQ(table().cellFault("description", 0), "");
    EXPECT_EQ(table().cellFault("rate", 9), "");
}

TEST_F(PrefsEditingTest, aCommaIsAPointExactlyWhereAmountsAreWrittenWithOne)
{
    start();
    table().setObjectValue("rate", 0, "17,5");
    EXPECT_EQ(table().cellFault("rate", 0), "This does not read as a number; it counts as 17.");
    quit();
    locale = "de_DE";
    start();
    table().setObjectValue("rate", 0, "17,5");
    EXPECT_EQ(table().cellFault("rate", 0), "");
}

TEST_F(PrefsEditingTest, aSecondRateWithTheSameCodeIsTold)
{
    start();
    table().setObjectValue("code", 1, "S");

    EXPECT_EQ(table().cellFault("code", 0), "");
    EXPECT_EQ(table().cellFault("code", 1), "A rate further up has the same code; this one is never used.");
    table().setObjectValue("code", 1, "s");
    EXPECT_EQ(table().cellFault("code", 1), "") << "letter case counts";
}
