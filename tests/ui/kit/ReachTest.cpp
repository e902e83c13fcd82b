// What people without a mouse or without sight rely on: keys that press, Tab that leaves, names that are told.
#include "KitTest.h"

#include "ui/kit/Button.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/Label.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace kittest;

TEST(Reach, returnAndEnterPressAButtonAsSpaceDoes)
{
    Button button(QStringLiteral("Save"));
    ActionCard card(QStringLiteral("document-new"), QStringLiteral("New Order"), QStringLiteral("Something to sell"));
    for (QPushButton* each : {static_cast<QPushButton*>(&button), static_cast<QPushButton*>(&card)}) {
        QSignalSpy pressed(each, &QPushButton::clicked);
        show(*each);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
            QTest::keyClick(each, key);
        EXPECT_EQ(pressed.count(), 3);
    }
}

TEST(Reach, aReturnHeldDownPressesOnceOnly)
{
    Button button(QStringLiteral("Save"));
    QSignalSpy pressed(&button, &QPushButton::clicked);
    show(button);
    QTest::keyPress(&button, Qt::Key_Return);
    for (int again = 0; again < 3; ++again) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QApplication::sendEvent(&button, &held);
    }
    QTest::keyRelease(&button, Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 1);
}

TEST(Reach, aDisabledButtonIsNotPressed)
{
    Button button(QStringLiteral("Save"));
    QSignalSpy pressed(&button, &QPushButton::clicked);
    show(button);
    button.setEnabled(false);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 0);
}

TEST(Reach, emptyingASearchIsTypingToWhoeverListens)
{
    SearchField search(QStringLiteral("Search items"));
    QStringList typed;
    QObject::connect(&search, &QLineEdit::textEdited, [&](const QString& text) { typed += text; });
    show(search);
    QTest::keyClicks(&search, QStringLiteral("ab"));
    QTest::keyClick(&search, Qt::Key_Escape);
    EXPECT_EQ(typed, QStringList({QStringLiteral("a"), QStringLiteral("ab"), QString()}));
    EXPECT_EQ(search.text(), QString());
}

TEST(Reach, aLabelNamesTheFieldBesideAButtonAndTheButtonKeepsItsOwnWords)
{
    QWidget window;
    auto* grid = new FormGrid;
    window.setLayout(grid);
    auto* button = new Button(QStringLiteral("From items"));
    auto* amount = new NumberField;
    const Label* label = grid->addRow(QStringLiteral("Shipping"), {button, amount});
    EXPECT_EQ(label->buddy(), amount);
    EXPECT_EQ(amount->accessibleName(), QStringLiteral("Shipping"));
    EXPECT_EQ(button->accessibleName(), QString());
}

TEST(Reach, aRowOfButtonsOnlyGivesItsLabelToTheFirst)
{
    QWidget window;
    auto* grid = new FormGrid;
    window.setLayout(grid);
    auto* first = new Button(QStringLiteral("Add"));
    const Label* label = grid->addRow(QStringLiteral("Pictures"), {first, new Button(QStringLiteral("Remove"))});
    EXPECT_EQ(label->buddy(), first);
    EXPECT_EQ(first->accessibleName(), QString());
}

TEST(Reach, aPopUpListTellsItsNameAsItsDescription)
{
    ChoiceBox box({QStringLiteral("Invoice"), QStringLiteral("Estimate")});
    box.setAccessibleName(QStringLiteral("Stationery"));
    show(box);
    EXPECT_EQ(box.accessibleDescription(), QStringLiteral("Stationery"));
}

namespace {

class CellTable : public testing::Test {
protected:
    CellTable()
    {
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 4; ++column) {
                auto* cell = new QStandardItem(QStringLiteral("%1%2").arg(row).arg(column));
                // The first and the third column are for reading.
                cell->setEditable(column == 1 || column == 3);
                m_model.setItem(row, column, cell);
            }
        }
        auto* column = new QVBoxLayout(&m_window);
        m_table = new RecordTable(RecordTable::Place::card);
        m_table->setUnit(RowDelegate::Unit::cells);
        m_table->setModel(&m_model);
        m_after = new QLineEdit;
        column->addWidget(m_table);
        column->addWidget(m_after);
        m_window.resize(600, 300);
        show(m_window);
        m_table->setFocus();
    }
    void edit(int row, int column)
    {
        m_table->setCurrentIndex(m_model.index(row, column));
        m_table->edit(m_model.index(row, column));
    }
    /// The cell being edited as "row column"; empty when none is.
    QString edited() const
    {
        const auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        return editor && m_table->isAncestorOf(editor) ? editor->text() : QString();
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(keyboard(), key, modifiers);
        QTest::qWait(20);
    }

    QStandardItemModel m_model;
    QWidget m_window;
    RecordTable* m_table;
    QLineEdit* m_after;
};

} // namespace

TEST_F(CellTable, tabInAnOpenCellGoesOnToTheNextThatCanBeEdited)
{
    edit(0, 1);
    press(Qt::Key_Tab);
    EXPECT_EQ(edited(), QStringLiteral("03"));
    press(Qt::Key_Tab);
    EXPECT_EQ(edited(), QStringLiteral("11"));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(edited(), QStringLiteral("03"));
}

TEST_F(CellTable, tabInTheLastCellEndsTheEditing)
{
    edit(1, 3);
    press(Qt::Key_Tab);
    EXPECT_EQ(edited(), QString());
}

TEST_F(CellTable, tabLeavesTheTableWhileNoCellIsOpen)
{
    m_table->setCurrentIndex(m_model.index(0, 0));
    press(Qt::Key_Tab);
    EXPECT_TRUE(m_after->hasFocus());
}
