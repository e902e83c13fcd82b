#include "inventory/ItemFinder.h"

#include "support/Business.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ItemFinderTest : public Business {
protected:
    void SetUp() override { begin(); }
    Item& make(const char* code, const char* name, const char* ean = "", const char* variation = "")
    {
        Item& made = item(name);
        made.setCode(code);
        made.setEan(ean);
        made.setVariation(variation);
        return made;
    }
    std::vector<Item*> named(std::string_view text) { return items().finder.named(text); }
    std::vector<std::string> suggested(std::string_view text, std::size_t most = std::numeric_limits<std::size_t>::max())
    {
        std::vector<std::string> codes;
        for (const Item* found : items().finder.suggestions(text, most))
            codes.emplace_back(found->getCode());
        return codes;
    }
};

TEST_F(ItemFinderTest, findsByBarCodeCodeAndNameWhateverTheCase)
{
    Item& mug = make("M-1", "Blue Mug", "5012345678900");
    make("P-1", "Plate", "5012345678917");
    EXPECT_THAT(named("5012345678900"), ElementsAre(&mug));
    EXPECT_THAT(named("m-1"), ElementsAre(&mug));
    EXPECT_THAT(named("BLUE mug"), ElementsAre(&mug));
}

TEST_F(ItemFinderTest, onlyTheWholeTextNamesAnItem)
{
    make("M-12", "Blue Mug", "5012345678900");
    for (const char* text : {"M-1", "-12", "M-123", "Blue", "Mug", "501234567890", "012345678900", "Blue Mu", ""})
        EXPECT_THAT(named(text), IsEmpty()) << text;
}

TEST_F(ItemFinderTest, theBarCodeGoesBeforeTheCodeAndTheCodeBeforeTheName)
{
    Item& byName = make("A", "77");
    EXPECT_THAT(named("77"), ElementsAre(&byName));
    Item& byCode = make("77", "B");
    EXPECT_THAT(named("77"), ElementsAre(&byCode));
    Item& byEan = make("C", "C", "77");
    EXPECT_THAT(named("77"), ElementsAre(&byEan));
}

TEST_F(ItemFinderTest, itemsOfOneNameAreAllFoundInTheirOrder)
{
    Item& blue = make("M-1", "Mug", "", "blue");
    Item& red = make("M-2", "mug", "", "red");
    EXPECT_THAT(named("Mug"), ElementsAre(&blue, &red));
}

TEST_F(ItemFinderTest, blanksAroundDoNotCount)
{
    Item& mug = make(" M-1 ", "Mug");
    EXPECT_THAT(named("  m-1\t"), ElementsAre(&mug));
    EXPECT_THAT(named("   "), IsEmpty());
}

TEST_F(ItemFinderTest, aVariationDoesNotNameAnItem)
{
    make("M-1", "Mug", "", "blue");
    EXPECT_THAT(named("blue"), IsEmpty());
}

TEST_F(ItemFinderTest, lettersBeyondAsciiFoldToo)
{
    Item& stool = make("É-1", "Tabouret en hêtre");
    EXPECT_THAT(named("é-1"), ElementsAre(&stool));
    EXPECT_THAT(named("TABOURET EN HÊTRE"), ElementsAre(&stool));
}

TEST_F(ItemFinderTest, whatChangesIsFoundAsItIsNow)
{
    Item& mug = make("M-1", "Mug");
    EXPECT_THAT(named("M-1"), ElementsAre(&mug));
    mug.setCode("M-9");
    EXPECT_THAT(named("M-1"), IsEmpty());
    EXPECT_THAT(named("M-9"), ElementsAre(&mug));
    mug.setEan("123");
    EXPECT_THAT(named("123"), ElementsAre(&mug));
    mug.setItem("Cup");
    EXPECT_THAT(named("cup"), ElementsAre(&mug));
    mug.setVariation("tall");
    EXPECT_THAT(suggested("tall"), ElementsAre("M-9"));
}

TEST_F(ItemFinderTest, itemsThatComeAndGoAreFoundOrNot)
{
    Item& mug = make("M-1", "Mug");
    EXPECT_THAT(named("M-1"), ElementsAre(&mug));
    Item& plate = make("P-1", "Plate");
    EXPECT_THAT(named("P-1"), ElementsAre(&plate));
    items().deleteItem(mug);
    EXPECT_THAT(named("M-1"), IsEmpty());
    items().setDeleteBuffer({&mug});
    items().undo();
    EXPECT_THAT(named("M-1"), ElementsAre(&mug));
}

TEST_F(ItemFinderTest, anotherDatabaseHasItemsOfItsOwn)
{
    make("M-1", "Mug");
    EXPECT_EQ(named("M-1").size(), 1u);
    items().clear();
    EXPECT_THAT(named("M-1"), IsEmpty());
}

TEST_F(ItemFinderTest, suggestsCodesThenBarCodesThenNamesThenTheRest)
{
    make("X-1", "A stack of mugs");
    make("X-2", "Mug rack");
    make("X-3", "Jug", "mug-3");
    make("MUG-4", "Blue one");
    make("X-5", "Cup", "", "mug shape");
    EXPECT_THAT(suggested("mug"), ElementsAre("MUG-4", "X-3", "X-2", "X-1", "X-5"));
}

TEST_F(ItemFinderTest, suggestsWhatHasAllWords)
{
    make("OAK-12", "Oak shelf, 120 cm", "", "natural");
    make("OAK-9", "Oak shelf, 90 cm", "", "natural");
    make("ASH-12", "Ash shelf, 120 cm", "", "natural");
    EXPECT_THAT(suggested("120 oak"), ElementsAre("OAK-12"));
    EXPECT_THAT(suggested("natural shelf"), ElementsAre("OAK-12", "OAK-9", "ASH-12"));
    EXPECT_THAT(suggested("oak steel"), IsEmpty());
}

TEST_F(ItemFinderTest, suggestsNoMoreThanAskedForAndNothingTwice)
{
    for (const char* code : {"M-1", "M-2", "M-3"})
        make(code, "M mug");
    EXPECT_THAT(suggested("m", 2), ElementsAre("M-1", "M-2"));
    EXPECT_THAT(suggested("m"), ElementsAre("M-1", "M-2", "M-3"));
    EXPECT_THAT(suggested(""), IsEmpty());
}

TEST_F(ItemFinderTest, nothingTypedReachesAcrossTexts)
{
    make("AB", "CD", "EF");
    EXPECT_THAT(suggested("EFAB"), IsEmpty());
    EXPECT_THAT(suggested("EF\x02"), ElementsAre("AB"));
    EXPECT_THAT(named("AB\x03"), testing::SizeIs(1));
}

} // namespace
