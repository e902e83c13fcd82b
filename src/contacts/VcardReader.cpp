#include "contacts/VcardReader.h"

#include "contacts/VcardProperty.h"
#include "desktop/TextTable.h"
#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace {

/// A telephone number, or the group whose label says what it is.
struct GroupedPhone {
    Person::Phone phone;
    std::string group;
};

struct Card {
    int line = 0;
    int linesTaken = 0;
    /// Surname first; none when the card has no such line.
    std::vector<std::string> name;
    std::string fullName;
    std::string organisation;
    std::string uid;
    std::string addressBookUid;
    bool isOrganisation = false;
    std::vector<Person::Address> addresses;
    std::vector<GroupedPhone> phones;
    std::vector<std::string> emails;
    /// The user's words, by group.
    std::map<std::string, std::string> labels;
};

std::string valueAt(const VcardProperty& property, std::size_t n)
{
    return n < property.values.size() ? property.values[n] : std::string();
}

void removePrefixIgnoringCase(std::string& text, std::string_view prefix)
{
    const QString start = toQString(text).left(static_cast<qsizetype>(prefix.size()));
    if (start.compare(toQString(prefix), Qt::CaseInsensitive) == 0)
        text.erase(0, prefix.size());
}

/// Post box, flat and street are one thing to us. Where one of them is a whole address of several lines, all are lines.
std::string streetOf(const VcardProperty& property)
{
    QStringList parts;
    for (std::size_t n = 0; n < 3; ++n) {
        if (const std::string part = valueAt(property, n); !part.empty())
            parts += QString::fromStdString(part);
    }
    const bool hasLines = std::any_of(parts.begin(), parts.end(), [](const QString& part) { return part.contains('\n'); });
    return parts.join(hasLines ? "\n" : ", ").toStdString();
}

void takeAddress(Card& card, const VcardProperty& property)
{
    Person::Address address {streetOf(property), valueAt(property, 3), valueAt(property, 4), valueAt(property, 5), valueAt(property, 6)};
    const bool isEmpty = address.street.empty() && address.city.empty() && address.state.empty() && address.zip.empty();
    if (!isEmpty || !address.country.empty())
        card.addresses.push_back(std::move(address));
}

/// "mobile" for those, else what the card says of the number: "home fax".
std::string labelOf(const VcardProperty& property)
{
    if (property.hasType("CELL") || property.hasType("IPHONE"))
        return "mobile";
    QStringList words;
    for (const std::string& type : property.types) {
        if (type == "PREF" || type == "VOICE" || type.empty())
            continue;
        words += toQString(type).toLower();
    }
    return words.join(' ').toStdString();
}

void takePhone(Card& card, const VcardProperty& property)
{
    std::string number = property.text;
    removePrefixIgnoringCase(number, "tel:");
    if (const std::size_t extension = number.find(";ext="); extension != std::string::npos)
        number.replace(extension, 5, " ext. ");
    if (!number.empty())
        card.phones.push_back({{labelOf(property), number}, property.group});
}

void takeEmail(Card& card, const VcardProperty& property)
{
    std::string email = property.text;
    removePrefixIgnoringCase(email, "mailto:");
    if (!email.empty())
        card.emails.push_back(email);
}

/// Words that an address book has of its own stand between marks.
void takeLabel(Card& card, const VcardProperty& property)
{
    std::string label = property.text;
    if (label.starts_with("_$!<") && label.ends_with(">!$_") && label.size() >= 8)
        label = label.substr(4, label.size() - 8);
    card.labels[property.group] = label;
}

