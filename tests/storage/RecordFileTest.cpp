#include "storage/RecordFile.h"

#include "storage/Article.h"

#include <QTemporaryDir>

#include <fstream>
#include <gtest/gtest.h>

#include <random>

namespace {

std::string documentOf(const std::string& records)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n\t<key>articles</key>\n\t<array>\n"
        + records + "\t</array>\n</dict>\n</plist>\n";
}

std::string keyed(const std::string& key, const std::string& value)
{
    return "\t\t\t<key>" + key + "</key>\n\t\t\t<string>" + value + "</string>\n";
}

/// What every article has in the file, in the order of the keys.
std::string recordOf(const std::string& id, const std::string& name)
{
    return "\t\t<dict>\n" + keyed("id", id) + keyed("name", name) + keyed("note", "") + keyed("owner", "0") + keyed("sold", "NO")
        + keyed("stocked", "YES") + "\t\t</dict>\n";
}

} // namespace

class RecordFileTest : public testing::Test {
protected:
    /// The error's message, or the empty text. What a file gives that is read a piece at a time has to be the same.
    std::string load(const std::string& bytes)
    {
        const bool wasEmpty = shop.articles.getCount() == 0;
        const std::string error = take(file.parse(bytes));
        const QTemporaryDir folder;
        const std::string path = folder.filePath("file").toStdString();
        std::ofstream(path, std::ios::binary) << bytes;
        for (const std::size_t largest : {250, 400, 1000}) {
            ArticleShop other;
            ArticleFile otherFile {other.articles};
            FilePieces pieces(path, RecordFile::recordEnd, largest);
            EXPECT_EQ(take(otherFile.parse(pieces)), error) << "in pieces of " << largest;
            if (wasEmpty) {
                EXPECT_EQ(writtenBy(otherFile), written()) << "in pieces of " << largest;
            }
        }
        return error;
    }
    static std::string take(Result<std::unique_ptr<ParsedFile>> parsed)
    {
        if (!parsed)
            return parsed.error().message;
        parsed.value()->adopt();
        return {};
    }
    std::string written() const { return writtenBy(file); }
    static std::string writtenBy(const RecordFile& file)
    {
        std::string bytes;
        PlistWriter writer([&](std::string_view piece) { bytes += piece; });
        file.snapshot()->write(writer);
        return bytes;
    }
    Article& only()
    {
        EXPECT_EQ(shop.articles.getCount(), 1);
        return *shop.articles.getFirstItem();
    }

    ArticleShop shop;
    ArticleFile file {shop.articles};
};

