// F1 by itself: which presses ask for help, and for which topic.
#include "ui/HelpKey.h"

#include "UiTest.h"
#include "ui/HelpTopic.h"

#include <QLineEdit>

namespace {

class HelpKeyTest : public testing::Test {
protected:
    HelpKeyTest() : field(new QLineEdit(&window)) { helpTopic::set(window, "orders#lines"); }

    QStringList asked;
    HelpKey key {[this](const QString& topic) { asked += topic; }};
    QWidget window;
    QLineEdit* field;
};

} // namespace

TEST_F(HelpKeyTest, asksForTheNearestTopicOutwards)
{
    QTest::keyClick(field, Qt::Key_F1);
    EXPECT_EQ(asked, QStringList("orders#lines"));
    QWidget nameless;
    QTest::keyClick(&nameless, Qt::Key_F1);
    EXPECT_EQ(asked, QStringList({"orders#lines", QString()}));
}

TEST_F(HelpKeyTest, leavesOtherKeysToWhoeverHasTheKeyboard)
{
    QTest::keyClick(field, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClicks(field, "F1");
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(field->text(), QString("F1"));
}

TEST_F(HelpKeyTest, aKeyHeldDownAsksOnce)
{
    QKeyEvent held(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
    EXPECT_TRUE(QApplication::sendEvent(field, &held));
    EXPECT_EQ(asked, QStringList());
}
