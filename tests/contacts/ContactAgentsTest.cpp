// Import from the address book, the e-mail list, and the agent that moves third address lines.
#include "support/AddressBookFile.h"
#include "support/Business.h"
#include "support/ListResets.h"

#include <gmock/gmock.h>

#include <QFile>

namespace {

using testing::ElementsAre;

class ContactAgentsTest : public Business {
protected:
    void haveAddressBook(const QByteArray& cards) { ::haveAddressBook(app(), home(), cards); }
    Contact& living(const char* name, const char* add3, const char* county)
    {
        Contact& made = contact(name);
        made.setAdd3(add3);
        made.setCounty(county);
        return made;
    }
    /// Somebody else has the database with Ann open.
    void beginReadOnly()
    {
        begin();
        living("Ann", "Kent", "");
        quit();
        Business::beginReadOnly();
        ASSERT_TRUE(app().session().isReadOnly());
        alerts.forget();
        alerts.answer("OK");
    }
};

// Import

TEST_F(ContactAgentsTest, everybodyInTheAddressBookBecomesAContactInItsOrder)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    contact("Ada Quill");
    haveAddressBook("BEGIN:VCARD\nN:Quill;Ada\nTEL;TYPE=CELL:07700 1\nUID:1\nEND:VCARD\nBEGIN:VCARD\nORG:Tarn Ltd\nEND:VCARD\n");
    alerts.answer("OK");
    contacts().importAllContactsFromAB();
    ASSERT_EQ(contacts().getCount(), 3) << "whoever is there already comes again";
    const Contact& ada = contacts().at(1);
    EXPECT_EQ(ada.getName(), "Ada Quill");
    EXPECT_EQ(ada.getMobile(), "07700 1");
    EXPECT_EQ(ada.getRef(), "");
    EXPECT_EQ(ada.getID(), 2);
    EXPECT_EQ(ada.getKind(), "Individual");
    EXPECT_EQ(ada.getType(), "Customer");
    EXPECT_EQ(contacts().at(2).getName(), " Tarn Ltd");
    EXPECT_EQ(lastAlert().title, "Contacts imported");
    EXPECT_EQ(lastAlert().text, "2 contacts imported");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK"}));
    EXPECT_TRUE(readFile("contacts.xml").contains("07700 1"));
}

TEST_F(ContactAgentsTest, theListIsFilteredAgainAfterAnImport)
{
    begin();
    contact("Bert Hill");
    contacts().listForm.search.edit("quill");
    haveAddressBook("BEGIN:VCARD\nN:Quill;Ada\nEND:VCARD\nBEGIN:VCARD\nN:Hill;Bert\nEND:VCARD\n");
    alerts.answer("OK");
    contacts().importAllContactsFromAB();
    EXPECT_THAT(shown(contacts(), "name"), ElementsAre("Ada Quill"));
}

TEST_F(ContactAgentsTest, manyPeopleAreShownAtOnceWhereNewOnesStandInTheList)
{
    begin();
    contact("Ann");
    contacts().toggleSort("name");
    constexpr int many = 5000;
    QByteArray cards;
    for (int n = 0; n < many; ++n)
        cards += "BEGIN:VCARD\nN:P" + QByteArray::number(n) + "\nEND:VCARD\n";
    haveAddressBook(cards);
    ListResets resets;
    contacts().addObserver(resets);
    alerts.answer("OK");
    contacts().importAllContactsFromAB();
    contacts().removeObserver(resets);
    EXPECT_EQ(contacts().getCount(), many + 1);
    EXPECT_EQ(resets.count, 1);
    // Each stands before those that were there.
    EXPECT_EQ(contacts().getnthVisibleItem(0)->getName(), " P4999");
    EXPECT_EQ(contacts().getnthVisibleItem(many - 1)->getName(), " P0");
    EXPECT_EQ(contacts().getnthVisibleItem(many)->getName(), "Ann");
}

