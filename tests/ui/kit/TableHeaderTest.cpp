#include "KitTest.h"
#include "TableTest.h"

#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"

#include <QHelpEvent>
#include <QToolTip>

using namespace kittest;

namespace {

class TableHeaderInTable : public testing::Test {
protected:
    void SetUp() override
    {
        fillOrders(m_model);
        m_table.setModel(&m_model);
        m_table.resize(600, 300);
        for (int column = 0; column < 3; ++column)
            m_table.setColumnWidth(column, 200);
        show(m_table);
        // The heading under the pointer is lit; keep the pointer away.
        QCursor::setPos(m_table.mapToGlobal(QPoint(300, 250)));
    }
    TableHeader& header() { return *m_table.tableHeader(); }

    QStandardItemModel m_model;
    RecordTable m_table;
};

} // namespace

TEST_F(TableHeaderInTable, isThirtyTwoPixelsHigh)
{
    EXPECT_EQ(header().height(), 32);
}

TEST_F(TableHeaderInTable, headingsStandWhereTheirColumnsTextDoes)
{
    for (int column = 0; column < 3; ++column) {
        const QModelIndex index = m_model.index(0, column);
        const QRect text = m_table.rowDelegate()->textRect(m_table.visualRect(index), index);
        EXPECT_EQ(header().headingRect(column).left(), text.left()) << column;
        EXPECT_EQ(header().headingRect(column).right(), text.right()) << column;
    }
    EXPECT_EQ(header().headingRect(0).left(), 20);
    EXPECT_EQ(header().headingRect(1).left(), 210);
}

TEST_F(TableHeaderInTable, theFirstInsetGoesWithTheFirstColumnShown)
{
    // When the second column is moved to the front
    header().setSectionsMovable(true);
    header().moveSection(1, 0);
    EXPECT_EQ(header().headingRect(1).left(), 20);
    EXPECT_EQ(header().headingRect(0).left(), 200 + 10);
    // and when it is hidden, the next one is first.
    header().hideSection(1);
    EXPECT_EQ(header().headingRect(0).left(), 20);
    EXPECT_EQ(m_table.rowDelegate()->textRect(m_table.visualRect(m_model.index(0, 0)), m_model.index(0, 0)).left(), 20);
}

TEST_F(TableHeaderInTable, theSortMarkStandsRightBesideTheWords)
{
    m_table.setSorted(0, Qt::DescendingOrder);
    const int words = QFontMetrics(header().font()).horizontalAdvance(QStringLiteral("Date"));
    EXPECT_EQ(header().sortMarkRect(0).left(), 20 + words + 7);
    EXPECT_TRUE(header().sortMarkRect(1).isEmpty());
    // Before the words where they stand at the right.
    m_table.setSorted(2, Qt::AscendingOrder);
    EXPECT_LT(header().sortMarkRect(2).right(),
        header().headingRect(2).right() - QFontMetrics(header().font()).horizontalAdvance(QStringLiteral("Amount")));
    m_table.clearSorted();
    EXPECT_TRUE(header().sortMarkRect(2).isEmpty());
}

TEST_F(TableHeaderInTable, aSortedRightAlignedHeadingKeepsItsFiguresEdge)
{
    const QImage before = picture(header());
    m_table.setSorted(2, Qt::AscendingOrder);
    const QImage after = picture(header());
    const auto lastInk = [](const QImage& image) {
        for (int x = 599; x > 400; --x) {
            for (int y = 4; y < 28; ++y) {
                if (!alike(image.pixelColor(x, y), Qt::white))
                    return x;
            }
        }
        return 0;
    };
    EXPECT_EQ(lastInk(before), lastInk(after));
    EXPECT_GT(lastInk(before), 580);
    EXPECT_LE(lastInk(before), 590);
}

TEST_F(TableHeaderInTable, theSortedHeadingIsInTextColourTheOthersAreSecondary)
{
    m_table.setSorted(1, Qt::AscendingOrder);
    const QImage image = picture(header());
    EXPECT_TRUE(contains(image, QColor(0x1a1f29), QRect(200, 4, 60, 24)));
    EXPECT_FALSE(contains(image, QColor(0x1a1f29), QRect(0, 4, 190, 24)));
    EXPECT_TRUE(contains(image, QColor(0x586173), QRect(0, 4, 190, 24)));
}

TEST_F(TableHeaderInTable, itsLineGoesFromEdgeToEdge)
{
    m_table.setColumnWidth(2, 100);
    const QImage image = picture(header());
    for (const int x : {0, 199, 300, 550, 599})
        EXPECT_TRUE(alike(image.pixelColor(x, 31), QColor(0xe2e5ea))) << x;
}

TEST_F(TableHeaderInTable, aColumnFittedToItsHeadingHasRoomForTheMark)
{
    m_table.setSorted(1, Qt::AscendingOrder);
    m_model.setRowCount(0);
    m_table.resizeColumnToContents(1);
    EXPECT_GE(m_table.columnWidth(1), header().sortMarkRect(1).right() - header().sectionViewportPosition(1));
}

TEST_F(TableHeaderInTable, aHeadingThatIsCutShowsItselfWholeAsToolTip)
{
    const auto tipAt = [this](int section) {
        // A tip goes a moment after it was told to.
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000));
        const QPoint place(header().sectionViewportPosition(section) + 12, 16);
        QHelpEvent asked(QEvent::ToolTip, place, header().viewport()->mapToGlobal(place));
        QApplication::sendEvent(header().viewport(), &asked);
        return QToolTip::text();
    };
    EXPECT_EQ(tipAt(1), QString());
    m_model.setHeaderData(1, Qt::Horizontal, "Title & <description> of the order");
    m_table.setColumnWidth(1, 60);
    EXPECT_EQ(tipAt(1), QString("Title &amp; &lt;description&gt; of the order"));
    m_table.setColumnWidth(1, 400);
    EXPECT_EQ(tipAt(1), QString());
}
