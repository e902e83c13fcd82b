#include "documents/StationeryFolder.h"

#include "Paperwork.h"

#include <QFileInfo>

#include <sys/stat.h>

namespace {

const QStringList builtIn {"Delivery note.css", "Delivery note.rtfd", "Estimate.css", "Estimate.rtfd", "Invoice with tax.rtfd",
    "Invoice.css", "Invoice.rtfd", "Outstanding Balance for Open Customer.rtfd", "Purchase order.css", "Purchase order.rtfd",
    "Reminder.rtfd"};

constexpr char plainStyle[] =
    "<style> table{border:none;border-collapse:collapse; font-family:arial;text-align:left} th{font-family:arial; background:#eee; "
    "padding:2px 0.5em; text-align:left;min-width:50px;} td{font-family:arial;padding:2px 0.5em;  text-align:left} "
    "td.alt{background:#f0f0ff; padding:2px 0.5em}</style>";

class StationeryFolderTest : public Paperwork {
protected:
    static QByteArray contentsOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    /// Everything that comes with the program, each file holding its own name.
    void giveResources() const
    {
        for (const QString& name : builtIn) {
            const QString path = user.home() + "/resources/stationary/" + name;
            QDir().mkpath(name.endsWith("rtfd") ? path : QFileInfo(path).path());
            put(name.endsWith("rtfd") ? path + "/TXT.rtf" : path, name.toUtf8());
        }
    }
    QStringList inFolder() const { return QDir(support + "/stationary").entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name); }
    static void paint(const QString& path, const char* format)
    {
        QImage image(4, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        ASSERT_TRUE(image.save(path, format));
    }
};

// What is put there at first

TEST_F(StationeryFolderTest, elevenFilesAreInstalled)
{
    giveResources();
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(inFolder(), builtIn);
    EXPECT_EQ(contentsOf(stationeryPath("Reminder.rtfd/TXT.rtf")), "Reminder.rtfd");
    EXPECT_EQ(contentsOf(stationeryPath("Invoice.css")), "Invoice.css");
}

TEST_F(StationeryFolderTest, theFoldersAreMadeWhenMissing)
{
    giveResources();
    ASSERT_TRUE(QDir(user.home() + "/Library").removeRecursively());
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(inFolder(), builtIn);
}

TEST_F(StationeryFolderTest, whatIsThereStays)
{
    giveResources();
    writePackage("Invoice", "mine");
    put(stationeryPath("Estimate.css"), "mine too");
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(contentsOf(stationeryPath("Invoice.rtfd/TXT.rtf")), "mine");
    EXPECT_EQ(contentsOf(stationeryPath("Estimate.css")), "mine too");
    EXPECT_EQ(inFolder(), builtIn);
}

TEST_F(StationeryFolderTest, aCopyThatWasBrokenOffIsMadeAnewAndNeverShown)
{
    giveResources();
    const QString unfinished = stationeryPath(".Reminder.rtfd.unfinished");
    QDir().mkpath(unfinished);
    put(unfinished + "/TXT.rtf", "half");
    EXPECT_EQ(stationery.names(), QStringList());
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(contentsOf(stationeryPath("Reminder.rtfd/TXT.rtf")), "Reminder.rtfd");
    EXPECT_FALSE(QFileInfo::exists(unfinished));
}

TEST_F(StationeryFolderTest, aPipeForABackgroundHoldsNothingUp)
{
    writePackage("Letter", "x");
    ASSERT_EQ(mkfifo(stationeryPath("Letter.tiff").toStdString().c_str(), 0600), 0);
    EXPECT_TRUE(stationery.read("Letter").background.isNull());
}

TEST_F(StationeryFolderTest, aMarginIsANumberOfPoints)
{
    writePackage("Letter", "x");
    const std::pair<const char*, double> margins[] {
        {"12.5", 12.5}, {"250", 250}, {"-3", 0}, {"none", 0}, {"1234567890123456789012345678901234567890", 10'000}};
    for (const auto& [text, points] : margins) {
        put(stationeryPath("Letter.plist"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>templatePageMargin</key><string>"
                + QByteArray(text) + "</string></dict></plist>");
        ASSERT_TRUE(stationery.read("Letter").options.has_value());
        EXPECT_EQ(stationery.read("Letter").options->templatePageMargin, points) << text;
    }
}

TEST_F(StationeryFolderTest, theFormerTemplateBecomesTheInvoice)
{
    giveResources();
    QDir().mkpath(support + "/customInvoice.rtfd");
    put(support + "/customInvoice.rtfd/TXT.rtf", "former");
    put(support + "/customInvoice.rtfd/Logo.png", "picture");
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(contentsOf(stationeryPath("Invoice.rtfd/TXT.rtf")), "former");
    EXPECT_EQ(contentsOf(stationeryPath("Invoice.rtfd/Logo.png")), "picture");
    EXPECT_EQ(contentsOf(support + "/customInvoice.rtfd/TXT.rtf"), "former");
    EXPECT_EQ(contentsOf(stationeryPath("Estimate.rtfd/TXT.rtf")), "Estimate.rtfd");
}

TEST_F(StationeryFolderTest, theFormerTemplateDoesNotGoBeforeAnInvoiceThatIsThere)
{
    giveResources();
    QDir().mkpath(support + "/customInvoice.rtfd");
    put(support + "/customInvoice.rtfd/TXT.rtf", "former");
    writePackage("Invoice", "mine");
    ASSERT_TRUE(stationery.install());
    EXPECT_EQ(contentsOf(stationeryPath("Invoice.rtfd/TXT.rtf")), "mine");
}

TEST_F(StationeryFolderTest, aMissingResourceIsToldAndTheOthersAreInstalled)
{
    giveResources();
    ASSERT_TRUE(QFile::remove(user.home() + "/resources/stationary/Estimate.css"));
    EXPECT_FALSE(stationery.install());
    EXPECT_EQ(inFolder().size(), 10);
}

TEST_F(StationeryFolderTest, theProgramsOwnTemplatesAreAllThereAndRead)
{
    const StationeryFolder own(support, QStringLiteral(TEST_DATA_DIR "/../resources"));
    ASSERT_TRUE(own.install());
    EXPECT_EQ(inFolder(), builtIn);
    for (const QString& name : own.names()) {
        const StationeryTemplate read = own.read(name);
        const QString words = plainTextOf(*makeDocument(read.document, read.pictures));
        const bool isReport = name.startsWith("Outstanding");
        EXPECT_TRUE(words.contains(isReport ? "<report>" : name == "Reminder" ? "<totaldue>" : "<itemsordered>")) << name.toStdString();
        EXPECT_TRUE(read.style.startsWith("<style")) << name.toStdString();
        EXPECT_TRUE(read.style.trimmed().endsWith("</style>")) << name.toStdString();
    }
}

// The names to choose from

TEST_F(StationeryFolderTest, eachNameIsShownOnceWhateverBelongsToIt)
{
    writeTemplate("x", "Invoice");
    writeTemplate("x", "Letter 2.0");
    for (const char* file : {"Invoice.css", "Invoice.plist", "Invoice.tiff", "Alone.css", ".hidden.css", ".DS_Store"})
        put(stationeryPath(file), "x");
    EXPECT_EQ(stationery.names(), QStringList({"Alone", "Invoice", "Letter 2.0"}));
}

TEST_F(StationeryFolderTest, withoutAFolderThereAreNoNames)
{
    ASSERT_TRUE(QDir(support + "/stationary").removeRecursively());
    EXPECT_TRUE(stationery.names().isEmpty());
}

TEST_F(StationeryFolderTest, aTemplateIsThereWhenItsDocumentIs)
{
    writeTemplate("x", "Letter");
    put(stationeryPath("Alone.css"), "x");
    EXPECT_TRUE(stationery.hasDocument("Letter"));
    EXPECT_FALSE(stationery.hasDocument("Alone"));
    EXPECT_FALSE(stationery.hasDocument("../stationary/Letter"));
}

// Reading one

TEST_F(StationeryFolderTest, aDocumentAloneHasTheRestByDefault)
{
    writeTemplate("Hello");
    const StationeryTemplate read = stationery.read("Letter");
    EXPECT_EQ(plainTextOf(*makeDocument(read.document, read.pictures)), "Hello");
    EXPECT_FALSE(read.options.has_value());
    EXPECT_TRUE(read.background.isNull());
    EXPECT_EQ(read.style.toStdString(), plainStyle);
}

TEST_F(StationeryFolderTest, aMissingDocumentIsEmpty)
{
    const StationeryTemplate read = stationery.read("Nothing");
    EXPECT_EQ(plainTextOf(*makeDocument(read.document, read.pictures)), "");
    EXPECT_EQ(read.style.toStdString(), plainStyle);
}

TEST_F(StationeryFolderTest, aNameReachesNoOtherFolder)
{
    QDir().mkpath(support + "/secret.rtfd");
    put(support + "/secret.rtfd/TXT.rtf", "{\\rtf1 secret}");
    const StationeryTemplate read = stationery.read("../secret");
    EXPECT_EQ(plainTextOf(*makeDocument(read.document, read.pictures)), "");
    EXPECT_TRUE(logged("no template can be called ../secret"));
}

TEST_F(StationeryFolderTest, optionsAreOffAndTenPointsUnlessTheListSaysOtherwise)
{
    writeOptions("");
    const auto options = stationery.read("Letter").options;
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->centreContent);
    EXPECT_FALSE(options->scaleTemplateImage);
    EXPECT_EQ(options->templatePageMargin, 10);
}

TEST_F(StationeryFolderTest, optionsAreRead)
{
    writeOptions("<key>centreContent</key><true/><key>scaleTemplateImage</key><true/><key>templatePageMargin</key><real>22.5</real>");
    const auto options = stationery.read("Letter").options;
    ASSERT_TRUE(options);
    EXPECT_TRUE(options->centreContent);
    EXPECT_TRUE(options->scaleTemplateImage);
    EXPECT_EQ(options->templatePageMargin, 22.5);
}

TEST_F(StationeryFolderTest, optionsMayBeWrittenAsTextOrNumber)
{
    writeOptions("<key>centreContent</key><string>YES</string><key>scaleTemplateImage</key><integer>1</integer>"
                 "<key>templatePageMargin</key><string>15</string>");
    const auto options = stationery.read("Letter").options;
    ASSERT_TRUE(options);
    EXPECT_TRUE(options->centreContent);
    EXPECT_TRUE(options->scaleTemplateImage);
    EXPECT_EQ(options->templatePageMargin, 15);
    writeOptions("<key>centreContent</key><false/><key>scaleTemplateImage</key><integer>0</integer>"
                 "<key>templatePageMargin</key><integer>0</integer>");
    EXPECT_FALSE(stationery.read("Letter").options->centreContent);
    EXPECT_FALSE(stationery.read("Letter").options->scaleTemplateImage);
    EXPECT_EQ(stationery.read("Letter").options->templatePageMargin, 0);
}

TEST_F(StationeryFolderTest, aListThatDoesNotReadCountsAsMissing)
{
    put(stationeryPath("Letter.plist"), "<plist><dict>");
    EXPECT_FALSE(stationery.read("Letter").options.has_value());
    put(stationeryPath("Letter.plist"), "<plist><array/></plist>");
    EXPECT_FALSE(stationery.read("Letter").options.has_value());
}

TEST_F(StationeryFolderTest, aStyleIsTakenAsItStands)
{
    put(stationeryPath("Letter.css"), "<style>td{color:red}</style>\n");
    EXPECT_EQ(stationery.read("Letter").style, "<style>td{color:red}</style>\n");
    put(stationeryPath("Letter.css"), "");
    EXPECT_EQ(stationery.read("Letter").style, "");
}

TEST_F(StationeryFolderTest, aStyleThatIsNotAsciiIsNotTaken)
{
    put(stationeryPath("Letter.css"), "<style>/* caf\xc3\xa9 */</style>");
    EXPECT_EQ(stationery.read("Letter").style.toStdString(), plainStyle);
}

TEST_F(StationeryFolderTest, aBackgroundIsAPicture)
{
    paint(stationeryPath("Letter.tiff"), "PNG");
    EXPECT_EQ(stationery.read("Letter").background.size(), QSize(4, 2));
    put(stationeryPath("Letter.tiff"), "no picture");
    EXPECT_TRUE(stationery.read("Letter").background.isNull());
}

TEST_F(StationeryFolderTest, aWholeTemplateHasNoDamage)
{
    writeTemplate("Hello");
    EXPECT_EQ(stationery.read("Letter").damage, QStringList());
    writeOptions("");
    put(stationeryPath("Letter.css"), "");
    paint(stationeryPath("Letter.tiff"), "PNG");
    EXPECT_EQ(stationery.read("Letter").damage, QStringList());
}

TEST_F(StationeryFolderTest, eachPieceThatDoesNotReadIsToldByItsPath)
{
    writeTemplate("Hello");
    put(stationeryPath("Letter.rtfd/TXT.rtf"), "Hello");
    put(stationeryPath("Letter.plist"), "<plist><array/></plist>");
    put(stationeryPath("Letter.tiff"), "no picture");
    put(stationeryPath("Letter.css"), "caf\xc3\xa9");

    const QStringList damage = stationery.read("Letter").damage;

    EXPECT_EQ(damage,
        QStringList({stationeryPath("Letter.rtfd/TXT.rtf")
                + " could not be read: it is no rich text. The document shows as much of it as there is.",
            stationeryPath("Letter.plist") + " could not be read: its root is no dictionary. The document goes without its options.",
            stationeryPath("Letter.tiff") + " could not be read: it is no picture, or too large. The document goes without its background.",
            stationeryPath("Letter.css") + " could not be read: it holds letters that are not ASCII. The table has the plain style."}));
    for (const QString& sentence : damage)
        EXPECT_TRUE(logged(sentence)) << sentence.toStdString();
}

TEST_F(StationeryFolderTest, aDocumentThatEndsTooEarlyIsToldAndShownAsFarAsItGoes)
{
    writePackage("Letter", "{\\rtf1 Hello");
    const StationeryTemplate read = stationery.read("Letter");
    EXPECT_EQ(plainTextOf(*makeDocument(read.document, read.pictures)), "Hello");
    EXPECT_EQ(read.damage,
        QStringList(stationeryPath("Letter.rtfd/TXT.rtf")
            + " could not be read: it ends too early. The document shows as much of it as there is."));

    writePackage("Letter", QByteArray("{\\rtf1 Hello}\r\n\0", 16));
    EXPECT_EQ(stationery.read("Letter").damage, QStringList());
}

TEST_F(StationeryFolderTest, pipesInThePlacesOfItsPiecesAreTold)
{
    writeTemplate("Hello");
    for (const char* piece : {"Letter.plist", "Letter.tiff", "Letter.css"})
        ASSERT_EQ(mkfifo(stationeryPath(piece).toLocal8Bit().constData(), 0600), 0);

    const QStringList damage = stationery.read("Letter").damage;

    ASSERT_EQ(damage.size(), 3);
    EXPECT_EQ(damage[0], stationeryPath("Letter.plist") + " is not an ordinary file. The document goes without its options.");
    EXPECT_TRUE(damage[1].startsWith(stationeryPath("Letter.tiff") + " could not be read: ")) << damage[1].toStdString();
    EXPECT_EQ(damage[2], stationeryPath("Letter.css") + " is not an ordinary file. The table has the plain style.");
}

TEST_F(StationeryFolderTest, aMissingDocumentIsToldMissingExtrasAreNot)
{
    const QStringList damage = stationery.read("Nothing").damage;
    ASSERT_EQ(damage.size(), 1);
    EXPECT_TRUE(damage[0].startsWith(stationeryPath("Nothing.rtfd/TXT.rtf"))) << damage[0].toStdString();
}

TEST_F(StationeryFolderTest, aBackgroundIsATiffWhereThePlatformReadsThem)
{
    // Two pixels, black and white, uncompressed: header, one directory of nine entries, the pixels behind it.
    QByteArray tiff("II*\0\x08\0\0\0", 8);
    const auto entry = [&](quint16 tag, quint16 type, quint32 count, quint32 value) {
        for (const auto& [number, bytes] : std::initializer_list<std::pair<quint32, int>> {{tag, 2}, {type, 2}, {count, 4}, {value, 4}}) {
            for (int byte = 0; byte < bytes; ++byte)
                tiff += static_cast<char>(number >> (8 * byte));
        }
    };
    tiff += QByteArray("\x09\0", 2);
    entry(256, 3, 1, 2); // width
    entry(257, 3, 1, 1); // height
    entry(258, 3, 1, 8); // bits a sample
    entry(259, 3, 1, 1); // no compression
    entry(262, 3, 1, 1); // black is zero
    entry(273, 4, 1, 122); // where the pixels are
    entry(277, 3, 1, 1); // samples a pixel
    entry(278, 3, 1, 1); // rows a strip
    entry(279, 4, 1, 2); // bytes a strip
    tiff += QByteArray("\0\0\0\0\x00\xff", 6);
    ASSERT_EQ(tiff.size(), 8 + 2 + 9 * 12 + 4 + 2);
    put(stationeryPath("Letter.tiff"), tiff);
    const QImage background = stationery.read("Letter").background;
    ASSERT_EQ(background.size(), QSize(2, 1));
    EXPECT_EQ(qRed(background.pixel(0, 0)), 0);
    EXPECT_EQ(qRed(background.pixel(1, 0)), 255);
}

} // namespace
