// The address book of files and folders.
#include "contacts/VcardBook.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

class VcardBookTest : public testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    static QByteArray card(const char* name) { return QByteArray("BEGIN:VCARD\nN:") + name + "\nEND:VCARD\n"; }
    AddressBookPeople read() const
    {
        return VcardBook([this] { return paths; }).people([](double) { return true; });
    }
    static QStringList namesOf(const AddressBookPeople& book)
    {
        QStringList names;
        for (const Person& person : book.people)
            names += QString::fromStdString(person.lastName);
        return names;
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QStringList paths;

private:
    QTemporaryDir m_folder;
};

TEST_F(VcardBookTest, noFilesHoldNobody)
{
    EXPECT_TRUE(read().people.empty());
    EXPECT_TRUE(read().troubles.isEmpty());
}

TEST_F(VcardBookTest, filesComeInTheOrderTheyAreNamedAndThoseOfAFolderByName)
{
    ASSERT_TRUE(QDir().mkpath(path("book/deeper")));
    write("book/b.VCF", card("B"));
    write("book/a.vcf", card("A1") + card("A2"));
    write("book/c.vcard", card("C"));
    write("book/notes.txt", card("Not"));
    write("book/deeper/d.vcf", card("Deep"));
    paths = {write("z.vcf", card("Z")), path("book")};
    const AddressBookPeople book = read();
    EXPECT_EQ(namesOf(book), QStringList({"Z", "A1", "A2", "B", "C"}));
    EXPECT_TRUE(book.troubles.isEmpty());
}

TEST_F(VcardBookTest, isReadAnewEveryTime)
{
    paths = {write("a.vcf", card("A"))};
    EXPECT_EQ(namesOf(read()), QStringList({"A"}));
    write("a.vcf", card("B"));
    EXPECT_EQ(namesOf(read()), QStringList({"B"}));
}

TEST_F(VcardBookTest, whatCannotBeReadIsToldAndTheOthersAreRead)
{
    paths = {path("gone.vcf"), write("picture.vcf", "\xff\xd8\xff\xe0 no card"), write("a.vcf", card("A"))};
    const AddressBookPeople book = read();
    EXPECT_EQ(namesOf(book), QStringList({"A"}));
    ASSERT_EQ(book.troubles.size(), 2);
    EXPECT_TRUE(book.troubles[0].startsWith("The address book " + path("gone.vcf") + " cannot be read: "))
        << book.troubles[0].toStdString();
    EXPECT_EQ(book.troubles[1], path("picture.vcf") + " holds no vCards.");
}

TEST_F(VcardBookTest, theShareGrowsWithTheBytesOfAllFilesAndReadingStopsWhenAsked)
{
    // Three files of equal length, each long enough to be asked about on its way.
    const QByteArray cards = card("A").repeated(1000);
    paths = {write("a.vcf", cards), write("b.vcf", cards), write("c.vcf", cards)};
    std::vector<double> shares;
    const auto note = [&](double share) {
        shares.push_back(share);
        return true;
    };
    const VcardBook book([this] { return paths; });
    EXPECT_EQ(book.people(note).people.size(), 3000u);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_GT(shares.size(), 6u);
    EXPECT_DOUBLE_EQ(shares.back(), 1);

    const AddressBookPeople begun = book.people([](double share) { return share < 0.5; });
    EXPECT_TRUE(begun.wasStopped);
    EXPECT_GT(begun.people.size(), 1000u);
    EXPECT_LT(begun.people.size(), 2000u);
}

TEST_F(VcardBookTest, damageIsToldByFileAndLine)
{
    paths = {write("a.vcf", "BEGIN:VCARD\nN:A\nrubbish\nEND:VCARD\n")};
    EXPECT_EQ(read().troubles, QStringList({path("a.vcf") + ", line 3: This line belongs to no card: it has no name and colon."}));
}

TEST_F(VcardBookTest, manyTroublesAreCounted)
{
    paths = {write("a.vcf", "BEGIN:VCARD\nN:A\n" + QByteArray("rubbish\n").repeated(25) + "END:VCARD\n")};
    const AddressBookPeople book = read();
    ASSERT_EQ(book.troubles.size(), 11);
    EXPECT_TRUE(book.troubles[9].startsWith(path("a.vcf") + ", line 12: "));
    EXPECT_EQ(book.troubles[10], path("a.vcf") + ": 15 further lines like these.");
}

} // namespace
