// Searching without regard to case, the way every search field and every contains() does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The text folded code point by code point (as QString does it), in UTF-8.
std::string foldCase(std::string_view text);
void appendFolded(std::string& folded, std::string_view text);

/// A word to look for, folded once.
class FoldedText {
public:
    explicit FoldedText(std::string_view text) : m_folded(foldCase(text)) { }
    /// The empty word occurs nowhere.
    bool occursIn(std::string_view text) const;
    const std::string& folded() const { return m_folded; }

private:
    std::string m_folded;
};

/// The words of a search field: split at single blanks, empty pieces left out.
std::vector<std::string> searchWords(std::string_view text);
