// A list of rows of plain texts with a search field: what is shown for a moment and stands in no file.
#pragma once

#include "storage/ListForm.h"
#include "storage/ReportItem.h"
#include "storage/qvDataSource.h"

class TextRows : public Collection<ReportItem> {
public:
    struct Column {
        QString heading;
        int width;
    };
    TextRows(const SortSettings& sorting, Beeper& beeper, const std::vector<Column>& columns);

    ListForm form;

    std::string objectValue(std::string_view identifier, int row) const override;
    /// Where the selected rows stood in what setRows() was given; ascending.
    std::vector<std::size_t> selectedPlaces() const;

protected:
    /// Lists these instead of what was listed; a text for each column.
    void setRows(const std::vector<std::vector<std::string>>& rows);
    void applyFilter() override;
};
