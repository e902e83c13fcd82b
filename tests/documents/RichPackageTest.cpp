#include "documents/rtf/RichPackage.h"

#include "documents/rtf/RtfBuilder.h"
#include "documents/rtf/RtfWriter.h"
#include "foundation/SafeFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <sys/stat.h>

class RichPackageTest : public testing::Test {
protected:
    QString package() const { return m_home.filePath("Letter.rtfd"); }
    QString inPackage(const QString& name) const { return package() + '/' + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(package()));
        QFile file(inPackage(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray contents(const QString& name) const
    {
        QFile file(inPackage(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void paint(const QString& name, Qt::GlobalColor colour) const
    {
        ASSERT_TRUE(QDir().mkpath(package()));
        ASSERT_TRUE(picture(colour).save(inPackage(name), "PNG"));
    }
    static QImage picture(Qt::GlobalColor colour)
    {
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }
    std::unique_ptr<QTextDocument> read() const { return makeDocument(readRichPackage(package()).text, package()); }
    QStringList files() const
    {
        return QDir(package()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    QStringList besideThePackage() const
    {
        return QDir(m_home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    static void paste(QTextDocument& document, const QImage& image)
    {
        document.addResource(QTextDocument::ImageResource, QUrl("pasted"), image);
        QTextCursor cursor(&document);
        cursor.movePosition(QTextCursor::End);
        cursor.insertImage("pasted");
    }
    static QImage firstPictureIn(const QTextDocument& document)
    {
        const DocumentParts parts = takeApart(document);
        return parts.pictures.empty() ? QImage() : parts.pictures.begin()->second;
    }

private:
    QTemporaryDir m_home;
};

TEST_F(RichPackageTest, aNewPackageHasItsTextAndItsPictures)
{
    QTextDocument document;
    QTextCursor(&document).insertText("Hello ");
    paste(document, picture(Qt::red));
    const Result<void> written = writeRichPackage(package(), document);
    ASSERT_TRUE(written) << written.error().message;

    EXPECT_EQ(besideThePackage(), QStringList("Letter.rtfd"));
    EXPECT_EQ(files(), (QStringList {nameFromContents(picture(Qt::red)), "TXT.rtf"}));
    const auto again = read();
    EXPECT_EQ(plainTextOf(*again), QString("Hello \ufffc"));
    EXPECT_EQ(firstPictureIn(*again).pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(RichPackageTest, whatTheTextDoesNotNameStays)
{
    paint("Logo.png", Qt::red);
    const QByteArray logo = (put("TXT.rtf", "{\\rtf1 a{{\\NeXTGraphic Logo.png \\width20 \\height20}\\'ac}}"), contents("Logo.png"));
    put("chart.pdf", "%PDF");
    put(".hidden", "x");
    const auto document = read();
    QTextCursor(document.get()).insertText("new ");
    ASSERT_TRUE(writeRichPackage(package(), *document));

    EXPECT_EQ(files(), (QStringList {".hidden", "Logo.png", "TXT.rtf", "chart.pdf"}));
    EXPECT_EQ(contents("Logo.png"), logo);
    EXPECT_EQ(plainTextOf(*read()), QString("new a\ufffc"));
}

TEST_F(RichPackageTest, aPictureThatCannotBeShownStaysInItsPlace)
{
    put("chart.pdf", "%PDF");
    put("TXT.rtf", "{\\rtf1 a{{\\NeXTGraphic chart.pdf \\width20 \\height20}\\'ac}{{\\NeXTGraphic Gone.png}\\'ac}}");
    ASSERT_TRUE(writeRichPackage(package(), *read()));

    EXPECT_EQ(contents("chart.pdf"), "%PDF");
    const QByteArray text = contents("TXT.rtf");
    EXPECT_TRUE(text.contains("\\NeXTGraphic chart.pdf \\width20\\height20")) << text.toStdString();
    EXPECT_TRUE(text.contains("\\NeXTGraphic Gone.png ")) << text.toStdString();
}

TEST_F(RichPackageTest, aPictureThatWasDeletedGoesAfterTheText)
{
    paint("Logo.png", Qt::red);
    paint("Other.png", Qt::blue);
    put("TXT.rtf", "{\\rtf1 {{\\NeXTGraphic Logo.png}\\'ac}{{\\NeXTGraphic Other.png}\\'ac}}");
    const auto document = read();
    QTextCursor cursor(document.get());
    cursor.deleteChar();
    ASSERT_TRUE(writeRichPackage(package(), *document));
    EXPECT_EQ(files(), (QStringList {"Other.png", "TXT.rtf"}));
}

TEST_F(RichPackageTest, aPictureThatCameBackIsWrittenAnew)
{
    paint("Logo.png", Qt::red);
    put("TXT.rtf", "{\\rtf1 {{\\NeXTGraphic Logo.png}\\'ac}}");
    const auto document = read();
    QTextCursor cursor(document.get());
    cursor.deleteChar();
    ASSERT_TRUE(writeRichPackage(package(), *document));
    document->undo();
    ASSERT_TRUE(writeRichPackage(package(), *document));
    ASSERT_TRUE(writeRichPackage(package(), *document));

    EXPECT_EQ(files(), (QStringList {nameFromContents(picture(Qt::red)), "TXT.rtf"}));
    EXPECT_EQ(firstPictureIn(*read()).pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(RichPackageTest, aTextThatNamesItselfAsAPictureIsNotRemoved)
{
    put("TXT.rtf", "{\\rtf1 a{{\\NeXTGraphic TXT.rtf}\\'ac}{{\\NeXTGraphic txt.RTF}\\'ac}{{\\NeXTGraphic ..}\\'ac}}");
    QTextDocument document;
    QTextCursor(&document).insertText("new");
    ASSERT_TRUE(writeRichPackage(package(), document));
    EXPECT_EQ(plainTextOf(*read()), "new");
}

TEST_F(RichPackageTest, aPictureNamedInOtherLettersIsNotRemoved)
{
    paint("logo.png", Qt::red);
    put("TXT.rtf", "{\\rtf1 {{\\NeXTGraphic logo.png}\\'ac}}");
    const RichText text = RtfBuilder().build("{\\rtf1 {{\\NeXTGraphic Logo.png}\\'ac}}");
    ASSERT_TRUE(writeRichPackage(package(), *makeDocument(text, package())));
    EXPECT_TRUE(files().contains("logo.png"));
}

TEST_F(RichPackageTest, nothingOutsideThePackageIsTouched)
{
    paint("Logo.png", Qt::red);
    ASSERT_TRUE(QFile::rename(inPackage("Logo.png"), package() + "/../Logo.png"));
    put("TXT.rtf", "{\\rtf1 {{\\NeXTGraphic ../Logo.png}\\'ac}}");
    QTextDocument document;
    ASSERT_TRUE(writeRichPackage(package(), document));
    EXPECT_EQ(besideThePackage(), (QStringList {"Letter.rtfd", "Logo.png"}));
}

TEST_F(RichPackageTest, aPrivateFileStaysPrivate)
{
    put("TXT.rtf", "{\\rtf1 secret}");
    ASSERT_TRUE(QFile::setPermissions(inPackage("TXT.rtf"), QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(writeRichPackage(package(), *read()));
    struct stat status { };
    ASSERT_EQ(::stat(inPackage("TXT.rtf").toStdString().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(RichPackageTest, whereAFileStandsNothingIsWritten)
{
    QFile file(package());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a file");
    file.close();
    const Result<void> written = writeRichPackage(package(), QTextDocument());
    ASSERT_FALSE(written);
    EXPECT_NE(written.error().message.find("Letter.rtfd"), std::string::npos) << written.error().message;
    EXPECT_EQ(besideThePackage(), QStringList("Letter.rtfd"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "a file");
}

TEST_F(RichPackageTest, whatWasLeftHalfWrittenIsClearedAway)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(package()).path() + "/.Letter.rtfd.unfinished/old"));
    ASSERT_TRUE(writeRichPackage(package(), QTextDocument()));
    EXPECT_EQ(besideThePackage(), QStringList("Letter.rtfd"));
}

TEST_F(RichPackageTest, whatIsWrongIsSaidInOneSentence)
{
    EXPECT_TRUE(readRichPackage(package()).damage.contains("TXT.rtf"));
    put("TXT.rtf", "{\\rtf1 as far as it go");
    EXPECT_EQ(readRichPackage(package()).damage, inPackage("TXT.rtf") + " could not be read: it ends too early");
    EXPECT_EQ(plainTextOf(*read()), "as far as it go");
    put("TXT.rtf", "plain words");
    EXPECT_EQ(readRichPackage(package()).damage, inPackage("TXT.rtf") + " could not be read: it is no rich text");
    put("TXT.rtf", "{\\rtf1 whole}\n");
    EXPECT_EQ(readRichPackage(package()).damage, "");
}

TEST_F(RichPackageTest, whatTheTextLeavesOutIsKnown)
{
    for (const char* more :
        {"{\\pict\\pngblip 89}", "{\\header Top}", "{\\footer Bottom}", "{\\*\\listtable{\\list}}", "{\\footnote x}", "{\\object x}"}) {
        put("TXT.rtf", QByteArray("{\\rtf1 a") + more + "}");
        EXPECT_TRUE(readRichPackage(package()).leavesOut) << more;
    }
    put("TXT.rtf", "{\\rtf1{\\fonttbl\\f0 Inter;}{\\stylesheet x;}{\\*\\generator y}{\\info z}a}");
    EXPECT_FALSE(readRichPackage(package()).leavesOut);
}
