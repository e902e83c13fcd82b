#include "KitTest.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Button.h"
#include "ui/kit/SegmentedChoice.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

using namespace kittest;

namespace {

QWidget* ringOf(const QWidget& window)
{
    return window.findChild<QWidget*>(QStringLiteral("focusRing"));
}

class FocusRingInWindow : public testing::Test {
protected:
    void SetUp() override
    {
        m_column = new QVBoxLayout(&m_window);
        m_field = new QLineEdit;
        m_button = new Button(QStringLiteral("Save"));
        m_box = new QCheckBox(QStringLiteral("Sent"));
        for (QWidget* widget : QList<QWidget*> {m_field, m_button, m_box})
            m_column->addWidget(widget);
        m_window.resize(300, 300);
        show(m_window);
    }
    QWidget m_window;
    QVBoxLayout* m_column;
    QLineEdit* m_field;
    Button* m_button;
    QCheckBox* m_box;
};

} // namespace

TEST_F(FocusRingInWindow, standsThreePixelsOutsideTheControl)
{
    m_field->setFocus();
    ASSERT_TRUE(ringOf(m_window));
    EXPECT_EQ(ringOf(m_window)->geometry(), m_field->geometry().adjusted(-3, -3, 3, 3));
    EXPECT_TRUE(ringOf(m_window)->isVisible());
    const QImage image = picture(m_window);
    const QColor ring = over(colourOf(Colour::focusRing, Shade::light), image.pixelColor(1, 1));
    EXPECT_TRUE(alike(image.pixelColor(m_field->geometry().center().x(), m_field->geometry().top() - 2), ring));
    EXPECT_TRUE(alike(image.pixelColor(m_field->geometry().center().x(), m_field->geometry().top()), QColor(0x2a62d6)));
}

TEST_F(FocusRingInWindow, followsTheKeyboard)
{
    m_field->setFocus();
    m_button->setFocus();
    EXPECT_EQ(ringOf(m_window)->geometry(), m_button->geometry().adjusted(-3, -3, 3, 3));
    EXPECT_EQ(m_window.findChildren<QWidget*>(QStringLiteral("focusRing")).size(), 1);
}

TEST_F(FocusRingInWindow, standsAroundTheMarkOfACheckBox)
{
    m_box->setFocus();
    EXPECT_EQ(ringOf(m_window)->size(), QSize(22, 22));
    EXPECT_EQ(ringOf(m_window)->x(), m_box->x() - 3);
}

TEST_F(FocusRingInWindow, movesWithItsControl)
{
    m_button->setFocus();
    m_window.resize(500, 400);
    QTest::qWait(20);
    EXPECT_EQ(ringOf(m_window)->geometry(), m_button->geometry().adjusted(-3, -3, 3, 3));
}

TEST_F(FocusRingInWindow, surroundsTheWholeOfASegmentedChoiceAndASpinBox)
{
    auto* choice = new SegmentedChoice({QStringLiteral("%"), QStringLiteral("£")});
    auto* spin = new QSpinBox;
    m_column->addWidget(choice);
    m_column->addWidget(spin);
    QTest::qWait(20);
    choice->findChild<QToolButton*>()->setFocus();
    EXPECT_EQ(ringOf(m_window)->geometry(), choice->geometry().adjusted(-3, -3, 3, 3));
    spin->setFocus();
    EXPECT_EQ(ringOf(m_window)->geometry(), spin->geometry().adjusted(-3, -3, 3, 3));
}

TEST_F(FocusRingInWindow, goesWithItsWindowAndComesInTheNext)
{
    auto* other = new QWidget;
    auto* field = new QLineEdit(other);
    show(*other);
    field->setFocus();
    ASSERT_TRUE(ringOf(*other));
    delete other;
    m_window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    m_button->setFocus();
    m_field->setFocus();
    ASSERT_TRUE(ringOf(m_window));
    EXPECT_TRUE(ringOf(m_window)->isVisible());
}

TEST_F(FocusRingInWindow, hidesWithItsControl)
{
    m_field->setFocus();
    m_field->hide();
    EXPECT_TRUE(!ringOf(m_window)->isVisible() || ringOf(m_window)->geometry() != m_field->geometry().adjusted(-3, -3, 3, 3));
}

TEST_F(FocusRingInWindow, doesNotReachOutOfAScrolledPage)
{
    auto* area = new QScrollArea;
    auto* page = new QWidget;
    page->setFixedSize(200, 600);
    auto* field = new QLineEdit(page);
    field->move(20, 10);
    area->setWidget(page);
    area->setFixedHeight(80);
    m_column->addWidget(area);
    QTest::qWait(20);
    field->setFocus();
    EXPECT_TRUE(ringOf(m_window)->isVisible());
    area->ensureVisible(0, 600);
    QTest::qWait(20);
    EXPECT_FALSE(ringOf(m_window)->isVisible());
}

TEST_F(FocusRingInWindow, neverTakesTheMouse)
{
    m_field->setFocus();
    EXPECT_TRUE(ringOf(m_window)->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_EQ(ringOf(m_window)->focusPolicy(), Qt::NoFocus);
}

TEST(FocusRing, everyControlThatTakesTextOrClicksGetsOneUnlessExempt)
{
    QLineEdit field;
    EXPECT_TRUE(FocusRing::isWantedFor(&field));
    FocusRing::exempt(&field);
    EXPECT_FALSE(FocusRing::isWantedFor(&field));
    const QWidget plain;
    EXPECT_FALSE(FocusRing::isWantedFor(&plain));
}
