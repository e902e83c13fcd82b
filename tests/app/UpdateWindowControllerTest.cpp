// The update check as a person meets it: what is asked, shown, said and logged, and what lies on the disk afterwards.
#include "app/UpdateWindowController.h"

#include "app/PrefsForm.h"
#include "foundation/Log.h"
#include "support/FakeDesktop.h"
#include "support/HttpServer.h"
#include "support/MemorySettings.h"

#include <QDir>
#include <QFile>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace {

class UpdateTest : public testing::Test {
protected:
    UpdateTest()
    {
        setLogSink([this](std::string_view line) { log += QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())); });
        // The trash of these tests is in the home that goes with them.
        qputenv("XDG_DATA_HOME", (user.home() + "/data").toUtf8());
        make();
    }
    ~UpdateTest() override
    {
        updates.reset();
        setLogSink({});
        qunsetenv("XDG_DATA_HOME");
    }

    /// As a new run of the program makes it.
    void make(const QString& version = "1.0.0")
    {
        UpdateLimits limits;
        limits.description.silence = limits.notes.silence = limits.download.silence = std::chrono::milliseconds(1'000);
        limits.description.largest = limits.notes.largest = 20'000;
        UpdateNeeds needs {store, preferences, alerts, opener, user, version, [this](const QString& line) { status = line; },
            [this] { return isEditing; },
            [this] {
                ++saves;
                return unsaved;
            },
            [this] { ++quits; }};
        updates = std::make_unique<UpdateWindowController>(std::move(needs), limits);
    }
    void setEndpoint() { store.setText(settings::updateEndpoint, server.url("/updates.plist").toString().toStdString()); }
    static QByteArray entry(const char* key, const QString& value)
    {
        return QByteArray("<key>") + key + "</key><string>" + value.toHtmlEscaped().toUtf8() + "</string>";
    }
    void describe(const QByteArray& entries)
    {
        server.serve(
            "/updates.plist", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
    }
    /// A server that has this version with all that belongs to it.
    void offer(const QString& version)
    {
        setEndpoint();
        describe(entry("currentversion", version) + entry("newinthisversionurl", server.url("/new.html").toString())
            + entry("releasedate", "1 March 2026") + entry("downloadurl", server.url("/vendaro-2.0.deb").toString()));
        server.serve("/new.html", "<h2>New</h2><p>All is <b>better</b></p>");
        server.serve("/vendaro-2.0.deb", "the update");
    }
    bool isAsked(std::size_t times = 1)
    {
        return waitUntil([&] { return alerts.asked().size() >= times; });
    }
    bool isOpen()
    {
        return waitUntil([this] { return updates->form.isOpen(); });
    }
    /// Nothing more comes.
    void settle()
    {
        waitUntil([] { return false; }, 50);
    }
    void openUpdate()
    {
        offer("2.0");
        updates->checkForUpdates();
        ASSERT_TRUE(isOpen());
    }
    QString downloads() const { return user.home() + "/Downloads"; }
    QStringList downloaded() const
    {
        return QDir(downloads()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    QString trouble() const { return updates->form.trouble.text(); }

    HttpServer server;
    MemorySettings store;
    PrefsForm preferences;
    FakeAlerts alerts;
    FakeOpener opener;
    FakeUser user;
    QStringList log;
    QString status;
    QString unsaved;
    bool isEditing = false;
    int saves = 0;
    int quits = 0;
    std::unique_ptr<UpdateWindowController> updates;
};

} // namespace

// When it asks

TEST_F(UpdateTest, nothingIsAskedWhileNoAddressIsSet)
{
    updates->begin();
    settle();
    EXPECT_TRUE(server.asked().isEmpty());
    EXPECT_FALSE(updates->form.isOpen());
    alerts.answer("OK");
    updates->checkForUpdates();
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Update check");
    EXPECT_TRUE(alerts.asked()[0].text.startsWith("There is no address to ask.")) << alerts.asked()[0].text.toStdString();
}

TEST_F(UpdateTest, theCheckIsAutomaticUnlessItIsSwitchedOff)
{
    EXPECT_TRUE(updates->isAutomatic());
    store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(true));
    EXPECT_TRUE(updates->isAutomatic());
    store.setText(settings::automaticUpdateCheck, "YES");
    EXPECT_TRUE(updates->isAutomatic());
    store.setText(settings::automaticUpdateCheck, "NO");
    EXPECT_FALSE(updates->isAutomatic());
    store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(false));
    EXPECT_FALSE(updates->isAutomatic());
}

