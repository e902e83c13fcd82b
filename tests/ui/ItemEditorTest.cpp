// The item editor's window on the running application.
#include "ui/inventory/ItemEditor.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/PickerSheet.h"
#include "ui/inventory/AddStockSheet.h"
#include "ui/kit/Label.h"
#include "ui/kit/Panels.h"
#include "ui/kit/PictureWell.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/UnderlineTabs.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>

using namespace uitest;

namespace {

class ItemOnScreen : public Business {
protected:
    void SetUp() override
    {
        begin(taxSettings());
        editor = std::make_unique<ItemEditor>(items());
        picker = std::make_unique<PickerPresenter>(app().getPicker());
    }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        picker.reset();
        editor.reset();
    }
    /// A new item, with the keyboard where it belongs.
    void create()
    {
        items().create();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
        settle();
    }
    QLineEdit* field(const char* name) const { return child<QLineEdit>(*editor, name); }
    UnderlineTabs* tabs() const { return editor->findChild<UnderlineTabs*>(); }
    RecordTable* parts() const { return child<RecordTable>(*editor, "parts"); }
    /// Turns to the tab of that title.
    void turnTo(const char* title) const
    {
        for (int i = 0; i < tabs()->count(); ++i) {
            if (tabs()->tabText(i) == title)
                return tabs()->setCurrentIndex(i);
        }
        ADD_FAILURE() << "no tab " << title;
    }
    static QImage picture()
    {
        QImage made(12, 9, QImage::Format_RGB32);
        made.fill(Qt::red);
        return made;
    }
    static void drop(QMimeData& data, QWidget& target)
    {
        QDragEnterEvent enters(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &enters);
        QDropEvent drops(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &drops);
    }
    void save() const { press(*child<QAbstractButton>(*editor, "save")); }
    Item& onlyItem() { return static_cast<Item&>(*items().getnthItem(0)); }

    std::unique_ptr<ItemEditor> editor;
    std::unique_ptr<PickerPresenter> picker;
};

} // namespace

TEST_F(ItemOnScreen, aNewItemOpensWithTheKeyboardInTheName)
{
    create();
    EXPECT_TRUE(field("item")->hasFocus());
    EXPECT_EQ(field("code")->text(), QString("1"));
}

TEST_F(ItemOnScreen, everyFieldHasItsWidgetAndSaysItsName)
{
    for (const FormField* each : items().form.fields()) {
        const auto* widget = editor->findChild<QWidget*>(each->name());
        ASSERT_NE(widget, nullptr) << each->name().toStdString();
        if (!qobject_cast<const QAbstractButton*>(widget)) {
            EXPECT_NE(widget->accessibleName(), QString()) << each->name().toStdString();
        }
    }
}

TEST_F(ItemOnScreen, whatIsTypedIsSaved)
{
    create();
    const std::pair<const char*, const char*> typed[] {{"item", "Oak stool"}, {"code", "ST-1"}, {"variation", "tall"}, {"brand", "Mill"},
        {"category", "Seats"}, {"price", "12.50"}, {"bought", "6.00"}, {"shipping", "2.00"}, {"qty", "10"}, {"warnlevel", "3"},
        {"optimumqty", "12"}};
    for (const auto& [name, text] : typed)
        type(*field(name), text);
    child<QPlainTextEdit>(*editor, "description")->setFocus();
    QTest::keyClicks(keyboard(), "three legs");
    press(*child<QAbstractButton>(*editor, "decreaseQty"));
    const bool takesFromStock = child<QCheckBox>(*editor, "decreaseQty")->isChecked();
    save();
    EXPECT_FALSE(editor->isVisible());
    for (const auto& [name, text] : typed)
        EXPECT_EQ(onlyItem().getFieldByName(name), text) << name;
    EXPECT_EQ(onlyItem().getDescription(), "three legs");
    EXPECT_EQ(onlyItem().getDecreaseQty(), takesFromStock);
}

TEST_F(ItemOnScreen, theTaxCodesOfThePersonAreOffered)
{
    create();
    auto* codes = child<QComboBox>(*editor, "taxcode");
    ASSERT_GE(codes->findText("S"), 0);
    codes->setFocus();
    QTest::keyClicks(codes, "S");
    save();
    EXPECT_EQ(onlyItem().getTaxcode(), "S");
}

