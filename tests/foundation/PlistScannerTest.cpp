#include "foundation/plist/PlistScanner.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// What is taken as the text of "<string>TEXT</string>"; "refused" when it is left to the token scanner.
std::string takenFrom(const std::string& text, const std::string& behind = "</string>")
{
    const std::string bytes = "<string>" + text + behind;
    PlistScanner scanner(bytes, 0);
    EXPECT_TRUE(scanner.take("<string>"));
    const std::optional<std::string_view> taken = scanner.takePlainText();
    EXPECT_EQ(scanner.position(), taken ? bytes.size() : std::string("<string>").size());
    return taken ? std::string(*taken) : "refused";
}

} // namespace

TEST(PlistScanner, takesExactlyWhatIsExpectedOrNothing)
{
    PlistScanner scanner("<dict>", 0);

    EXPECT_FALSE(scanner.take("<array>"));
    EXPECT_FALSE(scanner.take("<dict>\n"));
    EXPECT_EQ(scanner.position(), 0u);
    EXPECT_TRUE(scanner.take("<di"));
    EXPECT_TRUE(scanner.take("ct>"));
    EXPECT_EQ(scanner.position(), 6u);
    EXPECT_TRUE(scanner.take(""));
    EXPECT_FALSE(scanner.take("x"));
}

TEST(PlistScanner, takesPlainTextsOfAnyLength)
{
    for (std::size_t length = 0; length < 70; ++length) {
        const std::string text(length, 'a');
        EXPECT_EQ(takenFrom(text), text);
    }
    EXPECT_EQ(takenFrom("two\nlines\tand a tab"), "two\nlines\tand a tab");
    EXPECT_EQ(takenFrom("\xe2\x82\xac 5 \"net\" > 4"), "\xe2\x82\xac 5 \"net\" > 4");
}

TEST(PlistScanner, leavesWhatHasToBeResolvedOrCleanedWhereverItStands)
{
    for (const char* special : {"&amp;", "&#13;", "\r", "\x01", "\x1f", "\xef\xbf\xbe", "<!-- -->", "<![CDATA[x]]>", "<b/>"}) {
        for (std::size_t before = 0; before < 40; ++before) {
            const std::string text = std::string(before, 'a') + special + std::string(40 - before, 'b');
            EXPECT_EQ(takenFrom(text), "refused") << before;
        }
    }
}

TEST(PlistScanner, leavesATextThatIsNotClosed)
{
    EXPECT_EQ(takenFrom("cut", ""), "refused");
    EXPECT_EQ(takenFrom("cut", "</strin"), "refused");
    EXPECT_EQ(takenFrom(std::string(100, 'a'), "</key>"), "refused");
    EXPECT_EQ(takenFrom("", ""), "refused");
}

TEST(PlistScanner, tellsApartWhatComesByItsWord)
{
    const std::string bytes = "....<key>amount</key>";
    const PlistScanner scanner(bytes, 4);

    EXPECT_EQ(scanner.wordAt(5), PlistScanner("<key>amount</key>", 0).wordAt(5));
    EXPECT_NE(scanner.wordAt(5), PlistScanner("<key>amoun</key>.", 0).wordAt(5));
    EXPECT_EQ(scanner.wordAt(10), 0u) << "fewer than eight bytes are left";
}