bool isAnyCase(const std::string& text, const char* word)
{
    return toQString(text).compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

struct Taker {
    std::string_view name;
    void (*take)(Card&, const VcardProperty&);
};
constexpr std::array takers {
    Taker {"N", [](Card& card, const VcardProperty& property) { card.name = property.values; }},
    Taker {"FN", [](Card& card, const VcardProperty& property) { card.fullName = property.text; }},
    Taker {"ORG", [](Card& card, const VcardProperty& property) { card.organisation = valueAt(property, 0); }},
    Taker {"UID", [](Card& card, const VcardProperty& property) { card.uid = property.text; }},
    Taker {"X-ABUID", [](Card& card, const VcardProperty& property) { card.addressBookUid = property.text; }},
    Taker {"X-ABSHOWAS",
        [](Card& card, const VcardProperty& property) {
            card.isOrganisation = card.isOrganisation || isAnyCase(property.text, "company");
        }},
    Taker {"KIND",
        [](Card& card, const VcardProperty& property) { card.isOrganisation = card.isOrganisation || isAnyCase(property.text, "org"); }},
    Taker {"ADR", takeAddress},
    Taker {"TEL", takePhone},
    Taker {"EMAIL", takeEmail},
    Taker {"X-ABLABEL", takeLabel},
};

void takeNames(Person& person, const Card& card)
{
    const auto part = [&](std::size_t n) { return n < card.name.size() ? card.name[n] : std::string(); };
    person.lastName = part(0);
    person.firstName = part(1);
    if (!person.lastName.empty() || !person.firstName.empty())
        return;
    const bool isNamedAsCompany = !card.organisation.empty() && (card.fullName.empty() || card.fullName == card.organisation);
    if (card.isOrganisation || isNamedAsCompany) {
        person.lastName = card.organisation.empty() ? card.fullName : card.organisation;
        return;
    }
    const std::size_t blank = card.fullName.rfind(' ');
    person.firstName = blank == std::string::npos ? std::string() : card.fullName.substr(0, blank);
    person.lastName = blank == std::string::npos ? card.fullName : card.fullName.substr(blank + 1);
}

bool isNobody(const Person& person)
{
    return person.firstName.empty() && person.lastName.empty() && person.addresses.empty() && person.phones.empty()
        && person.emails.empty();
}

Person personOf(Card card)
{
    Person person;
    takeNames(person, card);
    person.addresses = std::move(card.addresses);
    person.emails = std::move(card.emails);
    for (GroupedPhone& grouped : card.phones) {
        const auto label = card.labels.find(grouped.group);
        if (!grouped.group.empty() && label != card.labels.end() && grouped.phone.label != "mobile")
            grouped.phone.label = label->second;
        person.phones.push_back(std::move(grouped.phone));
    }
    if (!card.addressBookUid.empty())
        person.uniqueId = card.addressBookUid;
    else if (!card.uid.empty())
        person.uniqueId = card.uid + ":ABPerson";
    return person;
}

class CardReader {
public:
    explicit CardReader(std::string_view bytes) : m_lines(bytes) { }

    VcardPeople read(const GoesOn& goesOn)
    {
        constexpr int betweenQuestions = 1000;
        int read = 0;
        for (VcardProperty property; m_lines.next(property);) {
            take(property);
            m_result.wasStopped = ++read % betweenQuestions == 0 && goesOn && !goesOn(m_lines.share());
            if (m_result.wasStopped)
                return std::move(m_result);
        }
        if (m_card)
            endUnfinished();
        return std::move(m_result);
    }

private:
    void take(const VcardProperty& property)
    {
        if (!property.isBroken && property.name == "BEGIN" && isAnyCase(property.text, "vcard"))
            return begin(property);
        if (!m_card)
            return;
        if (!property.isBroken && property.name == "END" && isAnyCase(property.text, "vcard"))
            return end();
        if (m_inner > 0)
            return;
        if (property.isBroken)
            tell(property.line, localText("This line belongs to no card: it has no name and colon."));
        else
            takeInto(*m_card, property);
    }

    void begin(const VcardProperty& property)
    {
        m_result.hasCards = true;
        // A card may hold the card of somebody's agent.
        if (m_card && m_agentFollows) {
            ++m_inner;
            return;
        }
        if (m_card)
            endUnfinished();
        m_card.emplace();
        m_card->line = property.line;
        m_agentFollows = false;
    }

    void takeInto(Card& card, const VcardProperty& property)
    {
        m_agentFollows = property.name == "AGENT" && property.text.empty();
        const auto taker = std::find_if(takers.begin(), takers.end(), [&](const Taker& each) { return each.name == property.name; });
        if (taker == takers.end())
            return;
        if (property.isTooLong) {
            tell(property.line, localText("This line is longer than anything a contact can hold."));
        } else if (!property.values.empty()) {
            ++card.linesTaken;
            if (card.linesTaken <= longestVcard)
                taker->take(card, property);
            else if (card.linesTaken == longestVcard + 1)
                tell(property.line, localText("From here on the card is longer than anybody's, and nothing more of it was taken."));
        }
    }

    void end()
    {
        if (m_inner > 0) {
            --m_inner;
            m_agentFollows = false;
            return;
        }
        finish();
    }

    void endUnfinished()
    {
        tell(m_card->line, localText("The card that begins here has no end; what stands in it was taken."));
        m_inner = 0;
        finish();
    }

    void finish()
    {
        const int line = m_card->line;
        Person person = personOf(std::move(*m_card));
        m_card.reset();
        if (isNobody(person))
            tell(line, localText("The card that begins here holds nobody."));
        else
            m_result.people.push_back(std::move(person));
    }

    void tell(int line, const QString& sentence)
    {
        if (m_result.troubles.size() < mostVcardTroubles)
            m_result.troubles.push_back({line, sentence});
        else
            ++m_result.furtherTroubles;
    }

    VcardLines m_lines;
    VcardPeople m_result;
    std::optional<Card> m_card;
    bool m_agentFollows = false;
    /// How many cards inside the card have begun.
    int m_inner = 0;
};

} // namespace

VcardPeople readVcards(std::string_view bytes, const GoesOn& goesOn)
{
    return CardReader(bytes).read(goesOn);
}
