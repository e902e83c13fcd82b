// Choosing one of the colours that are offered.
#include "ui/kit/ColourPalette.h"

#include "KitTest.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSet>
#include <QSignalSpy>

using namespace kittest;

namespace {

class ColourPaletteTest : public testing::Test {
protected:
    void SetUp() override { show(palette); }
    QList<QAbstractButton*> squares() const { return palette.findChildren<QAbstractButton*>(); }

    ColourPalette palette {"Colour"};
};

} // namespace

TEST_F(ColourPaletteTest, aPressedSquareIsMarkedAndTold)
{
    QSignalSpy told(&palette, &ColourPalette::chosen);
    QTest::mouseClick(squares()[5], Qt::LeftButton);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].value<QColor>(), palette.colour());
    QTest::keyClick(squares()[2], Qt::Key_Space);
    EXPECT_EQ(told.size(), 2);
    EXPECT_TRUE(squares()[2]->isChecked());
    EXPECT_FALSE(squares()[5]->isChecked());
}

TEST_F(ColourPaletteTest, aColourFromElsewhereIsMarkedWhereItIsOfferedWithoutTelling)
{
    QSignalSpy told(&palette, &ColourPalette::chosen);
    palette.setColour(Qt::black);
    EXPECT_EQ(palette.colour(), QColor(Qt::black));
    palette.setColour(QColor(1, 2, 3));
    EXPECT_FALSE(palette.colour().isValid());
    for (const QAbstractButton* square : squares())
        EXPECT_FALSE(square->isChecked());
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(ColourPaletteTest, tabGoesToTheChosenColourAndTheArrowsGoOnFromThere)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* before = new QLineEdit;
    auto* colours = new ColourPalette("Colour");
    row->addWidget(before);
    row->addWidget(colours);
    show(window);
    const QList<QAbstractButton*> all = colours->findChildren<QAbstractButton*>();
    // It was on another one before.
    all[0]->setFocus();
    colours->setColour(Qt::black);
    before->setFocus();
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    EXPECT_EQ(keyboard(), all[all.size() - 2]);
    QTest::keyClick(keyboard(), Qt::Key_Left);
    EXPECT_EQ(keyboard(), all[all.size() - 3]);
    EXPECT_TRUE(all[all.size() - 3]->isChecked());

    colours->setColour(QColor(1, 2, 3));
    before->setFocus();
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    EXPECT_EQ(keyboard(), all[0]) << "none of them is chosen";
}

TEST_F(ColourPaletteTest, everySquareHasItsOwnColourAndSaysItsName)
{
    QSet<QString> names;
    QSet<QRgb> colours;
    for (QAbstractButton* square : squares()) {
        names.insert(square->accessibleName());
        square->click();
        colours.insert(palette.colour().rgb());
    }
    EXPECT_FALSE(names.contains(QString()));
    EXPECT_EQ(names.size(), squares().size());
    EXPECT_EQ(colours.size(), squares().size());
}

TEST_F(ColourPaletteTest, theMarkIsSeenOnLightAndOnDark)
{
    palette.setColour(Qt::white);
    QAbstractButton* white = squares().last();
    EXPECT_TRUE(contains(picture(*white), Qt::black));
    palette.setColour(Qt::black);
    QAbstractButton* black = squares()[squares().size() - 2];
    EXPECT_TRUE(contains(picture(*black), Qt::white));
}
