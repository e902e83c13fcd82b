#include "ui/ColumnMemory.h"

#include "storage/ListState.h"
#include "ui/WindowMemory.h"

#include <QHeaderView>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// Milliseconds of quiet after which changed widths are written.
constexpr int rememberAfter = 500;
constexpr int narrowestColumn = 20;

} // namespace

ColumnMemory::ColumnMemory(ListState& list, QHeaderView* header, const QString& name)
    : QObject(header)
    , m_list(list)
    , m_header(header)
    , m_name(name)
{
    recall();
    m_delay.setSingleShot(true);
    m_delay.setInterval(rememberAfter);
    connect(&m_delay, &QTimer::timeout, this, &ColumnMemory::remember);
    connect(header, &QHeaderView::sectionResized, this, &ColumnMemory::take);
}

void ColumnMemory::recall()
{
    if (m_name.isEmpty())
        return;
    const QJsonObject widths = QJsonDocument::fromJson(WindowMemory::state("columns/" + m_name)).object();
    for (ListColumn& column : m_list.columns) {
        const int width = widths.value(QString::fromStdString(column.identifier)).toInt();
        if (width >= narrowestColumn)
            column.width = width;
    }
}

void ColumnMemory::take()
{
    if (m_paused)
        return;
    const std::vector<const ListColumn*> shown = m_list.visibleColumns();
    // The last column is as wide as there is room, which is nobody's wish.
    const std::size_t own = shown.size() - (m_header->stretchLastSection() && !shown.empty() ? 1 : 0);
    for (std::size_t section = 0; section < own; ++section) {
        if (ListColumn* column = m_list.column(shown[section]->identifier))
            column->width = m_header->sectionSize(static_cast<int>(section));
    }
    if (!m_name.isEmpty())
        m_delay.start();
}

void ColumnMemory::remember() const
{
    QJsonObject widths;
    for (const ListColumn& column : m_list.columns)
        widths.insert(QString::fromStdString(column.identifier), column.width);
    WindowMemory::rememberState("columns/" + m_name, QJsonDocument(widths).toJson(QJsonDocument::Compact));
}