TEST_F(ContactAgentsTest, anImportThatIsStoppedTakesNobodyIn)
{
    begin();
    haveAddressBook(QByteArray("BEGIN:VCARD\nN:Quill;Ada\nEND:VCARD\n").repeated(2000));
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, &app(), [&](const QString& line) { status = line; });
    longWork.stops = true;
    contacts().importAllContactsFromAB();
    EXPECT_EQ(contacts().getCount(), 0);
    EXPECT_EQ(status, "Stopped. Nobody was imported.");
    EXPECT_EQ(longWork.titles, QStringList({"Reading the Address Book"}));
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(ContactAgentsTest, anEmptyAddressBookImportsNothingAndAsksNothing)
{
    begin();
    contacts().importAllContactsFromAB();
    haveAddressBook("");
    contacts().importAllContactsFromAB();
    EXPECT_EQ(contacts().getCount(), 0);
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(ContactAgentsTest, whatCannotBeReadIsToldAndTheOthersAreImported)
{
    begin();
    QStringList sentences;
    QObject::connect(&app().session(), &DatabaseSession::damageFound, &app(), [&](const QStringList& damage) { sentences += damage; });
    haveAddressBook("BEGIN:VCARD\nN:Quill;Ada\nrubbish\nEND:VCARD\n");
    alerts.answer("OK");
    contacts().importAllContactsFromAB();
    EXPECT_EQ(contacts().getCount(), 1);
    ASSERT_EQ(sentences.size(), 1);
    EXPECT_TRUE(sentences[0].contains("book.vcf, line 3: ")) << sentences[0].toStdString();
}

TEST_F(ContactAgentsTest, aReadOnlyDatabaseTakesNobodyIn)
{
    beginReadOnly();
    haveAddressBook("BEGIN:VCARD\nN:Quill;Ada\nEND:VCARD\n");
    contacts().importAllContactsFromAB();
    EXPECT_EQ(contacts().getCount(), 1);
    EXPECT_THAT(alerts.texts(), ElementsAre("Database is in read-only mode."));
    EXPECT_EQ(longWork.titles, QStringList()) << "nobody waits for what is refused";
}

// The e-mail list

TEST_F(ContactAgentsTest, theSelectedContactsGoIntoTheListAsTheyAreShown)
{
    begin();
    contact("Cleo Rivers");
    Contact& tarn = firm("Tarn Ltd");
    personOf(tarn, "Ada Quill").setEmail("ada@tarn.example");
    contact("Bert Hill");
    contacts().filter();
    contacts().setSelectedRecords({&contacts().at(2), &contacts().at(1), &contacts().at(0)});
    const QString path = home() + "/list.csv";
    panels.choose(path);
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, &app(), [&](const QString& line) { status = line; });
    contacts().generateEmailList();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    // Newest first: the company with its person below it, then Cleo.
    EXPECT_EQ(file.readAll(),
        "\"email\",\"firstname\",\"surname\",\"title\"\n"
        "\"\",\"Tarn Ltd\",\"Tarn Ltd\",\"\"\n"
        "\"ada@tarn.example\",\"Ada\",\"Quill\",\"\"\n"
        "\"\",\"Cleo\",\"Rivers\",\"\"\n");
    EXPECT_EQ(status, "Exported to list.csv");
}

TEST_F(ContactAgentsTest, withoutASelectionNoListIsMade)
{
    begin();
    contact("Ada");
    contacts().generateEmailList();
    EXPECT_TRUE(panels.savePanels.empty());
    EXPECT_TRUE(contacts().getSelectedContactsForExport().empty());
}

// Third address lines

TEST_F(ContactAgentsTest, thirdLinesGoIntoEmptyCounties)
{
    begin();
    living("Ann", "Kent", "");
    living("Bob", "East", "Essex");
    living("Cal", "", "");
    Contact& dan = living("Dan", "Devon", "");
    dan.setVisible(false);
    alerts.answer("OK");
    contacts().moveAdd3ToCounty();
    const auto pair = [&](int n) { return std::string(contacts().at(n).getAdd3()) + "|" + std::string(contacts().at(n).getCounty()); };
    EXPECT_EQ(pair(0), "|Kent");
    EXPECT_EQ(pair(1), "East|Essex");
    EXPECT_EQ(pair(2), "|");
    EXPECT_EQ(pair(3), "|Devon") << "whether the list shows it or not";
    EXPECT_EQ(lastAlert().title, "Agent finished");
    EXPECT_EQ(lastAlert().text, "2 Contacts updated");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK"}));
    EXPECT_TRUE(readFile("contacts.xml").contains("<string>Devon</string>"));
}

TEST_F(ContactAgentsTest, oneContactIsCountedInTheSingular)
{
    begin();
    living("Ann", "Kent", "");
    for (const char* text : {"1 Contact updated", "0 Contacts updated"}) {
        alerts.answer("OK");
        contacts().moveAdd3ToCounty();
        EXPECT_EQ(lastAlert().text, text);
    }
}

TEST_F(ContactAgentsTest, aReadOnlyDatabaseKeepsItsLines)
{
    beginReadOnly();
    contacts().moveAdd3ToCounty();
    EXPECT_EQ(contacts().at(0).getAdd3(), "Kent");
    EXPECT_THAT(alerts.texts(), ElementsAre("Database is in read-only mode."));
}

TEST_F(ContactAgentsTest, anOpenEditorDoesNotPutTheLineBack)
{
    begin();
    Contact& ann = living("Ann", "Kent", "");
    contacts().editThisContact(ann);
    alerts.answer("OK");
    contacts().moveAdd3ToCounty();
    EXPECT_EQ(contacts().form.county.text(), "Kent");
    EXPECT_EQ(contacts().form.add3.text(), "");
    contacts().form.save.trigger();
    EXPECT_EQ(ann.getCounty(), "Kent");
    EXPECT_EQ(ann.getAdd3(), "");
}

} // namespace
