// The ways a running program ends: all of them leave the event loop, after which everything is written. Only a lost screen leaves no time
// for that: Qt ends the program on the spot.
#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

class Ending : public QObject {
    Q_OBJECT
public:
    /// Whoever read what the program logs may be gone: that is no reason to end. To be asked for before anything is logged.
    static void ignoreClosedPipes();

    /// From here on the terminate, hang-up and interrupt signals and the end of the desktop's session end the event loop.
    Ending();
    ~Ending() override;

    /// Called when the connection to the screen broke, as the last thing before the program ends: what is to be written has to be written
    /// now, and without the windows.
    std::function<void()> onScreenLost;

private:
    QSocketNotifier* m_notifier;
};
