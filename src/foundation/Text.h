// Field values: small handles to immutable UTF-8 that lives in an append-only store.
//
// A database holds millions of short values. A Text is one pointer; its bytes stand once in a TextStore, whose memory only
// ever grows, so copying a record's values copies pointers, and other threads may read what a snapshot refers to while new
// texts are added. Whoever keeps Texts keeps their store alive (one shared reference a record, not one a value).
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class Text {
public:
    /// The empty text.
    constexpr Text() = default;

    std::string_view view() const
    {
        if (!m_bytes)
            return {};
        std::uint32_t length;
        std::memcpy(&length, m_bytes, sizeof length);
        return {m_bytes + sizeof length, length};
    }
    /// The processor already fetches where the bytes begin.
    void fetch() const { __builtin_prefetch(m_bytes); }
    std::string string() const { return std::string(view()); }
    QString toQString() const
    {
        const std::string_view bytes = view();
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    bool isEmpty() const { return view().empty(); }
    operator std::string_view() const { return view(); }

    friend bool operator==(Text left, Text right) { return left.m_bytes == right.m_bytes || left.view() == right.view(); }
    friend bool operator==(Text left, std::string_view right) { return left.view() == right; }
    friend bool operator==(Text left, const char* right) { return left.view() == right; }

private:
    friend class TextStore;
    template <std::size_t N>
    friend struct LiteralText;
    explicit constexpr Text(const char* bytes) : m_bytes(bytes) { }

    /// Four bytes of length, then the UTF-8; null for the empty text.
    const char* m_bytes = nullptr;
};

/// Owns the bytes of Texts. Only one thread adds; what was handed out never moves and never changes.
class TextStore {
public:
    TextStore() = default;
    ~TextStore();
    TextStore(const TextStore&) = delete;
    TextStore& operator=(const TextStore&) = delete;

    /// A text holding these bytes, which must be clean UTF-8 (see cleanUtf8).
    Text add(std::string_view bytes)
    {
        if (bytes.empty())
            return {};
        const std::size_t needed = sizeof(std::uint32_t) + bytes.size();
        if (needed > m_left)
            startChunk(needed);
        char* place = m_next;
        const auto length = static_cast<std::uint32_t>(bytes.size());
        std::memcpy(place, &length, sizeof length);
        std::memcpy(place + sizeof length, bytes.data(), bytes.size());
        m_next += needed;
        m_left -= needed;
        return Text(place);
    }
    /// The same, but a text that was added lately is given again: what a file holds repeats itself.
    Text addRepeating(std::string_view bytes);
    /// Once a file is read, nothing is repeated any more.
    void endRepeating() { m_recent.reset(); }
    /// Bytes of memory taken, used or not.
    std::size_t capacity() const { return m_capacity; }

private:
    struct RecentText {
        std::uint64_t hash = 0;
        Text text;
    };
    using RecentTexts = std::array<RecentText, 4096>;
    struct Chunk {
        char* bytes;
        std::size_t size;
    };

    void startChunk(std::size_t atLeast);

    std::vector<Chunk> m_chunks;
    /// By the hash of their bytes; none while nothing is expected to repeat.
    std::unique_ptr<RecentTexts> m_recent;
    char* m_next = nullptr;
    std::size_t m_left = 0;
    std::size_t m_capacity = 0;
};

using TextStorePointer = std::shared_ptr<TextStore>;

/// UTF-8 of the text fit for the files: lone surrogates become U+FFFD, control characters that no XML may hold are dropped.
std::string cleanUtf8(const QString& text);
/// The same for bytes from outside: what is not UTF-8 becomes U+FFFD.
std::string cleanUtf8(std::string_view bytes);
/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);
/// True when cleanUtf8 would change nothing.
bool isCleanUtf8(std::string_view bytes);

inline QString toQString(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// A text known when the program is built: literalText<"Customer">(). It needs no store and lives as long as the program.
template <std::size_t N>
struct LiteralText {
    constexpr LiteralText(const char (&text)[N])
    {
        constexpr std::uint32_t length = N - 1;
        for (std::size_t i = 0; i < 4; ++i)
            bytes[i] = static_cast<char>((length >> (8 * i)) & 0xff);
        for (std::size_t i = 0; i < N; ++i)
            bytes[4 + i] = text[i];
    }
    constexpr Text text() const { return N > 1 ? Text(bytes) : Text(); }

    char bytes[N + 4] {};
};

template <LiteralText literal>
constexpr Text literalText()
{
    return literal.text();
}
