// Every window of the program: made once, opened and closed by the forms and documents they show. An editor is made when its form opens
// for the first time, so that starting does not wait for windows that nobody asked for.
#pragma once

#include <QObject>

#include <memory>

class ContactWindow;
class Form;
class HelpKey;
class HelpWindow;
class ItemEditor;
class MainWindow;
class NotepadWindow;
class OrderEditor;
class NewDatabasePresenter;
class PickerPresenter;
class SettingsWindow;
class TenderSheet;
class TipsWindow;
class UpdateWindow;
class Vendaro;

class Windows : public QObject {
    Q_OBJECT
public:
    explicit Windows(Vendaro& vendaro);
    ~Windows() override;

    MainWindow& main() { return *m_main; }
    OrderEditor& order();
    ItemEditor& item();
    SettingsWindow& settings();
    /// The manual, opened at the topic; at its index when there is no such page. In the browser while a dialog keeps every other window
    /// of the program from being used.
    void showHelp(const QString& topic);

private:
    void showWords();
    void showTips();
    void showNotepad();
    void showUpdate();
    template <class Make>
    void whenFirstOpened(const Form& form, Make make);
    template <class ContactForm>
    void makeWhenFirstOpened(std::unique_ptr<ContactWindow>& window, ContactForm& form);

    Vendaro& m_vendaro;
    std::unique_ptr<MainWindow> m_main;
    std::unique_ptr<OrderEditor> m_order;
    /// The order window's.
    TenderSheet* m_tender = nullptr;
    std::unique_ptr<ItemEditor> m_item;
    std::unique_ptr<ContactWindow> m_individual;
    std::unique_ptr<ContactWindow> m_company;
    std::unique_ptr<ContactWindow> m_companyContact;
    std::unique_ptr<SettingsWindow> m_settings;
    std::unique_ptr<PickerPresenter> m_picker;
    std::unique_ptr<TipsWindow> m_tips;
    std::unique_ptr<NotepadWindow> m_notepad;
    std::unique_ptr<UpdateWindow> m_update;
    std::unique_ptr<HelpWindow> m_help;
    std::unique_ptr<HelpKey> m_helpKey;
    std::unique_ptr<NewDatabasePresenter> m_newDatabase;
};
