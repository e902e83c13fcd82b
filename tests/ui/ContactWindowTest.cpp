// The windows of the three contact editors on the running application.
#include "ui/contacts/ContactEditor.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/RealDesktop.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/UnderlineTabs.h"

#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>

using namespace uitest;

namespace {

class ContactOnScreen : public Business {
protected:
    void SetUp() override
    {
        begin();
        person = make(contacts().form);
        company = make(contacts().companyEditor.form);
        colleague = make(contacts().companyContactEditor.form);
    }
    void TearDown() override
    {
        colleague.reset();
        company.reset();
        person.reset();
    }
    template <class EditorForm>
    std::unique_ptr<ContactWindow> make(EditorForm& form)
    {
        return std::make_unique<ContactWindow>(form, app().ordersIn(form));
    }
    /// A new person, with the keyboard where it belongs.
    void create()
    {
        contacts().create();
        ASSERT_TRUE(QTest::qWaitForWindowActive(person.get()));
        settle();
    }
    static QLineEdit* field(const QWidget& window, const char* name) { return child<QLineEdit>(window, name); }
    static void save(const QWidget& window) { press(*child<QAbstractButton>(window, "save")); }
    /// Every field of the form that the window has no widget for.
    static QStringList withoutWidget(const Form& form, const QWidget& window)
    {
        QStringList missing;
        for (const FormField* each : form.fields()) {
            if (!window.findChild<QWidget*>(each->name()))
                missing += each->name();
        }
        return missing;
    }

    std::unique_ptr<ContactWindow> person;
    std::unique_ptr<ContactWindow> company;
    std::unique_ptr<ContactWindow> colleague;
};

} // namespace

TEST_F(ContactOnScreen, aNewPersonOpensWithTheKeyboardInTheName)
{
    create();
    EXPECT_TRUE(field(*person, "name")->hasFocus());
    EXPECT_EQ(person->windowTitle(), QString("New Contact"));
    EXPECT_FALSE(company->isVisible());
}

TEST_F(ContactOnScreen, everyFieldHasItsWidget)
{
    EXPECT_EQ(withoutWidget(contacts().form, *person), QStringList());
    // A company has no title of address.
    EXPECT_EQ(withoutWidget(contacts().companyEditor.form, *company), QStringList({"title"}));
    EXPECT_EQ(withoutWidget(contacts().companyContactEditor.form, *colleague), QStringList());
}

TEST_F(ContactOnScreen, whatIsTypedIsSaved)
{
    create();
    const std::pair<const char*, const char*> typed[] {{"title", "Dr"}, {"name", "Ada Penrose"}, {"salutation", "Dear Ada"}, {"ref", "A1"},
        {"add1", "12 Mill Lane"}, {"add2", "Newlyn"}, {"add3", "Penzance"}, {"county", "Cornwall"}, {"postcode", "TR18 4AB"},
        {"country", "England"}, {"phone", "01736 1"}, {"mobile", "07700 1"}, {"fax", "01736 2"}, {"email", "ada@penrose.example"}};
    for (const auto& [name, text] : typed)
        type(*field(*person, name), text);
    child<QPlainTextEdit>(*person, "comments")->setFocus();
    QTest::keyClicks(keyboard(), "likes oak");
    auto* kind = child<QComboBox>(*person, "type");
    kind->setFocus();
    QTest::keyClicks(kind, "Supplier");
    save(*person);
    EXPECT_FALSE(person->isVisible());
    ASSERT_EQ(contacts().getCount(), 1);
    const Contact& saved = static_cast<const Contact&>(*contacts().getnthItem(0));
    for (const auto& [name, text] : typed)
        EXPECT_EQ(saved.getFieldByName(name), text) << name;
    EXPECT_EQ(saved.getComments(), "likes oak");
    EXPECT_EQ(saved.getType(), "Supplier");
}

TEST_F(ContactOnScreen, cancellingKeepsNothing)
{
    create();
    type(*field(*person, "name"), "Nobody");
    press(*child<QAbstractButton>(*person, "cancel"));
    EXPECT_FALSE(person->isVisible());
    EXPECT_EQ(contacts().getCount(), 0);
}

TEST_F(ContactOnScreen, theHeadingFollowsTheName)
{
    create();
    type(*field(*person, "name"), "Ada Penrose");
    QStringList words;
    for (const QLabel* label : person->findChildren<QLabel*>())
        words += label->text();
    EXPECT_TRUE(words.contains("Ada Penrose"));
    EXPECT_TRUE(words.contains("Person · C1"));
}

