// Whether the desktop asks for light or dark windows, as its settings portal tells it.
#pragma once

#include "ui/kit/ColourTable.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

class DesktopScheme : public QObject {
    Q_OBJECT
public:
    /// Listens on the bus for changes. A bus without a portal, or no bus at all, means light.
    explicit DesktopScheme(const QDBusConnection& bus, QObject* parent = nullptr);

    Shade shade() const { return m_shade; }
    /// The portal's answer read: 1 is dark, everything else light. Answers arrive wrapped in one or two variants.
    static Shade shadeOf(const QVariant& answer);

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void takeSetting(const QString& nameSpace, const QString& key, const QDBusVariant& value);

private:
    Shade read();
    void take(Shade shade);

    QDBusConnection m_bus;
    Shade m_shade = Shade::light;
};
