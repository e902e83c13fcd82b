// Hairlines, icons that are only looked at, and what assistive programs are told of the kit's own controls.
#include "KitTest.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/IconLabel.h"
#include "ui/kit/KitAccessibility.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/SegmentedChoice.h"

#include <QAccessible>

using namespace kittest;

TEST(HairlineTest, isOnePixelWideAndGrowsAlongItsLine)
{
    const Hairline lying;
    EXPECT_EQ(lying.maximumHeight(), 1);
    EXPECT_GT(lying.maximumWidth(), 1);
    const Hairline standing(Qt::Vertical);
    EXPECT_EQ(standing.maximumWidth(), 1);
    EXPECT_GT(standing.maximumHeight(), 1);
}

TEST(IconLabelTest, isAsLargeAsItsIconOrItsTile)
{
    IconLabel icon("object-locked", IconRole::normal, 22);
    EXPECT_EQ(icon.size(), QSize(22, 22));
    icon.setTile(48);
    EXPECT_EQ(icon.size(), QSize(48, 48));
}

TEST(IconLabelTest, paintsItsIconInTheColourOfItsRole)
{
    IconLabel icon("object-locked", IconRole::error, 32);
    EXPECT_TRUE(contains(picture(icon), themeColour(Icons::colourOfRole(IconRole::error, QIcon::Normal))));
    icon.setIcon("object-locked", IconRole::accent);
    EXPECT_TRUE(contains(picture(icon), themeColour(Icons::colourOfRole(IconRole::accent, QIcon::Normal))));
}

TEST(KitAccessibilityTest, ownControlsHaveTheRolesOfWhatTheyAre)
{
    installKitAccessibility();
    MessageBar bar(MessageBar::Kind::warning);
    SegmentedChoice choice({"One", "Two"});
    ASSERT_NE(QAccessible::queryAccessibleInterface(&bar), nullptr);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&bar)->role(), QAccessible::AlertMessage);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&choice)->role(), QAccessible::Grouping);
}
