// The tips on the screen.
#include "WithWindows.h"
#include "support/Scenario.h"
#include "ui/kit/Button.h"
#include "ui/shell/TipsWindow.h"

#include <QCheckBox>
#include <QLabel>

using namespace uitest;

namespace {

class TipsOnScreen : public WithWindows<Scenario> {
protected:
    static TipsWindow* tips() { return seen<TipsWindow>(); }
    static QString shown() { return child<QLabel>(*tips(), "tip")->text(); }
};

} // namespace

TEST_F(TipsOnScreen, comeInTheMiddleOfTheWindowAndGoByEscape)
{
    startWithWindows();
    ASSERT_NE(tips(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(tips()));
    const QPoint apart = tips()->frameGeometry().center() - windows->main().frameGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 4);
    EXPECT_TRUE(child<Button>(*tips(), "closeTips")->hasFocus());
    QTest::keyClick(tips(), Qt::Key_Escape);
    EXPECT_EQ(tips(), nullptr);
    EXPECT_FALSE(app().tips().form.isOpen());
}

TEST_F(TipsOnScreen, oneAfterTheOtherIsRead)
{
    startWithWindows();
    const QString first = shown();
    QTest::mouseClick(child<Button>(*tips(), "nextTip"), Qt::LeftButton);
    EXPECT_NE(shown(), first);
    QTest::mouseClick(child<Button>(*tips(), "closeTips"), Qt::LeftButton);
    EXPECT_EQ(tips(), nullptr);
    child<QAction>(windows->main(), "tips")->trigger();
    ASSERT_NE(tips(), nullptr);
}

TEST_F(TipsOnScreen, theLongestIsShownWhole)
{
    startWithWindows();
    for (int tip = 0; tip < 30; ++tip) {
        const auto* label = child<QLabel>(*tips(), "tip");
        EXPECT_LE(label->heightForWidth(label->width()), label->height()) << shown().toStdString();
        app().tips().showNext();
        settle();
    }
}

TEST_F(TipsOnScreen, areNotSeenAgainOnceSwitchedOff)
{
    startWithWindows();
    auto* dontShow = child<QCheckBox>(*tips(), "dontShowTips");
    dontShow->click();
    EXPECT_TRUE(app().getPrefsController().form.prefDontShowTips.isOn());
    windows.reset();
    quit();
    startWithWindows();
    EXPECT_EQ(tips(), nullptr);
}
