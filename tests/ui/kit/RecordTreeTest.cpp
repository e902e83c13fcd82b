#include "KitTest.h"
#include "TableTest.h"

#include "ui/kit/RecordTree.h"
#include "ui/kit/TableHeader.h"

using namespace kittest;

namespace {

class RecordTreeShown : public testing::Test {
protected:
    void SetUp() override
    {
        m_model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type")});
        auto* company = new QStandardItem(QStringLiteral("Kestrel"));
        company->setData(QStringLiteral("group"), RowRoles().icon);
        company->appendRow({new QStandardItem(QStringLiteral("Ruth")), new QStandardItem(QStringLiteral("Supplier"))});
        m_model.appendRow({company, new QStandardItem(QStringLiteral("Supplier"))});
        m_model.appendRow({new QStandardItem(QStringLiteral("Mercy")), new QStandardItem(QStringLiteral("Customer"))});
        m_tree.setModel(&m_model);
        m_tree.resize(500, 300);
        m_tree.setColumnWidth(0, 200);
        m_tree.setColumnWidth(1, 200);
        m_tree.expandAll();
        show(m_tree);
        m_tree.setFocus();
    }
    QImage rows() { return picture(*m_tree.viewport()); }

    QStandardItemModel m_model;
    RecordTree m_tree;
};

} // namespace

TEST_F(RecordTreeShown, rowsAreThirtyPixelsHighWithLinesFromEdgeToEdge)
{
    EXPECT_EQ(m_tree.visualRect(m_model.index(1, 0)).top(), 60);
    const QImage image = rows();
    for (const int x : {0, 10, 250, 498})
        EXPECT_TRUE(alike(image.pixelColor(x, 59), QColor(0xe2e5ea))) << x;
}

TEST_F(RecordTreeShown, theSecondLevelIsTwentyTwoPixelsFurtherIn)
{
    const QRect company = m_tree.visualRect(m_model.index(0, 0));
    const QRect person = m_tree.visualRect(m_model.index(0, 0, m_model.index(0, 0)));
    EXPECT_EQ(person.left() - company.left(), 22);
}

TEST_F(RecordTreeShown, theSelectionReachesFromEdgeToEdge)
{
    m_tree.setCurrentIndex(m_model.index(0, 0, m_model.index(0, 0)));
    const QImage image = rows();
    for (const int x : {0, 20, 180, 390, 498})
        EXPECT_TRUE(alike(image.pixelColor(x, 33), QColor(0x2a62d6))) << x;
}

TEST_F(RecordTreeShown, aTintedRowIsTintedOnce)
{
    m_model.item(1, 0)->setData(QColor(0xd99a00), RowRoles().statusColour);
    const QColor tint = over(statusTint(QColor(0xd99a00), Shade::light), Qt::white);
    const QImage image = rows();
    for (const int x : {190, 390, 498})
        EXPECT_TRUE(alike(image.pixelColor(x, 64), tint)) << x;
}

TEST_F(RecordTreeShown, companiesHaveAChevronAndPeopleNone)
{
    const QImage image = rows();
    EXPECT_TRUE(contains(image, QColor(0x586173), QRect(4, 5, 16, 20)));
    EXPECT_FALSE(contains(image, QColor(0x586173), QRect(4, 65, 16, 20)));
}

TEST_F(RecordTreeShown, theKeyboardOpensAndClosesALevel)
{
    m_tree.setCurrentIndex(m_model.index(0, 0));
    QTest::keyClick(&m_tree, Qt::Key_Left);
    EXPECT_FALSE(m_tree.isExpanded(m_model.index(0, 0)));
    QTest::keyClick(&m_tree, Qt::Key_Right);
    EXPECT_TRUE(m_tree.isExpanded(m_model.index(0, 0)));
}

TEST_F(RecordTreeShown, theHeadingStandsOverTheIcons)
{
    const QModelIndex company = m_model.index(0, 0);
    const int iconLeft = m_tree.rowDelegate()->textRect(m_tree.visualRect(company), company).left() - RowDelegate::iconAdvance;
    EXPECT_NEAR(m_tree.tableHeader()->headingRect(0).left(), iconLeft, 1);
}
