#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfBuilder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

namespace {

const QString samples = QStringLiteral(TEST_DATA_DIR "/data/rtf");

std::unique_ptr<QTextDocument> documentOf(std::string_view rtf)
{
    return makeDocument(RtfBuilder().build(rtf), {});
}

std::string textOf(std::string_view rtf)
{
    return plainTextOf(*documentOf(rtf)).toStdString();
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// The format of the text where it first stands in the document.
QTextCharFormat formatOf(const QTextDocument& document, const QString& text)
{
    const QTextCursor found = document.find(text);
    EXPECT_FALSE(found.isNull()) << text.toStdString();
    QTextCursor cursor = found;
    cursor.setPosition(found.selectionStart() + 1);
    return cursor.charFormat();
}

QTextBlockFormat blockFormatOf(const QTextDocument& document, const QString& text)
{
    return document.find(text).block().blockFormat();
}

const QTextTable* tableOf(const QTextDocument& document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (const QTextTable* table = QTextCursor(block).currentTable())
            return table;
    }
    return nullptr;
}

constexpr char twoFonts[] = "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl\\f0\\fswiss\\fcharset0 Helvetica-Bold;"
                            "\\f1\\fswiss\\fcharset0 Helvetica;\\f2\\fmodern\\fcharset0 Menlo-BoldItalic;"
                            "\\f3\\froman Times-Roman;}{\\colortbl;\\red255\\green0\\blue0;\\red0\\green64\\blue128;}";

// Whole packages

class RichTextPackages : public testing::TestWithParam<const char*> { };

TEST_P(RichTextPackages, giveTheirText)
{
    const QString base = samples + '/' + QLatin1String(GetParam());
    const QByteArray expected = contentsOf(base + ".expected.txt");
    const QByteArray rtf = contentsOf(base + ".rtfd/TXT.rtf");
    const auto document = makeDocument(RtfBuilder().build({rtf.constData(), static_cast<std::size_t>(rtf.size())}), base + ".rtfd");
    EXPECT_EQ(plainTextOf(*document).toStdString(), expected.toStdString());
}

TEST_P(RichTextPackages, cutAtAnyByteStillReadAsFarAsTheyGo)
{
    const QByteArray rtf = contentsOf(samples + '/' + QLatin1String(GetParam()) + ".rtfd/TXT.rtf");
    qsizetype longest = 0;
    for (qsizetype length = 0; length <= rtf.size(); ++length) {
        const qsizetype characters = documentOf({rtf.constData(), static_cast<std::size_t>(length)})->characterCount();
        // A picture's name or a link that has begun may take away a sign or two again.
        EXPECT_GE(characters + 8, longest) << length;
        longest = std::max(longest, characters);
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, RichTextPackages, testing::Values("01_modern_invoice", "03_table", "04_old_macroman", "06_list"),
    [](const auto& test) { return std::string(test.param).substr(3); });

TEST(RichTextTest, everyByteOfAPackageMayBeWrong)
{
    const QByteArray rtf = contentsOf(samples + "/01_modern_invoice.rtfd/TXT.rtf");
    for (qsizetype at = 0; at < rtf.size(); ++at) {
        for (const char wrong : {'}', '\\'}) {
            QByteArray damaged = rtf;
            damaged[at] = wrong;
            const RichText text = RtfBuilder().build({damaged.constData(), static_cast<std::size_t>(damaged.size())});
            ASSERT_FALSE(text.blocks.empty());
        }
    }
}

TEST(RichTextTest, nothingIsAnEmptyDocument)
{
    EXPECT_EQ(textOf(""), "");
    EXPECT_EQ(textOf("{\\rtf1}"), "");
}

// Paragraphs

TEST(RichTextTest, aBackslashBeforeALineEndStartsAParagraph)
{
    EXPECT_EQ(textOf("{\\rtf1 one\\\ntwo}"), "one\ntwo");
    EXPECT_EQ(textOf("{\\rtf1 one\\\r\ntwo}"), "one\ntwo");
}

TEST(RichTextTest, soDoesTheWordForAParagraph)
{
    EXPECT_EQ(textOf("{\\rtf1 one\\par two\\par\n}"), "one\ntwo\n");
}

TEST(RichTextTest, aLineEndInTheFileAloneIsNone)
{
    EXPECT_EQ(textOf("{\\rtf1 one\ntwo\r\n three}"), "onetwo three");
}

TEST(RichTextTest, tabsStandAsBytesOrAsWords)
{
    EXPECT_EQ(textOf("{\\rtf1 a\tb\\tab c}"), "a\tb\tc");
}

TEST(RichTextTest, aLineBreakStaysInItsParagraph)
{
    const auto document = documentOf("{\\rtf1 a\\line b}");
    EXPECT_EQ(document->blockCount(), 1);
    EXPECT_EQ(document->begin().text(), QString("a") + QChar(QChar::LineSeparator) + "b");
}

TEST(RichTextTest, paragraphsAreAligned)
{
    const auto document = documentOf("{\\rtf1\\pard\\qr right\\\n\\pard\\qc middle\\\n\\pard\\qj both\\\n\\pard left}");
    EXPECT_EQ(blockFormatOf(*document, "right").alignment(), Qt::AlignRight);
    EXPECT_EQ(blockFormatOf(*document, "middle").alignment(), Qt::AlignHCenter);
    EXPECT_EQ(blockFormatOf(*document, "both").alignment(), Qt::AlignJustify);
    EXPECT_FALSE(blockFormatOf(*document, "left").alignment() & Qt::AlignRight);
}

TEST(RichTextTest, paragraphsAreIndentedInTwips)
{
    // 720 twips are half an inch, 48 of the layout's 96 units.
    const QTextBlockFormat format = blockFormatOf(*documentOf("{\\rtf1\\pard\\li720\\fi-360\\sb240 x}"), "x");
    EXPECT_EQ(format.leftMargin(), 48);
    EXPECT_EQ(format.textIndent(), -24);
    EXPECT_EQ(format.topMargin(), 16);
}

TEST(RichTextTest, tabStopsHaveTheirPlaceAndKind)
{
    const auto document = documentOf("{\\rtf1\\pard\\tx7000\\tqr\\tx9000 x}");
    const QList<QTextOption::Tab> tabs = blockFormatOf(*document, "x").tabPositions();
    ASSERT_EQ(tabs.size(), 2);
    EXPECT_NEAR(tabs[0].position, 466.667, 0.01);
    EXPECT_EQ(tabs[0].type, QTextOption::LeftTab);
    EXPECT_EQ(tabs[1].position, 600);
    EXPECT_EQ(tabs[1].type, QTextOption::RightTab);
}

TEST(RichTextTest, aNewParagraphFormatForgetsTheOldOne)
{
    const auto document = documentOf("{\\rtf1\\pard\\qr\\li720 a\\\n\\pard b}");
    EXPECT_EQ(blockFormatOf(*document, "b").leftMargin(), 0);
}

// Characters

TEST(RichTextTest, aFontsNameCarriesItsStyle)
{
    const auto document = documentOf(std::string(twoFonts) + "\\f0 heavy \\f1 plain \\f2 both}");
    EXPECT_EQ(formatOf(*document, "heavy").fontWeight(), QFont::Bold);
    EXPECT_EQ(formatOf(*document, "plain").fontWeight(), QFont::Normal);
    EXPECT_EQ(formatOf(*document, "both").fontWeight(), QFont::Bold);
    EXPECT_TRUE(formatOf(*document, "both").fontItalic());
}

TEST(RichTextTest, wordsCarryStyleTogetherWithTheFont)
{
    const auto document = documentOf(std::string(twoFonts) + "\\f0\\b heavy\\f1\\b0  plain \\i slanted\\i0  \\ul lined\\ulnone  end}");
    EXPECT_EQ(formatOf(*document, "heavy").fontWeight(), QFont::Bold);
    EXPECT_EQ(formatOf(*document, "plain").fontWeight(), QFont::Normal);
    EXPECT_TRUE(formatOf(*document, "slanted").fontItalic());
    EXPECT_TRUE(formatOf(*document, "lined").fontUnderline());
    EXPECT_FALSE(formatOf(*document, "end").fontUnderline());
}

TEST(RichTextTest, fontTableEntriesMayStandInBraces)
{
    const auto document = documentOf("{\\rtf1{\\fonttbl{\\f0\\fswiss Helvetica;}{\\f7\\froman Times New Roman;}}\\f7 text}");
    EXPECT_EQ(formatOf(*document, "text").fontFamilies().toStringList(), QStringList("Liberation Serif"));
}

TEST(RichTextTest, sizesAreHalfPointsAndTwelvePointsAtFirst)
{
    const auto document = documentOf("{\\rtf1 small \\fs48 large \\fs25 odd}");
    EXPECT_EQ(formatOf(*document, "small").fontPointSize(), 12);
    EXPECT_EQ(formatOf(*document, "large").fontPointSize(), 24);
    EXPECT_EQ(formatOf(*document, "odd").fontPointSize(), 12.5);
}

TEST(RichTextTest, coloursComeFromTheTableAndTheFirstIsTheReadersOwn)
{
    const auto document = documentOf(std::string(twoFonts) + "\\cf1 red \\cf2 blue \\cf0 own \\cf99 none}");
    EXPECT_EQ(formatOf(*document, "red").foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(formatOf(*document, "blue").foreground().color(), QColor(0, 64, 128));
    EXPECT_FALSE(formatOf(*document, "own").hasProperty(QTextFormat::ForegroundBrush));
    EXPECT_FALSE(formatOf(*document, "none").hasProperty(QTextFormat::ForegroundBrush));
}

TEST(RichTextTest, aGroupKeepsItsFormatToItself)
{
    const auto document = documentOf("{\\rtf1 a{\\b\\super c}d}");
    EXPECT_EQ(formatOf(*document, "c").fontWeight(), QFont::Bold);
    EXPECT_EQ(formatOf(*document, "c").verticalAlignment(), QTextCharFormat::AlignSuperScript);
    EXPECT_EQ(formatOf(*document, "d").fontWeight(), QFont::Normal);
    EXPECT_EQ(formatOf(*document, "d").verticalAlignment(), QTextCharFormat::AlignNormal);
}

// Letters

TEST(RichTextTest, bytesFollowTheCodePageOfTheFile)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1252 caf\\'e9 \\'80}"), "café €");
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8}"), "При");
    EXPECT_EQ(textOf("{\\rtf1\\mac caf\\'8e \\'db}"), "café €");
    EXPECT_EQ(textOf("{\\rtf1\\mac\\ansicpg10000 caf\\'8e}"), "café");
}

