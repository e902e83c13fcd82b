#include "foundation/ByteRelay.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

TEST(ByteRelayTest, everythingArrivesOnceAndInItsOrder)
{
    std::string taken;
    std::string given;
    {
        ByteRelay relay([&](std::string_view block) { taken += block; });
        for (int i = 0; i < 1000; ++i) {
            const std::string block = std::to_string(i) + ' ';
            given += block;
            relay.add(block);
        }
        relay.finish();
        EXPECT_EQ(taken, given);
    }
    EXPECT_EQ(taken, given);
}

TEST(ByteRelayTest, aBlockGivenInExchangeIsNotCopied)
{
    std::string block(100, 'a');
    const char* const given = block.data();
    const char* taken = nullptr;
    ByteRelay relay([&](std::string_view bytes) { taken = bytes.data(); });
    relay.exchange(block);
    EXPECT_NE(block.data(), given);
    relay.finish();
    EXPECT_EQ(taken, given);
}

TEST(ByteRelayTest, oneBlockIsTakenWhereItWasMade)
{
    std::thread::id taker;
    ByteRelay relay([&](std::string_view) { taker = std::this_thread::get_id(); });
    relay.add("small");
    EXPECT_EQ(taker, std::thread::id());
    relay.finish();
    EXPECT_EQ(taker, std::this_thread::get_id());
}

TEST(ByteRelayTest, manyBlocksAreTakenElsewhere)
{
    std::thread::id taker;
    ByteRelay relay([&](std::string_view) { taker = std::this_thread::get_id(); });
    for (int i = 0; i < 10; ++i)
        relay.add("block");
    relay.finish();
    EXPECT_NE(taker, std::this_thread::get_id());
}

TEST(ByteRelayTest, nothingAddedIsNothingTaken)
{
    int blocks = 0;
    {
        ByteRelay relay([&](std::string_view) { ++blocks; });
    }
    EXPECT_EQ(blocks, 0);
}

TEST(ByteRelayTest, whoeverAddsFasterThanIsTakenWaits)
{
    std::string taken;
    ByteRelay relay([&](std::string_view block) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        taken += block;
    });
    for (int i = 0; i < 40; ++i)
        relay.add(std::string(1, static_cast<char>('a' + i % 26)));
    relay.finish();
    EXPECT_EQ(taken.size(), 40u);
    EXPECT_EQ(taken.substr(24, 4), "yzab");
}

TEST(ByteRelayTest, whatGoesWrongElsewhereIsThrownWhereItIsFinished)
{
    for (const int blocks : {1, 40}) {
        int taken = 0;
        ByteRelay relay([&](std::string_view) {
            ++taken;
            throw std::runtime_error("full");
        });
        for (int i = 0; i < blocks; ++i)
            relay.add("block");
        EXPECT_THROW(relay.finish(), std::runtime_error);
        EXPECT_NO_THROW(relay.finish());
        EXPECT_EQ(taken, 1) << "what comes after it is of no use";
    }
}

TEST(ByteRelayTest, whatGoesWrongElsewhereIsNotThrownWhenItIsGivenUp)
{
    EXPECT_NO_THROW({
        ByteRelay relay([](std::string_view) { throw std::runtime_error("full"); });
        relay.add("one");
        relay.add("two");
    });
}
