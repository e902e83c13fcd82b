#include "People.h"

#include "Vocabulary.h"

#include <algorithm>

namespace {

using vocabulary::Words;

void setText(PlistValue& record, const char* key, std::string text)
{
    if (!text.empty())
        record.set(key, PlistValue(std::move(text)));
}

std::string plain(Words words)
{
    return std::string(words);
}

std::string phoneNumber(Chance& chance, const char* area)
{
    return std::string(area) + " 555 " + std::to_string(chance.between(100, 999));
}

/// A mail address made of the ASCII letters of a name.
std::string mailName(const std::string& name)
{
    std::string letters;
    for (const char character : name) {
        const bool isCapital = character >= 'A' && character <= 'Z';
        if (isCapital || (character >= 'a' && character <= 'z'))
            letters += static_cast<char>(isCapital ? character + 32 : character);
        else if (character == ' ' && !letters.empty() && letters.back() != '.')
            letters += '.';
    }
    return letters;
}

PlistValue newContact(int id, const std::string& name, const char* kind, const char* type)
{
    PlistValue contact = PlistValue::makeDict();
    setText(contact, "id", std::to_string(id));
    setText(contact, "company", "0");
    setText(contact, "kind", kind);
    setText(contact, "name", name);
    setText(contact, "ref", "C" + std::to_string(id));
    setText(contact, "type", type);
    return contact;
}

void addAddress(PlistValue& contact, Chance& chance)
{
    const vocabulary::Place& place = chance.from(vocabulary::places);
    setText(contact, "add1", std::to_string(chance.between(1, 140)) + " " + plain(chance.from(vocabulary::streets)));
    setText(contact, "add2", plain(place.town));
    setText(contact, "county", plain(place.county));
    setText(contact, "country", "United Kingdom");
    const char letters[] = {static_cast<char>('A' + chance.between(0, 25)), static_cast<char>('A' + chance.between(0, 25)), 0};
    setText(contact, "postcode", plain(place.postcode) + " " + std::to_string(chance.between(1, 9)) + letters);
}

void addReach(PlistValue& contact, Chance& chance, const std::string& mail)
{
    setText(contact, "phone", phoneNumber(chance, "01943"));
    if (chance.oneIn(2))
        setText(contact, "mobile", phoneNumber(chance, "07700"));
    setText(contact, "email", mail);
}

PlistValue makePerson(Chance& chance, int id, const char* kind)
{
    const vocabulary::Person& first = chance.from(vocabulary::firstNames);
    const std::string name = plain(first.first) + " " + plain(chance.from(vocabulary::lastNames));
    PlistValue person = newContact(id, name, kind, "Customer");
    setText(person, "title", plain(first.title));
    setText(person, "salutation", plain(first.first));
    addAddress(person, chance);
    addReach(person, chance, mailName(name) + std::to_string(id) + "@mail.example");
    if (chance.oneIn(9))
        setText(person, "comments", "Prefers e-mail.\nNo deliveries on Fridays & Mondays.");
    return person;
}

PlistValue makeCompany(Chance& chance, int id, Words words, const char* type)
{
    // In a large business the names come round again, told apart by a number.
    const std::string name = plain(words) + (id > 400 ? " " + std::to_string(id) : std::string());
    PlistValue company = newContact(id, name, "Company", type);
    setText(company, "website", "http://www." + mailName(name) + ".example");
    addAddress(company, chance);
    addReach(company, chance, "office@" + mailName(name) + ".example");
    return company;
}

} // namespace

People makePeople(Chance& chance, int count)
{
    People people;
    const int suppliers = std::max(8, count / 20);
    int company = 0;
    for (int id = 1; id <= count; ++id) {
        if (id <= suppliers) {
            const auto& names = vocabulary::supplierNames;
            people.contacts.append(makeCompany(chance, id, names[static_cast<std::size_t>(id - 1) % names.size()], "Supplier"));
            people.suppliers.push_back(id);
            continue;
        }
        const int turn = id % 8;
        if (turn == 0) {
            company = id;
            const auto& names = vocabulary::companyNames;
            people.contacts.append(makeCompany(chance, id, names[static_cast<std::size_t>(id / 8) % names.size()], "Customer"));
        } else if (company > 0 && turn <= 2) {
            PlistValue person = makePerson(chance, id, "Company Contact");
            person.set("company", PlistValue(std::to_string(company)));
            setText(person, "jobtitle", turn == 1 ? "Manager" : "Accounts");
            people.contacts.append(std::move(person));
        } else {
            people.contacts.append(makePerson(chance, id, "Individual"));
        }
        people.customers.push_back(id);
    }
    return people;
}
