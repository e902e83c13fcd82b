#include "documents/Paginator.h"

#include "Paperwork.h"

#include <QPainter>
#include <QTextCursor>
#include <QTextTable>

namespace {

class PaginatorTest : public testing::Test {
protected:
    static QByteArray pdfOf(const Paginator& paginator, const QPageRanges& ranges = {})
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageRanges(ranges);
        EXPECT_TRUE(paginator.paint(writer));
        return bytes;
    }
    PdfReader pdf() const { return PdfReader(pdfOf(Paginator(*document, setup, background))); }
    static QString wordsOf(const PdfReader& reader, int page) { return QString::fromStdString(reader.words(page)); }
    void write(const QString& text)
    {
        document->setPlainText(text);
        QTextCursor all(document.get());
        all.select(QTextCursor::Document);
        QTextCharFormat format;
        format.setFontFamilies({"Liberation Sans"});
        format.setFontPointSize(12);
        all.mergeCharFormat(format);
    }
    void writeLines(int count)
    {
        QStringList lines;
        for (int line = 1; line <= count; ++line)
            lines += QString("Line%1").arg(line);
        write(lines.join('\n'));
    }
    /// The first page at one dot a point.
    QImage picture() const
    {
        QImage image(setup.sheet().toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        Paginator(*document, setup, background).paintPage(painter, 0);
        return image;
    }

    std::unique_ptr<QTextDocument> document = makeSealedDocument();
    PageSetup setup;
    PageBackground background;
};

TEST_F(PaginatorTest, anEmptyDocumentIsOnePage)
{
    EXPECT_EQ(pdf().pages(), 1);
    EXPECT_EQ(pdf().words(1), "");
}

TEST_F(PaginatorTest, aPageHasTheSizeOfItsPaper)
{
    write("Hello");
    EXPECT_EQ(pdf().pageSize(), "595 x 842");
    setup.paper = QPageSize(QPageSize::Letter);
    EXPECT_EQ(pdf().pageSize(), "612 x 792");
    setup.orientation = QPageLayout::Landscape;
    EXPECT_EQ(pdf().pageSize(), "792 x 612");
}

TEST_F(PaginatorTest, aSheetMayLie)
{
    setup.paper = QPageSize(QPageSize::A6);
    // A line is 13.8 points high: 340 points hold twenty of them, 218 do not.
    writeLines(20);
    EXPECT_EQ(Paginator(*document, setup).pageCount(), 1);
    setup.orientation = QPageLayout::Landscape;
    EXPECT_EQ(Paginator(*document, setup).pageCount(), 2);

    // Some 300 points long: one line of 340 points, two of 218.
    write("first " + QString("word ").repeated(8) + "last");
    EXPECT_EQ(pdf().place("last").top(), pdf().place("first").top());
    setup.orientation = QPageLayout::Portrait;
    EXPECT_GT(pdf().place("last").top(), pdf().place("first").top() + 10);
}

TEST_F(PaginatorTest, americansUseLetterPaper)
{
    EXPECT_EQ(usualPaper("en_US").id(), QPageSize::Letter);
    EXPECT_EQ(usualPaper("fr_CA").id(), QPageSize::Letter);
    for (const char* locale : {"en_GB", "de_DE", "es_AR", "en", "C", ""})
        EXPECT_EQ(usualPaper(locale).id(), QPageSize::A4) << locale;
}

TEST_F(PaginatorTest, textStartsAtTheMargins)
{
    write("Hello");
    setup.margins = {70, 90, 40, 40};
    const QRectF place = pdf().place("Hello");
    EXPECT_NEAR(place.left(), 70, 1);
    EXPECT_NEAR(place.top(), 90, 4);
}

TEST_F(PaginatorTest, lettersHaveTheirSizeInPoints)
{
    // "Hello" in 12 point Liberation Sans is (722 + 556 + 222 + 222 + 556) / 1000 of 12 points wide.
    write("Hello");
    EXPECT_NEAR(pdf().place("Hello").width(), 27.3, 0.7);
}

TEST_F(PaginatorTest, longTextGoesOnOverPagesAndNothingIsLost)
{
    writeLines(200);
    const PdfReader reader = pdf();
    const int pages = reader.pages();
    EXPECT_EQ(pages, Paginator(*document, setup).pageCount());
    // A line is 13.8 points high; 762 points hold 55 of them.
    EXPECT_EQ(pages, 4);
    QStringList words;
    for (int page = 1; page <= pages; ++page)
        words += wordsOf(reader, page).split(' ');
    ASSERT_EQ(words.size(), 200);
    EXPECT_EQ(words.front(), "Line1");
    EXPECT_EQ(words.back(), "Line200");
}

TEST_F(PaginatorTest, marginsHoldOnEveryPage)
{
    writeLines(200);
    setup.margins = {40, 100, 40, 100};
    const PdfReader reader = pdf();
    const int firstOnSecond = static_cast<int>(wordsOf(reader, 1).split(' ').size()) + 1;
    EXPECT_NEAR(reader.place(QString("Line%1").arg(firstOnSecond)).top(), 100, 4);
    EXPECT_LT(reader.place(QString("Line%1").arg(firstOnSecond - 1)).bottom(), 742.5);
}

TEST_F(PaginatorTest, onlyThePagesAskedForArePainted)
{
    writeLines(200);
    QPageRanges ranges;
    ranges.addPage(2);
    const PdfReader reader(pdfOf(Paginator(*document, setup), ranges));
    EXPECT_EQ(reader.pages(), 1);
    EXPECT_EQ(reader.words(1).substr(0, 5), "Line5");
}

TEST_F(PaginatorTest, longLinesWrapAtTheMargin)
{
    write(QString("word ").repeated(60));
    setup.margins = {200, 40, 200, 40};
    EXPECT_EQ(wordsOf(pdf(), 1).split(' ').size(), 60);
    EXPECT_GT(document->toPlainText().size(), 0);
    const QImage page = picture();
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 400; x < page.width(); ++x)
            ASSERT_EQ(page.pixel(x, y), qRgb(255, 255, 255)) << x << ", " << y;
    }
}

