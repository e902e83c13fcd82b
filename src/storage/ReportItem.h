// One row of values with a kind each: a row of a report, or a row of the record picker.
#pragma once

#include "storage/dataObject.h"

#include <vector>

enum class ReportValueKind { number, string, date };

struct ReportValue {
    Text text;
    ReportValueKind kind = ReportValueKind::string;
};

class ReportItem : public dataObject {
public:
    /// The record behind the row may be none.
    explicit ReportItem(dataObject* record) : m_record(record) { }

    dataObject* getdObject() const override { return m_record; }
    void addValue(std::string_view text, ReportValueKind kind) { m_values.push_back({keep(text), kind}); }

    /// "field1" is the first value; other names are empty.
    std::string getFieldByName(std::string_view name) const override;
    /// "NUMBER", "STRING" or "DATE".
    virtual std::string kindOf(std::string_view name) const;
    bool contains(std::string_view text) const override;
    void appendSearchText(std::string& text) const override;
    float getNumericCode() const override { return m_record ? m_record->getNumericCode() : 0; }
    float getNumericOrdernum() const override { return m_record ? m_record->getNumericOrdernum() : 0; }

private:
    const ReportValue* valueOf(std::string_view name) const;

    dataObject* m_record;
    std::vector<ReportValue> m_values;
};
