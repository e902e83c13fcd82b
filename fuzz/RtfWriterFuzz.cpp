// Any bytes, read and written, read the same again; and words replaced in the file are words replaced in what is read.
#include "Fuzz.h"
#include "documents/rtf/RtfBuilder.h"
#include "documents/rtf/RtfTextEdit.h"
#include "documents/rtf/RtfWriter.h"

#include <QGuiApplication>
#include <QTextDocument>

#include <algorithm>

namespace {

/// Whether the reader and the editor of the file split the text into the same pieces: they need not around tables, which end pieces
/// where they please, pictures' names, and letters of two bytes.
bool isPlain(std::string_view bytes)
{
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
    const auto has = [&](std::string_view word) { return bytes.find(word) != std::string_view::npos; };
    return ascii && !has("intbl") && !has("cell") && !has("row") && !has("NeXTGraphic") && !has("\\'") && !has("\\u");
}

QString wordsOf(std::string_view rtf)
{
    return plainTextOf(*makeDocument(RtfBuilder().build(rtf), fuzzFolder()));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    quieten();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view bytes = inputText(data, size);
    const RichText text = RtfBuilder().build(bytes);
    const std::string written = writeRtf(text);
    expect(RtfBuilder().build(written) == text, "what is written reads the same");

    const std::string replaced = replaceInRtf(bytes, "<total>", "<due>");
    const std::string longerThanAll(replaced.size() + 1, 'x');
    expect(replaceInRtf(replaced, longerThanAll, "") == replaced, "nothing to replace changes nothing");
    if (!goesTheLongWay(data, size))
        return 0;
    expect(takeApart(*makeDocument(text, fuzzFolder())).text == text, "a document holds all of it");
    if (isPlain(bytes))
        expect(wordsOf(replaced) == wordsOf(bytes).replace("<total>", "<due>"), "words replaced in the file are replaced in the text");
    return 0;
}
