// The order editor's window on the running application: fields, buttons, tables, tabs.
#include "ui/orders/OrderEditor.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/PickerSheet.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SegmentedChoice.h"
#include "ui/kit/UnderlineTabs.h"
#include "ui/orders/TenderSheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace uitest;

namespace {

class OrderOnScreen : public Business {
protected:
    void open(const QByteArray& settings = {})
    {
        begin(settings);
        editor = std::make_unique<OrderEditor>(orders(), lines());
        tender = new TenderSheet(orders().tender.form, editor.get());
        picker = std::make_unique<PickerPresenter>(app().getPicker());
        orders().create();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
        settle();
    }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        picker.reset();
        editor.reset();
    }

    OrderForm& form() { return orders().form; }
    QLineEdit* field(const char* name) const { return child<QLineEdit>(*editor, name); }
    QAbstractButton* button(const char* name) const { return seenChild<QAbstractButton>(*editor, name); }
    QComboBox* choice(const char* name) const { return child<QComboBox>(*editor, name); }
    RecordTable* lineTable() const
    {
        for (RecordTable* table : editor->findChildren<RecordTable*>()) {
            if (table->accessibleName() == "Items ordered")
                return table;
        }
        return nullptr;
    }
    void attachNote()
    {
        const QString path = home() + "/note.txt";
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("words");
        file.close();
        panels.choose(path);
        press(*child<QAbstractButton>(*editor, "attach"));
    }
    bool shows(const QString& words) const
    {
        const QList<QLabel*> labels = editor->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->isVisible() && label->text() == words; });
    }
    Sheet* sheet() const { return SheetStack::instance().top(); }

    std::unique_ptr<OrderEditor> editor;
    std::unique_ptr<PickerPresenter> picker;
    TenderSheet* tender = nullptr;
};

} // namespace

TEST_F(OrderOnScreen, opensWithTheKeyboardInTheTitle)
{
    open();
    EXPECT_TRUE(field("title")->hasFocus());
    EXPECT_EQ(editor->windowTitle(), QString("Order"));
    EXPECT_EQ(field("orderNum")->text(), QString("1"));
    EXPECT_EQ(field("date")->text(), QString("01/03/24"));
}

TEST_F(OrderOnScreen, everyFieldOfTheFormHasItsWidget)
{
    open();
    // Shown through other means: the tabs, the contact's summary, the drop area and the note below it, the balance in big figures.
    const QStringList otherwise {
        "tab", "contactName", "contactDetails", "contact2Name", "contact2Details", "attachments", "attachmentTrouble", "balanceRemaining"};
    for (const FormField* each : form().fields()) {
        if (!otherwise.contains(each->name())) {
            EXPECT_NE(editor->findChild<QWidget*>(each->name()), nullptr) << each->name().toStdString();
        }
    }
}

TEST_F(OrderOnScreen, typingReachesTheOrderWhenItIsSaved)
{
    open();
    type(*field("title"), "Three stools");
    child<QPlainTextEdit>(*editor, "description")->setFocus();
    QTest::keyClicks(keyboard(), "oak");
    type(*field("orderNum"), "A-7");
    type(*field("shipping"), "5.00");
    choice("status")->setFocus();
    QTest::keyClicks(choice("status"), "Quoted");
    Order& order = currentOrder();
    press(*button("save"));
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(order.getTitle(), "Three stools");
    EXPECT_EQ(order.getDescription(), "oak");
    EXPECT_EQ(order.getOrderNum(), "A-7");
    EXPECT_EQ(order.getShipping(), "5.00");
    EXPECT_EQ(order.getStatus(), "Quoted");
}

