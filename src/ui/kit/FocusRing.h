// The ring around the control that has the keyboard. One overlay for the whole program; it moves with the focus, from window to window.
#pragma once

#include <QPointer>
#include <QWidget>

class QApplication;

class FocusRing : public QWidget {
    Q_OBJECT
public:
    /// Starts following the focus; the ring belongs to the application from then on.
    static void install(QApplication& application);
    /// The ring goes around the owner when the part has the keyboard.
    static void surround(QWidget* part, QWidget* owner);
    /// No ring for this widget: it shows the keyboard in its own way.
    static void exempt(QWidget* widget);
    /// Whether the widget gets a ring when it has the keyboard.
    static bool isWantedFor(const QWidget* widget);

    /// How far the ring reaches out of its control, in pixels.
    static constexpr int width = 3;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    explicit FocusRing(QWidget* window);
    void follow(QWidget* focus);
    void watch(QWidget* target);
    void unwatch();
    void place();
    QRect controlRect() const;
    int controlRadius() const;
    QRegion visiblePart() const;

    QPointer<QWidget> m_target;
    QList<QPointer<QWidget>> m_watched;

    friend class FocusFollower;
};
