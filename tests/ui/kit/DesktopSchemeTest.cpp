#include "KitTest.h"

#include "ui/kit/DesktopScheme.h"

#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QThread>

namespace {

/// A settings portal of our own, on a bus of our own.
class StubPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    uint scheme = 1;

public Q_SLOTS:
    QDBusVariant Read(const QString& nameSpace, const QString& key)
    {
        asked = nameSpace + QLatin1Char(' ') + key;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(scheme)));
    }

public:
    QString asked;
};

class DesktopSchemeBus : public testing::Test {
protected:
    void SetUp() override
    {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (program.isEmpty())
            GTEST_SKIP() << "no dbus-daemon here";
        m_daemon.start(program, {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        ASSERT_TRUE(m_daemon.waitForReadyRead(5000));
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        m_daemon.kill();
        m_daemon.waitForFinished(5000);
    }
    QDBusConnection bus(const char* name) { return QDBusConnection::connectToBus(m_address, QString::fromLatin1(name)); }

    QProcess m_daemon;
    QString m_address;
};

}

TEST(DesktopScheme, oneMeansDarkAndEverythingElseLight)
{
    EXPECT_EQ(DesktopScheme::shadeOf(1U), Shade::dark);
    EXPECT_EQ(DesktopScheme::shadeOf(0U), Shade::light);
    EXPECT_EQ(DesktopScheme::shadeOf(2U), Shade::light);
    EXPECT_EQ(DesktopScheme::shadeOf(QVariant()), Shade::light);
    EXPECT_EQ(DesktopScheme::shadeOf(QStringLiteral("nonsense")), Shade::light);
}

TEST(DesktopScheme, answersMayBeWrappedTwice)
{
    const QVariant wrapped = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(1U))));
    EXPECT_EQ(DesktopScheme::shadeOf(wrapped), Shade::dark);
}

TEST(DesktopScheme, withoutABusItIsLight)
{
    const DesktopScheme scheme(QDBusConnection(QStringLiteral("there is none")));
    EXPECT_EQ(scheme.shade(), Shade::light);
}

TEST_F(DesktopSchemeBus, withoutAPortalItIsLight)
{
    const DesktopScheme scheme(bus("program"));
    EXPECT_EQ(scheme.shade(), Shade::light);
}

TEST_F(DesktopSchemeBus, itReadsThePortalAndFollowsItsChanges)
{
    // Given a portal that says dark; it lives on a thread of its own, since the reading waits.
    QThread thread;
    StubPortal portal;
    QDBusConnection server = bus("portal");
    ASSERT_TRUE(server.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(server.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    portal.moveToThread(&thread);
    thread.start();

    DesktopScheme scheme(bus("program"));
    EXPECT_EQ(scheme.shade(), Shade::dark);
    EXPECT_EQ(portal.asked, QStringLiteral("org.freedesktop.appearance color-scheme"));

    // When it changes to light, then the change is told; another setting is none of ours.
    QSignalSpy changed(&scheme, &DesktopScheme::changed);
    const auto tell = [&](const char* key) {
        QDBusMessage told = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        told << QStringLiteral("org.freedesktop.appearance") << QString::fromLatin1(key) << QVariant::fromValue(QDBusVariant(0U));
        ASSERT_TRUE(server.send(told));
    };
    // The bus needs a moment until it passes the portal's signals on, so they are told until heard.
    for (int round = 0; round < 50 && changed.isEmpty(); ++round) {
        tell("accent-color");
        tell("color-scheme");
        changed.wait(100);
    }
    EXPECT_EQ(scheme.shade(), Shade::light);
    EXPECT_EQ(changed.count(), 1);
    thread.quit();
    thread.wait();
}

#include "DesktopSchemeTest.moc"
