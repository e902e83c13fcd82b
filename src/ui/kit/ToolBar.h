// The bar of commands under the menus: an icon over a word, spaces between groups. Every button can be reached by Tab.
#pragma once

#include <QToolBar>

class QToolButton;

class ToolBar : public QToolBar {
    Q_OBJECT
public:
    enum class Show { iconAndText, iconOnly, textOnly };

    explicit ToolBar(const QString& name, QWidget* parent = nullptr);

    void addCommand(QAction* command);
    /// Two commands side by side over one word: starting and stopping the clock.
    void addPair(const QString& title, QAction* first, QAction* second);
    /// A fixed space of 20 px.
    void addGap();
    /// Room that pushes what follows to the right.
    void addFlexibleGap();
    /// Takes everything out; the commands stay their window's.
    void removeAll();
    void setShownParts(Show show);
    Show shownParts() const { return m_show; }

    static constexpr int gapWidth = 20;

private:
    void dressButton(QAction* command);

    Show m_show = Show::iconAndText;
};
