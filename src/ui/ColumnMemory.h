// Keeps the widths a person gives to the columns of a list: in the list's state, and between runs. Until somebody gives one, all columns
// share the room there is, so that none lies out of sight.
#pragma once

#include <QObject>
#include <QTimer>

#include <vector>

class QHeaderView;
struct ListState;

class ColumnMemory : public QObject {
    Q_OBJECT
public:
    /// Takes the widths of the last run over into the list. name: what they are remembered under; empty when they are not.
    ColumnMemory(ListState& list, QHeaderView* header, const QString& name);

    /// Gives the columns of the view their widths.
    void show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void recall();
    void take(int section);
    std::vector<int> widthsToShow() const;
    void remember() const;

    ListState& m_list;
    QHeaderView* m_header;
    QString m_name;
    QTimer m_delay;
    /// Somebody gave widths, in this run or an earlier one.
    bool m_given = false;
    /// While the program sets widths, nothing is taken for a wish.
    bool m_showing = false;
};
