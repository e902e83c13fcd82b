#include "ui/Program.h"

#include "ui/kit/SheetStack.h"
#include "ui/shell/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QWindow>

namespace {

/// Settings reach the disk this long after a change.
constexpr int settingsInterval = 2'000;
/// How often files that could not be written are tried again.
constexpr int retryInterval = 20'000;

/// A screen that does not show the window keeps nobody waiting longer than this.
constexpr int longestPaint = 500;

/// Ends the loop when the window was painted for the first time.
class ExposeWatch : public QObject {
public:
    ExposeWatch(QWindow& window, QEventLoop& loop) : m_loop(loop) { window.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        // It is painted while the event is handled.
        if (event->type() == QEvent::Expose)
            QMetaObject::invokeMethod(&m_loop, &QEventLoop::quit, Qt::QueuedConnection);
        return false;
    }

private:
    QEventLoop& m_loop;
};

} // namespace

QString Program::resourceFolder()
{
    const QDir here(QApplication::applicationDirPath());
    for (const char* candidate : {"resources", "../resources", "../share/vendaro"}) {
        if (here.exists(QString::fromLatin1(candidate) + "/stationary"))
            return here.absoluteFilePath(QString::fromLatin1(candidate));
    }
    return here.absoluteFilePath("../share/vendaro");
}

VendaroDesktop Program::desktop()
{
    return {m_alerts, m_beeper, m_clock, m_user, m_panels, m_opener, m_printing, m_clipboard, resourceFolder(), {},
        QStringLiteral(VENDARO_VERSION), &m_desktopBook, &m_longWork};
}

Program::Program() : m_vendaro(desktop())
{
    m_settingsTimer.setSingleShot(true);
    m_vendaro.settingsStore().onDirty = [this] { m_settingsTimer.start(settingsInterval); };
    connect(&m_settingsTimer, &QTimer::timeout, this, &Program::keepSettings);
    connect(&m_retryTimer, &QTimer::timeout, this, [this] { m_vendaro.retry(); });
}

Program::~Program()
{
    end();
}

void Program::start()
{
    m_vendaro.start();
    m_windows = std::make_unique<Windows>(m_vendaro);
    // Not QApplication::quit(): it asks every window to close first, and the main window answers that by wanting to quit.
    connect(
        &m_windows->main(), &MainWindow::quitWanted, qApp, [] { QApplication::exit(); }, Qt::QueuedConnection);
    showWindow();
    m_vendaro.finishLaunching();
    m_retryTimer.start(retryInterval);
}

/// The window is painted before its lists are made and the database is read. What the person clicks or types meanwhile waits until it is.
void Program::showWindow()
{
    MainWindow& window = m_windows->main();
    window.show();
    QEventLoop painting;
    const ExposeWatch watch(*window.windowHandle(), painting);
    QTimer::singleShot(longestPaint, &painting, &QEventLoop::quit);
    painting.exec(QEventLoop::ExcludeUserInputEvents);
    window.makeLists();
}

int Program::run()
{
    // Starting asks questions, and whoever ends the program meanwhile must be heard.
    QTimer::singleShot(0, this, &Program::start);
    const int status = QApplication::exec();
    end();
    return status;
}

void Program::keepSettings()
{
    if (!m_vendaro.keepSettings())
        m_settingsTimer.start(retryInterval);
}

void Program::end()
{
    if (!beginEnding())
        return;
    // Cancelled, its sheet would read the database anew.
    m_vendaro.getPrefsController().newDatabase.close();
    SheetStack::instance().cancelAll();
    m_vendaro.quit();
}

void Program::endWithoutScreen()
{
    if (beginEnding())
        m_vendaro.writeForGood();
}

/// Answers whether there is something to end.
bool Program::beginEnding()
{
    if (std::exchange(m_ended, true) || !m_windows)
        return false;
    m_vendaro.settingsStore().onDirty = nullptr;
    m_settingsTimer.stop();
    m_retryTimer.stop();
    return true;
}
