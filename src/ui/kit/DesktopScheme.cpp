#include "ui/kit/DesktopScheme.h"

#include <QDBusMessage>

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colourScheme = QStringLiteral("color-scheme");
/// A portal that hangs must not keep the program from starting.
constexpr int patienceMilliseconds = 700;

} // namespace

DesktopScheme::DesktopScheme(const QDBusConnection& bus, QObject* parent) : QObject(parent), m_bus(bus)
{
    if (!m_bus.isConnected())
        return;
    m_bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
        SLOT(takeSetting(QString, QString, QDBusVariant)));
    m_shade = read();
}

Shade DesktopScheme::shadeOf(const QVariant& answer)
{
    QVariant value = answer;
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt() == 1 ? Shade::dark : Shade::light;
}

Shade DesktopScheme::read()
{
    QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    question << appearance << colourScheme;
    const QDBusMessage answer = m_bus.call(question, QDBus::Block, patienceMilliseconds);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return Shade::light;
    return shadeOf(answer.arguments().constFirst());
}

void DesktopScheme::takeSetting(const QString& nameSpace, const QString& key, const QDBusVariant& value)
{
    if (nameSpace == appearance && key == colourScheme)
        take(shadeOf(value.variant()));
}

void DesktopScheme::take(Shade shade)
{
    if (shade == m_shade)
        return;
    m_shade = shade;
    Q_EMIT changed();
}
