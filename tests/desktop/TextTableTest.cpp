#include "desktop/TextTable.h"

#include "desktop/AlertTexts.h"

#include <gtest/gtest.h>

class TextTable : public testing::Test {
protected:
    ~TextTable() override { setTextTable({}); }
};

TEST_F(TextTable, withoutAnEntryTheWordingStandsForItself)
{
    EXPECT_EQ(localText("Not in any table"), "Not in any table");
    EXPECT_EQ(localText(""), "");
}

TEST_F(TextTable, anEntryReplacesItsWordingOnly)
{
    setTextTable({{"Order", "Auftrag"}});

    EXPECT_EQ(localText("Order"), "Auftrag");
    EXPECT_EQ(localText("Orders"), "Orders");
    EXPECT_EQ(localText("order"), "order");
}

TEST_F(TextTable, theNextTableReplacesTheOneBefore)
{
    setTextTable({{"Order", "Auftrag"}, {"Item", "Artikel"}});
    setTextTable({{"Order", "Commande"}});

    EXPECT_EQ(localText("Order"), "Commande");
    EXPECT_EQ(localText("Item"), "Item");
}

TEST_F(TextTable, wordingsOfAnyLanguageAreFound)
{
    setTextTable({{"Qualit\xc3\xa9", "Quality"}});

    EXPECT_EQ(localText("Qualit\xc3\xa9"), "Quality");
}

TEST_F(TextTable, alertsSpeakTheLanguageInForce)
{
    setTextTable({{"Read-only mode", "Nur lesen"}, {"OK", "Gut"}});

    const Alert alert = makeAlert(alerts::readOnlyMode);

    EXPECT_EQ(alert.title, "Nur lesen");
    EXPECT_EQ(alert.text, "Database is in read-only mode.");
    EXPECT_EQ(alert.buttons, QStringList {"Gut"});
}
