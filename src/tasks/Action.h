// A task: something to do, an appointment with an alarm, or a record of time spent.
#pragma once

#include "storage/Record.h"

#include <array>
#include <span>

struct ActionValues {
    Text title;
    Text details;
    Text type = literalText<"Task">();
    Text startDate;
    Text startTime;
    Text endDate;
    Text endTime;
    Text totalTime;
    Text totalTimeUnits = literalText<"Hours">();
    Text rate;
    Text totalCharge;
    int order = 0;
    int material = 0;
    bool complete = false;
    bool alarm = false;
    bool alarmAcknowledged = false;

    bool operator==(const ActionValues&) const = default;
};

/// Every key of a task is always written.
inline constexpr std::array actionFields {
    field<&ActionValues::title>("title").searched().always(),
    field<&ActionValues::details>("details").searched().always(),
    field<&ActionValues::type>("type").unnamed().always(),
    field<&ActionValues::startDate>("startdate").inAnyCase().always(),
    field<&ActionValues::startTime>("starttime").inAnyCase().always(),
    field<&ActionValues::endDate>("enddate").inAnyCase().always(),
    field<&ActionValues::endTime>("endtime").inAnyCase().always(),
    field<&ActionValues::totalTime>("totaltime").inAnyCase().always(),
    field<&ActionValues::totalTimeUnits>("totaltimeunits").inAnyCase().always(),
    field<&ActionValues::totalCharge>("totalcharge").inAnyCase().always(),
    field<&ActionValues::rate>("rate").setOnly().always(),
    // Reading "order" by name answers the empty text; lists rely on it.
    field<&ActionValues::order>("order").setOnly().always(),
    field<&ActionValues::material>("material").unnamed().always(),
    field<&ActionValues::complete>("complete").shownAs(FlagWords::capital).setsBy(FlagSetBy::capitalYes).always(),
    field<&ActionValues::alarm>("alarm").unnamed().always(),
    field<&ActionValues::alarmAcknowledged>("alarmacknowledged").unnamed().always(),
};
static_assert(namesAreUnique(actionFields));

class Action : public Record<Action, ActionValues> {
public:
    struct Nested { };
    static constexpr bool idIsSettable = false;
    static constexpr auto& fieldRows() { return actionFields; }
    static std::span<const DerivedField<Action>> derivedFields() { return {}; }

    std::string_view getTitle() const { return values().title; }
    std::string getType() const override { return values().type.string(); }
    bool isComplete() const override { return values().complete; }
    std::string_view getComplete() const { return values().complete ? "YES" : "NO"; }
    int getOrder() const { return values().order; }
    int getMaterial() const { return values().material; }

    /// Day first always; what does not read is the date of 1/1/00.
    QDate getStartdateasdate() const;
    QDate getEnddateasdate() const;
    std::int64_t getDateByName(std::string_view nameAsDate) const override;
};
