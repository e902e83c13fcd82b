#include "storage/SearchIndex.h"

#include "storage/dataObject.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

/// No text holds this byte, so a word never matches across two records.
constexpr char recordEnd = '\0';
constexpr std::size_t mostChanged = 256;
constexpr std::size_t mostKnownWords = 64;

/// Where the word, which is not empty, stands next.
const char* findFolded(const char* from, const char* end, const std::string& word)
{
#ifdef __SSE2__
    // Its first and last byte are looked for at sixteen places at once.
    const __m128i first = _mm_set1_epi8(word.front());
    const __m128i last = _mm_set1_epi8(word.back());
    const std::size_t toLast = word.size() - 1;
    for (; static_cast<std::size_t>(end - from) >= toLast + 16; from += 16) {
        const __m128i firsts = _mm_cmpeq_epi8(first, _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
        const __m128i lasts = _mm_cmpeq_epi8(last, _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + toLast)));
        auto places = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(firsts, lasts)));
        for (; places != 0; places &= places - 1) {
            const char* place = from + __builtin_ctz(places);
            if (std::memcmp(place, word.data(), word.size()) == 0)
                return place;
        }
    }
#endif
    return static_cast<const char*>(memmem(from, static_cast<std::size_t>(end - from), word.data(), word.size()));
}

} // namespace

void SearchIndex::reset()
{
    m_valid = false;
}

void SearchIndex::changed(const dataObject& record, std::size_t position)
{
    if (!m_valid)
        return;
    m_known.clear();
    m_changed.emplace(&record, position);
    if (m_changed.size() > mostChanged)
        reset();
}

void SearchIndex::appended(const dataObject& record)
{
    if (!m_valid)
        return;
    m_known.clear();
    appendText(record);
}

void SearchIndex::removed(const dataObject& record, std::size_t position)
{
    if (!m_valid)
        return;
    m_known.clear();
    m_changed.erase(&record);
    for (auto& [other, place] : m_changed) {
        if (place > position)
            --place;
    }
    const std::size_t size = m_starts[position + 1] - m_starts[position];
    m_folded.erase(m_starts[position], size);
    const auto gone = m_starts.begin() + static_cast<std::ptrdiff_t>(position);
    std::for_each(m_starts.erase(gone), m_starts.end(), [size](std::size_t& start) { start -= size; });
}

void SearchIndex::build(const std::vector<dataObject*>& records)
{
    m_folded.clear();
    m_starts.assign(1, 0);
    m_known.clear();
    m_changed.clear();
    m_starts.reserve(records.size() + 1);
    for (const dataObject* record : records)
        appendText(*record);
    m_valid = true;
}

void SearchIndex::appendText(const dataObject& record)
{
    m_text.clear();
    record.appendSearchText(m_text);
    appendFolded(m_folded, m_text);
    m_folded += recordEnd;
    m_starts.push_back(m_folded.size());
}

std::string_view SearchIndex::textOf(std::size_t position) const
{
    return std::string_view(m_folded).substr(m_starts[position], m_starts[position + 1] - m_starts[position]);
}

std::vector<bool> SearchIndex::search(const std::string& folded) const
{
    std::vector<bool> found(m_starts.size() - 1);
    if (folded.empty())
        return found;
    const char* const begin = m_folded.data();
    const char* const end = begin + m_folded.size();
    auto next = m_starts.begin();
    for (const char* hit = findFolded(begin, end, folded); hit;) {
        const auto offset = static_cast<std::size_t>(hit - begin);
        while (*next <= offset)
            ++next;
        found[static_cast<std::size_t>(next - m_starts.begin()) - 1] = true;
        hit = findFolded(begin + *next, end, folded);
    }
    return found;
}

std::vector<bool> SearchIndex::narrow(const std::vector<bool>& candidates, const std::string& folded) const
{
    std::vector<bool> found(candidates.size());
    for (std::size_t position = 0; position < candidates.size(); ++position) {
        if (candidates[position])
            found[position] = textOf(position).find(folded) != std::string_view::npos;
    }
    return found;
}

const std::vector<bool>* SearchIndex::longestKnownStart(const std::string& folded) const
{
    for (std::size_t length = folded.size(); length > 0; --length) {
        const auto known = m_known.find(folded.substr(0, length));
        if (known != m_known.end())
            return &known->second;
    }
    return nullptr;
}

const std::vector<bool>& SearchIndex::recordsWithWord(std::string_view word, const std::vector<dataObject*>& records)
{
    if (!m_valid)
        build(records);
    const std::string folded = foldCase(word);
    const auto known = m_known.find(folded);
    if (known != m_known.end())
        return known->second;
    const std::vector<bool>* start = longestKnownStart(folded);
    std::vector<bool> found = start ? narrow(*start, folded) : search(folded);
    for (const auto& [record, position] : m_changed)
        found[position] = record->contains(word);
    if (m_known.size() >= mostKnownWords)
        m_known.clear();
    return m_known.insert_or_assign(folded, std::move(found)).first->second;
}

bool SearchIndex::isWordIn(std::size_t position, const FoldedText& word, const std::vector<dataObject*>& records)
{
    if (!m_valid)
        build(records);
    if (m_changed.contains(records[position]))
        return records[position]->contains(word.folded());
    return textOf(position).find(word.folded()) != std::string_view::npos;
}

WordSearch::WordSearch(SearchIndex& index, const std::string& word, const std::vector<dataObject*>& records, std::size_t expected)
    : m_index(index)
    , m_word(word)
    , m_records(records)
{
    constexpr std::size_t worthwhile = 16;
    if (expected > records.size() / worthwhile)
        m_all = &index.recordsWithWord(word, records);
}