TEST_F(ItemOnScreen, theHeadingSaysWhatTheItemIsNow)
{
    create();
    type(*field("code"), "RACK");
    press(*child<QAbstractButton>(*editor, "collective"));
    QStringList words;
    for (const QLabel* label : editor->findChildren<QLabel*>())
        words += label->text();
    EXPECT_TRUE(words.contains("Collective Item · RACK"));
    EXPECT_FALSE(words.contains("Item · RACK"));
}

TEST_F(ItemOnScreen, aCollectiveItemHasPartsAndNoStockOfItsOwn)
{
    item("Leg", "12");
    create();
    const int made = tabs()->count() - 1;
    EXPECT_FALSE(tabs()->isTabVisible(made));
    press(*child<QAbstractButton>(*editor, "collective"));
    EXPECT_TRUE(tabs()->isTabVisible(made));
    EXPECT_TRUE(field("qty")->isReadOnly());
    EXPECT_FALSE(field("warnlevel")->isVisible());
    EXPECT_FALSE(child<QLabel>(*editor, "warnlevelLabel")->isVisible());
    EXPECT_FALSE(child<QCheckBox>(*editor, "decreaseQty")->isVisible());

    tabs()->setCurrentIndex(made);
    press(*seenChild<QAbstractButton>(*editor, "pickConstituent"));
    settle();
    ASSERT_NE(SheetStack::instance().top(), nullptr);
    QTest::keyClicks(keyboard(), "leg");
    QTest::keyClick(keyboard(), Qt::Key_Down);
    QTest::keyClick(keyboard(), Qt::Key_Return);
    ASSERT_EQ(parts()->model()->rowCount(), 1);
    EXPECT_EQ(parts()->currentIndex().row(), 0) << "what was added is selected";
    EXPECT_TRUE(seenChild<QAbstractButton>(*editor, "removeConstituent")->isEnabled());
    EXPECT_EQ(field("qty")->text(), QString("12"));

    parts()->setFocus();
    parts()->setCurrentIndex(parts()->model()->index(0, 2));
    QTest::keyClicks(parts(), "3");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    settle();
    EXPECT_EQ(field("qty")->text(), QString("4"));
}

TEST_F(ItemOnScreen, aPartIsRemovedFromTheSelectedRow)
{
    Item& leg = item("Leg", "12");
    Item& seat = item("Seat", "12");
    Item& stool = collectiveItem("Stool", {{&leg, 3.0f}, {&seat, 1.0f}});
    items().editThisItem(stool);
    tabs()->setCurrentIndex(tabs()->count() - 1);
    ASSERT_EQ(parts()->model()->rowCount(), 2);
    parts()->setFocus();
    parts()->setCurrentIndex(parts()->model()->index(0, 0));
    press(*seenChild<QAbstractButton>(*editor, "removeConstituent"));
    ASSERT_EQ(parts()->model()->rowCount(), 1);
    EXPECT_EQ(parts()->model()->index(0, 1).data().toString(), QString("Seat"));
}

TEST_F(ItemOnScreen, theSupplierIsPickedAmongTheContacts)
{
    contact("Hill Timber", "Supplier");
    create();
    tabs()->setCurrentIndex(1);
    press(*seenChild<QAbstractButton>(*editor, "pickSupplier"));
    settle();
    ASSERT_NE(SheetStack::instance().top(), nullptr);
    QTest::keyClick(keyboard(), Qt::Key_Down);
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(field("supplier")->text(), QString("Hill Timber"));
    save();
    EXPECT_EQ(onlyItem().getSupplier(), "1");
}

TEST_F(ItemOnScreen, eachItemOpensOnTheFirstTab)
{
    Item& leg = item("Leg");
    items().editThisItem(leg);
    tabs()->setCurrentIndex(1);
    items().form.cancel.trigger();
    items().editThisItem(leg);
    EXPECT_EQ(tabs()->currentIndex(), 0);
}

