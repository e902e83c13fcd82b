#include "ui/settings/SettingsPage.h"

#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/Panels.h"

#include <QVBoxLayout>

SettingsPage::SettingsPage(const QString& title) : m_title(title), m_column(new QVBoxLayout)
{
    auto* content = new QWidget;
    look::setKind(content, "plain");
    content->setLayout(m_column);
    m_column->setContentsMargins(24, 18, 24, 24);
    m_column->setSpacing(8);
    m_column->addWidget(new Label(title, LabelSize::heading));
    m_column->addSpacing(8);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    content->setAutoFillBackground(false);
}

GroupHeader* SettingsPage::addGroup(const QString& title)
{
    auto* header = new GroupHeader(title);
    m_column->addSpacing(12);
    m_column->addWidget(header);
    return header;
}

FormGrid* SettingsPage::addForm()
{
    auto* form = new FormGrid;
    form->setLabelWidth(labelWidth);
    m_column->addLayout(form);
    return form;
}

std::pair<FormGrid*, FormGrid*> SettingsPage::addForms(const QString& left, const QString& right)
{
    std::pair<FormGrid*, FormGrid*> forms {new FormGrid, new FormGrid};
    auto* sides = new QHBoxLayout;
    sides->setSpacing(32);
    for (const auto& [title, form] : {std::pair(left, forms.first), std::pair(right, forms.second)}) {
        auto* side = new QVBoxLayout;
        side->setSpacing(8);
        side->addWidget(new GroupHeader(title));
        side->addLayout(form);
        side->addStretch(1);
        sides->addLayout(side, 1);
    }
    m_column->addLayout(sides);
    return forms;
}

Label* SettingsPage::addNote(const QString& text)
{
    auto* note = new Label(text, LabelSize::small, LabelTone::secondary);
    note->setWordWrap(true);
    m_column->addWidget(note);
    return note;
}

void SettingsPage::addListWithButtons(QWidget* list, std::initializer_list<QWidget*> buttons)
{
    auto* side = new QVBoxLayout;
    side->setSpacing(8);
    for (QWidget* button : buttons)
        side->addWidget(button);
    side->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(list, 1);
    row->addLayout(side);
    m_column->addLayout(row, 1);
}

void SettingsPage::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    Q_EMIT shown();
}

Label* settingsCaption(const FormField& field)
{
    auto* label = new Label({}, LabelSize::body, LabelTone::secondary);
    label->setObjectName(settingsCaptionName(field));
    return label;
}

QString settingsCaptionName(const FormField& field)
{
    return field.name() + "Caption";
}
