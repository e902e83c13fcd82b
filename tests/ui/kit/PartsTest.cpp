// The parts windows are put together from, and what assistive programs are told about them.
#include "KitTest.h"

#include "ui/kit/AlertCard.h"
#include "ui/kit/Button.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Label.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/Panels.h"
#include "ui/kit/ProgressCard.h"
#include "ui/kit/RecordTable.h"

#include <QAccessible>
#include <QDropEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMimeData>
#include <QProgressBar>
#include <QSignalSpy>
#include <QUrl>
#include <QVBoxLayout>

using namespace kittest;

TEST(CardFrame, leavesTheCornersRound)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* card = new CardFrame(new RecordTable(RecordTable::Place::card));
    column->addWidget(card);
    window.resize(300, 200);
    show(window);
    const QImage image = picture(window);
    const QColor ground = image.pixelColor(1, 1);
    EXPECT_TRUE(alike(image.pixelColor(card->geometry().topLeft()), ground));
    EXPECT_TRUE(alike(image.pixelColor(card->geometry().bottomRight()), ground));
    EXPECT_TRUE(alike(image.pixelColor(card->geometry().center()), Qt::white));
    EXPECT_TRUE(alike(image.pixelColor(card->geometry().center().x(), card->geometry().top()), QColor(0xe2e5ea)));
}

TEST(CardFrame, itsLineFieldTellsWhatWasTyped)
{
    CardFrame card(new RecordTable(RecordTable::Place::card));
    QLineEdit* field = card.addLineField(QStringLiteral("Add a line"));
    QSignalSpy typed(&card, &CardFrame::lineTyped);
    field->setText(QStringLiteral("OAK-12"));
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(typed.count(), 1);
    EXPECT_EQ(typed[0][0].toString(), QStringLiteral("OAK-12"));
    EXPECT_EQ(field->text(), QStringLiteral("OAK-12"));
    EXPECT_EQ(field->accessibleName(), QStringLiteral("Add a line"));
}

TEST(DropArea, tellsTheLocalFilesDroppedAndNothingElse)
{
    DropArea area(QStringLiteral("mail-attachment"), QStringLiteral("There is 1 attachment"), QStringLiteral("Drop a file here"));
    show(area);
    QSignalSpy dropped(&area, &DropArea::filesDropped);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a b.pdf")), QUrl(QStringLiteral("https://example.org/x"))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&area, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&area, &drop);
    ASSERT_EQ(dropped.count(), 1);
    EXPECT_EQ(dropped[0][0].toStringList(), QStringList(QStringLiteral("/tmp/a b.pdf")));

    QMimeData words;
    words.setText(QStringLiteral("hello"));
    QDragEnterEvent wordsEnter(QPoint(5, 5), Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
    wordsEnter.ignore();
    QApplication::sendEvent(&area, &wordsEnter);
    EXPECT_FALSE(wordsEnter.isAccepted());
}

TEST(SidePanel, isAsWideAsItsWindowAsks)
{
    EXPECT_EQ(SidePanel(SidePanel::Width::editor).minimumWidth(), 317);
    EXPECT_EQ(SidePanel(SidePanel::Width::checkout).minimumWidth(), 373);
}

TEST(FooterBar, leftStandsLeftInOrderAndRightStandsRightInOrder)
{
    FooterBar bar;
    auto* print = new Button(QStringLiteral("Print"));
    auto* mail = new Button(QStringLiteral("Mail"));
    auto* cancel = new Button(QStringLiteral("Cancel"));
    auto* save = new PrimaryButton(QStringLiteral("Save"));
    bar.addLeft(print);
    bar.addLeft(mail);
    bar.addRight(cancel);
    bar.addRight(save);
    bar.setNote(QStringLiteral("7 of 86"));
    bar.resize(800, bar.sizeHint().height());
    show(bar);
    EXPECT_EQ(print->x(), 24);
    EXPECT_EQ(mail->x() - print->geometry().right() - 1, 8);
    EXPECT_EQ(800 - save->geometry().right() - 1, 24);
    EXPECT_EQ(save->x() - cancel->geometry().right() - 1, 8);
}

TEST(MessageBar, anEmptyTextHidesItAndAnyOtherShowsIt)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* bar = new MessageBar(MessageBar::Kind::warning);
    column->addWidget(bar);
    show(window);
    EXPECT_FALSE(bar->isVisible());
    bar->setText(QStringLiteral("“12.5%” is not a number."));
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(alike(picture(*bar).pixelColor(60, 4), QColor(0xfff6e1)));
    bar->setText({});
    EXPECT_FALSE(bar->isVisible());
}

