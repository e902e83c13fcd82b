// An earlier file beside the collection it belongs to: what is different, and what comes back.
#include "Article.h"

#include <gtest/gtest.h>

namespace {

/// Articles whose name is what a person knows them by, and that belong to their owner.
class OwnedArticleFile : public ArticleFile {
public:
    using ArticleFile::ArticleFile;

protected:
    void complete(StoredRecord<Article>& stored) const override
    {
        if (stored.values.code.isEmpty())
            stored.values.code = stored.values.name;
    }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    int ownerOf(const StoredRecord<Article>& stored) const override { return stored.values.owner; }
    std::span<const std::string_view> fixedKeys() const override { return fixed; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Article>& stored, TextStore&, const UseLink& use) const override
    {
        use("owners.xml", stored.values.owner);
    }

private:
    static constexpr std::array<std::string_view, 1> fixed {"owner"};
    static constexpr std::array<std::string_view, 3> telling {"name", "price", "date"};
    static constexpr std::array<std::string_view, 2> keys {"name", "price"};
};

class EarlierFileTest : public testing::Test {
protected:
    std::unique_ptr<ParsedFile> parsed(const std::string& records)
    {
        Result<std::unique_ptr<ParsedFile>> result =
            file.parse(R"(<plist version="1.0"><dict><key>articles</key><array>)" + records + "</array></dict></plist>");
        EXPECT_TRUE(result.ok());
        return std::move(result).value();
    }
    static std::string record(int id, const std::string& rest)
    {
        return "<dict><key>id</key><string>" + std::to_string(id) + "</string>" + rest + "</dict>";
    }
    static std::string entry(const std::string& key, const std::string& text)
    {
        return "<key>" + key + "</key><string>" + text + "</string>";
    }
    void load(const std::string& records) { parsed(records)->adopt(); }
    std::vector<RecordDifference> differences(const ParsedFile& earlier)
    {
        newIds = {};
        return earlier.differences(newIds);
    }
    std::vector<RecordDifference> differencesTo(const std::string& records) { return differences(*parsed(records)); }
    std::string nameOf(int id) const { return shop.articles.getItemById(id)->getFieldByName("name"); }

    ArticleShop shop;
    OwnedArticleFile file {shop.articles};
    IdChanges newIds;
};

} // namespace

TEST_F(EarlierFileTest, theSameStateHasNoDifferences)
{
    const std::string records = record(1, entry("name", "Mug")) + record(2, entry("name", "Jug") + entry("further", "kept"));
    load(records);

    EXPECT_TRUE(differencesTo(records).empty()) << "what the kind fills in by its own rules is no difference either";
}

TEST_F(EarlierFileTest, tellsWhatIsGoneAndWhichKeysChanged)
{
    load(record(1, entry("name", "Mug")) + record(2, entry("name", "Jug") + entry("price", "2.00") + entry("sold", "NO"))
        + record(4, entry("name", "New")));

    const std::vector<RecordDifference> found =
        differencesTo(record(3, entry("name", "Bowl") + entry("price", "9.00") + entry("owner", "7"))
            + record(2,
                entry("name", "Jug") + entry("price", "1.00") + entry("sold", "YES") + "<key>parts</key><array><string>lid</string></array>"
                    + entry("further", "gone"))
            + record(1, entry("name", "Mug")));

    ASSERT_EQ(found.size(), 2U) << "what was added since is no difference";
    EXPECT_EQ(found[0].id, 3);
    EXPECT_EQ(found[0].index, 0U);
    EXPECT_EQ(found[0].title, "Bowl 9.00");
    EXPECT_EQ(found[0].owner, 7);
    EXPECT_EQ(found[0].sinceThen, SinceThen::gone);
    EXPECT_TRUE(found[0].changedKeys.empty());
    EXPECT_EQ(found[1].id, 2);
    EXPECT_EQ(found[1].sinceThen, SinceThen::changed);
    EXPECT_EQ(found[1].changedKeys, (std::vector<std::string> {"parts", "price", "sold", "further keys"}));
}

TEST_F(EarlierFileTest, whatIsWrittenUnderOneKeyAndReadUnderAnotherSaysNothing)
{
    load(record(1, entry("name", "Mug") + entry("Stocked", "YES")));

    EXPECT_TRUE(differencesTo(record(1, entry("name", "Mug"))).empty());
}

TEST_F(EarlierFileTest, aRecordWithoutTitleIsCalledByItsNumber)
{
    EXPECT_EQ(differencesTo(record(5, {})).at(0).title, "5");
}

TEST_F(EarlierFileTest, aDeletedRecordComesBackWithItsIdAndEverythingItHeld)
{
    load(record(1, entry("name", "Mug")));
    const auto earlier =
        parsed(record(9, entry("name", "Bowl") + "<key>parts</key><array><string>lid</string></array>" + entry("further", "kept")));

    earlier->bringBack(0, newIds);

    Article* const bowl = shop.articles.getItemById(9);
    ASSERT_NE(bowl, nullptr);
    EXPECT_TRUE(shop.articles.holds(*bowl));
    EXPECT_EQ(bowl->getFieldByName("name"), "Bowl");
    EXPECT_EQ(bowl->parts, std::vector<std::string> {"lid"});
    ASSERT_TRUE(bowl->unknownKeys());
    EXPECT_EQ(bowl->unknownKeys()->find("further")->asText(), "kept");
    EXPECT_TRUE(differences(*earlier).empty());
    EXPECT_EQ(shop.articles.getNextId(), 10);
}

