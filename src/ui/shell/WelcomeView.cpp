#include "ui/shell/WelcomeView.h"

#include "ui/kit/EmptyState.h"
#include "ui/kit/IconLabel.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"

#include <QVBoxLayout>

WelcomeView::WelcomeView(QWidget* parent) : QWidget(parent)
{
    look::setKind(this, "surface");
    setAttribute(Qt::WA_StyledBackground);
    auto* column = new QVBoxLayout(this);
    column->addStretch(2);
    auto* middle = new QWidget;
    middle->setFixedWidth(640);
    auto* rows = new QVBoxLayout(middle);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(8);
    auto* sign = new IconLabel("view-list-text", IconRole::accent, 32);
    sign->setTile(60);
    rows->addWidget(sign, 0, Qt::AlignLeft);
    rows->addSpacing(8);
    rows->addWidget(new Label(tr("Welcome to Vendaro"), LabelSize::welcome));
    rows->addWidget(
        new Label(tr("Contacts, orders, stock and documents of your business, in one place."), LabelSize::body, LabelTone::secondary));
    rows->addSpacing(16);
    const auto card = [&](const QString& icon, const QString& title, const QString& detail, ActionCard::Rank rank, auto signal) {
        auto* made = new ActionCard(icon, title, detail, rank);
        connect(made, &QPushButton::clicked, this, signal);
        rows->addWidget(made);
        return made;
    };
    m_first =
        card("list-add-user", tr("New Contact"), tr("Somebody you sell to or buy from"), ActionCard::Rank::first, &WelcomeView::newContact);
    m_newItem = card("archive-insert", tr("New Item"), tr("Something you sell"), ActionCard::Rank::other, &WelcomeView::newItem);
    m_newOrder = card("document-new", tr("New Order"), tr("Put items on it, print it, take the payment"), ActionCard::Rank::other,
        &WelcomeView::newOrder);
    card("folder-open", tr("Open Sample Business"), tr("Look around in a workshop with two years of orders"), ActionCard::Rank::other,
        &WelcomeView::sampleBusiness);
    column->addWidget(middle, 0, Qt::AlignHCenter);
    column->addStretch(3);
}

void WelcomeView::focusFirst()
{
    m_first->setFocus(Qt::OtherFocusReason);
}

void WelcomeView::setWords(const QString& order, const QString& item)
{
    m_newOrder->setTitle(tr("New %1").arg(order));
    m_newItem->setTitle(tr("New %1").arg(item));
}
