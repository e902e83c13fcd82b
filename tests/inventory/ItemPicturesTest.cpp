#include "inventory/ItemPictures.h"

#include "storage/RecoveryStore.h"
#include "support/FakeDesktop.h"
#include "support/OwnMounts.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QMimeData>
#include <QUrl>

#include <sys/stat.h>

namespace {

/// A PNG whose header says 60,000 by 60,000 points, and which is 69 bytes long.
QByteArray hugePng()
{
    return QByteArray::fromHex("89504e470d0a1a0a0000000d494844520000ea600000ea60080600000080d27542000"
                               "0000c49444154789c6360a03d00000064000186643c350000000049454e44ae426082");
}

QImage plainPicture(QSize size, QColor colour)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    return picture;
}

QByteArray encoded(const QImage& picture, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(picture.save(&buffer, format)) << format;
    return bytes;
}

class ItemPicturesTest : public testing::Test {
protected:
    QString database() const { return m_home.filePath("a.vendb"); }
    QString images() const { return database() + "/ItemImages"; }
    QString writeFile(const QString& path, const QByteArray& bytes) const
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What the recovery store holds, under the names it had.
    QStringList kept(KeptFor reason) const
    {
        QStringList names;
        for (const KeptThing& thing : recovery.things()) {
            if (thing.reason == reason)
                names += thing.name;
        }
        return names;
    }
    static std::string refusal(const Result<QImage>& picture) { return picture ? "taken" : picture.error().message; }

    const QTemporaryDir m_home;
    FakeClock clock;
    RecoveryStore recovery {m_home.filePath("Recovery"), clock};
    ItemPictures pictures {[this] { return database(); }, recovery};
    const QImage red = plainPicture({30, 20}, Qt::red);
    const QImage blue = plainPicture({8, 9}, Qt::blue);
};

} // namespace