TEST_F(RecordFileTest, anEmptyCollectionIsWrittenAsAnEmptyList)
{
    EXPECT_EQ(written(),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n\t<key>articles</key>\n\t<array/>\n</dict>\n</plist>\n");
}

TEST_F(RecordFileTest, recordsAreWrittenInTheirOrderWithTheirKeysSorted)
{
    Article& mug = shop.articles.addNamed("Mug", 7);
    mug.setFieldByName("price", "4.50");
    mug.setFieldByName("owner", "3");
    mug.setFieldByName("sold", "YES");
    mug.parts = {"handle", "bowl & rim"};
    shop.articles.addNamed("", 2);
    shop.articles.sortByColumn("name", true);

    EXPECT_EQ(written(),
        documentOf("\t\t<dict>\n" + keyed("id", "7") + keyed("name", "Mug") + keyed("note", "") + keyed("owner", "3")
            + "\t\t\t<key>parts</key>\n\t\t\t<array>\n\t\t\t\t<string>handle</string>\n\t\t\t\t<string>bowl &amp; rim</string>\n"
              "\t\t\t</array>\n"
            + keyed("price", "4.50") + keyed("sold", "YES") + keyed("stocked", "YES") + "\t\t</dict>\n\t\t<dict>\n" + keyed("id", "2")
            + keyed("note", "") + keyed("owner", "0") + keyed("sold", "NO") + keyed("stocked", "YES") + "\t\t</dict>\n"));
}

TEST_F(RecordFileTest, whatWasWrittenReadsBack)
{
    Article& mug = shop.articles.addNamed("Mug <&> \"blue\"", 7);
    mug.setFieldByName("note", "one\ntwo\tthree\rfour");
    mug.setFieldByName("owner", "-5");
    mug.setFieldByName("sold", "YES");
    mug.parts = {"handle", ""};
    const std::string bytes = written();
    shop.articles.clear();

    ASSERT_EQ(load(bytes), "");

    EXPECT_EQ(only().getID(), 7);
    EXPECT_EQ(only().getFieldByName("name"), "Mug <&> \"blue\"");
    EXPECT_EQ(only().getFieldByName("note"), "one\ntwo\tthree\rfour");
    EXPECT_EQ(only().getFieldByName("owner"), "-5");
    EXPECT_EQ(only().getFieldByName("sold"), "YES");
    EXPECT_EQ(only().parts, (std::vector<std::string> {"handle", ""}));
    // Written under "stocked", read under "Stocked": the flag is off after every load.
    EXPECT_EQ(only().getFieldByName("stocked"), "NO");
}

TEST_F(RecordFileTest, aFileInPiecesIsReadWithoutTakingAllOfIt)
{
    std::string records;
    for (int id = 1; id <= 20; ++id)
        records += recordOf(std::to_string(id), "Cup " + std::to_string(id));
    const std::string bytes = documentOf(records);
    const QTemporaryDir folder;
    const std::string path = folder.filePath("file").toStdString();
    std::ofstream(path, std::ios::binary) << bytes;
    FilePieces pieces(path, RecordFile::recordEnd, 1000);

    ASSERT_EQ(take(file.parse(pieces)), "");

    EXPECT_FALSE(pieces.isWhole());
    EXPECT_EQ(shop.articles.getCount(), 20);
    EXPECT_EQ(shop.articles.at(19).getFieldByName("name"), "Cup 20");
}

TEST_F(RecordFileTest, aRecordsEndInsideATextIsNone)
{
    std::string records;
    for (int id = 1; id <= 6; ++id)
        records += recordOf(std::to_string(id), "<![CDATA[a" + std::string(RecordFile::recordEnd) + "b]]>");

    ASSERT_EQ(load(documentOf(records)), "");

    EXPECT_EQ(shop.articles.getCount(), 6);
    EXPECT_EQ(shop.articles.at(5).getFieldByName("name"), "a\n\t\t</dict>b");
}

TEST_F(RecordFileTest, aRecordThatIsLongerThanAPieceIsRead)
{
    std::string records;
    for (int id = 1; id <= 9; ++id)
        records += recordOf(std::to_string(id), std::string(id % 3 == 0 ? 2000 : 5, 'x'));

    ASSERT_EQ(load(documentOf(records)), "");

    EXPECT_EQ(shop.articles.getCount(), 9);
}

TEST_F(RecordFileTest, aFileThatEndsAfterARecordEndsTooEarly)
{
    const std::string bytes = documentOf(recordOf("1", "a") + recordOf("2", "b") + recordOf("3", "c"));
    const std::string cut = bytes.substr(0, bytes.rfind(RecordFile::recordEnd) + RecordFile::recordEnd.size());

    EXPECT_EQ(load(cut), "line " + std::to_string(6 + 3 * 14) + ": the file ends too early");
}

TEST_F(RecordFileTest, whereAFileIsDamagedIsToldByTheLineOfTheFile)
{
    std::string records;
    for (int id = 1; id <= 20; ++id)
        records += recordOf(std::to_string(id), id == 15 ? "<b>Cup</b>" : "Cup");

    const std::string error = load(documentOf(records));

    // Six lines before the records, fourteen records of fourteen lines, and five lines of the fifteenth.
    EXPECT_EQ(error.substr(0, error.find(':')), "line " + std::to_string(6 + 14 * 14 + 5));
}

TEST_F(RecordFileTest, aMissingFlagIsOffAndOnlyUpperCaseYesIsOn)
{
    for (const char* value : {"yes", "Yes", "1", "true", "YES ", ""}) {
        shop.articles.clear();
        ASSERT_EQ(load(documentOf("\t\t<dict>\n" + keyed("sold", value) + keyed("Stocked", value) + "\t\t</dict>\n")), "");
        EXPECT_EQ(only().getFieldByName("sold"), "NO") << value;
        EXPECT_EQ(only().getFieldByName("stocked"), "NO") << value;
    }
    shop.articles.clear();
    ASSERT_EQ(load(documentOf("\t\t<dict>\n" + keyed("sold", "YES") + keyed("Stocked", "YES") + "\t\t</dict>\n")), "");
    EXPECT_EQ(only().getFieldByName("sold"), "YES");
    EXPECT_EQ(only().getFieldByName("stocked"), "YES");
    shop.articles.clear();
    ASSERT_EQ(load(documentOf("\t\t<dict/>\n")), "");
    EXPECT_EQ(only().getFieldByName("stocked"), "NO");
}

TEST_F(RecordFileTest, integersReadTheirLeadingDigits)
{
    ASSERT_EQ(load(documentOf("\t\t<dict>\n" + keyed("id", " 12 apples") + keyed("owner", "x") + "\t\t</dict>\n")), "");

    EXPECT_EQ(only().getID(), 12);
    EXPECT_EQ(only().getFieldByName("owner"), "0");
}

TEST_F(RecordFileTest, aRecordWithoutIdGetsTheNextOne)
{
    ASSERT_EQ(load(documentOf(recordOf("5", "a") + "\t\t<dict>\n" + keyed("name", "b") + "\t\t</dict>\n" + recordOf("2", "c"))), "");

    EXPECT_EQ(shop.articles.at(0).getID(), 5);
    EXPECT_EQ(shop.articles.at(1).getID(), 6);
    EXPECT_EQ(shop.articles.at(2).getID(), 2);
}

TEST_F(RecordFileTest, valuesOfOtherKindsReadAsTexts)
{
    ASSERT_EQ(
        load(documentOf("\t\t<dict>\n\t\t\t<key>id</key>\n\t\t\t<integer>9</integer>\n\t\t\t<key>name</key>\n\t\t\t<true/>\n"
                        "\t\t\t<key>note</key>\n\t\t\t<date>2020-05-05T10:39:44Z</date>\n\t\t\t<key>price</key>\n\t\t\t<real>3.5</real>\n"
                        "\t\t\t<key>sold</key>\n\t\t\t<true/>\n\t\t\t<key>owner</key>\n\t\t\t<integer>4</integer>\n\t\t</dict>\n")),
        "");

    EXPECT_EQ(only().getID(), 9);
    EXPECT_EQ(only().getFieldByName("name"), "YES");
    EXPECT_EQ(only().getFieldByName("note"), "2020-05-05T10:39:44Z");
    EXPECT_EQ(only().getFieldByName("price"), "3.5");
    EXPECT_EQ(only().getFieldByName("sold"), "YES");
    EXPECT_EQ(only().getFieldByName("owner"), "4");
}

TEST_F(RecordFileTest, keysNobodyKnowsAreWrittenBackWhereTheyBelong)
{
    const std::string record = "\t\t<dict>\n\t\t\t<key>aaa</key>\n\t\t\t<dict>\n\t\t\t\t<key>deep</key>\n\t\t\t\t<array>\n"
                               "\t\t\t\t\t<integer>1</integer>\n\t\t\t\t</array>\n\t\t\t</dict>\n"
        + keyed("id", "7") + keyed("mmm", "middle") + keyed("name", "Mug") + keyed("note", "") + keyed("owner", "0") + keyed("sold", "NO")
        + keyed("stocked", "YES") + keyed("zzz", "last") + "\t\t</dict>\n";
    ASSERT_EQ(load(documentOf(record)), "");
    only().setFieldByName("stocked", "YES");

    EXPECT_EQ(written(), documentOf(record));
}

TEST_F(RecordFileTest, aValueThatIsNoTextIsKeptUntilATextTakesItsPlace)
{
    const std::string data = "\t\t\t<data>\n\t\t\tAAEC\n\t\t\t</data>\n";
    ASSERT_EQ(load(documentOf("\t\t<dict>\n" + keyed("id", "1") + "\t\t\t<key>name</key>\n" + data + "\t\t\t<key>note</key>\n" + data
                  + "\t\t</dict>\n")),
        "");
    EXPECT_EQ(only().getFieldByName("name"), "");
    EXPECT_EQ(only().getFieldByName("note"), "");

    EXPECT_NE(written().find("<key>name</key>\n" + data), std::string::npos);
    EXPECT_NE(written().find("<key>note</key>\n" + data), std::string::npos);
    only().setFieldByName("name", "Mug");
    only().setFieldByName("note", "new");
    EXPECT_NE(written().find(keyed("name", "Mug") + keyed("note", "new")), std::string::npos);
    EXPECT_EQ(written().find("<data>"), std::string::npos);
}

TEST_F(RecordFileTest, aValueThatIsNoNumberOrFlagIsKeptUntilAnotherTakesItsPlace)
{
    const std::string list = "\t\t\t<array>\n\t\t\t\t<string>KEEP</string>\n\t\t\t</array>\n";
    const auto record = [](const std::string& owner, const std::string& sold, const std::string& stocked) {
        return "\t\t<dict>\n" + keyed("id", "1") + keyed("name", "Mug") + keyed("note", "") + owner + sold + stocked + "\t\t</dict>\n";
    };
    const std::string bytes =
        documentOf(record("\t\t\t<key>owner</key>\n" + list, "\t\t\t<key>sold</key>\n" + list, "\t\t\t<key>stocked</key>\n" + list));
    ASSERT_EQ(load(bytes), "");

    EXPECT_EQ(only().values().owner, 0);
    EXPECT_FALSE(only().values().sold);
    EXPECT_EQ(written(), bytes);
    EXPECT_EQ(file.leftOut(), "");
    only().setFieldByName("owner", "3");
    only().setFieldByName("sold", "YES");
    only().setFieldByName("stocked", "YES");
    EXPECT_EQ(written(), documentOf(record(keyed("owner", "3"), keyed("sold", "YES"), keyed("stocked", "YES"))));
}

TEST_F(RecordFileTest, aValueThatCannotBeKeptIsToldUntilTheNextReading)
{
    ASSERT_EQ(load(documentOf("<dict><key>id</key><array><string>KEEP</string></array>" + keyed("name", "Mug") + "</dict>")), "");

    EXPECT_EQ(file.leftOut(), "\"id\" of \"0\" holds what nobody expects there");

    file.forget();
    EXPECT_EQ(file.leftOut(), "");
    // What nobody knows is kept where it is.
    ASSERT_EQ(load(documentOf("<dict><key>further</key><dict/><key>code</key><array/></dict>")), "");
    EXPECT_EQ(file.leftOut(), "");
}

TEST_F(RecordFileTest, whatTheRootHoldsBesideTheRecordsIsKept)
{
    const std::string bytes =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n\t<key>aaa</key>\n\t<string>before</string>\n\t<key>articles</key>\n\t<array/>\n"
        "\t<key>version</key>\n\t<integer>3</integer>\n</dict>\n</plist>\n";
    ASSERT_EQ(load(bytes), "");
    EXPECT_EQ(written(), bytes);

    file.forget();
    EXPECT_EQ(written().find("version</key>"), std::string::npos);
}

TEST_F(RecordFileTest, aSnapshotIsTheStateOfItsMoment)
{
    Article& mug = shop.articles.addNamed("before", 1);
    const std::unique_ptr<FileSnapshot> snapshot = file.snapshot();
    const std::string before = written();
    mug.setFieldByName("name", "after");
    shop.articles.addNamed("another");

    std::string bytes;
    PlistWriter writer([&](std::string_view piece) { bytes += piece; });
    snapshot->write(writer);

    EXPECT_EQ(bytes, before);
}

TEST_F(RecordFileTest, aFileThatIsNoListOfRecordsIsRefusedWhole)
{
    const std::string start = documentOf(recordOf("1", "a"));
    EXPECT_EQ(load(""), "line 1: the file's root is no dictionary");
    EXPECT_NE(load("<array/>"), "");
    EXPECT_NE(load("<plist><dict><key>articles</key><string>x</string></dict></plist>"), "");
    EXPECT_NE(load("<plist><dict><key>articles</key><array><string>x</string></array></dict></plist>"), "");
    EXPECT_NE(load("<plist><dict><key>articles</key><array/></dict></plist>x"), "");
    EXPECT_NE(load(documentOf(recordOf("1", "caf\xe9"))), "");
    EXPECT_NE(load(documentOf(recordOf("1", "a & b"))), "");
    for (std::size_t length = 0; length + 1 < start.size(); ++length)
        ASSERT_NE(load(start.substr(0, length)), "") << length;
    EXPECT_EQ(shop.articles.getCount(), 0);
}

TEST_F(RecordFileTest, anErrorNamesTheLine)
{
    EXPECT_EQ(load(documentOf(recordOf("1", "a") + recordOf("2", "a & b"))).substr(0, 9), "line 25: ");
}

// The short way and the long way

/// The same records in the platform's own layout and in others, all valid.
class RecordFileLayouts : public RecordFileTest, public testing::WithParamInterface<int> {
protected:
    static std::string replaced(std::string text, const std::string& from, const std::string& to)
    {
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
            text.replace(at, from.size(), to);
        return text;
    }
};

TEST_P(RecordFileLayouts, giveTheSameRecordsAsThePlatformsOwn)
{
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    static const char* const texts[] {
        "", " ", "plain", "a\nb", "x &amp; y", "&#13;", "\xc3\xa9\xe2\x82\xac", "]]&gt;", "YES", "42", "\xef\xbf\xbd"};
    const auto anyText = [&] { return std::string(texts[random() % std::size(texts)]); };
    std::string records;
    for (unsigned i = random() % 6; i < 8; ++i) {
        records += "\t\t<dict>\n";
        for (const char* key : {"another", "code", "date", "id", "name", "note", "owner", "price", "sold", "zebra"}) {
            if (random() % 4 != 0)
                records += keyed(key, key == std::string("id") ? std::to_string(random() % 50) : anyText());
        }
        records += "\t\t</dict>\n";
    }
    const std::string own = documentOf(records);
    ASSERT_EQ(load(own), "");
    const std::string expected = written();

    const std::vector<std::string> layouts {
        replaced(own, "\t", "  "),
        replaced(own, "</key>\n\t\t\t<string>", "</key><string>"),
        replaced(own, "</string>\n\t\t\t<key>", "</string><!-- a comment -->\n<key>"),
        replaced(own, "<string>", "<string >"),
        replaced(own, "<string></string>", "<string/>"),
        replaced(own, "<dict>", "<dict >"),
        replaced(own, "plain", "<![CDATA[plain]]>"),
        replaced(own, "plain", "pl&#97;in"),
        replaced(own, "\n", "\r\n"),
        "\xef\xbb\xbf" + own,
    };
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        shop.articles.clear();
        file.forget();
        ASSERT_EQ(load(layouts[i]), "") << i;
        EXPECT_EQ(written(), expected) << "layout " << i << " of\n" << own;
    }
}

