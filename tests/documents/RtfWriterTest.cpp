#include "documents/rtf/RtfWriter.h"

#include "documents/rtf/RtfBuilder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextDocument>

#include <algorithm>
#include <iterator>
#include <random>

namespace {

RichText textIn(std::string_view rtf)
{
    return RtfBuilder().build(rtf);
}

std::string plainIn(std::string_view rtf)
{
    return plainTextOf(*makeDocument(textIn(rtf), {})).toStdString();
}

constexpr char head[] = "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl\\f0\\fswiss\\fcharset0 Helvetica-Bold;\\f1\\fswiss Helvetica;"
                        "\\f2\\fmodern Menlo-BoldItalic;\\f3\\froman Times-Roman;\\f4\\fnil Caf\\'e9 Sans;\\f5 Odd-Name-Light;}"
                        "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green64\\blue128;}";

struct Construct {
    const char* name;
    std::string body;
};

void PrintTo(const Construct& construct, std::ostream* out)
{
    *out << construct.body;
}

const std::vector<Construct> constructs {
    {"nothing", ""},
    {"paragraphs", "one\\\n\\\ntwo\\par three\\\n"},
    {"fonts", "\\f0 a\\f1 b\\f2 c\\f3 d\\f4 e\\f5 f\\f9 g"},
    {"boldAgainstTheFont", "\\f0\\b0 a\\f1\\b b\\f2\\i0 c"},
    {"sizes", "\\fs48 large\\fs25 odd\\fs1 tiny\\fs9999 huge"},
    {"styles", "\\b b\\i i\\b0 \\ul u\\ulnone \\strike s\\strike0 \\super x\\nosupersub \\sub y\\plain z"},
    {"colours", "\\cf1 red\\cf2 blue\\cf0 own\\cf7 none\\cb1 marked\\cb0 not"},
    {"groups", "a{\\b b{\\i c}d}e"},
    {"alignment", "\\pard\\qr a\\\n\\pard\\qc b\\\n\\pard\\qj c\\\n\\pard\\ql d\\\n\\pard e"},
    {"indents", "\\pard\\li720\\ri301\\fi-360\\sb7\\sa240 a\\\n\\pard\\li0 b\\\n\\pard c"},
    {"tabStops", "\\pard\\tx333\\tqr\\tx9000\\tqc\\tx9500 a\tb\\tab c\\\n\\pard d"},
    {"pages", "a\\\n\\page b\\\nc\\page\\pard d"},
    {"paper", "\\paperw11900\\paperh16840\\margl1440\\margr720\\margt361\\margb180 x"},
    {"onlyAMargin", "\\margl1440 x"},
    {"onlyAWidth", "\\paperw11900 x"},
    {"signs", "\\{a\\} \\\\ b\\~c\\_d\\emdash\\lquote\\bullet e\\line f"},
    {"unicode", "caf\\'e9 \\uc0\\u8364 \\u-10179 \\u-8704 \\u8232 \\u233 x"},
    {"controls", "a\\'01\\'1f\\'7fb\\'0ac\\'0d\\'0ad\\u0 e\\u8233 f\\u-816 g"},
    {"halfLetters", "\\uc0 a\\u-10179 b\\u-8704 c\\u-10179 \\u-10179 \\u-8704 d"},
    {"links", "a {\\field{\\*\\fldinst{HYPERLINK \"http://a/?x=\\{1\\}&y=\\'e9\"}}{\\fldrslt \\b on\\i e}} z"},
    {"linksSideBySide",
        "{\\field{\\*\\fldinst{HYPERLINK \"http://a/\"}}{\\fldrslt one}}{\\field{\\*\\fldinst{HYPERLINK \"http://b/\"}}{\\fldrslt two}}"},
    {"pictures", "a{{\\NeXTGraphic Logo 1.png \\width2400 \\height1201 \\noorient\n}\xac}{{\\NeXTGraphic x\\'e9\\{.pdf}\xac}b"},
    {"pictureInALink", "{\\field{\\*\\fldinst{HYPERLINK \"http://a/\"}}{\\fldrslt {{\\NeXTGraphic a.png \\width20 \\height20}\xac}}}"},
    {"pictureWithOneSide", "{{\\NeXTGraphic a.png \\width20}\xac}"},
    {"table",
        "a\\\n\\trowd\\clbrdrt\\brdrs\\cellx2000\\cellx4100\\pard\\intbl\\qr 1\\cell\\pard\\intbl 2\\\nb\\cell\\row"
        "\\trowd\\clwWidth1333\\cellx9\\clwWidth700\\cellx9\\pard\\intbl 3\\cell\\cell\\row\\pard z"},
    {"raggedTable", "\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\trowd\\cellx2000\\cellx4000\\pard\\intbl 2\\cell 3\\cell\\row"},
    {"tableWithoutShapes", "\\trowd\\pard\\intbl 1\\cell 2\\cell\\row\\pard"},
    {"tableAtTheStart", "\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\pard after"},
    {"tableAfterAnEmptyParagraph", "\\\n\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\pard after"},
    {"twoTables", "\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\pard\\\n\\trowd\\cellx2000\\pard\\intbl 2\\cell\\row\\pard"},
    {"tablesThatTouch", "\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\pard x\\intbl y\\cell\\row\\pard z"},
    {"unfinishedTable", "\\trowd\\cellx2000\\pard\\intbl 1\\cell two\\\nthree"},
    {"pictureInATable", "\\trowd\\cellx2000\\pard\\intbl {{\\NeXTGraphic a.png}\xac}\\cell\\row"},
    {"listsAsText", "\\ls1{\\listtext\t\\'95\t}First\\\n{\\listtext\t\\'95\t}Second"},
};

} // namespace

