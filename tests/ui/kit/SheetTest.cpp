#include "KitTest.h"

#include "ui/kit/AlertCard.h"
#include "ui/kit/Button.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/SheetStack.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPaintEvent>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace kittest;

namespace {

class SheetOnWindow : public testing::Test {
protected:
    void SetUp() override
    {
        m_window.resize(900, 600);
        m_field = new QLineEdit;
        m_window.setCentralWidget(m_field);
        m_command = new QAction(&m_window);
        m_command->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
        m_window.addAction(m_command);
        show(m_window);
        m_field->setFocus();
        m_sheet = new Sheet(m_field);
        m_first = new QLineEdit;
        m_page = new QPlainTextEdit;
        m_page->setTabChangesFocus(true);
        m_page->setFixedHeight(60);
        m_cancel = new Button(QStringLiteral("Cancel"));
        m_done = new PrimaryButton(QStringLiteral("Done"));
        for (QWidget* widget : QList<QWidget*> {m_first, m_page, m_cancel, m_done})
            m_sheet->column()->addWidget(widget);
        m_sheet->setDefaultButton(m_done);
        QObject::connect(m_done, &QPushButton::clicked, m_sheet, &Sheet::accept);
        QObject::connect(m_cancel, &QPushButton::clicked, m_sheet, &Sheet::cancel);
    }

    QMainWindow m_window;
    QLineEdit* m_field;
    QAction* m_command;
    Sheet* m_sheet;
    QLineEdit* m_first;
    QPlainTextEdit* m_page;
    Button* m_cancel;
    Button* m_done;
};

} // namespace

TEST_F(SheetOnWindow, coversItsWindowWithTheCardAboveTheMiddle)
{
    m_sheet->open();
    EXPECT_EQ(m_sheet->geometry(), m_window.rect());
    const QRect card = m_sheet->card()->geometry();
    EXPECT_NEAR(card.center().x(), 450, 1);
    EXPECT_LT(card.center().y(), 300);
    EXPECT_GE(card.top(), 24);
    // And the window behind is dimmed: white under the scrim.
    const QColor dimmed = picture(m_window).pixelColor(880, 580);
    EXPECT_TRUE(alike(dimmed, over(themeColour(Colour::scrim), themeColour(Colour::window)))
        || alike(dimmed, over(themeColour(Colour::scrim), themeColour(Colour::field))));
}

TEST_F(SheetOnWindow, followsItsWindowWhenThatIsResized)
{
    m_sheet->open();
    m_window.resize(1100, 700);
    QTest::qWait(20);
    EXPECT_EQ(m_sheet->geometry(), m_window.rect());
    EXPECT_NEAR(m_sheet->card()->geometry().center().x(), 550, 1);
}

namespace {

/// The part of a widget that is painted while somebody listens.
class PaintedPart : public QObject {
public:
    explicit PaintedPart(QWidget& widget) { widget.installEventFilter(this); }
    QRegion region;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

} // namespace

TEST_F(SheetOnWindow, aCardThatShrinksTakesItsShadowAlong)
{
    m_sheet->open();
    QTest::qWait(50);
    const QRect before = m_sheet->card()->geometry();
    const PaintedPart painted(*m_sheet);
    m_page->setFixedHeight(20);
    QTest::qWait(50);
    ASSERT_LT(m_sheet->card()->height(), before.height());
    EXPECT_TRUE(painted.region.contains(QPoint(before.center().x(), before.bottom() + 8))) << "where the shadow was below the card";
}

TEST_F(SheetOnWindow, takesTheKeyboardAndGivesItBack)
{
    m_sheet->open();
    EXPECT_TRUE(m_first->hasFocus());
    m_sheet->cancel();
    EXPECT_TRUE(m_field->hasFocus());
    EXPECT_FALSE(m_sheet->isVisible());
}

TEST_F(SheetOnWindow, tabStaysInside)
{
    m_sheet->open();
    QSet<QWidget*> seen;
    for (int press = 0; press < 9; ++press) {
        QTest::keyClick(keyboard(), Qt::Key_Tab);
        seen << QApplication::focusWidget();
        EXPECT_TRUE(m_sheet->isAncestorOf(QApplication::focusWidget()));
    }
    EXPECT_EQ(seen, (QSet<QWidget*> {m_first, m_page, m_cancel, m_done}));
}

TEST_F(SheetOnWindow, returnInAFieldPressesTheDefaultButton)
{
    m_sheet->open();
    QSignalSpy finished(m_sheet, &Sheet::finished);
    QTest::keyClick(m_first, Qt::Key_Return);
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].toInt(), Sheet::accepted);
}

TEST_F(SheetOnWindow, returnInAPageOfTextIsALineBreak)
{
    m_sheet->open();
    m_page->setFocus();
    QTest::keyClick(m_page, Qt::Key_Return);
    EXPECT_TRUE(m_sheet->isOpen());
    EXPECT_EQ(m_page->toPlainText(), QStringLiteral("\n"));
}

TEST_F(SheetOnWindow, escapeCancels)
{
    m_sheet->open();
    QSignalSpy finished(m_sheet, &Sheet::finished);
    QTest::keyClick(m_first, Qt::Key_Escape);
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].toInt(), Sheet::cancelled);
}

