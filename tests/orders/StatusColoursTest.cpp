// Colours of statuses as the settings keep them: a list of dictionaries with a name and three parts written as text.
#include "orders/StatusColours.h"

#include "foundation/plist/PlistReader.h"

#include <gtest/gtest.h>

namespace {

PlistValue flags(const std::string& entries)
{
    Result<PlistValue> read = plist::read("<plist version=\"1.0\"><array>" + entries + "</array></plist>");
    EXPECT_TRUE(bool(read));
    return read ? std::move(read).value() : PlistValue();
}

std::string flag(const std::string& status, const std::string& red, const std::string& green, const std::string& blue)
{
    return "<dict><key>Status</key><string>" + status + "</string><key>redComponent</key><string>" + red
        + "</string><key>greenComponent</key><string>" + green + "</string><key>blueComponent</key><string>" + blue + "</string></dict>";
}

} // namespace

TEST(StatusColoursTest, aStatusHasTheColourOfItsEntry)
{
    const PlistValue colours = flags(flag("Enquiry", "1", "0.5", "0") + flag("Quote", "0.25", "0", "1"));
    const std::optional<RgbColour> quote = statusColour(colours, "Quote");
    ASSERT_TRUE(quote.has_value());
    EXPECT_FLOAT_EQ(quote->red, 0.25f);
    EXPECT_FLOAT_EQ(quote->green, 0.0f);
    EXPECT_FLOAT_EQ(quote->blue, 1.0f);
}

TEST(StatusColoursTest, theFirstOfTwoEntriesCounts)
{
    const std::optional<RgbColour> colour = statusColour(flags(flag("Quote", "1", "0", "0") + flag("Quote", "0", "1", "0")), "Quote");
    ASSERT_TRUE(colour.has_value());
    EXPECT_FLOAT_EQ(colour->red, 1.0f);
}

TEST(StatusColoursTest, aStatusWithoutAnEntryHasNone)
{
    const PlistValue colours = flags(flag("Quote", "1", "0", "0"));
    EXPECT_FALSE(statusColour(colours, "quote").has_value());
    EXPECT_FALSE(statusColour(colours, "").has_value());
}

TEST(StatusColoursTest, partsThatAreMissingOrDoNotReadAreNought)
{
    const std::string entry = "<dict><key>Status</key><string>Quote</string><key>redComponent</key><string>bright</string></dict>";
    const std::optional<RgbColour> colour = statusColour(flags(entry), "Quote");
    ASSERT_TRUE(colour.has_value());
    EXPECT_FLOAT_EQ(colour->red, 0.0f);
    EXPECT_FLOAT_EQ(colour->green, 0.0f);
    EXPECT_FLOAT_EQ(colour->blue, 0.0f);
}

TEST(StatusColoursTest, anythingButAListOfDictionariesHasNoColours)
{
    EXPECT_FALSE(statusColour(PlistValue(), "Quote").has_value());
    EXPECT_FALSE(statusColour(PlistValue::makeDict(), "Quote").has_value());
    EXPECT_FALSE(statusColour(flags("<string>Quote</string><dict/>"), "Quote").has_value());
}
