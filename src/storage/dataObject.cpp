#include "storage/dataObject.h"

#include "foundation/Log.h"
#include "storage/qvDataSource.h"

#include <QDate>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 7> dateFieldNames {
    "date", "depositpaid", "balancepaid", "dateadded", "datepaid", "enddate", "startdate"};
constexpr std::array<std::string_view, 5> plainNumberNames {"qty", "cost", "item:cost", "amount", "payment:amount"};
constexpr std::array<std::string_view, 3> codeNames {"code", "ordernum", "order:number"};
constexpr std::array<std::string_view, 16> moneyNames {"total", "bought", "price", "stockcost", "stockretail", "optimumqty", "reorderqty",
    "shipping", "balance", "deposit", "value", "valuewithtax", "net", "vat", "tax", "amount"};

template <class Names>
bool isOneOf(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

dataObject::~dataObject() = default;

void dataObject::setNSDate(const std::optional<QDateTime>& date)
{
    if (date)
        seldom().nsdate = date;
}

void dataObject::setUnknownKeys(std::shared_ptr<const PlistValue> keys)
{
    if (keys || m_seldom)
        seldom().unknownKeys = std::move(keys);
}

dataObject::Seldom& dataObject::seldom()
{
    if (!m_seldom)
        m_seldom = std::make_unique<Seldom>();
    return *m_seldom;
}

std::string dataObject::getFieldByName(std::string_view) const
{
    return {};
}

bool dataObject::setFieldByName(std::string_view, std::string_view)
{
    return false;
}

std::int64_t dataObject::getDateByName(std::string_view) const
{
    return QDate(2000, 1, 1).toJulianDay();
}

bool dataObject::contains(std::string_view) const
{
    return true;
}

void dataObject::appendSearchText(std::string&) const { }

std::string dataObject::getActualFieldNameFor(std::string_view) const
{
    return {};
}

bool dataObject::isDate(std::string_view name)
{
    return isOneOf(dateFieldNames, name);
}

bool dataObject::isNumber(std::string_view name, std::string_view codeSort)
{
    if (isOneOf(plainNumberNames, name))
        return true;
    if (isOneOf(codeNames, name))
        return codeSort != "1";
    return isOneOf(moneyNames, name);
}

bool dataObject::isListed() const
{
    return m_collection && m_collection->holds(*this);
}

void dataObject::noteChange()
{
    if (m_collection)
        m_collection->noteChange(*this);
}

void dataObject::noteLink()
{
    if (m_collection)
        m_collection->noteLink(*this);
}

const TextStorePointer& dataObject::store()
{
    if (!m_store)
        m_store = m_collection ? m_collection->textStore() : std::make_shared<TextStore>();
    return m_store;
}

Text dataObject::keep(std::string_view bytes)
{
    return isCleanUtf8(bytes) ? store()->add(bytes) : store()->add(cleanUtf8(bytes));
}
