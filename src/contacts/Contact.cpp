#include "contacts/Contact.h"

namespace {

constexpr std::array contactDerivedFields {
    DerivedField<Contact> {"address", [](const Contact& contact) { return contact.getAddress(); }},
    DerivedField<Contact> {"firstname", [](const Contact& contact) { return contact.getFirstname(); }},
    DerivedField<Contact> {"surname", [](const Contact& contact) { return contact.getSurname(); }},
};

/// The pieces between single blanks, empty ones included.
std::vector<std::string_view> namePieces(std::string_view name)
{
    std::vector<std::string_view> pieces;
    for (std::size_t blank; (blank = name.find(' ')) != std::string_view::npos; name.remove_prefix(blank + 1))
        pieces.push_back(name.substr(0, blank));
    pieces.push_back(name);
    return pieces;
}

} // namespace

std::span<const DerivedField<Contact>> Contact::derivedFields()
{
    return contactDerivedFields;
}

std::span<Text ContactValues::*const> Contact::shownTexts()
{
    static constexpr std::array texts {&ContactValues::name};
    return texts;
}

std::string Contact::getAddress() const
{
    return values().add1.string() + ' ' + values().add2.string() + ' ' + values().add3.string() + ' ' + values().postcode.string();
}

std::string Contact::getShortAddress() const
{
    if (values().add1.isEmpty())
        return values().postcode.string();
    return values().add1.string() + " ... " + values().postcode.string();
}

std::string Contact::getFirstname() const
{
    if (isCompany())
        return values().name.string();
    const std::vector<std::string_view> pieces = namePieces(values().name);
    const bool startsWithBlank = pieces.front().empty() && pieces.size() > 1;
    return std::string(startsWithBlank ? pieces[1] : pieces.front());
}

std::string Contact::getSurname() const
{
    if (isCompany())
        return values().name.string();
    const std::vector<std::string_view> pieces = namePieces(values().name);
    const bool endsWithBlank = pieces.back().empty() && pieces.size() > 1;
    return std::string(endsWithBlank ? pieces[pieces.size() - 2] : pieces.back());
}

bool Contact::isTheSameContactAs(const Contact& other) const
{
    return foldCase(getName()) == foldCase(other.getName()) && foldCase(getAdd1()) == foldCase(other.getAdd1());
}
