// Bringing a file from a web server: whole or not at all, and nothing that was there is lost.
#include "app/UpdateDownload.h"

#include "support/HttpServer.h"
#include "support/NoRoom.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class UpdateDownloadTest : public testing::Test {
protected:
    UpdateDownloadTest() : dataHome(qgetenv("XDG_DATA_HOME")) { qputenv("XDG_DATA_HOME", (home.path() + "/data").toUtf8()); }
    ~UpdateDownloadTest() override
    {
        if (dataHome.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", dataHome);
    }
    QString folder() const { return home.path() + "/Downloads"; }
    QString path(const QString& name) const { return folder() + '/' + name; }
    /// Everything in the folder, hidden files too.
    QStringList files() const { return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot); }
    QByteArray contents(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void put(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(folder()));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    UpdateDownload::Outcome load(const QUrl& address)
    {
        std::optional<UpdateDownload::Outcome> outcome;
        UpdateDownload download(*network, address, folder(), limits);
        download.onReceived = [this](qint64 bytes) { received = bytes; };
        download.onFinished = [&](const UpdateDownload::Outcome& told) {
            EXPECT_FALSE(outcome.has_value());
            outcome = told;
        };
        EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }));
        waitUntil([] { return false; }, 10);
        return outcome.value_or(UpdateDownload::Outcome());
    }
    UpdateDownload::Outcome load(const QString& serverPath) { return load(server.url(serverPath)); }

    HttpServer server;
    std::unique_ptr<QNetworkAccessManager> network = makeNetwork();
    FetchLimits limits {10'000'000, std::chrono::milliseconds(2'000), {}};
    QTemporaryDir home;
    QByteArray dataHome;
    qint64 received = -1;
};

/// More than the buffers between server and file hold, and no two pieces alike.
QByteArray largeFile()
{
    QByteArray bytes;
    for (int i = 0; bytes.size() < 1'500'000; ++i)
        bytes += QByteArray::number(i) + '\n';
    return bytes;
}

} // namespace

TEST_F(UpdateDownloadTest, theFileIsThereWholeUnderItsName)
{
    server.serve("/files/vendaro-2.0.deb", largeFile());
    const UpdateDownload::Outcome outcome = load("/files/vendaro-2.0.deb");
    EXPECT_FALSE(outcome.failure.has_value()) << outcome.reason.toStdString();
    EXPECT_EQ(outcome.path, path("vendaro-2.0.deb"));
    EXPECT_EQ(contents("vendaro-2.0.deb"), largeFile());
    EXPECT_EQ(files(), QStringList {"vendaro-2.0.deb"});
    EXPECT_EQ(received, largeFile().size());
}

TEST_F(UpdateDownloadTest, theNameIsTheLastPartOfThePathAndNothingElse)
{
    const auto name = [](const char* address) {
        const Result<QString> found = UpdateDownload::fileName(QUrl(QString::fromUtf8(address)));
        return found ? found.value().toStdString() : "(none)";
    };
    EXPECT_EQ(name("https://example.org/a/b/vendaro.deb?version=2#top"), "vendaro.deb");
    EXPECT_EQ(name("https://example.org/My%20update.deb"), "My update.deb");
    EXPECT_EQ(name("https://example.org/%C3%BCber.deb"), "\u00fcber.deb");
    for (const char* none : {"https://example.org", "https://example.org/", "https://example.org/a/", "https://example.org/..",
             "https://example.org/a%2Fb", "https://example.org/..%2F..%2Fetc%2Fpasswd", "https://example.org/.bashrc",
             "https://example.org/a%00b", "https://example.org/a%0Ab", "https://example.org/%20"})
        EXPECT_EQ(name(none), "(none)") << none;
    const QString tooLong = "https://example.org/" + QString(300, 'x');
    EXPECT_EQ(name(tooLong.toUtf8().constData()), "(none)");
}

