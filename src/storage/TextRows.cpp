#include "storage/TextRows.h"

#include <algorithm>

TextRows::TextRows(const SortSettings& sorting, Beeper& beeper, const std::vector<Column>& columns) : Collection(sorting, beeper)
{
    form.search.onEdited = [this] { filter(); };
    for (const Column& column : columns)
        list.columns.push_back({"field" + std::to_string(list.columns.size() + 1), column.heading, column.width});
    setDefaultSortNew(false);
}

void TextRows::setRows(const std::vector<std::vector<std::string>>& rows)
{
    destroyRecords();
    // A row's id is its place and one more.
    int id = 0;
    for (const std::vector<std::string>& texts : rows) {
        auto row = std::make_unique<ReportItem>(nullptr);
        row->setID(++id);
        row->setStore(textStore());
        for (const std::string& text : texts)
            row->addValue(text, ReportValueKind::string);
        add(std::move(row));
    }
    applyCurrentSort();
    filter();
}

void TextRows::applyFilter()
{
    makeAllVisible();
    hideWithoutWords(form.search.text().toStdString());
}

std::string TextRows::objectValue(std::string_view identifier, int row) const
{
    const ReportItem* item = getnthVisibleItem(row);
    return item ? item->getFieldByName(identifier) : std::string();
}

std::vector<std::size_t> TextRows::selectedPlaces() const
{
    std::vector<std::size_t> places;
    for (const dataObject* row : selectedRecords())
        places.push_back(static_cast<std::size_t>(row->getID()) - 1);
    std::sort(places.begin(), places.end());
    return places;
}
