#include "tasks/Action.h"

#include "foundation/Dates.h"

namespace {

QDate taskDate(std::string_view text)
{
    return dates::readDate(text, dates::dayFirst).value_or(dates::fallback());
}

} // namespace

QDate Action::getStartdateasdate() const
{
    return taskDate(values().startDate);
}

QDate Action::getEnddateasdate() const
{
    return taskDate(values().endDate);
}

std::int64_t Action::getDateByName(std::string_view nameAsDate) const
{
    if (nameAsDate == "startdateasdate")
        return getStartdateasdate().toJulianDay();
    if (nameAsDate == "enddateasdate")
        return getEnddateasdate().toJulianDay();
    return Record::getDateByName(nameAsDate);
}
