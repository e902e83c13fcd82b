#include "desktop/Form.h"

FormField::FormField(Form& form, const char* name) : m_form(form), m_name(QString::fromLatin1(name))
{
    form.m_fields.push_back(this);
}

void FormField::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    notify();
}

void FormField::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    notify();
}

void FormField::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    notify();
}

void FormField::setFault(const QString& fault)
{
    if (m_fault == fault)
        return;
    m_fault = fault;
    notify();
}

void FormField::notify()
{
    Q_EMIT m_form.fieldChanged(this);
}

void FormField::edited()
{
    notify();
    if (onEdited)
        onEdited();
}

void TextField::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    notify();
}

void TextField::edit(const QString& text)
{
    if (m_readOnly || !isEnabled() || m_text == text)
        return;
    m_text = text;
    edited();
}

void TextField::setReadOnly(bool readOnly)
{
    if (m_readOnly == readOnly)
        return;
    m_readOnly = readOnly;
    notify();
}

void FlagField::setOn(bool on)
{
    if (m_on == on)
        return;
    m_on = on;
    notify();
}

void FlagField::edit(bool on)
{
    if (!isEnabled() || m_on == on)
        return;
    m_on = on;
    edited();
}

void ChoiceField::setTitles(const QStringList& titles)
{
    const QString chosen = title();
    const bool none = m_index < 0;
    m_titles = titles;
    m_index = none ? -1 : static_cast<int>(titles.indexOf(chosen));
    notify();
}

void ChoiceField::addTitle(const QString& title)
{
    m_titles += title;
    notify();
}

QString ChoiceField::title() const
{
    return m_index >= 0 && m_index < m_titles.size() ? m_titles.at(m_index) : QString();
}

void ChoiceField::setIndex(int index)
{
    const int chosen = index >= 0 && index < m_titles.size() ? index : -1;
    if (m_index == chosen)
        return;
    m_index = chosen;
    notify();
}

void ChoiceField::setTitle(const QString& title)
{
    setIndex(static_cast<int>(m_titles.indexOf(title)));
}

void ChoiceField::setOrAddTitle(const QString& title)
{
    if (!title.isEmpty() && !m_titles.contains(title))
        addTitle(title);
    setTitle(title);
}

void ChoiceField::edit(int index)
{
    if (!isEnabled() || index < 0 || index >= m_titles.size() || m_index == index)
        return;
    m_index = index;
    edited();
}

void CommandField::trigger()
{
    if (isEnabled() && run)
        run();
}

FormField* Form::field(const QString& name) const
{
    for (FormField* field : m_fields) {
        if (field->name() == name)
            return field;
    }
    return nullptr;
}

void Form::setTitle(const QString& title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

void Form::open()
{
    m_open = true;
    Q_EMIT opened();
}

void Form::close()
{
    if (!m_open)
        return;
    m_open = false;
    Q_EMIT closed();
}

void Form::focus(const FormField& field)
{
    Q_EMIT focusWanted(field.name());
}
