#include "KitTest.h"

#include "ui/kit/AlertCard.h"
#include "ui/kit/Button.h"
#include "ui/kit/Label.h"
#include "ui/kit/SheetStack.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QVBoxLayout>

using namespace kittest;

namespace {

const QString title = QStringLiteral("Out of Stock");
const QString text = QStringLiteral("You don't have enough Oak shelf. Do you still wish to add 1?");
const QStringList two {QStringLiteral("Add anyway"), QStringLiteral("Cancel")};
const QStringList three {QStringLiteral("Save"), QStringLiteral("Cancel"), QStringLiteral("Don't Save")};

AlertCard* openAlert()
{
    return qobject_cast<AlertCard*>(SheetStack::instance().top());
}

class AlertCardOnWindow : public testing::Test {
protected:
    void SetUp() override
    {
        m_window.resize(900, 600);
        m_field = new QLineEdit;
        m_window.setCentralWidget(m_field);
        show(m_window);
        m_field->setFocus();
    }
    int ask(const QStringList& buttons, const AlertCard::Options& options = {})
    {
        return AlertCard::ask(m_field, title, text, buttons, options);
    }

    QMainWindow m_window;
    QLineEdit* m_field;
};

} // namespace

TEST_F(AlertCardOnWindow, answersTheIndexOfTheButtonPressedByMouse)
{
    for (int index = 0; index < 3; ++index) {
        later([index] { QTest::mouseClick(openAlert()->buttons()[index], Qt::LeftButton); });
        EXPECT_EQ(ask(three), index);
    }
}

TEST_F(AlertCardOnWindow, returnPressesTheFirst)
{
    later([] { QTest::keyClick(keyboard(), Qt::Key_Return); });
    EXPECT_EQ(ask(three), 0);
    later([] { QTest::keyClick(keyboard(), Qt::Key_Enter); });
    EXPECT_EQ(ask(two), 0);
}

TEST_F(AlertCardOnWindow, escapeAnswersMinusOne)
{
    later([] { QTest::keyClick(keyboard(), Qt::Key_Escape); });
    EXPECT_EQ(ask(two), -1);
}

