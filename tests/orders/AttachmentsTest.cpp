#include "orders/Attachments.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

class AttachmentsTest : public testing::Test {
protected:
    QString database() const { return m_home.filePath("a.vendb"); }
    QString writeFile(const QString& path, const QByteArray& bytes = "oak") const
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    QString source(const char* name, const QByteArray& bytes = "oak") const { return writeFile(m_home.filePath(name), bytes); }
    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_home;
    QStringList kept;
    Attachments attachments {[this] { return database(); },
        [this](const QString& folder) {
            kept += folder;
            return Result<void>();
        }};
};

TEST_F(AttachmentsTest, aFolderThatCannotBeLookedAtIsGivenToTheKeeperAllTheSame)
{
    ASSERT_TRUE(QDir().mkpath(database()));
    const QString all = database() + "/Attachments";
    ASSERT_TRUE(QFile::link(all, all)) << "leads to itself";
    EXPECT_TRUE(attachments.deleteAttachments(7));
    EXPECT_EQ(kept, QStringList {all + "/order7"}) << "it says whether that could be kept";
}

TEST_F(AttachmentsTest, aFileIsCopiedUnderItsNameIntoTheFolderOfItsOrder)
{
    const QString plan = source("plan.txt");
    EXPECT_TRUE(attachments.file(12, plan));
    EXPECT_EQ(bytesOf(database() + "/Attachments/order12/plan.txt"), "oak");
    EXPECT_EQ(QDir(database() + "/Attachments/order12").entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList("plan.txt"));
    EXPECT_EQ(bytesOf(plan), "oak");
    EXPECT_EQ(attachments.countAttachments(12), 1);
    EXPECT_EQ(attachments.countAttachments(1), 0);
    EXPECT_EQ(attachments.countAttachments(2), 0);
}

TEST_F(AttachmentsTest, nothingThatIsThereIsOverwritten)
{
    ASSERT_TRUE(attachments.file(1, source("plan.txt", "first")));
    const Result<void> again = attachments.file(1, source("plan.txt", "second"));
    ASSERT_FALSE(again);
    EXPECT_NE(again.error().message.find("plan.txt"), std::string::npos);
    EXPECT_EQ(bytesOf(attachments.folder(1) + "/plan.txt"), "first");
}

TEST_F(AttachmentsTest, aLinkToNothingThatStandsThereIsNotReplacedEither)
{
    ASSERT_TRUE(QDir().mkpath(database() + "/Attachments/order1"));
    ASSERT_TRUE(QFile::link("/nowhere", database() + "/Attachments/order1/plan.txt"));

    const Result<void> refused = attachments.file(1, source("plan.txt"));

    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().message.find("a file of that name is attached already"), std::string::npos) << refused.error().message;
    EXPECT_EQ(QFile::symLinkTarget(database() + "/Attachments/order1/plan.txt"), "/nowhere");
    EXPECT_FALSE(QFileInfo::exists("/nowhere"));
}

TEST_F(AttachmentsTest, aFolderThatCannotBeMadeIsAnError)
{
    writeFile(database() + "/Attachments", "in the way");

    const Result<void> refused = attachments.file(1, source("plan.txt"));

    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message,
        m_home.filePath("plan.txt").toStdString() + " was not attached: the folder for this order's files could not be made.");
    EXPECT_EQ(bytesOf(database() + "/Attachments"), "in the way");
    EXPECT_EQ(attachments.countAttachments(1), 0);
}

TEST_F(AttachmentsTest, aFolderThatCannotBeWrittenIsAnErrorAndHoldsNothingHalf)
{
    // Nothing can be written under the name of a copy on its way.
    writeFile(database() + "/Attachments/order1/.vendaro-attachment.tmp/in the way");

    const Result<void> refused = attachments.file(1, source("plan.txt"));

    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message,
        m_home.filePath("plan.txt").toStdString() + " was not attached: it could not be copied into the database folder.");
    EXPECT_FALSE(QFileInfo::exists(attachments.folder(1) + "/plan.txt"));
    EXPECT_EQ(attachments.countAttachments(1), 0);
}