TEST_F(EarlierFileTest, aChangedRecordGetsItsValuesBackAndStaysTheRecordItIs)
{
    load(record(1, entry("name", "Mug") + entry("note", "now")));
    Article* const mug = shop.articles.getItemById(1);
    shop.articles.search("now");
    const auto earlier = parsed(record(1, entry("name", "Mug") + entry("note", "then")));

    earlier->bringBack(0, newIds);

    EXPECT_EQ(shop.articles.getCount(), 1);
    EXPECT_EQ(shop.articles.getItemById(1), mug);
    EXPECT_EQ(mug->getFieldByName("note"), "then");
    shop.articles.search("then");
    EXPECT_EQ(shop.articles.shown(), "Mug ") << "the search knows";
    mug->setFieldByName("note", "later");
    EXPECT_EQ(mug->getFieldByName("note"), "later") << "and it can be changed again";
}

TEST_F(EarlierFileTest, whatWasDeletedHereComesBackAsARecordOfItsOwn)
{
    load(record(1, entry("name", "Mug")));
    Article* const deleted = shop.articles.getItemById(1);
    shop.articles.deleteItem(*deleted);

    parsed(record(1, entry("name", "Mug")))->bringBack(0, newIds);

    EXPECT_EQ(shop.articles.getCount(), 1);
    EXPECT_NE(shop.articles.getItemById(1), deleted);
}

// Ids that others have by now

TEST_F(EarlierFileTest, aRecordThatAgreesInNothingIsAnotherOneWithTheId)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")) + record(2, entry("name", "Jug")));
    const auto earlier = parsed(record(1, entry("name", "Bowl") + entry("price", "9.00")));

    const std::vector<RecordDifference> found = differences(*earlier);

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].sinceThen, SinceThen::replaced);
    EXPECT_EQ(found[0].id, 1);
    EXPECT_EQ(found[0].title, "Bowl 9.00");
    EXPECT_EQ(found[0].usedBy, "Mug 2.00");
    EXPECT_TRUE(found[0].changedKeys.empty());
    EXPECT_EQ(newIds.now("articles.xml", 1), 3);
    EXPECT_EQ(newIds.now("others.xml", 1), 1);
}

TEST_F(EarlierFileTest, oneThatAgreesInAnythingOrDiffersInOneThingOnlyMayHaveChanged)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")) + record(2, entry("name", "Jug")));

    const std::vector<RecordDifference> found =
        differencesTo(record(1, entry("name", "Bowl") + entry("price", "2.00")) + record(2, entry("name", "Can") + entry("price", "1.00")));

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].sinceThen, SinceThen::changed);
    EXPECT_EQ(found[1].sinceThen, SinceThen::changed) << "the price may have been taken off";
}

TEST_F(EarlierFileTest, aValueThatStaysForLifeTellsTwoRecordsApart)
{
    load(record(1, entry("name", "Mug") + entry("owner", "4")));

    EXPECT_EQ(differencesTo(record(1, entry("name", "Mug") + entry("owner", "5"))).at(0).sinceThen, SinceThen::replaced);
    EXPECT_EQ(differencesTo(record(1, entry("name", "Mug") + entry("owner", "0"))).at(0).sinceThen, SinceThen::changed);
}

TEST_F(EarlierFileTest, whatIsReplacedComesBackBesideTheOther)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")));
    const auto earlier = parsed(record(1, entry("name", "Bowl") + entry("price", "9.00")) + record(6, entry("name", "Can")));
    ASSERT_EQ(differences(*earlier).size(), 2U);
    EXPECT_EQ(newIds.now("articles.xml", 1), 7) << "no other record of that time had it";

    earlier->bringBack(0, newIds);

    EXPECT_EQ(shop.articles.getCount(), 2);
    EXPECT_EQ(nameOf(1), "Mug");
    EXPECT_EQ(nameOf(7), "Bowl");
    const std::vector<RecordDifference> left = differences(*earlier);
    ASSERT_EQ(left.size(), 1U) << "it is back";
    EXPECT_EQ(left[0].title, "Can");
    EXPECT_EQ(newIds.now("articles.xml", 1), 7);
}

TEST_F(EarlierFileTest, twoAlikeNeedTwoThatAreBack)
{
    const std::string bowl = entry("name", "Bowl") + entry("price", "9.00");
    const std::string mug = entry("name", "Mug") + entry("price", "2.00");
    load(record(1, mug) + record(2, mug) + record(5, bowl));

    const std::vector<RecordDifference> found = differencesTo(record(1, bowl) + record(2, bowl));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, 2);
    EXPECT_EQ(newIds.now("articles.xml", 1), 5);
    EXPECT_EQ(newIds.now("articles.xml", 2), 6);
}

TEST_F(EarlierFileTest, beyondTheLargestIdAFreeOneServes)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")) + record(2147483647, entry("name", "Last")));

    differencesTo(record(1, entry("name", "Bowl") + entry("price", "9.00")));

    EXPECT_EQ(newIds.now("articles.xml", 1), 2);
}

TEST_F(EarlierFileTest, whatARecordNamesFollowsItsNewId)
{
    const auto earlier = parsed(record(1, entry("name", "Mug") + entry("owner", "4")));
    const std::vector<RecordLink> links = earlier->linksOf(0);
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].fileName, "owners.xml");
    EXPECT_EQ(links[0].id, 4);

    newIds.set("owners.xml", 4, 11);
    earlier->bringBack(0, newIds);

    EXPECT_EQ(shop.articles.getItemById(1)->getFieldByName("owner"), "11");
    IdChanges known;
    known.set("owners.xml", 4, 11);
    EXPECT_TRUE(earlier->differences(known).empty());
}
