// What the buttons of the contact editors do to their fields.
#include "contacts/ContactCommands.h"

#include "contacts/AddressText.h"
#include "support/AddressBookFile.h"
#include "support/Business.h"

namespace {

class ContactCommandsTest : public Business {
protected:
    IndividualForm& form() { return contacts().form; }
    CompanyForm& company() { return contacts().companyEditor.form; }
    CompanyContactForm& person() { return contacts().companyContactEditor.form; }
    /// name, add1, add2, add3, county, postcode, country.
    static QStringList addressIn(const ContactForm& editor)
    {
        return {editor.name.text(), editor.add1.text(), editor.add2.text(), editor.add3.text(), editor.county.text(),
            editor.postcode.text(), editor.country.text()};
    }
    QStringList pasted(const QString& text)
    {
        form().cancel.trigger();
        contacts().create();
        clipboard.contents = text;
        form().pasteContact.trigger();
        return addressIn(form());
    }
    /// Makes the cards the address book.
    void haveAddressBook(const QByteArray& cards) { ::haveAddressBook(app(), home(), cards); }
    static QByteArray ada()
    {
        return "BEGIN:VCARD\nVERSION:3.0\nN:Quill;Ada\nADR:;;12 Mill Lane;Hexworth;;HX1 2AB;\nTEL;TYPE=CELL:07700 "
               "1\nEMAIL:ada@example.com\n"
               "X-ABUID:6B29\\:ABPerson\nEND:VCARD\n";
    }
};

// Capitals

TEST_F(ContactCommandsTest, capitaliseChangesNameAndAddressAndThePostcode)
{
    begin();
    contacts().create();
    for (TextField* field : {&form().name, &form().add1, &form().add2, &form().add3, &form().county, &form().country, &form().postcode,
             &form().contactTitle, &form().salutation, &form().comments, &form().email})
        field->edit("aB 1c");
    form().capitalise.trigger();
    EXPECT_EQ(addressIn(form()), QStringList({"Ab 1c", "Ab 1c", "Ab 1c", "Ab 1c", "Ab 1c", "AB 1C", "Ab 1c"}));
    for (const TextField* field : {&form().contactTitle, &form().salutation, &form().comments, &form().email})
        EXPECT_EQ(field->text(), "aB 1c") << field->name().toStdString();
    EXPECT_EQ(contacts().getCount(), 0) << "nothing is saved yet";
}

TEST_F(ContactCommandsTest, cancellingDropsWhatACommandDid)
{
    begin();
    Contact& ann = contact("ann lee");
    contacts().editThisContact(ann);
    form().capitalise.trigger();
    EXPECT_TRUE(form().changedByCommand);
    form().cancel.trigger();
    EXPECT_EQ(ann.getName(), "ann lee");
    contacts().editThisContact(ann);
    EXPECT_FALSE(form().changedByCommand);
    form().capitalise.trigger();
    form().save.trigger();
    EXPECT_EQ(ann.getName(), "Ann Lee");
}

TEST_F(ContactCommandsTest, allThreeEditorsHaveTheCommands)
{
    begin();
    Contact& tarn = firm("tarn ltd");
    Contact& ann = personOf(tarn, "ann lee");
    contacts().editThisContact(tarn);
    contacts().editThisContact(ann);
    company().capitalise.trigger();
    person().capitalise.trigger();
    EXPECT_EQ(company().name.text(), "Tarn Ltd");
    EXPECT_EQ(person().name.text(), "Ann Lee");
    clipboard.contents = "Bob\n1 Road\nX1";
    person().pasteContact.trigger();
    EXPECT_EQ(person().add1.text(), "1 Road");
    company().copyContact.trigger();
    EXPECT_EQ(clipboard.contents, "Tarn Ltd\r\r\r\r\r");
}

// Copying

TEST_F(ContactCommandsTest, copyingJoinsTitleNameAndAddressByCarriageReturns)
{
    begin();
    contacts().create();
    const std::pair<TextField*, const char*> texts[] = {{&form().contactTitle, "Ms"}, {&form().name, "Ada Quill"},
        {&form().add1, "12 Mill Lane"}, {&form().add2, "Hexworth"}, {&form().add3, "East"}, {&form().county, "Northshire"},
        {&form().postcode, "HX1 2AB"}, {&form().country, "United Kingdom"}};
    for (const auto& [field, text] : texts)
        field->edit(text);
    form().copyContact.trigger();
    EXPECT_EQ(clipboard.contents, "Ms Ada Quill\r12 Mill Lane\rHexworth\rEast\rNorthshire\rHX1 2AB");
    form().contactTitle.edit("");
    form().add3.edit("");
    form().copyContact.trigger();
    EXPECT_EQ(clipboard.contents, "Ada Quill\r12 Mill Lane\rHexworth\r\rNorthshire\rHX1 2AB");
}

TEST_F(ContactCommandsTest, whatWasCopiedIsPastedTheSame)
{
    begin();
    contacts().create();
    form().name.edit("Ada Quill");
    form().add1.edit("12 Mill Lane");
    form().postcode.edit("HX1 2AB");
    form().copyContact.trigger();
    EXPECT_EQ(pasted(clipboard.contents), QStringList({"Ada Quill", "12 Mill Lane", "", "", "", "HX1 2AB", ""}));
}

// Pasting

TEST_F(ContactCommandsTest, linesGoWhereTheirNumberSays)
{
    begin();
    EXPECT_EQ(pasted("n"), QStringList({"n", "", "", "", "", "", ""}));
    EXPECT_EQ(pasted("n\n1"), QStringList({"n", "1", "", "", "", "", ""}));
    EXPECT_EQ(pasted("n\n1\n2"), QStringList({"n", "1", "2", "", "", "2", ""}));
    EXPECT_EQ(pasted("n\n1\n2\np"), QStringList({"n", "1", "2", "", "", "p", ""}));
    EXPECT_EQ(pasted("n\n1\n2\n3\np"), QStringList({"n", "1", "2", "3", "", "p", ""}));
    EXPECT_EQ(pasted("n\n1\n2\n3\nc\np"), QStringList({"n", "1", "2", "3", "c", "p", ""}));
    EXPECT_EQ(pasted("n\n1\n2\n3\nc\np\nl"), QStringList({"n", "1", "2", "3", "c", "p", "l"}));
    EXPECT_EQ(pasted("n\n1\n2\n3\nc\np\nl\nmore"), QStringList({"n", "1", "2", "3", "c", "p", "l"}));
    EXPECT_EQ(pasted("n\r1\r2\rp"), QStringList({"n", "1", "2", "", "", "p", ""}));
    EXPECT_EQ(pasted("n\r\n1 \r\n2\r\np\r\n\r\n"), QStringList({"n", "1", "2", "", "", "p", ""}));
}

TEST_F(ContactCommandsTest, pastingLeavesTheFieldsThatGetNoLine)
{
    begin();
    contacts().create();
    form().county.edit("Northshire");
    form().phone.edit("01");
    clipboard.contents = "n\n1\n2\np";
    form().pasteContact.trigger();
    EXPECT_EQ(form().county.text(), "Northshire");
    EXPECT_EQ(form().phone.text(), "01");
}

TEST_F(ContactCommandsTest, nothingOnTheClipboardChangesNothing)
{
    begin();
    contacts().create();
    form().name.edit("Ada");
    // A picture gives no text at all.
    for (const char* contents : {"", " \n", "\x01\x1b\n\x07"}) {
        clipboard.contents = contents;
        form().pasteContact.trigger();
        EXPECT_EQ(form().name.text(), "Ada");
        EXPECT_FALSE(form().changedByCommand);
        EXPECT_EQ(form().name.fault(), "There is no address on the clipboard.");
        form().name.edit("Ada Q");
        EXPECT_EQ(form().name.fault(), "");
        form().name.edit("Ada");
    }
    EXPECT_EQ(beeper.beeps, 3);
}

TEST_F(ContactCommandsTest, whatWasSaidOfTheClipboardGoesWithTheNextAddressOrContact)
{
    begin();
    contacts().create();
    form().pasteContact.trigger();
    EXPECT_NE(form().name.fault(), "");
    clipboard.contents = "Ada\n1 Road";
    form().pasteContact.trigger();
    EXPECT_EQ(form().name.fault(), "");
    clipboard.contents.clear();
    form().pasteContact.trigger();
    EXPECT_NE(form().name.fault(), "");
    contacts().editThisContact(contact("Bob"));
    EXPECT_EQ(form().name.fault(), "");
}

TEST_F(ContactCommandsTest, aTextTooLongForAnAddressIsNotPasted)
{
    begin();
    contacts().create();
    form().name.edit("Ada");
    const QString lines = "Ada\n1 Road\n";
    clipboard.contents = lines + QString(longestPastedAddress - lines.size(), 'x');
    form().pasteContact.trigger();
    EXPECT_EQ(form().add1.text(), "1 Road");
    form().add1.edit("");
    for (const QString& tooLong : {clipboard.contents + 'x', QString(50'000'000, 'x'), QString(50'000'000, '\n')}) {
        clipboard.contents = tooLong;
        form().pasteContact.trigger();
        EXPECT_EQ(form().add1.text(), "");
        EXPECT_EQ(form().name.text(), "Ada");
        EXPECT_EQ(form().name.fault(), "What is on the clipboard is too long for an address.");
    }
    EXPECT_EQ(beeper.beeps, 3);
}

// Letters and pages

TEST_F(ContactCommandsTest, aLetterGoesToTheAddressesInTheField)
{
    begin();
    contacts().create();
    EXPECT_FALSE(form().sendEmail.isEnabled());
    form().email.edit("a@x.example; b@y.example");
    EXPECT_TRUE(form().sendEmail.isEnabled());
    form().sendEmail.trigger();
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0].toString(QUrl::FullyEncoded), "mailto:a@x.example,b@y.example");
    form().email.edit("  ");
    EXPECT_FALSE(form().sendEmail.isEnabled());
}

