#include "documents/rtf/RtfTextEdit.h"

#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfBuilder.h"

#include <gtest/gtest.h>

#include <QTextDocument>

TEST(RtfTextEdit, everyOccurrenceIsReplacedAndTheRestStaysToTheByte)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1\\ansi a <x> b\\par <x>\\\n}", "<x>", "<yy>"), "{\\rtf1\\ansi a <yy> b\\par <yy>\\\n}");
}

TEST(RtfTextEdit, withoutAnOccurrenceNothingChanges)
{
    const std::string file = "{\\rtf1 {\\fonttbl\\f0 Inter;}\r\n\\pard caf\\'e9 \\u8217 ?\\bin3 {}{ end}";
    EXPECT_EQ(replaceInRtf(file, "<x>", "y"), file);
    EXPECT_EQ(replaceInRtf(file, "", "y"), file);
    EXPECT_EQ(replaceInRtf("", "<x>", "y"), "");
}

TEST(RtfTextEdit, anOccurrenceRunsThroughChangesOfFormatWhichStay)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1 \\b Total: \\b0 {\\i <total>} due}", "Total: <total>", "Sum"), "{\\rtf1 \\b Sum\\b0 {\\i } due}");
}

TEST(RtfTextEdit, andThroughLineEndsOfTheFile)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1 a <to\r\ntal> b}", "<total>", "<due>"), "{\\rtf1 a <due>\r\n b}");
}

TEST(RtfTextEdit, butNotThroughTheEndOfAParagraphALineOrACell)
{
    for (const char* end : {"\\par ", "\\\n", "\\line ", "\\cell ", "\\tab ", "\\'e9", "\\u233 ", "\\~"}) {
        const std::string file = std::string("{\\rtf1 <to") + end + "tal>}";
        EXPECT_EQ(replaceInRtf(file, "<total>", "x"), file) << end;
    }
}

TEST(RtfTextEdit, butThroughAllThatShowsNothing)
{
    for (const char* unseen : {"\\insrsid1234 ", "\\-", "{\\*\\bkmkstart here}", "\\pard ", "\\cf2\\lang1033 ", "{\\info x}"}) {
        const std::string file = std::string("{\\rtf1 <to") + unseen + "tal>}";
        EXPECT_EQ(replaceInRtf(file, "<total>", "x"), std::string("{\\rtf1 x") + unseen + "}");
    }
}

TEST(RtfTextEdit, whatIsNotShownStays)
{
    for (const char* file :
        {"{\\rtf1{\\info{\\title <x>}}}", "{\\rtf1{\\fonttbl\\f0 <x>;}}", "{\\rtf1{\\header <x>}}", "{\\rtf1{\\*\\any <x>}}",
            "{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"<x>\"}}}", "{\\rtf1{{\\NeXTGraphic <x>.png}\\'ac}}", "{\\rtf1\\bin3 <x>}"})
        EXPECT_EQ(replaceInRtf(file, "<x>", "y"), file);
    EXPECT_EQ(replaceInRtf("{\\rtf1{\\info <x>}<x>{\\fldrslt <x>}}", "<x>", "y"), "{\\rtf1{\\info <x>}y{\\fldrslt y}}");
}

TEST(RtfTextEdit, lettersMayBeSpeltByNumber)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1 \\'3cx\\'3E.}", "<x>", "y"), "{\\rtf1 y.}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\uc0 \\u60 x\\u62 .}", "<x>", "y"), "{\\rtf1\\uc0 y.}");
    EXPECT_EQ(replaceInRtf("{\\rtf1 \\u60 ?x\\u62\\'3f.}", "<x>", "y"), "{\\rtf1 y.}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\b\\'3cx>12}", "<x>", ""), "{\\rtf1\\b 12}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\uc0\\u60<x>12}", "<x>", ""), "{\\rtf1\\uc0\\u60 12}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\uc0 \\u60\\u60 }", "<<", "y"), "{\\rtf1\\uc0 y}");
    EXPECT_EQ(replaceInRtf("{\\rtf1 \\{x\\}}", "{x}", "y"), "{\\rtf1 y}");
}

TEST(RtfTextEdit, aLetterOfTwoBytesIsNotTakenForItsSecond)
{
    // In code page 932, 83 42 is one letter and so is 93 FA; 42 alone is "B".
    EXPECT_EQ(replaceInRtf("{\\rtf1\\ansi\\ansicpg932 \\'83B}", "B", "x"), "{\\rtf1\\ansi\\ansicpg932 \\'83B}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\ansi\\ansicpg932 \\'93\\'faB}", "B", "x"), "{\\rtf1\\ansi\\ansicpg932 \\'93\\'fax}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\ansi\\ansicpg1252 \\'83B}", "B", "x"), "{\\rtf1\\ansi\\ansicpg1252 \\'83x}");
}

TEST(RtfTextEdit, aControlWordBeforeAnOccurrenceStaysAWordOfItsOwn)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1\\b<total>}", "<total>", "due"), "{\\rtf1\\b due}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\b<x>abc}", "<x>", ""), "{\\rtf1\\b abc}");
    EXPECT_EQ(replaceInRtf("{\\rtf1 <to\\fs24>12}", "<to>", ""), "{\\rtf1 \\fs24 12}");
    EXPECT_EQ(replaceInRtf("{\\rtf1\\b <x> abc}", "<x>", ""), "{\\rtf1\\b  abc}");
    EXPECT_EQ(replaceInRtf("{\\rtf1 Total<x>}", "<x>", "1"), "{\\rtf1 Total1}");
}

TEST(RtfTextEdit, signsWithAMeaningAreWrittenAsText)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1 <x>}", "<x>", "{a\\b}"), "{\\rtf1 \\{a\\\\b\\}}");
}

TEST(RtfTextEdit, whatIsPutInIsNotLookedInto)
{
    EXPECT_EQ(replaceInRtf("{\\rtf1 <x><x>}", "<x>", "<x>-"), "{\\rtf1 <x>-<x>-}");
    EXPECT_EQ(replaceInRtf("{\\rtf1 aaa}", "aa", "a"), "{\\rtf1 aa}");
}

TEST(RtfTextEdit, theResultReadsAsTheTextReplaced)
{
    const std::string file =
        "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl\\f0 Inter;}\\pard\\b Betrag\\b0 : <total>\\\nR\\'fcckgabe <to\\i tal>\\i0 .}";
    const RichText text = RtfBuilder().build(replaceInRtf(file, "<total>", "<totaldue>"));

    EXPECT_EQ(plainTextOf(*makeDocument(text, {})).toStdString(),
        "Betrag: <totaldue>\nR\xc3\xbc"
        "ckgabe <totaldue>.");
}
