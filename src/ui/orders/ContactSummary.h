// A contact as an order's editor shows it: who it is, how to reach them, and the buttons to choose another.
#pragma once

#include <QWidget>

class FormGrid;
class OrderForm;
class QVBoxLayout;
class TextField;

class ContactSummary : public QWidget {
    Q_OBJECT
public:
    /// prefix: "contact" or "contact2", as the form's fields are called.
    ContactSummary(OrderForm& form, const QString& prefix, QWidget* parent = nullptr);

private:
    void showDetails();

    OrderForm& m_form;
    TextField& m_name;
    TextField& m_details;
    class ElidedLabel* m_title;
    QVBoxLayout* m_column;
    QWidget* m_grid = nullptr;
};
