// One document made from a template: the tags filled with an order's values, the table put in, and then printed, saved as PDF with the
// order, or written for an e-mail. The document stays editable until then; substitution happens once.
#pragma once

#include "documents/Paginator.h"
#include "documents/StationeryFolder.h"

#include <QObject>

#include <functional>
#include <memory>

class Alerts;
class Clock;
class Contact;
class FilePanels;
class Order;
class Printing;
class QTextDocument;
class SettingsStore;
class qvDataSource;

struct CustomInvoiceNeeds {
    const StationeryFolder& stationery;
    const SettingsStore& settings;
    PageSetup& pageSetup;
    Alerts& alerts;
    const Clock& clock;
    FilePanels& panels;
    Printing& printing;
    /// Where the PDFs are written first.
    QString temporaryFolder;
};

/// Files a finished document with the order it was made from; false when it could not, which the person was told then.
using AttachmentSink = std::function<bool(const QString& path)>;

class CustomInvoiceController : public QObject {
    Q_OBJECT
public:
    explicit CustomInvoiceController(const CustomInvoiceNeeds& needs, QObject* parent = nullptr);
    ~CustomInvoiceController() override;

    void setWhichStationary(const QString& name) { m_whichStationary = name; }
    void setbomDataSource(const qvDataSource* rows) { m_bomDataSource = rows; }
    void setOrderManager(AttachmentSink sink) { m_orderManager = std::move(sink); }
    void setTableTag(const QString& tag) { m_tableTag = tag; }
    void setContact(const Contact* contact) { m_contact = contact; }
    /// What an order without a contact is printed with.
    void setStandInContact(const Contact* contact) { m_standIn = contact; }
    /// Comes last: fills the document. The order may be none.
    void setOrder(const Order* order);

    const QString& title() const { return m_whichStationary; }
    QTextDocument& document() { return *m_document; }
    /// What of the template is damaged, for the person: one sentence each.
    const QStringList& templateDamage() const { return m_template.damage; }
    const PageBackground& background() const { return m_background; }
    /// As the document would be printed now.
    PageSetup pageSetup() const;

    void print();
    void savePDF();
    /// The PDF alone, for a message; answers its path, empty when it could not be written.
    QString emailPDF();
    /// Date and time as a file name.
    QString getNewFilename() const;

Q_SIGNALS:
    /// Before the document goes.
    void closing();

private:
    void windowDidLoad();
    void insertBOMTable();
    const Contact* firstContact() const;
    const Contact* secondContact() const;
    QString writePDF() const;
    void saveElsewhere(const QString& path);

    CustomInvoiceNeeds m_needs;
    QString m_whichStationary;
    const qvDataSource* m_bomDataSource = nullptr;
    AttachmentSink m_orderManager;
    QString m_tableTag;
    const Contact* m_contact = nullptr;
    const Contact* m_standIn = nullptr;
    const Order* m_order = nullptr;

    StationeryTemplate m_template;
    std::unique_ptr<QTextDocument> m_document;
    PageBackground m_background;
};