TEST(RichTextTest, aFontsCharacterSetGoesBeforeTheFiles)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1252{\\fonttbl\\f0\\fcharset77 Geneva;\\f1\\fcharset0 Helvetica;}\\f0 \\'8e\\f1 \\'e9}"), "éé");
}

TEST(RichTextTest, rawBytesAreReadLikeWrittenOnes)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1252 caf\xe9}"), "café");
}

TEST(RichTextTest, twoBytesMayMakeOneLetter)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\'96\\'7b}"), "日本");
}

TEST(RichTextTest, anUnknownCodePageLosesNoText)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg31999 plain}"), "plain");
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg65001 caf\xc3\xa9}"), "café");
}

TEST(RichTextTest, unicodeStandsForItself)
{
    EXPECT_EQ(textOf("{\\rtf1\\uc0\\u9745  paid \\u8364 }"), "☑ paid €");
}

TEST(RichTextTest, surrogatesComeAsTwoNegativeNumbers)
{
    // U+1F600: D83D DE00, as signed 16-bit numbers.
    EXPECT_EQ(textOf("{\\rtf1\\uc0\\u-10179 \\u-8704 !}"), "\U0001F600!");
}

TEST(RichTextTest, aSurrogateWithoutItsPartnerNeverComesThrough)
{
    EXPECT_EQ(textOf("{\\rtf1\\uc0 a\\u-8704 b}"),
        "a\uFFFD"
        "b");
    const std::string high = textOf("{\\rtf1\\uc0 a\\u-10179 b}");
    EXPECT_TRUE(high == "ab" || high == "a\uFFFDb") << high;
}

