// Seeing to it that all files hold what they should, without writing what they hold.
#include "storage/DatabaseFolderTest.h"

#include "storage/FileComparison.h"

#include <sys/stat.h>

namespace {

class WritingEverythingTest : public DatabaseFolderTest {
protected:
    /// A file that took another one's place has another number.
    unsigned long long number(const char* name) const
    {
        struct stat found { };
        EXPECT_EQ(::stat((location() + '/' + name).toStdString().c_str(), &found), 0) << name;
        return found.st_ino;
    }
    std::vector<unsigned long long> numbers() const { return {number("mugs.xml"), number("orders.xml"), number("itemsordered.xml")}; }
    void begin()
    {
        load();
        mugs.articles.addNamed("a");
        mugs.articles.addNamed("b");
        orders.articles.addNamed("c");
        folder.writeEverything();
        ASSERT_EQ(contents("mugs.xml"), document("a b"));
        ASSERT_EQ(contents("orders.xml"), document("c"));
        ASSERT_EQ(contents("itemsordered.xml"), document(""));
    }
    bool isMugFile(const QByteArray& bytes)
    {
        put("candidate", bytes);
        return holdsAlready((location() + "/candidate").toStdString(), *mugFile.snapshot());
    }
};

} // namespace

TEST_F(WritingEverythingTest, whatIsThereAlreadyIsLeftAlone)
{
    begin();
    const auto before = numbers();

    folder.writeEverything();

    EXPECT_EQ(numbers(), before);
    EXPECT_EQ(folder.unsavedReason(), "");
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(WritingEverythingTest, onlyWhatIsDifferentIsWritten)
{
    begin();
    const auto before = numbers();
    mugs.articles.addNamed("new");

    folder.writeEverything();

    EXPECT_EQ(contents("mugs.xml"), document("a b new"));
    EXPECT_NE(number("mugs.xml"), before[0]);
    EXPECT_EQ(number("orders.xml"), before[1]);
    EXPECT_EQ(number("itemsordered.xml"), before[2]);
}

TEST_F(WritingEverythingTest, whatIsGoneOrWasChangedBySomebodyElseIsWrittenAgain)
{
    begin();
    ASSERT_TRUE(QFile::remove(location() + "/orders.xml"));
    put("mugs.xml", document("a c"));

    folder.writeEverything();

    EXPECT_EQ(contents("mugs.xml"), document("a b"));
    EXPECT_EQ(contents("orders.xml"), document("c"));
    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 mugs.xml"), document("a c"));
}

TEST_F(WritingEverythingTest, aFileThatSomebodyElseWroteAlikeIsNotCalledWrittenOver)
{
    begin();
    ASSERT_TRUE(QFile::remove(location() + "/mugs.xml"));
    put("mugs.xml", document("a b"));

    folder.writeEverything();

    EXPECT_EQ(folder.takeNews(), QStringList());
    EXPECT_TRUE(recovery.things().empty());
}

TEST_F(WritingEverythingTest, anOrdinarySaveAlwaysWrites)
{
    begin();
    const auto before = numbers();

    write({&mugFile});

    EXPECT_NE(number("mugs.xml"), before[0]);
    EXPECT_EQ(contents("mugs.xml"), document("a b"));
}

TEST_F(WritingEverythingTest, whatCouldNotBeSavedIsWrittenThoughItStandsThere)
{
    begin();
    block("mugs.xml");
    write({&mugFile});
    ASSERT_NE(folder.unsavedReason(), "");
    unblock("mugs.xml");
    put("mugs.xml", document("a b"));
    const auto before = number("mugs.xml");

    folder.writeEverything();

    EXPECT_NE(number("mugs.xml"), before) << "nobody knows whether that would outlast a power cut";
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(WritingEverythingTest, everyByteCounts)
{
    begin();
    const QByteArray same = document("a b");
    EXPECT_TRUE(isMugFile(same));
    for (const qsizetype at : {qsizetype(0), same.size() / 2, same.size() - 1}) {
        QByteArray other = same;
        other[at] = other[at] == '#' ? '$' : '#';
        EXPECT_FALSE(isMugFile(other)) << at;
    }
    EXPECT_FALSE(isMugFile(same + '\n'));
    EXPECT_FALSE(isMugFile(same.chopped(1)));
    EXPECT_FALSE(isMugFile({}));
    EXPECT_FALSE(holdsAlready((location() + "/missing").toStdString(), *mugFile.snapshot()));
    EXPECT_FALSE(holdsAlready(location().toStdString(), *mugFile.snapshot())) << "a folder";
}

TEST_F(WritingEverythingTest, manyPiecesAreComparedToTheEnd)
{
    load();
    QByteArray names;
    for (int i = 0; i < 40'000; ++i) {
        const QByteArray name = "mug" + QByteArray::number(i);
        mugs.articles.addNamed(name.constData());
        names += name + ' ';
    }
    const QByteArray same = document(names);
    ASSERT_GT(same.size(), 8'000'000);

    EXPECT_TRUE(isMugFile(same));
    EXPECT_FALSE(isMugFile(QByteArray(same).replace("mug39999", "mug39998")));
}
