#include "KitTest.h"

#include "ui/kit/Icons.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace kittest;

namespace {

/// Every solid pixel has the colour.
bool onlyColour(const QImage& image, const QColor& colour)
{
    int solid = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor found = image.pixelColor(x, y);
            if (found.alpha() < 250)
                continue;
            ++solid;
            if (!alike(found, colour))
                return false;
        }
    }
    return solid > 0;
}

QImage imageOf(const QIcon& icon, int size, qreal ratio = 1, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(size, size), ratio, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

TEST(Icons, theyTakeTheColourOfTheirRole)
{
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("document-print")), 22), QColor(0x3d4554)));
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("user"), IconRole::secondary), 16), QColor(0x586173)));
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("search"), IconRole::placeholder), 16), QColor(0x7c8596)));
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("document-print"), IconRole::onAccent), 16), QColor(Qt::white)));
}

TEST(Icons, drawingsInColoursOfTheirOwnAreRecolouredToo)
{
    // The theme draws this one in red.
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("edit-delete")), 22), QColor(0x3d4554)));
    EXPECT_TRUE(onlyColour(imageOf(Icons::get(QStringLiteral("view-refresh")), 16, 4), QColor(0x3d4554)));
}

TEST(Icons, disabledAndSelectedOnesChangeColour)
{
    const QIcon page = Icons::get(QStringLiteral("tag"));
    EXPECT_TRUE(onlyColour(imageOf(page, 22, 1, QIcon::Disabled), QColor(0xa9b2c0)));
    EXPECT_TRUE(onlyColour(imageOf(page, 22, 1, QIcon::Selected), QColor(0x2156c4)));
}

TEST(Icons, anIconMadeInLightIsPaintedInDarkAfterTheSwitch)
{
    const ThemeGuard guard;
    const QIcon icon = Icons::get(QStringLiteral("tag"));
    EXPECT_TRUE(onlyColour(imageOf(icon, 22), QColor(0x3d4554)));
    Theme::apply(*qApp, Theme::Mode::dark);
    EXPECT_TRUE(onlyColour(imageOf(icon, 22), QColor(0xc3c9d3)));
}

TEST(Icons, aDrawingIsMadePixelByPixelFromTheFileOfItsSize)
{
    // Given the drawing of 22 pixels in its own colour, rendered by hand at both densities.
    for (const int ratio : {1, 2}) {
        QSvgRenderer renderer(QStringLiteral(":/kit/icons/22/archive-insert.svg"));
        QImage expected(22 * ratio, 22 * ratio, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        QPainter painter(&expected);
        renderer.render(&painter);
        painter.end();
        const QImage made = Icons::pixmap(QStringLiteral("archive-insert"), QColor(0x232629), 22, ratio).toImage();
        ASSERT_EQ(made.size(), expected.size());
        for (int y = 0; y < made.height(); ++y) {
            for (int x = 0; x < made.width(); ++x)
                ASSERT_EQ(made.pixelColor(x, y).alpha(), expected.pixelColor(x, y).alpha()) << x << ',' << y << " at " << ratio;
        }
    }
}

TEST(Icons, twiceTheDensityGivesTwiceThePixels)
{
    const QPixmap pixmap = Icons::get(QStringLiteral("tag")).pixmap(QSize(22, 22), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(44, 44));
    EXPECT_DOUBLE_EQ(pixmap.devicePixelRatio(), 2);
}

TEST(Icons, aPlaceWiderThanTheDrawingKeepsItAtTheLeft)
{
    const QImage image = Icons::get(QStringLiteral("document-print")).pixmap(QSize(24, 16), 1.0).toImage();
    ASSERT_EQ(image.size(), QSize(24, 16));
    for (int y = 0; y < 16; ++y) {
        for (int x = 17; x < 24; ++x)
            EXPECT_EQ(image.pixelColor(x, y).alpha(), 0);
    }
}

TEST(Icons, everyNameInUseIsThereAndDrawsSomething)
{
    const QStringList names {QStringLiteral("view-pim-contacts"), QStringLiteral("view-list-text"), QStringLiteral("tag"),
        QStringLiteral("view-pim-tasks"), QStringLiteral("view-bank"), QStringLiteral("office-chart-line"),
        QStringLiteral("document-print"), QStringLiteral("edit-delete"), QStringLiteral("document-edit"), QStringLiteral("list-add-user"),
        QStringLiteral("user-group-new"), QStringLiteral("document-new"), QStringLiteral("archive-insert"),
        QStringLiteral("view-financial-list"), QStringLiteral("flag"), QStringLiteral("view-task-add"), QStringLiteral("view-pim-notes"),
        QStringLiteral("chronometer"), QStringLiteral("media-playback-start"), QStringLiteral("media-playback-stop"),
        QStringLiteral("document-export"), QStringLiteral("insert-table"), QStringLiteral("wallet-open"), QStringLiteral("configure"),
        QStringLiteral("help-contents"), QStringLiteral("user"), QStringLiteral("group"), QStringLiteral("search"),
        QStringLiteral("data-warning"), QStringLiteral("object-locked"), QStringLiteral("field-clear"), QStringLiteral("folder-database")};
    for (const QString& name : names)
        EXPECT_TRUE(Icons::exists(name)) << qPrintable(name);
    for (const QString& name : Icons::names()) {
        for (const int size : {16, 22, 32}) {
            const QImage image = Icons::pixmap(name, Qt::black, size, 1).toImage();
            bool drawn = false;
            for (int y = 0; y < size && !drawn; ++y) {
                for (int x = 0; x < size && !drawn; ++x)
                    drawn = image.pixelColor(x, y).alpha() > 100;
            }
            EXPECT_TRUE(drawn) << qPrintable(name) << ' ' << size;
        }
    }
}

TEST(Icons, anUnknownNameGivesAnEmptyIcon)
{
    EXPECT_TRUE(Icons::get(QStringLiteral("no-such-icon")).isNull());
    EXPECT_FALSE(Icons::exists(QStringLiteral("no-such-icon")));
}
