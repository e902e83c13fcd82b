#include "ui/WindowMemory.h"

#include <QDir>
#include <QScreen>
#include <QSettings>
#include <QWidget>

namespace {

/// What the desktop's own frame needs around a window.
constexpr QSize roomForFrame(16, 48);

QString windowSettingsPath()
{
    return QDir::homePath() + "/Library/Preferences/Vendaro.windows.ini";
}

/// What is kept already is not written anew: the file is flushed to the disk, and whoever closes a window waits for that.
void keepWindowSetting(const QString& key, const QByteArray& value)
{
    QSettings settings(windowSettingsPath(), QSettings::IniFormat);
    if (settings.value(key).toByteArray() != value)
        settings.setValue(key, value);
}

} // namespace

void WindowMemory::restore(QWidget& window, const QString& name)
{
    const QByteArray kept = QSettings(windowSettingsPath(), QSettings::IniFormat).value("frame/" + name).toByteArray();
    if (!window.restoreGeometry(kept))
        window.resize(window.size().boundedTo(window.screen()->availableSize() - roomForFrame));
}

void WindowMemory::remember(const QWidget& window, const QString& name)
{
    keepWindowSetting("frame/" + name, window.saveGeometry());
}

QByteArray WindowMemory::state(const QString& name)
{
    return QSettings(windowSettingsPath(), QSettings::IniFormat).value("state/" + name).toByteArray();
}

void WindowMemory::rememberState(const QString& name, const QByteArray& state)
{
    keepWindowSetting("state/" + name, state);
}
