// Two or three words of which exactly one holds, side by side: "%" or "£" before a discount. Arrow keys move the choice.
#pragma once

#include <QFrame>

class QButtonGroup;

class SegmentedChoice : public QFrame {
    Q_OBJECT
public:
    explicit SegmentedChoice(const QStringList& titles, QWidget* parent = nullptr);

    /// -1 when there are no titles.
    int index() const;
    /// Chooses without telling chosen(). An index there is no title for changes nothing.
    void setIndex(int index);
    QStringList titles() const;
    /// Replaces the titles; the choice stays at its index where there is one.
    void setTitles(const QStringList& titles);
    /// What the choice is about, for assistive programs: read before each title.
    void setName(const QString& name);

Q_SIGNALS:
    /// The person chose.
    void chosen(int index);

private:
    void nameButtons();

    QButtonGroup* m_buttons;
    QString m_name;
};
