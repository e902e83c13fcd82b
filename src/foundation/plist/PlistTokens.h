// A pull scanner over the XML form of a property list: one token at a time, without building anything.
//
// It knows what a property list can hold and nothing else of XML: the five predefined entities and character references, CDATA,
// comments, processing instructions and one document type, which is skipped unread. Nothing is ever expanded or fetched.
#pragma once

#include <string>
#include <string_view>

class PlistTokens {
public:
    enum class Token { dictOpen, dictClose, arrayOpen, arrayClose, key, text, integer, real, yes, no, date, data, end, error };

    /// The bytes must stay where they are. A byte-order mark is skipped.
    explicit PlistTokens(std::string_view bytes);

    Token next();
    /// Of a key or scalar: its text with entities resolved and line ends as LF. Good until the next call.
    std::string_view text() const { return m_text; }

    /// Passes these bytes when they come next, as they stand; for tags whose meaning the caller knows.
    bool take(std::string_view expected)
    {
        if (m_owesArrayClose || m_owesDictClose || !m_error.empty() || m_bytes.compare(m_at, expected.size(), expected) != 0)
            return false;
        m_at += expected.size();
        return true;
    }

    /// Where the next token starts. Going back is only allowed to a place that was asked for.
    std::size_t position() const { return m_at; }
    void setPosition(std::size_t position) { m_at = position; }
    std::string_view bytes() const { return m_bytes; }
    /// The bytes so far are used up; from here on these are read, as if they stood behind.
    void continueWith(std::string_view bytes)
    {
        m_bytes = bytes;
        m_at = 0;
    }
    /// The line of the current position, counted from 1.
    int line() const;
    const std::string& error() const { return m_error; }
    /// An error at the current place, in words.
    Token fail(std::string_view what);

private:
    enum class Skip { done, again, failed };
    /// The <plist> element around everything; a document may do without.
    enum class Root { none, open, closed };
    Token openingTag(std::string_view tag);
    Token closingTag(std::string_view tag);
    Skip skipMarkup();
    bool skipPast(std::string_view ending);
    bool skipDocumentType();
    bool content(std::string_view name);
    void appendQuoted(std::string_view piece);
    bool appendContent(std::string_view piece);
    bool appendReference(std::string_view piece, std::size_t& at);

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::string_view m_text;
    std::string m_resolved;
    std::string m_error;
    Root m_root = Root::none;
    /// A self-closing list or dictionary owes its end.
    bool m_owesArrayClose = false;
    bool m_owesDictClose = false;
};
