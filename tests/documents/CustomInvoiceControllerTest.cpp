#include "documents/CustomInvoiceController.h"

#include "Paperwork.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>

namespace {

using testing::HasSubstr;
using testing::Not;

class CustomInvoiceControllerTest : public Paperwork {
protected:
    std::unique_ptr<CustomInvoiceController> letterFor(const Order* with)
    {
        auto letter = makeLetter();
        letter->setOrderManager([this](const QString& path) {
            attached += path;
            return attaches;
        });
        letter->setOrder(with);
        return letter;
    }
    static const QTextTable* tableIn(QTextDocument& document)
    {
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            if (const QTextTable* table = QTextCursor(block).currentTable())
                return table;
        }
        return nullptr;
    }
    /// The colour behind the second row, which only a style sheet gives.
    QBrush alternateBackground()
    {
        const auto letter = letterFor(&order);
        const QTextTable* table = tableIn(letter->document());
        return table ? table->cellAt(2, 0).format().background() : QBrush();
    }
    QString temporary() const { return support + "/temp/20240301-101530.pdf"; }
    qsizetype alertCount() const { return static_cast<qsizetype>(alerts.asked().size()); }

    QStringList attached;
    bool attaches = true;
};

// Opening

TEST_F(CustomInvoiceControllerTest, aDocumentHasItsTemplatesNameAndIsFilledWhenTheOrderComes)
{
    writeTemplate("Order <ordernumber>");
    order.setOrderNum("INV7");
    const auto letter = makeLetter();
    EXPECT_EQ(plainTextOf(letter->document()), "");
    letter->setOrder(&order);
    EXPECT_EQ(letter->title(), "Letter");
    EXPECT_EQ(plainTextOf(letter->document()), "Order INV7");
    EXPECT_FALSE(letter->document().isModified());
    EXPECT_FALSE(letter->document().isUndoAvailable());
}

TEST_F(CustomInvoiceControllerTest, aMissingTemplateGivesAnEmptyDocument)
{
    const auto letter = letterFor(&order);
    EXPECT_EQ(plainTextOf(letter->document()), "");
}

TEST_F(CustomInvoiceControllerTest, theDocumentStaysEditableAndIsNotFilledAgain)
{
    writeTemplate("Order <ordernumber>");
    order.setOrderNum("INV7");
    const auto letter = letterFor(&order);
    QTextCursor(&letter->document()).insertText("<date> ");
    const QString path = letter->emailPDF();
    EXPECT_EQ(PdfReader(path).words(1), "<date> Order INV7");
}

TEST_F(CustomInvoiceControllerTest, aStandInFillsAnOrderWithoutContact)
{
    // A blank contact empties what having none would leave, and leaves what having none would empty.
    const Contact blank;
    writeTemplate("[<contactcomments>][<contactitle>][<contact2comments>][<contactname>]");
    const auto letter = makeLetter();
    letter->setStandInContact(&blank);
    letter->setOrder(&order);
    EXPECT_EQ(plainTextOf(letter->document()), "[][<contactitle>][][]");
}

TEST_F(CustomInvoiceControllerTest, aStandInDoesNotStandInForAContact)
{
    contact.setName("Ann Lee");
    order.setContact(&contact);
    const Contact blank;
    writeTemplate("<contactname>/<contact2name>");
    const auto letter = makeLetter();
    letter->setStandInContact(&blank);
    letter->setOrder(&order);
    EXPECT_EQ(plainTextOf(letter->document()), "Ann Lee/Ann Lee");
}

TEST_F(CustomInvoiceControllerTest, whoeverShowsItHearsThatItGoes)
{
    auto letter = makeLetter();
    int heard = 0;
    QObject::connect(letter.get(), &CustomInvoiceController::closing, [&heard] { ++heard; });
    letter.reset();
    EXPECT_EQ(heard, 1);
}

// The background

