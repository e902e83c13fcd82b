#include "ui/FormBinder.h"

#include "desktop/PictureField.h"
#include "ui/PageText.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Literal.h"
#include "ui/kit/Look.h"
#include "ui/kit/PictureWell.h"
#include "ui/kit/SegmentedChoice.h"

#include <QAbstractButton>
#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputMethod>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <limits>

namespace {

/// A text too long for its field is seen from its beginning, unless it is being typed.
void showBeginning(QLineEdit& line)
{
    if (line.window()->focusWidget() != &line)
        line.setCursorPosition(0);
}

/// Sets the note on the form that holds the field, wherever in the window it stands.
bool setNoteBelow(QLayout* layout, QWidget* field, const QString& sentence)
{
    if (!layout)
        return false;
    if (auto* grid = qobject_cast<FormGrid*>(layout); grid && grid->setNote(field, sentence))
        return true;
    for (int i = 0; i < layout->count(); ++i) {
        if (setNoteBelow(layout->itemAt(i)->layout(), field, sentence))
            return true;
    }
    return false;
}

} // namespace

FormBinder::FormBinder(Form& form, QWidget* window) : QObject(window), m_form(form), m_window(window)
{
    for (FormField* field : form.fields()) {
        const QList<QWidget*> widgets = window->findChildren<QWidget*>(field->name());
        for (QWidget* widget : widgets)
            bind(*field, widget);
    }
    connect(&form, &Form::fieldChanged, this, &FormBinder::show);
    connect(&form, &Form::focusWanted, this, &FormBinder::showFocus, Qt::QueuedConnection);
}

void FormBinder::bind(FormField& field, QWidget* widget)
{
    bool bound = false;
    if (auto* text = dynamic_cast<TextField*>(&field))
        bound = bindText(*text, widget);
    else if (auto* flag = dynamic_cast<FlagField*>(&field))
        bound = bindFlag(*flag, widget);
    else if (auto* choice = dynamic_cast<ChoiceField*>(&field))
        bound = bindChoice(*choice, widget);
    else if (auto* command = dynamic_cast<CommandField*>(&field))
        bound = bindCommand(*command, widget);
    else if (auto* picture = dynamic_cast<PictureField*>(&field))
        bound = bindPicture(*picture, widget);
    Q_ASSERT_X(bound, "FormBinder", qPrintable("no way to bind " + field.name()));
    show(&field);
}

bool FormBinder::bindText(TextField& field, QWidget* widget)
{
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        bindLine(field, line);
        return true;
    }
    if (auto* page = qobject_cast<QPlainTextEdit*>(widget)) {
        const auto text = std::make_shared<PageText>();
        connect(page, &QPlainTextEdit::textChanged, this, [this, &field, page, text] {
            text->edit(page->document()->toRawText());
            field.edit(text->stored());
            Q_EMIT edited(&field);
        });
        m_bindings.insert(&field, {page, [&field, page, text] {
                                       showFault(field, page);
                                       if (text->stored() == field.text())
                                           return;
                                       const QSignalBlocker quiet(page);
                                       text->setStored(field.text());
                                       page->setPlainText(field.text());
                                   }});
        return true;
    }
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        m_bindings.insert(&field, {label, [&field, label] { label->setText(field.text()); }});
        return true;
    }
    return false;
}

void FormBinder::bindLine(TextField& field, QLineEdit* line)
{
    // A field's usual limit would cut off the end of a longer text.
    line->setMaxLength(std::numeric_limits<int>::max());
    connect(line, &QLineEdit::textEdited, this, [this, &field](const QString& text) {
        if (m_replacing)
            return;
        field.edit(text);
        Q_EMIT edited(&field);
    });
    // The field that loses the keyboard still has it while it says so.
    connect(
        line, &QLineEdit::editingFinished, line, [line] { showBeginning(*line); }, Qt::QueuedConnection);
    // What was typed for one record is never undone in the next.
    connect(&m_form, &Form::closed, line, [line] { line->setText(line->text()); });
    m_bindings.insert(&field, {line, [this, &field, line] {
                                   if (line->text() != field.text()) {
                                       showText(*line, field.text());
                                       showBeginning(*line);
                                   }
                                   if (!qobject_cast<Figure*>(line))
                                       line->setReadOnly(field.isReadOnly());
                                   showFault(field, line);
                               }});
}

void FormBinder::showText(QLineEdit& line, const QString& text)
{
    if (!m_commandRuns || !m_form.isOpen() || line.isReadOnly()) {
        line.setText(text);
        return;
    }
    const QScopedValueRollback<bool> replacing(m_replacing, true);
    line.selectAll();
    line.insert(text);
}

bool FormBinder::bindFlag(FlagField& field, QWidget* widget)
{
    auto* box = qobject_cast<QAbstractButton*>(widget);
    if (!box)
        return false;
    connect(box, &QAbstractButton::clicked, this, [this, &field](bool on) {
        field.edit(on);
        Q_EMIT edited(&field);
    });
    m_bindings.insert(&field, {box, [&field, box] {
                                   box->setChecked(field.isOn());
                                   if (!field.caption().isEmpty())
                                       box->setText(literal(field.caption()));
                               }});
    return true;
}

