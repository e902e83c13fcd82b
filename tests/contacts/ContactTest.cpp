#include "contacts/Contact.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* plainNames[] = {"add1", "add2", "add3", "comments", "country", "county", "email", "extension", "fax", "jobTitle",
    "kind", "mobile", "name", "phone", "postcode", "salutation", "ref", "title", "type", "website"};

// A new contact

TEST(ContactTest, aNewContactIsAnIndividualCustomer)
{
    const Contact contact;
    EXPECT_EQ(contact.getFieldByName("kind"), "Individual");
    EXPECT_EQ(contact.getFieldByName("type"), "Customer");
    EXPECT_EQ(contact.getFieldByName("company"), "0");
    EXPECT_FALSE(contact.isCompany());
    EXPECT_FALSE(contact.isCompanyContact());
}

TEST(ContactTest, aNewContactsOtherTextsAreEmpty)
{
    const Contact contact;
    for (const std::string name : plainNames) {
        if (name != "kind" && name != "type") {
            EXPECT_EQ(contact.getFieldByName(name), "") << name;
        }
    }
    for (const char* name : {"companyname", "firstname", "surname"})
        EXPECT_EQ(contact.getFieldByName(name), "") << name;
}

// By name

TEST(ContactTest, fieldsAreSetAndReadByTheirNames)
{
    Contact contact;
    for (const std::string name : plainNames) {
        EXPECT_TRUE(contact.setFieldByName(name, "my " + name)) << name;
        EXPECT_EQ(contact.getFieldByName(name), "my " + name);
    }
}

TEST(ContactTest, theCompanyIsTakenAsAnInteger)
{
    Contact contact;
    contact.setFieldByName("company", "42");
    EXPECT_EQ(contact.getCompany(), 42);
    EXPECT_EQ(contact.getFieldByName("company"), "42");
    contact.setFieldByName("company", "Smith Ltd");
    EXPECT_EQ(contact.getFieldByName("company"), "0");
}

TEST(ContactTest, theIdIsSetByNameButNotReadByIt)
{
    Contact contact;
    EXPECT_TRUE(contact.setFieldByName("id", "17"));
    EXPECT_EQ(contact.getID(), 17);
    EXPECT_EQ(contact.getFieldByName("id"), "");
}

TEST(ContactTest, theCompanysNameIsReadByNameButNotSetByIt)
{
    Contact contact;
    contact.setCompanyName("Smith Ltd");
    EXPECT_EQ(contact.getFieldByName("companyname"), "Smith Ltd");
    EXPECT_FALSE(contact.setFieldByName("companyname", "Jones"));
    EXPECT_EQ(contact.getFieldByName("companyname"), "Smith Ltd");
}

TEST(ContactTest, namesAreMatchedExactly)
{
    Contact contact;
    contact.setName("Ann");
    contact.setJobTitle("Potter");
    for (const char* name : {"Name", "NAME", "jobtitle", "companyName", "firstName", "", "unknown"})
        EXPECT_EQ(contact.getFieldByName(name), "") << name;
    for (const char* name : {"jobtitle", "address", "firstname", "surname", "Name"})
        EXPECT_FALSE(contact.setFieldByName(name, "x")) << name;
    EXPECT_EQ(contact.getName(), "Ann");
    EXPECT_EQ(contact.getJobTitle(), "Potter");
}

// Names of people

struct NameParts {
    const char* name;
    const char* first;
    const char* last;
};

TEST(ContactTest, namesOfPeopleAreTakenApartAtSingleBlanks)
{
    constexpr NameParts cases[] = {{"Ann Lee", "Ann", "Lee"}, {"Ann Mary Lee", "Ann", "Lee"}, {"Ann", "Ann", "Ann"},
        {" Smith", "Smith", "Smith"}, {"Ann ", "Ann", "Ann"}, {"", "", ""}, {" ", "", ""}, {"  Smith", "", "Smith"}, {"Ann  ", "Ann", ""},
        {"Ann  Lee", "Ann", "Lee"}, {"Ann\tLee", "Ann\tLee", "Ann\tLee"}, {"\xc3\x89milie Zola", "\xc3\x89milie", "Zola"}};
    for (const NameParts& parts : cases) {
        Contact contact;
        contact.setName(parts.name);
        EXPECT_EQ(contact.getFirstname(), parts.first) << '"' << parts.name << '"';
        EXPECT_EQ(contact.getSurname(), parts.last) << '"' << parts.name << '"';
        EXPECT_EQ(contact.getFieldByName("firstname"), parts.first);
        EXPECT_EQ(contact.getFieldByName("surname"), parts.last);
    }
}

