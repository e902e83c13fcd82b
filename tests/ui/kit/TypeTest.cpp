#include "KitTest.h"

#include "ui/kit/Type.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

TEST(Type, figuresAreOfEqualWidthInEveryWeight)
{
    for (const QFont& font : {type::body(), type::button(), type::strong(), type::small(), type::balance(), type::total()}) {
        const QFontMetricsF metrics(font);
        const qreal width = metrics.horizontalAdvance(QLatin1Char('0'));
        for (char digit = '1'; digit <= '9'; ++digit)
            EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QLatin1Char(digit)), width) << digit << " at " << font.pixelSize();
    }
}

TEST(Type, theFamilyIsOursInItsFourWeights)
{
    EXPECT_TRUE(QFontDatabase::hasFamily(type::family()));
    const QStringList styles = QFontDatabase::styles(type::family());
    EXPECT_GE(styles.size(), 4) << qPrintable(styles.join(QLatin1Char(',')));
    EXPECT_EQ(QFontInfo(type::body()).weight(), int(QFont::Normal));
    EXPECT_EQ(QFontInfo(type::button()).weight(), int(QFont::Medium));
    EXPECT_EQ(QFontInfo(type::strong()).weight(), int(QFont::DemiBold));
}

TEST(Type, headingsFromTwentyPixelsUpAreSetTighter)
{
    EXPECT_EQ(type::heading().pixelSize(), 20);
    EXPECT_DOUBLE_EQ(type::heading().letterSpacing(), 98.5);
    EXPECT_EQ(type::total().pixelSize(), 44);
    EXPECT_DOUBLE_EQ(type::total().letterSpacing(), 97);
    EXPECT_DOUBLE_EQ(type::group().letterSpacing(), 0);
}

TEST(Type, textIsNeverHinted)
{
    for (const QFont& font : {type::body(), type::heading(), QApplication::font()})
        EXPECT_EQ(font.hintingPreference(), QFont::PreferNoHinting);
}
