#include "support/Business.h"

#include "contacts/ContactOutlineModel.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ContactManagerTest : public Business {
protected:
    IndividualForm& form() { return contacts().form; }
    CompanyForm& company() { return contacts().companyEditor.form; }
    CompanyContactForm& person() { return contacts().companyContactEditor.form; }
    std::vector<std::string> names() { return shown(contacts(), "name"); }
    static void choose(ChoiceField& field, const char* title) { field.edit(static_cast<int>(field.titles().indexOf(title))); }
};

// New contacts

TEST_F(ContactManagerTest, aNewContactGetsTheNextIdAndAPrefixedReferenceAndJoinsOnSaving)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    contact("Ann");
    contacts().create();
    EXPECT_TRUE(form().isOpen());
    EXPECT_EQ(form().ref.text(), "K2");
    EXPECT_EQ(form().type.title(), "Customer");
    EXPECT_EQ(contacts().getCount(), 1);
    form().name.edit("Bob Roe");
    form().save.trigger();
    ASSERT_EQ(contacts().getCount(), 2);
    EXPECT_EQ(contacts().at(1).getID(), 2);
    EXPECT_EQ(contacts().at(1).getRef(), "K2");
    EXPECT_FALSE(form().isOpen());
}

TEST_F(ContactManagerTest, aCancelledNewContactLeavesNothing)
{
    begin();
    contacts().create();
    form().name.edit("Bob");
    form().cancel.trigger();
    EXPECT_EQ(contacts().getCount(), 0);
    contacts().create();
    form().save.trigger();
    EXPECT_EQ(contacts().at(0).getID(), 1);
}

TEST_F(ContactManagerTest, withoutADateFormatOneIsAskedForAndNoContactIsMade)
{
    start();
    int asked = 0;
    QObject::connect(&app(), &Vendaro::dateFormatWanted, [&] { ++asked; });
    contacts().create();
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(form().isOpen());
}

TEST_F(ContactManagerTest, savingCopiesTheEditorAndWritesTheFile)
{
    begin();
    contacts().create();
    const std::pair<TextField*, const char*> texts[] = {{&form().contactTitle, "Dr"}, {&form().name, "Ann Lee"},
        {&form().salutation, "Annie"}, {&form().add1, "1 High St"}, {&form().add2, "Oldham"}, {&form().add3, "East"},
        {&form().county, "Lancs"}, {&form().postcode, "OL1"}, {&form().country, "UK"}, {&form().phone, "01"}, {&form().mobile, "07"},
        {&form().fax, "02"}, {&form().email, "ann@example.org"}, {&form().comments, "good\nwell"}, {&form().ref, "R-9"}};
    for (const auto& [field, text] : texts)
        field->edit(text);
    choose(form().type, "Supplier");
    form().save.trigger();

    const Contact& ann = contacts().at(0);
    const std::pair<const char*, const char*> expected[] = {{"title", "Dr"}, {"name", "Ann Lee"}, {"salutation", "Annie"},
        {"add1", "1 High St"}, {"add2", "Oldham"}, {"add3", "East"}, {"county", "Lancs"}, {"postcode", "OL1"}, {"country", "UK"},
        {"phone", "01"}, {"mobile", "07"}, {"fax", "02"}, {"email", "ann@example.org"}, {"comments", "good\nwell"}, {"ref", "R-9"},
        {"type", "Supplier"}, {"kind", "Individual"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(ann.getFieldByName(name), value) << name;
    EXPECT_TRUE(readFile("contacts.xml").contains("<string>ann@example.org</string>"));
}

TEST_F(ContactManagerTest, aTypeThatIsNotListedSurvivesASave)
{
    begin();
    Contact& ann = contact("Ann", "Wizard");
    contacts().editThisContact(ann);
    form().save.trigger();
    EXPECT_EQ(ann.getType(), "Wizard");
}

TEST_F(ContactManagerTest, cancellingAnExistingContactChangesNothing)
{
    begin();
    Contact& ann = contact("Ann");
    contacts().selectRow(0);
    contacts().edit();
    form().name.edit("Bob");
    form().cancel.trigger();
    EXPECT_EQ(ann.getName(), "Ann");
    EXPECT_TRUE(contacts().holds(ann));
}

TEST_F(ContactManagerTest, aContactMadeForAnOrderIsConnectedToIt)
{
    begin();
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    form().name.edit("Ann Lee");
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), &contacts().at(0));
    EXPECT_EQ(currentOrder().getNewCustomer(), 1);
    EXPECT_EQ(orders().form.contactName.text(), "Ann Lee");
    EXPECT_TRUE(logged("Vendaro connectContact - connecting contact 1 to order 1"));
}

