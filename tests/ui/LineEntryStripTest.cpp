// Typing and scanning new lines in the order's window.
#include "ui/orders/LineEntryStrip.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/kit/PickList.h"
#include "ui/kit/RecordTable.h"
#include "ui/orders/OrderEditor.h"

#include <QLabel>

using namespace uitest;

namespace {

class LineEntryOnScreen : public Business {
protected:
    void SetUp() override
    {
        begin();
        editor = std::make_unique<OrderEditor>(orders(), lines());
        orders().create();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
        make("M-1", "Mug", "5012345678900");
        make("M-2", "Big mug", "5012345678917");
        make("P-1", "Plate", "5012345678924");
        settle();
        field()->setFocus();
    }
    void TearDown() override { editor.reset(); }

    void make(const char* code, const char* name, const char* ean)
    {
        Item& made = item(name);
        made.setCode(code);
        made.setEan(ean);
    }
    QLineEdit* field() const { return child<QLineEdit>(*editor, "lineEntry"); }
    PickList* list() const { return child<PickList>(*editor, "lineMatches"); }
    QAbstractButton* button(const char* name) const { return child<QAbstractButton>(*editor, name); }
    void keys(const char* text) { QTest::keyClicks(field(), QString::fromUtf8(text)); }
    void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(field(), pressed, modifiers); }
    std::vector<std::string> names() { return shown(lines(), "item"); }
    using Names = std::vector<std::string>;

    std::unique_ptr<OrderEditor> editor;
};

} // namespace

TEST_F(LineEntryOnScreen, aScannersBurstsAddLineAfterLine)
{
    for (const char* code : {"5012345678917", "5012345678900", "5012345678917"}) {
        keys(code);
        key(Qt::Key_Return);
    }
    settle();
    EXPECT_EQ(names(), (Names {"Big mug", "Mug", "Big mug"}));
    EXPECT_EQ(field()->text(), QString());
    EXPECT_TRUE(field()->hasFocus());
    EXPECT_EQ(child<QLineEdit>(*editor, "subtotal")->text(), QString("15.00"));
}

TEST_F(LineEntryOnScreen, theListOpensAboveTheFieldAndIsSteeredFromIt)
{
    EXPECT_FALSE(list()->isVisible());
    keys("mug");
    ASSERT_TRUE(list()->isVisible());
    EXPECT_EQ(list()->count(), 2);
    EXPECT_LT(list()->mapTo(editor.get(), QPoint(0, list()->height())).y(), field()->mapTo(editor.get(), QPoint()).y());
    EXPECT_GE(list()->mapTo(editor.get(), QPoint()).y(), 0);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(list()->currentRow(), 1);
    EXPECT_TRUE(field()->hasFocus());
    key(Qt::Key_Return);
    EXPECT_EQ(names(), Names {"Big mug"});
    EXPECT_FALSE(list()->isVisible());
}

TEST_F(LineEntryOnScreen, aClickInTheListAddsThatItem)
{
    keys("mug");
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(1)).center());
    settle();
    EXPECT_EQ(names(), Names {"Big mug"});
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(LineEntryOnScreen, whatNothingIsCalledStaysSelectedWithTheReasonBesideIt)
{
    keys("X-9");
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(field()->selectedText(), QString("X-9"));
    EXPECT_TRUE(field()->hasFocus());
    const QString reason = "No bar code, code or name is “X-9”.";
    EXPECT_EQ(field()->accessibleDescription(), reason);
    const QList<QLabel*> labels = field()->parentWidget()->findChildren<QLabel*>();
    EXPECT_TRUE(
        std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->isVisible() && label->text() == reason; }));
    keys("P-1");
    EXPECT_EQ(field()->accessibleDescription(), QString());
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(names(), Names {"Plate"});
}

TEST_F(LineEntryOnScreen, escapeLeavesTheListThenTheTextThenTheWindow)
{
    keys("mug");
    key(Qt::Key_Escape);
    EXPECT_FALSE(list()->isVisible());
    EXPECT_EQ(field()->text(), QString("mug"));
    key(Qt::Key_Escape);
    EXPECT_EQ(field()->text(), QString());
    EXPECT_TRUE(editor->isVisible());
    key(Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible()) << "nothing on the order is lost";
}

TEST_F(LineEntryOnScreen, controlReturnAddsATextAndSavesOnceThereIsNone)
{
    keys("Delivery");
    key(Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_EQ(names(), Names {"Delivery"});
    EXPECT_TRUE(editor->isVisible());
    key(Qt::Key_Return, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !editor->isVisible(); }, 2'000));
    EXPECT_EQ(currentOrder().getValue(), "0.00");
}

TEST_F(LineEntryOnScreen, theButtonsDoTheSame)
{
    keys("P-1");
    press(*button("addLine"));
    settle();
    EXPECT_TRUE(field()->hasFocus());
    EXPECT_FALSE(button("addLine")->isVisible());
    keys("Plate with a crack");
    press(*button("addFreeLine"));
    settle();
    EXPECT_EQ(names(), (Names {"Plate", "Plate with a crack"}));
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(LineEntryOnScreen, theButtonAddsTheItemChosenInTheList)
{
    keys("mug");
    key(Qt::Key_Up);
    press(*button("addLine"));
    settle();
    EXPECT_EQ(names(), Names {"Big mug"});
}

TEST_F(LineEntryOnScreen, theListGoesWithTheKeyboardAndComesBackWithIt)
{
    keys("mug");
    child<QLineEdit>(*editor, "title")->setFocus();
    EXPECT_FALSE(list()->isVisible());
    field()->setFocus();
    EXPECT_TRUE(list()->isVisible());
}

TEST_F(LineEntryOnScreen, theNewLineIsSeenAndSelected)
{
    for (Item* mug : items().finder.named("M-1"))
        mug->setQty("100");
    for (int n = 0; n < 30; ++n) {
        keys("M-1");
        key(Qt::Key_Return);
    }
    settle();
    EXPECT_EQ(lines().selectedRow(), 29);
    const auto* table = editor->findChild<RecordTable*>();
    EXPECT_TRUE(table->viewport()->rect().contains(table->visualRect(table->model()->index(29, 0)).center()));
}

TEST_F(LineEntryOnScreen, whatIsOnlyTypedHereIsNothingToLose)
{
    keys("mug");
    field()->setFocus();
    editor->close();
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(LineEntryOnScreen, aReturnThatIsHeldAddsOneLine)
{
    keys("P-1");
    key(Qt::Key_Return);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    keys("P-1");
    QApplication::sendEvent(field(), &held);
    EXPECT_EQ(names(), Names {"Plate"});
}
