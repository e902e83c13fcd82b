#include "documents/Notepad.h"

#include "documents/rtf/RichText.h"
#include "foundation/Log.h"
#include "foundation/Text.h"
#include "storage/RecoveryStore.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>

class NotepadTest : public testing::Test {
protected:
    NotepadTest()
    {
        setLogSink([this](std::string_view line) { log += toQString(line); });
    }
    ~NotepadTest() override { setLogSink({}); }

    QString database() const { return m_home.filePath("vendarodatabase.vendb"); }
    QString textFile() const { return database() + "/notepad.rtfd/TXT.rtf"; }
    void put(const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(database() + "/notepad.rtfd"));
        QFile file(textFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    QString words() { return plainTextOf(notepad.document()); }
    void type(const QString& text) { QTextCursor(&notepad.document()).insertText(text); }
    /// The texts of the packages that were kept.
    std::vector<std::pair<KeptFor, QByteArray>> kept() const
    {
        std::vector<std::pair<KeptFor, QByteArray>> found;
        for (const KeptThing& thing : recovery.things())
            found.emplace_back(thing.reason, contents(thing.path + "/TXT.rtf"));
        return found;
    }
    using Kept = std::vector<std::pair<KeptFor, QByteArray>>;

    QStringList log;
    FakeClock clock;

private:
    QTemporaryDir m_home;

protected:
    RecoveryStore recovery {m_home.filePath("Recovery"), clock};
    bool mayWrite = true;
    Notepad notepad {database(), recovery, [this] { return mayWrite; }};
};

TEST_F(NotepadTest, isEmptyWithoutAFile)
{
    notepad.load();
    EXPECT_EQ(words(), "");
    EXPECT_EQ(notepad.damage(), "");
    EXPECT_FALSE(notepad.isChanged());
}

TEST_F(NotepadTest, whatIsTypedIsSavedAndReadAgain)
{
    notepad.load();
    type("Call Ada \u2713\nand Bob");
    EXPECT_TRUE(notepad.isChanged());
    ASSERT_TRUE(notepad.save()) << notepad.unsavedReason().toStdString();
    EXPECT_FALSE(notepad.isChanged());

    Notepad later(database(), recovery, [] { return true; });
    later.load();
    EXPECT_EQ(plainTextOf(later.document()), "Call Ada \u2713\nand Bob");
    EXPECT_TRUE(kept().empty());
}

TEST_F(NotepadTest, anEmptyOneIsSavedTheFirstTime)
{
    notepad.load();
    ASSERT_TRUE(notepad.save());
    EXPECT_TRUE(contents(textFile()).startsWith("{\\rtf1"));
}

TEST_F(NotepadTest, whatNobodyChangedIsNotWritten)
{
    const QByteArray file = "{\\rtf1{\\*\\unknown x}\\expnd4 as it was}";
    put(file);
    notepad.load();
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(contents(textFile()), file);
    EXPECT_TRUE(kept().empty());
}

TEST_F(NotepadTest, aWholeFileIsReplacedWithoutBeingKept)
{
    put("{\\rtf1 old}");
    notepad.load();
    type("new ");
    ASSERT_TRUE(notepad.save());
    type("and ");
    ASSERT_TRUE(notepad.save());
    notepad.load();
    EXPECT_EQ(words(), "and new old");
    EXPECT_TRUE(kept().empty());
}

TEST_F(NotepadTest, aDamagedFileIsToldAndKeptBeforeItIsReplaced)
{
    put("{\\rtf1 half a no");
    notepad.load();
    EXPECT_EQ(words(), "half a no");
    EXPECT_TRUE(notepad.damage().contains("TXT.rtf could not be read: it ends too early. ")) << notepad.damage().toStdString();
    EXPECT_EQ(log.size(), 1);
    EXPECT_TRUE(kept().empty());

    type("now ");
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(notepad.damage(), "");
    EXPECT_EQ(kept(), (Kept {{KeptFor::unreadable, "{\\rtf1 half a no"}}));
    type("again ");
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(kept().size(), 1u);
}

TEST_F(NotepadTest, aFolderWithoutATextIsDamaged)
{
    ASSERT_TRUE(QDir().mkpath(database() + "/notepad.rtfd"));
    notepad.load();
    EXPECT_NE(notepad.damage(), "");
}

TEST_F(NotepadTest, aFileWithMoreThanTheNotepadShowsIsKeptOnce)
{
    const QByteArray file = "{\\rtf1{\\header Top}text}";
    put(file);
    notepad.load();
    EXPECT_EQ(notepad.damage(), "");
    type("more ");
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(kept(), (Kept {{KeptFor::unreadable, file}}));
}

TEST_F(NotepadTest, whatSomebodyElseWroteMeanwhileIsKept)
{
    put("{\\rtf1 first}");
    notepad.load();
    put("{\\rtf1 written by another program}");
    type("mine ");
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(kept(), (Kept {{KeptFor::foreign, "{\\rtf1 written by another program}"}}));
    notepad.load();
    EXPECT_EQ(words(), "mine first");
}

TEST_F(NotepadTest, thePicturesStayWhenTheTextIsKept)
{
    put("{\\rtf1 {{\\NeXTGraphic a.pdf}\\'ac} cut");
    QFile picture(database() + "/notepad.rtfd/a.pdf");
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    picture.write("%PDF");
    picture.close();
    notepad.load();
    type("x");
    ASSERT_TRUE(notepad.save());
    EXPECT_EQ(contents(database() + "/notepad.rtfd/a.pdf"), "%PDF");
    EXPECT_EQ(contents(recovery.things().at(0).path + "/a.pdf"), "%PDF");
}

TEST_F(NotepadTest, aFileInPlaceOfTheFolderIsMovedAwayAndKept)
{
    ASSERT_TRUE(QDir().mkpath(database()));
    QFile file(database() + "/notepad.rtfd");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("some bytes");
    file.close();
    notepad.load();
    EXPECT_NE(notepad.damage(), "");
    type("new");
    ASSERT_TRUE(notepad.save());
    ASSERT_EQ(recovery.things().size(), 1u);
    EXPECT_EQ(contents(recovery.things()[0].path), "some bytes");
    notepad.load();
    EXPECT_EQ(words(), "new");
}

TEST_F(NotepadTest, whenNothingCanBeKeptNothingIsReplaced)
{
    put("{\\rtf1 half a no");
    notepad.load();
    // A file where the store should be.
    QFile store(recovery.folder());
    ASSERT_TRUE(store.open(QIODevice::WriteOnly));
    type("now ");
    ASSERT_FALSE(notepad.save());
    EXPECT_EQ(contents(textFile()), "{\\rtf1 half a no");
    EXPECT_TRUE(notepad.isChanged());
    EXPECT_EQ(log.back(), notepad.unsavedReason());
}

TEST_F(NotepadTest, whatCannotBeSavedSaysWhy)
{
    QFile inTheWay(database());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    notepad.load();
    type("text");
    ASSERT_FALSE(notepad.save());
    EXPECT_TRUE(notepad.unsavedReason().contains("vendarodatabase.vendb")) << notepad.unsavedReason().toStdString();
    EXPECT_TRUE(notepad.isChanged());

    const QStringList told = notepad.keepUnsaved();
    ASSERT_EQ(told.size(), 1);
    const KeptThing thing = recovery.things().at(0);
    EXPECT_EQ(thing.reason, KeptFor::unsaved);
    EXPECT_EQ(
        told[0], "The notepad could not be saved: " + notepad.unsavedReason() + ". What it should hold is kept as " + thing.path + ".");
    EXPECT_TRUE(contents(thing.path).contains("text"));
}

TEST_F(NotepadTest, theSameReasonIsLoggedOnce)
{
    QFile inTheWay(database());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    notepad.load();
    type("text");
    EXPECT_FALSE(notepad.save());
    EXPECT_FALSE(notepad.save());
    EXPECT_EQ(log.size(), 1);

    inTheWay.remove();
    EXPECT_TRUE(notepad.save());
    EXPECT_EQ(notepad.unsavedReason(), "");
    EXPECT_TRUE(contents(textFile()).contains("text"));
    EXPECT_TRUE(notepad.keepUnsaved().isEmpty());
    EXPECT_TRUE(recovery.things().empty());
}

TEST_F(NotepadTest, nothingIsWrittenIntoADatabaseThatIsReadOnly)
{
    mayWrite = false;
    notepad.load();
    EXPECT_TRUE(notepad.isReadOnly());
    EXPECT_TRUE(notepad.save());
    EXPECT_FALSE(QFile::exists(database()));

    type("typed before it was locked");
    EXPECT_FALSE(notepad.save());
    EXPECT_FALSE(QFile::exists(database()));
    EXPECT_NE(notepad.unsavedReason(), "");
    EXPECT_TRUE(notepad.isChanged());

    mayWrite = true;
    EXPECT_TRUE(notepad.save());
    EXPECT_TRUE(contents(textFile()).contains("typed before it was locked"));
}

TEST_F(NotepadTest, catchesUpWithTheFileUnlessSomethingWasTyped)
{
    put("{\\rtf1 first}");
    notepad.load();
    put("{\\rtf1 written by another program}");
    notepad.catchUp();
    EXPECT_EQ(words(), "written by another program");

    ASSERT_TRUE(QFile::remove(textFile()));
    notepad.catchUp();
    EXPECT_EQ(words(), "written by another program") << "it is nowhere else any more";

    type("mine ");
    put("{\\rtf1 and once more}");
    notepad.catchUp();
    EXPECT_EQ(words(), "mine written by another program");
}

TEST_F(NotepadTest, thePresentDocumentLivesUntilEverybodyKnowsOfTheNext)
{
    put("{\\rtf1 first}");
    notepad.load();
    const QTextDocument* before = &notepad.document();
    QString seen;
    QObject::connect(
        &notepad, &Notepad::documentReplaced, &notepad, [&] { seen = plainTextOf(*before) + " then " + plainTextOf(notepad.document()); });
    put("{\\rtf1 second one}");
    notepad.load();
    EXPECT_EQ(seen, "first then second one");
}

TEST_F(NotepadTest, whatIsTypedIsInAFontThatOtherProgramsKnow)
{
    notepad.load();
    type("plain");
    ASSERT_TRUE(notepad.save());
    EXPECT_TRUE(contents(textFile()).contains("\\fcharset0 Helvetica;")) << contents(textFile()).constData();
    EXPECT_TRUE(contents(textFile()).contains("\\fs24")) << contents(textFile()).constData();
}
