// The windows of the three contact editors on the running application.
#include "ui/contacts/ContactEditor.h"

#include "UiTest.h"
#include "support/Business.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>

using namespace uitest;

namespace {

class ContactOnScreen : public Business {
protected:
    void SetUp() override
    {
        begin();
        person = std::make_unique<ContactWindow>(contacts().form);
        company = std::make_unique<ContactWindow>(contacts().companyEditor.form);
        colleague = std::make_unique<ContactWindow>(contacts().companyContactEditor.form);
    }
    void TearDown() override
    {
        colleague.reset();
        company.reset();
        person.reset();
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