TEST_F(CustomInvoiceControllerTest, aBackgroundIsScaledOnlyWhenTheOptionsSaySo)
{
    writeTemplate("x");
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(stationeryPath("Letter.tiff"), "PNG"));
    EXPECT_EQ(letterFor(&order)->background().image.size(), QSize(4, 2));
    EXPECT_FALSE(letterFor(&order)->background().scales);
    writeOptions("");
    EXPECT_FALSE(letterFor(&order)->background().scales);
    writeOptions("<key>scaleTemplateImage</key><true/>");
    EXPECT_TRUE(letterFor(&order)->background().scales);
}

TEST_F(CustomInvoiceControllerTest, withoutOneThereIsNone)
{
    writeTemplate("x");
    EXPECT_TRUE(letterFor(&order)->background().image.isNull());
}

// The table

TEST_F(CustomInvoiceControllerTest, theLinesStandAtTheirTagOnce)
{
    writeTemplate("before\n<itemsordered>\nafter <itemsordered>");
    const auto letter = letterFor(&order);
    const QTextTable* table = tableIn(letter->document());
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rows(), 4);
    EXPECT_THAT(plainTextOf(letter->document()).toStdString(), HasSubstr("after <itemsordered>"));
}

TEST_F(CustomInvoiceControllerTest, withoutTheLinesTheTagGoesWhereverItStands)
{
    writeTemplate("before\n<itemsordered>\nafter <itemsordered>");
    order.setIncludeBOM(false);
    const auto letter = letterFor(&order);
    EXPECT_EQ(tableIn(letter->document()), nullptr);
    EXPECT_EQ(plainTextOf(letter->document()), "before\n\nafter ");
}

TEST_F(CustomInvoiceControllerTest, aReportsTableStandsAtItsOwnTagAndNeedsNoOrder)
{
    writeTemplate("<itemsordered> <report>");
    const auto letter = makeLetter();
    letter->setTableTag("<report>");
    letter->setOrder(nullptr);
    ASSERT_NE(tableIn(letter->document()), nullptr);
    EXPECT_EQ(tableIn(letter->document())->rows(), 4);
    EXPECT_THAT(plainTextOf(letter->document()).toStdString(), HasSubstr("<itemsordered>"));
    EXPECT_THAT(plainTextOf(letter->document()).toStdString(), Not(HasSubstr("<report>")));
}

TEST_F(CustomInvoiceControllerTest, aTagInACellIsNotFilled)
{
    // The table comes last, after all tags.
    rows.cells = {{"See <ordernumber>", "1"}};
    order.setOrderNum("INV7");
    writeTemplate("<itemsordered>");
    EXPECT_THAT(plainTextOf(letterFor(&order)->document()).toStdString(), HasSubstr("See <ordernumber>"));
}

TEST_F(CustomInvoiceControllerTest, aValueMayBringTheTablesTag)
{
    writeTemplate("<description>");
    order.setDescription("Goods: <itemsordered>");
    EXPECT_NE(tableIn(letterFor(&order)->document()), nullptr);
}

TEST_F(CustomInvoiceControllerTest, theTemplatesStyleDressesTheTable)
{
    writeTemplate("<itemsordered>");
    put(stationeryPath("Letter.css"), "<style>td.alt{background:#112233}</style>");
    EXPECT_EQ(alternateBackground().color(), QColor("#112233"));
}

TEST_F(CustomInvoiceControllerTest, withoutOneThePlainStyleDoes)
{
    writeTemplate("<itemsordered>");
    EXPECT_EQ(alternateBackground().color(), QColor("#f0f0ff"));
}

TEST_F(CustomInvoiceControllerTest, aStyleBeyondAsciiGivesWayToThePlainOne)
{
    writeTemplate("<itemsordered>");
    put(stationeryPath("Letter.css"), "<style>/* \xc3\xa9 */ td.alt{background:#112233}</style>");
    EXPECT_EQ(alternateBackground().color(), QColor("#f0f0ff"));
}

// Printing

