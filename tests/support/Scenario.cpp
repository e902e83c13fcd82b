#include "support/Scenario.h"

#include "foundation/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

Scenario::Scenario() : resources(PROJECT_RESOURCES)
{
    setLogSink([this](std::string_view line) {
        const std::lock_guard guard(m_logMutex);
        m_log += toQString(line);
    });
}

Scenario::~Scenario()
{
    m_app.reset();
    setLogSink({});
}

QStringList Scenario::log() const
{
    const std::lock_guard guard(m_logMutex);
    return m_log;
}

VendaroDesktop Scenario::desktop()
{
    VendaroDesktop desktop {alerts, beeper, clock, user, panels, opener, printing, clipboard, resources, locale};
    desktop.longWork = &longWork;
    return desktop;
}

void Scenario::start()
{
    startWatched([](Vendaro&) {});
}

void Scenario::startWatched(const std::function<void(Vendaro&)>& watch)
{
    m_app = std::make_unique<Vendaro>(desktop());
    watch(*m_app);
    m_app->start();
    m_app->finishLaunching();
}

void Scenario::startListening(const std::function<void(Vendaro&)>& listen)
{
    m_app = std::make_unique<Vendaro>(desktop());
    m_app->start();
    listen(*m_app);
    m_app->finishLaunching();
}

void Scenario::quit()
{
    if (m_app)
        m_app->quit();
    m_app.reset();
}

void Scenario::restart()
{
    quit();
    start();
}

void Scenario::crash()
{
    m_app.reset();
}

QString Scenario::supportFolder() const
{
    return home() + "/Library/Application Support/Vendaro";
}

QString Scenario::databaseFolder() const
{
    return supportFolder() + "/vendarodatabase.vendb";
}

QString Scenario::settingsPath() const
{
    return home() + "/Library/Preferences/Vendaro.plist";
}

QByteArray Scenario::readFile(const QString& name) const
{
    QFile file(databaseFolder() + '/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Scenario::hasFile(const QString& name) const
{
    return QFileInfo::exists(databaseFolder() + '/' + name);
}

void Scenario::writeFile(const QString& name, const QByteArray& bytes) const
{
    ASSERT_TRUE(QDir().mkpath(databaseFolder()));
    QFile file(databaseFolder() + '/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void Scenario::writeSettings(const QByteArray& keysAndValues) const
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(settingsPath()).path()));
    QFile file(settingsPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray bytes = document("<dict>\n" + keysAndValues + "\n</dict>");
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray Scenario::document(const QByteArray& value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n"
        + value + "\n</plist>\n";
}
