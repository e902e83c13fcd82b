// What is new, as servers tell it.
#include "app/UpdateNotes.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace {

std::unique_ptr<QTextDocument> notes(std::string_view bytes)
{
    auto read = readUpdateNotes(bytes);
    EXPECT_TRUE(read.ok()) << (read.ok() ? "" : read.error().message);
    return read.ok() ? std::move(read).value() : std::make_unique<QTextDocument>();
}

/// The format of the first letter of the words.
QTextCharFormat formatOf(const QTextDocument& document, const QString& words)
{
    QTextCursor found = document.find(words);
    EXPECT_FALSE(found.isNull()) << words.toStdString();
    return found.charFormat();
}

} // namespace

TEST(UpdateNotes, areReadFromAWebPage)
{
    const auto document =
        notes("<html><head><title>Ours</title><style>p { color: red }</style></head><body><h2>New</h2><p>A "
              "<b>bold</b> <a href=\"https://example.org/x\">step</a></p><ul><li>One</li><li>Two</li></ul></body></html>");
    EXPECT_EQ(document->toPlainText(), QString("New\nA bold step\n• One\n• Two"));
    EXPECT_GT(formatOf(*document, "bold").fontWeight(), static_cast<int>(QFont::Normal));
    EXPECT_EQ(formatOf(*document, "step").anchorHref(), QString("https://example.org/x"));
}

TEST(UpdateNotes, areReadFromRichText)
{
    const auto document = notes("{\\rtf1\\ansi{\\colortbl;\\red0\\green0\\blue0;}\\cf1 Plain \\b bold\\b0\\par Next caf\\'e9}");
    EXPECT_EQ(document->toPlainText().trimmed(), QString("Plain bold\nNext caf\u00e9"));
    EXPECT_EQ(formatOf(*document, "bold").fontWeight(), static_cast<int>(QFont::Bold));
}

TEST(UpdateNotes, areReadFromPlainText)
{
    EXPECT_EQ(notes("Faster & better: 1 < 2\nCaf\xc3\xa9")->toPlainText(), QString("Faster & better: 1 < 2\nCaf\u00e9"));
}

TEST(UpdateNotes, haveTheColoursOfTheLook)
{
    for (const char* bytes : {"<body bgcolor=black><p style=\"color:#000;background:#fff\"><font color=red>Words</font></p></body>",
             "{\\rtf1{\\colortbl;\\red0\\green0\\blue0;\\red255\\green255\\blue255;}\\cf1\\cb2 Words}"}) {
        const auto document = notes(bytes);
        const QTextCharFormat format = formatOf(*document, "Words");
        EXPECT_FALSE(format.hasProperty(QTextFormat::ForegroundBrush)) << bytes;
        EXPECT_FALSE(format.hasProperty(QTextFormat::BackgroundBrush)) << bytes;
        EXPECT_FALSE(document->begin().blockFormat().hasProperty(QTextFormat::BackgroundBrush)) << bytes;
    }
}

TEST(UpdateNotes, bringNothingFromElsewhere)
{
    const QTemporaryDir folder;
    QFile picture(folder.filePath("p.png"));
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    QImage(4, 4, QImage::Format_RGB32).save(&picture, "PNG");
    picture.close();
    const std::string path = picture.fileName().toStdString();
    const auto page = notes("Text <img src=\"file://" + path + "\"><img src=/dev/zero><script>alert(1)</script><iframe src=x></iframe>");
    EXPECT_EQ(page->toPlainText(), QString("Text "));
    const auto rich = notes("{\\rtf1 Text {{\\NeXTGraphic " + path + " \\width80 \\height80}\xac}.}");
    EXPECT_FALSE(rich->toPlainText().contains(QChar::ObjectReplacementCharacter));
}

TEST(UpdateNotes, withoutAnyTextSayWhy)
{
    for (const char* empty : {"", "  \n ", "<html><body></body></html>", "{\\rtf1}", "<style>p{}</style>", "<script>x"}) {
        const auto read = readUpdateNotes(empty);
        ASSERT_FALSE(read.ok()) << empty;
        EXPECT_EQ(read.error().message, "There is no text in it.");
    }
}

TEST(UpdateNotes, hostilePagesTakeNoTime)
{
    const auto often = [](const std::string& piece, std::size_t size) {
        std::string page = "<p>Words</p>";
        while (page.size() < size)
            page += piece;
        return page;
    };
    constexpr std::size_t largest = 64 * 1024;
    for (const char* piece : {"<table><tr><td>", "<ul><li>", "<div>", "<b>", "<p>", "<a ", "<style>", "<", "<!--", "&lt;", "<h1><h2>",
             "<div><p><b><i><u>", "<blockquote>", "<br>", "{\\rtf", "<a href=x>"}) {
        QElapsedTimer timer;
        timer.start();
        const auto document = notes(often(piece, largest));
        document->setTextWidth(500);
        document->size();
        EXPECT_LT(timer.elapsed(), 5'000) << piece;
    }
}

TEST(UpdateNotes, anyBytesAtAllAreText)
{
    std::string bytes = "<p>";
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_FALSE(notes(bytes)->toPlainText().isEmpty());
    constexpr char wide[] = "\xff\xfe<\0p\0>\0H\0i\0";
    EXPECT_EQ(notes(std::string_view(wide, sizeof wide - 1))->toPlainText(), QString("Hi"));
}
