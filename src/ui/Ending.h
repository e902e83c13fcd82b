// The ways a running program ends: all of them leave the event loop, after which everything is written.
#pragma once

#include <QObject>

class QSocketNotifier;

class Ending : public QObject {
    Q_OBJECT
public:
    /// From here on the terminate, hang-up and interrupt signals and the end of the desktop's session end the event loop.
    Ending();
    ~Ending() override;

private:
    QSocketNotifier* m_notifier;
};
