// What a page shows while it has nothing: what is missing, what to do, and the buttons for it; and the rows of the first start.
#pragma once

#include "ui/kit/Button.h"

#include <QWidget>

class Label;
class QHBoxLayout;

class EmptyState : public QWidget {
    Q_OBJECT
public:
    EmptyState(const QString& iconName, const QString& missing, const QString& whatToDo, QWidget* parent = nullptr);

    void setTexts(const QString& missing, const QString& whatToDo);
    void addButton(QWidget* button);

private:
    Label* m_missing;
    Label* m_whatToDo;
    QHBoxLayout* m_buttons;
};

/// A wide button with an icon, a title and a line about it.
class ActionCard : public Button {
    Q_OBJECT
public:
    /// first marks the one most people want: its icon is in the accent colour.
    enum class Rank { first, other };
    ActionCard(const QString& iconName, const QString& title, const QString& detail, Rank rank = Rank::other, QWidget* parent = nullptr);
    void setTitle(const QString& title);
    QSize sizeHint() const override;

private:
    Label* m_title;
};
