#include "documents/StationeryTags.h"

#include "contacts/Contact.h"
#include "documents/Substitution.h"
#include "orders/Order.h"
#include "storage/Settings.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

using Words = std::span<const std::string_view>;

struct ContactWord {
    std::string_view word;
    std::string (*value)(const Contact&);
};

#define CONTACT_VALUE(getter) [](const Contact& contact) { return std::string(contact.getter()); }
constexpr ContactWord contactWords[] {
    {"ref", CONTACT_VALUE(getRef)},
    {"title", CONTACT_VALUE(getTitle)},
    {"salutation", CONTACT_VALUE(getSalutation)},
    {"name", CONTACT_VALUE(getName)},
    {"surname", CONTACT_VALUE(getSurname)},
    {"firstname", CONTACT_VALUE(getFirstname)},
    {"company", CONTACT_VALUE(getCompanyName)},
    {"jobtitle", CONTACT_VALUE(getJobTitle)},
    {"add1", CONTACT_VALUE(getAdd1)},
    {"add2", CONTACT_VALUE(getAdd2)},
    {"add3", CONTACT_VALUE(getAdd3)},
    {"county", CONTACT_VALUE(getCounty)},
    {"postcode", CONTACT_VALUE(getPostcode)},
    {"country", CONTACT_VALUE(getCountry)},
    {"comments", CONTACT_VALUE(getComments)},
    {"phone", CONTACT_VALUE(getPhone)},
    {"mobile", CONTACT_VALUE(getMobile)},
    {"email", CONTACT_VALUE(getEmail)},
};
#undef CONTACT_VALUE

// The lists differ from each other in what they fill, what they empty and in which order. Templates rely on what is left standing.

