// The update check on the screen: menus, settings, the window, and that quitting saves first.
#include "ui/shell/UpdateWindow.h"

#include "WithWindows.h"
#include "app/UpdateWindowController.h"
#include "support/HttpServer.h"
#include "ui/kit/Button.h"

#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTextBrowser>

using namespace uitest;

namespace {

class UpdateOnScreen : public WithWindows<Scenario> {
protected:
    void launch(const QByteArray& settings = {})
    {
        writeSettings("<key>dontShowTip</key><true/><key>VendaroDateFormat</key><string>0</string>" + settings);
        startWithWindows();
    }
    QByteArray endpoint() const { return "<key>updateEndpoint</key><string>" + server.url("/updates.plist").toEncoded() + "</string>"; }
    void offer(const char* version)
    {
        const QByteArray entries = QByteArray("<key>currentversion</key><string>") + version
            + "</string><key>releasedate</key><string>1 March 2026</string><key>newinthisversionurl</key><string>"
            + server.url("/new.html").toEncoded() + "</string><key>downloadurl</key><string>" + server.url("/vendaro.deb").toEncoded()
            + "</string>";
        server.serve("/updates.plist", document("<dict>" + entries + "</dict>"));
        server.serve("/new.html", "<p>All is <b>better</b>, see <a href='https://example.org/'>more</a></p>");
        server.serve("/vendaro.deb", QByteArray(5'000, 'x'));
    }
    QAction* command(const char* name) { return child<QAction>(windows->main(), name); }
    static UpdateWindow* window() { return seen<UpdateWindow>(); }
    template <class Widget>
    static Widget* part(const char* name)
    {
        return child<Widget>(*window(), name);
    }

    HttpServer server;
};

} // namespace

TEST_F(UpdateOnScreen, withoutAnAddressTheStartAsksNothing)
{
    launch();
    settle();
    EXPECT_EQ(window(), nullptr);
    EXPECT_FALSE(command("automaticUpdates")->isVisible());
    EXPECT_TRUE(command("checkForUpdates")->isVisible());
}

TEST_F(UpdateOnScreen, theStartShowsWhatIsNew)
{
    offer("99.0");
    launch(endpoint());
    ASSERT_TRUE(waitUntil([] { return window() != nullptr; }));
    EXPECT_EQ(part<QLabel>("versions")->text(), QString("Version 99.0 is available; this is %1.").arg(VENDARO_VERSION));
    EXPECT_EQ(part<QLabel>("releaseDate")->text(), QString("Released: 1 March 2026"));
    EXPECT_EQ(part<QTextBrowser>("notes")->toPlainText(), QString("All is better, see more"));
    EXPECT_EQ(part<QTextBrowser>("notes")->palette().color(QPalette::Text), themeColour(Colour::text)) << "it is to be read";
    EXPECT_FALSE(part<QProgressBar>("bar")->isVisible());
    EXPECT_FALSE(part<QLabel>("trouble")->isVisible());
    EXPECT_EQ(part<Button>("getUpdate")->text(), QString("Get Update"));
    part<QTextBrowser>("notes")->anchorClicked(QUrl("https://example.org/"));
    EXPECT_EQ(opener.urls, std::vector<QUrl> {QUrl("https://example.org/")});
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
    EXPECT_FALSE(app().updates().form.isOpen());
}

TEST_F(UpdateOnScreen, askedForThereMayBeNone)
{
    offer("0.1");
    launch(endpoint() + "<key>automaticUpdateCheck</key><false/>");
    EXPECT_TRUE(server.asked().isEmpty());
    alerts.answer("OK");
    command("checkForUpdates")->trigger();
    ASSERT_TRUE(waitUntil([this] { return !alerts.asked().empty(); }));
    EXPECT_EQ(alerts.asked()[0].text, QString("No update available"));
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateOnScreen, theMenuEntryThatTurnsTheCheckOnGoesWhenItIsOn)
{
    launch("<key>automaticUpdateCheck</key><false/>");
    EXPECT_TRUE(command("automaticUpdates")->isVisible());
    command("automaticUpdates")->trigger();
    EXPECT_FALSE(command("automaticUpdates")->isVisible());
    EXPECT_TRUE(app().getPrefsController().form.automaticUpdateCheck.isOn());
    app().getPrefsController().form.automaticUpdateCheck.edit(false);
    EXPECT_TRUE(command("automaticUpdates")->isVisible());
}

TEST_F(UpdateOnScreen, theDownloadShowsHowFarItIsAndStops)
{
    offer("99.0");
    server.answer("/vendaro.deb", {HttpServer::page(QByteArray(5'000, 'x')), -1, 250, 20});
    launch(endpoint());
    ASSERT_TRUE(waitUntil([] { return window() != nullptr; }));
    press(*part<Button>("getUpdate"));
    EXPECT_TRUE(part<QProgressBar>("bar")->isVisible());
    EXPECT_EQ(part<Button>("cancelUpdate")->text(), QString("Cancel"));
    ASSERT_TRUE(waitUntil([] { return part<QProgressBar>("bar")->value() > 0; }));
    EXPECT_LT(part<QProgressBar>("bar")->value(), part<QProgressBar>("bar")->maximum());
    press(*part<Button>("cancelUpdate"));
    EXPECT_FALSE(part<QProgressBar>("bar")->isVisible());
    EXPECT_NE(window(), nullptr);
    EXPECT_EQ(part<Button>("cancelUpdate")->text(), QString("Later"));
    EXPECT_TRUE(QDir(home() + "/Downloads").isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(UpdateOnScreen, withAnEditorOpenItWaitsAndThenSavesAndQuits)
{
    offer("99.0");
    launch(endpoint());
    QSignalSpy quits(&windows->main(), &MainWindow::quitWanted);
    ASSERT_TRUE(waitUntil([] { return window() != nullptr; }));
    app().getContactManager().create();
    app().getContactManager().form.name.edit("Ada Penrose");
    press(*part<Button>("getUpdate"));
    ASSERT_TRUE(waitUntil([] { return part<QLabel>("trouble")->isVisible(); }));
    EXPECT_EQ(part<Button>("getUpdate")->text(), QString("Open and Quit"));
    EXPECT_EQ(quits.count(), 0);
    EXPECT_TRUE(opener.urls.empty());
    app().getContactManager().finish();
    press(*part<Button>("getUpdate"));
    EXPECT_EQ(quits.count(), 1);
    EXPECT_EQ(opener.urls, std::vector<QUrl> {QUrl::fromLocalFile(home() + "/Downloads/vendaro.deb")});
    EXPECT_EQ(opener.folders, QStringList {home() + "/Downloads"});
    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Penrose"));
    EXPECT_TRUE(hasFile("lock.xml")) << "quitting takes it away, saving does not";
}
