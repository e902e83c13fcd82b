// The rows of a form: labels in one column, fields in the other. Every label is the buddy of its field and gives it its name.
#pragma once

#include <QGridLayout>

class Label;

class FormGrid : public QGridLayout {
    Q_OBJECT
public:
    /// right: editors. left: side panels and sheets.
    enum class Labels { right, left };
    explicit FormGrid(Labels labels = Labels::right, QWidget* parent = nullptr);

    /// A field as wide as the column, or as wide as told, in pixels.
    Label* addRow(const QString& label, QWidget* field, int width = 0);
    /// Several controls in one row, 8 px apart; the label belongs to the first that takes the keyboard. The last one takes the rest of the
    /// width, unless its width is fixed.
    Label* addRow(const QString& label, const QList<QWidget*>& controls);
    /// A check box or other control in the place of the label.
    void addLabelledBy(QWidget* control, const QList<QWidget*>& controls);
    /// A control over both columns.
    void addWide(QWidget* control);
    /// One sentence about the field, in error colour, in a line of its own below it; an empty one takes the line away. Answers whether
    /// the field stands in this form.
    bool setNote(QWidget* field, const QString& sentence);
    /// Extra room before the next row, in pixels.
    void addGap(int height);
    /// The column of labels is at least this wide, so that forms above each other line up.
    void setLabelWidth(int width);

private:
    Label* makeLabel(const QString& text, QWidget* buddy);
    QHBoxLayout* line(const QList<QWidget*>& controls);

    /// The row the field stands in, -1 when it stands in none.
    int rowOf(QWidget* field) const;

    /// Every row of controls is followed by one for its note, which takes no room while it is empty.
    static constexpr int rowsForOne = 2;
    Labels m_labels;
    int m_row = 0;
};
