#include "contacts/VcardProperty.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

std::vector<VcardProperty> propertiesOf(std::string_view bytes)
{
    std::vector<VcardProperty> properties;
    VcardLines lines(bytes);
    for (VcardProperty property; lines.next(property);)
        properties.push_back(property);
    return properties;
}

VcardProperty propertyOf(std::string_view bytes)
{
    const std::vector<VcardProperty> properties = propertiesOf(bytes);
    EXPECT_EQ(properties.size(), 1u) << bytes;
    return properties.empty() ? VcardProperty() : properties.front();
}

TEST(VcardPropertyTest, aLineHasGroupNameTypesAndValues)
{
    const VcardProperty property = propertyOf("item1.adr;type=Home,pref;TYPE=\"work,voice\":;;12 Mill Lane;Hexworth;;HX1 2AB;");
    EXPECT_EQ(property.group, "ITEM1");
    EXPECT_EQ(property.name, "ADR");
    EXPECT_EQ(property.types, Strings({"HOME", "PREF", "WORK", "VOICE"}));
    EXPECT_EQ(property.values, Strings({"", "", "12 Mill Lane", "Hexworth", "", "HX1 2AB", ""}));
    EXPECT_TRUE(property.hasType("WORK"));
    EXPECT_FALSE(property.hasType("CELL"));
}

TEST(VcardPropertyTest, olderCardsNameTypesBare)
{
    const VcardProperty property = propertyOf("TEL;CELL;VOICE:+49 170 1");
    EXPECT_EQ(property.types, Strings({"CELL", "VOICE"}));
    EXPECT_EQ(property.text, "+49 170 1");
}

TEST(VcardPropertyTest, foldedLinesBelongTogetherAndLoseOneBlank)
{
    for (const char* text :
        {"FN:Ada Ma\r\n ry  \r\n  Quill", "FN:Ada Ma\n ry  \n  Quill", "FN:Ada Ma\r\r\n ry  \r\r\n  Quill", "FN:Ada Ma\r\try  \r  Quill"})
        EXPECT_EQ(propertyOf(text).text, "Ada Mary   Quill") << text;
}

TEST(VcardPropertyTest, theLineIsTheOneItBeginsIn)
{
    const std::vector<VcardProperty> properties = propertiesOf("A:1\r\r\n\r\r\nB:2\r\r\n 3\r\r\nC:4");
    ASSERT_EQ(properties.size(), 3u);
    EXPECT_EQ(properties[0].line, 1);
    EXPECT_EQ(properties[1].line, 3);
    EXPECT_EQ(properties[2].line, 5);
}

TEST(VcardPropertyTest, escapedSignsStandForThemselves)
{
    const VcardProperty property = propertyOf("N:a\\;b\\,c;d,e\\\\;http\\://x;l1\\nl2\\Nl3;C:\\temp\\");
    EXPECT_EQ(property.values, Strings({"a;b,c", "d,e\\", "http://x", "l1\nl2\nl3", "C:\\temp\\"}));
    EXPECT_EQ(property.text, "a;b,c;d,e\\;http://x;l1\nl2\nl3;C:\\temp\\");
}

TEST(VcardPropertyTest, quotedPrintableIsDecodedAfterTheValuesAreTakenApart)
{
    const VcardProperty property =
        propertyOf("ADR;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:;;Stra=C3=9Fe=3B 5=0D=0AHof;M=C3=\r\n=BCnchen;=zz=\r\n");
    EXPECT_EQ(property.values.at(2), "Straße; 5\r\nHof");
    EXPECT_EQ(property.values.at(3), "München");
    EXPECT_EQ(property.values.at(4), "=zz=") << "what is no code stays";
}

TEST(VcardPropertyTest, aSoftBreakDoesNotSwallowTheEndOfTheCard)
{
    const std::vector<VcardProperty> properties = propertiesOf("NOTE;QUOTED-PRINTABLE:a=\nEND:VCARD\n");
    ASSERT_EQ(properties.size(), 2u);
    EXPECT_EQ(properties[1].name, "END");
}

TEST(VcardPropertyTest, charactersAreReadAsTheCardOrElseTheBytesSay)
{
    EXPECT_EQ(propertyOf("FN;CHARSET=Windows-1252:Zo\xeb \x80").text, "Zoë €");
    EXPECT_EQ(propertyOf("FN;CHARSET=ISO-8859-2:\xa9koda").text, "Škoda");
    EXPECT_EQ(propertyOf("FN;CHARSET=Shift_JIS:\x8e\x52\x93\x63").text, "山田");
    EXPECT_EQ(propertyOf("FN;CHARSET=SHIFT_JIS:\x95\x5c").text, "表") << "a backslash in a letter is none";
    EXPECT_EQ(propertyOf("FN:Zoë").text, "Zoë");
    EXPECT_EQ(propertyOf("FN:Zo\xeb").text, "Zoë") << "no UTF-8, so it is what most cards are in";
    EXPECT_EQ(propertyOf("FN;CHARSET=nobody-knows:Zo\xeb").text, "Zoë");
    EXPECT_EQ(propertyOf("FN;CHARSET=nobody-knows:Zoë").text, "Zoë");
}