TEST_F(ItemOnScreen, escapeKeepsNothing)
{
    create();
    type(*field("item"), "Nothing");
    QTest::keyClick(field("item"), Qt::Key_Escape);
    EXPECT_TRUE(editor->isVisible()) << "something was typed, so it asks for another";
    QTest::keyClick(field("item"), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(items().getCount(), 0);
}

TEST_F(ItemOnScreen, whatBelongsToTheWebsiteIsOnATabOfItsOwn)
{
    create();
    turnTo("Website");
    press(*seenChild<QAbstractButton>(*editor, "exportbrevand"));
    press(*seenChild<QAbstractButton>(*editor, "exportgoogle"));
    press(*seenChild<QAbstractButton>(*editor, "hidebuttoncode"));
    auto* quantity = seenChild<QComboBox>(*editor, "quantitymethod");
    EXPECT_EQ(quantity->count(), 4);
    quantity->setFocus();
    QTest::keyClicks(quantity, "Show");
    child<QPlainTextEdit>(*editor, "buttoncode")->setFocus();
    QTest::keyClicks(keyboard(), "<b>");
    panels.choose("/srv/shop");
    press(*seenChild<QAbstractButton>(*editor, "selectWebsiteLocation"));
    EXPECT_EQ(field("websitefolder")->text(), QString("/srv/shop"));
    save();
    const std::pair<const char*, const char*> expected[] = {{"exportbrevand", "YES"}, {"exportgoogle", "YES"}, {"hidebuttoncode", "NO"},
        {"quantitymethod", "Show quantity"}, {"buttoncode", "<b>"}, {"websitefolder", "/srv/shop"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(onlyItem().getFieldByName(name), value) << name;
}

TEST_F(ItemOnScreen, aPictureIsDroppedPastedAndRemoved)
{
    create();
    turnTo("Details");
    auto* well = seenChild<PictureWell>(*editor, "picture");
    EXPECT_FALSE(child<QAbstractButton>(*editor, "removePicture")->isEnabled());
    QMimeData dropped;
    dropped.setImageData(picture());
    drop(dropped, *well);
    EXPECT_EQ(well->picture().size(), QSize(12, 9));
    press(*child<QAbstractButton>(*editor, "removePicture"));
    EXPECT_TRUE(well->picture().isNull());
    EXPECT_EQ(well->accessibleDescription(), QString("Drop or paste a picture here"));
    QApplication::clipboard()->setImage(picture());
    press(*child<QAbstractButton>(*editor, "pastePicture"));
    EXPECT_EQ(well->picture().size(), QSize(12, 9));
    well->setFocus();
    QTest::keyClick(well, Qt::Key_Delete);
    EXPECT_TRUE(well->picture().isNull());
    QTest::keyClick(well, Qt::Key_V, Qt::ControlModifier);
    save();
    EXPECT_EQ(onlyItem().getImage().size(), QSize(12, 9));
}

TEST_F(ItemOnScreen, whatIsNoPictureIsSaidBelowItsFrame)
{
    create();
    turnTo("Details");
    auto* well = seenChild<PictureWell>(*editor, "picture");
    QMimeData words;
    words.setUrls({QUrl::fromLocalFile("/dev/zero")});
    drop(words, *well);
    const QString sentence = "/dev/zero is no picture that can be used: PNG, JPEG, TIFF, GIF, BMP and WebP can.";
    EXPECT_EQ(well->accessibleDescription(), sentence);
    const QList<QLabel*> labels = editor->findChildren<QLabel*>();
    EXPECT_TRUE(
        std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->isVisible() && label->text() == sentence; }));
}

TEST_F(ItemOnScreen, whatCameByACommandIsNotLostByOneEscape)
{
    Item& mug = item("Mug", "10");
    items().editThisItem(mug);
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    press(*seenChild<QAbstractButton>(*editor, "addStock"));
    settle();
    const auto* sheet = qobject_cast<AddStockSheet*>(SheetStack::instance().top());
    ASSERT_NE(sheet, nullptr);
    QTest::keyClicks(keyboard(), "5");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_FALSE(sheet->isOpen());
    EXPECT_EQ(field("qty")->text(), QString("15"));
    QTest::keyClick(field("item"), Qt::Key_Escape);
    EXPECT_TRUE(editor->isVisible());
    QTest::keyClick(field("item"), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(mug.getQty(), "10");
}

TEST_F(ItemOnScreen, escapeClosesOnlyTheSheetForStock)
{
    items().editThisItem(item("Mug", "10"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    press(*seenChild<QAbstractButton>(*editor, "addStock"));
    settle();
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_FALSE(items().addStockForm.isOpen());
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ItemOnScreen, aSimilarItemIsMadeWithTheKeyboardInItsCode)
{
    create();
    type(*field("item"), "Mug");
    press(*child<QAbstractButton>(*editor, "createSimilar"));
    settle();
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(field("code")->text(), QString("2"));
    EXPECT_EQ(field("item")->text(), QString("Mug"));
    EXPECT_TRUE(field("code")->hasFocus());
}

TEST_F(ItemOnScreen, aDoubleClickOpensWhereTheItemIsUsed)
{
    Item& leg = item("Leg", "12");
    collectiveItem("Stool", {{&leg, 3.0f}});
    items().editThisItem(leg);
    turnTo("Used in");
    auto* users = seenChild<RecordTable>(*editor, "usedIn");
    ASSERT_EQ(users->model()->rowCount(), 1);
    const QPoint place = users->visualRect(users->model()->index(0, 1)).center();
    QTest::mouseClick(users->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(users->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(field("item")->text(), QString("Stool"));
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ItemOnScreen, withSomethingTypedTheOtherOpensOnlyAtTheSecondTry)
{
    Item& leg = item("Leg", "12");
    collectiveItem("Stool", {{&leg, 3.0f}});
    items().editThisItem(leg);
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    type(*field("brand"), "Mill");
    turnTo("Used in");
    auto* users = seenChild<RecordTable>(*editor, "usedIn");
    users->setFocus();
    users->setCurrentIndex(users->model()->index(0, 0));
    QTest::keyClick(users, Qt::Key_Return);
    EXPECT_EQ(field("item")->text(), QString("Leg"));
    QTest::keyClick(users, Qt::Key_Return);
    EXPECT_EQ(field("item")->text(), QString("Stool"));
    EXPECT_EQ(leg.getBrand(), "");
}

TEST_F(ItemOnScreen, anItemOpenedFromElsewhereTakesThePlaceOfAChangedOneAtTheSecondTry)
{
    Item& leg = item("Leg");
    Item& seat = item("Seat");
    items().editThisItem(leg);
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    type(*field("brand"), "Mill");
    items().editThisItem(seat);
    EXPECT_EQ(field("item")->text(), QString("Leg"));
    EXPECT_EQ(editor->findChild<FooterBar*>()->findChild<Label*>()->text(), QString("Not saved yet: opening another drops the changes"));
    items().editThisItem(seat);
    EXPECT_EQ(field("item")->text(), QString("Seat"));
    EXPECT_EQ(leg.getBrand(), "");
    items().editThisItem(leg);
    EXPECT_EQ(field("item")->text(), QString("Leg")) << "nothing was changed, so nothing is asked";
    QTest::keyClick(field("item"), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
    editor.reset();
    items().create();
    items().editThisItem(seat);
    EXPECT_EQ(items().currentItem(), &seat);
}

TEST_F(ItemOnScreen, whatIsMissingFollowsTheNumberTyped)
{
    Item& leg = item("Leg", "12");
    items().editThisItem(collectiveItem("Stool", {{&leg, 3.0f}}));
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    EXPECT_EQ(field("canBeMade")->text(), QString("4"));
    EXPECT_TRUE(field("limitedBy")->isVisible());
    turnTo("Made of");
    type(*seenChild<QLineEdit>(*editor, "numberToMake"), "6");
    auto* missing = seenChild<RecordTable>(*editor, "shortages");
    ASSERT_EQ(missing->model()->rowCount(), 1);
    EXPECT_EQ(missing->model()->index(0, 4).data().toString(), QString("6"));
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible()) << "a number to make is nothing to lose";
}
