// Splits rich text into its tokens. Knows nothing of what the words mean.
#pragma once

#include <string>
#include <string_view>

struct RtfToken {
    enum class Kind { groupOpen, groupClose, word, symbol, hex, text, end };
    Kind kind = Kind::end;
    /// Of a word its name, of text its bytes, of a symbol its character.
    std::string_view text;
    int parameter = 0;
    bool hasParameter = false;
    /// Of a hex token.
    unsigned char byte = 0;
};

class RtfTokenizer {
public:
    explicit RtfTokenizer(std::string_view bytes) : m_bytes(bytes) { }
    RtfToken next();
    /// Passes over raw bytes that follow a word like "bin".
    void skip(std::size_t bytes);
    /// Where the token that came last begins and ends.
    std::size_t tokenBegin() const { return m_begin; }
    std::size_t tokenEnd() const { return m_at; }

private:
    RtfToken word();
    RtfToken control();
    RtfToken plain();

    std::string_view m_bytes;
    std::size_t m_begin = 0;
    std::size_t m_at = 0;
};
