#include "ui/shell/RecoveryWindow.h"

#include "app/Vendaro.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/ListBinder.h"
#include "ui/WindowMemory.h"
#include "ui/kit/Button.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/PageHeader.h"
#include "ui/kit/Panels.h"
#include "ui/kit/PickList.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/TableHeader.h"
#include "ui/kit/UnderlineTabs.h"

#include <QAction>
#include <QGuiApplication>
#include <QLocale>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

constexpr char frameName[] = "RecoveryWindow";
constexpr int generationsWidth = 220;
constexpr int progressWidth = 180;

QVBoxLayout* plainColumn(QWidget* page)
{
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

template <class Made = Button>
Made* footButton(FooterBar* foot, const char* name, const QString& text)
{
    auto* button = new Made(text);
    button->setObjectName(QString::fromLatin1(name));
    foot->addRight(button);
    return button;
}

/// Shows that the program is busy while it lives.
class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

RecoveryWindow::RecoveryWindow(Vendaro& vendaro)
    : m_kept(vendaro.makeKeptList())
    , m_restoring(vendaro.makeRestoring())
    , m_tabs(new UnderlineTabs)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(frameName);
    helpTopic::set(*this, "recovery");
    setWindowTitle(tr("Recovery"));
    resize(980, 620);
    m_tabs->addTab(makeKeptTab(), tr("Kept Files"));
    m_tabs->addTab(makeEarlierTab(), tr("Earlier States"));
    // An earlier state is read when somebody wants to see it.
    connect(m_tabs, &QTabWidget::currentChanged, this, &RecoveryWindow::lookAtChosen);
    plainColumn(this)->addWidget(m_tabs);
    listGenerations();
    showWhatIsPossible();
    WindowMemory::restore(*this, frameName);

    auto* closeWindow = new QAction(tr("Close"), this);
    closeWindow->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)});
    connect(closeWindow, &QAction::triggered, this, &QWidget::close);
    addAction(closeWindow);
    // What is listed belongs to the database that is open.
    connect(&vendaro.session(), &DatabaseSession::aboutToSwitch, this, &QWidget::close);
    // What was kept last is most likely what somebody came for.
    m_keptTable->selectRow(0);
    m_keptTable->setFocus();
}

RecoveryWindow::~RecoveryWindow()
{
    WindowMemory::remember(*this, frameName);
    // The tables go before the lists they show.
    delete m_tabs;
}

void RecoveryWindow::showTab(Tab tab)
{
    m_tabs->setCurrentIndex(static_cast<int>(tab));
}

RecordTable* RecoveryWindow::addTable(QWidget* page, TextRows& rows, const QString& title, const QString& name, const QString& emptyText)
{
    auto* header = new PageHeader(title, tr("Search"));
    header->searchField()->setAccessibleName(tr("Search"));
    auto* table = new RecordTable(RecordTable::Place::page);
    table->setAccessibleName(title);
    table->setEmptyText(emptyText);
    table->tableHeader()->setStretchLastSection(true);
    new ListBinder(rows, table, name);
    header->searchField()->steer(table);
    auto* column = plainColumn(page);
    column->addWidget(header);
    column->addWidget(table, 1);
    new FormBinder(rows.form, page);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &RecoveryWindow::showWhatIsPossible);
    return table;
}

QWidget* RecoveryWindow::makeKeptTab()
{
    auto* page = new QWidget;
    auto* list = new QWidget;
    RecordTable* table = addTable(list, *m_kept, tr("What was kept"), "keptFiles", tr("Nothing had to be kept so far."));
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* foot = new FooterBar;
    foot->setNote(tr("After 90 days they go into the trash."));
    m_show = footButton(foot, "show", tr("Show in File Browser"));
    m_saveCopy = footButton(foot, "saveCopy", tr("Save a Copy…"));
    connect(m_show, &QPushButton::clicked, this, [this] { m_kept->show(); });
    connect(m_saveCopy, &QPushButton::clicked, this, [this] { m_kept->saveCopy(); });
    connect(table, &QAbstractItemView::activated, this, [this] { m_kept->show(); });
    m_keptTable = table;
    auto* column = plainColumn(page);
    column->addWidget(list, 1);
    column->addWidget(foot);
    return page;
}