constexpr std::array<std::string_view, 17> filledOfContact {"ref", "title", "salutation", "name", "surname", "company", "jobtitle", "add1",
    "add2", "add3", "county", "postcode", "comments", "country", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 18> filledWithColon {"ref", "salutation", "title", "comments", "name", "surname", "firstname",
    "company", "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};
/// The tag with one t, "<contactitle>", is the one that is emptied; "<contacttitle>" is not.
constexpr std::array<std::string_view, 17> emptiedOfContact {"ref", "salutation", "itle", "name", "surname", "firstname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 17> emptiedWithColon {"ref", "salutation", "title", "comments", "name", "surname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};

constexpr std::array<std::string_view, 18> filledOfSecond {"ref", "salutation", "title", "name", "surname", "firstname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "comments", "country", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 17> filledOfSecondWithColon {"ref", "salutation", "title", "comments", "name", "surname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 16> emptiedOfSecond {"ref", "salutation", "title", "name", "surname", "company", "jobtitle", "add1",
    "add2", "add3", "postcode", "country", "county", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 18> emptiedOfSecondWithColon {"ref", "salutation", "title", "comments", "name", "surname",
    "firstname", "company", "jobtitle", "add1", "add2", "add3", "postcode", "country", "county", "phone", "mobile", "email"};

constexpr std::array<std::string_view, 19> filledOfGiven {"ref", "salutation", "title", "name", "surname", "firstname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "comments", "country", "county", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 17> emptiedOfGiven {"ref", "salutation", "title", "name", "firstname", "surname", "company",
    "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};
constexpr std::array<std::string_view, 18> emptiedOfGivenWithColon {"ref", "salutation", "title", "comments", "name", "firstname",
    "surname", "company", "jobtitle", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"};

QString tagOf(const char* prefix, std::string_view word)
{
    return QLatin1String(prefix) + QLatin1String(word.data(), static_cast<qsizetype>(word.size())) + '>';
}

void fill(Substitution& text, const char* prefix, Words words, const Contact& contact)
{
    for (std::string_view word : words) {
        const auto* row =
            std::find_if(std::begin(contactWords), std::end(contactWords), [&](const ContactWord& known) { return known.word == word; });
        text.replaceAllOccurencesOf(tagOf(prefix, word), QString::fromStdString(row->value(contact)));
    }
}

void empty(Substitution& text, const char* prefix, Words words)
{
    for (std::string_view word : words)
        text.replaceAllOccurencesOf(tagOf(prefix, word), QString());
}

struct OrderTag {
    const char* tag;
    std::string (*value)(const Order&);
};

#define ORDER_VALUE(getter) [](const Order& order) { return std::string(order.getter()); }
#define ORDER_FIELD(name) [](const Order& order) { return order.getFieldByName(name); }
constexpr OrderTag orderTags[] {
    {"<balance>", ORDER_VALUE(getBalance)},
    {"<balancepaid>", ORDER_VALUE(getBalancePaid)},
    {"<balanceremaining>", ORDER_VALUE(getBalanceRemaining)},
    {"<totaldue>", ORDER_VALUE(getTotalDue)},
    {"<date>", ORDER_VALUE(getDate)},
    {"<deposit>", ORDER_VALUE(getDeposit)},
    {"<depositpaid>", ORDER_VALUE(getDepositPaid)},
    {"<description>", ORDER_VALUE(getDescription)},
    {"<discountdescription>", ORDER_FIELD("discountdescription")},
    {"<discount>", ORDER_FIELD("discount")},
    {"<applydiscount>", ORDER_FIELD("applydiscount")},
    {"<discountispercentage>", ORDER_FIELD("discountispercentage")},
    {"<ordernumber>", ORDER_VALUE(getOrderNum)},
    {"<net>", ORDER_VALUE(getNet)},
    {"<status>", ORDER_VALUE(getStatus)},
    {"<shipping>", ORDER_VALUE(getShipping)},
    {"<tax>", ORDER_VALUE(getTax)},
    {"<title>", ORDER_VALUE(getTitle)},
    {"<type>", ORDER_VALUE(getType)},
    {"<subtotal>", ORDER_VALUE(getValue)},
    {"<total>", ORDER_VALUE(getValueWithTax)},
    {"<totalitemspurchased>", ORDER_VALUE(getTotalItemsPurchased)},
    {"<paymentmethod>", ORDER_VALUE(getPaymentMethod)},
    {"<payments>", ORDER_VALUE(getPayments)},
};
#undef ORDER_VALUE
#undef ORDER_FIELD

struct SettingTag {
    const char* tag;
    const char* key;
};

constexpr SettingTag settingTags[] {
    {"<currencysymbol>", settings::currency},
    {"<currencycode>", settings::currencyCode},
    {"<taxrate>", settings::taxRate},
    {"<taxdescription>", settings::taxStatement},
};

} // namespace

void stationeryTags::fillContact(Substitution& text, const Contact* contact)
{
    if (contact) {
        fill(text, "<contact", filledOfContact, *contact);
        fill(text, "<contact:", filledWithColon, *contact);
    } else {
        empty(text, "<contact", emptiedOfContact);
        empty(text, "<contact:", emptiedWithColon);
    }
}

void stationeryTags::fillSecondContact(Substitution& text, const Contact* contact)
{
    if (contact) {
        fill(text, "<contact2", filledOfSecond, *contact);
        fill(text, "<contact2:", filledOfSecondWithColon, *contact);
    } else {
        empty(text, "<contact2", emptiedOfSecond);
        empty(text, "<contact2:", emptiedOfSecondWithColon);
    }
}

void stationeryTags::fillOrder(Substitution& text, const Order& order, const SettingsStore& settings)
{
    for (const OrderTag& row : orderTags)
        text.replaceAllOccurencesOf(QString::fromLatin1(row.tag), QString::fromStdString(row.value(order)));
    for (const SettingTag& row : settingTags) {
        std::optional<QString> value;
        if (const std::optional<std::string> set = settings.text(row.key))
            value = QString::fromStdString(*set);
        text.replaceAllOccurencesOf(QString::fromLatin1(row.tag), value);
    }
}

void stationeryTags::fillGivenContact(Substitution& text, const Contact* contact)
{
    if (contact) {
        fill(text, "<contact", filledOfGiven, *contact);
        fill(text, "<contact:", filledWithColon, *contact);
    } else {
        empty(text, "<contact", emptiedOfGiven);
        empty(text, "<contact:", emptiedOfGivenWithColon);
    }
}
