// The pages of a window, one below the other at its left edge. Exactly one is shown; arrow keys go from page to page.
#pragma once

#include <QListWidget>

class SideBar : public QListWidget {
    Q_OBJECT
public:
    explicit SideBar(const QString& name, QWidget* parent = nullptr);

    /// Appends a page; answers its index. The first one is chosen at once, without telling.
    int addPage(const QString& iconName, const QString& title);
    int page() const { return currentRow(); }
    /// Shows a page without telling pageChosen().
    void setPage(int page);
    void setPageTitle(int page, const QString& title);

    static constexpr int barWidth = 184;
    static constexpr int rowHeight = 36;

Q_SIGNALS:
    void pageChosen(int page);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