TEST(ContactTest, aCompanyHasItsWholeNameAsFirstNameAndSurname)
{
    Contact contact;
    contact.setName("Smith and Sons Ltd");
    contact.makeCompany();
    EXPECT_EQ(contact.getKind(), "Company");
    EXPECT_EQ(contact.getFirstname(), "Smith and Sons Ltd");
    EXPECT_EQ(contact.getSurname(), "Smith and Sons Ltd");
}

TEST(ContactTest, aPersonOfACompanyHasTheNameOfAPerson)
{
    Contact contact;
    contact.setName("Ann Lee");
    contact.setKind("Company Contact");
    EXPECT_TRUE(contact.isCompanyContact());
    EXPECT_EQ(contact.getSurname(), "Lee");
}

// Addresses

TEST(ContactTest, theAddressIsFourPartsBetweenBlanks)
{
    Contact contact;
    contact.setAdd1("1 High Street");
    contact.setAdd2("Oldham");
    contact.setAdd3("Lancs");
    contact.setPostcode("OL1 1AA");
    contact.setCounty("not in it");
    EXPECT_EQ(contact.getAddress(), "1 High Street Oldham Lancs OL1 1AA");
    EXPECT_EQ(contact.getFieldByName("address"), "1 High Street Oldham Lancs OL1 1AA");
}

TEST(ContactTest, emptyPartsOfTheAddressLeaveDoubleBlanks)
{
    Contact contact;
    EXPECT_EQ(contact.getAddress(), "   ");
    contact.setAdd1("1 High Street");
    contact.setPostcode("OL1 1AA");
    EXPECT_EQ(contact.getAddress(), "1 High Street   OL1 1AA");
}

TEST(ContactTest, theShortAddressIsTheFirstLineAndThePostcode)
{
    Contact contact;
    contact.setPostcode("AB1 2CD");
    EXPECT_EQ(contact.getShortAddress(), "AB1 2CD");
    contact.setAdd1("1 High Street");
    contact.setAdd2("Oldham");
    EXPECT_EQ(contact.getShortAddress(), "1 High Street ... AB1 2CD");
    contact.setPostcode("");
    EXPECT_EQ(contact.getShortAddress(), "1 High Street ... ");
}

// Comparing and searching

TEST(ContactTest, contactsAreTheSameByNameAndFirstLineWhateverTheCase)
{
    Contact a;
    Contact b;
    a.setName("Ann Lee");
    a.setAdd1("1 High St");
    a.setPostcode("AB1");
    b.setName("ANN lee");
    b.setAdd1("1 HIGH st");
    EXPECT_TRUE(a.isTheSameContactAs(b));
    b.setAdd1("2 High St");
    EXPECT_FALSE(a.isTheSameContactAs(b));
    b.setAdd1("1 High St");
    b.setName("Ann  Lee");
    EXPECT_FALSE(a.isTheSameContactAs(b));
}

TEST(ContactTest, searchingLooksIntoEveryPlainFieldWhateverTheCase)
{
    for (const char* name : plainNames) {
        Contact contact;
        contact.setFieldByName(name, "the Needle here");
        EXPECT_TRUE(contact.contains("nEEDLE")) << name;
        EXPECT_FALSE(contact.contains("needles")) << name;
    }
}

TEST(ContactTest, searchingDoesNotLookIntoTheCompanyOrAcrossFields)
{
    Contact contact;
    contact.setCompanyName("needle");
    contact.setCompany(4711);
    contact.setAdd1("needle-");
    contact.setAdd2("work");
    EXPECT_FALSE(contact.contains("4711"));
    EXPECT_FALSE(contact.contains("needle-work"));
    contact.setAdd1("");
    EXPECT_FALSE(contact.contains("needle"));
}

TEST(ContactTest, searchingKnowsLettersBeyondAscii)
{
    Contact contact;
    contact.setName("J\xc3\xb6rg \xc3\x89mile");
    EXPECT_TRUE(contact.contains("J\xc3\x96RG"));
    EXPECT_TRUE(contact.contains("\xc3\xa9mile"));
}

} // namespace
