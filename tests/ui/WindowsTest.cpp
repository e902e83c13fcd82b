// Which windows there are, and when they are made.
#include "ui/Windows.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/FirstResponder.h"
#include "ui/contacts/ContactEditor.h"
#include "ui/inventory/ItemEditor.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SideBar.h"
#include "ui/orders/OrderEditor.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/WelcomeView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextDocument>

using namespace uitest;

namespace {

class WindowsOnScreen : public Business {
protected:
    WindowsOnScreen() { begin(); }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        windows.reset();
        quit();
    }
    template <class Window>
    static QList<Window*> made()
    {
        QList<Window*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<Window*>(widget))
                found += window;
        }
        return found;
    }

    /// All that stands in the window beside what is typed into.
    static QStringList words(const QWidget& window)
    {
        QStringList words {window.windowTitle()};
        for (const QLabel* label : window.findChildren<QLabel*>())
            words += label->text();
        for (const QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
            words += QString("tab %1").arg(tabs->currentIndex());
            for (int i = 0; i < tabs->count(); ++i)
                words += tabs->tabText(i) + (tabs->isTabVisible(i) ? "" : " (hidden)");
        }
        return words;
    }
    /// Opens the record once more: the window is there by then, and must not say anything else.
    template <class Edit>
    static void expectSameAgain(const QWidget& window, CommandField& cancel, Edit edit)
    {
        settle();
        const QStringList first = words(window);
        cancel.trigger();
        edit();
        settle();
        EXPECT_EQ(first, words(window));
        cancel.trigger();
    }

    QList<CustomInvoiceController*> documents() { return app().findChildren<CustomInvoiceController*>(); }

    std::unique_ptr<Windows> windows;
};

} // namespace

TEST_F(WindowsOnScreen, anEditorIsMadeWhenItsFormOpensForTheFirstTime)
{
    windows = std::make_unique<Windows>(app());
    EXPECT_TRUE(made<EditorWindow>().isEmpty());

    orders().editThisOrder(order("Three stools"));
    ASSERT_EQ(made<OrderEditor>().size(), 1);
    OrderEditor* const editor = made<OrderEditor>().first();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(child<QLineEdit>(*editor, "title")->text(), QString("Three stools"));

    orders().form.cancel.trigger();
    EXPECT_FALSE(editor->isVisible());
    orders().editThisOrder(order("A bench"));
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(child<QLineEdit>(*editor, "title")->text(), QString("A bench"));
    EXPECT_EQ(made<OrderEditor>().size(), 1);
    EXPECT_EQ(&windows->order(), editor);
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, everyEditorComesUp)
{
    windows = std::make_unique<Windows>(app());
    items().create();
    EXPECT_TRUE(windows->item().isVisible());
    items().form.cancel.trigger();

    contacts().create();
    ASSERT_EQ(made<ContactWindow>().size(), 1);
    EXPECT_TRUE(made<ContactWindow>().first()->isVisible());
    contacts().form.cancel.trigger();
    contacts().editThisContact(firm("Orchard Press"));
    EXPECT_EQ(made<ContactWindow>().size(), 2);
    contacts().companyEditor.form.close();
}

TEST_F(WindowsOnScreen, anEditorSaysTheFirstTimeWhatItSaysLater)
{
    Order& stools = order("Three stools");
    stools.setContact(&contact("Ada Penrose"));
    stools.setValue("22.50");
    payment(stools, "20.00");
    Item& stool = item("Oak stool");
    Item& set = collectiveItem("Stool set", {{&stool, 2.0f}});
    windows = std::make_unique<Windows>(app());

    const auto editOrder = [&] { orders().editThisOrder(stools); };
    editOrder();
    EXPECT_TRUE(words(windows->order()).contains(QString("£2.50")));
    expectSameAgain(windows->order(), orders().form.cancel, editOrder);

    const auto editItem = [&] { items().editThisItem(set); };
    editItem();
    EXPECT_TRUE(words(windows->item()).contains(QString("Stool set")));
    expectSameAgain(windows->item(), items().form.cancel, editItem);

    Contact& bert = contact("Bert Finch");
    const auto editContact = [&] { contacts().editThisContact(bert); };
    editContact();
    EXPECT_TRUE(words(*made<ContactWindow>().first()).contains(QString("Bert Finch")));
    expectSameAgain(*made<ContactWindow>().first(), contacts().form.cancel, editContact);
}

