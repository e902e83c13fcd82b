// Writes the XML form of a property list, byte for byte as the platform's own writer does.
//
// Streaming: what is written goes through one buffer to a sink, so that a large file needs no memory. Dictionaries' keys have to
// come in the order of their code points; write() sorts them.
#pragma once

#include "foundation/plist/PlistValue.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class PlistWriter {
public:
    using Sink = std::function<void(std::string_view)>;
    explicit PlistWriter(Sink sink);

    void openDict() { open("dict"); }
    void closeDict() { close("dict"); }
    void openArray() { open("array"); }
    void closeArray() { close("array"); }
    void key(std::string_view name);
    void text(std::string_view text);
    /// What stands before the text of a key at this depth; for textAfter().
    static std::string opening(std::string_view key, std::size_t depth);
    /// A key and its text in one go; opening was made for the depth that is written at.
    void textAfter(std::string_view opening, std::string_view text);
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
    void open(const char* element);
    void close(const char* element);
    void begin();
    void beginLine();
    void indent();
    void flushWhenFull();
    void appendEscaped(std::string_view text);

    Sink m_sink;
    std::string m_buffer;
    std::size_t m_depth = 0;
    /// A list or dictionary was opened and nothing written into it yet.
    const char* m_pending = nullptr;
};

namespace plist {

/// The whole document.
std::string write(const PlistValue& value);

} // namespace plist
