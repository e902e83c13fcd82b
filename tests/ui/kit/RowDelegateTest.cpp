#include "KitTest.h"
#include "TableTest.h"

#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"

#include <QSet>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>

using namespace kittest;

namespace {

const QColor surface(0xffffff);
const QColor accent(0x2a62d6);
const QColor accentTint = over(colourOf(Colour::accentTint, Shade::light), surface);

class RowDelegateInTable : public testing::Test {
protected:
    void SetUp() override
    {
        fillOrders(m_model);
        m_table.setModel(&m_model);
        auto* column = new QVBoxLayout(&m_window);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(&m_search);
        column->addWidget(&m_table);
        m_window.resize(700, 300);
        for (int index = 0; index < 3; ++index)
            m_table.setColumnWidth(index, 200);
        show(m_window);
        m_table.setFocus();
    }
    QImage rows() { return picture(*m_table.viewport()); }
    /// The ground of a row, read where no text is.
    QColor ground(int row) { return rows().pixelColor(190, row * 30 + 4); }

    QWidget m_window;
    QStandardItemModel m_model;
    SearchField m_search {QStringLiteral("Search")};
    RecordTable m_table;
};

} // namespace

TEST_F(RowDelegateInTable, rowsAreThirtyPixelsHighAndHaveALineBelow)
{
    EXPECT_EQ(m_table.rowHeight(0), 30);
    const QImage image = rows();
    EXPECT_TRUE(alike(image.pixelColor(190, 59), QColor(0xe2e5ea)));
    EXPECT_TRUE(alike(image.pixelColor(190, 58), surface));
}

TEST_F(RowDelegateInTable, anUnselectedRowUnderTheKeyboardShowsWhereItIs)
{
    m_table.setCurrentIndex({});
    m_table.selectionModel()->setCurrentIndex(m_model.index(0, 0), QItemSelectionModel::NoUpdate);
    const QImage image = rows();
    EXPECT_TRUE(alike(image.pixelColor(190, 0), accent));
    EXPECT_TRUE(alike(image.pixelColor(190, 29), accent));
}

TEST_F(RowDelegateInTable, theSelectionIsFilledWithTheFocusAndTintedWithout)
{
    m_table.selectRow(0);
    EXPECT_TRUE(alike(ground(0), accent));
    EXPECT_TRUE(contains(rows(), Qt::white, QRect(20, 5, 60, 20)));
    m_search.setFocus();
    EXPECT_TRUE(alike(ground(0), accentTint));
    EXPECT_TRUE(contains(rows(), QColor(0x1a1f29), QRect(20, 5, 60, 20)));
}

TEST_F(RowDelegateInTable, aFieldThatSteersTheListKeepsItInFullAccent)
{
    m_table.selectRow(0);
    m_search.steer(&m_table);
    m_search.setFocus();
    EXPECT_TRUE(alike(ground(0), accent));
}

TEST_F(RowDelegateInTable, aStatusTintsItsRowAndDrawsABarOfFourPixels)
{
    const QColor status(0xd99a00);
    EXPECT_TRUE(alike(ground(2), over(statusTint(status, Shade::light), surface)));
    const QImage image = rows();
    for (int x = 0; x < 4; ++x)
        EXPECT_TRUE(alike(image.pixelColor(x, 75), status)) << x;
    EXPECT_FALSE(alike(image.pixelColor(4, 75), status));
    EXPECT_FALSE(alike(image.pixelColor(0, 45), status));
}

TEST_F(RowDelegateInTable, theBarStaysWhenTheRowIsSelected)
{
    m_table.selectRow(2);
    const QImage image = rows();
    EXPECT_TRUE(alike(image.pixelColor(1, 75), QColor(0xd99a00)));
    EXPECT_TRUE(alike(image.pixelColor(5, 75), accent));
}

TEST_F(RowDelegateInTable, theBarGoesWithTheFirstColumnShown)
{
    m_table.hideColumn(0);
    EXPECT_TRUE(alike(rows().pixelColor(1, 75), QColor(0xd99a00)));
}

TEST_F(RowDelegateInTable, finishedRowsStandInSecondaryText)
{
    const QImage image = rows();
    EXPECT_TRUE(contains(image, QColor(0x586173), QRect(20, 35, 60, 20)));
    EXPECT_FALSE(contains(image, QColor(0x1a1f29), QRect(20, 35, 560, 20)));
    EXPECT_TRUE(contains(image, QColor(0x1a1f29), QRect(20, 5, 60, 20)));
}

TEST_F(RowDelegateInTable, whereTheFirstColumnNamesTheRecordTheOthersStandInSecondaryText)
{
    m_table.rowDelegate()->setWeight(RowDelegate::Weight::onFirstColumn);
    const QImage image = rows();
    EXPECT_TRUE(contains(image, QColor(0x1a1f29), QRect(20, 5, 60, 20)));
    EXPECT_TRUE(contains(image, QColor(0x586173), QRect(205, 5, 100, 20)));
    EXPECT_FALSE(contains(image, QColor(0x1a1f29), QRect(205, 5, 390, 20)));
}