TEST_F(ContactOnScreen, aPersonBecomesACompanyInTheCompanysWindow)
{
    create();
    type(*field(*person, "name"), "Penrose Ltd");
    press(*child<QAbstractButton>(*person, "makeCompany"));
    EXPECT_FALSE(person->isVisible());
    EXPECT_TRUE(company->isVisible());
    EXPECT_EQ(field(*company, "name")->text(), QString("Penrose Ltd"));
    type(*field(*company, "website"), "penrose.example");
    save(*company);
    EXPECT_EQ(static_cast<const Contact&>(*contacts().getnthItem(0)).getWebsite(), "penrose.example");
}

TEST_F(ContactOnScreen, aCompanyListsItsPeopleForReading)
{
    Contact& penrose = firm("Penrose Ltd");
    personOf(penrose, "Ada");
    personOf(penrose, "Eve");
    contacts().editThisContact(penrose);
    auto* people = child<QPlainTextEdit>(*company, "people");
    EXPECT_EQ(people->toPlainText(), QString("Ada\nEve"));
    EXPECT_TRUE(people->isReadOnly());
}

TEST_F(ContactOnScreen, aPersonIsPutIntoACompanyFromTheList)
{
    firm("Hill Ltd");
    firm("Penrose Ltd");
    create();
    type(*field(*person, "name"), "Ada");
    press(*child<QAbstractButton>(*person, "linkToCompany"));
    ASSERT_TRUE(colleague->isVisible());
    auto* choice = child<QComboBox>(*colleague, "company");
    EXPECT_EQ(choice->currentIndex(), -1);
    choice->setFocus();
    QTest::keyClicks(choice, "Penrose Ltd");
    type(*field(*colleague, "jobTitle"), "Joiner");
    type(*field(*colleague, "extension"), "12");
    save(*colleague);
    const Contact& ada = static_cast<const Contact&>(*contacts().getnthItem(2));
    EXPECT_EQ(ada.getCompany(), contacts().getCompanyByName("Penrose Ltd")->getID());
    EXPECT_EQ(ada.getJobTitle(), "Joiner");
    EXPECT_EQ(ada.getExtension(), "12");
}

TEST_F(ContactOnScreen, everyFieldSaysItsNameToScreenReaders)
{
    for (const ContactWindow* window : {person.get(), company.get(), colleague.get()}) {
        for (const QWidget* each : window->findChildren<QWidget*>()) {
            const bool field =
                qobject_cast<const QLineEdit*>(each) || qobject_cast<const QPlainTextEdit*>(each) || qobject_cast<const QComboBox*>(each);
            if (field && !qobject_cast<const QComboBox*>(each->parentWidget())) {
                EXPECT_NE(each->accessibleName(), QString()) << each->objectName().toStdString();
            }
        }
    }
}