TEST(VcardPropertyTest, filesMayBeginWithAMarkOrHaveTwoBytesALetter)
{
    EXPECT_EQ(propertyOf("\xef\xbb\xbf"
                         "FN:Ada")
                  .name,
        "FN");
    EXPECT_EQ(propertyOf(std::string_view("\xff\xfe"
                                          "F\0N\0:\0\xeb\0",
                             10))
                  .text,
        "ë");
    EXPECT_EQ(propertyOf(std::string_view("\xfe\xff"
                                          "\0F\0N\0:\0\xeb",
                             10))
                  .text,
        "ë");
}

TEST(VcardPropertyTest, encodedDataIsPassedOverIndentedOrNot)
{
    for (const char* data : {"PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AAQ\n SkZJ\nFN:Ada", "PHOTO;BASE64:\n/9j/4AAQ\nSkZJ==\n\nFN:Ada"}) {
        const std::vector<VcardProperty> properties = propertiesOf(data);
        ASSERT_EQ(properties.size(), 2u) << data;
        EXPECT_TRUE(properties[0].values.empty());
        EXPECT_FALSE(properties[1].isBroken);
        EXPECT_EQ(properties[1].text, "Ada");
    }
}

TEST(VcardPropertyTest, aLineWithoutNameOrColonIsBroken)
{
    for (const char* line : {"no colon", ":value", "A B:1", "TEL;TYPE=\"work:1", "=41"}) {
        const std::vector<VcardProperty> properties = propertiesOf("FN:Ada\n" + std::string(line) + "\nTEL:1");
        ASSERT_EQ(properties.size(), 3u) << line;
        EXPECT_TRUE(properties[1].isBroken) << line;
        EXPECT_EQ(properties[1].line, 2) << line;
    }
}

TEST(VcardPropertyTest, aLineThatIsTooLongIsNotTakenWhetherFoldedOrNot)
{
    const std::string most(longestVcardProperty - 3, 'x');
    EXPECT_FALSE(propertyOf("FN:" + most).isTooLong);
    EXPECT_TRUE(propertyOf("FN:" + most + 'x').isTooLong);
    EXPECT_TRUE(propertyOf("FN:" + most + "\n x").isTooLong);
    std::string folded = "FN:";
    for (int line = 0; line < 100'000; ++line)
        folded += "\n 0123456789";
    const std::vector<VcardProperty> properties = propertiesOf(folded + "\nTEL:1");
    ASSERT_EQ(properties.size(), 2u);
    EXPECT_TRUE(properties[0].isTooLong);
    EXPECT_TRUE(properties[0].values.empty());
    EXPECT_EQ(properties[1].text, "1");
}

TEST(VcardPropertyTest, valuesBeyondThoseThatCountAreLeftOut)
{
    const VcardProperty property = propertyOf("N:a;b" + std::string(60'000, ';'));
    EXPECT_EQ(property.values.size(), mostVcardValues);
    EXPECT_EQ(property.values[1], "b");
    EXPECT_EQ(property.text.size(), 60'003u);
    EXPECT_EQ(propertyOf("N:" + std::string(mostVcardValues - 1, ';') + "z").values.back(), "z");
}

TEST(VcardPropertyTest, waysToEndLinesMayBeMixed)
{
    for (const char* text : {"A:1\rB:2\nC:3\r\nD:4", "A:1\nB:2\nC:3\rD:4\r", "A:1\rB:2\rC:3\rD:4\n"}) {
        const std::vector<VcardProperty> properties = propertiesOf(text);
        ASSERT_EQ(properties.size(), 4u) << text;
        EXPECT_EQ(properties[3].text, "4");
        EXPECT_EQ(properties[3].line, 4);
    }
}

TEST(VcardPropertyTest, aSoftBreakMayFollowAFoldedLine)
{
    EXPECT_EQ(propertyOf("FN;ENCODING=QUOTED-PRINTABLE:Ada \n Qu=\n=69ll").text, "Ada Quill");
    EXPECT_EQ(propertyOf("FN;ENCODING=QUOTED-PRINTABLE:Ada=\n Q\n uill").text, "Ada Quill");
}

TEST(VcardPropertyTest, theShareSaysHowMuchIsBehind)
{
    VcardLines lines("A:1\nB:2\n");
    VcardProperty property;
    EXPECT_DOUBLE_EQ(lines.share(), 0);
    lines.next(property);
    EXPECT_DOUBLE_EQ(lines.share(), 0.5);
    lines.next(property);
    EXPECT_DOUBLE_EQ(lines.share(), 1);
    EXPECT_DOUBLE_EQ(VcardLines("").share(), 1);
}

TEST(VcardPropertyTest, nothingIsFoundInNothing)
{
    for (const char* text : {"", "\n", "\r\r\r\n\n", " ", "\xef\xbb\xbf"})
        EXPECT_TRUE(propertiesOf(text).empty());
}

} // namespace
