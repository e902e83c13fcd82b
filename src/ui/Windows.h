// Every window of the program: made once, opened and closed by the forms and documents they show.
#pragma once

#include <QObject>

#include <memory>

class ContactWindow;
class ItemEditor;
class MainWindow;
class OrderEditor;
class PickerPresenter;
class TenderSheet;
class Vendaro;

class Windows : public QObject {
    Q_OBJECT
public:
    explicit Windows(Vendaro& vendaro);
    ~Windows() override;

    MainWindow& main() { return *m_main; }
    OrderEditor& order() { return *m_order; }
    ItemEditor& item() { return *m_item; }

private:
    void showWords();

    Vendaro& m_vendaro;
    std::unique_ptr<MainWindow> m_main;
    std::unique_ptr<OrderEditor> m_order;
    TenderSheet* m_tender;
    std::unique_ptr<ItemEditor> m_item;
    std::unique_ptr<ContactWindow> m_individual;
    std::unique_ptr<ContactWindow> m_company;
    std::unique_ptr<ContactWindow> m_companyContact;
    std::unique_ptr<PickerPresenter> m_picker;
};
