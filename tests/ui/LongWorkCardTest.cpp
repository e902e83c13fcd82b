// Long work on the screen: when its card comes, what it says, and how it is stopped.
#include "ui/LongWorkCard.h"

#include "UiTest.h"
#include "ui/kit/ProgressCard.h"

#include <QProgressBar>
#include <QTimer>

using namespace uitest;

namespace {

class LongWorkOnScreen : public testing::Test {
protected:
    void SetUp() override
    {
        m_window.resize(800, 600);
        show(m_window);
    }
    static ProgressCard* card() { return qobject_cast<ProgressCard*>(SheetStack::instance().top()); }

private:
    QWidget m_window;
};

} // namespace

TEST_F(LongWorkOnScreen, whatIsDoneSoonIsDoneWithoutACard)
{
    int questions = 0;
    LongWorkCard(60'000).run("Reading", [&](const GoesOn& goesOn) {
        for (; questions < 100; ++questions)
            EXPECT_TRUE(goesOn(questions / 100.0));
        EXPECT_EQ(card(), nullptr);
    });
    EXPECT_EQ(questions, 100);
}

TEST_F(LongWorkOnScreen, whatTakesLongerSaysHowFarItIsAndTheCardGoesWithIt)
{
    LongWorkCard(0).run("Reading", [&](const GoesOn& goesOn) {
        EXPECT_TRUE(goesOn(0.25));
        ASSERT_NE(card(), nullptr);
        EXPECT_TRUE(card()->isOpen());
        EXPECT_EQ(card()->blocks(), Sheet::Blocks::theProgram);
        const auto* bar = card()->findChild<QProgressBar*>();
        EXPECT_EQ(bar->value() * 4, bar->maximum());
        EXPECT_EQ(bar->accessibleName(), QString("Reading"));
        QTest::qSleep(60);
        EXPECT_TRUE(goesOn(1));
        EXPECT_EQ(bar->value(), bar->maximum());
    });
    EXPECT_EQ(card(), nullptr);
}

TEST_F(LongWorkOnScreen, cancelStopsIt)
{
    bool stopped = false;
    QTimer::singleShot(0, qApp, [] {
        ASSERT_NE(card(), nullptr);
        press(*card()->findChild<QAbstractButton*>());
    });
    LongWorkCard(0).run("Reading", [&](const GoesOn& goesOn) { stopped = !goesOn(0.5); });
    EXPECT_TRUE(stopped);
    EXPECT_EQ(card(), nullptr);
}
