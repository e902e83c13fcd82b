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
