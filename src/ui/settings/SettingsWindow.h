// The settings: a list of pages at the side, the chosen one beside it. What is edited counts at once; OK commits it.
#pragma once

#include "ui/EditorWindow.h"

class PrefsController;
class QStackedWidget;
class SettingsPage;
class SideBar;
class Vendaro;

class SettingsWindow : public EditorWindow {
    Q_OBJECT
public:
    explicit SettingsWindow(Vendaro& vendaro);

    SideBar* pages() const { return m_pages; }

protected:
    /// Nothing: the form keeps what was edited.
    bool hasSomethingToLose() const override { return false; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addPages(Vendaro& vendaro);
    void addPage(const char* icon, const char* topic, SettingsPage* page);
    QWidget* makeFooter();
    void turnPage(int steps);
    /// The page that was open the last time, with the keyboard on its entry.
    void beginWhereItEnded();

    PrefsController& m_preferences;
    SideBar* m_pages;
    QStackedWidget* m_stack;
};
