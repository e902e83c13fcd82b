#include "contacts/AddressText.h"

#include <gtest/gtest.h>

#include <ostream>

static void PrintTo(const QStringList& lines, std::ostream* out)
{
    *out << lines.join('|').toStdString();
}

namespace {

TEST(AddressTextTest, theFirstLetterOfEveryWordIsLargeAndAllOthersSmall)
{
    EXPECT_EQ(capitalised("ada MARY quill"), "Ada Mary Quill");
    EXPECT_EQ(capitalised("12b mill lane"), "12b Mill Lane");
    EXPECT_EQ(capitalised("THE 3RD FLOOR"), "The 3rd Floor");
    EXPECT_EQ(capitalised("o'brien & sons (north)"), "O'brien & Sons (North)");
    EXPECT_EQ(capitalised("anne-marie"), "Anne-marie");
    EXPECT_EQ(capitalised(""), "");
}

TEST(AddressTextTest, blanksStayAsTheyAreAndBeginAWordWhateverTheirKind)
{
    EXPECT_EQ(capitalised("  two  blanks "), "  Two  Blanks ");
    EXPECT_EQ(capitalised("tab\tand\u00a0hard"), "Tab\tAnd\u00a0Hard");
}

TEST(AddressTextTest, lettersBeyondAsciiHaveCapitals)
{
    EXPECT_EQ(capitalised("ÉCOLE élan ß"), "École Élan SS");
    EXPECT_EQ(capitalised(QString::fromUcs4(U"\U00010428bc")), QString::fromUcs4(U"\U00010400bc"));
}

TEST(AddressTextTest, aTextIsSplitAtLineFeedsOrElseAtCarriageReturns)
{
    EXPECT_EQ(pastedLines("a\nb\nc"), QStringList({"a", "b", "c"}));
    EXPECT_EQ(pastedLines("a\rb\rc"), QStringList({"a", "b", "c"}));
    EXPECT_EQ(pastedLines("a\r\nb\r\nc\r\n"), QStringList({"a", "b", "c"}));
    EXPECT_EQ(pastedLines("a\u2028b"), QStringList({"a", "b"}));
    EXPECT_EQ(pastedLines("a\rb\nc"), QStringList({"a\rb", "c"})) << "line feeds go first";
    EXPECT_EQ(pastedLines("a\rb\n"), QStringList({"a", "b"})) << "one line feed at the end makes no second line";
}

TEST(AddressTextTest, controlCharactersAreNoPartOfALine)
{
    EXPECT_EQ(pastedLines(QString::fromLatin1("A\x1b\0da\n\x07\n1\tRoad\x7f\n\x01\n", 18)), QStringList({"Ada", "", "1\tRoad"}));
    EXPECT_EQ(pastedLines("\x01\n\x02"), QStringList());
}

TEST(AddressTextTest, blanksAtTheEndsOfLinesAndEmptyLinesAtTheEndOfTheTextGo)
{
    EXPECT_EQ(pastedLines("a \u00a0\n b\t\n\nc\n \n\n"), QStringList({"a", " b", "", "c"}));
    EXPECT_EQ(pastedLines(" \n\r\n \u00a0"), QStringList());
    EXPECT_EQ(pastedLines(""), QStringList());
    EXPECT_EQ(pastedLines("one"), QStringList({"one"}));
}

} // namespace
