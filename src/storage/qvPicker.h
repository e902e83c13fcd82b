// The record picker: a chooser over the records of any collection.
//
// It is a collection of rows itself, with up to four sortable columns "1" to "4"; choosing a row hands its record to whoever asked.
#pragma once

#include "storage/ListForm.h"
#include "storage/ReportItem.h"
#include "storage/qvDataSource.h"

#include <QStringList>

#include <functional>

class Alerts;

class PickerForm : public ListForm {
public:
    CommandField cancel {*this, "cancel"};
    CommandField choose {*this, "choose"};
};

class qvPicker : public Collection<ReportItem> {
public:
    using Action = std::function<void(dataObject&)>;

    qvPicker(const SortSettings& sorting, Beeper& beeper, Alerts& alerts);

    PickerForm form;

    /// Opens the chooser over the records of source, one column a field. type is the word for one record: "Contact", "Item".
    /// With no records it says so instead. A record that is deleted while the chooser is open is not handed over.
    void beginfor(Action action, const qvDataSource& source, std::vector<std::string> fieldNames, std::vector<int> widths,
        QStringList headings, const QString& type);
    /// The same over a list of records put together by the caller, all of one collection.
    void beginfor(Action action, const std::vector<dataObject*>& records, std::vector<std::string> fieldNames, std::vector<int> widths,
        QStringList headings, const QString& type);
    /// The same over people of the address book, who have been put into a collection of their own.
    void beginFromAddressBookFor(Action action, const std::vector<dataObject*>& people, std::vector<std::string> fieldNames,
        std::vector<int> widths, QStringList headings, const QString& type);
    /// The selected row's record goes to the caller, and the chooser closes.
    void chooseSelected();
    void cancel();

    void filter() override;
    /// The columns' names are numbers; what they sort by is the field they show.
    void sortUsingDescriptors(std::span<const SortDescriptor> descriptors) override;
    std::string objectValue(std::string_view identifier, int row) const override;
    /// Whether the field of the records sorts as a number.
    bool isNumber(std::string_view field) const;

private:
    void applyFilter() override;
    void open(Action action, const std::vector<dataObject*>& records, std::vector<std::string> fieldNames, const std::vector<int>& widths,
        const QStringList& headings, const QString& type);
    void fillRows(const std::vector<dataObject*>& records);
    void dropRow(ReportItem& row);
    void fillColumns(const std::vector<int>& widths, const QStringList& headings);

    Alerts& m_alerts;
    Action m_action;
};