TEST_F(ItemPicturesTest, aPictureIsWrittenAsTiffUnderTheItemsIdAndReadBackTheSame)
{
    ASSERT_TRUE(pictures.setImage(12, red));
    EXPECT_EQ(QDir(images()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList("12.tiff"));
    const QByteArray start = bytesOf(images() + "/12.tiff").first(4);
    EXPECT_TRUE(start == QByteArray("II*\0", 4) || start == QByteArray("MM\0*", 4)) << start.toHex().toStdString();
    ItemPictures another([this] { return database(); }, recovery);
    const Result<QImage> back = another.getImage(12);
    ASSERT_TRUE(back);
    EXPECT_EQ(back.value().convertToFormat(QImage::Format_RGB32), red);
    EXPECT_TRUE(kept(KeptFor::pictures).isEmpty());
}

TEST_F(ItemPicturesTest, clearPartsStayClear)
{
    QImage glass({4, 4}, QImage::Format_ARGB32);
    glass.fill(QColor(10, 200, 30, 40));
    ASSERT_TRUE(pictures.setImage(1, glass));
    const QColor back = pictures.getImage(1).value().pixelColor(1, 1);
    EXPECT_NEAR(back.alpha(), 40, 1);
    EXPECT_NEAR(back.green(), 200, 3);
}

TEST_F(ItemPicturesTest, withoutFolderOrFileThereIsNone)
{
    ASSERT_TRUE(pictures.getImage(1));
    EXPECT_TRUE(pictures.getImage(1).value().isNull());
    EXPECT_FALSE(QFileInfo::exists(images()));
    ASSERT_TRUE(QDir().mkpath(images()));
    EXPECT_TRUE(pictures.getImage(1).value().isNull());
}

TEST_F(ItemPicturesTest, takingAwayWhatIsNotThereDoesNothing)
{
    EXPECT_TRUE(pictures.setImage(1, QImage()));
    EXPECT_FALSE(QFileInfo::exists(images()));
}

TEST_F(ItemPicturesTest, aNullPictureDeletesTheFileWhichIsKeptForRecovery)
{
    ASSERT_TRUE(pictures.setImage(3, red));
    ASSERT_TRUE(pictures.setImage(3, QImage()));
    EXPECT_FALSE(QFileInfo::exists(images() + "/3.tiff"));
    EXPECT_TRUE(pictures.getImage(3).value().isNull());
    EXPECT_EQ(kept(KeptFor::pictures), QStringList("3.tiff"));
}

TEST_F(ItemPicturesTest, thePictureThatIsReplacedIsKeptForRecovery)
{
    ASSERT_TRUE(pictures.setImage(3, red));
    const QByteArray before = bytesOf(images() + "/3.tiff");
    ASSERT_TRUE(pictures.setImage(3, blue));
    EXPECT_EQ(pictures.getImage(3).value().size(), blue.size());
    ASSERT_EQ(kept(KeptFor::pictures), QStringList("3.tiff"));
    EXPECT_EQ(bytesOf(recovery.things().front().path), before);
}

TEST_F(ItemPicturesTest, theFolderIsFoundInTheSpellingItHas)
{
    writeFile(database() + "/itemimages/5.tiff", encoded(red, "tiff"));
    EXPECT_EQ(pictures.getImage(5).value().size(), red.size());
    ASSERT_TRUE(pictures.setImage(6, blue));
    EXPECT_TRUE(QFileInfo::exists(database() + "/itemimages/6.tiff"));
    EXPECT_FALSE(QFileInfo::exists(images()));
}

TEST_F(ItemPicturesTest, aPictureThatAnotherProgramPutThereIsSeen)
{
    ASSERT_TRUE(pictures.setImage(5, red));
    EXPECT_EQ(pictures.getImage(5).value().size(), red.size());
    const QString path = writeFile(images() + "/5.tiff", encoded(blue, "tiff"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();
    EXPECT_EQ(pictures.getImage(5).value().size(), blue.size());
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(pictures.getImage(5).value().isNull());
}

TEST_F(ItemPicturesTest, aFileThatIsNoPictureSaysSo)
{
    writeFile(images() + "/5.tiff", "no picture");
    const Result<QImage> picture = pictures.getImage(5);
    EXPECT_EQ(refusal(picture), images().toStdString() + "/5.tiff is no picture that can be used: PNG, JPEG, TIFF, GIF, BMP and WebP can.");
}

// What cannot be written

TEST_F(ItemPicturesTest, whenTheFolderCannotBeMadeThePictureGoesToTheRecoveryStore)
{
    writeFile(images(), "in the way");
    const Result<void> saved = pictures.setImage(7, red);
    ASSERT_FALSE(saved);
    EXPECT_NE(saved.error().message.find("The picture could not be saved: "), std::string::npos) << saved.error().message;
    EXPECT_NE(saved.error().message.find(" It is kept at " + m_home.filePath("Recovery").toStdString()), std::string::npos)
        << saved.error().message;
    ASSERT_EQ(kept(KeptFor::unsaved), QStringList("7.tiff"));
    EXPECT_EQ(ItemPictures::fromFile(recovery.things().front().path).value().size(), red.size());
    EXPECT_EQ(bytesOf(images()), "in the way");
}

TEST_F(ItemPicturesTest, whenTheFileCannotBeWrittenTheOldPictureStays)
{
    ONLY_WITH_OWN_MOUNTS();
    ASSERT_TRUE(pictures.setImage(7, red));
    const QByteArray before = bytesOf(images() + "/7.tiff");
    ASSERT_TRUE(forbidWriting(images()));
    EXPECT_FALSE(pictures.setImage(7, blue));
    EXPECT_FALSE(pictures.setImage(7, QImage()));
    allowWriting(images());
    EXPECT_EQ(bytesOf(images() + "/7.tiff"), before);
    EXPECT_EQ(pictures.getImage(7).value().size(), red.size());
    EXPECT_EQ(kept(KeptFor::unsaved), QStringList("7.tiff"));
}

TEST_F(ItemPicturesTest, whatCannotBeKeptIsNotReplaced)
{
    ASSERT_TRUE(pictures.setImage(7, red));
    const QByteArray before = bytesOf(images() + "/7.tiff");
    writeFile(m_home.filePath("Recovery"), "in the way");
    EXPECT_FALSE(pictures.setImage(7, blue));
    EXPECT_FALSE(pictures.setImage(7, QImage()));
    EXPECT_EQ(bytesOf(images() + "/7.tiff"), before);
}

// From elsewhere

TEST_F(ItemPicturesTest, theUsualKindsAreTakenWhateverTheFileIsCalled)
{
    for (const char* kind : {"png", "jpeg", "tiff", "bmp", "webp"}) {
        const Result<QImage> picture = ItemPictures::fromFile(writeFile(m_home.filePath("picture.data"), encoded(red, kind)));
        ASSERT_TRUE(picture) << kind << ": " << refusal(picture);
        EXPECT_EQ(picture.value().size(), red.size()) << kind;
    }
}

TEST_F(ItemPicturesTest, aPictureOfTooManyPointsIsRefusedByItsHeader)
{
    const QString path = writeFile(m_home.filePath("huge.png"), hugePng());
    // The header reads, so the refusal is one of size.
    ASSERT_EQ(QImageReader(path).size(), QSize(60'000, 60'000));
    EXPECT_EQ(refusal(ItemPictures::fromFile(path)),
        path.toStdString() + " is too large: 60000 by 60000 points. 32 million points in all can be used.");
    EXPECT_EQ(
        refusal(ItemPictures::fromBytes(hugePng(), "It")), "It is too large: 60000 by 60000 points. 32 million points in all can be used.");
}

TEST_F(ItemPicturesTest, whatIsNoPictureIsRefused)
{
    const std::string words = " is no picture that can be used: PNG, JPEG, TIFF, GIF, BMP and WebP can.";
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9'/></svg>";
    for (const QByteArray& bytes : {QByteArray("a letter"), QByteArray(), drawing, QByteArray("\x89PNG\r\n\x1a\n", 8)})
        EXPECT_EQ(refusal(ItemPictures::fromBytes(bytes, "It")), "It" + words) << bytes.toStdString();
    ASSERT_TRUE(QDir().mkpath(m_home.filePath("folder")));
    ASSERT_EQ(mkfifo(m_home.filePath("pipe").toLocal8Bit().constData(), 0600), 0);
    for (const QString& path : {m_home.filePath("folder"), m_home.filePath("pipe"), m_home.filePath("none.png"), QString("/dev/zero")})
        EXPECT_EQ(refusal(ItemPictures::fromFile(path)), path.toStdString() + words);
}

TEST_F(ItemPicturesTest, aPictureThatIsCutShortIsRefusedOrShownButNeverHangs)
{
    const QByteArray whole = encoded(red, "png");
    const Result<QImage> picture = ItemPictures::fromBytes(whole.first(whole.size() - 30), "It");
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.error().message.rfind("It could not be read: ", 0), 0u) << picture.error().message;
}

TEST_F(ItemPicturesTest, ofADropTheFirstFileCounts)
{
    QMimeData data;
    const QString first = writeFile(m_home.filePath("a b.png"), encoded(red, "png"));
    const QString second = writeFile(m_home.filePath("c.png"), encoded(blue, "png"));
    data.setUrls({QUrl("https://example.org/x.png"), QUrl::fromLocalFile(first), QUrl::fromLocalFile(second)});
    ASSERT_TRUE(ItemPictures::fromMimeData(data));
    EXPECT_EQ(ItemPictures::fromMimeData(data).value().size(), red.size());
}

TEST_F(ItemPicturesTest, aPictureOnTheClipboardIsTakenFromItsBytesOrAsItIs)
{
    QMimeData bytes;
    bytes.setData("image/png", encoded(red, "png"));
    EXPECT_EQ(ItemPictures::fromMimeData(bytes).value().size(), red.size());
    QMimeData image;
    image.setImageData(blue);
    EXPECT_EQ(ItemPictures::fromMimeData(image).value(), blue);
    QMimeData huge;
    huge.setData("image/png", hugePng());
    EXPECT_EQ(refusal(ItemPictures::fromMimeData(huge)),
        "What was dropped or pasted is too large: 60000 by 60000 points. 32 million points in all can be used.");
}

TEST_F(ItemPicturesTest, aDropWithoutAPictureSaysSo)
{
    QMimeData text;
    text.setText("oak");
    EXPECT_EQ(refusal(ItemPictures::fromMimeData(text)),
        "What was dropped or pasted is no picture that can be used: PNG, JPEG, TIFF, GIF, BMP and WebP can.");
    QMimeData link;
    link.setUrls({QUrl("https://example.org/x.png")});
    EXPECT_FALSE(ItemPictures::fromMimeData(link));
}
