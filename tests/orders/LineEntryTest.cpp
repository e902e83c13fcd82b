// The place for typing or scanning the next line, without its window.
#include "orders/LineEntry.h"

#include "support/Business.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class LineEntryTest : public Business {
protected:
    void SetUp() override
    {
        begin();
        orders().create();
    }
    OrderForm& form() { return orders().form; }
    Item& make(const char* code, const char* name, const char* ean = "")
    {
        Item& made = item(name);
        made.setCode(code);
        made.setEan(ean);
        return made;
    }
    void typeText(const char* text) { form().lineEntry.edit(QString::fromUtf8(text)); }
    void enter(const char* text)
    {
        typeText(text);
        form().addLine.trigger();
    }
    std::vector<std::string> names() { return shown(lines(), "item"); }
    QString fault() { return form().lineEntry.fault(); }
};

TEST_F(LineEntryTest, aCodeANameOrABarCodeBecomesALine)
{
    make("M-1", "Mug", "5012345678900");
    make("P-1", "Plate");
    enter("p-1");
    enter("MUG");
    enter("5012345678900");
    EXPECT_THAT(names(), ElementsAre("Plate", "Mug", "Mug"));
    EXPECT_EQ(form().lineEntry.text(), "");
    EXPECT_EQ(form().subtotal.text(), "15.00");
    EXPECT_EQ(items().finder.named("P-1").front()->getQty(), "9");
    EXPECT_EQ(beeper.beeps, 0);
}

TEST_F(LineEntryTest, theKeyboardGoesBackIntoTheFieldAndTheNewLineIsSelected)
{
    make("M-1", "Mug");
    make("P-1", "Plate");
    QStringList focused;
    QObject::connect(&form(), &Form::focusWanted, &form(), [&](const QString& name) { focused += name; });
    enter("M-1");
    enter("P-1");
    EXPECT_EQ(focused, QStringList({"lineEntry", "lineEntry"}));
    EXPECT_EQ(lines().selectedRow(), 1);
}

TEST_F(LineEntryTest, whatNothingIsCalledStaysWithTheReason)
{
    make("M-1", "Mug");
    enter("M-2");
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_EQ(form().lineEntry.text(), "M-2");
    EXPECT_EQ(fault(), "No bar code, code or name is “M-2”.");
    EXPECT_EQ(beeper.beeps, 1);
    typeText("M-");
    EXPECT_EQ(fault(), "");
}

TEST_F(LineEntryTest, thePartOfACodeIsNoCode)
{
    make("M-10", "Mug", "5012345678900");
    enter("M-1");
    enter("12345");
    EXPECT_THAT(names(), ElementsAre());
}

TEST_F(LineEntryTest, theStockQuestionsAreTheSameAsWhenPicking)
{
    Item& mug = make("M-1", "Mug");
    mug.setQty("0");
    alerts.answer("Cancel");
    enter("M-1");
    EXPECT_EQ(lastAlert().text, "You don't have enough Mug. Do you still wish to add 1 to this order?");
    EXPECT_THAT(names(), ElementsAre("Mug"));
    EXPECT_EQ(mug.getQty(), "0");
}

TEST_F(LineEntryTest, aNumberBeforeItIsHowMany)
{
    Item& mug = make("M-1", "Mug");
    mug.setQty("10");
    enter("3x M-1");
    enter("2*m-1");
    EXPECT_THAT(shown(lines(), "qty"), ElementsAre("3", "2"));
    EXPECT_THAT(shown(lines(), "total"), ElementsAre("15.00", "10.00"));
    EXPECT_EQ(form().subtotal.text(), "25.00");
    EXPECT_EQ(mug.getQty(), "5");
    alerts.answer("Cancel");
    enter("6 x Mug");
    EXPECT_EQ(lastAlert().text, "You don't have enough Mug. Do you still wish to add 6 to this order?");
    EXPECT_THAT(shown(lines(), "qty"), ElementsAre("3", "2", "6"));
    EXPECT_EQ(mug.getQty(), "5");
}

