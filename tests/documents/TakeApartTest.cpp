#include "documents/rtf/RichText.h"

#include "documents/rtf/RtfBuilder.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

namespace {

RichText partsOfHtml(const QString& html)
{
    const auto document = makeSealedDocument();
    document->setHtml(html);
    return takeApart(*document).text;
}

QString wordsOf(const RichText& text)
{
    return plainTextOf(*makeDocument(text, {}));
}

const RichParagraph& paragraphIn(const RichText& text, std::size_t place)
{
    return std::get<RichParagraph>(text.blocks[place]);
}

QImage redPicture()
{
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    return picture;
}

} // namespace

TEST(TakeApart, typedTextHasTheFormatOfTheDocument)
{
    QTextDocument document;
    QFont font("Inter");
    font.setPointSizeF(10.5);
    document.setDefaultFont(font);
    QTextCursor(&document).insertText("typed");

    const RichText text = takeApart(document).text;
    ASSERT_EQ(paragraphIn(text, 0).runs.size(), 1u);
    EXPECT_EQ(paragraphIn(text, 0).runs[0].text, "typed");
    EXPECT_EQ(paragraphIn(text, 0).runs[0].format.fontPointSize(), 10.5);
    EXPECT_EQ(paragraphIn(text, 0).runs[0].format.fontFamilies().toStringList(), QStringList("Inter"));
}

TEST(TakeApart, textTypedIntoADocumentThatWasReadJoinsIt)
{
    const auto document = makeDocument(RtfBuilder().build("{\\rtf1 one two}"), {});
    QTextCursor cursor(document.get());
    cursor.setPosition(4);
    cursor.insertText("and ");
    const RichText text = takeApart(*document).text;
    ASSERT_EQ(paragraphIn(text, 0).runs.size(), 1u);
    EXPECT_EQ(paragraphIn(text, 0).runs[0].text, "one and two");
}

TEST(TakeApart, aParagraphThatOnlyStoodBeforeATableStaysOnceItHasText)
{
    const auto document = makeDocument(RtfBuilder().build("{\\rtf1\\trowd\\cellx2000\\pard\\intbl 1\\cell\\row\\pard z}"), {});
    EXPECT_EQ(takeApart(*document).text.blocks.size(), 2u);
    QTextCursor(document.get()).insertText("title");
    const RichText text = takeApart(*document).text;
    ASSERT_EQ(text.blocks.size(), 3u);
    EXPECT_EQ(paragraphIn(text, 0).runs[0].text, "title");
}

TEST(TakeApart, listsKeepTheirMarksAsText)
{
    const RichText text = partsOfHtml("<ol><li>first</li><li>second</li></ol>");
    EXPECT_EQ(wordsOf(text), "\t1.\tfirst\n\t2.\tsecond");
    EXPECT_GT(paragraphIn(text, 0).format.leftMargin(), 0);
}

TEST(TakeApart, aTableMadeOnTheScreenHasEdges)
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable* table = cursor.insertTable(1, 3);
    table->cellAt(0, 1).firstCursorPosition().insertText("middle");
    const RichText text = takeApart(document).text;
    const auto& cells = std::get<RichTable>(text.blocks[1]).rows[0];
    ASSERT_EQ(cells.size(), 3u);
    // 9000 twips are 600 of the layout's units.
    EXPECT_EQ(cells[0].rightEdge, 200);
    EXPECT_EQ(cells[1].rightEdge, 400);
    EXPECT_EQ(cells[2].rightEdge, 600);
    EXPECT_TRUE(cells[0].bordered);
    EXPECT_EQ(cells[1].paragraphs[0].runs[0].text, "middle");
}

TEST(TakeApart, aCellOverTwoPlacesHasItsTextOnce)
{
    const QString words = wordsOf(partsOfHtml("<table><tr><td colspan=2>wide</td></tr><tr><td>a</td><td>b</td></tr></table>"));
    EXPECT_EQ(words.count("wide"), 1);
    EXPECT_TRUE(words.contains(QString("a") + QChar(0x1f) + "b")) << words.toStdString();
}

TEST(TakeApart, aTableInACellLeavesItsText)
{
    const QString words = wordsOf(partsOfHtml("<table><tr><td>out<table><tr><td>in</td></tr></table></td></tr></table>"));
    EXPECT_TRUE(words.contains("out"));
    EXPECT_TRUE(words.contains("in"));
}

TEST(TakeApart, aFrameLeavesItsText)
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText("before");
    cursor.insertFrame({});
    cursor.insertText("within");
    EXPECT_TRUE(wordsOf(takeApart(document).text).startsWith("before\nwithin"));
}

TEST(TakeApart, aPictureOfNoFileIsNamedAfterItsContents)
{
    QTextDocument document;
    document.addResource(QTextDocument::ImageResource, QUrl("pasted"), redPicture());
    document.addResource(QTextDocument::ImageResource, QUrl("again"), redPicture());
    QTextCursor cursor(&document);
    cursor.insertImage("pasted");
    cursor.insertImage("again");
    const DocumentParts parts = takeApart(document);
    ASSERT_EQ(paragraphIn(parts.text, 0).runs.size(), 2u);
    EXPECT_EQ(paragraphIn(parts.text, 0).runs[0].picture, nameFromContents(redPicture()));
    EXPECT_EQ(paragraphIn(parts.text, 0).runs[1].picture, nameFromContents(redPicture()));
    ASSERT_EQ(parts.pictures.size(), 1u);
    EXPECT_EQ(parts.pictures.begin()->second.size(), QSize(3, 2));
}

TEST(TakeApart, theSamePictureTwiceSideBySideIsTwoPictures)
{
    QTextDocument document;
    document.addResource(QTextDocument::ImageResource, QUrl("pasted"), redPicture());
    QTextCursor cursor(&document);
    cursor.insertImage("pasted");
    cursor.insertImage("pasted");
    EXPECT_EQ(paragraphIn(takeApart(document).text, 0).runs.size(), 2u);
}

TEST(TakeApart, whatNoFileCanSayIsLeftOut)
{
    const auto document = makeSealedDocument();
    QTextBlockFormat block;
    block.setLineHeight(200, QTextBlockFormat::ProportionalHeight);
    block.setIndent(1);
    QTextCursor cursor(document.get());
    cursor.setBlockFormat(block);
    QTextCharFormat format;
    format.setFontWeight(QFont::Light);
    format.setFontLetterSpacing(3);
    cursor.insertText("a", format);
    const RichText text = takeApart(*document).text;
    EXPECT_FALSE(paragraphIn(text, 0).format.hasProperty(QTextFormat::LineHeight));
    EXPECT_EQ(paragraphIn(text, 0).format.leftMargin(), 40);
    EXPECT_EQ(paragraphIn(text, 0).runs[0].format.fontWeight(), QFont::Normal);
}
