// Money received against an order. Every payment belongs to exactly one order and also stands in the money-in list.
#pragma once

#include "foundation/plist/PlistValue.h"
#include "desktop/ValueCheck.h"
#include "storage/Record.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

class Order;
class SettingsStore;

struct PaymentValues {
    Text amount;
    Text datePaid;
    Text paymentMethod;

    bool operator==(const PaymentValues&) const = default;
};

inline constexpr std::array paymentFields {
    field<&PaymentValues::amount>("amount").searched(),
    field<&PaymentValues::datePaid>("datepaid"),
    field<&PaymentValues::paymentMethod>("paymentmethod").searched(),
};
static_assert(namesAreUnique(paymentFields));

/// A payment as its order's file holds it.
struct StoredPayment {
    PaymentValues values;
    /// Keys that a payment does not know, and known ones whose value is no text; null when there are none.
    std::shared_ptr<const PlistValue> unknownKeys;
};

/// An entry among an order's payments that is none.
struct ForeignPaymentEntry {
    /// Its place among all entries of the list, from 0.
    std::size_t place = 0;
    PlistValue value;
};
using ForeignPaymentEntries = std::vector<ForeignPaymentEntry>;

class Payment : public Record<Payment, PaymentValues> {
public:
    struct Nested { };
    static constexpr bool idIsSettable = false;
    static constexpr auto& fieldRows() { return paymentFields; }
    static std::span<const DerivedField<Payment>> derivedFields();

    explicit Payment(const SettingsStore& settings) : m_settings(settings) { }

    std::string_view getAmount() const { return values().amount; }
    std::string_view getDatePaid() const { return values().datePaid; }
    std::string_view getPaymentMethod() const { return values().paymentMethod; }
    void setAmount(std::string_view amount) { set(&PaymentValues::amount, amount); }
    void setDatePaid(std::string_view date) { set(&PaymentValues::datePaid, date); }
    void setPaymentMethod(std::string_view method) { set(&PaymentValues::paymentMethod, method); }

    Order* getOrder() const { return m_order; }
    void setOrder(Order* order) { m_order = order; }
    /// The title and number of the order it belongs to; empty without one.
    std::string getTitle() const;
    std::string getOrdernum() const;

    /// Month first only when the date format says so or was never chosen; what does not read is the date of 1/1/00.
    QDate getDatepaidasdate() const;

    bool contains(std::string_view text) const override;
    void appendSearchText(std::string& text) const override;
    std::int64_t getDateByName(std::string_view nameAsDate) const override;
    float getNumericOrdernum() const override;

private:
    const SettingsStore& m_settings;
    Order* m_order = nullptr;
};

/// The pattern that record dates are read with: month first for "1" and while no format was chosen, else day first.
const char* recordDateFormat(const SettingsStore& settings);
/// Says what is wrong with the text of a record's date. Until the person chose how to write dates, day first is no fault, though it is read
/// month first. The settings outlive the check.
ValueCheck recordDateCheck(const SettingsStore& settings);
