// The searched texts of a collection's records, folded once and laid end to end, so that a word is looked for in one pass.
//
// Records that changed since are looked at one by one until enough have gathered to fold everything anew. The records found for a
// word are kept: typing on narrows what is kept instead of starting again.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class dataObject;

class SearchIndex {
public:
    /// The records holding the word, as flags by their position in the list. Positions are those of the records given.
    const std::vector<bool>& recordsWithWord(std::string_view word, const std::vector<dataObject*>& records);

    /// A record's fields changed.
    void changed(const dataObject& record);
    /// Records came, went or moved.
    void reset();

private:
    void build(const std::vector<dataObject*>& records);
    std::vector<bool> search(const std::string& folded) const;
    std::vector<bool> narrow(const std::vector<bool>& candidates, const std::string& folded) const;
    const std::vector<bool>* longestKnownStart(const std::string& folded) const;
    std::string_view textOf(std::size_t position) const;

    std::string m_folded;
    /// Where each record's text starts; one more entry than records.
    std::vector<std::size_t> m_starts;
    std::unordered_map<const dataObject*, std::size_t> m_positions;
    std::unordered_map<std::string, std::vector<bool>> m_known;
    std::unordered_set<const dataObject*> m_changed;
    bool m_valid = false;
};
