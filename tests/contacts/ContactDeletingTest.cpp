// Contacts that are deleted from the list, and come back.
#include "support/Business.h"
#include "support/ListResets.h"

#include <gtest/gtest.h>

namespace {

class ContactDeletingTest : public Business {
protected:
    IndividualForm& form() { return contacts().form; }
    CompanyContactForm& person() { return contacts().companyContactEditor.form; }
    std::vector<std::string> names() { return shown(contacts(), "name"); }
    static void choose(ChoiceField& field, const char* title) { field.edit(static_cast<int>(field.titles().indexOf(title))); }
};

TEST_F(ContactDeletingTest, deletingAsksInTheseWords)
{
    begin();
    contact("Ann");
    contacts().deleteKey();
    EXPECT_TRUE(alerts.asked().empty());
    contacts().selectRow(0);
    alerts.answer("Cancel");
    contacts().deleteKey();
    EXPECT_EQ(lastAlert().title, "Delete contact");
    EXPECT_EQ(lastAlert().text, "Do you want to delete the selected item from the database?");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK", "Cancel"}));
    EXPECT_EQ(contacts().getCount(), 1);
}

TEST_F(ContactDeletingTest, manyContactsAreTakenOffTheListAtOnceAndComeBackInTheirOrder)
{
    begin();
    for (int i = 0; i < 500; ++i)
        contact(("Person " + std::to_string(i)).c_str());
    const std::vector<dataObject*> inOrder = contacts().records();
    contacts().setSelectedRecords(inOrder);
    alerts.answer("OK");
    ListResets resets;
    contacts().addObserver(resets);

    contacts().deleteKey();

    contacts().removeObserver(resets);
    EXPECT_EQ(contacts().getCount(), 0);
    EXPECT_EQ(resets.count, 1);
    EXPECT_EQ(contacts().deleteBuffer().size(), 500u);
    contacts().undo();
    // The list shows the newest first, and was taken away from its last row on.
    EXPECT_EQ(contacts().records(), inOrder);
}

TEST_F(ContactDeletingTest, whatWasDeletedStaysAwayAndWhatUndoBroughtBackStaysThere)
{
    begin();
    contact("Ann");
    contact("Bob");
    restart();
    contacts().setSelectedRecords({contacts().getContactbyName("Ann")});
    alerts.answer("OK");
    contacts().deleteKey();
    restart();
    EXPECT_EQ(names(), std::vector<std::string> {"Bob"});
    contacts().selectRow(0);
    alerts.answer("OK");
    contacts().deleteKey();
    contacts().undo();
    restart();
    EXPECT_EQ(names(), std::vector<std::string> {"Bob"});
}

TEST_F(ContactDeletingTest, aDeletedCompanysPeopleStayUnderNobody)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& bob = personOf(smiths, "Bob");
    contacts().setSelectedRecords({&smiths});
    alerts.answer("OK");
    contacts().deleteKey();
    EXPECT_EQ(contacts().records(), std::vector<dataObject*> {&bob});
    EXPECT_EQ(bob.getCompany(), smiths.getID());
    EXPECT_TRUE(bob.isCompanyContact());
    EXPECT_TRUE(contacts().topLevel().empty());
    contacts().undo();
    EXPECT_TRUE(contacts().holds(smiths));
}

TEST_F(ContactDeletingTest, contactsThatUndoBroughtBackKeepTheirIdsToThemselves)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    contact("Ann");
    contact("Bob");
    contacts().setSelectedRecords({&contact("Cid"), &contact("Dot")});
    alerts.answer("OK");
    contacts().deleteKey();
    contacts().undo();
    ASSERT_EQ(contacts().getCount(), 4);

    contacts().create();
    form().name.edit("Eve");
    form().save.trigger();

    EXPECT_EQ(contacts().at(4).getName(), "Eve");
    EXPECT_EQ(contacts().at(4).getID(), 5);
    EXPECT_EQ(contacts().at(4).getRef(), "K5");
}

TEST_F(ContactDeletingTest, theRowBeforeTheFirstDeletedOneIsSelected)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& cid = contact("Cid");
    Contact& smiths = firm("Smith Ltd");
    Contact& bob = personOf(smiths, "Bob");
    Contact& eve = personOf(smiths, "Eve");
    contacts().toggleSort("name");
    const auto deleteAndLook = [&](std::vector<dataObject*> chosen) {
        contacts().setSelectedRecords(std::move(chosen));
        alerts.answer("OK");
        contacts().deleteKey();
        return contacts().selectedRecords();
    };
    // Shown are Ann, Cid, Smith Ltd with Bob and Eve below; Bob's place among all names is before Cid's.
    EXPECT_EQ(deleteAndLook({&cid}), std::vector<dataObject*> {&ann});
    EXPECT_EQ(deleteAndLook({&eve}), std::vector<dataObject*> {&bob});
    EXPECT_EQ(deleteAndLook({&bob}), std::vector<dataObject*> {&smiths});
    EXPECT_EQ(deleteAndLook({&ann}), std::vector<dataObject*> {&smiths});
    EXPECT_TRUE(deleteAndLook({&smiths}).empty());
}

TEST_F(ContactDeletingTest, afterTheFirstRowTheNewFirstRowIsSelected)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& smiths = firm("Smith Ltd");
    personOf(smiths, "Abe");
    contacts().toggleSort("name");
    contacts().setSelectedRecords({&ann});
    alerts.answer("OK");
    contacts().deleteKey();
    EXPECT_EQ(contacts().selectedRecords(), std::vector<dataObject*> {&smiths});
}

TEST_F(ContactDeletingTest, aPersonWhoStandsUnderAFoundCompanyCanBeOpenedAndDeleted)
{
    begin();
    Contact& smiths = firm("Smith Ltd");
    Contact& bob = personOf(smiths, "Bob");
    contacts().listForm.search.edit("smith");
    contacts().setSelectedRecords({&bob});
    contacts().edit();
    EXPECT_TRUE(person().isOpen());
    EXPECT_EQ(person().name.text(), "Bob");
    alerts.answer("OK");
    contacts().deleteKey();
    EXPECT_FALSE(contacts().holds(bob));
    EXPECT_FALSE(person().isOpen());
}

TEST_F(ContactDeletingTest, severalContactsComeBackTogether)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& bob = contact("Bob");
    contact("Cid");
    contacts().setSelectedRecords({&ann, &bob});
    alerts.answer("OK");
    contacts().deleteKey();
    EXPECT_EQ(contacts().getCount(), 1);
    contacts().undo();
    EXPECT_TRUE(contacts().holds(ann));
    EXPECT_TRUE(contacts().holds(bob));
}

TEST_F(ContactDeletingTest, aTypeThatIsNoLongerOfferedNoLongerFilters)
{
    begin("<key>VendaroContactTypes</key><string>Press</string>");
    contact("Ann");
    contact("Cid", "Press");
    choose(contacts().listForm.filter, "Press");
    EXPECT_EQ(names().size(), 1u);
    app().getPrefsController().form.contactTypes.edit("Friend");
    app().getPrefsController().OKButton();
    EXPECT_EQ(contacts().listForm.filter.title(), "All");
    EXPECT_EQ(names().size(), 2u);
}

} // namespace
