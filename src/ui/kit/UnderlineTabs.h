// Tabs told by an underline. Left and Right go from tab to tab while they have the keyboard, Ctrl+Page Up and
// Ctrl+Page Down from anywhere in their window.
#pragma once

#include <QTabBar>
#include <QTabWidget>

class UnderlineTabBar : public QTabBar {
    Q_OBJECT
public:
    explicit UnderlineTabBar(QWidget* parent = nullptr);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTab(QPainter* painter, int index) const;
};

class UnderlineTabs : public QTabWidget {
    Q_OBJECT
public:
    explicit UnderlineTabs(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turn(int steps);
};
