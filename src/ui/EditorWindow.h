// The window of an editor: opens and closes with its form, remembers its place, saves by Ctrl+S and Ctrl+Return, and sends Esc, Ctrl+W
// and the window's own close button to the form's cancel. Once something was typed, these ask to be repeated; Cancel does not.
#pragma once

#include <QStringList>
#include <QWidget>

class CommandField;
class Form;
class FormBinder;
class FormField;

class EditorWindow : public QWidget {
    Q_OBJECT
public:
    /// frameName is what the window's place is remembered under; windows of one name share one place.
    EditorWindow(Form& form, CommandField& cancel, const QString& frameName);
    ~EditorWindow() override;

    /// For a window that is made when its form is open already: it shows what it missed.
    void catchUp();

protected:
    /// Binds what was built; called at the end of the constructor of every editor.
    FormBinder& bindForm();
    Form& form() { return m_form; }
    /// A field that is no part of the record: what is chosen there is nothing to lose.
    void setPassing(const QString& name) { m_passing += name; }
    /// The field that has the keyboard whenever the window opens.
    void setFirstField(const QString& name) { m_firstField = name; }

    /// Whether the window may go on to something else now: at the second try when there is something to lose; the footer says so.
    bool mayLeave(const QString& warning);
    /// Whether closing now would lose something the person did.
    virtual bool hasSomethingToLose() const { return m_edited; }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void present();
    void noteEdit(const FormField& field);
    /// Cancels, but only at the second try when there is something to lose; the footer says so.
    void leave(const QString& warning);
    void warn(const QString& warning);
    /// Whether another record may take the place of the one that is open: at the second try when there is something to lose, and what was
    /// changed before is nothing to lose then.
    bool mayOpenAnother();
    /// Ctrl+S and Ctrl+Return save.
    void giveSaveKeys();

    Form& m_form;
    CommandField& m_cancel;
    QString m_frameName;
    QString m_firstField;
    QStringList m_passing;
    bool m_edited = false;
    bool m_warned = false;
    FormBinder* m_binder = nullptr;
};
