#include "ui/shell/ListPage.h"

#include "storage/ListForm.h"
#include "ui/EmptyList.h"
#include "ui/FormBinder.h"
#include "ui/ListBinder.h"
#include "ui/kit/Fields.h"
#include "ui/kit/PageHeader.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/TableHeader.h"

#include <QKeyEvent>
#include <QVBoxLayout>

ListPage::ListPage(qvDataSource& source, ListForm& form, const ListPageTexts& texts, QWidget* parent)
    : QWidget(parent)
    , m_source(source)
    , m_header(new PageHeader(texts.title, texts.searchPlaceholder, this))
    , m_table(new RecordTable(RecordTable::Place::page, this))
    , m_empty(new EmptyList(texts.emptyIcon, texts.emptyTitle, texts.emptyHint, form, this))
    , m_binder(new ListBinder(source, m_table, texts.name))
{
    m_header->searchField()->setObjectName("search");
    m_header->filter()->setObjectName("filter");
    m_header->filter()->setAccessibleName(tr("Show"));
    m_header->searchField()->steer(m_table);
    m_table->tableHeader()->setStretchLastSection(true);
    m_table->setDragDropMode(QAbstractItemView::DragOnly);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_table, 1);
    column->addWidget(m_empty, 1);
    new FormBinder(form, this);

    setTexts(texts);
    connect(m_table, &QAbstractItemView::activated, this, [this] { m_source.edit(); });
    connect(&m_binder->model(), &QAbstractItemModel::modelReset, this, &ListPage::showEmptiness);
    connect(m_empty, &EmptyList::everythingShown, this, &ListPage::takeKeyboard);
    showEmptiness();
}

void ListPage::setTexts(const ListPageTexts& texts)
{
    m_header->setTitle(texts.title);
    m_header->searchField()->setPlaceholderText(texts.searchPlaceholder);
    m_header->searchField()->setAccessibleName(texts.searchPlaceholder);
    m_table->setAccessibleName(texts.title);
    m_empty->setWords(texts.emptyTitle, texts.emptyHint);
}

void ListPage::search()
{
    m_header->searchField()->setFocus(Qt::ShortcutFocusReason);
    m_header->searchField()->selectAll();
}

void ListPage::setMaking(QAction* command)
{
    m_empty->setMaking(command);
}

void ListPage::takeKeyboard()
{
    if (m_table->isVisibleTo(this))
        m_table->setFocus();
    else
        m_empty->takeKeyboard();
}

void ListPage::showEmptiness()
{
    // What is hidden loses the keyboard to whatever comes next; the list, or the way out of its emptiness, is meant.
    const QWidget* keyboard = window()->focusWidget();
    const bool hadKeyboard = keyboard && (keyboard == m_table || m_empty->isAncestorOf(keyboard));
    const int rows = m_binder->model().rowCount();
    m_empty->tell(rows, m_source.getCount());
    m_table->setVisible(rows > 0);
    if (hadKeyboard)
        takeKeyboard();
}
