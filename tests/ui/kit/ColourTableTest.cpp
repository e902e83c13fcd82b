#include "KitTest.h"

#include "ui/kit/ColourTable.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace kittest;

namespace {

struct Pair {
    Colour text;
    Colour ground;
};

const Shade bothShades[] = {Shade::light, Shade::dark};

QColor solid(Colour ground, Shade shade)
{
    const QColor colour = colourOf(ground, shade);
    return colour.alpha() == 255 ? colour : over(colour, colourOf(Colour::surface, shade));
}

} // namespace

TEST(ColourTable, rowsStandInTheOrderOfTheEnum)
{
    const auto& table = colourTable();
    for (size_t index = 0; index < table.size(); ++index)
        EXPECT_EQ(size_t(table[index].use), index) << table[index].name;
    EXPECT_EQ(table.size(), size_t(Colour::focusRing) + 1);
}

TEST(ColourTable, everyTextReachesFourAndAHalfToOneOnItsGrounds)
{
    const Pair pairs[] = {
        {Colour::text, Colour::window},
        {Colour::text, Colour::sidebar},
        {Colour::text, Colour::surface},
        {Colour::text, Colour::field},
        {Colour::text, Colour::accentTint},
        {Colour::secondaryText, Colour::window},
        {Colour::secondaryText, Colour::surface},
        {Colour::secondaryText, Colour::readOnlyField},
        {Colour::secondaryText, Colour::accentTint},
        {Colour::accentText, Colour::window},
        {Colour::accentText, Colour::surface},
        {Colour::accentText, Colour::accentTint},
        {Colour::errorText, Colour::surface},
        {Colour::errorText, Colour::field},
        {Colour::errorText, Colour::window},
        {Colour::errorText, Colour::accentTint},
        {Colour::warningText, Colour::warningGround},
        {Colour::moneyBack, Colour::surface},
        {Colour::onAccent, Colour::accent},
        {Colour::onAccent, Colour::tooltip},
        {Colour::onAccent, Colour::accentPressed},
    };
    for (const Shade shade : bothShades) {
        for (const Pair& pair : pairs) {
            EXPECT_GE(contrast(solid(pair.text, shade), solid(pair.ground, shade)), 4.5)
                << colourTable()[size_t(pair.text)].name << " on " << colourTable()[size_t(pair.ground)].name
                << (shade == Shade::dark ? " dark" : " light");
        }
    }
}

TEST(ColourTable, placeholdersReachThreePointSevenToOneInFields)
{
    for (const Shade shade : bothShades) {
        EXPECT_GE(contrast(colourOf(Colour::placeholder, shade), colourOf(Colour::field, shade)), 3.7);
        EXPECT_GE(contrast(colourOf(Colour::placeholder, shade), colourOf(Colour::surface, shade)), 3.7);
    }
}

TEST(ColourTable, iconsAndTheRingStandOutThreeToOne)
{
    for (const Shade shade : bothShades) {
        EXPECT_GE(contrast(colourOf(Colour::icon, shade), colourOf(Colour::window, shade)), 3);
        EXPECT_GE(contrast(colourOf(Colour::warningIcon, shade), colourOf(Colour::surface, shade)), 3);
        EXPECT_GE(contrast(colourOf(Colour::accent, shade), colourOf(Colour::window, shade)), 3);
    }
}

TEST(ColourTable, textOnStatusTintsStaysReadable)
{
    for (const Shade shade : bothShades) {
        for (const QRgb status : {0x8e6bd1U, 0xd99a00U, 0x2b8fd6U, 0x2e9e6bU, 0xd5483cU}) {
            const QColor ground = over(statusTint(QColor(status), shade), colourOf(Colour::surface, shade));
            EXPECT_GE(contrast(colourOf(Colour::text, shade), ground), 4.5);
            EXPECT_GE(contrast(colourOf(Colour::secondaryText, shade), ground), 4.5);
        }
    }
}

TEST(ColourTable, darkIsNeverPureBlackNorPureWhiteText)
{
    EXPECT_NE(colourOf(Colour::window, Shade::dark), QColor(Qt::black));
    EXPECT_NE(colourOf(Colour::text, Shade::dark), QColor(Qt::white));
    // Nearer is lighter.
    EXPECT_LT(luminance(colourOf(Colour::window, Shade::dark)), luminance(colourOf(Colour::surface, Shade::dark)));
    EXPECT_LT(luminance(colourOf(Colour::surface, Shade::dark)), luminance(colourOf(Colour::field, Shade::dark)));
}

TEST(ColourTable, statusTintsAreElevenPercentInLightAndFifteenInDark)
{
    EXPECT_NEAR(statusTint(QColor(0xd99a00), Shade::light).alphaF(), 0.11, 0.005);
    EXPECT_NEAR(statusTint(QColor(0xd99a00), Shade::dark).alphaF(), 0.15, 0.005);
}

TEST(ColourTable, theMarksOfTheStyleSheetUseOnlyItsColours)
{
    static const QRegularExpression value(QStringLiteral("#[0-9a-f]{6}"));
    int looked = 0;
    for (QDirIterator marks(QStringLiteral(":/kit/marks")); marks.hasNext();) {
        QFile file(marks.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const Shade shade = file.fileName().contains(QLatin1String("-dark")) ? Shade::dark : Shade::light;
        const QString drawing = QString::fromUtf8(file.readAll());
        for (QRegularExpressionMatchIterator values = value.globalMatch(drawing); values.hasNext(); ++looked) {
            const QColor colour(values.next().captured());
            const bool known = std::any_of(
                colourTable().begin(), colourTable().end(), [&](const ColourRow& row) { return colourOf(row.use, shade) == colour; });
            EXPECT_TRUE(known) << qPrintable(file.fileName()) << " " << qPrintable(colour.name());
        }
    }
    EXPECT_GT(looked, 10);
}
