#include "orders/Bill.h"

#include "foundation/Dates.h"
#include "orders/Payment.h"

std::int64_t Bill::getDateByName(std::string_view nameAsDate) const
{
    if (nameAsDate != "datepaidasdate")
        return Record::getDateByName(nameAsDate);
    const char* format = recordDateFormat(m_settings);
    return dates::readDate(values().datePaid, format).value_or(dates::fallback()).toJulianDay();
}
