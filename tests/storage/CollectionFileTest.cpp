// An earlier file beside the collection it belongs to: what is different, and what comes back.
#include "Article.h"

#include <gtest/gtest.h>

namespace {

/// Articles whose name is what a person knows them by, and that belong to their owner.
class OwnedArticleFile : public ArticleFile {
public:
    using ArticleFile::ArticleFile;

protected:
    bool complete(StoredRecord<Article>& stored) const override
    {
        if (!stored.values->code.isEmpty())
            return true;
        stored.values.change().code = stored.values->name;
        return stored.values->code.isEmpty();
    }
    std::span<const std::string_view> titleKeys() const override { return keys; }
    int ownerOf(const StoredRecord<Article>& stored) const override { return stored.values->owner; }
    std::span<const std::string_view> fixedKeys() const override { return fixed; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Article>& stored, TextStore&, const UseLink& use) const override
    {
        use("owners.xml", stored.values.change().owner);
    }

private:
    static constexpr std::array<std::string_view, 1> fixed {"owner"};
    static constexpr std::array<std::string_view, 3> telling {"name", "price", "date"};
    static constexpr std::array<std::string_view, 2> keys {"name", "price"};
};

/// Articles whose owner is another article, filled in where a file leaves it open.
class NestedArticleFile : public OwnedArticleFile {
public:
    using OwnedArticleFile::OwnedArticleFile;

protected:
    std::span<const std::string_view> fixedKeys() const override { return {}; }
    std::span<const std::string_view> filledInKeys() const override { return filledIn; }
    void visitLinks(StoredRecord<Article>& stored, TextStore&, const UseLink& use) const override
    {
        use("articles.xml", stored.values.change().owner);
    }

private:
    static constexpr std::array<std::string_view, 1> filledIn {"owner"};
};

class EarlierFileTest : public testing::Test {
protected:
    virtual RecordFile& usedFile() { return file; }
    std::unique_ptr<ParsedFile> parsed(const std::string& records)
    {
        Result<std::unique_ptr<ParsedFile>> result =
            usedFile().parse(R"(<plist version="1.0"><dict><key>articles</key><array>)" + records + "</array></dict></plist>");
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
        return differencesByKnownIds(earlier);
    }
    std::vector<RecordDifference> differencesByKnownIds(const ParsedFile& earlier)
    {
        earlier.findNewIds(newIds);
        return earlier.differences(newIds);
    }
    std::vector<RecordDifference> differencesTo(const std::string& records) { return differences(*parsed(records)); }
    std::string nameOf(int id) const { return shop.articles.getItemById(id)->getFieldByName("name"); }

    ArticleShop shop;
    OwnedArticleFile file {shop.articles};
    IdChanges newIds;
};

class NestedFileTest : public EarlierFileTest {
protected:
    RecordFile& usedFile() override { return nestedFile; }
    static std::string called(const std::string& name, const std::string& price, int owner = 0)
    {
        return entry("name", name) + entry("price", price) + entry("owner", std::to_string(owner));
    }
    /// Those that have the ids 1 and 2 now.
    static std::string twoOthers() { return record(1, called("Mug", "2.00")) + record(2, called("Jug", "3.00")); }
    std::vector<int> newIdsOf(std::initializer_list<int> earlier) const
    {
        std::vector<int> ids;
        for (const int id : earlier)
            ids.push_back(newIds.now("articles.xml", id));
        return ids;
    }

    NestedArticleFile nestedFile {shop.articles};
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

    newIds.replace("owners.xml", {{4, 11}});
    earlier->bringBack(0, newIds);

    EXPECT_EQ(shop.articles.getItemById(1)->getFieldByName("owner"), "11");
    EXPECT_TRUE(differencesByKnownIds(*earlier).empty());
}

TEST_F(EarlierFileTest, whoWasKnownToBeBackStaysTheOneThatItIs)
{
    const std::string bowl = entry("name", "Bowl") + entry("price", "9.00");
    const std::string mug = entry("name", "Mug") + entry("price", "2.00");
    load(record(1, mug) + record(2, mug) + record(6, bowl));
    const auto earlier = parsed(record(1, bowl) + record(2, bowl));
    newIds.replace("articles.xml", {{2, 6}});

    const std::vector<RecordDifference> found = differencesByKnownIds(*earlier);

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, 1);
    EXPECT_EQ(newIds.now("articles.xml", 1), 7);
    EXPECT_EQ(newIds.now("articles.xml", 2), 6);
}

TEST_F(EarlierFileTest, whoWasTakenForTheOneThatIsBackIsAnotherOnceItChanges)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")) + record(5, entry("name", "Bowl") + entry("price", "9.00")));
    const auto earlier = parsed(record(1, entry("name", "Bowl") + entry("price", "9.00")));
    ASSERT_TRUE(differences(*earlier).empty());

    shop.articles.getItemById(5)->setFieldByName("note", "chipped");

    EXPECT_EQ(differencesByKnownIds(*earlier).size(), 1U);
    EXPECT_EQ(newIds.now("articles.xml", 1), 6);
}

