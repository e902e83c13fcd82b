// The top of a list page: its heading, the search field and the choice of what is shown, over a line.
#pragma once

#include <QWidget>

class ChoiceBox;
class Label;
class QHBoxLayout;
class SearchField;

class PageHeader : public QWidget {
    Q_OBJECT
public:
    PageHeader(const QString& title, const QString& searchPlaceholder, QWidget* parent = nullptr);

    void setTitle(const QString& title);
    SearchField* searchField() const { return m_search; }
    /// The choice of what is shown, made when first asked for.
    ChoiceBox* filter();
    /// A further control left of the search field.
    void addControl(QWidget* control);

private:
    Label* m_title;
    SearchField* m_search;
    ChoiceBox* m_filter = nullptr;
    QHBoxLayout* m_row;
};
