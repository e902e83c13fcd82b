// A program that is told to end from outside writes everything first. The program is a second run of this test binary.
#include "ui/Ending.h"

#include "UiTest.h"
#include "foundation/Log.h"
#include "ui/Program.h"
#include "ui/shell/MainWindow.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr char ready[] = "ready to be ended\n";

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The other side: a program with an order nobody has written yet and a setting that waits for its turn. Runs only when asked for.
TEST(EndedProgram, waitsWithUnwrittenWork)
{
    if (!qEnvironmentVariableIsSet("VENDARO_TEST_HOME"))
        GTEST_SKIP() << "runs only as the second program of the tests below";
    QApplication::setQuitOnLastWindowClosed(false);
    Ending::ignoreClosedPipes();
    Ending ending;
    Program program;
    ending.onScreenLost = [&program] { program.endWithoutScreen(); };
    program.start();
    Vendaro& vendaro = program.vendaro();
    Order& order = vendaro.getOrderManager().createAndAddDataObject();
    order.setTitle("Three stools");
    vendaro.settingsStore().setText("VendaroTestOfEnding", "kept");
    if (qEnvironmentVariableIsSet("VENDARO_TEST_EDITING")) {
        vendaro.getOrderManager().editThisOrder(order);
        vendaro.getOrderManager().form.orderTitle.edit("Half typed");
    }
    std::fputs(ready, stdout);
    std::fflush(stdout);
    // Goes on logging for whoever may listen.
    QTimer talk;
    QObject::connect(&talk, &QTimer::timeout, &talk, [] { logLine("at work"); });
    if (qEnvironmentVariableIsSet("VENDARO_TEST_TALKING"))
        talk.start(5);
    const int status = QApplication::exec();
    program.end();
    ASSERT_EQ(status, 0);
}

/// Another: a program whose first question has come up. The database is a copy for travelling, which is told at the start.
TEST(EndedProgram, asksWhileItStarts)
{
    if (!qEnvironmentVariableIsSet("VENDARO_TEST_HOME"))
        GTEST_SKIP() << "runs only as the second program of the tests below";
    QApplication::setQuitOnLastWindowClosed(false);
    const QString database = QDir::homePath() + "/Library/Application Support/Vendaro/vendarodatabase.vendb";
    ASSERT_TRUE(QDir().mkpath(database));
    QFile lock(database + "/lock.xml");
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>datetime</key>"
               "<string>2024-03-01 10:15:30 +0000</string><key>reason</key><string>offline browsing</string>"
               "<key>user</key><string>bob</string></dict></plist>\n");
    lock.close();
    Ending::ignoreClosedPipes();
    Ending ending;
    Program program;
    QTimer asked;
    QObject::connect(&asked, &QTimer::timeout, &asked, [&asked] {
        if (!SheetStack::instance().top())
            return;
        asked.stop();
        std::fputs(ready, stdout);
        std::fflush(stdout);
    });
    asked.start(20);
    ASSERT_EQ(program.run(), 0);
}