class RtfRoundTrip : public testing::TestWithParam<Construct> {
protected:
    std::string file() const { return head + GetParam().body + "}"; }
};

TEST_P(RtfRoundTrip, whatIsReadIsWrittenAndReadAgainTheSame)
{
    const RichText text = textIn(file());
    const std::string written = writeRtf(text);
    EXPECT_TRUE(textIn(written) == text) << written;
}

TEST_P(RtfRoundTrip, aDocumentInBetweenLosesNothing)
{
    const RichText text = textIn(file());
    const DocumentParts parts = takeApart(*makeDocument(text, {}));
    EXPECT_TRUE(parts.text == text) << writeRtf(parts.text) << "\ninstead of\n" << writeRtf(text);
}

TEST_P(RtfRoundTrip, theFileIsAsciiAndTheSameEachTime)
{
    const std::string written = writeRtf(textIn(file()));
    EXPECT_TRUE(std::all_of(written.begin(), written.end(), [](char byte) { return byte == '\n' || (byte >= 0x20 && byte < 0x7f); }));
    EXPECT_EQ(writeRtf(textIn(file())), written);
    EXPECT_EQ(writeRtf(textIn(written)), written);
}

TEST_P(RtfRoundTrip, soDoesAnyDamageToIt)
{
    const std::string pieces[] {
        "}", "{", "\\", "\\cell ", "\\row ", "\\intbl ", "\\pard ", "\\par ", "\\u-10179 ", "\\'0a", "\\b ", "\xac", "\\page "};
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::string damaged = file();
        for (unsigned hit = random() % 3 + 1; hit > 0; --hit) {
            const std::size_t place = random() % damaged.size();
            damaged.replace(place, random() % 4, pieces[random() % std::size(pieces)]);
        }
        const RichText text = textIn(damaged);
        ASSERT_TRUE(textIn(writeRtf(text)) == text) << damaged;
        ASSERT_TRUE(takeApart(*makeDocument(text, {})).text == text) << damaged;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Constructs, RtfRoundTrip, testing::ValuesIn(constructs), [](const auto& test) { return std::string(test.param.name); });

class RtfSampleRoundTrip : public testing::TestWithParam<const char*> { };

