#include "ui/kit/PageHeader.h"

#include "ui/kit/Fields.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Label.h"
#include "ui/kit/SearchField.h"

#include <QHBoxLayout>

namespace {

constexpr int searchWidth = 300;
constexpr int searchMinimumWidth = 160;
constexpr int filterWidth = 168;

} // namespace

PageHeader::PageHeader(const QString& title, const QString& searchPlaceholder, QWidget* parent)
    : QWidget(parent)
    , m_title(new Label(title, LabelSize::heading))
    , m_search(new SearchField(searchPlaceholder))
    , m_row(new QHBoxLayout)
{
    m_title->setObjectName(QStringLiteral("pageTitle"));
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setMinimumWidth(searchMinimumWidth);
    m_search->setMaximumWidth(searchWidth);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_row->setContentsMargins(20, 14, 16, 14);
    m_row->setSpacing(10);
    m_row->addWidget(m_title);
    m_row->addStretch(1);
    m_row->addWidget(m_search, 1000);
    column->addLayout(m_row);
    column->addWidget(new Hairline);
}

void PageHeader::setTitle(const QString& title)
{
    m_title->setText(title);
}

ChoiceBox* PageHeader::filter()
{
    if (!m_filter) {
        m_filter = new ChoiceBox;
        m_filter->setObjectName(QStringLiteral("filter"));
        m_filter->setAccessibleName(tr("Show"));
        m_filter->setFixedWidth(filterWidth);
        m_row->addWidget(m_filter);
    }
    return m_filter;
}

void PageHeader::addControl(QWidget* control)
{
    m_row->insertWidget(m_row->indexOf(m_search), control);
}
