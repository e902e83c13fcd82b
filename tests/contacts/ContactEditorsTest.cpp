// Contact editors that are open beside each other, or asked for twice.
#include "support/Business.h"

#include <array>

namespace {

class ContactEditorsTest : public Business {
protected:
    IndividualForm& form() { return contacts().form; }
    CompanyForm& company() { return contacts().companyEditor.form; }
    CompanyContactForm& person() { return contacts().companyContactEditor.form; }
    Contact& named(const char* name) { return *contacts().getContactbyName(name); }
    void deleteSelected(Contact& contact)
    {
        contacts().setSelectedRecords({&contact});
        alerts.answer("OK");
        contacts().deleteKey();
    }
};

TEST_F(ContactEditorsTest, twoNewContactsGetTwoIdsWhenADeletionGaveTheFirstIdAway)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    Contact& old = contact("Old");
    contact("Other");
    contacts().create();
    form().name.edit("Ann");
    deleteSelected(old);
    contacts().companyEditor.create();
    company().name.edit("Acme");
    company().save.trigger();
    form().save.trigger();
    EXPECT_EQ(named("Acme").getID(), 3);
    EXPECT_EQ(named("Acme").getRef(), "K3");
    EXPECT_EQ(named("Ann").getID(), 4);
    EXPECT_EQ(named("Ann").getRef(), "K4");
    EXPECT_EQ(contacts().getContactbyId(4), &named("Ann"));
}

TEST_F(ContactEditorsTest, aNewCompanyGetsAnotherIdWhenItsOwnWentToAContact)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    contacts().create();
    contacts().companyEditor.create();
    company().name.edit("Acme");
    company().ref.edit("MINE");
    form().cancel.trigger();
    for (const char* name : {"Ann", "Bob"}) {
        contacts().create();
        form().name.edit(name);
        form().save.trigger();
    }
    company().save.trigger();
    EXPECT_EQ(named("Ann").getID(), 1);
    EXPECT_EQ(named("Bob").getID(), 2);
    EXPECT_EQ(named("Acme").getID(), 3);
    EXPECT_EQ(named("Acme").getRef(), "MINE") << "a reference the user typed stays";
}

TEST_F(ContactEditorsTest, savingCompaniesAndTheirPeopleCopiesAllTheirFields)
{
    begin();
    Contact& acme = firm("Acme");
    Contact& ann = personOf(acme, "Ann");
    contacts().editThisContact(acme);
    contacts().editThisContact(ann);
    constexpr std::array shared {"ref", "title", "name", "salutation", "add1", "add2", "add3", "county", "postcode", "country", "phone",
        "mobile", "fax", "email", "comments"};
    const auto typeInto = [](ContactForm& editor, const char* field) {
        auto* text = dynamic_cast<TextField*>(editor.field(field));
        ASSERT_NE(text, nullptr) << field;
        text->edit(QString("new ") + field);
    };
    for (const char* field : shared) {
        typeInto(company(), field);
        typeInto(person(), field);
    }
    typeInto(company(), "website");
    typeInto(person(), "jobTitle");
    typeInto(person(), "extension");
    person().save.trigger();
    company().save.trigger();
    for (const char* field : shared) {
        EXPECT_EQ(acme.getFieldByName(field), std::string("new ") + field);
        EXPECT_EQ(ann.getFieldByName(field), std::string("new ") + field);
    }
    EXPECT_EQ(acme.getWebsite(), "new website");
    EXPECT_EQ(ann.getJobTitle(), "new jobTitle");
    EXPECT_EQ(ann.getExtension(), "new extension");
    EXPECT_EQ(ann.getCompany(), acme.getID());
}

TEST_F(ContactEditorsTest, ofTwoCompaniesOfOneNameTheFirstIsTaken)
{
    begin();
    const Contact& first = firm("Acme");
    Contact& ann = personOf(firm("Acme"), "Ann");
    contacts().editThisContact(ann);
    EXPECT_EQ(person().company.title(), "Acme");
    person().save.trigger();
    EXPECT_EQ(ann.getCompany(), first.getID());
}

TEST_F(ContactEditorsTest, aCompanyWithoutAnIdIsNobodysAndNothingIsAsked)
{
    begin();
    Contact& acme = firm("Acme");
    Contact& none = firm("None");
    Contact& ann = personOf(acme, "Ann");
    none.setID(0);
    contacts().editThisContact(ann);
    person().company.edit(1);
    EXPECT_EQ(person().company.title(), "None");
    person().save.trigger();
    EXPECT_EQ(ann.getCompany(), acme.getID());
    EXPECT_TRUE(ann.isCompanyContact());
}

TEST_F(ContactEditorsTest, savingWithoutAChosenTypeLeavesTypeAndWebsite)
{
    begin();
    Contact& ann = contact("Ann", "Supplier");
    Contact& acme = firm("Acme");
    acme.setType("Supplier");
    ann.setWebsite("http://ann");
    contacts().editThisContact(ann);
    contacts().editThisContact(acme);
    form().type.edit(-1);
    company().type.edit(-1);
    form().save.trigger();
    company().save.trigger();
    EXPECT_EQ(ann.getType(), "Supplier");
    EXPECT_EQ(ann.getWebsite(), "http://ann");
    EXPECT_EQ(acme.getType(), "Supplier");
}

TEST_F(ContactEditorsTest, whatIsSavedIsFilteredAgain)
{
    begin();
    Contact& ann = contact("Ann");
    contact("Annabel");
    contacts().listForm.search.edit("ann");
    contacts().editThisContact(ann);
    form().name.edit("Bob");
    form().save.trigger();
    EXPECT_EQ(shown(contacts(), "name"), std::vector<std::string> {"Annabel"});
}

