// The main window's tool bar: what can be in it and how it comes.
#pragma once

#include "ui/ArrangedToolBar.h"

class MainToolBar : public ArrangedToolBar {
    Q_OBJECT
public:
    /// commands: by the identifiers under which they are remembered; they are the window's.
    MainToolBar(const QString& name, QHash<QString, QAction*> commands, QWidget* window);
};