TEST_F(ContactOnScreen, ctrlSSaves)
{
    create();
    type(*field(*person, "name"), "Ada");
    QTest::keyClick(field(*person, "name"), Qt::Key_S, Qt::ControlModifier);
    // A button pressed by its key is seen going down first.
    ASSERT_TRUE(QTest::qWaitFor([this] { return !person->isVisible(); }, 2'000));
    EXPECT_EQ(contacts().getCount(), 1);
}

// Commands

TEST_F(ContactOnScreen, anAddressIsPastedPutRightAndCopied)
{
    create();
    clipboard.contents = "ada quill\n12 mill lane\nhexworth\nhx1 2ab";
    press(*child<QAbstractButton>(*person, "pasteContact"));
    press(*child<QAbstractButton>(*person, "capitalise"));
    EXPECT_EQ(field(*person, "name")->text(), QString("Ada Quill"));
    EXPECT_EQ(field(*person, "postcode")->text(), QString("HX1 2AB"));
    press(*child<QAbstractButton>(*person, "copyContact"));
    EXPECT_EQ(clipboard.contents, QString("Ada Quill\r12 Mill Lane\rHexworth\r\r\rHX1 2AB"));
    save(*person);
    EXPECT_EQ(static_cast<const Contact&>(*contacts().getnthItem(0)).getAdd2(), "Hexworth");
}

TEST_F(ContactOnScreen, aPictureIsNoAddressAndTheNameSaysSo)
{
    create();
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QApplication::clipboard()->setImage(picture);
    clipboard.contents = RealClipboard().text();
    const auto isSaid = [this] {
        const QList<QLabel*> labels = person->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(),
            [](const QLabel* label) { return label->isVisible() && label->text() == "There is no address on the clipboard."; });
    };
    press(*child<QAbstractButton>(*person, "pasteContact"));
    EXPECT_TRUE(isSaid());
    type(*field(*person, "name"), "Ada");
    EXPECT_FALSE(isSaid());
}

TEST_F(ContactOnScreen, whatACommandChangedIsNotLostByOneEsc)
{
    Contact& ada = contact("ada");
    contacts().editThisContact(ada);
    ASSERT_TRUE(QTest::qWaitForWindowActive(person.get()));
    press(*child<QAbstractButton>(*person, "capitalise"));
    QTest::keyClick(person.get(), Qt::Key_Escape);
    EXPECT_TRUE(person->isVisible());
    QTest::keyClick(person.get(), Qt::Key_Escape);
    EXPECT_FALSE(person->isVisible());
    contacts().editThisContact(ada);
    settle();
    QTest::keyClick(person.get(), Qt::Key_Escape);
    EXPECT_FALSE(person->isVisible()) << "nothing was changed this time";
}

TEST_F(ContactOnScreen, letterAndPageOpenOnceThereIsAnAddress)
{
    contacts().companyEditor.create();
    ASSERT_TRUE(QTest::qWaitForWindowActive(company.get()));
    EXPECT_FALSE(child<QAbstractButton>(*company, "sendEmail")->isEnabled());
    EXPECT_FALSE(child<QAbstractButton>(*company, "openWebsite")->isEnabled());
    type(*field(*company, "email"), "info@tarn.example");
    type(*field(*company, "website"), "tarn.example");
    press(*child<QAbstractButton>(*company, "sendEmail"));
    press(*child<QAbstractButton>(*company, "openWebsite"));
    ASSERT_EQ(opener.urls.size(), 2u);
    EXPECT_EQ(opener.urls[0], QUrl("mailto:info@tarn.example"));
    EXPECT_EQ(opener.urls[1], QUrl("https://tarn.example"));
}

TEST_F(ContactOnScreen, updatingIsSeenOnlyForSomebodyOfTheAddressBook)
{
    create();
    auto* update = child<QAbstractButton>(*person, "updateContactFromABMenuItem");
    EXPECT_FALSE(update->isVisible());
    type(*field(*person, "ref"), "1:ABPerson");
    EXPECT_TRUE(update->isVisible());
}

TEST_F(ContactOnScreen, theThreeWindowsShareOnePlace)
{
    firm("Hill Ltd");
    create();
    type(*field(*person, "name"), "Penrose");
    person->setGeometry(120, 90, 900, 710);
    const QRect place = person->geometry();
    press(*child<QAbstractButton>(*person, "makeCompany"));
    EXPECT_EQ(company->geometry(), place);
    company->setGeometry(60, 50, 880, 700);
    save(*company);
    create();
    EXPECT_EQ(person->geometry(), QRect(60, 50, 880, 700));
    press(*child<QAbstractButton>(*person, "linkToCompany"));
    EXPECT_EQ(colleague->geometry(), QRect(60, 50, 880, 700));
}

// Orders

TEST_F(ContactOnScreen, theOrdersTabOpensAnOrderByReturnAndDoubleClick)
{
    Contact& ada = contact("Ada");
    for (const char* title : {"Three stools", "A bench"})
        orders().connectContact(ada, order(title));
    orders().filter();
    contacts().editThisContact(ada);
    ASSERT_TRUE(QTest::qWaitForWindowActive(person.get()));
    auto* tabs = person->findChild<UnderlineTabs*>();
    tabs->setCurrentIndex(1);
    auto* table = child<RecordTable>(*person, "contactOrders");
    ASSERT_EQ(table->model()->rowCount(), 2);
    EXPECT_EQ(table->model()->index(0, 2).data().toString(), QString("A bench"));
    table->setFocus();
    table->selectRow(1);
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_TRUE(orders().form.isOpen());
    EXPECT_EQ(currentOrder().getTitle(), "Three stools");
    orders().form.cancel.trigger();
    const QPoint first = table->visualRect(table->model()->index(0, 2)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(currentOrder().getTitle(), "A bench");
    orders().form.cancel.trigger();
    contacts().form.cancel.trigger();
    contacts().editThisContact(ada);
    EXPECT_EQ(tabs->currentIndex(), 0) << "a contact opens with itself";
}
