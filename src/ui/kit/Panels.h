// The parts of a window around its content: the panel at the right of an editor, the bar at its foot, the heading at its top.
#pragma once

#include "ui/kit/Label.h"

#include <QFrame>

class QHBoxLayout;
class QVBoxLayout;

/// A panel on the surface colour with a line at its left; its layout is a column without spacing.
class SidePanel : public QWidget {
    Q_OBJECT
public:
    enum class Width { editor = 316, checkout = 372 };
    explicit SidePanel(Width width = Width::editor, QWidget* parent = nullptr);

    QVBoxLayout* column() const { return m_column; }
    /// A line between two groups, with 16 px before and after it.
    void addLine();

private:
    QVBoxLayout* m_column;
};

/// The bar at the foot of a window: documents and extra commands left, Cancel and the action right.
class FooterBar : public QFrame {
    Q_OBJECT
public:
    enum class Place { window, sheet };
    explicit FooterBar(Place place = Place::window, QWidget* parent = nullptr);

    /// Distance of the bar's content from its sides, where it has to meet the content above; 24 px unless told.
    void setSideMargins(int left, int right);
    void addLeft(QWidget* widget);
    void addRight(QWidget* widget);
    /// A small note behind what stands left; screen readers are told of it.
    void setNote(const QString& note);

private:
    QHBoxLayout* m_row;
    Label* m_note;
};

/// Heading of a record: its number or name, and under it who or what it belongs to; buttons at its right.
class RecordHeader : public QWidget {
    Q_OBJECT
public:
    explicit RecordHeader(const QString& title = {}, const QString& subtitle = {}, QWidget* parent = nullptr);

    void setTitle(const QString& title);
    void setSubtitle(const QString& subtitle);
    void addButton(QWidget* button);

private:
    ElidedLabel* m_title;
    ElidedLabel* m_subtitle;
    QHBoxLayout* m_row;
};

/// Heading of a group inside a page, with its buttons at the right.
class GroupHeader : public QWidget {
    Q_OBJECT
public:
    explicit GroupHeader(const QString& title, QWidget* parent = nullptr);
    void setTitle(const QString& title);
    void addButton(QWidget* button);

private:
    Label* m_title;
    QHBoxLayout* m_row;
};
