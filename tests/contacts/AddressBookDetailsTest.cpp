#include "contacts/AddressBookDetails.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<Contact> contactOf(const Person& person)
{
    auto contact = std::make_unique<Contact>();
    setContactDetailsFromAB(*contact, person);
    return contact;
}

std::unique_ptr<Contact> livingAt(Person::Address address)
{
    Person person;
    person.addresses.push_back(std::move(address));
    return contactOf(person);
}

/// add1, add2, add3, county, postcode, country.
std::string addressOf(const Contact& contact)
{
    std::string all;
    for (const char* field : {"add1", "add2", "add3", "county", "postcode", "country"})
        all += contact.getFieldByName(field) + '|';
    return all;
}

TEST(AddressBookDetailsTest, theNameIsFirstAndLastNameAndAMissingOneLeavesItsBlank)
{
    EXPECT_EQ(contactOf({"Ada", "Quill", {}, {}, {}, {}})->getName(), "Ada Quill");
    const auto smith = contactOf({"", "Smith", {}, {}, {}, {}});
    EXPECT_EQ(smith->getName(), " Smith");
    EXPECT_EQ(smith->getFirstname(), "Smith");
    EXPECT_EQ(smith->getSurname(), "Smith");
    const auto ada = contactOf({"Ada", "", {}, {}, {}, {}});
    EXPECT_EQ(ada->getName(), "Ada ");
    EXPECT_EQ(ada->getSurname(), "Ada");
    EXPECT_EQ(contactOf({})->getName(), " ");
}

TEST(AddressBookDetailsTest, aStreetOfOneLineIsTheFirstLine)
{
    EXPECT_EQ(addressOf(*livingAt({"1 High Street", "Anytown", "Shire", "AB1 2CD", "United Kingdom"})),
        "1 High Street|Anytown||Shire|AB1 2CD|United Kingdom|");
    EXPECT_EQ(addressOf(*livingAt({"1 High Street", "", "", "", ""})), "1 High Street||||||");
}

TEST(AddressBookDetailsTest, aStreetOfSeveralLinesFillsThreeLinesPostcodeAndCountry)
{
    EXPECT_EQ(addressOf(*livingAt({"Flat 2\nRose Court\n12 Mill Lane\nHX1 2AB\nUnited Kingdom", "", "", "", ""})),
        "Flat 2|Rose Court|12 Mill Lane||HX1 2AB|United Kingdom|");
    EXPECT_EQ(addressOf(*livingAt({"a\r\nb\rc\u2028d\ne\nf", "", "", "", ""})), "a|b|c||d|e|") << "a sixth line has no place";
    EXPECT_EQ(addressOf(*livingAt({"a\nb", "", "", "", ""})), "a|b|||||");
}

TEST(AddressBookDetailsTest, theTownReplacesASecondLineOfTheStreet)
{
    EXPECT_EQ(addressOf(*livingAt({"Flat 2\n12 Mill Lane", "Hexworth", "", "HX1 2AB", "United Kingdom"})),
        "Flat 2|Hexworth|||HX1 2AB|United Kingdom|");
    EXPECT_EQ(addressOf(*livingAt({"a\nb\nc\nd\ne", "Town", "", "ZIP", "Land"})), "a|Town|c||ZIP|Land|");
}

TEST(AddressBookDetailsTest, onlyTheFirstAddressCounts)
{
    Person person;
    person.addresses = {{"1 First", "", "", "", ""}, {"2 Second", "Town", "", "", ""}};
    EXPECT_EQ(addressOf(*contactOf(person)), "1 First||||||");
}

TEST(AddressBookDetailsTest, mobileNumbersAndAllOthersAreJoined)
{
    Person person;
    person.phones = {{"mobile", "07700 1"}, {"home", "01632 1"}, {"Mobile (old)", "07700 2"}, {"work fax", "01632 2"}, {"", "01632 3"}};
    const auto contact = contactOf(person);
    EXPECT_EQ(contact->getMobile(), "07700 1 / 07700 2");
    EXPECT_EQ(contact->getPhone(), "01632 1 / 01632 2 / 01632 3");
    EXPECT_EQ(contact->getFax(), "");
}

TEST(AddressBookDetailsTest, emailAddressesAreJoined)
{
    Person person;
    person.emails = {"a@x.example", "b@y.example"};
    EXPECT_EQ(contactOf(person)->getEmail(), "a@x.example; b@y.example");
}

TEST(AddressBookDetailsTest, anUpdateReplacesWhatTheBookKnowsAndLeavesTheRest)
{
    Contact contact;
    for (const char* field : {"name", "title", "ref", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email",
             "comments", "website", "fax"})
        contact.setFieldByName(field, "old");
    Person person {"Ada", "Quill", {}, {}, {}, {}};
    setContactDetailsFromAB(contact, person);
    EXPECT_EQ(addressOf(contact), "old|old|old|old|old|old|") << "the book has no address";
    EXPECT_EQ(contact.getPhone(), "");
    EXPECT_EQ(contact.getEmail(), "");
    person.addresses = {{"1 High Street", "", "", "", ""}};
    setContactDetailsFromAB(contact, person);
    EXPECT_EQ(addressOf(contact), "1 High Street||||||") << "no mixture of two addresses";
    for (const char* field : {"title", "ref", "comments", "website", "fax"})
        EXPECT_EQ(contact.getFieldByName(field), "old") << field;
}

TEST(AddressBookDetailsTest, peopleAreFoundByTheirIdentifier)
{
    std::vector<Person> people(3);
    people[1].uniqueId = people[2].uniqueId = "1:ABPerson";
    EXPECT_EQ(personWithId(people, "1:ABPerson"), &people[1]);
    EXPECT_EQ(personWithId(people, "1"), nullptr);
    EXPECT_EQ(personWithId(people, ""), nullptr) << "whoever has none is nobody's";
}

TEST(AddressBookDetailsTest, aReferenceNamesSomebodyInAnAddressBookByItsMark)
{
    EXPECT_TRUE(isAddressBookReference("6B29:ABPerson"));
    EXPECT_TRUE(isAddressBookReference(":ABPerson2"));
    EXPECT_FALSE(isAddressBookReference("C12"));
    EXPECT_FALSE(isAddressBookReference("6B29:abperson"));
    EXPECT_FALSE(isAddressBookReference(""));
}

} // namespace
