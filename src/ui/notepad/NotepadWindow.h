// The window of the notepad. What is typed is on disk two seconds later, and when the window closes; until then, and when it cannot be
// saved, the window says so.
#pragma once

#include <QMainWindow>
#include <QTime>
#include <QTimer>

class FormatBar;
class Label;
class MessageBar;
class Notepad;
class NotepadText;

class NotepadWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit NotepadWindow(Notepad& notepad);
    ~NotepadWindow() override;

    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makePage();
    void makeStatusBar();
    void addKeys();
    void showDocument();
    void showState();
    void save();
    void saveLater();

    Notepad& m_notepad;
    NotepadText* m_text;
    FormatBar* m_bar;
    MessageBar* m_readOnlyBar = nullptr;
    MessageBar* m_damageBar = nullptr;
    Label* m_note = nullptr;
    Label* m_saved = nullptr;
    /// When the present text was last saved; not valid before the first time.
    QTime m_savedAt;
    /// Not started anew by every key: whoever goes on typing has everything saved but the last two seconds.
    QTimer m_saving;
};
