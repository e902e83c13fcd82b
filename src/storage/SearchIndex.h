// The searched texts of a collection's records, folded once and laid end to end, so that a word is looked for in one pass.
//
// Records that changed since are looked at one by one until enough have gathered to fold everything anew. The records found for a
// word are kept: typing on narrows what is kept instead of starting again.
#pragma once

#include "storage/TextSearch.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class dataObject;

class SearchIndex {
public:
    /// The records holding the word, as flags by their position in the list. Positions are those of the records given.
    const std::vector<bool>& recordsWithWord(std::string_view word, const std::vector<dataObject*>& records);
    /// Whether the record at the position holds the word: for a few, where looking through all of them would be a waste.
    bool isWordIn(std::size_t position, const FoldedText& word, const std::vector<dataObject*>& records);

    /// Whether changes are of any interest.
    bool isBuilt() const { return m_valid; }
    /// The fields of a record at that position in the list changed.
    void changed(const dataObject& record, std::size_t position);
    /// A record came behind the last one.
    void appended(const dataObject& record);
    /// The record at that position went, and those behind it moved up.
    void removed(const dataObject& record, std::size_t position);
    /// Records came, went or moved in any other way.
    void reset();

private:
    void build(const std::vector<dataObject*>& records);
    void appendText(const dataObject& record);
    std::vector<bool> search(const std::string& folded) const;
    std::vector<bool> narrow(const std::vector<bool>& candidates, const std::string& folded) const;
    const std::vector<bool>* longestKnownStart(const std::string& folded) const;
    std::string_view textOf(std::size_t position) const;

    /// Of the record that is being appended; kept for its room.
    std::string m_text;
    std::string m_folded;
    /// Where each record's text starts; one more entry than records.
    std::vector<std::size_t> m_starts;
    std::unordered_map<std::string, std::vector<bool>> m_known;
    /// With their positions.
    std::unordered_map<const dataObject*, std::size_t> m_changed;
    bool m_valid = false;
};

/// One word looked for in some of a list's records: in all at once when there are many of them, else in each that is asked about.
class WordSearch {
public:
    /// expected: how many records are asked about.
    WordSearch(SearchIndex& index, const std::string& word, const std::vector<dataObject*>& records, std::size_t expected);

    bool isIn(std::size_t position) const { return m_all ? (*m_all)[position] : m_index.isWordIn(position, m_word, m_records); }

private:
    SearchIndex& m_index;
    FoldedText m_word;
    const std::vector<dataObject*>& m_records;
    const std::vector<bool>* m_all = nullptr;
};
