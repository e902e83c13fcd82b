// What we write as another program reads it. Passed over where LibreOffice is not installed.
#include "documents/rtf/RtfBuilder.h"
#include "documents/rtf/RtfWriter.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

class RtfElsewhere : public testing::Test {
protected:
    void SetUp() override
    {
        if (m_office.isEmpty())
            GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    }
    /// The file we write of that text, converted; where the result lies.
    QString converted(std::string_view rtf, const QString& kind)
    {
        QFile file(m_folder.filePath("letter.rtf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const std::string written = writeRtf(RtfBuilder().build(rtf));
        file.write(written.data(), static_cast<qsizetype>(written.size()));
        file.close();
        // A profile of its own: one that somebody uses is locked.
        output(m_office,
            {"-env:UserInstallation=file://" + m_folder.filePath("profile"), "--headless", "--convert-to", kind, "--outdir",
                m_folder.path(), file.fileName()});
        return m_folder.filePath("letter." + kind.section(':', 0, 0));
    }
    QString textOf(std::string_view rtf)
    {
        QFile file(converted(rtf, "txt:Text (encoded):UTF8"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).remove(QChar(0xfeff)).remove('\r');
    }
    static QString output(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(180'000)) << program.toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

private:
    QTemporaryDir m_folder;
    QString m_office = QStandardPaths::findExecutable("soffice");
};

TEST_F(RtfElsewhere, theWordsAreTheSame)
{
    EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1252 caf\\'e9 \\uc0\\u8364 \\u-10179 \\u-8704 \\{b\\\\\\}\\\nsecond\tafter a tab\\\n\\\n"
                     "{\\b bold}{\\i slanted}~ {\\field{\\*\\fldinst{HYPERLINK \"http://www.example.com/\"}}{\\fldrslt our shop}}.}"),
        "café €\U0001F600{b\\}\nsecond\tafter a tab\n\nboldslanted~ our shop.\n");
}

TEST_F(RtfElsewhere, aTableHasItsCells)
{
    const QString text = textOf("{\\rtf1 before\\\n\\trowd\\cellx2000\\cellx4000\\pard\\intbl 1\\cell\\pard\\intbl 2\\cell\\row"
                                "\\trowd\\cellx2000\\cellx4000\\pard\\intbl 3\\cell\\pard\\intbl four\\\nfive\\cell\\row\\pard after}");
    EXPECT_EQ(text.simplified(), "before 1 2 3 four five after");
}

TEST_F(RtfElsewhere, thePaperAndTheFormatsAreUnderstood)
{
    const QString pdf =
        converted("{\\rtf1{\\fonttbl\\f0 Helvetica;}{\\colortbl;\\red255\\green0\\blue0;}\\paperw8000\\paperh10000\\margl1000"
                  "\\margr1000\\margt1000\\margb1000 \\f0\\fs24 plain\\\n{\\b heavy}\\\n\\pard\\qr right\\\n\\pard\\page\\cf1 next}",
            "pdf");
    const QString about = output("pdfinfo", {pdf});
    EXPECT_TRUE(about.contains(QRegularExpression("Page size: +(400|399.99\\d+) x (500|500.00\\d+) pts"))) << about.toStdString();
    EXPECT_TRUE(QRegularExpression("Pages: +2\n").match(about).hasMatch()) << about.toStdString();
    EXPECT_TRUE(output("pdffonts", {pdf}).contains(QRegularExpression("Sans-?Bold")));
    // Right of the middle of the 400 points, where left-aligned text never comes.
    const QRegularExpressionMatch right =
        QRegularExpression("<word xMin=\"([\\d.]+)\"[^>]*>right</word>").match(output("pdftotext", {"-bbox", pdf, "-"}));
    EXPECT_GT(right.captured(1).toDouble(), 300);
}
