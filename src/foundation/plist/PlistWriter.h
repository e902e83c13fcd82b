// Writes the XML form of a property list, byte for byte as the platform's own writer does.
//
// Streaming: what is written goes through one buffer to a sink, so that a large file needs no memory. Dictionaries' keys have to
// come in the order of their code points; write() sorts them.
#pragma once

#include "foundation/plist/PlistValue.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class PlistWriter {
public:
    /// Takes the next bytes. What it leaves in their place is not looked at: it may exchange the memory for some of its own.
    using Sink = std::function<void(std::string& bytes)>;
    explicit PlistWriter(Sink sink);

    void openDict() { open("dict"); }
    void closeDict() { close("dict"); }
    void openArray() { open("array"); }
    void closeArray() { close("array"); }
    void key(std::string_view name);
    void text(std::string_view text);
    /// What stands before the text of a key at a depth. Whole steps are copied, since their number is all that has to be found out then.
    class Opening {
    public:
        Opening(std::string_view key, std::size_t depth);

    private:
        friend class PlistWriter;
        static constexpr std::size_t step = 32;
        void copyTo(char* place) const
        {
            for (std::size_t at = 0; at < m_bytes.size(); at += step)
                std::memcpy(place + at, m_bytes.data() + at, step);
        }
        /// Filled up to whole steps.
        std::string m_bytes;
        std::size_t m_size = 0;
    };
    static Opening opening(std::string_view key, std::size_t depth) { return {key, depth}; }
    /// A key and its text in one go; opening was made for the depth that is written at.
    void textAfter(const Opening& opening, std::string_view text)
    {
        beginLine();
        char* place = roomFor(opening.m_bytes.size() + text.size() + textEnd.size());
        opening.copyTo(place);
        place += opening.m_size;
        m_used += opening.m_size;
        if (!copyPlain(place, text))
            return endEscaped(text);
        std::copy(textEnd.begin(), textEnd.end(), place + text.size());
        m_used += text.size() + textEnd.size();
    }
    void boolean(bool value);
    /// Base64 in lines at the indent of the value.
    void data(std::string_view bytes);
    /// A number or date in the text it has.
    void scalar(const char* element, std::string_view text);
    /// Any value, dictionaries sorted.
    void value(const PlistValue& value);
    /// Ends the document and hands the rest to the sink.
    void finish();

private:
    /// Small enough to stay in the processor's cache until it is written.
    static constexpr std::size_t fullBuffer = 1 << 18;
    static constexpr std::string_view textEnd = "</string>\n";

    void open(const char* element);
    void close(const char* element);
    void begin();
    void beginLine()
    {
        if (m_pending || m_used >= fullBuffer)
            beginLineSlowly();
    }
    void beginLineSlowly();
    void indent();
    void handOver();
    /// Where so many bytes may be put next.
    char* roomFor(std::size_t bytes)
    {
        if (m_buffer.size() - m_used < bytes)
            makeRoom(bytes);
        return m_buffer.data() + m_used;
    }
    void makeRoom(std::size_t bytes);
    static bool copyPlain(char* place, std::string_view text);
    void endEscaped(std::string_view text);
    void append(std::string_view bytes);
    void appendTag(std::string_view before, std::string_view element, std::string_view after);
    void appendEscaped(std::string_view text);

    Sink m_sink;
    std::string m_buffer;
    std::size_t m_used = 0;
    std::size_t m_depth = 0;
    /// A list or dictionary was opened and nothing written into it yet.
    const char* m_pending = nullptr;
};

namespace plist {

/// The whole document.
std::string write(const PlistValue& value);

} // namespace plist
