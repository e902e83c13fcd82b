// Where windows stood when they were last closed.
#pragma once

#include <QString>

class QWidget;

class WindowMemory {
public:
    /// Size and place from the last time; without one the window keeps its own size, as far as the screen has room.
    static void restore(QWidget& window, const QString& name);
    static void remember(const QWidget& window, const QString& name);
    /// Anything else of the windows' that is kept between runs, by name.
    static QByteArray state(const QString& name);
    static void rememberState(const QString& name, const QByteArray& state);
};
