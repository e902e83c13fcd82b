#include "storage/qvPicker.h"

#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "storage/TextSearch.h"

namespace {

/// The columns are called "1" to "4"; the row's values "field1" to "field4".
std::string pickerField(std::string_view identifier)
{
    return "field" + std::string(identifier);
}

/// A row whose values are read from its record when somebody looks at them: of twenty thousand only a few ever are.
class PickerRow : public ReportItem {
public:
    PickerRow(dataObject& record, const qvPicker& picker) : ReportItem(&record), m_picker(picker) { }

    std::string getFieldByName(std::string_view name) const override
    {
        const std::string* field = fieldOf(name);
        return field ? getdObject()->getFieldByName(*field) : std::string();
    }
    std::string kindOf(std::string_view name) const override
    {
        const std::string* field = fieldOf(name);
        return field && m_picker.isNumber(*field) ? "NUMBER" : "STRING";
    }
    bool contains(std::string_view text) const override
    {
        std::string all;
        appendSearchText(all);
        return FoldedText(text).occursIn(all);
    }
    void appendSearchText(std::string& text) const override
    {
        for (const std::string& field : m_picker.fields)
            text.append(getdObject()->getFieldByName(field)).append(1, '\n');
    }

private:
    const std::string* fieldOf(std::string_view name) const
    {
        constexpr std::string_view prefix = "field";
        if (!name.starts_with(prefix))
            return nullptr;
        const int column = numbers::leadingInt(name.substr(prefix.size()));
        const std::vector<std::string>& fields = m_picker.fields;
        return column >= 1 && column <= static_cast<int>(fields.size()) ? &fields[static_cast<std::size_t>(column) - 1] : nullptr;
    }

    const qvPicker& m_picker;
};

} // namespace

qvPicker::qvPicker(const SortSettings& sorting, Beeper& beeper, Alerts& alerts) : Collection(sorting, beeper), m_alerts(alerts)
{
    form.search.onEdited = [this] { filter(); };
    form.choose.run = [this] { chooseSelected(); };
    form.cancel.run = [this] { cancel(); };
}

void qvPicker::beginfor(Action action, const qvDataSource& source, std::vector<std::string> fieldNames, std::vector<int> widths,
    QStringList headings, const QString& type)
{
    std::vector<dataObject*> records;
    for (int n = 0; n < source.getCount(); ++n)
        records.push_back(source.getnthSortedItem(n));
    beginfor(std::move(action), records, std::move(fieldNames), std::move(widths), std::move(headings), type);
}

void qvPicker::beginfor(Action action, const std::vector<dataObject*>& records, std::vector<std::string> fieldNames,
    std::vector<int> widths, QStringList headings, const QString& type)
{
    if (records.empty()) {
        m_alerts.ask(makeAlert(alerts::noneInDatabase, {}, {type}));
        return;
    }
    open(std::move(action), records, std::move(fieldNames), widths, headings, type);
}

void qvPicker::beginFromAddressBookFor(Action action, const std::vector<dataObject*>& people, std::vector<std::string> fieldNames,
    std::vector<int> widths, QStringList headings, const QString& type)
{
    if (people.empty()) {
        m_alerts.ask(makeAlert(alerts::noneInAddressBook, {}, {type}));
        return;
    }
    open(std::move(action), people, std::move(fieldNames), widths, headings, type);
}

void qvPicker::open(Action action, const std::vector<dataObject*>& records, std::vector<std::string> fieldNames,
    const std::vector<int>& widths, const QStringList& headings, const QString& type)
{
    m_action = std::move(action);
    fields = std::move(fieldNames);
    form.setTitle(fillText("%@ %@", {localText("Select"), type}));
    form.search.setText({});
    fillColumns(widths, headings);
    fillRows(records);
    reloadData();
    selectRow(0);
    form.open();
    form.focus(form.search);
}

void qvPicker::fillColumns(const std::vector<int>& widths, const QStringList& headings)
{
    // Rows and columns change together for whoever shows them: no old row meets a new column.
    destroyRecords();
    list.columns.clear();
    list.sortDescriptors.clear();
    for (std::size_t i = 0; i < fields.size(); ++i)
        list.columns.push_back({std::to_string(i + 1), headings.value(static_cast<int>(i)), widths[i]});
    columnsChanged();
}

void qvPicker::fillRows(const std::vector<dataObject*>& records)
{
    makeRoom(records.size());
    for (dataObject* record : records)
        add(std::make_unique<PickerRow>(*record, *this));
    setDefaultSortNew(false);
}

bool qvPicker::isNumber(std::string_view field) const
{
    return dataObject::isNumber(field, sortSettings().codeSort());
}

void qvPicker::applyFilter()
{
    makeAllVisible();
    hideWithoutWords(form.search.text().toStdString());
}

void qvPicker::filter()
{
    qvDataSource::filter();
    if (selectedRow() < 0)
        selectRow(0);
}

void qvPicker::sortUsingDescriptors(std::span<const SortDescriptor> descriptors)
{
    if (descriptors.empty())
        return;
    const SortDescriptor& first = descriptors.front();
    logLine("sorting by '" + first.key + "'");
    const int column = numbers::leadingInt(first.key);
    if (column < 1 || column > static_cast<int>(fields.size()))
        return;
    const std::string& field = fields[static_cast<std::size_t>(column) - 1];
    SortOptions options = isNumber(field) ? SortOptions::numeric : SortOptions::text;
    // A row's own id says nothing about its record.
    const bool isCode = field == "code" || field == "ordernum" || field == "order:number";
    if (isCode && sortSettings().codeSort() == "2")
        options = SortOptions::numericOfRecord;
    sortByColumn(pickerField(first.key), first.ascending, options);
}

std::string qvPicker::objectValue(std::string_view identifier, int row) const
{
    const ReportItem* item = getnthVisibleItem(row);
    return item ? item->getFieldByName(pickerField(identifier)) : std::string();
}

void qvPicker::chooseSelected()
{
    ReportItem* chosen = getSelectedItem();
    if (!chosen || !form.isOpen())
        return;
    dataObject& record = *chosen->getdObject();
    if (!record.isListed())
        return dropRow(*chosen);
    form.close();
    if (const Action action = std::exchange(m_action, {}))
        action(record);
}

/// Its record was deleted while the chooser was open.
void qvPicker::dropRow(ReportItem& row)
{
    beeper().beep();
    deleteItem(row);
    reloadData();
    selectRow(0);
}

void qvPicker::cancel()
{
    m_action = {};
    form.close();
}