TEST_P(RtfSampleRoundTrip, comesBackTheSame)
{
    QFile file(QString(TEST_DATA_DIR "/data/rtf/") + QLatin1String(GetParam()) + ".rtfd/TXT.rtf");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const RichText text = textIn({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    EXPECT_TRUE(textIn(writeRtf(text)) == text);
    EXPECT_TRUE(takeApart(*makeDocument(text, {})).text == text);
}

INSTANTIATE_TEST_SUITE_P(Samples, RtfSampleRoundTrip, testing::Values("01_modern_invoice", "03_table", "04_old_macroman", "06_list"),
    [](const auto& test) { return std::string(test.param).substr(3); });

// The bytes, worked out by hand

TEST(RtfWriter, writesWhatOtherProgramsUnderstand)
{
    EXPECT_EQ(
        writeRtf(textIn("{\\rtf1{\\fonttbl\\f0 Helvetica;}{\\colortbl;\\red1\\green2\\blue3;}\\paperw100\\paperh200 a {\\b\\cf1 b\\'e9}\\\n"
                        "\\pard\\qr\\li20 \\{c}")),
        "{\\rtf1\\ansi\\ansicpg1252\\uc0\n"
        "{\\fonttbl\\f0\\fswiss\\fcharset0 Helvetica;}\n"
        "{\\colortbl;\\red1\\green2\\blue3;}\n"
        "\\paperw100\\paperh200\n"
        "\\pard\n"
        "\\f0\\fs24\\cf0 a \\b\\cf1 b\\u233 \\\n"
        "\\pard\\qr\\li20\n"
        "\\b0\\cf0 \\{c}");
}

TEST(RtfWriter, writesTablesRowByRow)
{
    const std::string file =
        writeRtf(textIn("{\\rtf1\\trowd\\clbrdrt\\brdrs\\cellx1500\\cellx3000\\pard\\intbl 1\\cell 2\\cell\\row\\pard z}"));
    EXPECT_NE(file.find("\\itap1\\trowd\n"
                        "\\clbrdrt\\brdrs\\brdrw20\\clbrdrl\\brdrs\\brdrw20\\clbrdrb\\brdrs\\brdrw20\\clbrdrr\\brdrs\\brdrw20"
                        "\\clwWidth1500\\clftsWidth3\\cellx1500\n"
                        "\\clwWidth1500\\clftsWidth3\\cellx3000\n"
                        "\\pard\\intbl\\itap1\n\\f0\\fs24\\cf0 1\\cell\n"
                        "\\pard\\intbl\\itap1\n2\\cell\n"
                        "\\lastrow\\row\n"
                        "\\pard\nz}"),
        std::string::npos)
        << file;
}

TEST(RtfWriter, aLinkHasItsAddressAndItsWords)
{
    const std::string file = writeRtf(textIn("{\\rtf1 {\\field{\\*\\fldinst{HYPERLINK \"http://a/\"}}{\\fldrslt shop}}.}"));
    EXPECT_NE(
        file.find("{\\field{\\*\\fldinst{HYPERLINK \"http://a/\"}}{\\fldrslt \\f0\\fs24\\cf0 shop}}\\f0\\fs24\\cf0 ."), std::string::npos)
        << file;
}

TEST(RtfWriter, theNumbersOfLettersHaveSixteenBitsAndASign)
{
    // U+FFFD is 65533, less 65536 that is -3; U+1F600 is D83D DE00, -10179 and -8704.
    EXPECT_NE(writeRtf(textIn("{\\rtf1\\uc0 \\u65533 \\u-10179 \\u-8704 }")).find("\\u-3 \\u-10179 \\u-8704 "), std::string::npos);
}

// What only a document can hold

TEST(RtfWriter, lineEndsWithinARunAreLines)
{
    RichText text;
    text.blocks.emplace_back(RichParagraph {{}, {{"a\nb", {}, {}, {}}}});
    EXPECT_EQ(plainIn(writeRtf(text)), "a\u2028b");
}

TEST(RtfWriter, aFontNobodyNamedIsWrittenByItsFamily)
{
    for (const auto& [family, name] : std::vector<std::pair<QString, std::string>> {{"Liberation Sans", "Helvetica"},
             {"Liberation Serif", "Times"}, {"Liberation Mono", "Courier"}, {"Inter", "Inter"}, {"Well-Known", "Well-Known-Regular"}}) {
        QTextCharFormat format;
        format.setFontFamilies({family});
        RichText text;
        text.blocks.emplace_back(RichParagraph {{}, {{"a", format, {}, {}}}});
        const std::string written = writeRtf(text);
        EXPECT_NE(written.find(' ' + name + ";}"), std::string::npos) << written;
        const RichText again = textIn(written);
        EXPECT_EQ(std::get<RichParagraph>(again.blocks[0]).runs[0].format.fontFamilies().toStringList(), QStringList(family));
    }
}

TEST(RtfWriter, aFontKeepsTheNameItHadUntilItsStyleIsAnother)
{
    RichText text = textIn(std::string(head) + "\\f0 a}");
    RichRun& run = std::get<RichParagraph>(text.blocks[0]).runs[0];
    EXPECT_NE(writeRtf(text).find(" Helvetica-Bold;"), std::string::npos);
    run.format.setFontWeight(QFont::Normal);
    EXPECT_NE(writeRtf(text).find(" Helvetica;"), std::string::npos);
    EXPECT_EQ(std::get<RichParagraph>(textIn(writeRtf(text)).blocks[0]).runs[0].format.fontWeight(), QFont::Normal);
    run.format.setFontFamilies({QString("Inter")});
    EXPECT_NE(writeRtf(text).find(" Inter;"), std::string::npos);
}

TEST(RtfWriter, aQuotationMarkInAnAddressDoesNotEndIt)
{
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorHref("http://a/\"b\"");
    RichText text;
    text.blocks.emplace_back(RichParagraph {{}, {{"a", format, {}, {}}}});
    EXPECT_EQ(std::get<RichParagraph>(textIn(writeRtf(text)).blocks[0]).runs[0].format.anchorHref(), "http://a/%22b%22");
}

TEST(RtfWriter, anEmptyTextIsAFileWithAnEmptyParagraph)
{
    const RichText again = textIn(writeRtf({}));
    ASSERT_EQ(again.blocks.size(), 1u);
    EXPECT_TRUE(std::get<RichParagraph>(again.blocks[0]).runs.empty());
}
