// A list on the screen and its collection: what one does, the other follows.
#include "ui/ListBinder.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/RowCopy.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"

#include <QClipboard>
#include <QVBoxLayout>

#include <algorithm>

using namespace uitest;

namespace {

class BoundList : public Business {
protected:
    void SetUp() override
    {
        begin();
        for (const char* title : {"Bench", "Chair", "Arch", "Door"})
            order(title);
        orders().filter();
        orders().sortByColumn("title", true);
        m_table = new RecordTable(RecordTable::Place::page);
        m_table->resize(900, 400);
        m_binder = new ListBinder(orders(), m_table);
        show(*m_table);
    }
    void TearDown() override { delete m_table; }

    int columnOf(const char* identifier) const
    {
        for (int section = 0; section < m_binder->model().columnCount(); ++section) {
            if (m_binder->model().column(section).identifier == identifier)
                return section;
        }
        return -1;
    }
    QStringList titles() const
    {
        QStringList titles;
        for (int row = 0; row < m_binder->model().rowCount(); ++row)
            titles += m_binder->model().index(row, columnOf("title")).data().toString();
        return titles;
    }
    QList<int> selectedRows() const
    {
        QList<int> rows;
        for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
            rows += index.row();
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
    {
        const QPoint place = m_table->visualRect(m_binder->model().index(row, 0)).center();
        QTest::mouseClick(m_table->viewport(), Qt::LeftButton, modifiers, place);
    }
    void clickHeading(const char* identifier)
    {
        TableHeader* header = m_table->tableHeader();
        const QPoint place(header->sectionViewportPosition(columnOf(identifier)) + 30, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    QString sortedBy() const
    {
        const TableHeader* header = m_table->tableHeader();
        if (!header->isSortIndicatorShown())
            return {};
        const char* direction = header->sortIndicatorOrder() == Qt::AscendingOrder ? " up" : " down";
        return QString::fromStdString(m_binder->model().column(header->sortIndicatorSection()).identifier) + direction;
    }

    RecordTable* m_table = nullptr;
    ListBinder* m_binder = nullptr;
};

} // namespace

TEST_F(BoundList, showsTheRowsInTheCollectionsOrder)
{
    EXPECT_EQ(titles(), QStringList({"Arch", "Bench", "Chair", "Door"}));
}

TEST_F(BoundList, givesEveryColumnItsWidth)
{
    m_table->resize(2000, 300);
    for (const char* column : {"date", "ordernum", "contactname", "status"})
        EXPECT_EQ(m_table->columnWidth(columnOf(column)), orders().list.column(column)->width) << column;
    EXPECT_GT(m_table->columnWidth(columnOf("title")), orders().list.column("title")->width) << "the widest takes what is left";
    EXPECT_EQ(m_table->tableHeader()->length(), m_table->tableHeader()->width());
}

TEST_F(BoundList, keepsTheWidthThatAPersonGives)
{
    m_table->setColumnWidth(columnOf("title"), 333);
    EXPECT_EQ(orders().list.column("title")->width, 333);
}

TEST_F(BoundList, leavesOutAColumnThatIsHiddenAndShowsItAgain)
{
    orders().list.column("status")->visible = false;
    orders().columnsChanged();
    EXPECT_EQ(columnOf("status"), -1);
    m_table->resize(2000, 300);
    EXPECT_EQ(m_table->columnWidth(columnOf("contactname")), orders().list.column("contactname")->width);
    orders().list.column("status")->visible = true;
    orders().columnsChanged();
    EXPECT_GE(columnOf("status"), 0);
}

TEST_F(BoundList, aClickOnAHeadingSortsAndTheNextOneTurnsItRound)
{
    clickHeading("ordernum");
    EXPECT_EQ(sortedBy(), QString("ordernum up"));
    EXPECT_EQ(titles(), QStringList({"Bench", "Chair", "Arch", "Door"}));
    clickHeading("ordernum");
    EXPECT_EQ(sortedBy(), QString("ordernum down"));
    EXPECT_EQ(titles(), QStringList({"Door", "Arch", "Chair", "Bench"}));
}

TEST_F(BoundList, theMarkFollowsASortThatTheProgramMakes)
{
    clickHeading("ordernum");
    orders().toggleSort("title");
    EXPECT_EQ(sortedBy(), QString("title up"));
    EXPECT_EQ(titles(), QStringList({"Arch", "Bench", "Chair", "Door"}));
}

TEST_F(BoundList, aClickSelectsTheRecord)
{
    clickRow(1);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({1}));
    clickRow(3, Qt::ControlModifier);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({1, 3}));
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({3}));
}

TEST_F(BoundList, shiftAndTheArrowsExtendTheSelectionBothWays)
{
    clickRow(1);
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), QList<int>({1, 2, 3}));
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({1, 2, 3}));
    QTest::keyClick(m_table, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({1, 2}));
    clickRow(2);
    QTest::keyClick(m_table, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(m_table, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({0, 1, 2}));
}