bool FormBinder::bindChoice(ChoiceField& field, QWidget* widget)
{
    if (auto* box = qobject_cast<QComboBox*>(widget)) {
        connect(box, &QComboBox::activated, this, [this, &field](int index) { choose(field, index); });
        m_bindings.insert(&field, {box, [&field, box] {
                                       const QSignalBlocker quiet(box);
                                       QStringList shown;
                                       for (int i = 0; i < box->count(); ++i)
                                           shown += box->itemText(i);
                                       if (shown != field.titles()) {
                                           box->clear();
                                           box->addItems(field.titles());
                                       }
                                       box->setCurrentIndex(field.index());
                                   }});
        return true;
    }
    if (auto* list = qobject_cast<QListWidget*>(widget)) {
        bindList(field, list);
        return true;
    }
    if (auto* segments = qobject_cast<SegmentedChoice*>(widget)) {
        connect(segments, &SegmentedChoice::chosen, this, [this, &field](int index) { choose(field, index); });
        m_bindings.insert(&field, {segments, [&field, segments] {
                                       if (segments->titles() != field.titles())
                                           segments->setTitles(field.titles());
                                       segments->setIndex(field.index());
                                   }});
        return true;
    }
    return false;
}

void FormBinder::bindList(ChoiceField& field, QListWidget* list)
{
    // Choosing may ask a question or make the list anew, and the list is still in the middle of its click.
    connect(
        list, &QListWidget::currentRowChanged, this, [this, &field](int row) { choose(field, row); }, Qt::QueuedConnection);
    m_bindings.insert(&field, {list, [&field, list] {
                                   const QSignalBlocker quiet(list);
                                   QStringList shown;
                                   for (int row = 0; row < list->count(); ++row)
                                       shown += list->item(row)->text();
                                   if (shown != field.titles()) {
                                       list->clear();
                                       list->addItems(field.titles());
                                   }
                                   list->setCurrentRow(field.index());
                               }});
}

void FormBinder::choose(ChoiceField& field, int index)
{
    const bool another = index != field.index();
    field.edit(index);
    if (another)
        Q_EMIT edited(&field);
}

bool FormBinder::bindCommand(CommandField& field, QWidget* widget)
{
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (!button)
        return false;
    connect(button, &QAbstractButton::clicked, this, [this, &field] { run(field); });
    m_bindings.insert(&field, {button, [&field, button] {
                                   if (!field.caption().isEmpty())
                                       button->setText(literal(field.caption()));
                               }});
    return true;
}

void FormBinder::run(CommandField& command)
{
    commitTyping();
    // A command may end its window.
    const QPointer<FormBinder> here(this);
    m_commandRuns = true;
    command.trigger();
    if (here)
        m_commandRuns = false;
}

bool FormBinder::bindPicture(PictureField& field, QWidget* widget)
{
    auto* well = qobject_cast<PictureWell*>(widget);
    if (!well)
        return false;
    connect(well, &PictureWell::offered, this, [this, &field](const QMimeData& data) {
        const qint64 before = field.picture().cacheKey();
        field.offer(data);
        if (field.picture().cacheKey() != before)
            Q_EMIT edited(&field);
    });
    m_bindings.insert(&field, {well, [&field, well] {
                                   showFault(field, well);
                                   // It says itself what it shows, unless there is something wrong.
                                   if (field.fault().isEmpty() || well->picture().cacheKey() != field.picture().cacheKey())
                                       well->setPicture(field.picture());
                               }});
    return true;
}

void FormBinder::commitTyping()
{
    if (QInputMethod* method = QGuiApplication::inputMethod())
        method->commit();
    // A shortcut leaves the keyboard where it is, perhaps in a cell that is being edited.
    QWidget* editor = QApplication::focusWidget();
    if (!editor || !m_window || !m_window->isAncestorOf(editor))
        return;
    auto* list = qobject_cast<QAbstractItemView*>(editor->parentWidget() ? editor->parentWidget()->parentWidget() : nullptr);
    if (!list || editor->parentWidget() != list->viewport())
        return;
    Q_EMIT list->itemDelegate()->commitData(editor);
    Q_EMIT list->itemDelegate()->closeEditor(editor);
}

void FormBinder::bindCaption(const QString& fieldName, QWidget* widget)
{
    FormField* field = m_form.field(fieldName);
    auto* label = qobject_cast<QLabel*>(widget);
    if (!field || !label)
        return;
    m_bindings.insert(field, {label, [field, label] {
                                  if (field->caption().isEmpty())
                                      return;
                                  label->setText(field->caption());
                                  // A plain text is read by itself; a name would hide what it says.
                                  if (QWidget* named = label->buddy(); named && !qobject_cast<QLabel*>(named))
                                      named->setAccessibleName(field->caption());
                              }});
    show(field);
}

void FormBinder::bindVisibility(const QString& fieldName, QWidget* companion)
{
    if (FormField* field = m_form.field(fieldName)) {
        m_bindings.insert(field, {companion, [] {}});
        show(field);
    }
}

void FormBinder::show(FormField* field)
{
    for (auto binding = m_bindings.constFind(field); binding != m_bindings.cend() && binding.key() == field; ++binding) {
        if (!binding->widget)
            continue;
        binding->show();
        binding->widget->setEnabled(field->isEnabled());
        binding->widget->setVisible(field->isVisible());
    }
}

void FormBinder::showFault(const FormField& field, QWidget* widget)
{
    const QString& sentence = field.fault();
    if (sentence.isEmpty() && widget->accessibleDescription().isEmpty())
        return;
    look::setFault(widget, sentence.isEmpty() ? look::Fault::none : look::Fault::wrong);
    widget->setToolTip(sentence);
    widget->setAccessibleDescription(sentence);
    setNoteBelow(widget->parentWidget()->layout(), widget, field.isVisible() ? sentence : QString());
}

void FormBinder::showFocus(const QString& name)
{
    if (!m_window)
        return;
    if (auto* widget = m_window->findChild<QWidget*>(name)) {
        widget->setFocus(Qt::OtherFocusReason);
        // Selected from its end, so that the beginning of a long text is seen.
        if (auto* line = qobject_cast<QLineEdit*>(widget))
            line->setSelection(static_cast<int>(line->text().size()), -static_cast<int>(line->text().size()));
    }
}
