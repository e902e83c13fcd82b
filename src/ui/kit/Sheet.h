// A card over the window it belongs to, with the window dimmed behind it. The keyboard stays inside; Esc cancels, Return presses the
// default button. Without a window to stand on, or on one too small for it, the sheet is a window of its own.
#pragma once

#include <QFrame>
#include <QPointer>
#include <QPushButton>

class QVBoxLayout;

class Sheet : public QWidget {
    Q_OBJECT
public:
    /// What may not be used while the sheet is open.
    enum class Blocks { itsWindow, theProgram };
    /// What finished() and exec() answer besides what the sheet's own buttons answer.
    static constexpr int cancelled = -1;
    static constexpr int accepted = 0;

    /// host: any widget of the window to stand on; none for a window of its own.
    explicit Sheet(QWidget* host, Blocks blocks = Blocks::itsWindow);
    ~Sheet() override;

    /// Where the sheet's content goes: a column without spacing; its margins are 24 px unless changed.
    QFrame* card() const { return m_card; }
    QVBoxLayout* column() const { return m_column; }

    void setTitle(const QString& title);
    /// Pressed by Return when no other button has the keyboard.
    void setDefaultButton(QPushButton* button) { m_default = button; }
    /// Has the keyboard when the sheet opens; else the first control that takes it.
    void setFirstFocus(QWidget* widget) { m_firstFocus = widget; }

    bool isOpen() const { return m_open; }
    Blocks blocks() const { return m_blocks; }
    /// The window the sheet stands on; none when it is a window itself.
    QWidget* hostWindow() const { return m_host; }

    void open();
    /// Opens and waits. A sheet that goes away with its window answers cancelled.
    int exec();
    /// Closes with an answer; the keyboard goes back to where it was.
    void finish(int answer);
    void accept() { finish(accepted); }
    void cancel() { finish(cancelled); }

Q_SIGNALS:
    void finished(int answer);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void chooseStand();
    void place();
    void takeFocus();
    QWidget* neighbour(QWidget* from, bool next) const;
    bool takesKeyboard(const QWidget* widget) const;
    void pressDefault();

    QPointer<QWidget> m_host;
    Blocks m_blocks;
    QFrame* m_card;
    QVBoxLayout* m_column;
    QPointer<QPushButton> m_default;
    QPointer<QWidget> m_firstFocus;
    QPointer<QWidget> m_focusBefore;
    bool m_open = false;
};