TEST_F(CustomInvoiceControllerTest, withoutOptionsTheSharedPageIsUsed)
{
    writeTemplate("x");
    shared.margins = {30, 31, 32, 33};
    shared.verticallyCentred = true;
    const auto letter = letterFor(&order);
    EXPECT_EQ(letter->pageSetup().margins, QMarginsF(30, 31, 32, 33));
    EXPECT_TRUE(letter->pageSetup().verticallyCentred);
    letter->print();
    EXPECT_EQ(shared.margins, QMarginsF(30, 31, 32, 33));
    EXPECT_TRUE(shared.verticallyCentred);
    EXPECT_EQ(printing.titles, QStringList("Letter"));
}

TEST_F(CustomInvoiceControllerTest, optionsWithoutMarginMeanTenPointsAllRoundAndNoCentring)
{
    writeTemplate("x");
    writeOptions("");
    shared.verticallyCentred = true;
    const auto letter = letterFor(&order);
    EXPECT_EQ(letter->pageSetup().margins, QMarginsF(10, 10, 10, 10));
    EXPECT_FALSE(letter->pageSetup().verticallyCentred);
    EXPECT_FALSE(logged("setting vertically centred"));
}

TEST_F(CustomInvoiceControllerTest, printingPutsTheOptionsInForceForWhatIsPrintedAfterwards)
{
    writeTemplate("x");
    writeTemplate("y", "Plain");
    writeOptions("<key>centreContent</key><true/><key>templatePageMargin</key><real>22.5</real>");
    letterFor(&order)->print();
    EXPECT_TRUE(logged("setting vertically centred"));
    EXPECT_EQ(shared.margins, QMarginsF(22.5, 22.5, 22.5, 22.5));
    const auto plain = makeLetter("Plain");
    plain->setOrder(&order);
    EXPECT_EQ(plain->pageSetup().margins, QMarginsF(22.5, 22.5, 22.5, 22.5));
    EXPECT_TRUE(plain->pageSetup().verticallyCentred);
}

TEST_F(CustomInvoiceControllerTest, openingADocumentChangesNothingForOthers)
{
    writeTemplate("x");
    writeOptions("<key>centreContent</key><true/><key>templatePageMargin</key><real>22.5</real>");
    const PageSetup before = shared;
    const auto letter = letterFor(&order);
    EXPECT_EQ(shared.margins, before.margins);
    EXPECT_FALSE(shared.verticallyCentred);
}

TEST_F(CustomInvoiceControllerTest, wideMarginsLeaveAnInchForTheText)
{
    // A4 is 595 points wide.
    writeTemplate("x");
    for (const auto& [given, margin] :
        {std::pair("250", 250.0), std::pair("261.5", 261.5), std::pair("262", 261.5), std::pair("1e30", 261.5)}) {
        writeOptions("<key>templatePageMargin</key><string>" + QByteArray(given) + "</string>");
        EXPECT_EQ(letterFor(&order)->pageSetup().margins, QMarginsF(margin, margin, margin, margin)) << given;
    }
}

TEST_F(CustomInvoiceControllerTest, aPrintIsCentredBetweenItsMargins)
{
    writeTemplate("Middle");
    writeOptions("<key>centreContent</key><true/><key>templatePageMargin</key><real>50</real>");
    PdfPrinting paper;
    printer = &paper;
    letterFor(&order)->print();
    const QRectF place = PdfReader(paper.bytes).place("Middle");
    EXPECT_NEAR(place.left(), 50, 1);
    // Half of an A4 page of 842 points, within a line's height.
    EXPECT_NEAR(place.center().y(), 421, 10);
}

TEST_F(CustomInvoiceControllerTest, aPrintGoesOnThePaperThatIsChosenForIt)
{
    writeTemplate("Mug");
    PdfPrinting paper;
    printer = &paper;
    paper.chosen = QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, {});
    letterFor(&order)->print();
    EXPECT_EQ(PdfReader(paper.bytes).pageSize(), "595 x 420");
    // The next one is as ever.
    EXPECT_EQ(shared.paper, QPageSize(QPageSize::A4));
    EXPECT_EQ(shared.orientation, QPageLayout::Portrait);
}