TEST_F(ContactCommandsTest, aCompanysPageOpensWhenItIsOne)
{
    begin();
    contacts().companyEditor.create();
    EXPECT_FALSE(company().openWebsite.isEnabled());
    company().website.edit("www.tarn.example");
    company().openWebsite.trigger();
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0], QUrl("https://www.tarn.example"));
    company().website.edit("file:///etc/passwd");
    company().openWebsite.trigger();
    EXPECT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(beeper.beeps, 1);
}

// The address book

TEST_F(ContactCommandsTest, updatingIsOfferedOnlyToWhomTheAddressBookMayKnow)
{
    begin();
    Contact& ann = contact("Ann");
    ann.setRef("C1");
    contacts().editThisContact(ann);
    EXPECT_FALSE(form().updateFromAddressBook.isVisible());
    form().ref.edit("6B29:ABPerson");
    EXPECT_TRUE(form().updateFromAddressBook.isVisible());
    ann.setRef("6B29:ABPerson");
    contacts().editThisContact(contact("Bob"));
    EXPECT_FALSE(form().updateFromAddressBook.isVisible());
    contacts().editThisContact(ann);
    EXPECT_TRUE(form().updateFromAddressBook.isVisible());
}

TEST_F(ContactCommandsTest, updatingTakesNameAddressNumbersAndLetters)
{
    begin();
    haveAddressBook("BEGIN:VCARD\nN:Other\nUID:other\nEND:VCARD\n" + ada());
    Contact& old = contact("Ada Penrose");
    old.setRef("6B29:ABPerson");
    old.setAdd3("old line");
    old.setComments("likes oak");
    contacts().editThisContact(old);
    form().updateFromAddressBook.trigger();
    EXPECT_EQ(addressIn(form()), QStringList({"Ada Quill", "12 Mill Lane", "Hexworth", "", "", "HX1 2AB", ""}));
    EXPECT_EQ(form().mobile.text(), "07700 1");
    EXPECT_EQ(form().email.text(), "ada@example.com");
    EXPECT_EQ(form().comments.text(), "likes oak");
    EXPECT_EQ(form().ref.text(), "6B29:ABPerson");
    EXPECT_EQ(old.getName(), "Ada Penrose") << "it is not saved yet";
    form().save.trigger();
    EXPECT_EQ(old.getName(), "Ada Quill");
}

