// A short framed list of words with icons, one of them chosen: full accent while it has the keyboard, tinted while it has not.
#pragma once

#include <QListWidget>

class PickList : public QListWidget {
    Q_OBJECT
public:
    explicit PickList(const QString& name, QWidget* parent = nullptr);

    enum class Weight { normal, quiet };
    /// quiet entries stand in secondary colours. The icon's name may be empty.
    QListWidgetItem* addEntry(const QString& iconName, const QString& title, Weight weight = Weight::normal);

    /// What stands in the list while it has no entries.
    void setEmptyText(const QString& text);

    static constexpr int rowHeight = 28;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QString m_emptyText;
};