TEST_F(RowDelegateInTable, anEmptyListShowsItsQuietLineAndAFilledOneDoesNot)
{
    RecordTable table(RecordTable::Place::card);
    QStandardItemModel model(0, 2);
    table.setModel(&model);
    table.resize(500, 200);
    table.setEmptyText(QStringLiteral("Nothing paid yet"));
    show(table);
    const QRect firstRow(10, 5, 200, 20);
    EXPECT_TRUE(contains(picture(*table.viewport()), QColor(0x586173), firstRow));
    EXPECT_EQ(table.accessibleDescription(), QStringLiteral("Nothing paid yet"));
    model.appendRow({new QStandardItem, new QStandardItem});
    EXPECT_FALSE(contains(picture(*table.viewport()), QColor(0x586173), firstRow));
}

TEST_F(RowDelegateInTable, deleteAsksForRemovalOnlyWhereCellsAreEdited)
{
    QSignalSpy wanted(&m_table, &RecordTable::removalWanted);
    m_table.setCurrentIndex(m_model.index(0, 1));
    QTest::keyClick(&m_table, Qt::Key_Delete);
    EXPECT_EQ(wanted.count(), 0);
    m_table.setUnit(RowDelegate::Unit::cells);
    QTest::keyClick(&m_table, Qt::Key_Delete);
    QTest::keyClick(&m_table, Qt::Key_Backspace);
    EXPECT_EQ(wanted.count(), 2);
    EXPECT_EQ(m_model.item(0, 1)->text(), QStringLiteral("Oak shelf"));
}

TEST_F(RowDelegateInTable, aValueThatCannotBeUsedStandsInErrorColour)
{
    EXPECT_TRUE(contains(rows(), QColor(0xb02a22), QRect(500, 95, 95, 20)));
}

TEST_F(RowDelegateInTable, rolesCanBeOtherNumbers)
{
    RowRoles roles;
    roles.statusColour = Qt::UserRole + 7;
    m_table.rowDelegate()->setRoles(roles);
    m_model.item(0, 0)->setData(QColor(0x2e9e6b), roles.statusColour);
    EXPECT_TRUE(alike(rows().pixelColor(1, 15), QColor(0x2e9e6b)));
    EXPECT_TRUE(alike(rows().pixelColor(1, 75), surface));
}

TEST_F(RowDelegateInTable, numbersEndTenPixelsBeforeTheirCell)
{
    const QImage image = rows();
    int last = 0;
    for (int x = 400; x < 600; ++x) {
        for (int y = 4; y < 26; ++y) {
            if (!alike(image.pixelColor(x, y), surface))
                last = x;
        }
    }
    EXPECT_GE(last, 587);
    EXPECT_LE(last, 590);
}

TEST_F(RowDelegateInTable, rowsGoOnToTheEdgeBehindTheLastColumn)
{
    m_table.selectRow(0);
    const QImage image = rows();
    EXPECT_TRUE(alike(image.pixelColor(680, 10), accent));
    EXPECT_TRUE(alike(image.pixelColor(680, 59), QColor(0xe2e5ea)));
}

TEST_F(RowDelegateInTable, theRowUnderThePointerIsVeiledAsAWhole)
{
    QTest::mouseMove(m_table.viewport(), QPoint(300, 15));
    QTest::qWait(20);
    const QColor veiled = over(colourOf(Colour::hoverVeil, Shade::light), surface);
    EXPECT_TRUE(alike(ground(0), veiled));
    EXPECT_TRUE(alike(rows().pixelColor(390, 4), veiled));
    EXPECT_TRUE(alike(ground(4), surface));
}

TEST_F(RowDelegateInTable, byCellTheRowIsTintedAndTheCurrentCellFramed)
{
    m_table.setUnit(RowDelegate::Unit::cells);
    m_table.setCurrentIndex(m_model.index(0, 1));
    const QImage image = rows();
    EXPECT_TRUE(alike(image.pixelColor(190, 4), accentTint));
    EXPECT_TRUE(alike(image.pixelColor(200, 15), accent));
    EXPECT_TRUE(alike(image.pixelColor(201, 15), accent));
    EXPECT_FALSE(alike(image.pixelColor(202, 15), accent));
    EXPECT_TRUE(alike(image.pixelColor(399, 15), accent));
    EXPECT_TRUE(alike(image.pixelColor(300, 0), accent));
    EXPECT_TRUE(alike(image.pixelColor(300, 28), accent));
    EXPECT_TRUE(alike(image.pixelColor(300, 29), over(colourOf(Colour::accentTint, Shade::light), QColor(0xe2e5ea)))
        || alike(image.pixelColor(300, 29), QColor(0xe2e5ea)));
}