TEST_F(BoundList, theKeyboardSelectsEverything)
{
    m_table->setFocus();
    QTest::keyClick(m_table, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(orders().selectedRows(), std::vector<int>({0, 1, 2, 3}));
}

TEST_F(BoundList, showsWhatTheCollectionSelects)
{
    orders().setSelectedRows({0, 2});
    EXPECT_EQ(selectedRows(), QList<int>({0, 2}));
    orders().setSelectedRows({});
    EXPECT_EQ(selectedRows(), QList<int>());
}

TEST_F(BoundList, sortingTakesTheSelectionAway)
{
    clickRow(0);
    clickHeading("title");
    clickHeading("title");
    ASSERT_EQ(titles(), QStringList({"Door", "Chair", "Bench", "Arch"}));
    EXPECT_EQ(selectedRows(), QList<int>());
    EXPECT_EQ(orders().selectedRows(), std::vector<int>());
}

TEST_F(BoundList, theSelectionStaysWithItsRecordsThroughFiltering)
{
    clickRow(3);
    orders().listForm.search.edit("door");
    EXPECT_EQ(titles(), QStringList({"Door"}));
    EXPECT_EQ(selectedRows(), QList<int>({0}));
    orders().listForm.search.edit("");
    EXPECT_EQ(selectedRows(), QList<int>({3}));
}

TEST_F(BoundList, newRecordsComeUpAndDeletedOnesGo)
{
    order("Easel");
    orders().filter();
    // New ones come first until the list is sorted again.
    EXPECT_EQ(titles(), QStringList({"Easel", "Arch", "Bench", "Chair", "Door"}));
    clickRow(0);
    alerts.answer("OK");
    orders().deleteKey();
    EXPECT_EQ(titles(), QStringList({"Arch", "Bench", "Chair", "Door"}));
}

TEST_F(BoundList, anEmptyListHasNoSelection)
{
    orders().listForm.search.edit("nothing has this");
    EXPECT_EQ(titles(), QStringList());
    EXPECT_EQ(selectedRows(), QList<int>());
}

namespace {

class BoundLines : public Business {
protected:
    void SetUp() override
    {
        begin();
        item("Nail", "100", "2.00");
        item("Screw", "100", "3.00");
        orders().create();
        orders().addItemToCurrentOrder(static_cast<Item&>(*items().getnthItem(0)));
        orders().addItemToCurrentOrder(static_cast<Item&>(*items().getnthItem(1)));
        m_table = new RecordTable(RecordTable::Place::card);
        m_table->setUnit(RowDelegate::Unit::cells);
        m_table->resize(900, 300);
        m_binder = new ListBinder(lines(), m_table);
        show(*m_table);
    }
    void TearDown() override { delete m_table; }

    QModelIndex cell(int row, const char* identifier) const
    {
        for (int section = 0; section < m_binder->model().columnCount(); ++section) {
            if (m_binder->model().column(section).identifier == identifier)
                return m_binder->model().index(row, section);
        }
        ADD_FAILURE() << "no column " << identifier;
        return {};
    }
    void go(int row, const char* identifier)
    {
        m_table->setFocus();
        m_table->setCurrentIndex(cell(row, identifier));
    }
    static QWidget* editor() { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }

    RecordTable* m_table = nullptr;
    ListBinder* m_binder = nullptr;
};

} // namespace

TEST_F(BoundLines, typingIntoACellReachesTheRecordAndTheCellStaysCurrent)
{
    go(0, "qty");
    QTest::keyClicks(m_table, "3");
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Return);
    settle();
    EXPECT_EQ(lines().objectValue("qty", 0), "3");
    EXPECT_EQ(cell(0, "total").data().toString(), QString("6.00"));
    EXPECT_EQ(m_table->currentIndex(), cell(0, "qty"));
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(BoundLines, tabTakesTheValueAndGoesOnToTheNextCellThatCanBeEdited)
{
    ASSERT_FALSE(lines().list.column("brand")->editable);
    go(0, "variation");
    QTest::keyClicks(m_table, "l");
    QTest::keyClicks(keyboard(), "ong");
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Tab);
    settle();
    EXPECT_EQ(lines().objectValue("variation", 0), "long");
    EXPECT_EQ(m_table->currentIndex(), cell(0, "qty"));
    EXPECT_NE(editor(), nullptr) << "the next cell is not being edited";
}

TEST_F(BoundLines, shiftTabGoesBackOverTheCellThatCannotBeEdited)
{
    go(0, "qty");
    QTest::keyClicks(m_table, "2");
    QTest::keyClick(editor(), Qt::Key_Backtab, Qt::ShiftModifier);
    settle();
    EXPECT_EQ(lines().objectValue("qty", 0), "2");
    EXPECT_EQ(m_table->currentIndex(), cell(0, "variation"));
    EXPECT_NE(editor(), nullptr);
}