TEST_F(UpdateTest, theStartAsksByItself)
{
    offer("2.0");
    updates->begin();
    EXPECT_FALSE(updates->form.isOpen());
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(server.asked(), QStringList({"/updates.plist", "/new.html"}));
}

TEST_F(UpdateTest, switchedOffTheStartAsksNothingAndThePersonStillMay)
{
    offer("2.0");
    store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(false));
    updates->begin();
    settle();
    EXPECT_TRUE(server.asked().isEmpty());
    updates->checkForUpdates();
    EXPECT_TRUE(isOpen());
}

TEST_F(UpdateTest, turningItOnIsStoredAndTold)
{
    store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(false));
    updates->begin();
    EXPECT_FALSE(preferences.automaticUpdateCheck.isOn());
    int told = 0;
    QObject::connect(updates.get(), &UpdateWindowController::automaticChanged, updates.get(), [&] { ++told; });
    updates->turnOnAutomaticCheck();
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(updates->isAutomatic());
    EXPECT_TRUE(preferences.automaticUpdateCheck.isOn());
    EXPECT_TRUE(store.value(settings::automaticUpdateCheck)->isTrue());
    preferences.automaticUpdateCheck.edit(false);
    EXPECT_EQ(told, 2);
    EXPECT_FALSE(updates->isAutomatic());
}

TEST_F(UpdateTest, theAddressIsStoredAsItIsTypedAndSaysWhenItIsNone)
{
    updates->begin();
    preferences.updateEndpoint.edit("http://example.org/updates.plist");
    EXPECT_EQ(preferences.updateEndpoint.fault(), "An address for updates begins with https://.");
    preferences.updateEndpoint.edit(" https://example.org/updates.plist ");
    EXPECT_EQ(preferences.updateEndpoint.fault(), "");
    EXPECT_EQ(store.text(settings::updateEndpoint), "https://example.org/updates.plist");
    preferences.updateEndpoint.edit("");
    EXPECT_EQ(preferences.updateEndpoint.fault(), "");
    EXPECT_FALSE(store.value(settings::updateEndpoint));
}

TEST_F(UpdateTest, theSettingsShowWhatIsStored)
{
    store.setText(settings::updateEndpoint, "ftp://example.org/x");
    store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(false));
    updates->begin();
    EXPECT_EQ(preferences.updateEndpoint.text(), "ftp://example.org/x");
    EXPECT_NE(preferences.updateEndpoint.fault(), "");
    alerts.answer("OK");
    updates->checkForUpdates();
    EXPECT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].text, "An address for updates begins with https://.");
}

// What it finds

TEST_F(UpdateTest, aNewerVersionIsShownWithWhatIsNewInIt)
{
    openUpdate();
    EXPECT_EQ(updates->form.versions.text(), "Version 2.0 is available; this is 1.0.0.");
    EXPECT_EQ(updates->form.releaseDate.text(), "Released: 1 March 2026");
    ASSERT_NE(updates->notes(), nullptr);
    EXPECT_EQ(updates->notes()->toPlainText(), "New\nAll is better");
    EXPECT_TRUE(updates->form.getUpdate.isEnabled());
    EXPECT_EQ(trouble(), "");
    EXPECT_TRUE(log.contains("newest version is 2.0.0"));
    EXPECT_TRUE(log.contains("this version is 1.0.0"));
    EXPECT_EQ(status, "There is an update: version 2.0.");
}

TEST_F(UpdateTest, withoutANewerVersionThePersonIsTold)
{
    for (const char* version : {"1.0", "1.0.0", "0.9.9", "1.2.3.4", "2", "soon"}) {
        offer(version);
        alerts.forget();
        alerts.answer("OK");
        updates->checkForUpdates();
        ASSERT_TRUE(isAsked()) << version;
        EXPECT_EQ(alerts.asked()[0].title, "Update check");
        EXPECT_EQ(alerts.asked()[0].text, "No update available");
        EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
        EXPECT_FALSE(updates->form.isOpen());
    }
    EXPECT_TRUE(log.contains("newest version is 0.9.9"));
}

