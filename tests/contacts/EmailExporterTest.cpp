// The list for mailing programs, byte for byte.
#include "contacts/EmailExporter.h"

#include "support/Business.h"

#include <QFile>

namespace {

class EmailExporterTest : public Business {
protected:
    QString path() const { return home() + "/list.csv"; }
    QByteArray contents() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
    }
    QString exported(std::vector<const Contact*> list)
    {
        EmailExporter exporter(panels);
        exporter.setCollection(std::move(list));
        return exporter.exportCSV();
    }
};

TEST_F(EmailExporterTest, writesAHeaderAndARowForEveryContact)
{
    begin();
    Contact& ada = contact("Ada Mary Quill");
    ada.setEmail("ada@example.com");
    ada.setTitle("Ms");
    Contact& tarn = firm("Tarn & Sons");
    panels.choose(path());
    EXPECT_EQ(exported({&ada, &tarn}), "Exported to list.csv");
    EXPECT_EQ(contents(),
        "\"email\",\"firstname\",\"surname\",\"title\"\n"
        "\"ada@example.com\",\"Ada\",\"Quill\",\"Ms\"\n"
        "\"\",\"Tarn & Sons\",\"Tarn & Sons\",\"\"\n");
    EXPECT_EQ(log().back(), "writing csv");
    EXPECT_EQ(panels.savePanels.at(0).fileType, "csv");
}

TEST_F(EmailExporterTest, commasAndLineBreaksBecomeBlanksAndDoubleQuotesSingleOnes)
{
    begin();
    Contact& odd = contact("A");
    odd.setEmail("a@x.example, b@y.example\r\nc\rd\ne\u2028f\u2029g\u0085h");
    odd.setTitle("\"Dr\" É");
    panels.choose(path());
    exported({&odd});
    EXPECT_EQ(
        contents(), "\"email\",\"firstname\",\"surname\",\"title\"\n\"a@x.example  b@y.example c d e f g h\",\"A\",\"A\",\"'Dr' É\"\n");
}

TEST_F(EmailExporterTest, aCancelledPanelWritesNothing)
{
    begin();
    panels.cancel();
    EXPECT_EQ(exported({&contact("Ada")}), "");
    EXPECT_EQ(contents(), "(not there)");
}

TEST_F(EmailExporterTest, aFileThatCannotBeWrittenIsLoggedAndSaid)
{
    begin();
    const QString nowhere = home() + "/nowhere/list.csv";
    panels.choose(nowhere);
    EXPECT_TRUE(exported({&contact("Ada")}).startsWith("Not exported: "));
    EXPECT_TRUE(log().back().startsWith("Unsuccessful exporting data to " + nowhere + " \nerror:")) << log().back().toStdString();
}

} // namespace
