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

private:
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

    ArticleShop shop;
    OwnedArticleFile file {shop.articles};
};

} // namespace

TEST_F(EarlierFileTest, theSameStateHasNoDifferences)
{
    const std::string records = record(1, entry("name", "Mug")) + record(2, entry("name", "Jug") + entry("further", "kept"));
    load(records);

    EXPECT_TRUE(parsed(records)->differences().empty()) << "what the kind fills in by its own rules is no difference either";
}

TEST_F(EarlierFileTest, tellsWhatIsGoneAndWhichKeysChanged)
{
    load(record(1, entry("name", "Mug")) + record(2, entry("name", "Jug") + entry("price", "2.00") + entry("sold", "NO"))
        + record(4, entry("name", "New")));

    const std::vector<RecordDifference> found = parsed(record(3, entry("name", "Bowl") + entry("price", "9.00") + entry("owner", "7"))
        + record(2,
            entry("name", "Jug") + entry("price", "1.00") + entry("sold", "YES") + "<key>parts</key><array><string>lid</string></array>"
                + entry("further", "gone"))
        + record(1, entry("name", "Mug")))
                                                    ->differences();

    ASSERT_EQ(found.size(), 2U) << "what was added since is no difference";
    EXPECT_EQ(found[0].id, 3);
    EXPECT_EQ(found[0].index, 0U);
    EXPECT_EQ(found[0].title, "Bowl 9.00");
    EXPECT_EQ(found[0].owner, 7);
    EXPECT_TRUE(found[0].isGone);
    EXPECT_TRUE(found[0].changedKeys.empty());
    EXPECT_EQ(found[1].id, 2);
    EXPECT_FALSE(found[1].isGone);
    EXPECT_EQ(found[1].changedKeys, (std::vector<std::string> {"parts", "price", "sold", "further keys"}));
}

TEST_F(EarlierFileTest, whatIsWrittenUnderOneKeyAndReadUnderAnotherSaysNothing)
{
    load(record(1, entry("name", "Mug") + entry("Stocked", "YES")));

    EXPECT_TRUE(parsed(record(1, entry("name", "Mug")))->differences().empty());
}

TEST_F(EarlierFileTest, aRecordWithoutTitleIsCalledByItsNumber)
{
    EXPECT_EQ(parsed(record(5, {}))->differences().at(0).title, "5");
}

TEST_F(EarlierFileTest, aDeletedRecordComesBackWithItsIdAndEverythingItHeld)
{
    load(record(1, entry("name", "Mug")));
    const auto earlier =
        parsed(record(9, entry("name", "Bowl") + "<key>parts</key><array><string>lid</string></array>" + entry("further", "kept")));

    earlier->bringBack(0);

    Article* const bowl = shop.articles.getItemById(9);
    ASSERT_NE(bowl, nullptr);
    EXPECT_TRUE(shop.articles.holds(*bowl));
    EXPECT_EQ(bowl->getFieldByName("name"), "Bowl");
    EXPECT_EQ(bowl->parts, std::vector<std::string> {"lid"});
    ASSERT_TRUE(bowl->unknownKeys());
    EXPECT_EQ(bowl->unknownKeys()->find("further")->asText(), "kept");
    EXPECT_TRUE(earlier->differences().empty());
    EXPECT_EQ(shop.articles.getNextId(), 10);
}

TEST_F(EarlierFileTest, aChangedRecordGetsItsValuesBackAndStaysTheRecordItIs)
{
    load(record(1, entry("name", "Mug") + entry("note", "now")));
    Article* const mug = shop.articles.getItemById(1);
    shop.articles.search("now");
    const auto earlier = parsed(record(1, entry("name", "Mug") + entry("note", "then")));

    earlier->bringBack(0);

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

    parsed(record(1, entry("name", "Mug")))->bringBack(0);

    EXPECT_EQ(shop.articles.getCount(), 1);
    EXPECT_NE(shop.articles.getItemById(1), deleted);
}
