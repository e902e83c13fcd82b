// The desktop as tests play it: nothing is shown, answers are prepared beforehand, and what was asked or handed over is
// kept.
#pragma once

#include "desktop/Alerts.h"
#include "desktop/Desktop.h"
#include "desktop/LongWork.h"

#include <QStringList>
#include <QTemporaryDir>
#include <QTimeZone>

#include <deque>
#include <functional>
#include <vector>

/// Answers alerts in the order their answers were queued. An alert without an answer fails the test and counts as
/// cancelled.
class FakeAlerts : public Alerts {
public:
    using Alerts::ask;
    int ask(const Alert& alert) override;

    /// The index of the button the next unanswered alert gets, or Alerts::cancelled.
    void answer(int button) { m_answers.push_back({button, {}}); }
    /// The next unanswered alert must have a button of that title, which is pressed.
    void answer(const char* button) { m_answers.push_back({cancelled, QString::fromUtf8(button)}); }

    /// Every alert so far, word for word.
    const std::vector<Alert>& asked() const { return m_asked; }
    /// The texts of the alerts so far.
    QStringList texts() const;
    /// Forgets what was asked, not what is still to be answered.
    void forget() { m_asked.clear(); }
    /// How many prepared answers nobody has asked for.
    std::size_t answersLeft() const { return m_answers.size(); }
    /// What happens elsewhere while a question is there.
    std::function<void()> meanwhile;

private:
    struct Answer {
        int button;
        QString title;
    };

    std::deque<Answer> m_answers;
    std::vector<Alert> m_asked;
};

class FakeBeeper : public Beeper {
public:
    void beep() override { ++beeps; }
    int beeps = 0;
};

/// Stands still unless a test moves it.
class FakeClock : public Clock {
public:
    QDateTime now() const override { return moment; }
    QDateTime moment {QDate(2024, 3, 1), QTime(10, 15, 30), Qt::UTC};
};

/// Ada, whose home folder goes when the test ends.
class FakeUser : public User {
public:
    QString loginName() const override { return login; }
    QString home() const override { return m_home.path(); }
    QString login = "ada";

private:
    QTemporaryDir m_home;
};

/// Answers panels with prepared paths; without one the panel fails the test and counts as cancelled.
class FakeFilePanels : public FilePanels {
public:
    std::optional<QString> openFile(const QString& title) override;
    std::optional<QString> saveFile(const SavePanel& panel) override;

    void choose(const QString& path) { m_answers.push_back(path); }
    void cancel() { m_answers.push_back(std::nullopt); }

    QStringList openTitles;
    std::vector<SavePanel> savePanels;

private:
    std::optional<QString> nextAnswer(const QString& title);

    std::deque<std::optional<QString>> m_answers;
};

class FakeLongWork : public LongWork {
public:
    void run(const QString& title, const std::function<void(const GoesOn&)>& work) override
    {
        titles += title;
        work([this](double) { return !stops; });
    }

    /// Whether the person stops whatever is long.
    bool stops = false;
    QStringList titles;
};

class FakeClipboard : public Clipboard {
public:
    QString text() const override { return contents; }
    void setText(const QString& text) override { contents = text; }
    QString contents;
};

class FakeOpener : public Opener {
public:
    void openUrl(const QUrl& url) override { urls.push_back(url); }
    void revealFolder(const QString& path) override { folders.push_back(path); }
    std::vector<QUrl> urls;
    QStringList folders;
};

/// A printer that takes the title and leaves the paper white; accepts says what a cancelled dialog or a failure would.
class FakePrinting : public Printing {
public:
    bool print(const QString& title, const std::function<bool(QPagedPaintDevice&)>& paint) override
    {
        titles += title;
        return accepts && (!device || paint(*device));
    }
    QStringList titles;
    bool accepts = true;
    /// What is painted on; none when nothing is.
    QPagedPaintDevice* device = nullptr;
};

/// Keeps the work until the test lets time pass.
class FakeScheduler : public Scheduler {
public:
    void after(int milliseconds, std::function<void()> work) override;
    /// Runs what falls due in that time, in order of its moment, also what is newly asked for meanwhile.
    void pass(int milliseconds);
    std::size_t waiting() const { return m_works.size(); }

private:
    struct Work {
        qint64 due;
        std::function<void()> run;
    };

    qint64 m_now = 0;
    std::vector<Work> m_works;
};
