// Editor state without widgets: what the controls of a window hold, whether they are enabled, visible, and what they offer.
//
// A controller owns a form and decides everything; a window binds its widgets to the form's fields by name and decides nothing.
// Changes go both ways: the controller sets a field (set...), and the window shows it; the person edits a control (edit...), the
// field takes the value and runs the controller's onEdited.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

class Form;

class FormField {
public:
    FormField(Form& form, const char* name);
    virtual ~FormField() = default;
    FormField(const FormField&) = delete;
    FormField& operator=(const FormField&) = delete;

    const QString& name() const { return m_name; }

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    /// The words beside or on the control where the controller decides them; empty when the window's own stand.
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    /// Why the value cannot be used as it stands, in one sentence; empty when it can.
    const QString& fault() const { return m_fault; }
    void setFault(const QString& fault);

    /// Runs after the person changed the field.
    std::function<void()> onEdited;

protected:
    void notify();
    void edited();

private:
    Form& m_form;
    QString m_name;
    QString m_caption;
    QString m_fault;
    bool m_enabled = true;
    bool m_visible = true;
};

/// A line or page of text, or a computed figure that nobody types into.
class TextField : public FormField {
public:
    using FormField::FormField;
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    void edit(const QString& text);
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

private:
    QString m_text;
    bool m_readOnly = false;
};

/// A check box.
class FlagField : public FormField {
public:
    using FormField::FormField;
    bool isOn() const { return m_on; }
    void setOn(bool on);
    void edit(bool on);

private:
    bool m_on = false;
};

/// A pop-up list, or a set of tabs or radio buttons: titles of which one (or none) is chosen.
class ChoiceField : public FormField {
public:
    using FormField::FormField;
    const QStringList& titles() const { return m_titles; }
    /// Replaces the titles; the chosen title stays chosen when it is still there, else none is.
    void setTitles(const QStringList& titles);
    void addTitle(const QString& title);
    /// -1 when none is chosen.
    int index() const { return m_index; }
    /// The chosen title, empty when none is.
    QString title() const;
    void setIndex(int index);
    /// Chooses the entry of that title; none when there is no such entry.
    void setTitle(const QString& title);
    /// The same, but a title that is not offered is added first: a value from elsewhere must survive a save.
    void setOrAddTitle(const QString& title);
    void edit(int index);

private:
    QStringList m_titles;
    int m_index = -1;
};

/// A button or menu entry.
class CommandField : public FormField {
public:
    using FormField::FormField;
    /// What pressing it does.
    std::function<void()> run;
    void trigger();
};

class Form : public QObject {
    Q_OBJECT
public:
    /// The field of that name, or none: a window asks by its widgets' names.
    FormField* field(const QString& name) const;
    const std::vector<FormField*>& fields() const { return m_fields; }

    /// The window's title.
    const QString& title() const { return m_title; }
    void setTitle(const QString& title);

    /// An editor is open from open() to close(); its window follows.
    bool isOpen() const { return m_open; }
    void open();
    void close();
    /// Asked while the form is open, before another record takes the place of the one it holds; without it any may.
    std::function<bool()> mayTakeAnother;
    bool isFreeForAnother() const { return !m_open || !mayTakeAnother || mayTakeAnother(); }
    /// Asks the window to put the keyboard into the field.
    void focus(const FormField& field);

    /// Runs show now, and whenever one of the fields changes for as long as the context lives: a window may be made when its form is
    /// open already.
    template <class Show>
    void follow(std::vector<const FormField*> followed, QObject* context, Show show)
    {
        show();
        connect(this, &Form::fieldChanged, context, [followed = std::move(followed), show](const FormField* field) {
            if (std::find(followed.begin(), followed.end(), field) != followed.end())
                show();
        });
    }

Q_SIGNALS:
    void fieldChanged(FormField* field);
    void titleChanged();
    /// Also when it was open already: the window comes to the front.
    void opened();
    void closed();
    void focusWanted(const QString& name);

private:
    friend class FormField;
    std::vector<FormField*> m_fields;
    QString m_title;
    bool m_open = false;
};
