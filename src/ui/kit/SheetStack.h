// The sheets that are open, the newest last. Keeps what stands behind them from being clicked, typed into or closed.
#pragma once

#include <QObject>
#include <QPointer>

class Sheet;
class QWidget;

class SheetStack : public QObject {
    Q_OBJECT
public:
    static SheetStack& instance();

    void add(Sheet* sheet);
    void remove(Sheet* sheet);
    /// The newest open sheet, or none.
    Sheet* top() const;
    /// Cancels every open sheet, newest first, as the program quits.
    void cancelAll();
    /// Whether an open sheet keeps the widget from being used.
    bool isBlocked(const QWidget* widget) const;
    /// The window can be used whatever sheets are open, unless one stands on it.
    static void leaveUsable(QWidget& window);
    /// The window that the next dialog belongs to: the active one. A dialog that was just closed may still be the active window for a
    /// moment and will soon be gone: then what it stood on. None without a window on the screen.
    static QWidget* frontWindow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<Sheet*> m_open;
};
