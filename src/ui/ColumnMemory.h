// Keeps the widths a person gives to the columns of a list: in the list's state, and between runs.
#pragma once

#include <QObject>
#include <QTimer>

class QHeaderView;
struct ListState;

class ColumnMemory : public QObject {
    Q_OBJECT
public:
    /// Takes the widths of the last run over into the list. name: what they are remembered under; empty when they are not.
    ColumnMemory(ListState& list, QHeaderView* header, const QString& name);

    /// While the columns are set up by the program, nothing is taken for a wish.
    void setPaused(bool paused) { m_paused = paused; }

private:
    void recall();
    void take();
    void remember() const;

    ListState& m_list;
    QHeaderView* m_header;
    QString m_name;
    QTimer m_delay;
    bool m_paused = false;
};
