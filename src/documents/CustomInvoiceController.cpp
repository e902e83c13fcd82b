#include "documents/CustomInvoiceController.h"

#include "contacts/Contact.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "documents/StationeryTags.h"
#include "documents/Substitution.h"
#include "foundation/Dates.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "orders/Order.h"
#include "storage/qvDataSource.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int pdfDotsPerInch = 1200;

} // namespace

CustomInvoiceController::CustomInvoiceController(const CustomInvoiceNeeds& needs, QObject* parent)
    : QObject(parent)
    , m_needs(needs)
    , m_document(makeSealedDocument())
{
}

CustomInvoiceController::~CustomInvoiceController()
{
    Q_EMIT closing();
}

void CustomInvoiceController::setOrder(const Order* order)
{
    m_order = order;
    windowDidLoad();
}

const Contact* CustomInvoiceController::firstContact() const
{
    const Contact* contact = m_order->getContact();
    return contact ? contact : m_standIn;
}

const Contact* CustomInvoiceController::secondContact() const
{
    const Contact* contact = m_order->getContact2(Order::Fallback::firstContact);
    return contact ? contact : m_standIn;
}

void CustomInvoiceController::windowDidLoad()
{
    m_template = m_needs.stationery.read(m_whichStationary);
    m_document = makeDocument(m_template.document, m_template.pictures);
    m_background.image = m_template.background;
    m_background.scales = m_template.options && m_template.options->scaleTemplateImage;

    Substitution text(*m_document);
    if (m_order) {
        stationeryTags::fillContact(text, firstContact());
        stationeryTags::fillSecondContact(text, secondContact());
        stationeryTags::fillOrder(text, *m_order, m_needs.settings);
    }
    logFormat("do we have contact %s", m_contact ? std::string(m_contact->getName()).c_str() : "(null)");
    stationeryTags::fillGivenContact(text, m_contact);
    insertBOMTable();
    m_document->setModified(false);
    m_document->clearUndoRedoStacks();
}

void CustomInvoiceController::insertBOMTable()
{
    Substitution text(*m_document);
    if (m_order && !m_order->getIncludeBOM())
        text.replaceAllOccurencesOf(m_tableTag, QString());
    else if (m_bomDataSource)
        text.insertTable(m_tableTag, *m_bomDataSource, m_template.style);
}

PageSetup CustomInvoiceController::pageSetup() const
{
    PageSetup setup = m_needs.pageSetup;
    if (m_template.options) {
        const double margin = std::min(m_template.options->templatePageMargin, setup.widestMargin());
        setup.margins = {margin, margin, margin, margin};
        setup.verticallyCentred = m_template.options->centreContent;
    }
    return setup;
}

void CustomInvoiceController::print()
{
    // The template's options stay in force for the documents printed after this one.
    m_needs.pageSetup = pageSetup();
    if (m_template.options && m_template.options->centreContent)
        logLine("setting vertically centred");
    const bool printed = m_needs.printing.print(m_whichStationary, [this](QPagedPaintDevice& device) {
        return Paginator(*m_document, m_needs.pageSetup.onPaperOf(device), m_background).paint(device);
    });
    if (!printed)
        logFormat("%s could not be printed", m_whichStationary.toStdString().c_str());
}

QString CustomInvoiceController::getNewFilename() const
{
    return QString::fromStdString(dates::write(m_needs.clock.now(), dates::stamp));
}

QString CustomInvoiceController::writePDF() const
{
    PageSetup setup = m_needs.pageSetup;
    setup.verticallyCentred = false;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    bool painted = false;
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(pdfDotsPerInch);
        writer.setTitle(m_whichStationary);
        writer.setCreator("Vendaro");
        painted = Paginator(*m_document, setup, m_background).paint(writer);
    }
    const QString path = m_needs.temporaryFolder + '/' + getNewFilename() + ".pdf";
    Result<void> written = folders::make(m_needs.temporaryFolder);
    if (written && painted)
        written = writeFileSafely(path.toStdString(), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (painted && written) {
        logLine("print operation successful");
        return path;
    }
    logLine("print operation not successful");
    if (!written)
        logLine(written.error().message);
    return {};
}

QString CustomInvoiceController::emailPDF()
{
    return writePDF();
}

void CustomInvoiceController::savePDF()
{
    const QString path = writePDF();
    if (path.isEmpty())
        return;
    if (!m_order) {
        saveElsewhere(path);
        return;
    }
    if (!m_orderManager || m_orderManager(path))
        m_needs.alerts.ask(makeAlert(alerts::pdfSaved, {}, {m_whichStationary}));
}

void CustomInvoiceController::saveElsewhere(const QString& path)
{
    SavePanel panel;
    panel.title = localText("Choose a location and name for the copy database");
    panel.fileType = "vendb";
    const std::optional<QString> target = m_needs.panels.saveFile(panel);
    if (!target)
        return;
    const FileBytes pdf = readWholeFile(path.toStdString());
    const Result<void> copied =
        pdf.trouble == ReadTrouble::none ? writeFileSafely(target->toStdString(), pdf.bytes) : Result<void>(Error {pdf.reason});
    if (copied)
        return;
    logLine(copied.error().message);
    m_needs.alerts.ask({m_whichStationary, QString::fromStdString(copied.error().message), {localText("OK")}});
}