INSTANTIATE_TEST_SUITE_P(Random, RecordFileLayouts, testing::Range(0, 60));

TEST_F(RecordFileTest, keysInAnyOrderAndTwiceGiveTheLastValue)
{
    ASSERT_EQ(load(documentOf("\t\t<dict>\n" + keyed("sold", "YES") + keyed("name", "first") + keyed("code", "C1") + keyed("name", "second")
                  + keyed("id", "4") + keyed("code", "C2") + keyed("id", "8") + "\t\t</dict>\n")),
        "");

    EXPECT_EQ(only().getID(), 8);
    EXPECT_EQ(only().getFieldByName("name"), "second");
    EXPECT_EQ(only().getFieldByName("code"), "C2");
    EXPECT_EQ(only().getFieldByName("sold"), "YES");
}

TEST_F(RecordFileTest, controlCharactersAreDroppedOnBothWays)
{
    ASSERT_EQ(load(documentOf(recordOf("1", "be\x07ll\xef\xbf\xbe"))), "");
    EXPECT_EQ(only().getFieldByName("name"), "bell");
    shop.articles.clear();
    ASSERT_EQ(load(documentOf("\t\t<dict><key>name</key><string>be\x07ll\xef\xbf\xbe</string></dict>\n")), "");
    EXPECT_EQ(only().getFieldByName("name"), "bell");
}

