#include "foundation/plist/PlistReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

using Kind = PlistValue::Kind;

std::string sampleBytes(const std::string& name)
{
    std::ifstream file(TEST_DATA_DIR "/data/plist/" + name, std::ios::binary);
    EXPECT_TRUE(file.good()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The only contact of a sample.
PlistValue sampleContact(const std::string& name)
{
    const Result<PlistValue> list = plist::read(sampleBytes(name));
    EXPECT_TRUE(list.ok()) << (list ? "" : list.error().message);
    const PlistValue* contacts = list ? list.value().find("contacts") : nullptr;
    if (!contacts || !contacts->isArray() || contacts->array().size() != 1) {
        ADD_FAILURE() << name << " holds no single contact";
        return PlistValue::makeDict();
    }
    return contacts->array().front();
}

std::string field(const PlistValue& record, const char* key)
{
    const PlistValue* value = record.find(key);
    return value ? value->asText() : "(no such key)";
}

PlistValue parsed(const std::string& bytes)
{
    const Result<PlistValue> value = plist::read(bytes);
    EXPECT_TRUE(value.ok()) << bytes << "\n" << (value ? "" : value.error().message);
    return value ? value.value() : PlistValue();
}

std::string errorOf(const std::string& bytes)
{
    const Result<PlistValue> value = plist::read(bytes);
    EXPECT_FALSE(value.ok()) << bytes;
    return value ? "" : value.error().message;
}

void expectAda(const PlistValue& contact)
{
    EXPECT_EQ(field(contact, "company"), "0");
    EXPECT_EQ(field(contact, "id"), "1");
    EXPECT_EQ(field(contact, "name"), "Ada Quill");
}

} // namespace

// The sample files

TEST(PlistReader, readsEveryKindOfValueThePlatformWrites)
{
    const PlistValue list = parsed(sampleBytes("01_platform_writer_bytes.plist"));

    ASSERT_EQ(list.dict().size(), 8u);
    EXPECT_EQ(field(list, "business"), "Ada Quill & S\xc3\xb6hne");
    EXPECT_EQ(list.find("count")->kind(), Kind::integer);
    EXPECT_EQ(field(list, "count"), "42");
    EXPECT_EQ(list.find("empty")->kind(), Kind::text);
    EXPECT_EQ(field(list, "empty"), "");
    ASSERT_EQ(list.find("list")->array().size(), 3u);
    EXPECT_EQ(list.find("list")->array()[1].asText(), "two < three");
    EXPECT_EQ(field(list.find("list")->array()[2], "nested"), "yes");
    EXPECT_EQ(field(list, "long"), "A line\nand another, with a tab\there and \"quotes\" and 'single' ones");
    EXPECT_TRUE(list.find("none")->isArray());
    EXPECT_TRUE(list.find("none")->array().empty());
    EXPECT_TRUE(list.find("nothing")->isDict());
    EXPECT_EQ(list.find("rate")->kind(), Kind::real);
    EXPECT_EQ(field(list, "rate"), "17.5");
}

TEST(PlistReader, readsContactsOfAnyValidLayout)
{
    for (const char* name : {"03_contacts_plain.xml", "11_contacts_crlf_file.xml", "12_contacts_bom.xml", "15_contacts_old_doctype.xml"}) {
        SCOPED_TRACE(name);
        const PlistValue contact = sampleContact(name);
        EXPECT_EQ(contact.dict().size(), 3u);
        expectAda(contact);
    }
}

TEST(PlistReader, readsAnEmptyList)
{
    const PlistValue list = parsed(sampleBytes("04_contacts_empty_array.xml"));

    ASSERT_NE(list.find("contacts"), nullptr);
    EXPECT_TRUE(list.find("contacts")->isArray());
    EXPECT_TRUE(list.find("contacts")->array().empty());
}

TEST(PlistReader, aRawCarriageReturnIsALineEnd)
{
    const PlistValue contact = sampleContact("05_contacts_raw_cr_in_text.xml");

    expectAda(contact);
    EXPECT_EQ(field(contact, "comments"), "line 1\nline 2\nline 3");
}

TEST(PlistReader, aCarriageReturnWrittenAsAReferenceIsKept)
{
    EXPECT_EQ(field(sampleContact("06_contacts_charref_cr.xml"), "comments"), "line 1\rline 2\r\nline 3");
}

TEST(PlistReader, allFormsOfAnEmptyTextAreEmptyAndABlankIsABlank)
{
    const PlistValue contact = sampleContact("08_contacts_empty_string_forms.xml");

    EXPECT_EQ(contact.dict().size(), 6u);
    EXPECT_EQ(field(contact, "add1"), "");
    EXPECT_EQ(field(contact, "add2"), "");
    EXPECT_EQ(field(contact, "add3"), " ");
}

TEST(PlistReader, valuesOfOtherKindsKeepTheirKindAndReadAsText)
{
    const PlistValue contact = sampleContact("09_contacts_typed_values.xml");

    EXPECT_EQ(contact.find("ref")->kind(), Kind::integer);
    EXPECT_EQ(field(contact, "ref"), "42");
    EXPECT_EQ(contact.find("comments")->kind(), Kind::real);
    EXPECT_EQ(field(contact, "comments"), "3.5");
    EXPECT_TRUE(contact.find("phone")->isTrue());
    EXPECT_EQ(field(contact, "phone"), "YES");
    EXPECT_EQ(contact.find("fax")->kind(), Kind::date);
    EXPECT_EQ(field(contact, "fax"), "2020-05-05T10:39:44Z");
    EXPECT_EQ(contact.find("website")->kind(), Kind::data);
    EXPECT_EQ(contact.find("website")->raw(), std::string("\0\1\2", 3));
    EXPECT_FALSE(contact.find("website")->hasText());
    EXPECT_EQ(field(contact, "website"), "");
}

TEST(PlistReader, commentsAreSkippedAndQuotedSectionsTakenLiterally)
{
    const PlistValue contact = sampleContact("10_contacts_cdata_comment_quotes.xml");

    expectAda(contact);
    EXPECT_EQ(field(contact, "comments"), "<b>&amp; \"x\" \"q\" 'a'");
}

TEST(PlistReader, readsTheBinaryForm)
{
    const PlistValue contact = sampleContact("21_contacts_binary.xml");

    EXPECT_EQ(contact.dict().size(), 3u);
    expectAda(contact);
}

TEST(PlistReader, damagedFilesAreRefusedWithASentence)
{
    EXPECT_EQ(errorOf(sampleBytes("18_contacts_zero_bytes.xml")), "line 1: the file is empty");
    EXPECT_EQ(errorOf(sampleBytes("19_contacts_bad_utf8.xml")), "the file is not UTF-8");
    EXPECT_EQ(errorOf(sampleBytes("17_contacts_truncated.xml")).substr(0, 9), "line 13: ");
    EXPECT_EQ(errorOf(sampleBytes("20_contacts_bare_ampersand.xml")), "line 13: \"&\" starts no entity that is known");
}

TEST(PlistReader, aFileCutAnywhereIsRefused)
{
    for (const char* name : {"01_platform_writer_bytes.plist", "06_contacts_charref_cr.xml", "09_contacts_typed_values.xml",
             "10_contacts_cdata_comment_quotes.xml", "12_contacts_bom.xml", "21_contacts_binary.xml"}) {
        const std::string whole = sampleBytes(name);
        // Without its last line feed an XML file is still whole.
        const std::size_t end = whole.ends_with('\n') ? whole.size() - 1 : whole.size();
        ASSERT_TRUE(plist::read(whole.substr(0, end)).ok());
        for (std::size_t length = 0; length < end; ++length)
            ASSERT_FALSE(plist::read(whole.substr(0, length)).ok()) << name << " cut to " << length;
    }
}

TEST(PlistReader, aChangedByteNeverDoesHarm)
{
    for (const char* name : {"10_contacts_cdata_comment_quotes.xml", "21_contacts_binary.xml"}) {
        const std::string whole = sampleBytes(name);
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int change : {0x01, 0x20, 0x80, 0xff}) {
                std::string changed = whole;
                changed[at] = static_cast<char>(changed[at] ^ change);
                const Result<PlistValue> value = plist::read(changed);
                ASSERT_TRUE(value.ok() || !value.error().message.empty());
            }
        }
    }
}