TEST_F(UpdateTest, theStartSaysNothingWhenThereIsNone)
{
    offer("1.0");
    updates->begin();
    ASSERT_TRUE(waitUntil([this] { return log.contains("this version is 1.0.0"); }));
    settle();
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(status, "");
}

TEST_F(UpdateTest, askedForWhileTheStartAsksThePersonGetsTheAnswer)
{
    offer("1.0");
    updates->begin();
    alerts.answer("OK");
    updates->checkForUpdates();
    ASSERT_TRUE(isAsked());
    settle();
    EXPECT_EQ(alerts.asked().size(), 1u);
}

TEST_F(UpdateTest, badAnswersAreToldInWordsAndOnlyToThePerson)
{
    setEndpoint();
    const QByteArray whole = HttpServer::page("<plist version=\"1.0\"><dict><key>currentversion</key><string>2.0</string></dict></plist>");
    const std::pair<const char*, HttpServer::Answer> bad[] {
        {"answered with 404", {HttpServer::page("x", "404 Not Found")}},
        {"cannot be read", {HttpServer::page("<html>Welcome</html>")}},
        {"cannot be read", {HttpServer::page("")}},
        {"cannot be read", {HttpServer::page("<plist version=\"1.0\"><dict><key>currentversion</key><string>2.0")}},
        {"cannot be read", {HttpServer::page("<plist version=\"1.0\"><array/></plist>")}},
        {"names no currentversion", {HttpServer::page("<plist version=\"1.0\"><dict/></plist>")}},
        {"too large", {HttpServer::page(QByteArray(30'000, 'x'))}},
        {"without end", {HttpServer::redirect(server.url("/updates.plist"))}},
        {"not safe", {HttpServer::redirect(QUrl("http://example.org/x"))}},
        {"broke off", {whole, whole.size() - 3}},
        {"longer than 1 seconds", {whole.chopped(1), -1, 0, 0, true}},
        {"longer than 1 seconds", {"", -1, 0, 0, true}},
    };
    for (const auto& [words, answer] : bad) {
        server.answer("/updates.plist", answer);
        alerts.forget();
        alerts.answer("OK");
        updates->checkForUpdates();
        ASSERT_TRUE(isAsked()) << words;
        EXPECT_EQ(alerts.asked()[0].title, "Update check");
        EXPECT_TRUE(alerts.asked()[0].text.contains(words)) << words << ": " << alerts.asked()[0].text.toStdString();
        EXPECT_FALSE(updates->form.isOpen());
    }
    alerts.forget();
    server.answer("/updates.plist", {HttpServer::page("x", "404 Not Found")});
    log.clear();
    updates->begin();
    ASSERT_TRUE(waitUntil([this] { return log.contains("update connection failed"); }));
    settle();
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(UpdateTest, aServerThatIsNotThereIsToldAndLogged)
{
    setEndpoint();
    server.stopListening();
    alerts.answer("OK");
    updates->checkForUpdates();
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(alerts.asked()[0].text, "The server 127.0.0.1 does not answer.");
    EXPECT_TRUE(log.contains("update connection failed"));
}

TEST_F(UpdateTest, notesThatCannotBeReadAreLoggedAndTheUpdateIsShown)
{
    const QString address = server.url("/new.html").toString();
    const std::pair<QByteArray, QString> bad[] {
        {HttpServer::page("x", "404 Not Found"), "The server 127.0.0.1 answered with 404 Not Found."},
        {HttpServer::page(" "), "There is no text in it."}, {HttpServer::page("Hello").chopped(1), "The server 127.0.0.1 broke off."}};
    for (const auto& [bytes, reason] : bad) {
        offer("2.0");
        server.answer("/new.html", {bytes});
        updates->checkForUpdates();
        ASSERT_TRUE(isOpen());
        EXPECT_EQ(updates->notes(), nullptr);
        EXPECT_TRUE(updates->form.getUpdate.isEnabled());
        EXPECT_TRUE(log.contains("error making string from data at " + address + " - error " + reason)) << reason.toStdString();
        updates->form.close();
    }
}

TEST_F(UpdateTest, withoutAnAddressToGetItFromItCannotBeGot)
{
    setEndpoint();
    describe(entry("currentversion", "2.0") + entry("downloadurl", "http://example.org/vendaro.deb"));
    updates->checkForUpdates();
    ASSERT_TRUE(isOpen());
    EXPECT_FALSE(updates->form.getUpdate.isEnabled());
    EXPECT_EQ(trouble(), "The update server gives no address to get it from.");
    EXPECT_EQ(updates->form.releaseDate.text(), "");
    updates->form.getUpdate.trigger();
    EXPECT_FALSE(updates->isLoading());
}

TEST_F(UpdateTest, linksOpenInTheBrowserAndNothingElseDoes)
{
    for (const char* address : {"file:///etc/passwd", "javascript:alert(1)", "mailto:a@example.org", "relative.html", "smb://x/y"})
        updates->openLink(QUrl(address));
    EXPECT_TRUE(opener.urls.empty());
    updates->openLink(QUrl("https://example.org/more"));
    EXPECT_EQ(opener.urls, std::vector<QUrl> {QUrl("https://example.org/more")});
}

// Getting it

TEST_F(UpdateTest, theUpdateIsBroughtSavedForOpenedAndTheProgramQuits)
{
    openUpdate();
    updates->form.getUpdate.trigger();
    EXPECT_TRUE(updates->isLoading());
    EXPECT_FALSE(updates->form.getUpdate.isEnabled());
    EXPECT_EQ(updates->form.cancel.caption(), "Cancel");
    ASSERT_TRUE(waitUntil([this] { return quits > 0; }));
    settle();
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(downloaded(), QStringList {"vendaro-2.0.deb"});
    EXPECT_EQ(opener.urls, std::vector<QUrl> {QUrl::fromLocalFile(downloads() + "/vendaro-2.0.deb")});
    EXPECT_EQ(opener.folders, QStringList {downloads()});
    EXPECT_TRUE(log.contains("finished loading, data is 10 bytes"));
    EXPECT_FALSE(updates->form.isOpen());
}

TEST_F(UpdateTest, howFarItIsIsTold)
{
    openUpdate();
    server.answer("/vendaro-2.0.deb", {HttpServer::page(QByteArray(4'000, 'x')), -1, 500, 2});
    std::vector<qint64> received;
    QStringList texts;
    QObject::connect(updates.get(), &UpdateWindowController::progressed, updates.get(), [&](qint64 bytes, qint64 total) {
        if (total == 0)
            return;
        EXPECT_EQ(total, 4'000);
        received.push_back(bytes);
        texts += updates->form.progress.text();
    });
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return quits > 0; }));
    ASSERT_GE(received.size(), 2u);
    EXPECT_TRUE(std::is_sorted(received.begin(), received.end()));
    EXPECT_EQ(received.back(), 4'000);
    EXPECT_EQ(texts.last(), "4.0 kB of 4.0 kB");
}

TEST_F(UpdateTest, cancelledItStopsAndCanBeGotAgain)
{
    openUpdate();
    server.answer("/vendaro-2.0.deb", {HttpServer::page(QByteArray(4'000, 'x')), -1, 100, 10});
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return updates->form.progress.text().contains(" of "); }));
    updates->form.cancel.trigger();
    EXPECT_FALSE(updates->isLoading());
    EXPECT_TRUE(updates->form.isOpen());
    EXPECT_TRUE(updates->form.getUpdate.isEnabled());
    EXPECT_EQ(updates->form.progress.text(), "");
    EXPECT_EQ(updates->form.cancel.caption(), "Later");
    settle();
    EXPECT_EQ(downloaded(), QStringList());
    EXPECT_EQ(quits, 0);
    server.serve("/vendaro-2.0.deb", "the update");
    updates->form.getUpdate.trigger();
    EXPECT_TRUE(waitUntil([this] { return quits > 0; }));
}

TEST_F(UpdateTest, laterClosesTheWindowAndClosingItStopsTheDownload)
{
    openUpdate();
    updates->form.cancel.trigger();
    EXPECT_FALSE(updates->form.isOpen());
    server.answer("/vendaro-2.0.deb", {HttpServer::page(QByteArray(4'000, 'x')), -1, 100, 10});
    updates->form.open();
    updates->form.getUpdate.trigger();
    updates->form.close();
    EXPECT_FALSE(updates->isLoading());
    settle();
    EXPECT_EQ(downloaded(), QStringList());
    EXPECT_EQ(quits, 0);
}

TEST_F(UpdateTest, whatGoesWrongIsShownAndLoggedAndNothingIsLeft)
{
    openUpdate();
    server.answer("/vendaro-2.0.deb", {HttpServer::page("the update"), 60});
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return !trouble().isEmpty(); }));
    EXPECT_EQ(trouble(), "The server 127.0.0.1 broke off.");
    EXPECT_TRUE(log.contains("update connection failed"));
    EXPECT_FALSE(updates->isLoading());
    EXPECT_TRUE(updates->form.getUpdate.isEnabled());
    EXPECT_EQ(downloaded(), QStringList());

    QFile inTheWay(downloads());
    ASSERT_TRUE(QDir().rmdir(downloads()));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();
    updates->form.getUpdate.trigger();
    EXPECT_EQ(trouble(), "");
    ASSERT_TRUE(waitUntil([this] { return !trouble().isEmpty(); }));
    EXPECT_TRUE(log.contains("unable to save to " + downloads() + "/vendaro-2.0.deb"));
    EXPECT_EQ(quits, 0);
    EXPECT_TRUE(opener.urls.empty());
}

TEST_F(UpdateTest, whileSomethingIsEditedItWaits)
{
    openUpdate();
    isEditing = true;
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return !trouble().isEmpty(); }));
    EXPECT_EQ(trouble(), "Something is being edited. Save or cancel it first.");
    EXPECT_EQ(updates->form.progress.text(), "The update is " + downloads() + "/vendaro-2.0.deb.");
    EXPECT_EQ(updates->form.getUpdate.caption(), "Open and Quit");
    EXPECT_EQ(quits, 0);
    EXPECT_EQ(saves, 0);
    EXPECT_TRUE(opener.urls.empty());
    updates->form.close();
    updates->checkForUpdates();
    EXPECT_TRUE(updates->form.isOpen());
    isEditing = false;
    updates->form.getUpdate.trigger();
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(server.asked().count("/vendaro-2.0.deb"), 1);
}

TEST_F(UpdateTest, whatCouldNotBeSavedKeepsTheProgramRunning)
{
    openUpdate();
    unsaved = "orders.xml could not be written";
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return !trouble().isEmpty(); }));
    EXPECT_EQ(trouble(), "Not everything could be saved: orders.xml could not be written");
    EXPECT_EQ(quits, 0);
    EXPECT_TRUE(opener.urls.empty());
    unsaved.clear();
    updates->form.getUpdate.trigger();
    EXPECT_EQ(quits, 1);
}

TEST_F(UpdateTest, anUpdateThatWasTakenAwayIsGotAgain)
{
    openUpdate();
    isEditing = true;
    updates->form.getUpdate.trigger();
    ASSERT_TRUE(waitUntil([this] { return !trouble().isEmpty(); }));
    ASSERT_TRUE(QFile::remove(downloads() + "/vendaro-2.0.deb"));
    isEditing = false;
    updates->form.getUpdate.trigger();
    EXPECT_TRUE(trouble().endsWith("is not there any more.")) << trouble().toStdString();
    EXPECT_EQ(quits, 0);
    EXPECT_EQ(updates->form.getUpdate.caption(), "Get Update");
    updates->form.getUpdate.trigger();
    EXPECT_TRUE(waitUntil([this] { return quits > 0; }));
}

TEST_F(UpdateTest, stoppedOrGoneItSaysNothingMore)
{
    offer("2.0");
    updates->checkForUpdates();
    updates->stop();
    settle();
    EXPECT_FALSE(updates->form.isOpen());
    updates->checkForUpdates();
    updates.reset();
    settle();
    EXPECT_TRUE(alerts.asked().empty());
    make();
    openUpdate();
    server.answer("/vendaro-2.0.deb", {HttpServer::page(QByteArray(4'000, 'x')), -1, 100, 10});
    updates->form.getUpdate.trigger();
    updates.reset();
    settle();
    EXPECT_EQ(downloaded(), QStringList());
}
