// The money-out list: bills, among them those that record a purchase order's payment.
#pragma once

#include "orders/Bill.h"
#include "storage/CollectionFile.h"

class BillManager : public Collection<Bill> {
public:
    BillManager(const SortSettings& sorting, Beeper& beeper, const SettingsStore& settings)
        : Collection(sorting, beeper)
        , m_settings(settings)
    {
    }

    /// A new, empty bill in the list.
    Bill& createAndAddDataObject() { return add(std::make_unique<Bill>(m_settings)); }
    const SettingsStore& settings() const { return m_settings; }

private:
    const SettingsStore& m_settings;
};

/// "bills.xml".
class BillFile : public CollectionFile<Bill> {
public:
    explicit BillFile(BillManager& bills) : CollectionFile(bills, recordFiles::bills, "bills", "bills"), m_settings(bills.settings()) { }

    const char* recordName() const override { return "Bill"; }

protected:
    std::unique_ptr<Bill> make() const override { return std::make_unique<Bill>(m_settings); }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }

private:
    static constexpr std::array<std::string_view, 5> telling {"number", "name", "details", "datepaid", "amount"};
    static constexpr std::array<std::string_view, 2> keys {"number", "name"};
    const SettingsStore& m_settings;
};
