// Texts on paper, read back by another program.
#include "documents/TextPages.h"

#include "Paperwork.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

namespace {

class TextPagesTest : public testing::Test {
protected:
    PdfReader pdf() const
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        EXPECT_TRUE(TextPages(text, "Notepad").paint(writer));
        return PdfReader(bytes);
    }

    QTextDocument text;
};

} // namespace

TEST_F(TextPagesTest, aShortTextStandsBetweenTitleAndNumber)
{
    text.setPlainText("Ring Ada\nand Bert");
    EXPECT_EQ(pdf().pages(), 1);
    EXPECT_EQ(pdf().pageSize(), "595 x 842");
    EXPECT_EQ(pdf().words(1), "Notepad Ring Ada and Bert Page 1 of 1");
}

TEST_F(TextPagesTest, anEmptyTextIsOnePage)
{
    EXPECT_EQ(pdf().words(1), "Notepad Page 1 of 1");
}

TEST_F(TextPagesTest, everyLineOfALongTextStandsOnceAndEveryPageHasTitleAndNumber)
{
    QTextCursor cursor(&text);
    for (int line = 1; line <= 200; ++line)
        cursor.insertText(QString("Line%1\n").arg(line));
    const PdfReader paper = pdf();
    const int pages = paper.pages();
    EXPECT_GT(pages, 2);
    std::string all;
    for (int page = 1; page <= pages; ++page) {
        const std::string words = paper.words(page);
        EXPECT_TRUE(words.starts_with("Notepad Line")) << words;
        EXPECT_TRUE(words.ends_with(" Page " + std::to_string(page) + " of " + std::to_string(pages))) << words;
        all += words + ' ';
    }
    for (int line = 1; line <= 200; ++line) {
        const std::string word = " Line" + std::to_string(line) + ' ';
        const std::size_t first = all.find(word);
        ASSERT_NE(first, std::string::npos) << line;
        EXPECT_EQ(all.find(word, first + 1), std::string::npos) << line;
    }
}

TEST_F(TextPagesTest, theTextItselfStaysAsItWas)
{
    text.setPlainText("Ring Ada");
    text.setModified(false);
    const QTextFrameFormat before = text.rootFrame()->frameFormat();
    pdf();
    EXPECT_FALSE(text.isModified());
    EXPECT_EQ(text.rootFrame()->frameFormat(), before);
}