TEST_F(WindowsOnScreen, theTenderSheetStandsOnTheOrdersWindow)
{
    windows = std::make_unique<Windows>(app());
    orders().editThisOrder(order("Three stools"));
    orders().form.tender.trigger();
    settle();
    EXPECT_NE(SheetStack::instance().top(), nullptr);
    SheetStack::instance().cancelAll();
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, theDateFormatStandsBesideTheFieldsForDates)
{
    windows = std::make_unique<Windows>(app());
    Order& purchase = order("Timber");
    purchase.setType("Purchase Order");
    orders().editThisOrder(purchase);
    OrderEditor& editor = windows->order();
    EXPECT_EQ(child<QLabel>(editor, "dateCaption")->text(), QString("dd/mm/yy"));
    EXPECT_TRUE(child<QLabel>(editor, "balancePaidCaption")->isVisible());

    PrefsForm& settings = app().getPrefsController().form;
    settings.dateFormat.edit(PrefsForm::monthFirst);
    EXPECT_EQ(child<QLabel>(editor, "dateCaption")->text(), QString("mm/dd/yy"));
    EXPECT_EQ(child<QLabel>(editor, "balancePaidCaption")->text(), QString("mm/dd/yy"));
    orders().form.tender.trigger();
    settle();
    ASSERT_NE(SheetStack::instance().top(), nullptr);
    EXPECT_EQ(child<QLabel>(*SheetStack::instance().top(), "dateCaption")->text(), QString("mm/dd/yy"));
    SheetStack::instance().cancelAll();

    orders().form.cancel.trigger();
    orders().editThisOrder(order("Three stools"));
    EXPECT_FALSE(child<QLabel>(editor, "balancePaidCaption")->isVisible());
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, printingInAnotherWindowPutsItsTextOrListOnPaper)
{
    windows = std::make_unique<Windows>(app());
    const auto print = [this](QWidget& focus) {
        focus.setFocus();
        QTest::keyClick(&focus, Qt::Key_P, Qt::ControlModifier);
        return printing.titles.isEmpty() ? QString() : printing.titles.takeLast();
    };
    items().editThisItem(item("Oak stool"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&windows->item()));
    EXPECT_EQ(print(*child<QLineEdit>(windows->item(), "item")), child<QLineEdit>(windows->item(), "item")->accessibleName());
    EXPECT_EQ(print(*child<QAbstractButton>(windows->item(), "save")), QString()) << "nothing to put on paper";
    items().form.cancel.trigger();

    orders().editThisOrder(order("Three stools"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&windows->order()));
    EXPECT_EQ(print(*child<QLineEdit>(windows->order(), "title")), child<QLineEdit>(windows->order(), "title")->accessibleName());
    EXPECT_TRUE(documents().isEmpty()) << "that has a key of its own";
    QTest::keyClick(keyboard(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return documents().size() == 1; }));
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, whatIsNewInAnUpdateGoesOnPaper)
{
    windows = std::make_unique<Windows>(app());
    app().updates().form.open();
    settle();
    ASSERT_NE(keyboard(), nullptr);
    EXPECT_EQ(keyboard()->objectName(), QString("notes"));
    QTest::keyClick(keyboard(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(printing.titles, QStringList("What is new"));
    app().updates().form.close();
}

TEST_F(WindowsOnScreen, aTextOrListKnowsHowItGoesOnPaper)
{
    windows = std::make_unique<Windows>(app());
    Order& stools = order("Three stools");
    line(stools, "22.50");
    orders().editThisOrder(stools);
    OrderEditor& editor = windows->order();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));

    child<QPlainTextEdit>(editor, "description")->setPlainText("Oak\nand ash");
    child<QPlainTextEdit>(editor, "description")->setFocus();
    FrontView view = firstResponder();
    EXPECT_EQ(view.list, nullptr);
    ASSERT_NE(view.text, nullptr);
    EXPECT_EQ(view.text->toPlainText(), QString("Oak\nand ash"));

    RecordTable* table = nullptr;
    for (RecordTable* candidate : editor.findChildren<RecordTable*>()) {
        if (candidate->isVisible())
            table = candidate;
    }
    ASSERT_NE(table, nullptr);
    table->setFocus();
    view = firstResponder();
    EXPECT_EQ(view.list, &lines());
    EXPECT_EQ(view.title, QString("Items ordered"));

    child<QAbstractButton>(editor, "save")->setFocus();
    view = firstResponder();
    EXPECT_EQ(view.list, nullptr);
    EXPECT_EQ(view.text, nullptr);
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, theOrdersOfAContactStandUnderThePersonsWord)
{
    windows = std::make_unique<Windows>(app());
    PrefsForm& settings = app().getPrefsController().form;
    settings.termOrders.edit("Jobs");
    contacts().editThisContact(contact("Bert Finch"));
    contacts().editThisContact(firm("Orchard Press"));
    ASSERT_EQ(made<ContactWindow>().size(), 2);
    for (const ContactWindow* window : made<ContactWindow>())
        EXPECT_TRUE(words(*window).contains("Jobs")) << words(*window).join(", ").toStdString();

    settings.termOrders.edit("Works & days");
    for (const ContactWindow* window : made<ContactWindow>())
        EXPECT_TRUE(words(*window).contains("Works & days")) << words(*window).join(", ").toStdString();
    contacts().form.cancel.trigger();
    contacts().companyEditor.form.close();
}