TEST_F(CustomInvoiceControllerTest, onSmallerPaperMarginsLeaveAnInchToo)
{
    writeTemplate("Mug");
    writeOptions("<key>templatePageMargin</key><real>250</real>");
    PdfPrinting paper;
    printer = &paper;
    paper.chosen = QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait, {});
    letterFor(&order)->print();
    // A5 is 420 points wide: 72 for the text, and twice 174.
    EXPECT_NEAR(PdfReader(paper.bytes).place("Mug").left(), 174, 1);
    EXPECT_EQ(shared.margins, QMarginsF(250, 250, 250, 250));
}

TEST_F(CustomInvoiceControllerTest, aPrintThatFailsIsOnlyLogged)
{
    writeTemplate("x");
    printing.accepts = false;
    letterFor(&order)->print();
    EXPECT_EQ(alertCount(), 0);
    EXPECT_TRUE(logged("Letter could not be printed"));
}

// PDF

TEST_F(CustomInvoiceControllerTest, aFileIsNamedByDateAndTime)
{
    EXPECT_EQ(makeLetter()->getNewFilename(), "20240301-101530");
    clock.moment = QDateTime(QDate(2023, 12, 9), QTime(7, 5, 3), Qt::UTC);
    EXPECT_EQ(makeLetter()->getNewFilename(), "20231209-070503");
}

TEST_F(CustomInvoiceControllerTest, whatCouldNotBeAttachedIsNotSaidToBe)
{
    writeTemplate("Order <ordernumber>");
    const auto letter = letterFor(&order);
    attaches = false;
    letter->savePDF();
    EXPECT_EQ(attached, QStringList(temporary()));
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(CustomInvoiceControllerTest, anOrdersPdfIsAttachedAndTheUserTold)
{
    writeTemplate("Order <ordernumber>\n<itemsordered>");
    order.setOrderNum("INV7");
    const auto letter = letterFor(&order);
    alerts.answer("OK");
    letter->savePDF();
    EXPECT_EQ(attached, QStringList(temporary()));
    ASSERT_EQ(alertCount(), 1);
    EXPECT_EQ(alerts.asked()[0].title, "PDF Saved");
    EXPECT_EQ(alerts.asked()[0].text, "Letter saved and attached to the order");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList("OK"));
    EXPECT_TRUE(logged("print operation successful"));
    const PdfReader pdf(temporary());
    EXPECT_EQ(pdf.pages(), 1);
    EXPECT_EQ(pdf.pageSize(), "595 x 842");
    EXPECT_EQ(pdf.title(), "Letter");
    EXPECT_EQ(pdf.words(1), "Order INV7 Description Price Apples 1.00 Pears 2.50 Plums 3.75");
    EXPECT_TRUE(panels.savePanels.empty());
}

TEST_F(CustomInvoiceControllerTest, theUserIsToldAfterThePdfIsAttached)
{
    writeTemplate("x");
    const auto letter = makeLetter();
    letter->setOrderManager([this](const QString&) {
        EXPECT_EQ(alertCount(), 0);
        return true;
    });
    letter->setOrder(&order);
    alerts.answer("OK");
    letter->savePDF();
    EXPECT_EQ(alertCount(), 1);
}

TEST_F(CustomInvoiceControllerTest, withoutAnOrderThePdfIsCopiedWhereTheUserWants)
{
    writeTemplate("Hello");
    const auto letter = letterFor(nullptr);
    const QString target = user.home() + "/copy.vendb";
    panels.choose(target);
    letter->savePDF();
    ASSERT_EQ(panels.savePanels.size(), 1U);
    EXPECT_EQ(panels.savePanels[0].title, "Choose a location and name for the copy database");
    EXPECT_EQ(panels.savePanels[0].fileType, "vendb");
    EXPECT_EQ(PdfReader(target).words(1), "Hello");
    EXPECT_TRUE(QFileInfo::exists(temporary()));
    EXPECT_EQ(alertCount(), 0);
    EXPECT_TRUE(attached.isEmpty());
}

