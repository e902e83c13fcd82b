// A page of the settings window: its heading, and below it forms and groups, scrolled where the window is too low for them.
#pragma once

#include "desktop/Form.h"
#include "ui/kit/FormGrid.h"

#include <QScrollArea>

#include <initializer_list>
#include <utility>

class GroupHeader;
class Label;
class QVBoxLayout;

class SettingsPage : public QScrollArea {
    Q_OBJECT
public:
    explicit SettingsPage(const QString& title);

    const QString& title() const { return m_title; }
    QVBoxLayout* column() const { return m_column; }
    /// The heading of what follows.
    GroupHeader* addGroup(const QString& title);
    /// A form whose fields stand below those of the page's other forms.
    FormGrid* addForm();
    /// Two forms side by side, each under its heading.
    std::pair<FormGrid*, FormGrid*> addForms(const QString& left, const QString& right);
    /// A quiet line about what stands above it.
    Label* addNote(const QString& text);
    /// A list that takes the room there is, with the buttons for it below each other at its side.
    void addListWithButtons(QWidget* list, std::initializer_list<QWidget*> buttons);

    static constexpr int labelWidth = 140;

Q_SIGNALS:
    /// The person turned to the page.
    void shown();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QString m_title;
    QVBoxLayout* m_column;
};

/// A widget that the settings' form is bound to by the field's name.
template <class Widget, class... Arguments>
Widget* settingsField(const FormField& field, Arguments&&... arguments)
{
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(field.name());
    return widget;
}

/// A label that shows the field's caption, once the window is bound.
Label* settingsCaption(const FormField& field);
/// The name that such a label goes by.
QString settingsCaptionName(const FormField& field);
