// Which files are the address book: chosen, taken away, stored at once, and read again.
#include "app/PrefsController.h"

#include "support/Business.h"

namespace {

class AddressBookSettingsTest : public Business {
protected:
    PrefsForm& form() { return app().getPrefsController().form; }
    QStringList paths() { return app().getPrefsController().addressBookPaths(); }
    void add(const QString& path)
    {
        panels.choose(path);
        form().addAddressBookFile.trigger();
    }
};

TEST_F(AddressBookSettingsTest, isEmptyAtFirst)
{
    begin();
    EXPECT_EQ(paths(), QStringList());
    EXPECT_FALSE(form().removeFromAddressBook.isEnabled());
    EXPECT_EQ(app().settingsStore().value(settings::addressBook), nullptr);
}

TEST_F(AddressBookSettingsTest, filesAndFoldersThatWereChosenAreThereAfterARestart)
{
    begin();
    add("/home/ada/a & b.vcf");
    EXPECT_EQ(panels.openTitles, QStringList({"Choose a vCard file"}));
    panels.choose("/home/ada/cards");
    form().addAddressBookFolder.trigger();
    EXPECT_EQ(panels.savePanels.at(0).what, SavePanel::What::existingFolder);
    EXPECT_EQ(form().addressBook.title(), "/home/ada/cards");
    const PlistValue* stored = app().settingsStore().value(settings::addressBook);
    ASSERT_NE(stored, nullptr) << "stored as soon as it was chosen";
    EXPECT_EQ(stored->array().size(), 2u);
    restart();
    EXPECT_EQ(paths(), QStringList({"/home/ada/a & b.vcf", "/home/ada/cards"}));
}

TEST_F(AddressBookSettingsTest, cancellingAddsNothingAndTheSameFileIsThereOnce)
{
    begin();
    panels.cancel();
    form().addAddressBookFile.trigger();
    EXPECT_EQ(paths(), QStringList());
    add("/a.vcf");
    add("/b.vcf");
    add("/a.vcf");
    EXPECT_EQ(paths(), QStringList({"/a.vcf", "/b.vcf"}));
    EXPECT_EQ(form().addressBook.title(), "/a.vcf");
}

TEST_F(AddressBookSettingsTest, theSelectedOneIsTakenAway)
{
    begin();
    for (const char* path : {"/a.vcf", "/b.vcf", "/c.vcf"})
        add(path);
    form().addressBook.edit(1);
    form().removeFromAddressBook.trigger();
    EXPECT_EQ(paths(), QStringList({"/a.vcf", "/c.vcf"}));
    EXPECT_EQ(form().addressBook.title(), "/c.vcf");
    form().removeFromAddressBook.trigger();
    form().removeFromAddressBook.trigger();
    EXPECT_EQ(paths(), QStringList());
    EXPECT_FALSE(form().removeFromAddressBook.isEnabled());
    restart();
    EXPECT_EQ(paths(), QStringList());
}

TEST_F(AddressBookSettingsTest, aStoredValueOfAnotherKindIsKeptAndNotUsed)
{
    begin("<key>addressBook</key><string>/a.vcf</string>");
    EXPECT_EQ(paths(), QStringList());
    quit();
    begin("<key>addressBook</key><array><dict/></array>");
    EXPECT_EQ(paths(), QStringList());
}

} // namespace