// Text

TEST(PlistReader, thePredefinedEntitiesAndReferencesAreResolved)
{
    EXPECT_EQ(parsed("<string>&amp;&lt;&gt;&quot;&apos;</string>").asText(), "&<>\"'");
    EXPECT_EQ(parsed("<string>&#65;&#x42;&#xe9;&#x20AC;&#x1F600;</string>").asText(), "AB\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(parsed("<string>&amp;lt;</string>").asText(), "&lt;");
    EXPECT_EQ(parsed("<dict><key>a&amp;b</key><string/></dict>").dict().front().first, "a&b");
}

TEST(PlistReader, otherEntitiesAndImpossibleReferencesAreErrors)
{
    for (const char* reference : {"&nbsp;", "&", "& ", "&;", "&#;", "&#x;", "&#0;", "&#1;", "&#xD800;", "&#x110000;", "&#99999999999;",
             "&#xfffe;", "&#12a;", "&#-5;", "&#X41;", "&amp", "&AMP;"})
        EXPECT_NE(errorOf(std::string("<string>a") + reference + "b</string>"), "") << reference;
}

TEST(PlistReader, entitiesOfADocumentTypeAreNeverExpanded)
{
    const std::string bytes = "<!DOCTYPE plist [<!ENTITY lol \"ha\"><!ENTITY file SYSTEM \"file:///etc/passwd\">]>"
                              "<plist><string>&lol;</string></plist>";

    EXPECT_EQ(errorOf(bytes), "line 1: \"&\" starts no entity that is known");
    EXPECT_EQ(parsed("<!DOCTYPE plist [<!ENTITY lol \"ha\">]><plist><string>x</string></plist>").asText(), "x");
}

TEST(PlistReader, lineEndsInsideAQuotedSectionAreLineFeedsToo)
{
    EXPECT_EQ(parsed("<string>a<![CDATA[b\r\nc\rd]]>e</string>").asText(), "ab\nc\nde");
    EXPECT_EQ(parsed("<string><![CDATA[]]></string>").asText(), "");
    EXPECT_EQ(parsed("<string><![CDATA[a]]]]><![CDATA[>b]]></string>").asText(), "a]]>b");
}

TEST(PlistReader, aCommentInsideATextIsLeftOut)
{
    EXPECT_EQ(parsed("<string>one<!-- two -->three</string>").asText(), "onethree");
    EXPECT_EQ(parsed("<string><!-- two --></string>").asText(), "");
    EXPECT_EQ(parsed("<string>a&amp;<!-- x --></string>").asText(), "a&");
}

TEST(PlistReader, blanksInsideTagsAreFine)
{
    const PlistValue value = parsed("<plist\n\tversion = '1.0' >\n<dict >\n<key >a</key >\n<string\n/>\n</dict >\n</plist >");

    ASSERT_EQ(value.dict().size(), 1u);
    EXPECT_EQ(value.dict().front().first, "a");
}

// Structure

TEST(PlistReader, aDocumentMayDoWithoutItsRootElement)
{
    EXPECT_TRUE(parsed("<dict/>").isDict());
    EXPECT_EQ(parsed("<?xml version=\"1.0\"?><!-- x --><array><true/><false/></array>").array().size(), 2u);
}

TEST(PlistReader, ofEqualKeysTheLastWins)
{
    const PlistValue value =
        parsed("<dict><key>a</key><string>1</string><key>b</key><string>2</string><key>a</key><string>3</string></dict>");

    ASSERT_EQ(value.dict().size(), 2u);
    EXPECT_EQ(field(value, "a"), "3");
}

TEST(PlistReader, misplacedPartsAreErrors)
{
    for (const char* bytes : {"<dict><string>a</string></dict>", "<dict><key>a</key></dict>",
             "<dict><key>a</key><key>b</key><string/></dict>", "<array><key>a</key></array>", "<array></dict>", "<dict></array>",
             "<dict>text</dict>", "text", "<string>a</key>", "<string>a<b>c</b></string>", "<string>a", "<foo/>", "<array/><array/>",
             "<plist><array/></plist><array/>", "<plist><array/></plist></plist>", "<plist><plist><array/></plist></plist>",
             "<array></plist></array>", "<plist><array/>", "<plist/>", "<plist></plist>", "</array>", "</dict>", "<!-- never ends",
             "<?never", "<!DOCTYPE plist [", "<data>a?b</data>", "<key>a</key>", "<![CDATA[x]]>", "\xff\xfe<"})
        EXPECT_NE(errorOf(bytes), "") << bytes;
}

TEST(PlistReader, anErrorNamesItsLine)
{
    EXPECT_EQ(errorOf("<dict>\n<key>a</key>\n<foo/>\n</dict>"), "line 3: <foo> is no element of a property list");
    EXPECT_EQ(errorOf("<array>\n\n<string>a</array>"), "line 3: <string> is not closed");
}

TEST(PlistReader, nestingIsBounded)
{
    const auto nested = [](int depth) {
        std::string bytes;
        for (int i = 0; i < depth; ++i)
            bytes += "<array>";
        for (int i = 0; i < depth; ++i)
            bytes += "</array>";
        return bytes;
    };

    EXPECT_TRUE(plist::read(nested(plist::deepestNesting)).ok());
    EXPECT_EQ(errorOf(nested(plist::deepestNesting + 1)), "line 1: lists and dictionaries are nested too deep");
    EXPECT_NE(errorOf(nested(1'000'000)), "");
}

TEST(PlistReader, dataSkipsBlanksBetweenItsCharacters)
{
    EXPECT_EQ(parsed("<data>\n\tSGVs\n\tbG8=\n</data>").raw(), "Hello");
    EXPECT_EQ(parsed("<data></data>").raw(), "");
    EXPECT_EQ(parsed("<data>AA==</data>").raw(), std::string(1, '\0'));
}

// The binary form

TEST(PlistReader, aBinaryListThatRefersToItselfIsRefused)
{
    // One array whose only element is itself; then offset table and trailer.
    std::string bytes = "bplist00";
    bytes += "\xa1";
    bytes += std::string(1, '\0');
    bytes += "\x08";
    bytes += std::string("\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0a", 32);

    EXPECT_EQ(errorOf(bytes), "the file is a binary list that is damaged");
}

TEST(PlistReader, aBinaryListOfAnotherVersionIsRefused)
{
    EXPECT_EQ(errorOf("bplist15 whatever follows"), "the file is a binary list of an unknown version");
}

// Elements that say what they do not hold

TEST(PlistReader, aNumberOrDateThatReadsIsKeptAsItIsWritten)
{
    const std::pair<const char*, Kind> elements[] = {{"<integer>42</integer>", Kind::integer}, {"<integer> -7\n</integer>", Kind::integer},
        {"<integer>+7</integer>", Kind::integer}, {"<integer>0x1F</integer>", Kind::integer},
        {"<integer>99999999999999999999</integer>", Kind::integer}, {"<real>3.50</real>", Kind::real}, {"<real>-1e-7</real>", Kind::real},
        {"<real>nan</real>", Kind::real}, {"<date>2024-02-29T23:59:59Z</date>", Kind::date}};
    for (const auto& [element, kind] : elements)
        EXPECT_EQ(parsed("<plist>" + std::string(element) + "</plist>").kind(), kind) << element;
}

TEST(PlistReader, aNumberOrDateThatDoesNotReadIsAText)
{
    // Another reader would refuse the whole file over one of them, if it were written back as it is.
    const std::pair<const char*, const char*> elements[] = {{"<integer>\\</integer>", "\\"}, {"<integer>4 2</integer>", "4 2"},
        {"<integer/>", ""}, {"<integer>-</integer>", "-"}, {"<integer>-0x1F</integer>", "-0x1F"}, {"<integer>--1</integer>", "--1"},
        {"<integer>3.5</integer>", "3.5"}, {"<real>3,50</real>", "3,50"}, {"<real/>", ""}, {"<date>yesterday</date>", "yesterday"},
        {"<date>2023-02-29T10:00:00Z</date>", "2023-02-29T10:00:00Z"}, {"<date>2024-01-01T24:00:00Z</date>", "2024-01-01T24:00:00Z"},
        {"<date>0000-01-01T00:00:00Z</date>", "0000-01-01T00:00:00Z"}};
    for (const auto& [element, text] : elements) {
        const PlistValue value = parsed("<plist>" + std::string(element) + "</plist>");
        EXPECT_EQ(value.kind(), Kind::text) << element;
        EXPECT_EQ(value.asText(), text) << element;
    }
}
