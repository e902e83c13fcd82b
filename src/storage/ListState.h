// What a list shows, apart from its records: columns, sort and selection.
#pragma once

#include <QString>

#include <optional>
#include <string>
#include <vector>

enum class ColumnAlign { left, right };

struct ListColumn {
    /// The field name shown in the column; what saved layouts, exports and style sheets know it by.
    std::string identifier;
    QString heading;
    /// In pixels at normal size.
    int width = 100;
    ColumnAlign align = ColumnAlign::left;
    bool visible = true;
    bool editable = false;
};

struct SortDescriptor {
    std::string key;
    bool ascending = true;
    bool operator==(const SortDescriptor&) const = default;
};

struct ListState {
    std::vector<ListColumn> columns;
    /// Only the first counts for sorting.
    std::vector<SortDescriptor> sortDescriptors;

    /// The columns shown, in their order.
    std::vector<const ListColumn*> visibleColumns() const
    {
        std::vector<const ListColumn*> shown;
        for (const ListColumn& column : columns) {
            if (column.visible)
                shown.push_back(&column);
        }
        return shown;
    }
    /// None when there is no such column.
    ListColumn* column(std::string_view identifier)
    {
        for (ListColumn& column : columns) {
            if (column.identifier == identifier)
                return &column;
        }
        return nullptr;
    }
};
