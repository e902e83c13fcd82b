#include "storage/RecordListModel.h"

#include "storage/RowText.h"

#include <QColor>
#include <QMimeData>
#include <QScopedValueRollback>

RecordListModel::RecordListModel(qvDataSource& source, QObject* parent)
    : QAbstractTableModel(parent)
    , m_source(source)
    , m_columns(source.list.visibleColumns())
    , m_rows(source.numberOfRows())
{
    source.addObserver(*this);
}

RecordListModel::~RecordListModel()
{
    m_source.removeObserver(*this);
}

int RecordListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int RecordListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant RecordListModel::statusColour(int row) const
{
    const std::optional<RgbColour> colour = m_source.labelColorForRow(row);
    return colour ? QColor::fromRgbF(colour->red, colour->green, colour->blue) : QColor();
}

QVariant RecordListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows)
        return {};
    const ListColumn& shown = column(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return toQString(m_source.objectValue(shown.identifier, index.row()));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (shown.align == ColumnAlign::right ? Qt::AlignRight : Qt::AlignLeft));
    case StatusColourRole: return statusColour(index.row());
    case FinishedRole: return m_source.isFinishedRow(index.row());
    case FaultRole: return !m_source.cellFault(shown.identifier, index.row()).isEmpty();
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole: return m_source.cellFault(shown.identifier, index.row());
    case IdentifierRole: return QString::fromStdString(shown.identifier);
    case RecordIdRole: {
        const dataObject* record = m_source.getnthVisibleItem(index.row());
        return record ? record->getID() : 0;
    }
    default: return {};
    }
}

bool RecordListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid())
        return false;
    const QScopedValueRollback<bool> editing(m_editing, true);
    const int row = index.row();
    if (!m_source.setObjectValue(column(index.column()).identifier, row, cleanUtf8(value.toString())))
        return false;
    rowChanged(row);
    return true;
}

QVariant RecordListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= static_cast<int>(m_columns.size()))
        return {};
    if (role == Qt::DisplayRole)
        return column(section).heading;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | (column(section).align == ColumnAlign::right ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

Qt::ItemFlags RecordListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
    return column(index.column()).editable ? flags | Qt::ItemIsEditable : flags;
}

QStringList RecordListModel::mimeTypes() const
{
    return {"text/plain"};
}

QMimeData* RecordListModel::mimeData(const QModelIndexList& indexes) const
{
    return rowData(indexes).release();
}

void RecordListModel::listReset()
{
    // Editing a cell moves no row, so views keep their place and the editor that is just closing.
    if (m_editing && m_rows == m_source.numberOfRows())
        return cellsChanged();
    beginResetModel();
    m_rows = m_source.numberOfRows();
    endResetModel();
    Q_EMIT selectionWanted();
}

void RecordListModel::rowChanged(int row)
{
    if (row >= 0 && row < m_rows && !m_columns.empty())
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void RecordListModel::cellsChanged()
{
    if (m_rows > 0 && !m_columns.empty())
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
}

void RecordListModel::selectionChanged()
{
    Q_EMIT selectionWanted();
}

void RecordListModel::columnsChanged()
{
    beginResetModel();
    m_columns = m_source.list.visibleColumns();
    m_rows = m_source.numberOfRows();
    endResetModel();
    Q_EMIT columnsReset();
    Q_EMIT selectionWanted();
}