TEST_F(PaginatorTest, whatIsTooWideIsMadeSmallerUntilItFits)
{
    QTextCursor cursor(document.get());
    QTextTableFormat format;
    format.setColumnWidthConstraints({QTextLength(QTextLength::FixedLength, 900), QTextLength(QTextLength::FixedLength, 100)});
    QTextTable* table = cursor.insertTable(1, 2, format);
    table->cellAt(0, 0).firstCursorPosition().insertText("Left");
    table->cellAt(0, 1).firstCursorPosition().insertText("Right");
    const QRectF right = pdf().place("Right");
    ASSERT_FALSE(right.isEmpty());
    // 1000 units are 750 points; they go into 515.
    EXPECT_LT(right.right(), 555.5);
    EXPECT_GT(right.left(), 480);
}

TEST_F(PaginatorTest, onePageMayBeCentredVertically)
{
    write("Hello");
    setup.verticallyCentred = true;
    EXPECT_NEAR(pdf().place("Hello").center().y(), 421, 10);
    EXPECT_NEAR(pdf().place("Hello").left(), 40, 1);
}

TEST_F(PaginatorTest, centringGoesByTheMargins)
{
    write("Hello");
    setup.verticallyCentred = true;
    setup.margins = {40, 300, 40, 42};
    EXPECT_NEAR(pdf().place("Hello").center().y(), 550, 10);
}

TEST_F(PaginatorTest, severalPagesAreNotCentred)
{
    writeLines(60);
    setup.verticallyCentred = true;
    EXPECT_EQ(pdf().pages(), 2);
    EXPECT_NEAR(pdf().place("Line1").top(), 40, 4);
}

TEST_F(PaginatorTest, marginsWiderThanThePaperStillGiveAPage)
{
    write("Hello");
    setup.margins = {400, 40, 400, 40};
    QString words;
    for (int page = 1; page <= pdf().pages(); ++page)
        words += wordsOf(pdf(), page).remove(' ');
    EXPECT_EQ(words, "Hello");
}