QWidget* RecoveryWindow::makeEarlierTab()
{
    auto* page = new QWidget;
    m_generations = new PickList(tr("Earlier states"));
    m_generations->setObjectName("generations");
    m_generations->setFixedWidth(generationsWidth);
    auto* list = new QWidget;
    m_differences = addTable(list, *m_restoring, tr("What is different"), "earlierRecords", {});
    m_trouble = new MessageBar(MessageBar::Kind::warning);
    m_trouble->setText({});
    auto* row = new QHBoxLayout;
    row->setContentsMargins(16, 16, 0, 16);
    row->setSpacing(16);
    row->addWidget(m_generations);
    row->addWidget(list, 1);
    m_foot = new FooterBar;
    m_progress = new QProgressBar;
    m_progress->setAccessibleName(tr("Reading the earlier state"));
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(progressWidth);
    m_cancelReading = new Button(tr("Cancel"));
    m_cancelReading->setObjectName("cancelReading");
    m_foot->addLeft(m_progress);
    m_foot->addLeft(m_cancelReading);
    connect(m_cancelReading, &QPushButton::clicked, this, &RecoveryWindow::stopReading);
    m_restoring->onProgress = [this](int percent) { m_progress->setValue(percent); };
    m_restoring->onLooked = [this](const QStringList& troubles) { showRead(troubles); };
    m_bringAllBack = footButton(m_foot, "bringAllBack", tr("Bring All Back"));
    m_bringBack = footButton<PrimaryButton>(m_foot, "bringBack", tr("Bring Back"));
    connect(m_bringBack, &QPushButton::clicked, this, [this] { bringBack(false); });
    connect(m_bringAllBack, &QPushButton::clicked, this, [this] { bringBack(true); });
    connect(m_generations, &QListWidget::currentRowChanged, this, &RecoveryWindow::lookAtChosen);
    auto* column = plainColumn(page);
    column->addWidget(m_trouble);
    column->addLayout(row, 1);
    column->addWidget(m_foot);
    showReading();
    return page;
}

void RecoveryWindow::listGenerations()
{
    const QSignalBlocker quiet(m_generations);
    const QString chosen = m_generations->currentItem() ? m_generations->currentItem()->data(Qt::UserRole).toString() : QString();
    m_generations->clear();
    int row = 0;
    for (const Generation& generation : m_restoring->generations()) {
        QListWidgetItem* entry = m_generations->addEntry("view-history", QLocale().toString(generation.since, QLocale::ShortFormat));
        entry->setData(Qt::UserRole, generation.folder);
        if (generation.folder == chosen)
            row = m_generations->row(entry);
    }
    m_generations->setCurrentRow(row);
}

void RecoveryWindow::lookAtChosen()
{
    const QListWidgetItem* chosen = m_generations->currentItem();
    if (!chosen || m_tabs->currentIndex() != static_cast<int>(Tab::earlier))
        return;
    m_trouble->setText({});
    m_restoring->startLooking({chosen->data(Qt::UserRole).toString(), {}});
    m_differences->setEmptyText(tr("Reading…"));
    m_progress->setValue(0);
    showReading();
    showWhatIsPossible();
}

/// Nothing is chosen afterwards, so that choosing the same state reads it again.
void RecoveryWindow::stopReading()
{
    m_restoring->cancelLooking();
    m_generations->setFocus();
    m_generations->setCurrentRow(-1);
    m_differences->setEmptyText(tr("Choose an earlier state to see what is different."));
    showReading();
    showWhatIsPossible();
}

void RecoveryWindow::showRead(const QStringList& troubles)
{
    m_trouble->setText(troubles.join(' '));
    m_differences->setEmptyText(tr("Nothing was deleted or changed since."));
    showReading();
    showWhatIsPossible();
}

void RecoveryWindow::showReading()
{
    const bool isReading = m_restoring->isLooking();
    m_progress->setVisible(isReading);
    m_cancelReading->setVisible(isReading);
}

void RecoveryWindow::bringBack(bool all)
{
    const WaitCursor waiting;
    const int before = m_restoring->getCount();
    const Result<void> done = all ? m_restoring->bringBackAll() : m_restoring->bringBackSelected();
    m_trouble->setText(done ? QString() : QString::fromStdString(done.error().message));
    if (const int back = before - m_restoring->getCount(); done && back > 0) {
        const QString what = back == 1 ? tr("One record is back.") : tr("%1 records are back.").arg(back);
        m_foot->setNote(what + ' ' + tr("How things stood before is kept as an earlier state too."));
    }
    listGenerations();
    showWhatIsPossible();
}

void RecoveryWindow::showWhatIsPossible()
{
    // Called while the first of the tabs is made, too.
    if (!m_bringBack)
        return;
    const bool keptChosen = !m_kept->selectedPlaces().empty();
    m_show->setEnabled(keptChosen);
    m_saveCopy->setEnabled(keptChosen);
    m_bringBack->setEnabled(!m_restoring->selectedPlaces().empty());
    m_bringAllBack->setEnabled(m_restoring->getCount() > 0);
}
