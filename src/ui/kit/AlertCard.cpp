#include "ui/kit/AlertCard.h"

#include "ui/kit/Button.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/IconLabel.h"
#include "ui/kit/Label.h"
#include "ui/kit/Literal.h"
#include "ui/kit/Look.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int alertIconSize = 32;
constexpr int iconGap = 16;
constexpr int buttonMinimumWidth = 73;
constexpr int textWidth = AlertCard::cardWidth - 2 * 24 - alertIconSize - iconGap;

QString iconNameOf(AlertCard::Icon icon)
{
    switch (icon) {
    case AlertCard::Icon::warning: break;
    case AlertCard::Icon::information: return QStringLiteral("data-information");
    case AlertCard::Icon::locked: return QStringLiteral("object-locked");
    }
    return QStringLiteral("data-warning");
}

/// The button that Return presses: the first, unless that one can lose data.
int safeButton(const AlertCard::Options& options, qsizetype count)
{
    return options.destructive == 0 && count > 1 ? 1 : 0;
}

} // namespace

AlertCard::AlertCard(QWidget* host, const QString& title, const QString& text, const QStringList& buttons, const Options& options)
    : Sheet(host, Blocks::theProgram)
    , m_title(title)
    , m_text(text)
{
    setObjectName(QStringLiteral("alert"));
    setTitle(title);
    setAccessibleDescription(text);
    card()->setFixedWidth(cardWidth);
    addWords(options);
    addButtons(buttons.isEmpty() ? QStringList {tr("OK")} : buttons, options);
}

int AlertCard::ask(QWidget* parent, const QString& title, const QString& text, const QStringList& buttons, const Options& options)
{
    const QPointer<AlertCard> alert(new AlertCard(parent, title, text, buttons, options));
    const int answer = alert->exec();
    if (alert)
        alert->deleteLater();
    return answer;
}

int AlertCard::ask(QWidget* parent, const QString& title, const QString& text, const QStringList& buttons)
{
    return ask(parent, title, text, buttons, Options());
}

void AlertCard::addWords(const Options& options)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(iconGap);
    const IconRole role = options.icon == Icon::information ? IconRole::accent : IconRole::warning;
    row->addWidget(new IconLabel(iconNameOf(options.icon), role, alertIconSize), 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->setContentsMargins(0, 4, 0, 0);
    words->setSpacing(6);
    if (!m_title.isEmpty()) {
        auto* heading = new Label(m_title, LabelSize::group);
        heading->setObjectName(QStringLiteral("alertTitle"));
        heading->setWordWrap(true);
        words->addWidget(heading);
    }
    words->addWidget(makeText());
    if (!options.facts.isEmpty()) {
        auto* facts = new FormGrid;
        facts->setVerticalSpacing(10);
        for (const auto& [label, value] : options.facts) {
            auto* fact = new Label(value);
            fact->setWordWrap(true);
            facts->addRow(label, fact);
        }
        words->addSpacing(12);
        words->addLayout(facts);
    }
    row->addLayout(words, 1);
    column()->addLayout(row);
    column()->addSpacing(22);
}

QWidget* AlertCard::makeText()
{
    auto* words = new Label(m_text);
    words->setObjectName(QStringLiteral("alertText"));
    words->setWordWrap(true);
    const int tallest = QGuiApplication::primaryScreen()->availableSize().height() / 2;
    if (words->heightForWidth(textWidth) <= tallest)
        return words;
    auto* scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFixedHeight(tallest);
    scrolled->setAccessibleName(m_title);
    words->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    look::setKind(words, "plain");
    scrolled->setWidget(words);
    return scrolled;
}

void AlertCard::addButtons(const QStringList& titles, const Options& options)
{
    const int safe = safeButton(options, titles.size());
    const bool fills = options.destructive == Options::none || safe == 0;
    for (int index = 0; index < titles.size(); ++index) {
        auto kind = Button::Kind::normal;
        if (index == options.destructive && titles.size() > 1)
            kind = Button::Kind::danger;
        else if (index == safe && fills)
            kind = Button::Kind::primary;
        auto* button = new Button(literal(titles[index]), kind);
        button->setObjectName(QStringLiteral("alertButton%1").arg(index));
        button->setAccessibleName(titles[index]);
        button->setMinimumWidth(buttonMinimumWidth);
        connect(button, &QPushButton::clicked, this, [this, index] { finish(index); });
        m_buttons << button;
    }
    setDefaultButton(m_buttons[safe]);
    setFirstFocus(m_buttons[safe]);
    arrangeButtons();
}

void AlertCard::arrangeButtons()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (qsizetype index = m_buttons.size() - 1; index >= 2; --index)
        row->addWidget(m_buttons[index]);
    row->addStretch(1);
    for (qsizetype index = qMin<qsizetype>(m_buttons.size(), 2) - 1; index >= 0; --index)
        row->addWidget(m_buttons[index]);
    column()->addLayout(row);
    // Tab goes as the eye does, from left to right.
    QWidget* before = nullptr;
    for (int place = 0; place < row->count(); ++place) {
        QWidget* button = row->itemAt(place)->widget();
        if (before && button)
            QWidget::setTabOrder(before, button);
        if (button)
            before = button;
    }
}

void AlertCard::showEvent(QShowEvent* event)
{
    Sheet::showEvent(event);
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent told(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}
