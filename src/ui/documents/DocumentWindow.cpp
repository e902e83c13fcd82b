#include "ui/documents/DocumentWindow.h"

#include "documents/CustomInvoiceController.h"
#include "ui/ArrangedToolBar.h"
#include "ui/HelpTopic.h"
#include "ui/WindowMemory.h"
#include "ui/documents/BackgroundImageTextView.h"
#include "ui/kit/Icons.h"
#include "ui/kit/MessageBar.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr char frameName[] = "InvoiceWindow";
constexpr char barName[] = "vendaroCustomInvoiceToolBar";

QAction* toolBarCommand(QObject* parent, const char* identifier, const QString& label, const char* icon, const QKeySequence& keys)
{
    auto* action = new QAction(Icons::get(QLatin1String(icon)), label, parent);
    action->setObjectName(QLatin1String(identifier));
    action->setShortcut(keys);
    // The sheet that arranges the bar paints the icon itself.
    action->setData(QString::fromLatin1(icon));
    return action;
}

} // namespace

DocumentWindow::DocumentWindow(CustomInvoiceController* document)
    : m_document(document)
    , m_desk(new QScrollArea)
    , m_paper(new BackgroundImageTextView)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(frameName);
    helpTopic::set(*this, "documents");
    setWindowTitle(document->title());
    resize(980, 860);
    makeToolBar();
    makePaper();
    WindowMemory::restore(*this, frameName);
    connect(document, &CustomInvoiceController::closing, this, [this] {
        m_paper->setDocument(nullptr);
        m_document = nullptr;
        close();
    });
}

void DocumentWindow::makeToolBar()
{
    QAction* print = toolBarCommand(this, "printItemIdentifier", tr("Print"), "document-print", QKeySequence::Print);
    connect(print, &QAction::triggered, this, [this] { m_document->print(); });
    QAction* pdf = toolBarCommand(this, "pdfItemIdentifier", tr("Save PDF"), "document-export", QKeySequence::Save);
    connect(pdf, &QAction::triggered, this, [this] { m_document->savePDF(); });
    const QStringList all {print->objectName(), pdf->objectName()};
    const QStringList gaps {ArrangedToolBar::spaceIdentifier, ArrangedToolBar::flexibleSpaceIdentifier};
    auto* bar =
        new ArrangedToolBar(tr("Tool bar"), {barName, {{print->objectName(), print}, {pdf->objectName(), pdf}}, all, all + gaps}, this);
    bar->setObjectName(barName);
    addToolBar(bar);

    auto* closeWindow = new QAction(tr("Close"), this);
    closeWindow->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(closeWindow, &QAction::triggered, this, &QWidget::close);
    addAction(closeWindow);
}

/// The desk, below what is wrong with the template when something is.
QWidget* DocumentWindow::withDamage(QWidget* desk)
{
    if (m_document->templateDamage().isEmpty())
        return desk;
    auto* page = new QWidget;
    auto* bar = new MessageBar(MessageBar::Kind::warning, m_document->templateDamage().join(' '), page);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    column->addWidget(desk, 1);
    return page;
}

void DocumentWindow::makePaper()
{
    auto* desk = new QWidget;
    auto* row = new QHBoxLayout(desk);
    row->setContentsMargins(24, 24, 24, 24);
    row->addStretch(1);
    row->addWidget(m_paper, 0, Qt::AlignTop);
    row->addStretch(1);
    m_desk->setFrameShape(QFrame::NoFrame);
    m_desk->setWidgetResizable(true);
    m_desk->setFocusPolicy(Qt::NoFocus);
    m_desk->setWidget(desk);
    setCentralWidget(withDamage(m_desk));
    m_paper->show(m_document->document(), m_document->pageSetup(), m_document->background());
    m_paper->setFocus();
    connect(m_paper, &BackgroundImageTextView::caretMoved, this, [this](const QRect& caret) {
        const QPoint place = m_paper->mapTo(m_desk->widget(), caret.center());
        m_desk->ensureVisible(place.x(), place.y(), 0, 40);
    });
}

void DocumentWindow::closeEvent(QCloseEvent* event)
{
    WindowMemory::remember(*this, frameName);
    if (m_document) {
        m_paper->setDocument(nullptr);
        m_document->disconnect(this);
        m_document->deleteLater();
        m_document = nullptr;
    }
    event->accept();
}
