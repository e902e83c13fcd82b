// The running program: the real desktop, the application on it, its windows, and the timers that keep things safe.
#pragma once

#include "app/Vendaro.h"
#include "ui/DesktopBook.h"
#include "ui/LongWorkCard.h"
#include "ui/RealDesktop.h"
#include "ui/Windows.h"

#include <QTimer>

class Program : public QObject {
    Q_OBJECT
public:
    Program();
    ~Program() override;

    /// Starts, and runs until the program ends; answers its exit status.
    int run();
    /// Settings, windows, then the database.
    void start();
    /// Everything is written; the windows are still there, empty.
    void end();
    /// The same without touching a window, which nobody sees any more.
    void endWithoutScreen();

    Vendaro& vendaro() { return m_vendaro; }
    Windows& windows() { return *m_windows; }

    /// Where templates and the sample business lie: beside the program as built, or where they are installed.
    static QString resourceFolder();

private:
    VendaroDesktop desktop();
    void showWindow();
    void keepSettings();
    bool beginEnding();

    RealAlerts m_alerts;
    RealBeeper m_beeper;
    RealClock m_clock;
    RealUser m_user;
    RealFilePanels m_panels;
    RealOpener m_opener;
    RealPrinting m_printing;
    RealClipboard m_clipboard;
    DesktopBook m_desktopBook;
    LongWorkCard m_longWork;
    Vendaro m_vendaro;
    std::unique_ptr<Windows> m_windows;
    QTimer m_settingsTimer;
    QTimer m_retryTimer;
    bool m_ended = false;
};
