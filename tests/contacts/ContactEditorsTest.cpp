// Contact editors that are open beside each other, or asked for twice.
#include "support/Business.h"

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

TEST_F(ContactEditorsTest, TwoNewContactsGetTwoIdsWhenADeletionGaveTheFirstIdAway)
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

TEST_F(ContactEditorsTest, ANewCompanyGetsAnotherIdWhenItsOwnWentToAContact)
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

TEST_F(ContactEditorsTest, OpeningTheOpenContactAgainKeepsWhatWasTyped)
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

TEST_F(ContactEditorsTest, OpeningTheOpenCompanyOrPersonAgainKeepsWhatWasTyped)
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

TEST_F(ContactEditorsTest, AfterADeletionTheStatusLineSaysWhatUndoBringsBack)
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