TEST_F(ContactManagerTest, aContactMadeAfterwardsIsConnectedToNoOrder)
{
    begin();
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    form().cancel.trigger();
    contacts().create();
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
}

TEST_F(ContactManagerTest, onlyTheContactThatWasOpenedForTheOrderIsConnectedToIt)
{
    begin();
    Contact& bob = personOf(firm("Smith Ltd"), "Bob");
    Contact& ann = contact("Ann");
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    contacts().editThisContact(bob);
    contacts().editThisContact(ann, currentOrder().getID());
    person().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), &ann);
}

TEST_F(ContactManagerTest, aContactOpenedForAnOrderAndCancelledIsNotConnectedLater)
{
    begin();
    Contact& ann = contact("Ann");
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    contacts().editThisContact(ann, currentOrder().getID());
    form().cancel.trigger();
    contacts().editThisContact(ann);
    form().save.trigger();
    EXPECT_EQ(currentOrder().getContact(), nullptr);
}

TEST_F(ContactManagerTest, aCompanyMadeForAnOrderStaysConnectedToIt)
{
    begin();
    orders().create();
    orders().form.tab.edit(OrderForm::contactTab);
    orders().form.newContact.trigger();
    form().name.edit("Smith Ltd");
    form().makeCompany.trigger();
    company().save.trigger();
    ASSERT_EQ(contacts().getCount(), 1);
    EXPECT_EQ(currentOrder().getContact(), &contacts().at(0));
    EXPECT_EQ(currentOrder().getNewCustomer(), 1);
}

// The three editors

TEST_F(ContactManagerTest, eachKindOpensInItsOwnEditor)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& ann = personOf(smiths, "Ann");
    Contact& bob = contact("Bob");
    contacts().editThisContact(smiths);
    EXPECT_TRUE(company().isOpen());
    EXPECT_FALSE(person().isOpen() || form().isOpen());
    contacts().editThisContact(ann);
    EXPECT_TRUE(person().isOpen());
    EXPECT_FALSE(form().isOpen());
    contacts().editThisContact(bob);
    EXPECT_TRUE(form().isOpen());
}

TEST_F(ContactManagerTest, makingACompanySavesTheContactAndOpensItAsOne)
{
    begin();
    contacts().create();
    form().name.edit("Smith Ltd");
    form().makeCompany.trigger();
    ASSERT_EQ(contacts().getCount(), 1);
    EXPECT_TRUE(contacts().at(0).isCompany());
    EXPECT_EQ(contacts().at(0).getName(), "Smith Ltd");
    EXPECT_FALSE(form().isOpen());
    EXPECT_TRUE(company().isOpen());
    EXPECT_EQ(company().name.text(), "Smith Ltd");
}

TEST_F(ContactManagerTest, aCompanysPeopleAndWebsiteStandInItsEditor)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    personOf(smiths, "Ann");
    personOf(smiths, "Bob");
    personOf(firm("Other"), "Eve");
    contacts().editThisContact(smiths);
    EXPECT_EQ(company().people.text(), "Ann\nBob");
    company().website.edit("http://smith");
    choose(company().type, "Supplier");
    company().save.trigger();
    EXPECT_EQ(smiths.getWebsite(), "http://smith");
    EXPECT_EQ(smiths.getType(), "Supplier");
    EXPECT_TRUE(smiths.isCompany());
}

TEST_F(ContactManagerTest, linkingToACompanyOffersAllCompaniesByName)
{
    begin();
    firm("Smith Ltd");
    const Contact& jones = firm("Jones Ltd");
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().linkToCompany.trigger();
    EXPECT_TRUE(ann.isCompanyContact());
    EXPECT_FALSE(form().isOpen());
    EXPECT_TRUE(person().isOpen());
    EXPECT_EQ(person().company.titles(), QStringList({"Smith Ltd", "Jones Ltd"}));
    choose(person().company, "Jones Ltd");
    person().jobTitle.edit("Buyer");
    person().extension.edit("12");
    person().save.trigger();
    EXPECT_EQ(ann.getCompany(), jones.getID());
    EXPECT_EQ(ann.getJobTitle(), "Buyer");
    EXPECT_EQ(ann.getExtension(), "12");
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_FALSE(person().isOpen());
}