TEST(RichTextTest, theReplacementBehindUnicodeIsPassedOver)
{
    EXPECT_EQ(textOf("{\\rtf1\\uc1\\u8364 ?x}"), "€x");
    EXPECT_EQ(textOf("{\\rtf1\\u8364\\'80x}"), "€x");
    EXPECT_EQ(textOf("{\\rtf1\\uc2\\u8364 EUx}"), "€x");
}

TEST(RichTextTest, theReplacementDoesNotReachBeyondItsGroup)
{
    EXPECT_EQ(textOf("{\\rtf1{\\uc1\\u8364}x}"), "€x");
}

TEST(RichTextTest, signsWithAMeaningStandBehindABackslash)
{
    EXPECT_EQ(textOf("{\\rtf1 \\{a\\} \\\\ b}"), "{a} \\ b");
}

TEST(RichTextTest, wordProcessorsNameSigns)
{
    EXPECT_EQ(textOf("{\\rtf1 a\\~b\\_c\\emdash\\endash\\lquote\\rquote\\ldblquote\\rdblquote\\bullet}"),
        "a\u00a0b\u2011c\u2014\u2013\u2018\u2019\u201c\u201d\u2022");
}

// What is passed over

TEST(RichTextTest, unknownWordsAndDestinationsArePassedOver)
{
    EXPECT_EQ(textOf("{\\rtf1\\whatever12{\\*\\expandedcolortbl;;\\cssrgb\\c0;}{\\info{\\title Secret}}{\\stylesheet{\\s0 Normal;}}text}"),
        "text");
    EXPECT_EQ(textOf("{\\rtf1{\\*\\unknown{\\deep words}}text}"), "text");
    EXPECT_EQ(textOf("{\\rtf1{\\pict\\pngblip 89504e47}text}"), "text");
    EXPECT_EQ(textOf("{\\rtf1{\\header Top}{\\footer Bottom}text}"), "text");
    EXPECT_EQ(textOf("{\\rtf1 a\\bin4 }}}}b}"), "ab");
}