namespace {

class EndedFromOutside : public testing::Test {
protected:
    void start(const QStringList& environment = {})
    {
        startOther("waitsWithUnwrittenWork", environment);
        ASSERT_TRUE(QFile::exists(database() + "/lock.xml"));
        ASSERT_FALSE(contentsOf(database() + "/orders.xml").contains("Three stools"));
    }
    void startOther(const QString& name, const QStringList& environment = {})
    {
        QStringList variables = QProcess::systemEnvironment();
        variables += "VENDARO_TEST_HOME=" + m_home.path();
        m_program.setEnvironment(variables + environment);
        m_program.setProcessChannelMode(QProcess::MergedChannels);
        m_program.start(QApplication::applicationFilePath(), {"--gtest_filter=EndedProgram." + name});
        QByteArray said;
        while (!said.contains(ready)) {
            ASSERT_TRUE(m_program.waitForReadyRead(20'000)) << said.toStdString();
            said += m_program.readAll();
        }
    }
    void end(int signal)
    {
        ::kill(static_cast<pid_t>(m_program.processId()), signal);
        ASSERT_TRUE(m_program.waitForFinished(20'000)) << "it goes on";
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 0) << m_program.readAll().toStdString();
    }
    QString database() const { return m_home.path() + "/Library/Application Support/Vendaro/vendarodatabase.vendb"; }
    QString settings() const { return m_home.path() + "/Library/Preferences/Vendaro.plist"; }

    QTemporaryDir m_home;
    QProcess m_program;
};

class Ended : public EndedFromOutside, public testing::WithParamInterface<int> { };

/// On a screen of its own, which goes.
class EndedByItsScreen : public EndedFromOutside {
protected:
    void SetUp() override
    {
        m_screen.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24"});
        if (!m_screen.waitForStarted())
            GTEST_SKIP() << "there is no Xvfb here";
        while (!m_number.contains('\n')) {
            ASSERT_TRUE(m_screen.waitForReadyRead(20'000));
            m_number += QString::fromLatin1(m_screen.readAllStandardOutput());
        }
        m_number = m_number.trimmed();
    }
    void TearDown() override
    {
        m_screen.kill();
        m_screen.waitForFinished();
    }

    QProcess m_screen;
    QString m_number;
};

} // namespace

TEST_P(Ended, writesEverythingAndGivesTheDatabaseFree)
{
    start();
    end(GetParam());
    EXPECT_TRUE(contentsOf(database() + "/orders.xml").contains("<string>Three stools</string>"));
    EXPECT_TRUE(contentsOf(settings()).contains("VendaroTestOfEnding"));
    EXPECT_FALSE(QFile::exists(database() + "/lock.xml"));
}

TEST_P(Ended, anOpenEditorDoesNotHoldItUpAndTheOrderStaysAsItWasSaved)
{
    start({"VENDARO_TEST_EDITING=1"});
    end(GetParam());
    const QByteArray orders = contentsOf(database() + "/orders.xml");
    EXPECT_TRUE(orders.contains("<string>Three stools</string>"));
    EXPECT_FALSE(orders.contains("Half typed"));
    EXPECT_FALSE(QFile::exists(database() + "/lock.xml"));
}

TEST_P(Ended, isHeardWhileTheProgramAsksSomethingAtItsStart)
{
    startOther("asksWhileItStarts");
    end(GetParam());
    EXPECT_TRUE(contentsOf(database() + "/lock.xml").contains("offline browsing"));
}

TEST_F(EndedFromOutside, aReaderOfItsLogThatIsGoneDoesNotEndIt)
{
    int log[2];
    ASSERT_EQ(::pipe2(log, O_CLOEXEC), 0);
    m_program.setChildProcessModifier([end = log[1]] { ::dup2(end, STDERR_FILENO); });
    start({"VENDARO_TEST_TALKING=1"});
    ::close(log[1]);
    ::close(log[0]);
    EXPECT_FALSE(m_program.waitForFinished(200)) << "it ended by itself";
    end(SIGTERM);
    EXPECT_TRUE(contentsOf(database() + "/orders.xml").contains("<string>Three stools</string>"));
    EXPECT_FALSE(QFile::exists(database() + "/lock.xml"));
}

TEST_F(EndedByItsScreen, writesEverythingAndGivesTheDatabaseFree)
{
    start({"DISPLAY=:" + m_number, "QT_QPA_PLATFORM=xcb", "VENDARO_TEST_EDITING=1"});

    m_screen.kill();

    ASSERT_TRUE(m_program.waitForFinished(20'000)) << "it goes on";
    const QByteArray said = m_program.readAll();
    EXPECT_TRUE(said.contains("The X11 connection broke")) << said.toStdString();
    const QByteArray orders = contentsOf(database() + "/orders.xml");
    EXPECT_TRUE(orders.contains("<string>Three stools</string>"));
    EXPECT_FALSE(orders.contains("Half typed"));
    EXPECT_TRUE(contentsOf(settings()).contains("VendaroTestOfEnding"));
    EXPECT_FALSE(QFile::exists(database() + "/lock.xml"));
}

INSTANTIATE_TEST_SUITE_P(BySignal, Ended, testing::Values(SIGTERM, SIGHUP, SIGINT),
    [](const testing::TestParamInfo<int>& signal) { return std::string(sigabbrev_np(signal.param)); });
