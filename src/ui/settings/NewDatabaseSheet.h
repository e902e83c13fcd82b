// Asks for the names of a new database, over the window that asked.
#pragma once

#include <QObject>

class NewDatabaseForm;

/// Opens a sheet each time the form is opened, over the active window.
class NewDatabasePresenter : public QObject {
    Q_OBJECT
public:
    explicit NewDatabasePresenter(NewDatabaseForm& form, QObject* parent = nullptr);

private:
    void present();

    NewDatabaseForm& m_form;
};