TEST(RichTextTest, whatStandsBeforeAnUnknownDestinationInTheSameGroupIsThere)
{
    EXPECT_EQ(textOf("{\\rtf1 Mug\\*\\unknown words}"), "Mug");
    EXPECT_EQ(textOf("{\\rtf1 M{\\b ug\\*\\unknown words}s}"), "Mugs");
}

TEST(RichTextTest, aListShowsItsBulletsAsText)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1252{\\*\\listtable{\\list\\listname x;}}\\ls1{\\listtext\t\\'95\t}First}"), "\t•\tFirst");
}

TEST(RichTextTest, tooManyOrTooFewBracesDoNoHarm)
{
    EXPECT_EQ(textOf("{\\rtf1 a}}}}b"), "ab");
    EXPECT_EQ(textOf("{\\rtf1 " + std::string(100'000, '{') + "a" + std::string(100'000, '}') + "b}"), "ab");
}

// Pages

TEST(RichTextTest, paperAndMarginsAreKeptInPoints)
{
    const RichText text = RtfBuilder().build("{\\rtf1\\paperw11900\\paperh16840\\margl1440\\margr720\\margt360\\margb180 x}");
    EXPECT_EQ(text.paper, QSizeF(595, 842));
    EXPECT_TRUE(text.hasMargins);
    EXPECT_EQ(text.margins, QMarginsF(72, 18, 36, 9));
}

TEST(RichTextTest, withoutThemThereAreNone)
{
    const RichText text = RtfBuilder().build("{\\rtf1 x}");
    EXPECT_TRUE(text.paper.isEmpty());
    EXPECT_FALSE(text.hasMargins);
}

TEST(RichTextTest, aPageMayStartAnew)
{
    const auto document = documentOf("{\\rtf1 a\\\n\\page b\\\nc}");
    EXPECT_EQ(blockFormatOf(*document, "b").pageBreakPolicy(), QTextFormat::PageBreak_AlwaysBefore);
    EXPECT_EQ(blockFormatOf(*document, "c").pageBreakPolicy(), QTextFormat::PageBreak_Auto);
}

// Links

TEST(RichTextTest, aFieldIsALink)
{
    const auto document = documentOf("{\\rtf1 Visit {\\field{\\*\\fldinst{HYPERLINK \"http://www.example.com/\"}}{\\fldrslt our shop}}.}");
    EXPECT_EQ(plainTextOf(*document), "Visit our shop.");
    EXPECT_EQ(formatOf(*document, "our shop").anchorHref(), "http://www.example.com/");
    EXPECT_FALSE(formatOf(*document, "Visit").isAnchor());
    EXPECT_FALSE(formatOf(*document, ".").isAnchor());
}

TEST(RichTextTest, aFieldThatIsNoLinkShowsItsResult)
{
    const auto document = documentOf("{\\rtf1 {\\field{\\*\\fldinst PAGE}{\\fldrslt 7}}}");
    EXPECT_EQ(plainTextOf(*document), "7");
    EXPECT_FALSE(formatOf(*document, "7").isAnchor());
}

TEST(RichTextTest, aLinkDoesNotReachIntoTheNextField)
{
    const auto document = documentOf("{\\rtf1 {\\field{\\*\\fldinst{HYPERLINK \"http://a/\"}}{\\fldrslt one}}"
                                     "{\\field{\\*\\fldinst{DATE}}{\\fldrslt two}}}");
    EXPECT_FALSE(formatOf(*document, "two").isAnchor());
}

// Tables

TEST(RichTextTest, aTableHasRowsAndCells)
{
    const auto document =
        documentOf("{\\rtf1 a\\\n\\itap1\\trowd\\cellx2000\\cellx4000\\pard\\intbl\\itap1 1\\cell\\pard\\intbl 2\\cell\\row"
                   "\\itap1\\trowd\\cellx2000\\cellx4000\\pard\\intbl 3\\cell\\pard\\intbl 4\\cell\\lastrow\\row\\pard z}");
    const QTextTable* table = tableOf(*document);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rows(), 2);
    EXPECT_EQ(table->columns(), 2);
    EXPECT_EQ(table->cellAt(1, 0).firstCursorPosition().block().text(), "3");
    EXPECT_EQ(plainTextOf(*document),
        "a\n1\x1f"
        "2\x1f\n3\x1f"
        "4\x1f\nz");
}