TEST_F(EarlierFileTest, whoHasItsIdAgainHasNoOtherOne)
{
    load(record(1, entry("name", "Mug") + entry("price", "2.00")));
    const auto earlier = parsed(record(1, entry("name", "Bowl") + entry("price", "9.00")));
    ASSERT_EQ(differences(*earlier).size(), 1U);
    ASSERT_FALSE(newIds.isEmpty());

    shop.articles.getItemById(1)->setFieldByName("name", "Bowl");

    EXPECT_EQ(differencesByKnownIds(*earlier).at(0).sinceThen, SinceThen::changed);
    EXPECT_TRUE(newIds.isEmpty());
}

TEST_F(EarlierFileTest, oneWithoutATitleIsKnownWhenItIsBack)
{
    const auto noTitle = [](const char* date) { return entry("date", date) + entry("owner", "4"); };
    load(record(1, entry("name", "Mug") + entry("owner", "5")) + record(2, noTitle("02/01/24")) + record(3, noTitle("01/01/24")));

    EXPECT_TRUE(differencesTo(record(1, noTitle("01/01/24"))).empty());
    EXPECT_EQ(newIds.now("articles.xml", 1), 3);
}

TEST_F(EarlierFileTest, twoThatChangedTheirIdsAreBothThere)
{
    const std::string bowl = entry("name", "Bowl") + entry("price", "9.00");
    const std::string mug = entry("name", "Mug") + entry("price", "2.00");
    load(record(1, mug) + record(2, bowl));

    EXPECT_TRUE(differencesTo(record(1, bowl) + record(2, mug)).empty());
    EXPECT_EQ(newIds.now("articles.xml", 1), 2);
    EXPECT_EQ(newIds.now("articles.xml", 2), 1);
}

// Records that name others of their file

TEST_F(NestedFileTest, oneThatNamesItselfIsKnownWhenItIsBack)
{
    load(record(1, called("Mug", "2.00")) + record(5, called("Bowl", "9.00", 5)));

    EXPECT_TRUE(differencesTo(record(1, called("Bowl", "9.00", 1))).empty());
    EXPECT_EQ(newIds.now("articles.xml", 1), 5);
}

TEST_F(NestedFileTest, oneThatNamesAnotherIsKnownWithTheOther)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00")));

    EXPECT_TRUE(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00"))).empty());
    EXPECT_EQ(newIdsOf({1, 2}), (std::vector<int> {5, 6}));
}

TEST_F(NestedFileTest, whatIsKnownStaysKnown)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00", 5)));
    const auto earlier = parsed(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00", 1)));
    ASSERT_TRUE(differences(*earlier).empty());
    const IdChanges before = newIds;

    EXPECT_TRUE(differencesByKnownIds(*earlier).empty());
    EXPECT_TRUE(newIds == before);
}

TEST_F(NestedFileTest, twoThatNameEachOtherAreKnownWhenTheyAreBack)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00", 5)));

    EXPECT_TRUE(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00", 1))).empty());
    EXPECT_EQ(newIdsOf({1, 2}), (std::vector<int> {5, 6}));
}

TEST_F(NestedFileTest, threeInACircleAndOneThatNamesItAreKnown)
{
    load(twoOthers() + record(3, called("Tray", "4.00")) + record(4, called("Vase", "5.00")) + record(11, called("Lid", "1.00", 12))
        + record(12, called("Bowl", "9.00", 13)) + record(13, called("Box", "8.00", 11)) + record(14, called("Crate", "7.00", 12)));

    EXPECT_TRUE(differencesTo(record(1, called("Crate", "7.00", 3)) + record(2, called("Lid", "1.00", 3))
        + record(3, called("Bowl", "9.00", 4)) + record(4, called("Box", "8.00", 2)))
                    .empty());
    EXPECT_EQ(newIdsOf({1, 2, 3, 4}), (std::vector<int> {14, 11, 12, 13}));
}