TEST_F(UpdateDownloadTest, anAddressWithoutANameMakesNoFile)
{
    const UpdateDownload::Outcome outcome = load("/files/");
    EXPECT_EQ(outcome.failure, UpdateDownload::Failure::saving);
    EXPECT_TRUE(outcome.reason.contains("names no file")) << outcome.reason.toStdString();
    EXPECT_TRUE(server.asked().isEmpty());
}

TEST_F(UpdateDownloadTest, brokenOffAnywhereNothingIsLeft)
{
    const QByteArray whole = HttpServer::page("Everything there is");
    put("vendaro.deb", "the one from before");
    for (qsizetype length = 0; length < whole.size(); ++length) {
        server.answer("/vendaro.deb", {whole, length});
        const UpdateDownload::Outcome outcome = load("/vendaro.deb");
        EXPECT_EQ(outcome.failure, UpdateDownload::Failure::connection) << length;
        EXPECT_EQ(files(), QStringList {"vendaro.deb"}) << length;
        EXPECT_EQ(contents("vendaro.deb"), "the one from before") << length;
    }
}

TEST_F(UpdateDownloadTest, badAnswersLeaveNothing)
{
    server.answer("/gone.deb", {HttpServer::page("for browsers", "404 Not Found")});
    server.answer("/loop.deb", {HttpServer::redirect(server.url("/loop.deb"))});
    server.serve("/huge.deb", QByteArray(2'000, 'x'));
    server.answer("/silent.deb", {HttpServer::page("Hello").chopped(1), -1, 0, 0, true});
    limits = {1'000, std::chrono::milliseconds(150), {}};
    for (const char* name : {"/gone.deb", "/loop.deb", "/huge.deb", "/silent.deb"}) {
        const UpdateDownload::Outcome outcome = load(QString::fromLatin1(name));
        EXPECT_EQ(outcome.failure, UpdateDownload::Failure::connection) << name;
        EXPECT_FALSE(outcome.reason.isEmpty());
        EXPECT_EQ(files(), QStringList()) << name;
    }
}

TEST_F(UpdateDownloadTest, cancelledAtAnyMomentNothingIsLeft)
{
    server.answer("/vendaro.deb", {HttpServer::page(QByteArray(2'000, 'x')), -1, 100, 1});
    for (int pieces = 0; pieces < 20; pieces += 3) {
        int heard = 0;
        UpdateDownload download(*network, server.url("/vendaro.deb"), folder(), limits);
        download.onProgress = [&](qint64, qint64) { ++heard; };
        ASSERT_TRUE(waitUntil([&] { return heard >= pieces; }));
    }
    EXPECT_EQ(files(), QStringList());
}

TEST_F(UpdateDownloadTest, cancelledWhileItIsPutOnTheDiskTheFileIsWholeOrNotThere)
{
    server.serve("/vendaro.deb", largeFile());
    for (int times = 0; times < 5; ++times) {
        bool isReceived = false;
        {
            UpdateDownload download(*network, server.url("/vendaro.deb"), folder(), limits);
            download.onReceived = [&](qint64) { isReceived = true; };
            ASSERT_TRUE(waitUntil([&] { return isReceived; }));
        }
        if (!files().isEmpty()) {
            EXPECT_EQ(files(), QStringList {"vendaro.deb"});
            EXPECT_EQ(contents("vendaro.deb"), largeFile());
        }
    }
}

TEST_F(UpdateDownloadTest, aFullDiskEndsItAndLeavesNothing)
{
    server.serve("/vendaro.deb", largeFile());
    put("note.txt", "mine");
    const UpdateDownload::Outcome outcome = [&] {
        const NoRoom full(400'000);
        return load("/vendaro.deb");
    }();
    EXPECT_EQ(outcome.failure, UpdateDownload::Failure::saving);
    EXPECT_TRUE(outcome.reason.contains(path("vendaro.deb"))) << outcome.reason.toStdString();
    EXPECT_TRUE(outcome.reason.contains("File too large")) << outcome.reason.toStdString();
    EXPECT_EQ(files(), QStringList {"note.txt"});
    EXPECT_EQ(received, -1);
}

TEST_F(UpdateDownloadTest, aFolderThatCannotBeMadeIsTold)
{
    QFile inTheWay(folder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.write("mine");
    inTheWay.close();
    server.serve("/vendaro.deb", "new");
    const UpdateDownload::Outcome outcome = load("/vendaro.deb");
    EXPECT_EQ(outcome.failure, UpdateDownload::Failure::saving);
    EXPECT_FALSE(outcome.reason.isEmpty());
    EXPECT_EQ(inTheWay.size(), 4);
}

TEST_F(UpdateDownloadTest, anotherFileOfThatNameGoesIntoTheTrash)
{
    put("vendaro.deb", "the person's own");
    server.serve("/vendaro.deb", "new");
    EXPECT_FALSE(load("/vendaro.deb").failure.has_value());
    EXPECT_EQ(contents("vendaro.deb"), "new");
    QFile kept(home.path() + "/data/Trash/files/vendaro.deb");
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "the person's own");
}

TEST_F(UpdateDownloadTest, theSameFileOnceMoreStaysAsItIs)
{
    put("vendaro.deb", "new");
    server.serve("/vendaro.deb", "new");
    EXPECT_FALSE(load("/vendaro.deb").failure.has_value());
    EXPECT_EQ(files(), QStringList {"vendaro.deb"});
    EXPECT_FALSE(QFileInfo::exists(home.path() + "/data/Trash/files/vendaro.deb"));
}

TEST_F(UpdateDownloadTest, aFolderOfThatNameIsMovedAwayWithAllItHolds)
{
    ASSERT_TRUE(QDir().mkpath(path("vendaro.deb")));
    put("vendaro.deb/inside.txt", "mine");
    server.serve("/vendaro.deb", "new");
    EXPECT_FALSE(load("/vendaro.deb").failure.has_value());
    EXPECT_EQ(contents("vendaro.deb"), "new");
    EXPECT_TRUE(QFileInfo::exists(home.path() + "/data/Trash/files/vendaro.deb/inside.txt"));
}

TEST_F(UpdateDownloadTest, aLinkOfThatNameIsNotFollowed)
{
    put("elsewhere.txt", "mine");
    ASSERT_TRUE(QFile::link(path("elsewhere.txt"), path("vendaro.deb")));
    server.serve("/vendaro.deb", "new");
    EXPECT_FALSE(load("/vendaro.deb").failure.has_value());
    EXPECT_EQ(contents("elsewhere.txt"), "mine");
    EXPECT_EQ(contents("vendaro.deb"), "new");
    EXPECT_FALSE(QFileInfo(path("vendaro.deb")).isSymLink());
}

TEST_F(UpdateDownloadTest, programsAreNotKept)
{
    const std::pair<const char*, QByteArray> programs[] {{"/update.sh", "#!/bin/sh\nrm -rf ~\n"}, {"/update", "#!/bin/sh\n"},
        {"/update.desktop", "[Desktop Entry]\nType=Application\nExec=rm\n"},
        {"/notes.txt",
            QByteArray("\x7f"
                       "ELF\x02\x01\x01")
                + QByteArray(60, '\0')}};
    for (const auto& [name, bytes] : programs) {
        server.serve(name, bytes);
        const UpdateDownload::Outcome outcome = load(QString::fromLatin1(name));
        EXPECT_EQ(outcome.failure, UpdateDownload::Failure::saving) << name;
        EXPECT_TRUE(outcome.reason.contains("is a program")) << outcome.reason.toStdString();
        EXPECT_EQ(files(), QStringList()) << name;
    }
}

TEST_F(UpdateDownloadTest, theFileMayNotBeRunWhateverTheOneBeforeMight)
{
    put("vendaro.deb", "the one before");
    ASSERT_TRUE(QFile::setPermissions(path("vendaro.deb"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeOther));
    server.serve("/vendaro.deb", "new");
    EXPECT_FALSE(load("/vendaro.deb").failure.has_value());
    EXPECT_EQ(QFile::permissions(path("vendaro.deb")) & (QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther), QFile::Permissions());
}
