// A small business on the headless application, used by one command at a time while faults may strike. What is asked of the program and
// what it says of it goes into a journal that no fault reaches.
#pragma once

#include "app/Vendaro.h"
#include "support/FakeDesktop.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Where one run of the shop leaves its traces; both lie outside the watched folder.
struct ShopTraces {
    /// The file the journal is appended to.
    QString journal;
    /// The folder that gets a copy of the home after each request; empty for none.
    QString marks;
    /// The login name of whoever uses the shop.
    QString user = "ada";
};

/// The fault that the library of faulty calls is to give from now on; see there. At 0 it only counts, and in no folder it does neither.
struct FaultOrder {
    std::string folder;
    /// The file that receives the counts.
    std::string counts;
    std::string at = "0";
    std::string kind;
    std::string last = "once";
};
void beginFaults(const FaultOrder& order);

/// One line an event, its parts kept apart by tabs; a line is in the file when say() returns.
class Journal {
public:
    explicit Journal(const QString& path);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    void say(const char* event, const QString& text);
    /// Hears what is said, too.
    std::function<void(const char* event, const QString& text)> listener;

private:
    int m_file;
};

/// Takes every question's first button, but does unlock; tells each alert.
class JournalAlerts : public Alerts {
public:
    explicit JournalAlerts(Journal& journal) : m_journal(journal) { }
    using Alerts::ask;
    int ask(const Alert& alert) override;
    const QString& lastTitle() const { return m_lastTitle; }
    /// Answers instead when it knows an answer.
    std::function<std::optional<int>(const Alert&)> answer;

private:
    Journal& m_journal;
    QString m_lastTitle;
};

class ChosenHome : public User {
public:
    ChosenHome(QString home, QString login) : m_home(std::move(home)), m_login(std::move(login)) { }
    QString loginName() const override { return m_login; }
    QString home() const override { return m_home; }

private:
    QString m_home;
    QString m_login;
};

/// Answers every panel with the one path.
class ChosenPath : public FilePanels {
public:
    std::optional<QString> openFile(const QString&) override { return path; }
    std::optional<QString> saveFile(const SavePanel&) override { return path; }
    QString path;
};

class Shop {
public:
    Shop(const QString& home, const ShopTraces& traces);
    ~Shop();

    void start();
    void quit();
    /// Something the person asks for: told as asked, then as saved, or as unsaved with the reason that is shown for it. work answers what
    /// went wrong beside the records' own files; empty when nothing did.
    void request(const char* what, const std::function<QString()>& work);

    Vendaro& app() { return *m_app; }
    OrderManager& orders() { return app().getOrderManager(); }
    BOMManager& lines() { return app().getBOMManager(); }
    ItemManager& items() { return app().getItemManager(); }
    ContactManager& contacts() { return app().getContactManager(); }
    PrefsController& preferences() { return app().getPrefsController(); }
    const QString& home() const { return m_home; }
    QString supportFolder() const { return m_home + "/Library/Application Support/Vendaro"; }
    QString databaseFolder() const { return supportFolder() + "/vendarodatabase.vendb"; }
    const QString& lastAlert() const { return m_alerts.lastTitle(); }
    ChosenPath& panels() { return m_panels; }
    JournalAlerts& alerts() { return m_alerts; }
    FakeClock& clock() { return m_clock; }

    /// Writes down what is told at this moment, for commands that need it in the journal.
    Journal& journal() { return m_journal; }

private:
    void mark();

    QString m_home;
    QString m_marks;
    int m_nextMark = 1;
    int m_told = 0;
    Journal m_journal;
    JournalAlerts m_alerts;
    FakeBeeper m_beeper;
    FakeClock m_clock;
    ChosenHome m_user;
    ChosenPath m_panels;
    FakeOpener m_opener;
    FakePrinting m_printing;
    FakeClipboard m_clipboard;
    std::unique_ptr<Vendaro> m_app;
};

/// What the shop can be asked for, by name; none for an unknown name.
using ShopCommand = void (*)(Shop& shop);
ShopCommand shopCommand(const QString& name);
/// In the order they are run.
QStringList shopCommands();