TEST_F(RowDelegateInTable, theEditorHasTheFrameAndTheTextPlaceOfItsCell)
{
    m_table.setUnit(RowDelegate::Unit::cells);
    for (const int column : {0, 1, 2}) {
        const QModelIndex index = m_model.index(0, column);
        m_table.setCurrentIndex(index);
        const QImage still = rows();
        m_table.edit(index);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_TRUE(editor);
        EXPECT_EQ(editor->geometry(), m_table.visualRect(index).adjusted(0, 0, 0, -1));
        editor->deselect();
        editor->setCursorPosition(column == 2 ? 0 : int(editor->text().size()));
        editor->setReadOnly(true);
        const QImage editing = rows();
        EXPECT_TRUE(alike(editing.pixelColor(column * 200, 15), accent));
        // The ink begins and ends within a pixel of where it did.
        const auto ink = [&](const QImage& image) {
            QPair<int, int> span(0, 0);
            for (int x = column * 200 + 4; x < column * 200 + 195; ++x) {
                for (int y = 8; y < 22; ++y) {
                    if (luminance(image.pixelColor(x, y)) < 0.3) {
                        span.first = span.first ? span.first : x;
                        span.second = x;
                    }
                }
            }
            return span;
        };
        EXPECT_NEAR(ink(still).first, ink(editing).first, 1) << column;
        EXPECT_NEAR(ink(still).second, ink(editing).second, 1) << column;
        QTest::keyClick(editor, Qt::Key_Escape);
    }
}

TEST_F(RowDelegateInTable, anEditedCellKeepsWhatWasTyped)
{
    m_table.setUnit(RowDelegate::Unit::cells);
    m_table.setCurrentIndex(m_model.index(0, 1));
    QTest::keyClick(&m_table, Qt::Key_P);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, QStringLiteral("ine"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::qWait(20);
    EXPECT_EQ(m_model.item(0, 1)->text(), QStringLiteral("pine"));
}

TEST_F(RowDelegateInTable, aHundredThousandRowsScrollWithoutBeingMeasured)
{
    class Asked : public QStandardItemModel {
    public:
        using QStandardItemModel::QStandardItemModel;
        QVariant data(const QModelIndex& index, int role) const override
        {
            rows.insert(index.row());
            return QStandardItemModel::data(index, role);
        }
        mutable QSet<int> rows;
    };
    Asked many(100000, 1);
    m_table.setModel(&many);
    m_table.scrollToBottom();
    picture(m_table);
    EXPECT_LT(many.rows.size(), 200) << "only rows that can be seen are asked for";
    EXPECT_EQ(m_table.rowHeight(99999), 30);
}

TEST_F(RowDelegateInTable, aTextStandsWhereThePainterPutsItTheFirstTimeAndAgain)
{
    QStandardItem& item = *m_model.item(4, 1);
    const QRect cell = m_table.visualRect(item.index());
    const QRect place = cell.adjusted(RowDelegate::inset, 0, -RowDelegate::inset, 0);
    for (const QString& text : {QString("Oak shelf"), QString("Oak shelf of three boards, oiled twice, for the reading room"), QString(),
             QString::fromUtf8("\u05e9\u05d5\u05dc\u05d7\u05df 12, oak")}) {
        for (const Qt::Alignment side : {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight}) {
            item.setText(text);
            item.setTextAlignment(side | Qt::AlignVCenter);
            const QImage first = rows();
            EXPECT_EQ(rows(), first);

            QImage expected = first;
            QPainter painter(&expected);
            painter.fillRect(cell.adjusted(0, 0, 0, -1), surface);
            painter.setFont(m_table.font());
            painter.setLayoutDirection(m_table.layoutDirection());
            painter.setPen(colourOf(Colour::text, Shade::light));
            painter.drawText(place, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                m_table.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
            painter.end();
            EXPECT_EQ(expected, first) << text.toStdString();
        }
    }
}

TEST_F(RowDelegateInTable, aTextOfSeveralLinesStandsOnOne)
{
    m_model.item(4, 1)->setText("two lines");
    const QImage onOne = rows();
    m_model.item(4, 1)->setText("two\nlines");
    EXPECT_EQ(rows(), onOne);
}

TEST_F(RowDelegateInTable, aTextInAnotherFontIsLaidOutAnew)
{
    const QRect cell = m_table.visualRect(m_model.index(4, 1));
    const QImage before = rows().copy(cell);
    QFont large = m_table.font();
    large.setPixelSize(20);
    m_table.setFont(large);
    EXPECT_NE(rows().copy(cell), before);
}

TEST_F(RowDelegateInTable, aTextThatIsCutShowsItselfWholeAsToolTip)
{
    const auto tipAt = [this](int row, int column) {
        // A tip goes a moment after it was told to.
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000));
        const QPoint place = m_table.visualRect(m_model.index(row, column)).center();
        QHelpEvent asked(QEvent::ToolTip, place, m_table.viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_table.viewport(), &asked);
        return QToolTip::text();
    };
    m_model.item(1, 1)->setText("Oak shelf <b> of three boards, oiled twice, for the reading room");
    EXPECT_EQ(tipAt(0, 1), QString());
    EXPECT_EQ(tipAt(1, 1), QString("Oak shelf &lt;b&gt; of three boards, oiled twice, for the reading room"));
    m_table.setColumnWidth(1, 600);
    EXPECT_EQ(tipAt(1, 1), QString());
}
