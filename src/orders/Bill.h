// Money paid out: a supplier's invoice or another expense, and the record of a purchase order's payment.
#pragma once

#include "storage/Record.h"

#include <array>
#include <span>

class SettingsStore;

struct BillValues {
    Text number;
    Text name;
    Text datePaid;
    Text net;
    Text vat;
    Text amount;
    Text details;
    Text category;

    bool operator==(const BillValues&) const = default;
};

inline constexpr std::array billFields {
    field<&BillValues::amount>("amount"),
    field<&BillValues::net>("net"),
    field<&BillValues::vat>("vat"),
    field<&BillValues::category>("category").searched(),
    field<&BillValues::datePaid>("datepaid").also("datePaid"),
    field<&BillValues::details>("details").also("comments").searched(),
    field<&BillValues::number>("number").searched(),
    field<&BillValues::name>("name").alsoRead("surname").searched(),
};
static_assert(namesAreUnique(billFields));

class Bill : public Record<Bill, BillValues> {
public:
    struct Nested { };
    static constexpr bool idIsSettable = false;
    static constexpr auto& fieldRows() { return billFields; }
    static std::span<const DerivedField<Bill>> derivedFields() { return {}; }

    explicit Bill(const SettingsStore& settings) : m_settings(settings) { }

    std::string_view getNumber() const { return values().number; }
    std::string_view getName() const { return values().name; }
    std::string_view getDatePaid() const { return values().datePaid; }
    std::string_view getNet() const { return values().net; }
    std::string_view getVAT() const { return values().vat; }
    std::string_view getAmount() const { return values().amount; }
    std::string_view getDetails() const { return values().details; }
    std::string_view getCategory() const { return values().category; }
    void setNumber(std::string_view number) { set(&BillValues::number, number); }
    void setName(std::string_view name) { set(&BillValues::name, name); }
    void setDatePaid(std::string_view date) { set(&BillValues::datePaid, date); }
    void setNet(std::string_view net) { set(&BillValues::net, net); }
    void setVAT(std::string_view vat) { set(&BillValues::vat, vat); }
    void setAmount(std::string_view amount) { set(&BillValues::amount, amount); }
    void setDetails(std::string_view details) { set(&BillValues::details, details); }
    void setCategory(std::string_view category) { set(&BillValues::category, category); }

    /// For imports and reports, which know only one date of a bill.
    static bool isDate(std::string_view name) { return name == "datepaid"; }
    std::int64_t getDateByName(std::string_view nameAsDate) const override;

private:
    const SettingsStore& m_settings;
};
