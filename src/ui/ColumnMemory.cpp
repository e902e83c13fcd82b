#include "ui/ColumnMemory.h"

#include "storage/ListState.h"
#include "ui/WindowMemory.h"

#include <QEvent>
#include <QHeaderView>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopedValueRollback>

#include <algorithm>
#include <numeric>

namespace {

/// Milliseconds of quiet after which changed widths are written.
constexpr int rememberAfter = 500;
constexpr int narrowestColumn = 20;
/// Columns that share too little room do not get narrower than this.
constexpr int narrowestShare = 48;
/// Columns up to this width, those of dates, codes and figures, give nothing away.
constexpr int keptWhole = 110;

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
    header->installEventFilter(this);
}

bool ColumnMemory::eventFilter(QObject* watched, QEvent* event)
{
    if ((event->type() == QEvent::Resize || event->type() == QEvent::Show) && !m_given)
        show();
    return QObject::eventFilter(watched, event);
}

void ColumnMemory::show()
{
    const QScopedValueRollback<bool> showing(m_showing, true);
    const std::vector<int> widths = widthsToShow();
    const int sections = std::min(static_cast<int>(widths.size()), m_header->count());
    for (int section = 0; section < sections; ++section)
        m_header->resizeSection(section, widths[static_cast<std::size_t>(section)]);
}

std::vector<int> ColumnMemory::widthsToShow() const
{
    std::vector<int> widths;
    for (const ListColumn* column : m_list.visibleColumns())
        widths.push_back(column->width);
    const int asked = std::accumulate(widths.begin(), widths.end(), 0);
    const int room = m_header->width();
    // A view that nobody sees yet has no room to share.
    if (m_given || !m_header->isVisible() || widths.empty())
        return widths;
    if (asked <= room) {
        // Names and titles need it most.
        *std::max_element(widths.begin(), widths.end()) += room - asked;
        return widths;
    }
    // Dates, numbers and codes are of no use when they are cut.
    int kept = 0;
    for (const int width : widths)
        kept += width <= keptWhole ? width : 0;
    int left = room;
    for (int& width : widths) {
        if (width > keptWhole)
            width = std::max(narrowestShare, width * (room - kept) / (asked - kept));
        left -= width;
    }
    widths.back() = std::max(narrowestShare, widths.back() + left);
    return widths;
}

void ColumnMemory::recall()
{
    if (m_name.isEmpty())
        return;
    const QJsonObject widths = QJsonDocument::fromJson(WindowMemory::state("columns/" + m_name)).object();
    for (ListColumn& column : m_list.columns) {
        const int width = widths.value(QString::fromStdString(column.identifier)).toInt();
        if (width < narrowestColumn)
            continue;
        column.width = width;
        m_given = true;
    }
}

void ColumnMemory::take(int section)
{
    const std::vector<const ListColumn*> shown = m_list.visibleColumns();
    // The last column is as wide as there is room, which is nobody's wish.
    const std::size_t own = shown.size() - (m_header->stretchLastSection() && !shown.empty() ? 1 : 0);
    if (m_showing || static_cast<std::size_t>(section) >= own)
        return;
    m_given = true;
    for (std::size_t each = 0; each < own; ++each) {
        if (ListColumn* column = m_list.column(shown[each]->identifier))
            column->width = m_header->sectionSize(static_cast<int>(each));
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