TEST_F(AlertCardOnWindow, returnAndSpacePressTheButtonThatHasTheKeyboard)
{
    later([] {
        openAlert()->buttons()[1]->setFocus();
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(ask(two), 1);
    later([] {
        openAlert()->buttons()[2]->setFocus();
        QTest::keyClick(keyboard(), Qt::Key_Space);
    });
    EXPECT_EQ(ask(three), 2);
}

TEST_F(AlertCardOnWindow, aReturnStillHeldDownDoesNotAnswer)
{
    later([] {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QApplication::sendEvent(keyboard(), &repeated);
        EXPECT_TRUE(openAlert());
        QTest::keyClick(keyboard(), Qt::Key_Escape);
    });
    EXPECT_EQ(ask(two), -1);
}

TEST_F(AlertCardOnWindow, theFirstStandsRightmostAndTheThirdAtTheLeftEdge)
{
    later([] {
        const auto& buttons = openAlert()->buttons();
        EXPECT_LT(buttons[2]->x(), buttons[1]->x());
        EXPECT_LT(buttons[1]->x(), buttons[0]->x());
        EXPECT_EQ(buttons[0]->x() - buttons[1]->geometry().right() - 1, 8);
        EXPECT_EQ(openAlert()->card()->width() - 1 - buttons[0]->geometry().right(), 25);
        EXPECT_EQ(buttons[2]->x(), 25);
        openAlert()->cancel();
    });
    ask(three);
}

TEST_F(AlertCardOnWindow, theFirstIsFilledAndHasTheKeyboard)
{
    later([] {
        EXPECT_EQ(keyboard(), openAlert()->buttons()[0]);
        EXPECT_EQ(qobject_cast<Button*>(openAlert()->buttons()[0])->kind(), Button::Kind::primary);
        EXPECT_EQ(qobject_cast<Button*>(openAlert()->buttons()[1])->kind(), Button::Kind::normal);
        openAlert()->cancel();
    });
    ask(two);
}

TEST_F(AlertCardOnWindow, aDestructiveFirstButtonIsRedAndNeverTheDefault)
{
    AlertCard::Options options;
    options.destructive = 0;
    later([] {
        EXPECT_EQ(qobject_cast<Button*>(openAlert()->buttons()[0])->kind(), Button::Kind::danger);
        EXPECT_EQ(keyboard(), openAlert()->buttons()[1]);
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(ask(two, options), 1);
}

TEST_F(AlertCardOnWindow, aDestructiveSecondButtonLeavesTheFirstTheDefault)
{
    AlertCard::Options options;
    options.destructive = 1;
    later([] {
        EXPECT_EQ(qobject_cast<Button*>(openAlert()->buttons()[0])->kind(), Button::Kind::primary);
        EXPECT_EQ(qobject_cast<Button*>(openAlert()->buttons()[1])->kind(), Button::Kind::danger);
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(ask({QStringLiteral("No"), QStringLiteral("Yes")}, options), 0);
}

TEST_F(AlertCardOnWindow, tabGoesRoundItsButtonsAndNowhereElse)
{
    later([this] {
        const auto& buttons = openAlert()->buttons();
        // From the rightmost on: the left edge, then the middle, then the right again.
        for (const int expected : {2, 1, 0, 2}) {
            QTest::keyClick(keyboard(), Qt::Key_Tab);
            EXPECT_EQ(keyboard(), buttons[expected]);
        }
        QTest::keyClick(keyboard(), Qt::Key_Backtab);
        EXPECT_EQ(keyboard(), buttons[0]);
        EXPECT_FALSE(m_field->hasFocus());
        openAlert()->cancel();
    });
    ask(three);
    EXPECT_TRUE(m_field->hasFocus());
}

TEST_F(AlertCardOnWindow, everythingInItIsPlainText)
{
    later([] {
        auto* words = openAlert()->findChild<Label*>(QStringLiteral("alertText"));
        EXPECT_EQ(words->text(), QStringLiteral("<b>5 & 6</b> < 7"));
        EXPECT_EQ(words->textFormat(), Qt::PlainText);
        // "&" is a letter of the button, not the mark of a key.
        EXPECT_EQ(openAlert()->buttons()[0]->accessibleName(), QStringLiteral("Save & Quit"));
        EXPECT_EQ(openAlert()->buttons()[0]->text(), QStringLiteral("Save && Quit"));
        openAlert()->cancel();
    });
    AlertCard::ask(m_field, title, QStringLiteral("<b>5 & 6</b> < 7"), {QStringLiteral("Save & Quit")});
}

TEST_F(AlertCardOnWindow, withoutButtonsThereIsOK)
{
    later([] {
        ASSERT_EQ(openAlert()->buttons().size(), 1);
        EXPECT_EQ(openAlert()->buttons()[0]->text(), QStringLiteral("OK"));
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(ask({}), 0);
}

TEST_F(AlertCardOnWindow, showsItsFactsAsLabelAndValue)
{
    AlertCard::Options options;
    options.facts = {{QStringLiteral("User"), QStringLiteral("ruth")}, {QStringLiteral("Reason"), QStringLiteral("database open")}};
    later([] {
        QStringList words;
        for (const Label* label : openAlert()->findChildren<Label*>())
            words << label->text();
        for (const char* expected : {"User", "ruth", "Reason", "database open"})
            EXPECT_TRUE(words.contains(QString::fromLatin1(expected))) << expected;
        openAlert()->cancel();
    });
    ask(two, options);
}

TEST_F(AlertCardOnWindow, aVeryLongTextIsScrolledInsteadOfRunningOffTheScreen)
{
    later([] {
        const QWidget* window = openAlert()->window();
        EXPECT_LE(window->height(), QGuiApplication::primaryScreen()->size().height());
        EXPECT_TRUE(openAlert()->buttons()[0]->isVisible());
        EXPECT_LE(openAlert()->buttons()[0]->mapTo(window, QPoint(0, 30)).y(), window->height());
        openAlert()->cancel();
    });
    EXPECT_EQ(AlertCard::ask(m_field, title, QStringLiteral("A line of trouble in some file.\n").repeated(300), two), -1);
}

TEST_F(AlertCardOnWindow, aWindowThatGoesAwayAnswersMinusOne)
{
    auto* editor = new QMainWindow;
    editor->resize(800, 500);
    show(*editor);
    later([editor] { delete editor; });
    EXPECT_EQ(AlertCard::ask(editor, title, text, two), -1);
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
}

TEST(AlertCard, withoutAWindowItIsAWindowOfItsOwn)
{
    later([] {
        ASSERT_TRUE(openAlert());
        EXPECT_TRUE(openAlert()->isWindow());
        EXPECT_EQ(openAlert()->windowTitle(), title);
        EXPECT_EQ(QApplication::activeModalWidget(), openAlert());
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(AlertCard::ask(nullptr, title, text, two), 0);
}

TEST(AlertCard, closingItsOwnWindowAnswersMinusOne)
{
    later([] { openAlert()->close(); });
    EXPECT_EQ(AlertCard::ask(nullptr, title, text, two), -1);
}

TEST(AlertCard, aWindowTooSmallForItGetsAWindowInstead)
{
    QWidget small;
    small.resize(300, 120);
    show(small);
    later([] {
        EXPECT_TRUE(openAlert()->isWindow());
        openAlert()->cancel();
    });
    EXPECT_EQ(AlertCard::ask(&small, title, text, two), -1);
}

TEST_F(AlertCardOnWindow, withoutATitleOnlyTheTextStandsThere)
{
    bool hasTitle = true;
    QString words;
    later([&] {
        hasTitle = openAlert()->findChild<Label*>(QStringLiteral("alertTitle")) != nullptr;
        words = openAlert()->findChild<Label*>(QStringLiteral("alertText"))->text();
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    AlertCard::ask(m_field, {}, QStringLiteral("2 Items updated"), {QStringLiteral("OK")});
    EXPECT_FALSE(hasTitle);
    EXPECT_EQ(words, QStringLiteral("2 Items updated"));
}
