// What a document is made from, for tests: a stationery folder on a temporary home, rows for its table, an order and contacts.
#pragma once

#include "contacts/Contact.h"
#include "documents/CustomInvoiceController.h"
#include "documents/rtf/RichText.h"
#include "foundation/Log.h"
#include "foundation/Money.h"
#include "orders/Order.h"
#include "storage/qvDataSource.h"
#include "support/FakeDesktop.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QTextDocument>

/// A list whose rows are plain texts, one list of cells a row.
class PaperRows : public qvDataSource {
public:
    PaperRows() : qvDataSource(m_sorting, m_beeper) { }

    void addColumn(const char* identifier, const char* heading, bool visible = true)
    {
        list.columns.push_back({identifier, QString::fromUtf8(heading), 100, ColumnAlign::left, visible});
    }
    int numberOfRows() const override { return static_cast<int>(cells.size()); }
    std::string objectValue(std::string_view identifier, int row) const override
    {
        for (std::size_t column = 0; column < list.columns.size(); ++column) {
            if (list.columns[column].identifier == identifier)
                return cells[static_cast<std::size_t>(row)][column];
        }
        return {};
    }

    std::vector<std::vector<std::string>> cells;

private:
    struct Unsorted : SortSettings {
        std::string codeSort() const override { return {}; }
    };
    Unsorted m_sorting;
    FakeBeeper m_beeper;
};

/// A PDF as an independent program sees it.
class PdfReader {
public:
    explicit PdfReader(QString path) : m_path(std::move(path)) { }
    explicit PdfReader(const QByteArray& bytes) : m_path(m_own.filePath("document.pdf"))
    {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    int pages() const { return valueOf("Pages").toInt(); }
    std::string title() const { return valueOf("Title").toStdString(); }
    /// In points, as "595 x 842".
    std::string pageSize() const
    {
        const QStringList words = valueOf("Page size").split(' ');
        if (words.size() < 3)
            return {};
        return std::to_string(qRound(words[0].toDouble())) + " x " + std::to_string(qRound(words[2].toDouble()));
    }
    /// The words of a page, counted from 1, each separated by a single blank.
    std::string words(int page) const
    {
        return output("pdftotext", {"-layout", "-f", QString::number(page), "-l", QString::number(page), m_path, "-"})
            .simplified()
            .toStdString();
    }
    /// Where the word first stands on any page, in points from the upper left corner; empty when it does not.
    QRectF place(const QString& word) const
    {
        const QRegularExpression pattern("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" yMax=\"([\\d.]+)\">"
            + QRegularExpression::escape(word.toHtmlEscaped()) + "</word>");
        const QRegularExpressionMatch found = pattern.match(output("pdftotext", {"-bbox", m_path, "-"}));
        const auto number = [&](int capture) { return found.captured(capture).toDouble(); };
        return QRectF(QPointF(number(1), number(2)), QPointF(number(3), number(4)));
    }
    /// How many pictures it holds.
    qsizetype pictures() const { return output("pdfimages", {"-list", m_path}).count(" image "); }

private:
    static QString output(const char* program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(30'000)) << program;
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QString valueOf(const QString& key) const
    {
        for (const QString& line : output("pdfinfo", {m_path}).split('\n')) {
            if (line.startsWith(key + ':'))
                return line.mid(key.size() + 1).trimmed();
        }
        return {};
    }

    QTemporaryDir m_own;
    QString m_path;
};

/// A printer whose paper is a PDF.
class PdfPrinting : public Printing {
public:
    bool print(const QString&, const std::function<bool(QPagedPaintDevice&)>& paint) override
    {
        bytes.clear();
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageLayout(chosen);
        return paint(writer);
    }
    QByteArray bytes;
    /// What the person chose for this print.
    QPageLayout chosen {QPageSize(QPageSize::A4), QPageLayout::Portrait, {}};
};

class Paperwork : public testing::Test {
protected:
    Paperwork()
    {
        setLogSink([this](std::string_view line) { log += QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())); });
        QDir().mkpath(support + "/stationary");
        rows.addColumn("item", "Description");
        rows.addColumn("total", "Price");
        rows.cells = {{"Apples", "1.00"}, {"Pears", "2.50"}, {"Plums", "3.75"}};
        order.setIncludeBOM(true);
    }
    ~Paperwork() override { setLogSink({}); }

    static void put(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(bytes);
    }
    /// Plain text as a rich-text file.
    static QByteArray asRichText(const QString& text)
    {
        QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl\\f0\\fcharset0 Helvetica;}\\f0\\fs24 ";
        for (const QChar character : text) {
            if (character == '\n')
                rtf += "\\\n";
            else if (character == '\\' || character == '{' || character == '}')
                rtf += '\\' + QByteArray(1, character.toLatin1());
            else if (character.unicode() < 0x80)
                rtf += character.toLatin1();
            else
                rtf += "\\uc0\\u" + QByteArray::number(static_cast<qint16>(character.unicode())) + ' ';
        }
        return rtf + '}';
    }
    QString stationeryPath(const QString& fileName) const { return support + "/stationary/" + fileName; }
    void writePackage(const QString& name, const QByteArray& rtf) const
    {
        QDir().mkpath(stationeryPath(name + ".rtfd"));
        put(stationeryPath(name + ".rtfd/TXT.rtf"), rtf);
    }
    void writeTemplate(const QString& text, const QString& name = "Letter") const { writePackage(name, asRichText(text)); }
    void writeOptions(const QByteArray& keysAndValues, const QString& name = "Letter") const
    {
        put(stationeryPath(name + ".plist"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + keysAndValues + "</dict></plist>\n");
    }

    /// A document of the template, set up as for an order; not filled yet.
    std::unique_ptr<CustomInvoiceController> makeLetter(const QString& name = "Letter")
    {
        auto letter = std::make_unique<CustomInvoiceController>(
            CustomInvoiceNeeds {stationery, settings, shared, alerts, clock, panels, *printer, support + "/temp"});
        letter->setWhichStationary(name);
        letter->setbomDataSource(&rows);
        letter->setTableTag("<itemsordered>");
        return letter;
    }
    /// The words of the template "Letter" once it is filled.
    std::string filled(const Order* with, const Contact* given = nullptr)
    {
        const auto letter = makeLetter();
        letter->setContact(given);
        letter->setOrder(with);
        return plainTextOf(letter->document()).toStdString();
    }
    std::string filled(const QString& text, const Order* with, const Contact* given = nullptr)
    {
        writeTemplate(text);
        return filled(with, given);
    }
    bool logged(const QString& line) const { return log.contains(line); }

    FakeUser user;
    const QString support = user.home() + "/Library/Application Support/Vendaro";
    FakeAlerts alerts;
    FakeClock clock;
    FakeFilePanels panels;
    FakePrinting printing;
    /// Where documents are printed, the one above unless a test brings its own.
    Printing* printer = &printing;
    MemorySettings settings;
    MoneyFormatter money {"en_GB"};
    OrderRules orderRules {settings, money};
    StationeryFolder stationery {support, user.home() + "/resources"};
    PageSetup shared;
    PaperRows rows;
    Order order {orderRules};
    Contact contact;
    Contact second;
    QStringList log;
};