TEST_F(SheetOnWindow, shortcutsOfTheWindowRestWhileItIsOpen)
{
    QSignalSpy triggered(m_command, &QAction::triggered);
    m_sheet->open();
    QTest::keyClick(m_window.windowHandle(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(triggered.count(), 0);
    m_sheet->cancel();
    QTest::keyClick(m_window.windowHandle(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(triggered.count(), 1);
}

TEST_F(SheetOnWindow, editingKeysStillWorkInItsFields)
{
    m_sheet->open();
    m_first->setText(QStringLiteral("abc"));
    QTest::keyClick(m_window.windowHandle(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_first->selectedText(), QStringLiteral("abc"));
}

TEST_F(SheetOnWindow, theWindowBehindCannotBeClickedTypedIntoOrClosed)
{
    m_sheet->open();
    QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 590));
    EXPECT_FALSE(m_field->hasFocus());
    QTest::keyClick(m_field, Qt::Key_X);
    EXPECT_EQ(m_field->text(), QString());
    EXPECT_FALSE(m_window.close());
    EXPECT_TRUE(m_window.isVisible());
    m_sheet->cancel();
    QTest::keyClick(m_field, Qt::Key_X);
    EXPECT_EQ(m_field->text(), QStringLiteral("x"));
}

TEST_F(SheetOnWindow, anotherWindowStaysUsableUnlessTheSheetStopsTheProgram)
{
    QLineEdit other;
    other.show();
    m_sheet->open();
    EXPECT_FALSE(SheetStack::instance().isBlocked(&other));
    m_sheet->cancel();
    AlertCard alert(m_field, QStringLiteral("t"), QStringLiteral("x"), {}, AlertCard::Options());
    alert.open();
    EXPECT_TRUE(SheetStack::instance().isBlocked(&other));
    alert.cancel();
    EXPECT_FALSE(SheetStack::instance().isBlocked(&other));
}

TEST_F(SheetOnWindow, listsOpenedFromItCanBeUsed)
{
    auto* box = new QComboBox;
    box->addItems({QStringLiteral("a"), QStringLiteral("b")});
    m_sheet->column()->addWidget(box);
    m_sheet->open();
    box->showPopup();
    EXPECT_FALSE(SheetStack::instance().isBlocked(box->view()->viewport()));
    box->hidePopup();
}

TEST_F(SheetOnWindow, anAlertAboveASheetIsAnsweredFirst)
{
    m_sheet->open();
    AlertCard alert(m_first, QStringLiteral("t"), QStringLiteral("x"), {}, AlertCard::Options());
    alert.open();
    EXPECT_EQ(SheetStack::instance().top(), &alert);
    EXPECT_TRUE(SheetStack::instance().isBlocked(m_first));
    alert.cancel();
    EXPECT_FALSE(SheetStack::instance().isBlocked(m_first));
    EXPECT_TRUE(m_first->hasFocus());
}

TEST_F(SheetOnWindow, quittingCancelsEverythingOpenNewestFirst)
{
    m_sheet->open();
    AlertCard alert(m_first, QStringLiteral("t"), QStringLiteral("x"), {}, AlertCard::Options());
    alert.open();
    QStringList order;
    QObject::connect(m_sheet, &Sheet::finished, m_sheet, [&](int answer) { order << QStringLiteral("sheet %1").arg(answer); });
    QObject::connect(&alert, &Sheet::finished, m_sheet, [&](int answer) { order << QStringLiteral("alert %1").arg(answer); });
    SheetStack::instance().cancelAll();
    EXPECT_EQ(order, QStringList({QStringLiteral("alert -1"), QStringLiteral("sheet -1")}));
    EXPECT_EQ(SheetStack::instance().top(), nullptr);
}

TEST_F(SheetOnWindow, finishingTwiceTellsOnce)
{
    m_sheet->open();
    QSignalSpy finished(m_sheet, &Sheet::finished);
    m_sheet->finish(3);
    m_sheet->finish(4);
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].toInt(), 3);
}

TEST_F(SheetOnWindow, canBeOpenedAgain)
{
    later([this] { m_sheet->finish(7); });
    EXPECT_EQ(m_sheet->exec(), 7);
    later([this] { m_sheet->cancel(); });
    EXPECT_EQ(m_sheet->exec(), Sheet::cancelled);
}

TEST_F(SheetOnWindow, theNextDialogBelongsToTheActiveWindow)
{
    EXPECT_EQ(SheetStack::frontWindow(), &m_window);
    QWidget other(&m_window, Qt::Dialog);
    show(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return SheetStack::frontWindow() == &other; }));
}

TEST_F(SheetOnWindow, theNextDialogNeverBelongsToOneThatWasClosed)
{
    Sheet large(m_field);
    large.card()->setFixedSize(1000, 700);
    large.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&large));
    large.accept();
    // As under load, when the window system is late to tell who is active now.
    QApplication::setActiveWindow(&large);
    EXPECT_EQ(SheetStack::frontWindow(), &m_window);
    Sheet alone(nullptr);
    alone.open();
    alone.accept();
    QApplication::setActiveWindow(&alone);
    EXPECT_EQ(SheetStack::frontWindow(), nullptr);
}
