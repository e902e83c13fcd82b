// The window of an editor: opens and closes with its form, remembers its place, saves by Ctrl+S and Ctrl+Return, and sends Esc, Ctrl+W
// and the window's own close button to the form's cancel.
#pragma once

#include <QWidget>

class CommandField;
class Form;
class FormBinder;

class EditorWindow : public QWidget {
    Q_OBJECT
public:
    /// frameName is what the window's place is remembered under; windows of one name share one place.
    EditorWindow(Form& form, CommandField& cancel, const QString& frameName);

protected:
    /// Binds what was built; called at the end of the constructor of every editor.
    FormBinder& bindForm();
    Form& form() { return m_form; }
    /// The field that has the keyboard whenever the window opens.
    void setFirstField(const QString& name) { m_firstField = name; }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void present();
    /// Ctrl+S and Ctrl+Return save.
    void giveSaveKeys();

    Form& m_form;
    CommandField& m_cancel;
    QString m_frameName;
    QString m_firstField;
    FormBinder* m_binder = nullptr;
};