TEST_F(OrderOnScreen, escapeDropsANewOrder)
{
    open();
    type(*field("title"), "Three stools");
    QTest::keyClick(field("title"), Qt::Key_Escape);
    EXPECT_TRUE(editor->isVisible()) << "something was typed, so it asks for another";
    QTest::keyClick(field("title"), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(orders().getCount(), 0);
}

TEST_F(OrderOnScreen, aNewOrdersAttachmentIsSomethingToLose)
{
    open();
    attachNote();
    QTest::keyClick(field("title"), Qt::Key_Escape);
    EXPECT_TRUE(editor->isVisible());
    QTest::keyClick(field("title"), Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(OrderOnScreen, theHeadingSaysNumberAndContact)
{
    open();
    EXPECT_TRUE(shows("No contact yet"));
    type(*field("orderNum"), "A-7");
    Contact& ada = contact("Ada Penrose");
    form().tab.edit(OrderForm::contactTab);
    orders().setContact(ada);
    auto* header = editor->findChild<RecordHeader*>();
    QStringList words;
    for (const QLabel* label : header->findChildren<QLabel*>())
        words += label->text();
    EXPECT_EQ(words, QStringList({"A-7", "Ada Penrose"}));
}

TEST_F(OrderOnScreen, anItemFromThePickerBecomesALineAndCounts)
{
    open();
    item("Nail", "100", "2.00");
    item("Screw", "100", "3.50");
    press(*button("pickMaterial"));
    settle();
    ASSERT_NE(sheet(), nullptr);
    QTest::keyClicks(keyboard(), "screw");
    QTest::keyClick(keyboard(), Qt::Key_Down);
    QTest::keyClick(keyboard(), Qt::Key_Return);
    ASSERT_EQ(sheet(), nullptr);
    EXPECT_EQ(lineTable()->model()->rowCount(), 1);
    EXPECT_EQ(field("subtotal")->text(), QString("3.50"));
    EXPECT_TRUE(shows("£3.50"));
}

TEST_F(OrderOnScreen, aQuantityTypedIntoTheLineChangesTheFigures)
{
    open();
    orders().addItemToCurrentOrder(item("Nail", "100", "2.00"));
    int qty = -1;
    for (int section = 0; section < lineTable()->model()->columnCount(); ++section) {
        if (lineTable()->model()->headerData(section, Qt::Horizontal).toString() == "Qty")
            qty = section;
    }
    ASSERT_GE(qty, 0);
    lineTable()->setFocus();
    lineTable()->setCurrentIndex(lineTable()->model()->index(0, qty));
    QTest::keyClicks(lineTable(), "1");
    QTest::keyClicks(keyboard(), "2");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    settle();
    EXPECT_EQ(field("subtotal")->text(), QString("24.00"));
    EXPECT_TRUE(shows("£24.00"));
}

TEST_F(OrderOnScreen, savingByShortcutTakesTheCellThatIsBeingEdited)
{
    open();
    orders().addItemToCurrentOrder(item("Nail", "100", "2.00"));
    for (int section = 0; section < lineTable()->model()->columnCount(); ++section) {
        if (lineTable()->model()->headerData(section, Qt::Horizontal).toString() == "Qty")
            lineTable()->setCurrentIndex(lineTable()->model()->index(0, section));
    }
    lineTable()->setFocus();
    QTest::keyClicks(lineTable(), "4");
    Order& order = currentOrder();
    QTest::keyClick(keyboard(), Qt::Key_S, Qt::ControlModifier);
    // A button pressed by its key is seen going down first.
    ASSERT_TRUE(QTest::qWaitFor([this] { return !editor->isVisible(); }, 2'000));
    EXPECT_EQ(lines().linesOfOrder(order.getID()).front()->getQty(), "4");
    EXPECT_EQ(order.getValue(), "8.00");
}

TEST_F(OrderOnScreen, theSelectedLineIsRemovedAfterAQuestion)
{
    open();
    orders().addItemToCurrentOrder(item("Nail", "100", "2.00"));
    lineTable()->setFocus();
    lineTable()->setCurrentIndex(lineTable()->model()->index(0, 0));
    alerts.answer("OK");
    press(*button("removeMaterial"));
    EXPECT_EQ(lineTable()->model()->rowCount(), 0);
    EXPECT_EQ(field("subtotal")->text(), QString("0.00"));
}

TEST_F(OrderOnScreen, deleteInTheLinesRemovesTheSelectedOneAfterAQuestionAndNotWhileTyping)
{
    open();
    orders().addItemToCurrentOrder(item("Nail", "100", "2.00"));
    lineTable()->setFocus();
    lineTable()->setCurrentIndex(lineTable()->model()->index(0, 1));
    QTest::keyClicks(lineTable(), "x");
    QTest::keyClick(keyboard(), Qt::Key_Backspace);
    EXPECT_EQ(lineTable()->model()->rowCount(), 1);
    EXPECT_TRUE(alerts.asked().empty());
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    alerts.answer("Cancel");
    QTest::keyClick(lineTable(), Qt::Key_Delete);
    EXPECT_EQ(lineTable()->model()->rowCount(), 1);
    alerts.answer("OK");
    QTest::keyClick(lineTable(), Qt::Key_Backspace);
    EXPECT_EQ(lineTable()->model()->rowCount(), 0);
}

TEST_F(OrderOnScreen, anOrderWithoutLinesSaysHowToAddOne)
{
    open();
    const RecordTable* table = lineTable();
    editor->setWords("Job", "Products", "Goods");
    EXPECT_EQ(
        table->accessibleDescription(), QString("Nothing on this job yet. Select From Products… adds the first line, or type it below."));
}

TEST_F(OrderOnScreen, anOrderWithoutContactSaysHowToChooseOne)
{
    open();
    editor->tabs()->setCurrentIndex(OrderForm::contactTab);
    const QString hint = "Choose one with Select Contact…, or make one with New Contact.";
    EXPECT_TRUE(shows(hint));
    EXPECT_FALSE(button("editContact")->isEnabled());
    orders().setContact(contact("Ada Penrose"));
    settle();
    EXPECT_FALSE(shows(hint));
    EXPECT_TRUE(button("editContact")->isEnabled());
}

TEST_F(OrderOnScreen, discountControlsComeWithTheDiscount)
{
    open();
    orders().addItemToCurrentOrder(item("Table", "10", "200.00"));
    auto* unit = child<SegmentedChoice>(*editor, "discountChoice");
    EXPECT_FALSE(field("discount")->isVisible());
    EXPECT_FALSE(unit->isVisible());
    press(*button("applyDiscount"));
    EXPECT_TRUE(field("discount")->isVisible());
    EXPECT_TRUE(unit->isVisible());
    EXPECT_EQ(unit->titles(), QStringList({"%", "£"}));
    type(*field("discount"), "10");
    EXPECT_EQ(field("subtotal")->text(), QString("180.00"));
    press(*unit->findChildren<QAbstractButton*>()[1]);
    EXPECT_EQ(field("subtotal")->text(), QString("190.00"));
    press(*button("applyDiscount"));
    EXPECT_FALSE(field("discount")->isVisible());
    EXPECT_EQ(field("subtotal")->text(), QString("200.00"));
}

TEST_F(OrderOnScreen, theNoteOnTheTaxTakesNoRoomWhileItSaysNothing)
{
    open(taxSettings());
    const auto* note = child<QLabel>(*editor, "taxNote");
    EXPECT_FALSE(note->isVisible());
    press(*button("applyDiscount"));
    EXPECT_TRUE(note->isVisible());
    EXPECT_EQ(note->text(), QString("The tax does not count this change yet."));
    press(*button("calculateTax"));
    EXPECT_FALSE(note->isVisible());
}

TEST_F(OrderOnScreen, taxControlsRestWhileNoTaxIsHandled)
{
    open();
    EXPECT_FALSE(field("net")->isEnabled());
    EXPECT_FALSE(field("taxAmount")->isEnabled());
    EXPECT_FALSE(child<QPushButton>(*editor, "calculateTax")->isEnabled());
}

TEST_F(OrderOnScreen, theTaxGoesByTheNameThePersonHasForIt)
{
    open(taxSettings() + "<key>VendaroTaxStatement</key><string>GST</string>");
    EXPECT_TRUE(field("taxAmount")->isEnabled());
    const QString word = form().taxAmount.caption();
    EXPECT_EQ(child<QLabel>(*editor, "taxAmountLabel")->text(), word);
    EXPECT_EQ(field("taxAmount")->accessibleName(), word);
}

TEST_F(OrderOnScreen, everyFieldSaysItsNameToScreenReaders)
{
    open();
    form().type.edit(3);
    form().applyDiscount.edit(true);
    for (const QWidget* each : editor->findChildren<QWidget*>()) {
        const bool typed = qobject_cast<const QLineEdit*>(each) || qobject_cast<const QPlainTextEdit*>(each)
            || qobject_cast<const QComboBox*>(each) || qobject_cast<const RecordTable*>(each);
        if (typed && !qobject_cast<const QComboBox*>(each->parentWidget())) {
            EXPECT_NE(each->accessibleName(), QString()) << each->objectName().toStdString();
        }
    }
    EXPECT_EQ(field("shipping")->accessibleName(), QString("Shipping"));
    EXPECT_EQ(child<QPushButton>(*editor, "shippingFromItems")->accessibleName(), QString());
}

TEST_F(OrderOnScreen, aPurchaseOrderShowsWhatOnlyItHas)
{
    open();
    auto* addStock = child<QPushButton>(*editor, "addStock");
    EXPECT_FALSE(addStock->isVisible());
    EXPECT_FALSE(field("balancePaid")->isVisible());
    EXPECT_FALSE(child<QLabel>(*editor, "balancePaidLabel")->isVisible());
    EXPECT_EQ(button("sent")->text(), QString("Invoice sent"));

    choice("type")->setFocus();
    QTest::keyClicks(choice("type"), "Purchase Order");
    EXPECT_TRUE(addStock->isVisible());
    EXPECT_TRUE(addStock->isEnabled());
    EXPECT_TRUE(field("balancePaid")->isVisible());
    EXPECT_TRUE(child<QLabel>(*editor, "balancePaidLabel")->isVisible());
    EXPECT_EQ(button("sent")->text(), QString("Order placed"));
    EXPECT_EQ(editor->windowTitle(), QString("Purchase Order"));

    press(*addStock);
    EXPECT_FALSE(addStock->isEnabled());
}

TEST_F(OrderOnScreen, tabsFollowTheFormAndTheFormFollowsTheTabs)
{
    open();
    EXPECT_EQ(editor->tabs()->currentIndex(), OrderForm::orderTab);
    editor->tabs()->setCurrentIndex(OrderForm::paymentsTab);
    EXPECT_EQ(form().tab.index(), OrderForm::paymentsTab);
    form().tab.setIndex(OrderForm::secondContactTab);
    EXPECT_EQ(editor->tabs()->currentIndex(), OrderForm::secondContactTab);
    EXPECT_EQ(editor->tabs()->count(), form().tab.titles().size());
    for (int tab = 0; tab < editor->tabs()->count(); ++tab)
        EXPECT_EQ(editor->tabs()->tabText(tab), form().tab.titles().at(tab));
}

TEST_F(OrderOnScreen, theContactOfTheShownTabIsPicked)
{
    open();
    contact("Ada Penrose");
    contact("Bert Hill");
    const auto pick = [&](int tab, const char* words) {
        editor->tabs()->setCurrentIndex(tab);
        press(*button("pickContact"));
        settle();
        ASSERT_NE(sheet(), nullptr);
        QTest::keyClicks(keyboard(), words);
        QTest::keyClick(keyboard(), Qt::Key_Down);
        QTest::keyClick(keyboard(), Qt::Key_Return);
    };
    pick(OrderForm::contactTab, "ada");
    EXPECT_TRUE(shows("Ada Penrose"));
    pick(OrderForm::secondContactTab, "bert");
    EXPECT_TRUE(shows("Bert Hill"));
    ASSERT_NE(currentOrder().getContact(), nullptr);
    EXPECT_EQ(currentOrder().getContact()->getName(), "Ada Penrose");
    EXPECT_EQ(currentOrder().getContact2(Order::Fallback::none)->getName(), "Bert Hill");
}

TEST_F(OrderOnScreen, theUsersWordsStandOnItsTexts)
{
    open();
    editor->setWords("Job & Order", "Products", "Goods");
    EXPECT_EQ(editor->tabs()->tabText(OrderForm::orderTab), QString("Job && Order"));
    EXPECT_EQ(child<QCheckBox>(*editor, "repeats")->text(), QString("Repeat this Job && Order every"));
    EXPECT_EQ(button("pickMaterial")->text(), QString("Select From Products…"));
    EXPECT_TRUE(shows("Goods"));
}

TEST_F(OrderOnScreen, anAttachedFileIsCountedAndATroubledOneToldInPlace)
{
    open();
    editor->tabs()->setCurrentIndex(OrderForm::repeatTab);
    EXPECT_TRUE(shows("There are no attachments"));
    EXPECT_FALSE(button("viewAttachments")->isEnabled());
    attachNote();
    EXPECT_TRUE(shows("There is 1 attachment"));
    EXPECT_TRUE(button("viewAttachments")->isEnabled());
    panels.choose(home() + "/missing.txt");
    press(*button("attach"));
    EXPECT_TRUE(shows(home() + "/missing.txt was not attached: there is no such file."));
    EXPECT_TRUE(shows("There is 1 attachment"));
}

// The panel that takes a payment

namespace {

class TenderOnScreen : public OrderOnScreen {
protected:
    void openTender()
    {
        open();
        orders().addItemToCurrentOrder(item("Table", "10", "200.00"));
        editor->tabs()->setCurrentIndex(OrderForm::paymentsTab);
        press(*button("tender"));
        settle();
        ASSERT_TRUE(tender->isOpen());
    }
    QLineEdit* tendered() const { return child<QLineEdit>(*tender, "amountTendered"); }
    QString words(const char* name) const { return child<QLabel>(*tender, name)->text(); }
    QAbstractButton* ok() const { return child<QAbstractButton>(*tender, "ok"); }
};

} // namespace

TEST_F(TenderOnScreen, standsOverTheOrderWithTheKeyboardInTheAmount)
{
    openTender();
    EXPECT_EQ(tender->hostWindow(), editor.get());
    EXPECT_TRUE(tendered()->hasFocus());
    EXPECT_EQ(words("amountDue"), QString("200.00"));
    EXPECT_EQ(words("remainingBalance"), QString("200.00"));
    EXPECT_EQ(child<QLineEdit>(*tender, "datePaid")->text(), QString("01/03/24"));
    EXPECT_FALSE(ok()->isEnabled());
}

TEST_F(TenderOnScreen, saysWhatRemainsWhileTypingAndWhatIsHandedBack)
{
    openTender();
    type(*tendered(), "150");
    EXPECT_EQ(words("remainingBalance"), QString("50.00"));
    EXPECT_TRUE(ok()->isEnabled());
    const auto labels = [&] {
        QStringList texts;
        for (const QLabel* label : tender->findChildren<QLabel*>())
            texts += label->text();
        return texts;
    };
    EXPECT_TRUE(labels().contains("Balance Remaining"));
    type(*tendered(), "250");
    EXPECT_EQ(words("remainingBalance"), QString("50.00"));
    EXPECT_TRUE(labels().contains("Change Due"));
    EXPECT_FALSE(labels().contains("Balance Remaining"));
}

TEST_F(TenderOnScreen, whatIsNoAmountCannotBeTaken)
{
    openTender();
    type(*tendered(), "abc");
    EXPECT_FALSE(ok()->isEnabled());
    QTest::keyClick(tendered(), Qt::Key_Return);
    EXPECT_TRUE(tender->isOpen());
    EXPECT_TRUE(currentOrder().getPaymentArray().empty());
}

TEST_F(TenderOnScreen, returnTakesThePayment)
{
    openTender();
    type(*tendered(), "150");
    QTest::keyClick(tendered(), Qt::Key_Return);
    EXPECT_FALSE(tender->isOpen());
    ASSERT_EQ(currentOrder().getPaymentArray().size(), 1u);
    EXPECT_EQ(currentOrder().getPaymentArray().front()->getAmount(), "150.00");
    EXPECT_TRUE(shows("£50.00"));
    EXPECT_TRUE(shows("150.00 paid"));
}

TEST_F(TenderOnScreen, escapeTakesNothingAndItOpensAfresh)
{
    openTender();
    type(*tendered(), "150");
    QTest::keyClick(tendered(), Qt::Key_Escape);
    EXPECT_FALSE(tender->isOpen());
    EXPECT_TRUE(editor->isVisible());
    EXPECT_TRUE(currentOrder().getPaymentArray().empty());
    press(*button("tender"));
    settle();
    EXPECT_TRUE(tender->isOpen());
    EXPECT_EQ(tendered()->text(), QString());
    EXPECT_FALSE(ok()->isEnabled());
}

// What does not read

TEST_F(OrderOnScreen, aFigureThatDoesNotReadSaysSoBelowIt)
{
    open();
    const QString sentence = "This does not read as an amount; it counts as 0.";
    EXPECT_FALSE(shows(sentence));
    type(*field("shipping"), "five");
    settle();
    EXPECT_TRUE(shows(sentence));
    EXPECT_EQ(field("shipping")->property("error").toString(), QString("true"));
    type(*field("shipping"), "5");
    settle();
    EXPECT_FALSE(shows(sentence));
    EXPECT_EQ(field("shipping")->property("error").toString(), QString("false"));
}

TEST_F(OrderOnScreen, anEditorWithManyFaultsKeepsItsControlsApart)
{
    open();
    editor->resize(editor->minimumSize());
    form().applyDiscount.edit(true);
    for (const char* name : {"date", "discount", "shipping", "net", "taxAmount"})
        form().field(name)->setFault("This does not read as an amount; it counts as 0.");
    settle();
    const std::vector<const char*> down {"date", "discount", "shipping", "net", "taxAmount"};
    for (std::size_t i = 1; i < down.size(); ++i) {
        const QLineEdit* above = field(down[i - 1]);
        const QLineEdit* below = field(down[i]);
        EXPECT_LT(above->mapTo(editor.get(), QPoint(0, above->height())).y(), below->mapTo(editor.get(), QPoint()).y()) << down[i];
        EXPECT_EQ(below->height(), above->height()) << down[i];
    }
}

TEST_F(OrderOnScreen, theTenderPanelSaysSoToo)
{
    open();
    form().tender.trigger();
    settle();
    QLineEdit* tendered = child<QLineEdit>(*tender, "amountTendered");
    type(*tendered, "lots");
    settle();
    EXPECT_EQ(tendered->toolTip(), QString("This does not read as an amount; it counts as 0."));
    EXPECT_FALSE(child<QAbstractButton>(*tender, "ok")->isEnabled());
    type(*tendered, "5");
    EXPECT_EQ(tendered->toolTip(), QString());
}
