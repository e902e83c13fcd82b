#include "documents/rtf/RtfCodePage.h"

#include <gtest/gtest.h>

TEST(RtfCodePage, bytesAreReadByTheirPage)
{
    EXPECT_EQ(rtf::decoded("\xcf\xf0", 1251), QString("\u041f\u0440"));
    EXPECT_EQ(rtf::decoded("\x8e", rtf::macRoman), QString("\u00e9"));
    EXPECT_EQ(rtf::decoded("\x83\x41", 932), QString("\u30a2"));
    EXPECT_EQ(rtf::decoded("\xb0\xa1", 949), QString("\uac00"));
    EXPECT_EQ(rtf::decoded("\xb0\xa1", 936), QString("\u554a"));
    EXPECT_EQ(rtf::decoded("\xa4\xa4", 950), QString("\u4e2d"));
    EXPECT_EQ(rtf::decoded("\xa1", 874), QString("\u0e01"));
    EXPECT_EQ(rtf::decoded("\xc3\xa9", 65001), QString("\u00e9"));
}

TEST(RtfCodePage, ofAnUnknownPageTheyAreWesternEuropean)
{
    EXPECT_EQ(rtf::decoded("\x80", rtf::westernEurope), QString("\u20ac"));
    EXPECT_EQ(rtf::decoded("\x80", 4711), QString("\u20ac"));
    EXPECT_EQ(rtf::decoded("", 4711), QString());
}

TEST(RtfCodePage, aFontsCharacterSetHasItsPage)
{
    EXPECT_EQ(rtf::codePageOfCharset(204), 1251);
    EXPECT_EQ(rtf::codePageOfCharset(77), rtf::macRoman);
    EXPECT_EQ(rtf::codePageOfCharset(0), 0);
    EXPECT_EQ(rtf::codePageOfCharset(-1), 0);
}

TEST(RtfCodePage, onlyTheFourOfEasternAsiaHaveLettersOfTwoBytes)
{
    for (const int page : {932, 936, 949, 950})
        EXPECT_TRUE(rtf::isDoubleByte(page)) << page;
    for (const int page : {874, 1251, rtf::westernEurope, rtf::macRoman, 65001, 0})
        EXPECT_FALSE(rtf::isDoubleByte(page)) << page;
}
