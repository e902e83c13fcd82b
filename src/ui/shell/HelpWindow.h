// The manual in a window: its contents at the left, a page at the right, and a search in the page.
#pragma once

#include <QMainWindow>

class Label;
class Manual;
class ManualView;
class PickList;
class Printing;
class QAction;
class SearchField;
class ToolBar;

class HelpWindow : public QMainWindow {
    Q_OBJECT
public:
    HelpWindow(Manual& manual, Printing& printing);
    ~HelpWindow() override;

    /// Comes to the front with the page of the topic; the index when there is none.
    void showTopic(const QString& topic);
    /// The topic of the page that is shown.
    QString topic() const;

private:
    void makeToolBar();
    QAction* addCommand(ToolBar& bar, const char* name, const QString& text, const char* icon, const QList<QKeySequence>& keys);
    void makeContents();
    void makeSearch();
    void search();
    void showPage();
    void showFound(bool found);
    void print();

    Manual& m_manual;
    Printing& m_printing;
    PickList* m_contents;
    ManualView* m_page;
    SearchField* m_search;
    Label* m_found;
};
