#include "ui/shell/HelpWindow.h"

#include "app/Manual.h"
#include "desktop/Desktop.h"
#include "ui/HelpTopic.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Icons.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/PickList.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SheetStack.h"
#include "ui/kit/ToolBar.h"
#include "ui/shell/ManualView.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPagedPaintDevice>

namespace {

constexpr char helpFrame[] = "HelpWindow";
constexpr int contentsWidth = 232;
constexpr int searchWidth = 240;
constexpr int topicRole = Qt::UserRole;

} // namespace

HelpWindow::HelpWindow(Manual& manual, Printing& printing)
    : m_manual(manual)
    , m_printing(printing)
    , m_contents(new PickList(tr("Contents")))
    , m_page(new ManualView)
    , m_search(new SearchField(tr("Search in this page")))
    , m_found(new Label({}, LabelSize::small, LabelTone::secondary))
{
    setObjectName(helpFrame);
    resize(1080, 760);
    setMinimumSize(640, 400);
    helpTopic::set(*this, "help");
    // Whoever is asked something may read about it first.
    SheetStack::leaveUsable(*this);
    auto* central = new QWidget;
    auto* row = new QHBoxLayout(central);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_contents);
    row->addWidget(new Hairline(Qt::Vertical));
    row->addWidget(m_page, 1);
    setCentralWidget(central);
    makeContents();
    makeToolBar();
    // The view knows its new address only once it has told of it.
    connect(m_page, &QTextBrowser::historyChanged, this, &HelpWindow::showPage);
    connect(m_page, &ManualView::leftTheManual, this, [this](const QUrl& address) { m_manual.openElsewhere(address); });
    WindowMemory::restore(*this, helpFrame);
}

HelpWindow::~HelpWindow()
{
    WindowMemory::remember(*this, helpFrame);
}

QAction* HelpWindow::addCommand(ToolBar& bar, const char* name, const QString& text, const char* icon, const QList<QKeySequence>& keys)
{
    auto* action = new QAction(Icons::get(QLatin1String(icon)), text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    bar.addCommand(action);
    return action;
}

void HelpWindow::makeToolBar()
{
    auto* bar = new ToolBar(tr("Tool bar"), this);
    bar->setObjectName("helpToolBar");
    QAction* back = addCommand(*bar, "back", tr("Back"), "go-previous", {QKeySequence("Alt+Left")});
    QAction* forward = addCommand(*bar, "forward", tr("Forward"), "go-next", {QKeySequence("Alt+Right")});
    QAction* home = addCommand(*bar, "contents", tr("Contents"), "go-home", {QKeySequence("Alt+Home")});
    bar->addFlexibleGap();
    makeSearch();
    bar->addWidget(m_found);
    bar->addWidget(m_search);
    bar->addGap();
    QAction* printPage = addCommand(*bar, "print", tr("Print"), "document-print", {QKeySequence::Print});
    QAction* browser = addCommand(*bar, "browser", tr("In Browser"), "globe", {QKeySequence("Ctrl+B")});
    addToolBar(bar);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(back, &QAction::triggered, m_page, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_page, &QTextBrowser::forward);
    connect(home, &QAction::triggered, this, [this] { m_page->setSource(m_manual.address(Manual::indexTopic)); });
    connect(printPage, &QAction::triggered, this, &HelpWindow::print);
    connect(browser, &QAction::triggered, this, [this] { m_manual.openElsewhere(m_page->source()); });
    auto* closeWindow = new QAction(tr("Close"), this);
    closeWindow->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(closeWindow, &QAction::triggered, this, &QWidget::close);
    addAction(closeWindow);
}

void HelpWindow::makeContents()
{
    look::setKind(m_contents, "pages");
    m_contents->setObjectName("contents");
    m_contents->setFixedWidth(contentsWidth);
    for (const Manual::Chapter& chapter : m_manual.contents()) {
        m_contents->addEntry({}, chapter.title, PickList::Weight::quiet)->setFlags(Qt::NoItemFlags);
        for (const Manual::Page& page : chapter.pages)
            m_contents->addEntry({}, page.title)->setData(topicRole, page.topic);
    }
    connect(m_contents, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* chosen) {
        if (chosen)
            m_page->setSource(m_manual.address(chosen->data(topicRole).toString()));
    });
}

void HelpWindow::makeSearch()
{
    m_search->setObjectName("search");
    m_search->setFixedWidth(searchWidth);
    m_found->setObjectName("found");
    connect(m_search, &QLineEdit::textEdited, this, [this](const QString& words) { showFound(m_page->findWordsHere(words)); });
    const auto goOn = [this](ManualView::Direction direction) { showFound(m_page->findWords(m_search->text(), direction)); };
    connect(m_search, &QLineEdit::returnPressed, this, [goOn] { goOn(ManualView::Direction::forward); });
    const auto addKeys = [this](const char* name, const QList<QKeySequence>& keys, auto run) {
        auto* action = new QAction(this);
        action->setObjectName(QLatin1String(name));
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    addKeys("find", {QKeySequence(Qt::CTRL | Qt::Key_F)}, [this] { search(); });
    addKeys("findNext", {QKeySequence(Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::Key_G)}, [goOn] { goOn(ManualView::Direction::forward); });
    addKeys("findPrevious", {QKeySequence(Qt::SHIFT | Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G)},
        [goOn] { goOn(ManualView::Direction::backward); });
}

void HelpWindow::search()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void HelpWindow::showFound(bool found)
{
    m_found->setText(found ? QString() : tr("Not on this page"));
}

void HelpWindow::showTopic(const QString& topic)
{
    const QUrl address = m_manual.address(topic);
    if (m_page->source() != address)
        m_page->setSource(address);
    show();
    raise();
    activateWindow();
    m_page->setFocus();
    if (m_contents->count() == 0)
        m_page->setPlainText(tr("The manual should lie in %1, but it is not there or cannot be read.").arg(m_manual.folder()));
}

QString HelpWindow::topic() const
{
    return m_manual.topicAt(m_page->source());
}

void HelpWindow::showPage()
{
    const QString title = m_page->documentTitle();
    setWindowTitle(title.isEmpty() ? tr("Vendaro Help") : tr("%1 – Vendaro Help").arg(title));
    showFound(true);
    const QSignalBlocker quiet(m_contents);
    m_contents->setCurrentRow(-1);
    for (int row = 0; row < m_contents->count(); ++row) {
        if (m_contents->item(row)->data(topicRole).toString() == topic() && !topic().isEmpty())
            m_contents->setCurrentRow(row);
    }
}

void HelpWindow::print()
{
    m_printing.print(m_page->documentTitle(), [this](QPagedPaintDevice& device) {
        ManualView sheet(ManualView::Ground::paper);
        sheet.setSource(m_page->source());
        sheet.print(&device);
        return true;
    });
}
