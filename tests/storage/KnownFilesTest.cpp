// Knowing what a file holds without reading it again.
#include "storage/DatabaseFolderTest.h"

#include "foundation/WrittenMark.h"

#include <QRegularExpression>

namespace {

/// Counts how often what it is to hold was asked for, as it is for comparing and for writing.
class CountedFile : public ArticleFile {
public:
    using ArticleFile::ArticleFile;

    std::unique_ptr<FileSnapshot> snapshot() const override
    {
        ++asked;
        return ArticleFile::snapshot();
    }
    mutable std::atomic<int> asked = 0;
    bool fillsIn = false;

protected:
    bool complete(StoredRecord<Article>& stored) const override
    {
        if (!fillsIn || !stored.values->note.isEmpty())
            return true;
        stored.values.change().note = literalText<"filled in">();
        return false;
    }
};

class KnownFilesTest : public DatabaseFolderTest {
protected:
    KnownFilesTest() { folder.registerFile(cupFile); }

    std::string path() const { return (location() + "/cups.xml").toStdString(); }
    /// As another start of the program finds the folder.
    void loadAgain()
    {
        cups.articles.clear();
        for (Articles* others : {&mugs.articles, &orders.articles, &lines.articles})
            others->clear();
        load();
        cupFile.asked = 0;
    }
    /// Two cups, written and read again.
    void SetUp() override
    {
        load();
        cups.articles.addNamed("a");
        cups.articles.addNamed("b");
        folder.writeEverything();
        loadAgain();
        folder.writeEverything();
        if (!writtenMark::stands(path()))
            GTEST_SKIP() << "the file system keeps no attributes";
        loadAgain();
    }
    /// Whether it had to be looked at; it holds cups of these names in any case.
    bool isLookedAt(const QString& names)
    {
        cupFile.asked = 0;
        folder.writeEverything();
        EXPECT_EQ(namesInFile(), names);
        return cupFile.asked > 0;
    }
    QString namesInFile() const
    {
        static const QRegularExpression name("<key>name</key>\\s*<string>(.*)</string>");
        QStringList names;
        for (const QRegularExpressionMatch& found : name.globalMatch(QString::fromUtf8(contents("cups.xml"))))
            names += found.captured(1);
        return names.join(' ');
    }
    /// As the program writes cups that it read: whether one is stocked is written under a key that it is not read from.
    static QByteArray written(const QByteArray& names) { return document(names).replace(">YES<", ">NO<"); }

    ArticleShop cups;
    CountedFile cupFile {cups.articles, "cups.xml", "cups"};
};

} // namespace

TEST_F(KnownFilesTest, whatTheProgramWroteAndNobodyChangedIsNotLookedAt)
{
    EXPECT_FALSE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, everyChangeIsWritten)
{
    Article& first = cups.articles.at(0);
    first.setFieldByName("name", "other");
    EXPECT_TRUE(isLookedAt("other b"));
    EXPECT_FALSE(isLookedAt("other b"));

    cups.articles.addNamed("c");
    EXPECT_TRUE(isLookedAt("other b c"));

    Article& last = cups.articles.at(2);
    cups.articles.deleteItem(last);
    EXPECT_TRUE(isLookedAt("other b"));

    cups.articles.restore(last);
    EXPECT_TRUE(isLookedAt("other b c"));

    cups.articles.clear();
    EXPECT_TRUE(isLookedAt(""));
    EXPECT_FALSE(isLookedAt(""));
}

TEST_F(KnownFilesTest, recordsThatChangedPlacesAreWritten)
{
    cups.articles.swop(cups.articles.at(0), cups.articles.at(1));
    EXPECT_TRUE(isLookedAt("b a"));
}

TEST_F(KnownFilesTest, whatSomebodyElseWroteIsLookedAt)
{
    put("cups.xml", document("a x"));
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_FALSE(folder.takeNews().isEmpty());

    ASSERT_TRUE(QFile::remove(location() + "/cups.xml"));
    EXPECT_TRUE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, aFileInAnotherLayoutIsWrittenInOurs)
{
    put("cups.xml", written("a b").replace("\t\t\t<key>note</key>\n\t\t\t<string></string>\n", ""));
    loadAgain();
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_EQ(contents("cups.xml"), written("a b"));
}

TEST_F(KnownFilesTest, whatIsWrittenUnderAKeyThatIsNotReadIsWrittenAgain)
{
    cups.articles.at(0).setFieldByName("stocked", "YES");
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_TRUE(contents("cups.xml").contains("YES"));
    loadAgain();
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_EQ(contents("cups.xml"), written("a b"));
    EXPECT_FALSE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, aFileWithoutAMarkIsComparedOnce)
{
    put("cups.xml", written("a b"));
    loadAgain();
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_FALSE(isLookedAt("a b"));
    loadAgain();
    EXPECT_FALSE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, whatReadingFilledInIsWritten)
{
    cupFile.fillsIn = true;
    loadAgain();
    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_TRUE(contents("cups.xml").contains("<string>filled in</string>"));
    EXPECT_FALSE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, aRecordThatGetsItsIdWhileReadIsWritten)
{
    put("cups.xml",
        written("a b")
            .replace("<string>2</string>", "<string>0</string>")
            .replace("<key>owner</key>\n\t\t\t<string>2", "<key>owner</key>\n\t\t\t<string>0"));
    writtenMark::put(path());
    loadAgain();
    EXPECT_TRUE(isLookedAt("a b"));
}

TEST_F(KnownFilesTest, aSaveThatFailedIsDoneAgainThoughNothingChangedSince)
{
    const QByteArray before = contents("cups.xml");
    block("cups.xml");
    write({&cupFile});
    ASSERT_NE(folder.unsavedReason(), "");
    unblock("cups.xml");
    put("cups.xml", before);

    EXPECT_TRUE(isLookedAt("a b"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(KnownFilesTest, whatIsKnownOfOneDatabaseIsNotKnownOfAnother)
{
    const QString first = location();
    ASSERT_TRUE(QDir().rename(first, first + ".away"));
    loadAgain();
    EXPECT_TRUE(isLookedAt(""));
}