TEST_F(ContactManagerTest, aPersonWithoutACompanyBecomesAnIndividualAfterAWarning)
{
    begin();
    firm("Smith Ltd");
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().linkToCompany.trigger();
    alerts.answer("OK");
    person().name.edit("Ann Lee");
    person().save.trigger();
    EXPECT_EQ(lastAlert().title, "Saving Company Contact");
    EXPECT_EQ(lastAlert().text,
        "The contact has no company selected, therefore it will be saved without a link to a company. To link it to a "
        "company, open it up once more and click the 'Link to Company' button");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    EXPECT_EQ(ann.getKind(), "Individual");
    EXPECT_EQ(ann.getName(), "Ann Lee");
}

TEST_F(ContactManagerTest, leavingTheChoiceOfACompanyLeavesAnIndividualInTheList)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().linkToCompany.trigger();
    person().cancel.trigger();
    EXPECT_EQ(ann.getKind(), "Individual");
    EXPECT_EQ(contacts().countVisibleCompanies(), 2);
    EXPECT_TRUE(alerts.asked().empty());

    Contact& bob = personOf(smiths, "Bob");
    contacts().editThisContact(bob);
    person().cancel.trigger();
    EXPECT_TRUE(bob.isCompanyContact());
}

TEST_F(ContactManagerTest, aCompanyThatWasDeletedIsNotOfferedAndItsPersonIsWarnedAbout)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& bob = personOf(smiths, "Bob");
    contacts().deleteContact(smiths);
    contacts().editThisContact(bob);
    EXPECT_TRUE(person().company.titles().isEmpty());
    EXPECT_EQ(person().company.title(), "");
    alerts.answer("OK");
    person().save.trigger();
    EXPECT_EQ(lastAlert().title, "Saving Company Contact");
    EXPECT_EQ(bob.getKind(), "Individual");
}

TEST_F(ContactManagerTest, thePersonsEditorLeavesTypeAndWebsiteAlone)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& ann = personOf(smiths, "Ann");
    ann.setType("Supplier");
    ann.setWebsite("http://ann");
    contacts().editThisContact(ann);
    person().save.trigger();
    EXPECT_EQ(ann.getType(), "Supplier");
    EXPECT_EQ(ann.getWebsite(), "http://ann");
    EXPECT_EQ(ann.getCompany(), smiths.getID());
}

TEST_F(ContactManagerTest, aCompanyOfTheSameNameAsAPersonIsFound)
{
    begin();
    contact("Smith");
    const Contact& smith = firm("Smith");
    Contact& ann = contact("Ann");
    contacts().editThisContact(ann);
    form().linkToCompany.trigger();
    choose(person().company, "Smith");
    person().save.trigger();
    EXPECT_EQ(ann.getCompany(), smith.getID());
}

// Look-ups

TEST_F(ContactManagerTest, contactsAreFoundByIdNameAndLikeness)
{
    begin();
    Contact& ann = contact("Ann Lee");
    contact("Ann Lee");
    ann.setAdd1("1 High St");
    EXPECT_EQ(contacts().getContactbyId(ann.getID()), &ann);
    EXPECT_EQ(contacts().getContactbyId(99), nullptr);
    EXPECT_EQ(contacts().getContactbyName("Ann Lee"), &ann);
    EXPECT_EQ(contacts().getContactbyName("ann lee"), nullptr);
    Contact like;
    like.setName("ANN LEE");
    like.setAdd1("1 HIGH ST");
    EXPECT_EQ(contacts().weHaveThisOneAlready(like), &ann);
    like.setAdd1("2");
    EXPECT_EQ(contacts().weHaveThisOneAlready(like), nullptr);
}

TEST_F(ContactManagerTest, topLevelSuppliersAndPeopleAreCountedFromNought)
{
    begin();
    Contact& ann = contact("Ann", "Supplier");
    Contact& smiths = firm("Smith Ltd");
    Contact& bob = personOf(smiths, "Bob");
    bob.setType("Supplier");
    EXPECT_EQ(contacts().countCompanies(), 2);
    EXPECT_EQ(contacts().getnthCompany(0), &ann);
    EXPECT_EQ(contacts().getnthCompany(1), &smiths);
    EXPECT_EQ(contacts().getnthCompany(2), nullptr);
    EXPECT_EQ(contacts().getnthCompany(-1), nullptr);
    EXPECT_EQ(contacts().countSuppliers(), 2);
    EXPECT_EQ(contacts().getnthSupplier(1), &bob);
    EXPECT_EQ(contacts().getnthSupplier(2), nullptr);
    EXPECT_EQ(contacts().countContactsforThisCompany(smiths.getID()), 1);
    EXPECT_EQ(contacts().getnthContact(0, smiths.getID()), &bob);
    EXPECT_EQ(contacts().getnthContact(1, smiths.getID()), nullptr);
    EXPECT_EQ(contacts().countContactsforThisCompany(ann.getID()), 0);
}

