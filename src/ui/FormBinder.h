// Binds the widgets of a window to the fields of a form, both ways, by name: a widget whose object name is a field's name shows it.
#pragma once

#include "desktop/Form.h"

#include <QHash>
#include <QObject>
#include <QPointer>

class PictureField;
class QLineEdit;
class QListWidget;
class QWidget;

class FormBinder : public QObject {
    Q_OBJECT
public:
    /// Binds every child of window that bears a field's name, as it stands now.
    FormBinder(Form& form, QWidget* window);

    /// A label whose text is the field's caption and which is seen and enabled with it.
    void bindCaption(const QString& fieldName, QWidget* label);
    /// Anything else that comes and goes with the field.
    void bindVisibility(const QString& fieldName, QWidget* companion);

Q_SIGNALS:
    /// The person changed what the field holds.
    void edited(const FormField* field);

private:
    void bind(FormField& field, QWidget* widget);
    bool bindText(TextField& field, QWidget* widget);
    void bindLine(TextField& field, QLineEdit* line);
    void showText(QLineEdit& line, const QString& text);
    bool bindFlag(FlagField& field, QWidget* widget);
    bool bindChoice(ChoiceField& field, QWidget* widget);
    void bindList(ChoiceField& field, QListWidget* list);
    void choose(ChoiceField& field, int index);
    bool bindCommand(CommandField& field, QWidget* widget);
    void run(CommandField& command);
    bool bindPicture(PictureField& field, QWidget* widget);
    void show(FormField* field);
    /// The sentence about what was typed, where it can be seen, pointed at and read aloud.
    static void showFault(const FormField& field, QWidget* widget);
    void showFocus(const QString& name);
    /// Takes over what is being typed before a command runs.
    void commitTyping();

    struct Binding {
        QPointer<QWidget> widget;
        std::function<void()> show;
    };

    Form& m_form;
    QPointer<QWidget> m_window;
    QMultiHash<const FormField*, Binding> m_bindings;
    /// What changes meanwhile can be undone in its field.
    bool m_commandRuns = false;
    /// A field takes what the form holds already.
    bool m_replacing = false;
};