TEST(RichTextTest, aCellMayBeEmptyOrHoldParagraphs)
{
    const auto document =
        documentOf("{\\rtf1\\trowd\\cellx2000\\cellx4000\\pard\\intbl\\itap1\\cell\\pard\\intbl one\\\ntwo\\cell\\row\\pard z}");
    const QTextTable* table = tableOf(*document);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->cellAt(0, 0).firstCursorPosition(), table->cellAt(0, 0).lastCursorPosition());
    EXPECT_EQ(table->cellAt(0, 1).lastCursorPosition().block().text(), "two");
    EXPECT_EQ(table->cellAt(0, 1).firstCursorPosition().block().text(), "one");
}

TEST(RichTextTest, rowsMayHaveDifferentNumbersOfCells)
{
    const auto document = documentOf("{\\rtf1 a\\\n\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\trowd\\cellx2000\\cellx4000\\pard\\intbl "
                                     "2\\cell\\pard\\intbl 3\\cell\\row}");
    ASSERT_NE(tableOf(*document), nullptr);
    EXPECT_EQ(tableOf(*document)->columns(), 2);
    EXPECT_EQ(plainTextOf(*document),
        "a\n1\x1f\x1f\n2\x1f"
        "3\x1f\n");
}

TEST(RichTextTest, anEndlessRowGoesOnInItsLastCell)
{
    std::string row = "{\\rtf1\\trowd\\pard\\intbl ";
    for (int cell = 1; cell <= 66; ++cell)
        row += "c" + std::to_string(cell) + "\\cell ";
    const auto document = documentOf(row + "\\row\\pard z}");
    const QTextTable* table = tableOf(*document);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->columns(), 64);
    EXPECT_EQ(table->cellAt(0, 63).firstCursorPosition().block().text(), "c64");
    EXPECT_EQ(table->cellAt(0, 63).lastCursorPosition().block().text(), "c66");
}