TEST_F(ContactManagerTest, changingAPersonsCompanyMovesThem)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& jones = firm("Jones Ltd");
    Contact& bob = personOf(smiths, "Bob");
    EXPECT_EQ(contacts().countContactsforThisCompany(smiths.getID()), 1);
    bob.setCompany(jones.getID());
    EXPECT_EQ(contacts().countContactsforThisCompany(smiths.getID()), 0);
    EXPECT_EQ(contacts().getnthContact(0, jones.getID()), &bob);
}

// The list of two levels

TEST_F(ContactManagerTest, peopleStandUnderTheirCompanyAndEverybodyElseOnTop)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& ann = contact("Ann");
    Contact& bob = personOf(smiths, "Bob");
    Contact& eve = personOf(smiths, "Eve");
    personOf(firm("gone"), "Stray").setCompany(999);
    EXPECT_EQ(contacts().countVisibleCompanies(), 3);
    EXPECT_THAT(contacts().topLevel(), testing::UnorderedElementsAre(&smiths, &ann, contacts().getContactbyName("gone")));
    EXPECT_EQ(contacts().contactsOfCompany(smiths.getID()), (std::vector<Contact*> {&bob, &eve}));

    ContactOutlineModel model(contacts());
    EXPECT_EQ(model.rowCount(), 3);
    int people = 0;
    for (int row = 0; row < model.rowCount(); ++row)
        people += model.rowCount(model.index(row, 0));
    EXPECT_EQ(people, 2);
}

TEST_F(ContactManagerTest, thenthVisibleOneFollowsTheSortingAndTheFilter)
{
    begin();
    contact("Cid");
    contact("Ann", "Supplier");
    contact("Bob");
    contacts().toggleSort("name");
    EXPECT_EQ(contacts().getnthVisibleCompany(0)->getName(), "Ann");
    EXPECT_EQ(contacts().getnthVisibleCompany(2)->getName(), "Cid");
    choose(contacts().listForm.filter, "Customer");
    EXPECT_EQ(contacts().countVisibleCompanies(), 2);
    EXPECT_EQ(contacts().getnthVisibleCompany(0)->getName(), "Bob");
    EXPECT_EQ(contacts().getnthVisibleCompany(2), nullptr);
}

// Filter

TEST_F(ContactManagerTest, theMenuOffersAllBothKindsAndTheUsersTypes)
{
    begin("<key>VendaroContactTypes</key><string>Press\nFriend</string>");
    EXPECT_EQ(contacts().listForm.filter.titles(), QStringList({"All", "Customer", "Supplier", "Press", "Friend"}));
    EXPECT_EQ(form().type.titles(), QStringList({"Customer", "Supplier", "Press", "Friend"}));
}

TEST_F(ContactManagerTest, aTypeShowsExactlyItsContacts)
{
    begin("<key>VendaroContactTypes</key><string>Press</string>");
    contact("Ann");
    contact("Bob", "Supplier");
    contact("Cid", "Press");
    contact("Dan", "press");
    choose(contacts().listForm.filter, "Press");
    EXPECT_THAT(names(), ElementsAre("Cid"));
    choose(contacts().listForm.filter, "Supplier");
    EXPECT_THAT(names(), ElementsAre("Bob"));
    choose(contacts().listForm.filter, "All");
    EXPECT_EQ(names().size(), 4u);
}

TEST_F(ContactManagerTest, everyWordMustStandInSomeField)
{
    begin();
    contact("Jane Smith").setCounty("London");
    contact("John Smith").setAdd2("Londonderry");
    contact("Jane Doe").setCounty("London");
    contacts().listForm.search.edit("smith  LONDON ");
    EXPECT_THAT(names(), UnorderedElementsAre("Jane Smith", "John Smith"));
    contacts().listForm.search.edit("smith london jane");
    EXPECT_THAT(names(), ElementsAre("Jane Smith"));
}

// From disk

TEST_F(ContactManagerTest, contactsComeBackWithTheirCompanies)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    personOf(smiths, "Bob").setJobTitle("Buyer");
    restart();
    ASSERT_EQ(contacts().getCount(), 2);
    const Contact& bob = contacts().at(1);
    EXPECT_TRUE(bob.isCompanyContact());
    EXPECT_EQ(bob.getCompany(), contacts().at(0).getID());
    EXPECT_EQ(bob.getJobTitle(), "Buyer");
}

} // namespace