TEST_F(LineEntryTest, anItemThatIsCalledLikeANumberOfOthersIsMeantItself)
{
    make("3x5", "Card");
    make("5", "Nail");
    enter("3x5");
    enter("0x5");
    EXPECT_THAT(names(), ElementsAre("Card"));
    EXPECT_THAT(shown(lines(), "qty"), ElementsAre("1"));
    EXPECT_EQ(fault(), "No bar code, code or name is “0x5”.");
}

TEST_F(LineEntryTest, ofSeveralOfOneNameOneIsChosen)
{
    Item& blue = make("M-1", "Mug");
    blue.setVariation("blue");
    Item& red = make("M-2", "Mug");
    red.setVariation("red");
    enter("2x mug");
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_EQ(fault(), "More than one is called “mug”: choose one of the list.");
    EXPECT_EQ(form().lineMatches.titles(), QStringList({"M-1 · Mug · blue", "M-2 · Mug · red"}));
    orders().lineEntry.step(1);
    orders().lineEntry.step(1);
    form().addLine.trigger();
    EXPECT_THAT(shown(lines(), "variation"), ElementsAre("red"));
    EXPECT_THAT(shown(lines(), "qty"), ElementsAre("2"));
    EXPECT_EQ(red.getQty(), "8");
}

TEST_F(LineEntryTest, typingOffersItemsAndTheChosenOneIsAdded)
{
    make("M-1", "Mug");
    make("M-2", "Big mug");
    make("P-1", "Plate");
    EXPECT_FALSE(form().lineMatches.isVisible());
    typeText("mug");
    EXPECT_TRUE(form().lineMatches.isVisible());
    EXPECT_EQ(form().lineMatches.titles(), QStringList({"M-1 · Mug", "M-2 · Big mug"}));
    EXPECT_EQ(form().lineMatches.index(), -1);
    form().lineMatches.edit(1);
    form().addLine.trigger();
    EXPECT_THAT(names(), ElementsAre("Big mug"));
    EXPECT_FALSE(form().lineMatches.isVisible());
}

TEST_F(LineEntryTest, nothingIsChosenUnlessThePersonDoes)
{
    make("M-1", "Mug");
    make("M-10", "Mug tree");
    enter("M-1");
    EXPECT_THAT(names(), ElementsAre("Mug"));
    typeText("mug t");
    orders().lineEntry.step(1);
    EXPECT_EQ(form().lineMatches.index(), 0);
    typeText("mug");
    EXPECT_EQ(form().lineMatches.index(), -1);
}

TEST_F(LineEntryTest, stepsStayWithinTheList)
{
    make("M-1", "Mug");
    make("M-2", "Mug");
    orders().lineEntry.step(1);
    EXPECT_EQ(form().lineMatches.index(), -1);
    typeText("m");
    orders().lineEntry.step(-1);
    EXPECT_EQ(form().lineMatches.index(), 1);
    orders().lineEntry.step(1);
    EXPECT_EQ(form().lineMatches.index(), 1);
    orders().lineEntry.step(-1);
    orders().lineEntry.step(-1);
    EXPECT_EQ(form().lineMatches.index(), 0);
}

TEST_F(LineEntryTest, anItemThatWentMeanwhileIsNotAdded)
{
    Item& mug = make("M-1", "Mug");
    typeText("mu");
    orders().lineEntry.step(1);
    items().deleteItem(mug);
    form().addLine.trigger();
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_EQ(fault(), "This one was deleted meanwhile.");
}

TEST_F(LineEntryTest, leavingClosesTheListThenEmptiesTheField)
{
    make("M-1", "Mug");
    typeText("mu");
    EXPECT_TRUE(orders().lineEntry.leave());
    EXPECT_FALSE(form().lineMatches.isVisible());
    EXPECT_EQ(form().lineEntry.text(), "mu");
    EXPECT_TRUE(orders().lineEntry.leave());
    EXPECT_EQ(form().lineEntry.text(), "");
    EXPECT_FALSE(orders().lineEntry.leave());
}

