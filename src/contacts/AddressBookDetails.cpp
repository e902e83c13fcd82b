#include "contacts/AddressBookDetails.h"

#include "storage/TextSearch.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view lineSeparator = "\u2028";

/// At every way to break a line.
std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines(1);
    while (!text.empty()) {
        std::size_t broken = 0;
        if (text.starts_with("\r\n"))
            broken = 2;
        else if (text.front() == '\n' || text.front() == '\r')
            broken = 1;
        else if (text.starts_with(lineSeparator))
            broken = lineSeparator.size();
        if (broken > 0)
            lines.emplace_back();
        else
            lines.back() += text.front();
        text.remove_prefix(std::max<std::size_t>(broken, 1));
    }
    return lines;
}

using SetText = void (Contact::*)(std::string_view);

/// A street of several lines is a whole address.
constexpr std::array<SetText, 5> streetLines {
    &Contact::setAdd1, &Contact::setAdd2, &Contact::setAdd3, &Contact::setPostcode, &Contact::setCountry};

void setIfPresent(Contact& contact, SetText set, const std::string& text)
{
    if (!text.empty())
        (contact.*set)(text);
}

void setAddress(Contact& contact, const Person::Address& address)
{
    for (const SetText clear :
        {&Contact::setAdd1, &Contact::setAdd2, &Contact::setAdd3, &Contact::setCounty, &Contact::setPostcode, &Contact::setCountry})
        (contact.*clear)({});
    const std::vector<std::string> street = linesOf(address.street);
    for (std::size_t line = 0; line < std::min(street.size(), streetLines.size()); ++line)
        (contact.*streetLines[line])(street[line]);
    // The town takes the place of a second line.
    setIfPresent(contact, &Contact::setAdd2, address.city);
    setIfPresent(contact, &Contact::setCounty, address.state);
    setIfPresent(contact, &Contact::setPostcode, address.zip);
    setIfPresent(contact, &Contact::setCountry, address.country);
}

bool isMobile(const Person::Phone& phone)
{
    return FoldedText("mobile").occursIn(phone.label);
}

void append(std::string& joined, std::string_view separator, const std::string& text)
{
    if (!joined.empty())
        joined += separator;
    joined += text;
}

} // namespace

void setContactDetailsFromAB(Contact& contact, const Person& person)
{
    contact.setName(person.firstName + ' ' + person.lastName);
    if (!person.addresses.empty())
        setAddress(contact, person.addresses.front());
    std::string mobile;
    std::string phone;
    for (const Person::Phone& each : person.phones)
        append(isMobile(each) ? mobile : phone, " / ", each.number);
    contact.setMobile(mobile);
    contact.setPhone(phone);
    std::string emails;
    for (const std::string& email : person.emails)
        append(emails, "; ", email);
    contact.setEmail(emails);
}

const Person* personWithId(const std::vector<Person>& people, std::string_view uniqueId)
{
    const auto found = std::find_if(people.begin(), people.end(), [&](const Person& person) { return person.uniqueId == uniqueId; });
    return uniqueId.empty() || found == people.end() ? nullptr : &*found;
}

bool isAddressBookReference(std::string_view ref)
{
    return ref.find(":ABPerson") != std::string_view::npos;
}
