// The main window's tool bar, as the person arranged it. The arrangement is kept between runs.
#pragma once

#include "ui/shell/ToolBarSheet.h"

#include <QHash>

class MainToolBar : public ToolBar {
    Q_OBJECT
public:
    /// commands: by the identifiers under which they are remembered; they are the window's.
    MainToolBar(const QString& name, QHash<QString, QAction*> commands, QWidget* window);

    /// The sheet that arranges the bar.
    void customise();

    /// Identifiers of the bar as it comes, from left to right.
    static QStringList defaultArrangement();
    /// What can be in the bar, in the order it is offered.
    static QStringList offered();

private:
    void arrange(const QStringList& identifiers);
    void remember(const QStringList& identifiers);
    QList<ToolBarEntry> entries() const;
    void showMenu(const QPoint& place);

    QHash<QString, QAction*> m_commands;
    QStringList m_arrangement;
};