TEST(RichTextTest, aCellsOwnWidthGoesBeforeItsEdge)
{
    // 3000 twips are 200 of the layout's units; the edges would say 288.
    const auto document = documentOf("{\\rtf1\\trowd\\clwWidth3000\\clftsWidth3\\cellx4320\\clwWidth1500\\clftsWidth3\\cellx8640"
                                     "\\pard\\intbl 1\\cell\\pard\\intbl 2\\cell\\row}");
    ASSERT_NE(tableOf(*document), nullptr);
    const QList<QTextLength> widths = tableOf(*document)->format().columnWidthConstraints();
    ASSERT_EQ(widths.size(), 2);
    EXPECT_EQ(widths[0].rawValue(), 200);
    EXPECT_EQ(widths[1].rawValue(), 100);
}

TEST(RichTextTest, withoutWidthsTheEdgesCount)
{
    const auto document = documentOf("{\\rtf1\\trowd\\cellx3000\\cellx4500\\pard\\intbl 1\\cell\\pard\\intbl 2\\cell\\row}");
    ASSERT_NE(tableOf(*document), nullptr);
    const QList<QTextLength> widths = tableOf(*document)->format().columnWidthConstraints();
    ASSERT_EQ(widths.size(), 2);
    EXPECT_EQ(widths[0].rawValue(), 200);
    EXPECT_EQ(widths[1].rawValue(), 100);
}

TEST(RichTextTest, bordersShowWhenACellHasThem)
{
    const auto with = documentOf("{\\rtf1\\trowd\\clbrdrt\\brdrs\\brdrw20\\cellx3000\\pard\\intbl 1\\cell\\row}");
    const auto without = documentOf("{\\rtf1\\trowd\\clbrdrt\\brdrnil\\cellx3000\\pard\\intbl 1\\cell\\row}");
    EXPECT_GT(tableOf(*with)->format().border(), 0);
    EXPECT_EQ(tableOf(*without)->format().border(), 0);
}

TEST(RichTextTest, aTableThatIsNotFinishedKeepsItsText)
{
    const std::string text = textOf("{\\rtf1\\trowd\\cellx3000\\cellx6000\\pard\\intbl 1\\cell\\pard\\intbl two\\\nthree");
    EXPECT_NE(text.find('1'), std::string::npos);
    EXPECT_NE(text.find("two"), std::string::npos);
    EXPECT_NE(text.find("three"), std::string::npos);
}

// Pictures

class RichTextPictures : public testing::Test {
protected:
    std::unique_ptr<QTextDocument> read(std::string_view rtf) { return makeDocument(RtfBuilder().build(rtf), folder.path()); }
    void paint(const QString& name)
    {
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        ASSERT_TRUE(image.save(folder.filePath(name), "PNG"));
    }
    /// The picture that stands at the first place for one.
    static QImage pictureIn(const QTextDocument& document)
    {
        const QTextImageFormat format = formatOf(document, QString(QChar::ObjectReplacementCharacter)).toImageFormat();
        return document.resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
    }
    QTemporaryDir folder;
};

