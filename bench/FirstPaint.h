// Notes when the first window was painted: the figures are printed once its whole contents are.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <ctime>

class FirstPaint : public QObject {
public:
    enum class Then { exit, goOn };

    explicit FirstPaint(Then then) : m_then(then) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* widget = event->type() == QEvent::Paint && object->isWidgetType() ? static_cast<QWidget*>(object) : nullptr;
        if (widget && !m_seen) {
            m_seen = true;
            // The other widgets of the window are painted before anything that is asked for now.
            QMetaObject::invokeMethod(this, &FirstPaint::painted, Qt::QueuedConnection);
        }
        return QObject::eventFilter(object, event);
    }

private:
    static double secondsOf(clockid_t clock)
    {
        timespec now {};
        clock_gettime(clock, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }
    void painted()
    {
        std::printf("painted-at %.6f\npainted-cpu %.6f\n", secondsOf(CLOCK_MONOTONIC), secondsOf(CLOCK_PROCESS_CPUTIME_ID));
        std::fflush(stdout);
        if (m_then == Then::exit)
            std::_Exit(0);
    }

    Then m_then;
    bool m_seen = false;
};
