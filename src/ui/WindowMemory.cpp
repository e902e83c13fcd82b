#include "ui/WindowMemory.h"

#include <QDir>
#include <QSettings>
#include <QWidget>

namespace {

QString windowSettingsPath()
{
    return QDir::homePath() + "/Library/Preferences/Vendaro.windows.ini";
}

} // namespace

void WindowMemory::restore(QWidget& window, const QString& name)
{
    window.restoreGeometry(QSettings(windowSettingsPath(), QSettings::IniFormat).value("frame/" + name).toByteArray());
}

void WindowMemory::remember(const QWidget& window, const QString& name)
{
    QSettings(windowSettingsPath(), QSettings::IniFormat).setValue("frame/" + name, window.saveGeometry());
}

QByteArray WindowMemory::state(const QString& name)
{
    return QSettings(windowSettingsPath(), QSettings::IniFormat).value("state/" + name).toByteArray();
}

void WindowMemory::rememberState(const QString& name, const QByteArray& state)
{
    QSettings(windowSettingsPath(), QSettings::IniFormat).setValue("state/" + name, state);
}
