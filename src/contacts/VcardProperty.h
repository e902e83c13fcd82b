// The lines of a vCard: folded lines put together, and each taken apart into its name, parameters and values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct VcardProperty {
    /// Where it begins, counted from 1.
    int line = 0;
    /// In capitals, as name and types are.
    std::string group;
    std::string name;
    std::vector<std::string> types;
    /// What stands between semicolons, decoded, in clean UTF-8; mostVcardValues of them.
    std::vector<std::string> values;
    /// The same as one value, semicolons included.
    std::string text;
    /// The line was longer than anything of use, and what it holds is not known.
    bool isTooLong = false;
    /// The line is none of a vCard; nothing but where it begins is known.
    bool isBroken = false;

    bool hasType(std::string_view type) const;
};

class VcardLines {
public:
    /// The bytes must outlive it. They are a file's whole contents, of any version and any way to end lines.
    explicit VcardLines(std::string_view bytes);

    /// The next property; false at the end. Pictures and other lines of encoded data have no values.
    bool next(VcardProperty& property);
    /// How much of the file is behind, from 0 to 1.
    double share() const { return m_bytes.empty() ? 1 : static_cast<double>(m_at) / static_cast<double>(m_bytes.size()); }

private:
    bool atEnd() const { return m_at >= m_bytes.size(); }
    std::string_view peekLine();
    std::string_view takeLine();
    void unfold(std::string& logical, bool& tooLong);

    std::string m_converted;
    std::string_view m_bytes;
    std::size_t m_at = 0;
    /// Where the next ones stand: looked for once, however many lines the other sign ends before.
    std::size_t m_lineFeed = 0;
    std::size_t m_carriageReturn = 0;
    int m_line = 1;
    bool m_inData = false;
};

/// No property that anybody needs has as many.
inline constexpr std::size_t mostVcardValues = 16;
/// A property of more bytes is not taken.
inline constexpr std::size_t longestVcardProperty = 64 * 1024;