TEST_F(RecordFileTest, whatIsNotUtf8IsRefusedWhereverItStands)
{
    const std::string good = documentOf(recordOf("1", "one") + recordOf("2", "two") + recordOf("3", "three"));
    ASSERT_EQ(load(good), "");
    for (const char* place : {"version", "one", "three", "note", "</plist>"}) {
        for (const char* bytes : {"\xff", "\xc3", "\xed\xa0\x80"})
            EXPECT_EQ(load(std::string(good).insert(good.find(place), bytes)), "the file is not UTF-8") << place;
    }
    EXPECT_EQ(load(good + "\x80"), "the file is not UTF-8");
    // Whatever else is wrong before it.
    EXPECT_EQ(load(std::string(good).replace(good.find("<dict>"), 6, "<wrong>") + "\xff"), "the file is not UTF-8");
}

TEST_F(RecordFileTest, lettersBeyondAsciiReadInEveryRecord)
{
    ASSERT_EQ(load(documentOf(recordOf("1", "Caf\xc3\xa9") + recordOf("2", "\xe6\x9d\xb1") + recordOf("3", "\xf0\x9f\x98\x80"))), "");
    EXPECT_EQ(shop.articles.at(0).getFieldByName("name"), "Caf\xc3\xa9");
    EXPECT_EQ(shop.articles.at(1).getFieldByName("name"), "\xe6\x9d\xb1");
    EXPECT_EQ(shop.articles.at(2).getFieldByName("name"), "\xf0\x9f\x98\x80");
}

TEST_F(RecordFileTest, whatFollowsAClosedListOrRecordIsNotTakenForItsContents)
{
    const std::string whole = documentOf(recordOf("1", "one"));
    std::string closedList = whole;
    closedList.replace(closedList.find("<array>"), 7, "<array/>");
    std::string closedRecord = documentOf("\t\t<dict/>\n" + recordOf("2", "two"));
    std::string closedTwice = documentOf("\t\t<dict/>\n\t\t</dict>\n");

    EXPECT_NE(load(closedList), "");
    EXPECT_NE(load(closedTwice), "");
    EXPECT_EQ(shop.articles.getCount(), 0);
    EXPECT_EQ(load(closedRecord), "");
    ASSERT_EQ(shop.articles.getCount(), 2);
    EXPECT_EQ(shop.articles.at(1).getID(), 2);
}
