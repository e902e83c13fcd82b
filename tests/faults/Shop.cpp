#include "Shop.h"

#include "desktop/AlertTexts.h"
#include "desktop/TextTable.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

void beginFaults(const FaultOrder& order)
{
    setenv("VENDARO_FAULT_FOLDER", order.folder.c_str(), 1);
    setenv("VENDARO_FAULT_COUNT", order.counts.c_str(), 1);
    setenv("VENDARO_FAULT_AT", order.at.c_str(), 1);
    setenv("VENDARO_FAULT_KIND", order.kind.c_str(), 1);
    setenv("VENDARO_FAULT_LAST", order.last.c_str(), 1);
    if (auto* begin = reinterpret_cast<void (*)()>(dlsym(RTLD_DEFAULT, "vendaroFaultsBegin")))
        begin();
}

Journal::Journal(const QString& path) : m_file(::open(path.toStdString().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)) { }

Journal::~Journal()
{
    ::close(m_file);
}

void Journal::say(const char* event, const QString& text)
{
    QString oneLine = text;
    oneLine.replace('\n', ' ').replace('\r', ' ').replace('\t', ' ');
    const std::string line = event + ('\t' + oneLine.toStdString()) + '\n';
    if (::write(m_file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        ::_exit(3);
    if (listener)
        listener(event, oneLine);
}

int JournalAlerts::ask(const Alert& alert)
{
    m_journal.say("alert", alert.title + ": " + alert.text);
    m_lastTitle = alert.title;
    if (const std::optional<int> known = answer ? answer(alert) : std::nullopt)
        return *known;
    return alert.buttons.size() > 1 && alert.title == localText(alerts::unlockDatabase.title) ? 1 : 0;
}

Shop::Shop(const QString& home, const ShopTraces& traces)
    : m_home(home)
    , m_marks(traces.marks)
    , m_journal(traces.journal)
    , m_alerts(m_journal)
    , m_user(home, traces.user)
{
}

Shop::~Shop() = default;

void Shop::start()
{
    m_app = std::make_unique<Vendaro>(
        VendaroDesktop {m_alerts, m_beeper, m_clock, m_user, m_panels, m_opener, m_printing, m_clipboard, PROJECT_RESOURCES, "en_GB"});
    QObject::connect(&m_app->session(), &DatabaseSession::damageFound, m_app.get(), [this](const QStringList& sentences) {
        m_told += static_cast<int>(sentences.size());
        for (const QString& sentence : sentences)
            m_journal.say("told", sentence);
    });
    m_app->start();
    m_app->finishLaunching();
    m_journal.say("started", m_app->session().isReadOnly() ? "read-only" : "open");
}

void Shop::request(const char* what, const std::function<QString()>& work)
{
    m_journal.say("asked", what);
    const int toldBefore = m_told;
    QString trouble = work();
    if (m_told != toldBefore)
        trouble += " something was told";
    app().folder().drain();
    if (const QString reason = app().folder().unsavedReason(); !reason.isEmpty())
        trouble += ' ' + reason;
    if (app().session().isReadOnly())
        trouble += " read-only";
    m_journal.say(trouble.isEmpty() ? "saved" : "unsaved", QString::fromUtf8(what) + ' ' + trouble);
    mark();
}

void Shop::quit()
{
    request("quit", [this] {
        app().quit();
        const Result<void> settings = app().settingsStore().flush();
        return settings ? QString() : QString::fromStdString(settings.error().message);
    });
}

void Shop::mark()
{
    if (m_marks.isEmpty())
        return;
    const std::string place = (m_marks + '/' + QString::number(m_nextMark++)).toStdString();
    std::filesystem::copy(m_home.toStdString(), place, std::filesystem::copy_options::recursive);
}