TEST_F(PaginatorTest, theDocumentItselfIsLeftAlone)
{
    write("Hello");
    const qreal width = document->textWidth();
    const QSizeF page = document->pageSize();
    document->setModified(false);
    pdf();
    EXPECT_EQ(document->textWidth(), width);
    EXPECT_EQ(document->pageSize(), page);
    EXPECT_FALSE(document->isModified());
}

TEST_F(PaginatorTest, textIsBlackUnlessItHasAColour)
{
    write("Hello");
    QTextCursor all(document.get());
    all.select(QTextCursor::Document);
    QTextCharFormat red;
    red.setForeground(QColor(255, 0, 0));
    const auto darkest = [&] {
        QRgb found = qRgb(255, 255, 255);
        const QImage page = picture();
        for (int y = 40; y < 60; ++y) {
            for (int x = 40; x < 80; ++x) {
                if (qGray(page.pixel(x, y)) < qGray(found))
                    found = page.pixel(x, y);
            }
        }
        return QColor(found);
    };
    EXPECT_LT(darkest().red(), 80);
    all.mergeCharFormat(red);
    EXPECT_GT(darkest().red(), 200);
    EXPECT_LT(darkest().green(), 120);
}

// The background

TEST_F(PaginatorTest, aBackgroundLiesWithinTheMarginsInItsOwnSize)
{
    background.image = QImage(100, 50, QImage::Format_RGB32);
    background.image.fill(Qt::red);
    const QImage page = picture();
    EXPECT_EQ(QColor(page.pixel(41, 41)), QColor(Qt::red));
    EXPECT_EQ(QColor(page.pixel(138, 88)), QColor(Qt::red));
    EXPECT_EQ(QColor(page.pixel(38, 41)), QColor(Qt::white));
    EXPECT_EQ(QColor(page.pixel(142, 41)), QColor(Qt::white));
    EXPECT_EQ(QColor(page.pixel(41, 92)), QColor(Qt::white));
}

TEST_F(PaginatorTest, aScaledBackgroundIsAsWideAsTheTextAndKeepsItsShape)
{
    background.image = QImage(100, 50, QImage::Format_RGB32);
    background.image.fill(Qt::red);
    background.scales = true;
    // The text is 515 points wide, so the picture is 257.5 high.
    const QImage page = picture();
    EXPECT_EQ(QColor(page.pixel(552, 45)), QColor(Qt::red));
    EXPECT_EQ(QColor(page.pixel(300, 294)), QColor(Qt::red));
    EXPECT_EQ(QColor(page.pixel(300, 300)), QColor(Qt::white));
    EXPECT_EQ(QColor(page.pixel(558, 45)), QColor(Qt::white));
}

TEST_F(PaginatorTest, aBackgroundEndsAtTheTextArea)
{
    background.image = QImage(2000, 2000, QImage::Format_RGB32);
    background.image.fill(Qt::red);
    const QImage page = picture();
    EXPECT_EQ(QColor(page.pixel(552, 798)), QColor(Qt::red));
    EXPECT_EQ(QColor(page.pixel(558, 400)), QColor(Qt::white));
    EXPECT_EQ(QColor(page.pixel(300, 805)), QColor(Qt::white));
}

TEST_F(PaginatorTest, textIsPaintedOverIt)
{
    write("Hello");
    background.image = QImage(100, 50, QImage::Format_RGB32);
    background.image.fill(Qt::yellow);
    const QImage page = picture();
    bool dark = false;
    for (int y = 40; y < 60; ++y) {
        for (int x = 40; x < 70; ++x)
            dark = dark || qGray(page.pixel(x, y)) < 80;
    }
    EXPECT_TRUE(dark);
}

TEST_F(PaginatorTest, aBackgroundStandsOnEveryPage)
{
    writeLines(120);
    background.image = QImage(100, 50, QImage::Format_RGB32);
    background.image.fill(Qt::red);
    const PdfReader reader = pdf();
    EXPECT_EQ(reader.pages(), 3);
    EXPECT_EQ(reader.pictures(), 3);
}

} // namespace