TEST_F(ContactEditorsTest, openingTheOpenContactAgainKeepsWhatWasTyped)
{
    begin();
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().name.edit("Ann Lee");
    contacts().editThisContact(ann);
    EXPECT_EQ(form().name.text(), "Ann Lee");
    EXPECT_TRUE(form().isOpen());
    contacts().editThisContact(contact("Bob"));
    EXPECT_EQ(form().name.text(), "Bob");
}

TEST_F(ContactEditorsTest, openingTheOpenCompanyOrPersonAgainKeepsWhatWasTyped)
{
    begin();
    Contact& acme = contact("Acme");
    acme.makeCompany();
    Contact& ann = contact("Ann");
    ann.setKind("Company Contact");
    ann.setCompany(acme.getID());
    for (Contact* opened : {&acme, &ann, &acme, &ann}) {
        contacts().editThisContact(*opened);
        company().phone.edit("01");
        person().phone.edit("02");
    }
    EXPECT_EQ(company().phone.text(), "01");
    EXPECT_EQ(person().phone.text(), "02");
}

TEST_F(ContactEditorsTest, whoeverGotNoCompanyYetIsListedAgainWhenSomebodyElseIsOpened)
{
    begin();
    Contact& acme = firm("Acme");
    Contact& bob = personOf(acme, "Bob");
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().linkToCompany.trigger();
    contacts().editThisContact(bob);
    EXPECT_EQ(person().name.text(), "Bob");
    EXPECT_EQ(ann.getKind(), "Individual");
    EXPECT_EQ(contacts().countVisibleCompanies(), 2);
    person().cancel.trigger();
    EXPECT_TRUE(bob.isCompanyContact());
}

TEST_F(ContactEditorsTest, aContactForAnOrderIsConnectedThoughOthersWereOpenedMeanwhile)
{
    begin();
    Contact& acme = firm("Acme");
    Contact& bob = personOf(acme, "Bob");
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    form().name.edit("Ann");
    contacts().editThisContact(acme);
    contacts().editThisContact(bob);
    company().save.trigger();
    person().cancel.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), &named("Ann"));
}

TEST_F(ContactEditorsTest, aContactForAnOrderThatGaveWayToAnotherIsConnectedToNone)
{
    begin();
    Contact& bob = contact("Bob");
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    contacts().editThisContact(bob);
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
    EXPECT_EQ(contacts().getCount(), 1);
}

TEST_F(ContactEditorsTest, anotherTakesThePlaceOfTheOpenOneOnlyWhenItMay)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& bob = contact("Bob");
    Contact& acme = firm("Acme");
    Contact& mill = firm("Mill");
    Contact& cyd = personOf(acme, "Cyd");
    Contact& dot = personOf(acme, "Dot");
    int asked = 0;
    const auto refuse = [&] {
        ++asked;
        return false;
    };
    form().mayTakeAnother = company().mayTakeAnother = person().mayTakeAnother = refuse;
    for (Contact* first : {&ann, &acme, &cyd})
        contacts().editThisContact(*first);
    EXPECT_EQ(asked, 0) << "nothing was open";
    for (Contact* second : {&bob, &mill, &dot})
        contacts().editThisContact(*second);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(form().name.text(), "Ann");
    EXPECT_EQ(company().name.text(), "Acme");
    EXPECT_EQ(person().name.text(), "Cyd");
    contacts().create();
    contacts().companyEditor.create();
    EXPECT_EQ(form().name.text(), "Ann");
    EXPECT_EQ(company().name.text(), "Acme");
    // Neither becomes what there is no editor for.
    contacts().makeCompany();
    contacts().linkToCompany();
    EXPECT_FALSE(ann.isCompany());
    EXPECT_FALSE(ann.isCompanyContact());
    EXPECT_TRUE(form().isOpen());
}

TEST_F(ContactEditorsTest, aContactThatFoundNoPlaceInTheEditorIsNotConnectedWithAnOrder)
{
    begin();
    contact("Ann");
    contacts().editThisContact(named("Ann"));
    form().mayTakeAnother = [] { return false; };
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
    EXPECT_EQ(contacts().getCount(), 1);
}

TEST_F(ContactEditorsTest, inAReadOnlyDatabaseSavingAPersonOfACompanyJustClosesTheEditor)
{
    begin();
    personOf(firm("Acme"), "Bob");
    contact("Ann");
    quit();
    beginReadOnly();
    Contact& bob = named("Bob");
    contacts().editThisContact(bob);
    person().name.edit("Robert");
    person().company.edit(-1);
    alerts.answer("OK");
    person().save.trigger();
    EXPECT_EQ(lastAlert().title, "Read-only mode");
    EXPECT_EQ(bob.getName(), "Bob");
    EXPECT_TRUE(bob.isCompanyContact());
    EXPECT_FALSE(person().isOpen());

    contacts().editThisContact(named("Ann"));
    for (CommandField* command : {&form().makeCompany, &form().linkToCompany}) {
        alerts.answer("OK");
        command->trigger();
        EXPECT_EQ(named("Ann").getKind(), "Individual");
        EXPECT_TRUE(form().isOpen());
    }
}

TEST_F(ContactEditorsTest, afterADeletionTheStatusLineSaysWhatUndoBringsBack)
{
    begin();
    Contact& ann = contact("Ann");
    contact("Bob");
    contact("Cal");
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, [&](const QString& line) { status = line; });
    deleteSelected(ann);
    EXPECT_EQ(status, "Deleted. Undo brings the contact back.");
    contacts().setSelectedRows({0, 1});
    alerts.answer("OK");
    contacts().deleteKey();
    EXPECT_EQ(status, "Deleted. Undo brings the contacts back.");
}

} // namespace
