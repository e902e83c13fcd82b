// What an update server says, and which version is newer.
#include "app/UpdateDescription.h"

#include <gtest/gtest.h>

namespace {

std::string list(const std::string& keysAndValues)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + keysAndValues + "</dict></plist>";
}

bool isUpdate(const char* newest, const char* own)
{
    const auto one = readVersion(newest);
    const auto two = readVersion(own);
    return one && two && *one > *two;
}

} // namespace

TEST(UpdateVersion, theFirstPartThatDiffersDecides)
{
    EXPECT_TRUE(isUpdate("2.0", "1.9.9"));
    EXPECT_TRUE(isUpdate("1.10", "1.9"));
    EXPECT_TRUE(isUpdate("1.0.1", "1.0"));
    EXPECT_TRUE(isUpdate("1.2.10", "1.2.9"));
    EXPECT_FALSE(isUpdate("1.9.9", "2.0"));
    EXPECT_FALSE(isUpdate("1.9", "1.10"));
    EXPECT_FALSE(isUpdate("1.1.0", "1.2"));
    EXPECT_FALSE(isUpdate("0.9.9", "1.0.0"));
}

TEST(UpdateVersion, equalVersionsAreNoneAndAMissingThirdPartIsZero)
{
    EXPECT_FALSE(isUpdate("1.2", "1.2"));
    EXPECT_FALSE(isUpdate("1.2.0", "1.2"));
    EXPECT_FALSE(isUpdate("1.2", "1.2.0"));
    EXPECT_EQ(readVersion("1.2"), readVersion("1.2.0"));
    EXPECT_EQ(readVersion("1.02"), readVersion("1.2"));
}

TEST(UpdateVersion, twoOrThreeWholeNumbersAndNothingElse)
{
    EXPECT_EQ(readVersion(" 3.14.159\n"), (ProgramVersion {3, 14, 159}));
    for (const char* none : {"", "2", "1.2.3.4", "1.2.3.4.5", "1..2", ".1", "1.", "1.2.", "2.0b1", "v2.0", "1.-2", "1.+2", "1. 2", "1,2",
             "1.2147483648", "9999999999.0", "2.0 beta", "\u0662.\u0660", "1.2e3", "0x1.2"})
        EXPECT_EQ(readVersion(none), std::nullopt) << none;
}

TEST(UpdateDescription, isReadFromItsFourKeys)
{
    const auto read = readUpdateDescription(
        list("<key>currentversion</key><string>2.0</string><key>newinthisversionurl</key><string>https://example.org/new.html</string>"
             "<key>releasedate</key><string>1 March 2026</string><key>downloadurl</key><string>https://example.org/vendaro.deb</string>"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().version, "2.0");
    EXPECT_EQ(read.value().number, (ProgramVersion {2, 0, 0}));
    EXPECT_EQ(read.value().releaseDate, "1 March 2026");
    EXPECT_EQ(read.value().newInThisVersion, QUrl("https://example.org/new.html"));
    EXPECT_EQ(read.value().download, QUrl("https://example.org/vendaro.deb"));
}

TEST(UpdateDescription, valuesOfOtherKindsCountAsWritten)
{
    const auto read = readUpdateDescription(list("<key>currentversion</key><real>2.10</real>"
                                                 "<key>releasedate</key><date>2026-03-01T09:30:00Z</date><key>extra</key><array/>"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().version, "2.10");
    EXPECT_EQ(read.value().number, (ProgramVersion {2, 10, 0}));
    EXPECT_EQ(read.value().releaseDate, "2026-03-01");
}

TEST(UpdateDescription, addressesThatMayNotBeAskedAreLeftOut)
{
    for (const char* address :
        {"http://example.org/vendaro.deb", "file:///etc/passwd", "ftp://example.org/v", "vendaro.deb", "", "https:///x", "javascript:1"}) {
        const auto read = readUpdateDescription(list("<key>currentversion</key><string>2.0</string><key>downloadurl</key><string>"
            + std::string(address) + "</string><key>newinthisversionurl</key><string>" + address + "</string>"));
        ASSERT_TRUE(read.ok());
        EXPECT_FALSE(read.value().download.isValid()) << address;
        EXPECT_FALSE(read.value().newInThisVersion.isValid()) << address;
    }
}

TEST(UpdateDescription, whatIsNoDescriptionSaysWhy)
{
    for (const std::string& bad : {std::string(), std::string("<html>Not here</html>"), list("<key>currentversion</key>"),
             list("<key>releasedate</key><string>today</string>"), list("<key>currentversion</key><array/>"),
             std::string("<plist version=\"1.0\"><array/></plist>"), list("<key>currentversion</key><string>2.0").substr(0, 100)}) {
        const auto read = readUpdateDescription(bad);
        ASSERT_FALSE(read.ok()) << bad;
        EXPECT_FALSE(read.error().message.empty());
    }
}

TEST(UpdateDescription, wherePartOfItIsMissingItIsNoDescription)
{
    const std::string whole = list("<key>currentversion</key><string>2.0</string>");
    for (std::size_t length = 0; length + std::string("</plist>").size() < whole.size(); ++length)
        EXPECT_FALSE(readUpdateDescription(whole.substr(0, length)).ok()) << length;
}
