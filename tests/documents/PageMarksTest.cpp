#include "documents/PageMarks.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace {

class PageMarksTest : public testing::Test {
protected:
    PageMarksTest() : paper(400, 600, QImage::Format_RGB32) { paper.fill(Qt::white); }

    bool hasInk(const QRect& part) const
    {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                if (paper.pixelColor(x, y) != QColor(Qt::white))
                    return true;
            }
        }
        return false;
    }

    const QRect body {50, 100, 300, 400};
    QImage paper;
};

} // namespace

TEST_F(PageMarksTest, theTitleStandsAboveWhatIsBelow)
{
    {
        QPainter painter(&paper);
        pageMarks::paintTitle(painter, body, "Notepad");
    }
    EXPECT_TRUE(hasInk({50, 100, 100, int(pageMarks::titleHeight)}));
    EXPECT_FALSE(hasInk({0, 0, 400, 100})) << "the margin";
    EXPECT_FALSE(hasInk({0, 100 + int(pageMarks::titleHeight), 400, 400}));
}

TEST_F(PageMarksTest, theFootHasItsTextAtTheLeftAndTheNumberAtTheRight)
{
    {
        QPainter painter(&paper);
        pageMarks::paintFoot(painter, body, "Ada's shop", 1, 3);
    }
    const int top = body.y() + body.height() - int(pageMarks::footHeight);
    EXPECT_TRUE(hasInk({50, top, 80, 24}));
    EXPECT_TRUE(hasInk({270, top, 80, 24}));
    EXPECT_FALSE(hasInk({150, top, 80, 24})) << "between them";
    EXPECT_FALSE(hasInk({0, 0, 400, top}));
    EXPECT_FALSE(hasInk({351, 0, 49, 600})) << "the margin";
}

TEST_F(PageMarksTest, aPointIsAUnitOfThePainter)
{
    EXPECT_EQ(pageMarks::font(16, QFont::DemiBold).pixelSize(), 16);
    EXPECT_EQ(pageMarks::font(9).weight(), QFont::Normal);
}