TEST_F(AttachmentsTest, onlyOrdinaryFilesCanBeAttached)
{
    const QString plan = source("plan.txt");
    ASSERT_TRUE(QFile::link(plan, m_home.filePath("link.txt")));
    ASSERT_TRUE(QDir().mkpath(m_home.filePath("folder")));
    ASSERT_EQ(mkfifo(m_home.filePath("pipe").toLocal8Bit().constData(), 0600), 0);
    for (const char* name : {"link.txt", "folder", "pipe", "nothing.txt"}) {
        const Result<void> refused = attachments.file(1, m_home.filePath(name));
        ASSERT_FALSE(refused) << name;
        EXPECT_NE(refused.error().message.find(name), std::string::npos);
    }
    EXPECT_EQ(attachments.countAttachments(1), 0);
}

TEST_F(AttachmentsTest, aCopyThatWasBrokenOffEarlierDoesNotStandInTheWay)
{
    writeFile(database() + "/Attachments/order1/.vendaro-attachment.tmp", "half");
    EXPECT_EQ(attachments.countAttachments(1), 0);
    EXPECT_TRUE(attachments.file(1, source("plan.txt", "whole")));
    EXPECT_EQ(bytesOf(attachments.folder(1) + "/plan.txt"), "whole");
    EXPECT_EQ(attachments.countAttachments(1), 1);
}

TEST_F(AttachmentsTest, whatAnAttachmentIsCalledEndangersNoOther)
{
    ASSERT_TRUE(attachments.file(1, source("plan.txt.part", "half of it")));
    ASSERT_TRUE(attachments.file(1, source("plan.txt", "whole")));
    EXPECT_EQ(bytesOf(attachments.folder(1) + "/plan.txt.part"), "half of it");
    EXPECT_EQ(bytesOf(attachments.folder(1) + "/plan.txt"), "whole");
    EXPECT_EQ(attachments.countAttachments(1), 2);
}

TEST_F(AttachmentsTest, aNameOfACopyOnItsWayIsRefused)
{
    const Result<void> refused = attachments.file(1, source(".vendaro-attachment.tmp"));
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().message.find(".vendaro-attachment.tmp"), std::string::npos);
    EXPECT_FALSE(QFileInfo::exists(attachments.folder(1)));
}

TEST_F(AttachmentsTest, theLongestNameThereCanBeIsAttached)
{
    const QByteArray name(255, 'x');
    EXPECT_TRUE(attachments.file(1, source(name.constData())));
    EXPECT_EQ(attachments.countAttachments(1), 1);
}

TEST_F(AttachmentsTest, theFoldersAreFoundInWhateverCaseTheyAreSpelled)
{
    writeFile(database() + "/attachments/Order3/a.txt");
    EXPECT_EQ(attachments.folder(3), database() + "/attachments/Order3");
    EXPECT_EQ(attachments.countAttachments(3), 1);
    EXPECT_EQ(attachments.folder(4), database() + "/attachments/order4");
}

TEST_F(AttachmentsTest, aDesktopFileIsLeftOutOnlyWhereItComesFirst)
{
    writeFile(database() + "/Attachments/order1/.DS_Store");
    EXPECT_EQ(attachments.countAttachments(1), 0);
    writeFile(database() + "/Attachments/order1/b.txt");
    EXPECT_EQ(attachments.countAttachments(1), 1);
    writeFile(database() + "/Attachments/order1/!first.txt");
    EXPECT_EQ(attachments.countAttachments(1), 3);
}

TEST_F(AttachmentsTest, foldersAndHiddenFilesInTheFolderCountToo)
{
    writeFile(database() + "/Attachments/order1/bundle.rtfd/TXT.rtf");
    writeFile(database() + "/Attachments/order1/.hidden");
    EXPECT_EQ(attachments.countAttachments(1), 2);
}

TEST_F(AttachmentsTest, deletingHandsTheWholeFolderToTheKeeper)
{
    EXPECT_TRUE(attachments.deleteAttachments(1));
    EXPECT_TRUE(kept.isEmpty());
    ASSERT_TRUE(attachments.file(1, source("plan.txt")));
    EXPECT_TRUE(attachments.deleteAttachments(1));
    EXPECT_EQ(kept, QStringList(database() + "/Attachments/order1"));
}

TEST_F(AttachmentsTest, theCountIsToldInTheseWords)
{
    EXPECT_EQ(Attachments::statusText(0), "There are no attachments");
    EXPECT_EQ(Attachments::statusText(1), "There is 1 attachment");
    EXPECT_EQ(Attachments::statusText(2), "There are  2  attachments");
}

} // namespace