TEST_F(LineEntryTest, theListIsSeenOnlyWhileTyping)
{
    make("M-1", "Mug");
    typeText("mu");
    orders().lineEntry.setTyping(false);
    EXPECT_FALSE(form().lineMatches.isVisible());
    orders().lineEntry.setTyping(true);
    EXPECT_TRUE(form().lineMatches.isVisible());
    typeText("xyz");
    orders().lineEntry.setTyping(true);
    EXPECT_FALSE(form().lineMatches.isVisible());
}

TEST_F(LineEntryTest, aTextBecomesALineThatIsFromNoItem)
{
    Contact& ann = contact("Ann");
    currentOrder().setContact(&ann);
    typeText("  Delivery to the third floor ");
    form().addFreeLine.trigger();
    ASSERT_THAT(names(), ElementsAre("Delivery to the third floor"));
    const Material& line = *lines().getnthItem(0, currentOrder().getID());
    EXPECT_EQ(line.getProduct(), 0);
    EXPECT_EQ(line.getQty(), "1");
    EXPECT_EQ(line.getCost(), "");
    EXPECT_EQ(line.getTotal(), "0.00");
    EXPECT_EQ(line.getTaxCode(), "S");
    EXPECT_EQ(line.getDateAdded(), "01/03/2024");
    EXPECT_EQ(line.getContact(), ann.getID());
    EXPECT_EQ(line.getOrderType(), "Customer");
    EXPECT_EQ(form().lineEntry.text(), "");
    EXPECT_EQ(lines().selectedRow(), 0);
}

TEST_F(LineEntryTest, nothingTypedAddsNothing)
{
    enter("   ");
    form().addFreeLine.trigger();
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_EQ(fault(), "");
}

TEST_F(LineEntryTest, itsButtonsComeWithTheText)
{
    EXPECT_FALSE(form().addLine.isVisible());
    EXPECT_FALSE(form().addFreeLine.isVisible());
    typeText("M");
    EXPECT_TRUE(form().addLine.isVisible());
    EXPECT_TRUE(form().addFreeLine.isVisible());
    typeText("");
    EXPECT_FALSE(form().addLine.isVisible());
}

TEST_F(LineEntryTest, anotherOrderStartsWithAnEmptyField)
{
    make("M-1", "Mug");
    enter("nothing");
    orders().editThisOrder(order("Bench"));
    EXPECT_EQ(form().lineEntry.text(), "");
    EXPECT_EQ(fault(), "");
    EXPECT_FALSE(form().lineMatches.isVisible());
}

// An item made on the way

TEST_F(LineEntryTest, anItemMadeFromTheOrderBecomesItsLineOnceSaved)
{
    form().newItem.trigger();
    items().form.item.edit("Mug");
    items().form.price.edit("4.50");
    EXPECT_THAT(names(), ElementsAre());
    alerts.answer("Add anyway");
    alerts.answer("OK");
    items().form.save.trigger();
    EXPECT_THAT(names(), ElementsAre("Mug"));
    EXPECT_EQ(form().subtotal.text(), "4.50");
}

TEST_F(LineEntryTest, anItemSavedAfterItsOrderWasLeftIsNoLineOfAnother)
{
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, &app(), [&](const QString& line) { status = line; });
    form().newItem.trigger();
    items().form.item.edit("Mug");
    orders().editThisOrder(order("Bench"));
    items().form.save.trigger();
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(lines().getCount(), 0);
    EXPECT_EQ(status, "Saved. The order it was made for is no longer open, so it has no line for it.");
}

TEST_F(LineEntryTest, makingAnItemGoesByTheUsersWord)
{
    EXPECT_EQ(form().newItem.caption(), "New Item");
    app().getPrefsController().form.termItem.edit("Product");
    EXPECT_EQ(form().newItem.caption(), "New Product");
}

TEST_F(LineEntryTest, aPurchaseOrdersLineIsAtTheCostPrice)
{
    Item& clay = make("C-1", "Clay");
    clay.setBought("2.00");
    orders().createPurchaseOrder();
    enter("4x C-1");
    EXPECT_THAT(shown(lines(), "total"), ElementsAre("8.00"));
    EXPECT_EQ(clay.getQty(), "10");
}

} // namespace