TEST_F(BoundLines, tabGoesOnInTheNextLineAndEndsBehindTheLast)
{
    go(0, "total");
    QTest::keyClicks(m_table, "9");
    QTest::keyClick(editor(), Qt::Key_Tab);
    settle();
    EXPECT_EQ(m_table->currentIndex(), cell(1, "code"));
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Escape);
    go(1, "total");
    QTest::keyClicks(m_table, "8");
    QTest::keyClick(editor(), Qt::Key_Tab);
    settle();
    EXPECT_EQ(lines().objectValue("total", 0), "9.00");
    EXPECT_EQ(lines().objectValue("total", 1), "8.00");
    EXPECT_EQ(m_table->currentIndex(), cell(1, "total"));
    EXPECT_TRUE(m_table->hasFocus());
}

TEST_F(BoundLines, returnOpensTheCellWithItsValueAndClosesItAgain)
{
    go(0, "cost");
    QTest::keyClick(m_table, Qt::Key_Return);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(qobject_cast<QLineEdit*>(editor())->selectedText(), QString("2.00"));
    QTest::keyClicks(editor(), "5");
    QTest::keyClick(editor(), Qt::Key_Return);
    settle();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(lines().objectValue("cost", 0), "5.00");
    go(0, "brand");
    QTest::keyClick(m_table, Qt::Key_Return);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(BoundLines, aRefusedQuantityBeepsAndTabGoesOn)
{
    go(0, "qty");
    QTest::keyClicks(m_table, "9");
    QTest::keyClicks(keyboard(), "99");
    alerts.answer("Cancel");
    QTest::keyClick(editor(), Qt::Key_Tab);
    settle();
    EXPECT_EQ(lines().objectValue("qty", 0), "1");
    EXPECT_EQ(items().at(0).getQty(), "99");
    EXPECT_EQ(beeper.beeps, 1);
    EXPECT_EQ(m_table->currentIndex(), cell(0, "unit"));
}

TEST_F(BoundLines, theSelectedLineIsCopiedWithTabsBetweenItsCells)
{
    QGuiApplication::clipboard()->setText("before");
    lines().setObjectValue("variation", 1, "a\tb");
    go(1, "item");
    QTest::keyClick(m_table, Qt::Key_C, Qt::ControlModifier);
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_EQ(copied, QString("\tScrew\ta b\t\t1\t\t3.00\t3.00"));
}

TEST_F(BoundLines, whileACellIsEditedItsTextIsCopied)
{
    go(1, "item");
    QTest::keyClick(m_table, Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("Screw"));
}

TEST_F(BoundLines, escapeGivesTheOldValueBack)
{
    go(0, "qty");
    QTest::keyClicks(m_table, "7");
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(lines().objectValue("qty", 0), "1");
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(BoundLines, whatIsNoNumberIsRefusedWithABeep)
{
    go(1, "qty");
    QTest::keyClicks(m_table, "m");
    QTest::keyClicks(keyboard(), "any");
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Return);
    settle();
    EXPECT_EQ(lines().objectValue("qty", 1), "1");
    EXPECT_GE(beeper.beeps, 1);
}

TEST_F(BoundLines, aCellThatIsComputedElsewhereCannotBeTypedInto)
{
    go(0, "brand");
    QTest::keyClicks(m_table, "x");
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(BoundLines, theLineOfTheCurrentCellIsTheSelectedOne)
{
    go(1, "qty");
    EXPECT_EQ(lines().selectedRows(), std::vector<int>({1}));
    go(0, "cost");
    EXPECT_EQ(lines().selectedRows(), std::vector<int>({0}));
}

TEST_F(BoundLines, tabLeavesTheTableWhenNoCellIsBeingEdited)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* after = new QLineEdit;
    m_table->setParent(&window);
    column->addWidget(m_table);
    column->addWidget(after);
    show(window);
    go(0, "code");
    QTest::keyClick(m_table, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    m_table->setParent(nullptr);
}

TEST_F(BoundList, aCellThatDoesNotReadIsMarkedAndSaysWhy)
{
    Order& bench = order("Paid bench");
    payment(bench, "5.00", "yesterday");
    payment(bench, "5.00", "01/03/24");
    orders().paymentTable.setOrder(&bench);
    RecordTable payments(RecordTable::Place::card);
    payments.setUnit(RowDelegate::Unit::cells);
    auto* binder = new ListBinder(orders().paymentTable, &payments);
    const auto cell = [&](int row, int role) { return binder->model().index(row, 0).data(role); };
    EXPECT_TRUE(cell(0, payments.rowDelegate()->roles().fault).toBool());
    EXPECT_EQ(cell(0, Qt::ToolTipRole).toString(), QString("This is not a date like 25/12/24; it counts as 01/01/00."));
    EXPECT_EQ(cell(0, Qt::AccessibleDescriptionRole), cell(0, Qt::ToolTipRole));
    EXPECT_FALSE(cell(1, payments.rowDelegate()->roles().fault).toBool());
    EXPECT_EQ(cell(1, Qt::ToolTipRole).toString(), QString());
}
