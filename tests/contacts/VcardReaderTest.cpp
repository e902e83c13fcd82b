// People from vCards: cards as address books write them, and cards that are damaged.
#include "contacts/VcardReader.h"

#include "contacts/AddressBookDetails.h"
#include "foundation/SafeFile.h"

#include <gtest/gtest.h>

namespace {

std::string sample(const char* name)
{
    const FileBytes file = readWholeFile(std::string(TEST_DATA_DIR "/data/vcard/") + name + ".vcf");
    EXPECT_EQ(file.trouble, ReadTrouble::none) << name;
    return std::string(std::string_view(file.bytes));
}

Person onlyPerson(std::string_view bytes)
{
    VcardPeople read = readVcards(bytes);
    EXPECT_EQ(read.people.size(), 1u);
    for (const VcardTrouble& trouble : read.troubles)
        ADD_FAILURE() << trouble.line << ": " << trouble.sentence.toStdString();
    return read.people.empty() ? Person() : read.people.front();
}

Person personIn(const std::string& lines)
{
    return onlyPerson("BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "\r\nEND:VCARD\r\n");
}

/// The contact made of the one person in the file.
void expectContact(const char* file, std::initializer_list<std::pair<const char*, const char*>> fields)
{
    Contact contact;
    setContactDetailsFromAB(contact, onlyPerson(sample(file)));
    for (const auto& [name, value] : fields)
        EXPECT_EQ(contact.getFieldByName(name), value) << name;
}

// Cards as they are

TEST(VcardReaderTest, aPersonOfADesktopsAddressBook)
{
    expectContact("desktop_person",
        {{"name", "Ada Quill"}, {"add1", "12 Mill Lane"}, {"add2", "Hexworth"}, {"add3", ""}, {"county", "Northshire"},
            {"postcode", "HX1 2AB"}, {"country", "United Kingdom"}, {"mobile", "+44 7700 900001"},
            {"phone", "01632 960001 / 01632 960002 / 01632 960003 / 01632 960004"}, {"email", "ada@example.com; ada.home@example.org"}});
    const Person ada = onlyPerson(sample("desktop_person"));
    EXPECT_EQ(ada.uniqueId, "6B29A774-D124-4822-B8D0-2780EC117F60:ABPerson");
    ASSERT_EQ(ada.addresses.size(), 2u);
    EXPECT_EQ(ada.addresses[1].street, "Unit 3, The Old Dairy\nStation Road\nEastside");
    ASSERT_EQ(ada.phones.size(), 5u);
    EXPECT_EQ(ada.phones[0].label, "mobile");
    EXPECT_EQ(ada.phones[2].label, "work fax");
    EXPECT_EQ(ada.phones[4].label, "Workshop");
}

TEST(VcardReaderTest, aCompanyHasNoFirstName)
{
    const Person tarn = onlyPerson(sample("desktop_company"));
    EXPECT_EQ(tarn.firstName, "");
    EXPECT_EQ(tarn.lastName, "Tarn & Sons Ltd");
    EXPECT_EQ(tarn.uniqueId, "11111111-2222-3333-4444-555555555555:ABPerson");
}

TEST(VcardReaderTest, aWholeAddressInTheStreet)
{
    expectContact("webmail_street_only",
        {{"name", "Greg Dart"}, {"add1", "123 Home St"}, {"add2", "Home City, HM 12345"}, {"postcode", ""}, {"mobile", "555 010 1111"},
            {"phone", "555 010 2222"}, {"email", "greg@example.com"}});
}

TEST(VcardReaderTest, anOlderCardOfAnOffice)
{
    expectContact("office_21_qp",
        {{"name", "Zoë Müller"}, {"add1", "Lange Straße 5"}, {"add2", "Beispielstadt"}, {"postcode", "12345"}, {"country", "Deutschland"},
            {"mobile", "+49 170 5550102"}, {"phone", "+49 (30) 5550101 / +49 (30) 5550103"}, {"email", "zoe@example.com"}});
}

TEST(VcardReaderTest, aNewerCardWithNumbersAsLinks)
{
    expectContact("v4",
        {{"name", "Simon Four"}, {"add1", "Suite D2-630, 2875 Laurier"}, {"add2", "Quebec"}, {"county", "QC"}, {"postcode", "G1V 2M2"},
            {"country", "Canada"}, {"mobile", "+1-418-555-0101"}, {"phone", "+1-418-555-0154 ext. 102"}, {"email", "simon@example.com"}});
    EXPECT_EQ(onlyPerson(sample("v4")).uniqueId, "urn:uuid:4fbe8971-0bc3-424c-9c26-36c3e1eff6b1:ABPerson");
}

TEST(VcardReaderTest, linesThatEndTwice)
{
    expectContact("double_cr", {{"name", "Jon Doe"}, {"mobile", "555-0100"}, {"phone", ""}});
}

TEST(VcardReaderTest, streetsOfSeveralLines)
{
    expectContact("street_five_lines",
        {{"add1", "Flat 2"}, {"add2", "Rose Court"}, {"add3", "12 Mill Lane"}, {"postcode", "HX1 2AB"}, {"country", "United Kingdom"}});
    expectContact("street_two_lines_and_city", {{"add1", "Flat 2"}, {"add2", "Hexworth"}, {"postcode", "HX1 2AB"}});
}

// Names

TEST(VcardReaderTest, theSurnameStandsFirst)
{
    const Person person = personIn("N:van der Berg;Anna Maria;Additional;Dr.;MSc");
    EXPECT_EQ(person.firstName, "Anna Maria");
    EXPECT_EQ(person.lastName, "van der Berg");
}

TEST(VcardReaderTest, aCommaInANameIsNoEnd)
{
    EXPECT_EQ(personIn("N:Smith, Jr.;Bob").lastName, "Smith, Jr.");
}

TEST(VcardReaderTest, withoutANameTheFullNameIsTakenApart)
{
    const Person ada = personIn("FN:Ada Mary Quill\r\nORG:Quill Prints");
    EXPECT_EQ(ada.firstName, "Ada Mary");
    EXPECT_EQ(ada.lastName, "Quill");
    EXPECT_EQ(personIn("N:;;;;\r\nFN:Cher").lastName, "Cher");
}

TEST(VcardReaderTest, aCompanyIsNamedByItsOrganisation)
{
    for (const char* lines : {"ORG:Tarn & Sons;Sales", "FN:Tarn & Sons\r\nORG:Tarn & Sons", "KIND:org\r\nFN:Tarn & Sons",
             "X-ABShowAs:company\r\nFN:Other\r\nORG:Tarn & Sons"}) {
        const Person tarn = personIn(lines);
        EXPECT_EQ(tarn.lastName, "Tarn & Sons") << lines;
        EXPECT_EQ(tarn.firstName, "") << lines;
    }
}

// Numbers and addresses

TEST(VcardReaderTest, aLabelMayStandBeforeOrBehindItsNumberAndSayMobile)
{
    const Person person = personIn("N:A\r\nitem1.X-ABLabel:_$!<Mobile>!$_\r\nitem1.TEL:1\r\nITEM2.TEL;TYPE=home:2\r\n"
                                   "item2.X-ABLabel:Shop\r\nTEL;TYPE=iPhone:3\r\nitem4.TEL;TYPE=CELL:4\r\nitem4.X-ABLabel:Old");
    ASSERT_EQ(person.phones.size(), 4u);
    EXPECT_EQ(person.phones[0].label, "Mobile");
    EXPECT_EQ(person.phones[1].label, "Shop");
    EXPECT_EQ(person.phones[2].label, "mobile");
    EXPECT_EQ(person.phones[3].label, "mobile");
}

TEST(VcardReaderTest, emptyNumbersAddressesAndLettersAreNone)
{
    const Person person = personIn("N:A\r\nTEL:\r\nTEL:tel:\r\nEMAIL: \r\nADR:;;;;;;\r\nADR:;;;Town\r\nEMAIL:mailto:a@b.example");
    EXPECT_TRUE(person.phones.empty());
    EXPECT_EQ(person.emails, std::vector<std::string>({"a@b.example"}));
    ASSERT_EQ(person.addresses.size(), 1u);
    EXPECT_EQ(person.addresses[0].city, "Town");
}

TEST(VcardReaderTest, postBoxFlatAndStreetAreOneAddress)
{
    EXPECT_EQ(personIn("N:A\r\nADR:PO Box 1;Flat 2;3 High St;Town").addresses.at(0).street, "PO Box 1, Flat 2, 3 High St");
    EXPECT_EQ(personIn("N:A\r\nADR:;Flat 2\\nTown;3 High St;").addresses.at(0).street, "Flat 2\nTown\n3 High St");
}

TEST(VcardReaderTest, whoHasNoIdentifierHasNone)
{
    EXPECT_EQ(personIn("N:A").uniqueId, "");
}

// Several cards, and damaged ones

TEST(VcardReaderTest, peopleComeInTheOrderOfTheirCards)
{
    const VcardPeople read = readVcards("BEGIN:VCARD\nN:B\nEND:VCARD\n\nbegin:vcard\nn:A\nend:vcard\n");
    ASSERT_EQ(read.people.size(), 2u);
    EXPECT_EQ(read.people[0].lastName, "B");
    EXPECT_EQ(read.people[1].lastName, "A");
    EXPECT_TRUE(read.troubles.empty());
}

TEST(VcardReaderTest, aCardWithoutEndIsTakenAndTold)
{
    const VcardPeople read = readVcards("BEGIN:VCARD\nN:Cut;Short\nBEGIN:VCARD\nN:Whole\nEND:VCARD\nBEGIN:VCARD\nN:Last");
    ASSERT_EQ(read.people.size(), 3u);
    EXPECT_EQ(read.people[0].lastName, "Cut");
    EXPECT_EQ(read.people[2].lastName, "Last");
    ASSERT_EQ(read.troubles.size(), 2u);
    EXPECT_EQ(read.troubles[0].line, 1);
    EXPECT_EQ(read.troubles[0].sentence, "The card that begins here has no end; what stands in it was taken.");
    EXPECT_EQ(read.troubles[1].line, 6);
}

TEST(VcardReaderTest, theCardOfAnAgentIsNobodysOwn)
{
    const VcardPeople read = readVcards("BEGIN:VCARD\nN:Boss\nAGENT:\nBEGIN:VCARD\nN:Agent\nTEL:1\nEND:VCARD\nTEL:2\nEND:VCARD\n");
    ASSERT_EQ(read.people.size(), 1u);
    EXPECT_EQ(read.people[0].lastName, "Boss");
    ASSERT_EQ(read.people[0].phones.size(), 1u);
    EXPECT_EQ(read.people[0].phones[0].number, "2");
    EXPECT_TRUE(read.troubles.empty());
}

TEST(VcardReaderTest, aBrokenLineIsToldAndTheRestOfTheCardTaken)
{
    const VcardPeople read = readVcards("BEGIN:VCARD\nN:A\nthis is no line\nTEL:1\nEND:VCARD\n");
    ASSERT_EQ(read.people.size(), 1u);
    EXPECT_EQ(read.people[0].phones.size(), 1u);
    ASSERT_EQ(read.troubles.size(), 1u);
    EXPECT_EQ(read.troubles[0].line, 3);
}

TEST(VcardReaderTest, aLineTooLongIsToldWhereItWouldHaveCounted)
{
    const std::string longest(70'000, 'x');
    const VcardPeople read = readVcards("BEGIN:VCARD\nN:A\nNOTE:" + longest + "\nTEL:" + longest + "\nEND:VCARD\n");
    ASSERT_EQ(read.people.size(), 1u);
    ASSERT_EQ(read.troubles.size(), 1u);
    EXPECT_EQ(read.troubles[0].line, 4);
}

TEST(VcardReaderTest, aCardOfNobodyIsToldAndGivesNobody)
{
    const VcardPeople read = readVcards("BEGIN:VCARD\nVERSION:3.0\nNOTE:hello\nEND:VCARD\n");
    EXPECT_TRUE(read.people.empty());
    ASSERT_EQ(read.troubles.size(), 1u);
    EXPECT_EQ(read.troubles[0].sentence, "The card that begins here holds nobody.");
}

TEST(VcardReaderTest, ofManyTroublesTheFirstAreToldAndTheOthersCounted)
{
    std::string cards = "BEGIN:VCARD\nN:A\n";
    for (std::size_t n = 0; n < mostVcardTroubles + 7; ++n)
        cards += "rubbish\n";
    const VcardPeople read = readVcards(cards + "END:VCARD\n");
    ASSERT_EQ(read.troubles.size(), mostVcardTroubles);
    EXPECT_EQ(read.troubles.front().line, 3);
    EXPECT_EQ(read.furtherTroubles, 7u);
}

TEST(VcardReaderTest, aCardThatIsLongerThanAnybodysIsTakenSoFarAndToldOnce)
{
    std::string card = "BEGIN:VCARD\n";
    for (int n = 0; n < longestVcard; ++n)
        card += "TEL:1\nNOTE:not counted\n";
    EXPECT_TRUE(readVcards(card + "END:VCARD\n").troubles.empty());
    const VcardPeople read = readVcards(card + "TEL:2\nN:Late\nEND:VCARD\nBEGIN:VCARD\nN:Next\nEND:VCARD\n");
    ASSERT_EQ(read.people.size(), 2u);
    EXPECT_EQ(read.people[0].phones.size(), static_cast<std::size_t>(longestVcard));
    EXPECT_EQ(read.people[0].lastName, "");
    EXPECT_EQ(read.people[1].lastName, "Next");
    ASSERT_EQ(read.troubles.size(), 1u);
    EXPECT_EQ(read.troubles[0].line, 2 * longestVcard + 2);
    EXPECT_EQ(read.troubles[0].sentence, "From here on the card is longer than anybody's, and nothing more of it was taken.");
}

TEST(VcardReaderTest, readingStopsWhenItIsAskedTo)
{
    std::string cards;
    for (int n = 0; n < 4000; ++n)
        cards += "BEGIN:VCARD\nN:A\nEND:VCARD\n";
    std::vector<double> shares;
    const auto untilHalf = [&](double share) {
        shares.push_back(share);
        return share < 0.5;
    };
    const VcardPeople read = readVcards(cards, untilHalf);
    EXPECT_TRUE(read.wasStopped);
    EXPECT_EQ(read.people.size(), 2000u) << "after six times a thousand lines";
    EXPECT_EQ(shares.size(), 6u);
    EXPECT_FALSE(readVcards(cards).wasStopped);
}

TEST(VcardReaderTest, whatStandsOutsideOfCardsIsPassedOver)
{
    const VcardPeople read = readVcards("hello\nEND:VCARD\nTEL:1\n");
    EXPECT_TRUE(read.people.empty());
    EXPECT_TRUE(read.troubles.empty());
    EXPECT_FALSE(read.hasCards);
}

TEST(VcardReaderTest, everyBeginningOfACardIsReadWithoutHarm)
{
    for (const char* name : {"desktop_person", "office_21_qp", "v4", "double_cr"}) {
        const std::string whole = sample(name);
        for (std::size_t length = 0; length <= whole.size(); ++length)
            EXPECT_LE(readVcards(std::string_view(whole).substr(0, length)).people.size(), 1u);
    }
}

} // namespace