TEST_F(RichTextPictures, aPictureTakesItsPlaceAndSwallowsOneByte)
{
    paint("Logo.png");
    const auto document = read("{\\rtf1 a{{\\NeXTGraphic Logo.png \\width2400 \\height1200 \\noorient\n}\xac}b}");
    EXPECT_EQ(plainTextOf(*document), QString("a\ufffcb"));
    EXPECT_EQ(pictureIn(*document).size(), QSize(3, 2));
    const QTextImageFormat format = formatOf(*document, QString(QChar::ObjectReplacementCharacter)).toImageFormat();
    EXPECT_EQ(format.width(), 160);
    EXPECT_EQ(format.height(), 80);
}

TEST_F(RichTextPictures, theByteMayBeWritten)
{
    EXPECT_EQ(plainTextOf(*read("{\\rtf1 a{{\\NeXTGraphic x.png \\width20 \\height20}\\'ac}b}")), QString("a\ufffcb"));
}

TEST_F(RichTextPictures, aMissingFileLeavesItsPlace)
{
    const auto document = read("{\\rtf1 a{{\\NeXTGraphic Gone.png \\width2400 \\height1200}\xac}b}");
    EXPECT_EQ(plainTextOf(*document), QString("a\ufffcb"));
    EXPECT_TRUE(pictureIn(*document).isNull());
}

TEST_F(RichTextPictures, namesMayHaveBlanksAndSignsOfTheirOwn)
{
    for (const auto& [name, written] : std::vector<std::pair<QString, std::string>> {{"Pasted Graphic 1.png", "Pasted Graphic 1.png"},
             {"Café.png", "Caf\\'e9.png"}, {"10 €.png", "10 \\uc0\\u8364 .png"}, {"a{b}.png", "a\\{b\\}.png"}}) {
        paint(name);
        const auto document = read("{\\rtf1\\ansi\\ansicpg1252 {{\\NeXTGraphic " + written + " \\width20 \\height20}\xac}}");
        EXPECT_FALSE(pictureIn(*document).isNull()) << written;
    }
}

TEST_F(RichTextPictures, aNameReachesNoOtherFolder)
{
    paint("outside.png");
    ASSERT_TRUE(QDir(folder.path()).mkdir("inside"));
    const auto document =
        makeDocument(RtfBuilder().build("{\\rtf1 {{\\NeXTGraphic ../outside.png \\width20 \\height20}\xac}}"), folder.filePath("inside"));
    EXPECT_TRUE(pictureIn(*document).isNull());
}

TEST_F(RichTextPictures, aLinkOutOfTheFolderIsNotFollowed)
{
    QTemporaryDir elsewhere;
    QImage image(2, 2, QImage::Format_RGB32);
    ASSERT_TRUE(image.save(elsewhere.filePath("secret.png")));
    ASSERT_TRUE(QFile::link(elsewhere.filePath("secret.png"), folder.filePath("link.png")));
    EXPECT_TRUE(pictureIn(*read("{\\rtf1 {{\\NeXTGraphic link.png \\width20 \\height20}\xac}}")).isNull());
}

TEST_F(RichTextPictures, aCopyOfADocumentHasThemToo)
{
    paint("Logo.png");
    const auto document = read("{\\rtf1 a{{\\NeXTGraphic Logo.png \\width20 \\height20}\xac}b\\\n\\pard\\qr c}");
    const auto copy = copyOf(*document);
    EXPECT_EQ(plainTextOf(*copy), plainTextOf(*document));
    EXPECT_EQ(pictureIn(*copy).size(), QSize(3, 2));
    EXPECT_EQ(blockFormatOf(*copy, "c").alignment(), Qt::AlignRight);
}

TEST(RichTextTest, aDocumentLoadsNothingFromAnywhere)
{
    QTemporaryDir folder;
    QImage image(2, 2, QImage::Format_RGB32);
    ASSERT_TRUE(image.save(folder.filePath("x.png")));
    const auto document = makeSealedDocument();
    document->setHtml("<img src=\"" + folder.filePath("x.png") + "\">");
    EXPECT_TRUE(document->resource(QTextDocument::ImageResource, QUrl(folder.filePath("x.png"))).value<QImage>().isNull());
}

} // namespace