TEST_F(ContactCommandsTest, updatingWhomTheBookDoesNotHaveChangesNothing)
{
    begin();
    haveAddressBook(ada());
    Contact& old = contact("Ada Penrose");
    old.setRef("gone:ABPerson");
    contacts().editThisContact(old);
    form().updateFromAddressBook.trigger();
    EXPECT_EQ(form().name.text(), "Ada Penrose");
    EXPECT_FALSE(form().changedByCommand);
    EXPECT_EQ(form().ref.fault(), "The address book has nobody of this reference.");
    form().ref.edit("6B29:ABPerson");
    EXPECT_EQ(form().ref.fault(), "");
    form().ref.edit("gone:ABPerson");
    form().updateFromAddressBook.trigger();
    contacts().editThisContact(contact("Bob"));
    EXPECT_EQ(form().ref.fault(), "") << "it was about somebody else";
}

TEST_F(ContactCommandsTest, somebodyChosenFromTheBookFillsTheEditorAndIsLinked)
{
    begin();
    haveAddressBook("BEGIN:VCARD\nN:Other\nUID:other\nEND:VCARD\n" + ada());
    contacts().create();
    form().comments.edit("likes oak");
    form().pickFromAddressBook.trigger();
    qvPicker& picker = app().getPicker();
    ASSERT_TRUE(picker.form.isOpen());
    EXPECT_EQ(picker.form.title(), "Select Contact");
    EXPECT_EQ(shown(picker, "1"), std::vector<std::string>({" Other", "Ada Quill"})) << "a blank stands where there is no first name";
    EXPECT_EQ(picker.objectValue("2", 1), "ada@example.com");
    picker.selectRow(1);
    picker.chooseSelected();
    EXPECT_EQ(form().name.text(), "Ada Quill");
    EXPECT_EQ(form().ref.text(), "6B29:ABPerson");
    EXPECT_EQ(form().comments.text(), "likes oak");
    EXPECT_TRUE(form().updateFromAddressBook.isVisible());
    EXPECT_TRUE(form().changedByCommand);
}