TEST_F(WindowsOnScreen, anAmpersandInAWordIsSeenWhereverTheWordStands)
{
    windows = std::make_unique<Windows>(app());
    PrefsForm& settings = app().getPrefsController().form;
    for (TextField* word : {&settings.termOrder, &settings.termOrders, &settings.termItem, &settings.termItems})
        word->edit("R&D");
    orders().editThisOrder(order("Three stools"));
    // What a button shows has its "&" twice; a command has another one before its letter.
    EXPECT_EQ(child<QAbstractButton>(windows->order(), "pickMaterial")->text(), QString("Select From R&&D…"));
    EXPECT_EQ(child<QAbstractButton>(windows->order(), "newItem")->text(), QString("New R&&D"));
    for (const char* command : {"newOrder", "newItem"})
        EXPECT_EQ(child<QAction>(windows->main(), command)->iconText(), QString("New R&D")) << "as on the tool bar";
    for (const char* command : {"showOrders", "showItems"})
        EXPECT_EQ(child<QAction>(windows->main(), command)->iconText(), QString("R&D"));
    EXPECT_EQ(child<SideBar>(windows->main(), "pages")->item(1)->text(), QString("R&D"));
    orders().form.cancel.trigger();
}

TEST_F(WindowsOnScreen, theWelcomeViewSpeaksInTheWordsOfThePerson)
{
    windows = std::make_unique<Windows>(app());
    windows->main().makeLists();
    PrefsForm& settings = app().getPrefsController().form;
    settings.termOrder.edit("Job");
    settings.termItem.edit("Product");
    QStringList names;
    for (const QAbstractButton* button : windows->main().findChild<WelcomeView*>()->findChildren<QAbstractButton*>())
        names += button->accessibleName();
    EXPECT_EQ(names, (QStringList {"New Contact", "New Product", "New Job", "Open Sample Business"}));
}

TEST_F(WindowsOnScreen, theListsSpeakInTheWordsOfThePerson)
{
    windows = std::make_unique<Windows>(app());
    windows->main().makeLists();
    PrefsForm& settings = app().getPrefsController().form;
    settings.termOrder.edit("Job");
    settings.termOrders.edit("Jobs");
    settings.termItem.edit("Product");
    settings.termItems.edit("Products");
    QStringList placeholders;
    for (const QLineEdit* field : windows->main().findChildren<QLineEdit*>("search"))
        placeholders += field->placeholderText();
    placeholders.sort();
    EXPECT_EQ(placeholders, (QStringList {"Search contacts", "Search jobs and contacts", "Search products"}));
    QStringList words;
    for (const QLabel* label : windows->main().findChildren<QLabel*>())
        words += label->text();
    for (const char* expected :
        {"No jobs yet", "Make your first one with New Job.", "No products yet", "Make your first one with New Product."})
        EXPECT_TRUE(words.contains(expected)) << expected;
}
