// Lists on paper, read back by another program.
#include "documents/ListPages.h"

#include "Paperwork.h"

#include <gmock/gmock.h>

namespace {

class ListPagesTest : public testing::Test {
protected:
    ListPagesTest()
    {
        rows.addColumn("title", "Title");
        rows.addColumn("secret", "Secret", false);
        rows.addColumn("total", "Total");
        rows.list.columns.back().align = ColumnAlign::right;
    }
    void addRows(int count)
    {
        for (int row = 1; row <= count; ++row)
            rows.cells.push_back({"Row" + std::to_string(row), "hidden", std::to_string(row) + ".00"});
    }
    PdfReader pdf(const QPageRanges& ranges = {}) const
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageRanges(ranges);
        EXPECT_TRUE(ListPages(rows, "Orders", setup).paint(writer));
        return PdfReader(bytes);
    }

    PaperRows rows;
    PageSetup setup;
};

} // namespace

TEST_F(ListPagesTest, aShortListIsOnePageWithTitleHeadingsRowsAndNumber)
{
    addRows(2);
    EXPECT_EQ(pdf().pages(), 1);
    EXPECT_EQ(pdf().pageSize(), "595 x 842");
    EXPECT_EQ(pdf().words(1), "Orders Title Total Row1 1.00 Row2 2.00 Page 1 of 1");
}

TEST_F(ListPagesTest, anEmptyListIsOnePageWithItsHeadings)
{
    EXPECT_EQ(pdf().words(1), "Orders Title Total Page 1 of 1");
}

TEST_F(ListPagesTest, everyRowStandsOnceAndEveryPageHasHeadingsAndNumber)
{
    addRows(200);
    const PdfReader paper = pdf();
    const int pages = paper.pages();
    EXPECT_GT(pages, 3);
    std::string all;
    for (int page = 1; page <= pages; ++page) {
        const std::string words = paper.words(page);
        EXPECT_TRUE(words.starts_with(page == 1 ? "Orders Title Total Row1 " : "Title Total Row")) << words;
        const std::string foot = "Page " + std::to_string(page) + " of " + std::to_string(pages);
        EXPECT_TRUE(words.ends_with(page == 1 ? foot : "Orders " + foot)) << words;
        all += words + ' ';
    }
    for (int row = 1; row <= 200; ++row) {
        const std::string cells = " Row" + std::to_string(row) + ' ' + std::to_string(row) + ".00 ";
        const std::size_t first = all.find(cells);
        EXPECT_NE(first, std::string::npos) << cells;
        EXPECT_EQ(all.find(cells, first + 1), std::string::npos) << cells;
    }
}

TEST_F(ListPagesTest, thePagesFillTheBodyToTheLastRowThatFits)
{
    // 842 points less margins of 40, a title of 30, headings of 18 and a foot of 24 leave 690: 46 rows of 15; 48 without the title.
    addRows(46);
    EXPECT_EQ(pdf().pages(), 1);
    rows.cells.push_back({"Last", "", ""});
    EXPECT_EQ(pdf().pages(), 2);
    rows.cells.clear();
    addRows(46 + 48);
    EXPECT_EQ(pdf().pages(), 2);
    rows.cells.push_back({"Last", "", ""});
    EXPECT_EQ(pdf().pages(), 3);
}

TEST_F(ListPagesTest, onlyThePagesAskedForArePrinted)
{
    addRows(200);
    const PdfReader paper = pdf(QPageRanges::fromString("2"));
    EXPECT_EQ(paper.pages(), 1);
    EXPECT_TRUE(paper.words(1).starts_with("Title Total Row47 ")) << paper.words(1);
}

TEST_F(ListPagesTest, aTextThatIsTooLongIsCutOffAndBreaksNoLine)
{
    rows.cells.push_back({"Begin\n" + std::string(400, 'x'), "", "7.00"});
    const std::string words = pdf().words(1);
    EXPECT_THAT(words, testing::HasSubstr("Begin x"));
    EXPECT_THAT(words, testing::HasSubstr("\xe2\x80\xa6"));
    EXPECT_THAT(words, testing::HasSubstr(" 7.00 Page 1 of 1"));
}

TEST_F(ListPagesTest, otherPaperHasOtherPages)
{
    setup.paper = QPageSize(QPageSize::A5);
    addRows(46);
    EXPECT_EQ(pdf().pageSize(), "420 x 595");
    EXPECT_GT(pdf().pages(), 1);
}

TEST_F(ListPagesTest, aListWithoutColumnsIsAnEmptyPage)
{
    rows.list.columns.clear();
    EXPECT_EQ(pdf().words(1), "Orders Page 1 of 1");
}
