#include "inventory/ItemFinder.h"

#include "foundation/Trimmed.h"
#include "inventory/ItemManager.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

namespace {

/// No text holds these bytes. Each stands before its text, and the last one behind all of them.
constexpr char beforeEan = '\x01';
constexpr char beforeCode = '\x02';
constexpr char beforeName = '\x03';
constexpr char beforeVariation = '\x04';
constexpr char atEnd = '\x05';

/// Without what stands between the texts, so that nothing typed reaches across them.
std::string folded(std::string_view text)
{
    std::string result = foldCase(cleanUtf8(trimmed(text)));
    std::erase_if(result, [](char byte) { return byte >= beforeEan && byte <= atEnd; });
    return result;
}

void appendTexts(std::string& all, const Item& item)
{
    const auto append = [&](char before, std::string_view text) {
        all += before;
        appendFolded(all, trimmed(text));
    };
    append(beforeEan, item.getEan());
    append(beforeCode, item.getCode());
    append(beforeName, item.getItem());
    append(beforeVariation, item.getVariation());
    all += atEnd;
}

} // namespace

void ItemFinder::build()
{
    if (m_valid)
        return;
    m_folded.clear();
    m_starts.clear();
    m_order.clear();
    m_places.clear();
    for (dataObject* record : m_items.records()) {
        auto& item = static_cast<Item&>(*record);
        m_places.emplace(&item, m_order.size());
        m_order.push_back(&item);
        m_starts.push_back(m_folded.size());
        appendTexts(m_folded, item);
    }
    m_starts.push_back(m_folded.size());
    m_valid = true;
}

std::string_view ItemFinder::textOf(std::size_t place) const
{
    return std::string_view(m_folded).substr(m_starts[place], m_starts[place + 1] - m_starts[place]);
}

void ItemFinder::changed(const Item& item)
{
    const auto place = m_valid ? m_places.find(&item) : m_places.end();
    if (place == m_places.end())
        return;
    std::string texts;
    appendTexts(texts, item);
    m_valid = texts == textOf(place->second);
}

void ItemFinder::collect(Found& found, const std::string& pattern, const std::vector<std::string>& words, std::size_t most) const
{
    const char* const begin = m_folded.data();
    const char* const end = begin + m_folded.size();
    const char* at = begin;
    // Each is met once here, so only what was found before may come again.
    const std::size_t before = found.size();
    const auto isNew = [&found, before](const Item* item) {
        const std::span earlier = std::span(found).first(before);
        return std::find(earlier.begin(), earlier.end(), item) == earlier.end();
    };
    while (found.size() < most) {
        at = static_cast<const char*>(memmem(at, static_cast<std::size_t>(end - at), pattern.data(), pattern.size()));
        if (!at)
            return;
        const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), static_cast<std::size_t>(at - begin));
        const auto place = static_cast<std::size_t>(next - m_starts.begin()) - 1;
        const std::string_view texts = textOf(place);
        const bool hasAll =
            std::all_of(words.begin(), words.end(), [&](const std::string& word) { return texts.find(word) != std::string_view::npos; });
        Item* const item = m_order[place];
        if (hasAll && isNew(item))
            found.push_back(item);
        at = begin + *next;
    }
}

std::vector<Item*> ItemFinder::named(std::string_view text)
{
    const std::string whole = folded(text);
    Found found;
    if (whole.empty())
        return found;
    build();
    for (const char before : {beforeEan, beforeCode, beforeName}) {
        collect(found, before + whole + static_cast<char>(before + 1), {}, std::numeric_limits<std::size_t>::max());
        if (!found.empty())
            break;
    }
    return found;
}

std::vector<Item*> ItemFinder::suggestions(std::string_view text, std::size_t most)
{
    const std::string whole = folded(text);
    Found found;
    if (whole.empty())
        return found;
    build();
    for (const char before : {beforeCode, beforeEan, beforeName})
        collect(found, before + whole, {}, most);
    const std::vector<std::string> words = searchWords(whole);
    collect(found, words.front(), words, most);
    return found;
}