TEST(MessageBar, itsWayOutIsAButton)
{
    MessageBar bar(MessageBar::Kind::readOnly, QStringLiteral("Read-only mode."));
    Button* action = bar.setAction(QStringLiteral("Unlock Database…"));
    EXPECT_EQ(bar.setAction(QStringLiteral("Unlock…")), action);
    QSignalSpy pressed(&bar, &MessageBar::actionPressed);
    action->click();
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_EQ(action->text(), QStringLiteral("Unlock…"));
}

TEST(ActionCard, anyPlaceOfItCanBeClickedAndItIsReadByItsTitle)
{
    ActionCard card(
        QStringLiteral("document-new"), QStringLiteral("New Order"), QStringLiteral("Choose a contact."), ActionCard::Rank::first);
    card.resize(640, 68);
    show(card);
    QSignalSpy clicked(&card, &QPushButton::clicked);
    QTest::mouseClick(card.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 30));
    QTest::mouseClick(card.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(25, 34));
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_EQ(card.accessibleName(), QStringLiteral("New Order"));
    EXPECT_EQ(card.accessibleDescription(), QStringLiteral("Choose a contact."));
}

TEST(EmptyState, itsButtonsStandInTheMiddle)
{
    EmptyState state(QStringLiteral("tag"), QStringLiteral("No items yet"), QStringLiteral("Make one."));
    auto* import = new Button(QStringLiteral("Import…"));
    auto* make = new PrimaryButton(QStringLiteral("New Item"));
    state.addButton(import);
    state.addButton(make);
    state.resize(600, 400);
    show(state);
    EXPECT_LT(import->x(), make->x());
    EXPECT_NEAR((import->x() + make->geometry().right()) / 2, 300, 2);
}

TEST(ProgressCard, cancelAndEscapeAskToStopOnceAndTheCardStays)
{
    QMainWindow window;
    window.resize(800, 500);
    show(window);
    ProgressCard card(&window, QStringLiteral("Exporting"));
    card.setText(QStringLiteral("62 of 148"));
    card.setProgress(62, 148);
    card.open();
    EXPECT_EQ(card.findChild<QProgressBar*>()->value(), 62);
    QSignalSpy cancelled(&card, &ProgressCard::cancelPressed);
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    QTest::keyClick(&card, Qt::Key_Escape);
    EXPECT_EQ(cancelled.count(), 1);
    EXPECT_TRUE(card.wasCancelled());
    EXPECT_TRUE(card.isOpen());
    card.accept();
    EXPECT_FALSE(card.isOpen());
}

TEST(ProgressCard, workThatMustFinishCannotBeStopped)
{
    QMainWindow window;
    window.resize(800, 500);
    show(window);
    ProgressCard card(&window, QStringLiteral("Saving"), ProgressCard::Stopping::mustFinish);
    card.open();
    QTest::keyClick(&card, Qt::Key_Escape);
    EXPECT_FALSE(card.wasCancelled());
    EXPECT_TRUE(card.isOpen());
    EXPECT_EQ(card.findChild<QPushButton*>(), nullptr);
    card.accept();
}

TEST(KitAccessibility, anAlertIsADialogWithItsTitleAndText)
{
    AlertCard alert(nullptr, QStringLiteral("Out of Stock"), QStringLiteral("Add anyway?"), {}, AlertCard::Options());
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&alert);
    ASSERT_TRUE(face);
    EXPECT_EQ(face->role(), QAccessible::Dialog);
    EXPECT_EQ(face->text(QAccessible::Name), QStringLiteral("Out of Stock"));
    EXPECT_EQ(face->text(QAccessible::Description), QStringLiteral("Add anyway?"));
}

TEST(KitAccessibility, aMessageInPlaceIsAnAlertMessageNamedByItsText)
{
    MessageBar bar(MessageBar::Kind::warning, QStringLiteral("Not a number."));
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_TRUE(face);
    EXPECT_EQ(face->role(), QAccessible::AlertMessage);
    EXPECT_EQ(face->text(QAccessible::Name), QStringLiteral("Not a number."));
}
