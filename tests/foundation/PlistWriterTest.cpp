#include "foundation/plist/PlistWriter.h"

#include "foundation/plist/PlistReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

constexpr char documentStart[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

std::string documentOf(const std::string& lines)
{
    return documentStart + lines + "</plist>\n";
}

/// Bytes of a file that make_written.py wrote.
std::string writtenFile(const std::string& name)
{
    std::ifstream file(TEST_DATA_DIR "/data/plist/" + name, std::ios::binary);
    EXPECT_TRUE(file.good()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string someBytes(int size)
{
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(i * 37 % 256);
    return bytes;
}

PlistValue dictWith(std::initializer_list<std::pair<const char*, PlistValue>> entries)
{
    PlistValue value = PlistValue::makeDict();
    for (const auto& [key, entry] : entries)
        value.set(key, entry);
    return value;
}

PlistValue arrayOf(std::initializer_list<PlistValue> entries)
{
    PlistValue value = PlistValue::makeArray();
    for (const PlistValue& entry : entries)
        value.append(entry);
    return value;
}

PlistValue nestedData(int depth)
{
    std::string bytes;
    for (int i = 0; i < 100; ++i)
        bytes += static_cast<char>(i);
    PlistValue value = dictWith({{"data", PlistValue::makeData(bytes)}});
    if (depth > 0)
        value.set("deeper", nestedData(depth - 1));
    return value;
}

} // namespace

TEST(PlistWriter, writesEveryKindOfValueAsThePlatformDoes)
{
    using Kind = PlistValue::Kind;
    const PlistValue none = PlistValue::makeArray();
    const PlistValue nothing = PlistValue::makeDict();
    const PlistValue value = dictWith({
        {"empty text", PlistValue("")},
        {"markup", PlistValue("<b> & \"quotes\" 'single' ]]> &amp;")},
        {"lines", PlistValue("one\n\ttwo\n")},
        {"letters", PlistValue("\xc3\x9cn\xc3\xaf\xe2\x82\xac \xf0\x9f\x98\x80 \xc2\x85 \xe2\x80\xa8")},
        {"<key> & more", PlistValue("x")},
        {"Upper", PlistValue::makeInteger(1)},
        {"lower", PlistValue::makeInteger(-2)},
        {"\xc3\x84rger", PlistValue::makeInteger(3)},
        {"", PlistValue::makeInteger(4)},
        {"\xf0\x9f\x98\x80", PlistValue::makeInteger(5)},
        {"\xef\xbf\xae", PlistValue::makeInteger(6)},
        {"largest", PlistValue::makeInteger(std::numeric_limits<std::int64_t>::max())},
        {"smallest", PlistValue::makeInteger(std::numeric_limits<std::int64_t>::min())},
        {"real", PlistValue::makeReal(17.5)},
        {"yes", PlistValue::makeBoolean(true)},
        {"no", PlistValue::makeBoolean(false)},
        {"date", PlistValue::makeScalar(Kind::date, "2020-05-05T10:39:44Z")},
        {"empty list", none},
        {"empty dictionary", nothing},
        {"lists", arrayOf({none, arrayOf({none}), dictWith({{"a", none}}), arrayOf({PlistValue("x"), dictWith({{"b", nothing}})})})},
    });

    EXPECT_EQ(plist::write(value), writtenFile("written_values.plist"));
}

TEST(PlistWriter, dataOfAnyLengthIsBrokenIntoLinesAsThePlatformDoes)
{
    PlistValue value = PlistValue::makeDict();
    for (const int size : {0, 1, 2, 3, 45, 50, 51, 52, 57, 200})
        value.set(std::to_string(size), PlistValue::makeData(someBytes(size)));

    EXPECT_EQ(plist::write(value), writtenFile("written_data.plist"));
}

TEST(PlistWriter, dataLinesGetShorterTheDeeperTheyStand)
{
    EXPECT_EQ(plist::write(nestedData(12)), writtenFile("written_deep_data.plist"));
}

TEST(PlistWriter, theRootMayBeAText)
{
    EXPECT_EQ(plist::write(PlistValue("just a text & no more")), writtenFile("written_root_text.plist"));
}

TEST(PlistWriter, aFileOfThePlatformIsWrittenBackByteForByte)
{
    for (const char* name : {"01_platform_writer_bytes.plist", "03_contacts_plain.xml", "04_contacts_empty_array.xml",
             "written_values.plist", "written_data.plist", "written_deep_data.plist"}) {
        const std::string bytes = writtenFile(name);
        const Result<PlistValue> value = plist::read(bytes);
        ASSERT_TRUE(value.ok()) << name;
        EXPECT_EQ(plist::write(value.value()), bytes) << name;
    }
}

TEST(PlistWriter, aCarriageReturnIsWrittenSoThatItReadsBack)
{
    const std::string bytes = plist::write(PlistValue("a\rb\r\nc"));

    EXPECT_EQ(bytes, documentOf("<string>a&#13;b&#13;\nc</string>\n"));
    EXPECT_EQ(plist::read(bytes).value().asText(), "a\rb\r\nc");
}

TEST(PlistWriter, whatNoFileMayHoldIsCleanedOnTheWay)
{
    EXPECT_EQ(plist::write(PlistValue("be\x07ll caf\xe9")), documentOf("<string>bell caf\xef\xbf\xbd</string>\n"));
}

TEST(PlistWriter, aStreamedDocumentIsTheSameAsAWholeOne)
{
    std::string streamed;
    PlistWriter writer([&](std::string_view bytes) { streamed += bytes; });
    writer.openDict();
    writer.key("contacts");
    writer.openArray();
    writer.openDict();
    writer.key("id");
    writer.text("1");
    writer.closeDict();
    writer.openDict();
    writer.closeDict();
    writer.closeArray();
    writer.key("flag");
    writer.boolean(false);
    writer.closeDict();
    writer.finish();

    EXPECT_EQ(streamed,
        documentOf("<dict>\n\t<key>contacts</key>\n\t<array>\n\t\t<dict>\n\t\t\t<key>id</key>\n\t\t\t<string>1</"
                   "string>\n\t\t</dict>\n"
                   "\t\t<dict/>\n\t</array>\n\t<key>flag</key>\n\t<false/>\n</dict>\n"));
}

TEST(PlistWriter, aLargeDocumentIsHandedOverInPieces)
{
    std::string streamed;
    std::size_t pieces = 0;
    PlistWriter writer([&](std::string_view bytes) {
        streamed += bytes;
        ++pieces;
    });
    writer.openArray();
    for (int i = 0; i < 100'000; ++i)
        writer.text("value number " + std::to_string(i));
    writer.closeArray();
    writer.finish();

    EXPECT_GT(pieces, 2u);
    const Result<PlistValue> value = plist::read(streamed);
    ASSERT_TRUE(value.ok());
    ASSERT_EQ(value.value().array().size(), 100'000u);
    EXPECT_EQ(value.value().array()[99'999].asText(), "value number 99999");
}

// A key and its text in one go

TEST(PlistWriter, aKeyAndItsTextInOneGoAreWrittenAsOneAfterTheOther)
{
    const auto written = [](bool inOneGo, std::string_view key, std::string_view text) {
        std::string bytes;
        PlistWriter writer([&](std::string_view piece) { bytes += piece; });
        writer.openDict();
        for (int times = 0; times < 2; ++times) {
            if (inOneGo) {
                writer.textAfter(PlistWriter::opening(key, 1), text);
            } else {
                writer.key(key);
                writer.text(text);
            }
        }
        writer.closeDict();
        writer.finish();
        return bytes;
    };
    for (const std::string_view text : {"", "plain", "a < b & c > d", "caf\xc3\xa9", "two\nlines\tand\r", "bell\x07", "\x7f"})
        EXPECT_EQ(written(true, "name", text), written(false, "name", text)) << text;
}

TEST(PlistWriter, aSignThatIsEscapedIsFoundAtEveryPlaceOfATextOfAnyLength)
{
    const auto element = [](const std::string& text) {
        std::string bytes;
        PlistWriter writer([&](std::string_view piece) { bytes += piece; });
        writer.openDict();
        writer.textAfter(PlistWriter::opening("a key", 1), text);
        writer.closeDict();
        writer.finish();
        const std::string before = "\t<key>a key</key>\n\t<string>";
        bytes.erase(0, bytes.find(before) + before.size());
        return bytes.substr(0, bytes.find("</string>\n</dict>"));
    };
    const std::string letters = "The quick brown fox jumps over the lazy dog.";
    for (std::size_t length = 0; length <= letters.size(); ++length) {
        const std::string text = letters.substr(0, length);
        EXPECT_EQ(element(text), text);
        for (std::size_t at = 0; at < length; ++at) {
            for (const auto& [sign, written] :
                {std::pair('&', "&amp;"), {'<', "&lt;"}, {'>', "&gt;"}, {'\r', "&#13;"}, {'\x7f', "\x7f"}, {'\x01', ""}}) {
                std::string marked = text;
                marked[at] = sign;
                EXPECT_EQ(element(marked), text.substr(0, at) + written + text.substr(at + 1)) << length << ' ' << at;
            }
        }
    }
}

TEST(PlistWriter, everyVisibleSignIsWrittenAloneAsBesideOthers)
{
    const auto element = [](const std::string& text) {
        std::string bytes = plist::write(PlistValue(text));
        bytes.erase(0, bytes.find("<string>") + 8);
        return bytes.substr(0, bytes.find("</string>"));
    };
    for (char sign = 0x20; sign < 0x7f; ++sign) {
        const std::string beside = element(std::string(1, sign) + "\xc3\xa9");
        EXPECT_EQ(element(std::string(1, sign)) + "\xc3\xa9", beside);
    }
}
