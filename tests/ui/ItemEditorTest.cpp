// The item editor's window on the running application.
#include "ui/inventory/ItemEditor.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/PickerSheet.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/UnderlineTabs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
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
    RecordTable* parts() const { return editor->findChild<RecordTable*>(); }
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