TEST_F(NestedFileTest, aCircleThatGoesThroughOneThatKeptItsId)
{
    load(record(1, called("Mug", "2.00")) + record(2, called("Bowl", "9.00", 5)) + record(5, called("Lid", "1.00", 2)));

    EXPECT_TRUE(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00", 1))).empty());
}

TEST_F(NestedFileTest, ofACircleInWhichAnyThingChangedNoneIsKnown)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00", 5) + entry("note", "chipped")));

    EXPECT_EQ(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00", 1))).size(), 2U);
    EXPECT_EQ(newIdsOf({1, 2}), (std::vector<int> {7, 8}));
}

TEST_F(NestedFileTest, aCircleThatWasOpenedIsNotTheSame)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00", 2)));

    EXPECT_EQ(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00", 1))).size(), 2U);
}

TEST_F(NestedFileTest, twoAlikeThatNameEachOtherAreNotTwoThatNameThemselves)
{
    const std::string others = twoOthers();
    const auto lid = [](int id, int owner) { return record(id, called("Lid", "1.00", owner)); };
    load(others + lid(5, 5) + lid(6, 6));
    EXPECT_EQ(differencesTo(lid(1, 2) + lid(2, 1)).size(), 2U);

    EXPECT_EQ(differencesTo(lid(1, 1) + lid(2, 2)).size(), 0U);
    shop.articles.getItemById(5)->setFieldByName("owner", "6");
    shop.articles.getItemById(6)->setFieldByName("owner", "5");
    EXPECT_EQ(differencesTo(lid(1, 1) + lid(2, 2)).size(), 2U);
    EXPECT_EQ(differencesTo(lid(1, 2) + lid(2, 1)).size(), 0U);
}

TEST_F(NestedFileTest, fourAlikeInACircleAreNotTwoCircles)
{
    const auto lid = [](int id, int owner) { return record(id, called("Lid", "1.00", owner)); };
    load(twoOthers() + record(3, called("Tray", "4.00")) + record(4, called("Vase", "5.00")) + lid(5, 6) + lid(6, 5) + lid(7, 8)
        + lid(8, 7));

    EXPECT_EQ(differencesTo(lid(1, 2) + lid(2, 3) + lid(3, 4) + lid(4, 1)).size(), 4U);
    EXPECT_EQ(differencesTo(lid(1, 4) + lid(2, 3) + lid(3, 2) + lid(4, 1)).size(), 0U);
    EXPECT_EQ(newIdsOf({1, 2, 3, 4}), (std::vector<int> {5, 7, 8, 6}));
}

TEST_F(NestedFileTest, ofTwoCirclesThatAreAlikeOneIsBack)
{
    const auto lid = [](int id, int owner) { return record(id, called("Lid", "1.00", owner)); };
    const auto bowl = [](int id, int owner) { return record(id, called("Bowl", "9.00", owner)); };
    load(twoOthers() + record(3, called("Tray", "4.00")) + record(4, called("Vase", "5.00")) + lid(5, 6) + bowl(6, 5));

    const std::vector<RecordDifference> found = differencesTo(lid(1, 4) + lid(2, 3) + bowl(3, 2) + bowl(4, 1));

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].id, 2);
    EXPECT_EQ(found[1].id, 3);
    EXPECT_EQ(newIdsOf({1, 2, 3, 4}), (std::vector<int> {5, 7, 8, 6}));
}

TEST_F(NestedFileTest, twoAlikeAreToldApartByWhomTheyName)
{
    load(twoOthers() + record(3, called("Tray", "4.00")) + record(4, called("Vase", "5.00")) + record(11, called("Lid", "1.00", 12))
        + record(12, called("Box", "8.00")) + record(13, called("Lid", "1.00", 14)) + record(14, called("Bowl", "9.00")));

    EXPECT_TRUE(differencesTo(record(1, called("Lid", "1.00", 2)) + record(2, called("Bowl", "9.00")) + record(3, called("Lid", "1.00", 4))
        + record(4, called("Box", "8.00")))
                    .empty());
    EXPECT_EQ(newIdsOf({1, 2, 3, 4}), (std::vector<int> {13, 14, 11, 12}));
}

TEST_F(NestedFileTest, whoNamesAnIdThatNobodyHadThenAndAnotherHasNow)
{
    load(twoOthers() + record(5, called("Lid", "1.00", 6)) + record(6, called("Bowl", "9.00")));

    EXPECT_TRUE(differencesTo(record(1, called("Lid", "1.00", 6))).empty()) << "it came back with that name";
}

TEST_F(NestedFileTest, aCircleOfThousandsIsKnown)
{
    constexpr int count = 5'000;
    std::string then;
    std::string now;
    for (int n = 0; n < count; ++n) {
        now += record(1 + n, called("Mug", "2.00"));
        then += record(1 + n, called("Lid", "1.00", 1 + (n + 1) % count));
    }
    for (int n = 0; n < count; ++n)
        now += record(1 + count + n, called("Lid", "1.00", 1 + count + (n + 1) % count));
    load(now);

    EXPECT_TRUE(differencesTo(then).empty());
    EXPECT_EQ(newIdsOf({1, count}), (std::vector<int> {1 + count, 2 * count}));
}

TEST_F(NestedFileTest, whatWasFilledInSaysNothing)
{
    load(record(1, called("Mug", "2.00", 4)) + record(2, called("Jug", "3.00")));

    const std::vector<RecordDifference> found = differencesTo(record(1, called("Mug", "2.00")) + record(2, called("Jug", "3.00", 4)));

    ASSERT_EQ(found.size(), 1U) << "but what was there and is gone does";
    EXPECT_EQ(found[0].id, 2);
    EXPECT_EQ(found[0].changedKeys, std::vector<std::string> {"owner"});
}
