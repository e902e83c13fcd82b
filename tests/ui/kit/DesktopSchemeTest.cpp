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

} // namespace

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

TEST_F(DesktopSchemeBus, itReadsThePortal)
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

    thread.quit();
    thread.wait();
}

TEST(DesktopScheme, followsWhatThePortalTellsOfItsOwnSetting)
{
    DesktopScheme scheme(QDBusConnection(QStringLiteral("there is none")));
    QSignalSpy changed(&scheme, &DesktopScheme::changed);
    const auto tell = [&scheme](const char* key, unsigned value) {
        // The way the bus calls it.
        return QMetaObject::invokeMethod(&scheme, "takeSetting", Q_ARG(QString, QStringLiteral("org.freedesktop.appearance")),
            Q_ARG(QString, QString::fromLatin1(key)), Q_ARG(QDBusVariant, QDBusVariant(value)));
    };

    ASSERT_TRUE(tell("accent-color", 1));
    EXPECT_EQ(scheme.shade(), Shade::light);
    ASSERT_TRUE(tell("color-scheme", 1));
    EXPECT_EQ(scheme.shade(), Shade::dark);
    ASSERT_TRUE(tell("color-scheme", 0));
    EXPECT_EQ(scheme.shade(), Shade::light);
    EXPECT_EQ(changed.count(), 2);
}

#include "DesktopSchemeTest.moc"
