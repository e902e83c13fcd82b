#include "ui/kit/PictureWell.h"

#include "KitTest.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QUrl>

using namespace kittest;

namespace {

QImage coloured(QSize size, QColor colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

class PictureWellTest : public testing::Test {
protected:
    void SetUp() override
    {
        QObject::connect(&well, &PictureWell::offered, &well, [this](const QMimeData& data) { formats = data.formats(); });
        well.resize(300, well.sizeHint().height());
        show(well);
    }
    bool enters(QMimeData& data)
    {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&well, &enter);
        return enter.isAccepted();
    }

    PictureWell well {QStringLiteral("Drop a picture here")};
    QStringList formats;
};

} // namespace

TEST_F(PictureWellTest, whatMayBeAPictureIsOfferedWhenItIsDropped)
{
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png"))});
    EXPECT_TRUE(enters(file));
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&well, &drop);
    EXPECT_EQ(formats, QStringList(QStringLiteral("text/uri-list")));
    QMimeData image;
    image.setImageData(coloured({2, 2}, Qt::red));
    EXPECT_TRUE(enters(image));
    QMimeData bytes;
    bytes.setData(QStringLiteral("image/webp"), "x");
    EXPECT_TRUE(enters(bytes));
    QMimeData words;
    words.setText(QStringLiteral("hello"));
    EXPECT_FALSE(enters(words));
}

TEST_F(PictureWellTest, theKeyboardPastesAndRemoves)
{
    auto* data = new QMimeData;
    data->setImageData(coloured({2, 2}, Qt::red));
    QApplication::clipboard()->setMimeData(data);
    QSignalSpy removal(&well, &PictureWell::removalWanted);
    well.setFocus();
    QTest::keyClick(&well, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(formats.contains(QStringLiteral("application/x-qt-image"))) << formats.join('|').toStdString();
    QTest::keyClick(&well, Qt::Key_Delete);
    QTest::keyClick(&well, Qt::Key_Backspace);
    EXPECT_EQ(removal.count(), 2);
}

TEST_F(PictureWellTest, aClickGivesItTheKeyboard)
{
    QTest::mouseClick(&well, Qt::LeftButton);
    EXPECT_TRUE(well.hasFocus());
}

TEST_F(PictureWellTest, aPictureIsShownWholeInTheMiddleAndSmallOnesAsTheyAre)
{
    well.setPicture(coloured({4000, 2000}, Qt::red));
    // 284 by 140 points of room: a picture twice as wide as high is 280 by 140 there.
    QImage shown = picture(well);
    EXPECT_TRUE(alike(shown.pixelColor(150, 78), Qt::red));
    EXPECT_TRUE(alike(shown.pixelColor(12, 10), Qt::red));
    EXPECT_FALSE(alike(shown.pixelColor(150, 3), Qt::red));
    well.setPicture(coloured({20, 10}, Qt::blue));
    shown = picture(well);
    EXPECT_TRUE(alike(shown.pixelColor(150, 78), Qt::blue));
    EXPECT_FALSE(alike(shown.pixelColor(165, 78), Qt::blue));
    well.setPicture(QImage());
    EXPECT_FALSE(alike(picture(well).pixelColor(150, 90), Qt::blue));
}

TEST_F(PictureWellTest, aLinesHeightOfPictureDoesNotVanish)
{
    well.setPicture(coloured({9000, 1}, Qt::red));
    const QImage shown = picture(well);
    int red = 0;
    for (int y = 0; y < shown.height(); ++y)
        red += alike(shown.pixelColor(150, y), Qt::red);
    EXPECT_GE(red, 1);
}

TEST_F(PictureWellTest, readersOfTheScreenAreToldWhatIsThere)
{
    EXPECT_EQ(well.accessibleDescription(), QStringLiteral("Drop a picture here"));
    well.setPicture(coloured({20, 10}, Qt::blue));
    EXPECT_EQ(well.accessibleDescription(), QStringLiteral("20 by 10 points"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&well)->role(), QAccessible::Graphic);
}