TEST_F(ContactCommandsTest, somebodyWithoutIdentifierLeavesTheReference)
{
    begin("<key>VendaroContactPrefix</key><string>K</string>");
    haveAddressBook("BEGIN:VCARD\nN:Quill;Ada\nEND:VCARD\n");
    contacts().create();
    form().pickFromAddressBook.trigger();
    app().getPicker().chooseSelected();
    EXPECT_EQ(form().name.text(), "Ada Quill");
    EXPECT_EQ(form().ref.text(), "K1");
}

TEST_F(ContactCommandsTest, whoIsChosenTooLateDoesNotGetIntoAnotherContact)
{
    begin();
    haveAddressBook(ada());
    Contact& bob = contact("Bob");
    contacts().create();
    form().pickFromAddressBook.trigger();
    contacts().editThisContact(bob);
    app().getPicker().chooseSelected();
    EXPECT_EQ(form().name.text(), "Bob");
}

TEST_F(ContactCommandsTest, whenReadingIsStoppedNothingChanges)
{
    begin();
    haveAddressBook(ada().repeated(200));
    Contact& old = contact("Ada Penrose");
    old.setRef("6B29:ABPerson");
    contacts().editThisContact(old);
    longWork.stops = true;
    form().pickFromAddressBook.trigger();
    EXPECT_FALSE(app().getPicker().form.isOpen());
    form().updateFromAddressBook.trigger();
    EXPECT_EQ(form().name.text(), "Ada Penrose");
    EXPECT_EQ(form().ref.fault(), "");
    EXPECT_FALSE(form().changedByCommand);
    EXPECT_EQ(longWork.titles.size(), 2);
}

TEST_F(ContactCommandsTest, anAddressBookThatBecameEmptyLeavesWhoIsOfferedAlready)
{
    begin();
    haveAddressBook(ada());
    contacts().create();
    form().pickFromAddressBook.trigger();
    haveAddressBook("");
    alerts.answer("OK");
    form().pickFromAddressBook.trigger();
    EXPECT_EQ(lastAlert().text, "There are no Contacts in the address book.");
    qvPicker& picker = app().getPicker();
    ASSERT_TRUE(picker.form.isOpen());
    EXPECT_EQ(shown(picker, "1"), std::vector<std::string>({"Ada Quill"}));
    picker.chooseSelected();
    EXPECT_EQ(form().name.text(), "Ada Quill");
}

TEST_F(ContactCommandsTest, anEmptyAddressBookSaysSo)
{
    begin();
    contacts().create();
    alerts.answer("OK");
    form().pickFromAddressBook.trigger();
    EXPECT_EQ(lastAlert().title, "None in database");
    EXPECT_EQ(lastAlert().text, "There are no Contacts in the address book.");
    EXPECT_FALSE(app().getPicker().form.isOpen());
}

} // namespace
