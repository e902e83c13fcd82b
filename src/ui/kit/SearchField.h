// A search field: the glass at its start, a button that empties it at its end. It can steer a list while the keyboard stays in it.
#pragma once

#include <QLineEdit>
#include <QPointer>

class QAbstractItemView;

class SearchField : public QLineEdit {
    Q_OBJECT
public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

    /// Up, Down and the page keys move in the view, and Return activates its row; the view shows its selection as if it had the keyboard.
    void steer(QAbstractItemView* view);

Q_SIGNALS:
    /// Esc in an empty field: whoever opened the search may want to close it.
    void abandoned();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool steered(QKeyEvent* event);
    void empty();

    QPointer<QAbstractItemView> m_view;
    QAction* m_clear;
};
