// Any bytes give a document; its tags can be filled and its pages laid out.
#include "Fuzz.h"
#include "documents/Substitution.h"
#include "documents/rtf/RtfBuilder.h"

#include <QGuiApplication>
#include <QTextCursor>
#include <QTextDocument>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    quieten();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const RichText text = RtfBuilder().build(inputText(data, size));
    expect(!text.blocks.empty(), "a document has a paragraph");
    if (!goesTheLongWay(data, size))
        return 0;
    const auto document = makeDocument(text, fuzzFolder());
    Substitution substitution(*document);
    substitution.replaceAllOccurencesOf(QString("<contactadd3>"), QString());
    substitution.replaceAllOccurencesOf(QString("<contactadd2>"), QString("Lane 2"));
    substitution.replaceAllOccurencesOf(QString("<date>"), QString("1/1/24\n<date>"));
    expect(document->find("<contactadd2>", 0, QTextDocument::FindCaseSensitively).isNull(), "no tag is left");
    const auto copy = copyOf(*document);
    expect(copy->characterCount() >= document->characterCount(), "a copy has all of it");
    plainTextOf(*copy);
    return 0;
}
