#include "desktop/Alerts.h"

#include "desktop/AlertTexts.h"

#include <gtest/gtest.h>

TEST(Alerts, valuesFillTheirPlacesInOrder)
{
    EXPECT_EQ(fillText("%@ and %@", {"one", "two"}), "one and two");
    EXPECT_EQ(fillText("%@%@", {"one", "two"}), "onetwo");
    EXPECT_EQ(fillText("nothing to fill", {"one"}), "nothing to fill");
}

TEST(Alerts, aValueIsNeverLookedInto)
{
    EXPECT_EQ(fillText("%@ in %@", {"%@", "50%"}), "%@ in 50%");
    EXPECT_EQ(fillText("%@ of %@", {"%s %n %1", "b"}), "%s %n %1 of b");
}

TEST(Alerts, placesWithoutAValueStayAndValuesWithoutAPlaceGo)
{
    EXPECT_EQ(fillText("%@ and %@", {"one"}), "one and %@");
    EXPECT_EQ(fillText("%@", {"one", "two"}), "one");
    EXPECT_EQ(fillText("%@", {}), "%@");
}

TEST(Alerts, anEmptyValueFillsItsPlace)
{
    EXPECT_EQ(fillText("[%@] [%@]", {"", "b"}), "[] [b]");
}

TEST(Alerts, titleAndTextHaveValuesOfTheirOwn)
{
    const AlertText wording {"Delete %@", "Really %@, %@?", {"Yes", "No"}};

    const Alert alert = makeAlert(wording, {"tea"}, {"tea", "now"});

    EXPECT_EQ(alert.title, "Delete tea");
    EXPECT_EQ(alert.text, "Really tea, now?");
    EXPECT_EQ(alert.buttons, (QStringList {"Yes", "No"}));
}

TEST(Alerts, theButtonsStandInTheirOrder)
{
    EXPECT_EQ(makeAlert(alerts::unlockDatabase).buttons, (QStringList {"No", "Yes"}));
    EXPECT_EQ(makeAlert(alerts::deleteOrder).buttons, (QStringList {"OK", "Cancel"}));
}