TEST_F(CustomInvoiceControllerTest, cancellingThatCopiesNothing)
{
    writeTemplate("Hello");
    const auto letter = letterFor(nullptr);
    panels.cancel();
    letter->savePDF();
    EXPECT_TRUE(QFileInfo::exists(temporary()));
    EXPECT_EQ(QDir(user.home()).entryList(QDir::Files), QStringList());
}

TEST_F(CustomInvoiceControllerTest, aCopyThatFailsIsToldAndLogged)
{
    writeTemplate("Hello");
    const auto letter = letterFor(nullptr);
    panels.choose(user.home() + "/nowhere/copy.vendb");
    alerts.answer("OK");
    letter->savePDF();
    ASSERT_EQ(alertCount(), 1);
    EXPECT_THAT(alerts.asked()[0].text.toStdString(), HasSubstr("nowhere/copy.vendb"));
    ASSERT_FALSE(log.isEmpty());
    EXPECT_THAT(log.last().toStdString(), HasSubstr("nowhere/copy.vendb"));
}

TEST_F(CustomInvoiceControllerTest, aPdfForAMessageNeitherAttachesNorAsks)
{
    writeTemplate("Hello");
    EXPECT_EQ(letterFor(&order)->emailPDF(), temporary());
    EXPECT_EQ(PdfReader(temporary()).words(1), "Hello");
    EXPECT_TRUE(logged("print operation successful"));
    EXPECT_TRUE(attached.isEmpty());
    EXPECT_EQ(alertCount(), 0);
    EXPECT_TRUE(panels.savePanels.empty());
}

TEST_F(CustomInvoiceControllerTest, aPdfTakesTheSharedMarginsAndNotTheTemplates)
{
    writeTemplate("Here");
    writeOptions("<key>templatePageMargin</key><real>100</real>");
    shared.margins = {60, 60, 60, 60};
    const QString path = letterFor(&order)->emailPDF();
    EXPECT_NEAR(PdfReader(path).place("Here").left(), 60, 1);
}

TEST_F(CustomInvoiceControllerTest, unlessThatTemplateWasPrintedBefore)
{
    writeTemplate("Here");
    writeOptions("<key>templatePageMargin</key><real>100</real>");
    const auto letter = letterFor(&order);
    letter->print();
    EXPECT_NEAR(PdfReader(letter->emailPDF()).place("Here").left(), 100, 1);
}

TEST_F(CustomInvoiceControllerTest, aPdfIsNeverCentred)
{
    writeTemplate("Top");
    writeOptions("<key>centreContent</key><true/>");
    const auto letter = letterFor(&order);
    letter->print();
    EXPECT_LT(PdfReader(letter->emailPDF()).place("Top").bottom(), 60);
    EXPECT_TRUE(shared.verticallyCentred);
}

TEST_F(CustomInvoiceControllerTest, aPdfThatCannotBeWrittenIsLoggedAndNotAttached)
{
    writeTemplate("Hello");
    put(support + "/temp", "a file where the folder should be");
    const auto letter = letterFor(&order);
    letter->savePDF();
    EXPECT_TRUE(logged("print operation not successful"));
    EXPECT_FALSE(logged("print operation successful"));
    EXPECT_TRUE(attached.isEmpty());
    EXPECT_EQ(alertCount(), 0);
    EXPECT_EQ(letter->emailPDF(), "");
}

TEST_F(CustomInvoiceControllerTest, temporaryPdfsStay)
{
    writeTemplate("Hello");
    letterFor(&order)->emailPDF();
    clock.moment = clock.moment.addSecs(1);
    letterFor(&order)->emailPDF();
    EXPECT_EQ(QDir(support + "/temp").entryList({"*.pdf"}), QStringList({"20240301-101530.pdf", "20240301-101531.pdf"}));
}

TEST_F(CustomInvoiceControllerTest, aBackgroundIsInThePdf)
{
    writeTemplate("Hello");
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(stationeryPath("Letter.tiff"), "PNG"));
    EXPECT_EQ(PdfReader(letterFor(&order)->emailPDF()).pictures(), 1);
}

} // namespace
