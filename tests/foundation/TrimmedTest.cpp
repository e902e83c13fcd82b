#include "foundation/Trimmed.h"

#include <gtest/gtest.h>

TEST(TrimmedTest, onlyWhatStandsAroundATextGoes)
{
    EXPECT_EQ(trimmed(" \t\r\n a \t b\n"), "a \t b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(trimmed(""), "");
}
