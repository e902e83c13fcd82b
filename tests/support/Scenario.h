// A whole application on a temporary home, for tests that tell a story: what the person does, what is asked, what lies
// on disk.
#pragma once

#include "app/Vendaro.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

class Scenario : public testing::Test {
protected:
    Scenario();
    ~Scenario() override;

    /// Starts the program as launching it does: start(), then finishLaunching().
    void start();
    /// The same, with a look at the program before it starts: for signals of the start itself.
    void startWatched(const std::function<void(Vendaro&)>& watch);
    /// The same, with a look between the two, when the windows are made: for what they hear.
    void startListening(const std::function<void(Vendaro&)>& listen);
    /// Quits the program that runs, if any.
    void quit();
    /// Quits and starts again on the same home.
    void restart();
    /// The program stops without quitting: nothing is committed, the lock stays.
    void crash();
    Vendaro& app() { return *m_app; }

    QString home() const { return user.home(); }
    /// "~/Library/Application Support/Vendaro".
    QString supportFolder() const;
    /// The folder of the default database.
    QString databaseFolder() const;
    QString settingsPath() const;
    /// The file of that name in the default database; empty when there is none.
    QByteArray readFile(const QString& name) const;
    bool hasFile(const QString& name) const;
    /// Puts a file into the default database, whose folder is made.
    void writeFile(const QString& name, const QByteArray& bytes) const;
    /// Puts settings into place before the program starts: the lines between <dict> and </dict>.
    void writeSettings(const QByteArray& keysAndValues) const;
    /// The lines logged since the test began.
    QStringList log() const;
    bool logged(const QString& line) const { return log().contains(line); }

    /// A property list around the lines of its one value.
    static QByteArray document(const QByteArray& value);

    FakeAlerts alerts;
    FakeBeeper beeper;
    FakeClock clock;
    FakeUser user;
    FakeFilePanels panels;
    FakeClipboard clipboard;
    FakeOpener opener;
    FakePrinting printing;
    FakeLongWork longWork;
    FakeScheduler scheduler;
    /// Where the program finds templates and the sample business; the project's own by default.
    QString resources;
    std::string locale = "en_GB";

private:
    VendaroDesktop desktop();

    /// The program also logs from the thread that writes.
    mutable std::mutex m_logMutex;
    QStringList m_log;
    std::unique_ptr<Vendaro> m_app;
};
