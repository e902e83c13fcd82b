// The notepad on the screen.
#include "WithWindows.h"
#include "documents/rtf/RichText.h"
#include "support/Business.h"
#include "ui/kit/ColourTable.h"
#include "ui/kit/Fields.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/SearchField.h"
#include "ui/notepad/FormatBar.h"
#include "ui/notepad/NotepadText.h"
#include "ui/notepad/NotepadWindow.h"
#include "ui/notepad/ReadableColours.h"

#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QToolButton>

using namespace uitest;

namespace {

class NotepadOnScreen : public WithWindows<Business> {
protected:
    void launch()
    {
        startWithWindows();
        app().tips().form.close();
        settle();
    }
    void open()
    {
        child<QAction>(windows->main(), "notepad")->trigger();
        ASSERT_NE(window(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    }
    static NotepadWindow* window() { return seen<NotepadWindow>(); }
    static NotepadText* text() { return child<NotepadText>(*window(), "notepadText"); }
    static QString saved() { return child<QLabel>(*window(), "saved")->text(); }
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window()->focusWidget(), Qt::Key(key), modifiers);
    }
    static void select(int from, int to)
    {
        QTextCursor cursor = text()->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        text()->setTextCursor(cursor);
    }
    static QTextCharFormat formatAt(int position)
    {
        QTextCursor cursor(text()->document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }
    QByteArray onDisk() const { return readFile("notepad.rtfd/TXT.rtf"); }
    void putOnDisk(const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/notepad.rtfd"));
        writeFile("notepad.rtfd/TXT.rtf", bytes);
    }
    static QStringList bars()
    {
        QStringList texts;
        for (const MessageBar* bar : window()->findChildren<MessageBar*>()) {
            if (bar->isVisible())
                texts += bar->text();
        }
        return texts;
    }
};

} // namespace

TEST_F(NotepadOnScreen, comesByItsKeyAndTheKeyboardIsInItsText)
{
    launch();
    windows->main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&windows->main()));
    QTest::keyClick(&windows->main(), Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_NE(window(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    EXPECT_TRUE(text()->hasFocus());
    press(Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(NotepadOnScreen, whatIsTypedIsOnDiskTwoSecondsLaterEvenIfTheProgramDies)
{
    launch();
    open();
    EXPECT_EQ(saved(), QString());
    QTest::keyClicks(text(), "Ring Ada");
    EXPECT_EQ(saved(), QString("Not saved yet"));
    EXPECT_FALSE(onDisk().contains("Ring Ada"));
    // Going on with typing puts it off no further.
    QTest::qWait(1500);
    QTest::keyClicks(text(), " soon");
    ASSERT_TRUE(QTest::qWaitFor([] { return saved().startsWith("Saved "); }, 1500)) << saved().toStdString();
    EXPECT_TRUE(onDisk().contains("Ring Ada soon"));

    windows.reset();
    crash();
    launch();
    EXPECT_EQ(plainTextOf(app().notepad().document()), "Ring Ada soon");
}

TEST_F(NotepadOnScreen, closingTheWindowSavesAtOnce)
{
    launch();
    open();
    QTest::keyClicks(text(), "Ring Ada");
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(onDisk().contains("Ring Ada"));
    open();
    EXPECT_EQ(text()->toPlainText(), QString("Ring Ada"));
}

TEST_F(NotepadOnScreen, saysWhyItCannotBeSavedAndTriesAgain)
{
    launch();
    open();
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/notepad.rtfd/TXT.rtf"));
    QTest::keyClicks(text(), "Ring Ada");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(saved().startsWith("Not saved: ")) << saved().toStdString();
    EXPECT_TRUE(saved().contains("TXT.rtf")) << saved().toStdString();
    EXPECT_NE(app().unsavedReason(), QString());
    EXPECT_EQ(text()->toPlainText(), QString("Ring Ada"));

    ASSERT_TRUE(QDir(databaseFolder() + "/notepad.rtfd").removeRecursively());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(saved().startsWith("Saved ")) << saved().toStdString();
    EXPECT_TRUE(onDisk().contains("Ring Ada"));
    EXPECT_EQ(app().unsavedReason(), QString());
}

TEST_F(NotepadOnScreen, theKeysGiveTheChosenTextItsLookAndTheFileKeepsIt)
{
    launch();
    open();
    QTest::keyClicks(text(), "one two three");
    select(4, 7);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_I, Qt::ControlModifier);
    press(Qt::Key_U, Qt::ControlModifier);
    press(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(child<QAction>(*window(), "bold")->isChecked());
    EXPECT_TRUE(child<QAction>(*window(), "alignCentre")->isChecked());
    auto* size = child<ChoiceBox>(*window(), "size");
    EXPECT_EQ(size->currentText(), QString("12"));
    size->setFocus();
    QTest::keyClick(size, Qt::Key_End);
    QTest::keyClick(text(), Qt::Key_S, Qt::ControlModifier);

    windows.reset();
    restart();
    const RichText read = takeApart(app().notepad().document()).text;
    const auto& paragraph = std::get<RichParagraph>(read.blocks.at(0));
    EXPECT_EQ(paragraph.format.alignment(), Qt::AlignHCenter);
    ASSERT_EQ(paragraph.runs.size(), 3u);
    EXPECT_EQ(paragraph.runs[1].text, QString("two"));
    const QTextCharFormat two = paragraph.runs[1].format;
    EXPECT_EQ(two.fontWeight(), QFont::Bold);
    EXPECT_TRUE(two.fontItalic());
    EXPECT_TRUE(two.fontUnderline());
    EXPECT_EQ(two.fontPointSize(), 48);
    EXPECT_NE(paragraph.runs[0].format.fontWeight(), QFont::Bold);
}

TEST_F(NotepadOnScreen, aColourIsChosenAndTakenAwayAgain)
{
    launch();
    open();
    QTest::keyClicks(text(), "red");
    select(0, 3);
    QMenu* menu = child<QToolButton>(*window(), "colour")->menu();
    Q_EMIT menu->aboutToShow();
    menu->actions().at(1)->trigger();
    EXPECT_EQ(formatAt(0).foreground().color(), QColor(0xb3, 0x26, 0x1e));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(onDisk().contains("\\red179\\green38\\blue30;"));

    Q_EMIT menu->aboutToShow();
    menu->actions().at(0)->trigger();
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(onDisk().contains("\\red179"));
}

TEST_F(NotepadOnScreen, undoGoesBackToWhatIsSaved)
{
    putOnDisk("{\\rtf1 first}");
    launch();
    open();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text()->toPlainText(), QString("first")) << "reading it cannot be undone";
    QTest::keyClicks(text(), "x");
    EXPECT_TRUE(app().notepad().isChanged());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text()->toPlainText(), QString("first"));
    EXPECT_FALSE(app().notepad().isChanged());
}

TEST_F(NotepadOnScreen, findsWordsOnePlaceAfterTheOther)
{
    launch();
    open();
    QTest::keyClicks(text(), "oak, ash, oak, elm");
    press(Qt::Key_F, Qt::ControlModifier);
    auto* find = child<SearchField>(*window(), "find");
    ASSERT_TRUE(find->hasFocus());
    QTest::keyClicks(find, "oak");
    EXPECT_EQ(text()->textCursor().selectionStart(), 0) << "beyond the end it starts again";
    EXPECT_EQ(text()->extraSelections().size(), 2);
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(text()->textCursor().selectionStart(), 10);
    QTest::keyClick(find, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(text()->textCursor().selectionStart(), 0);

    QTest::keyClicks(find, "en");
    EXPECT_FALSE(text()->textCursor().hasSelection());
    EXPECT_TRUE(find->property("error").toBool());
    find->clear();
    EXPECT_FALSE(find->property("error").toBool());
    QTest::keyClick(find, Qt::Key_F3);
    EXPECT_FALSE(find->property("error").toBool()) << "nothing was looked for";
    QTest::keyClicks(find, "yew");
    EXPECT_TRUE(find->property("error").toBool());
    type(*find, "elm");
    EXPECT_EQ(text()->textCursor().selectedText(), QString("elm"));
    EXPECT_FALSE(find->property("error").toBool());
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    EXPECT_TRUE(text()->hasFocus());
}

TEST_F(NotepadOnScreen, copiesWithinItselfWithTheLookAndTakesWordsFromElsewhere)
{
    launch();
    open();
    QTest::keyClicks(text(), "bold");
    select(0, 4);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->data("text/rtf").contains("\\b"));
    press(Qt::Key_End);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text()->toPlainText(), QString("boldbold"));
    EXPECT_EQ(formatAt(6).fontWeight(), QFont::Bold);

    auto* strange = new QMimeData;
    strange->setHtml("<h1>Big <img src='http://example.org/a.png'> words</h1>");
    strange->setText("Big words");
    QApplication::clipboard()->setMimeData(strange);
    select(0, 8);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text()->toPlainText(), QString("Big words"));
    EXPECT_LE(formatAt(0).fontPointSize(), 12);
}

TEST_F(NotepadOnScreen, refusesPicturesAndSaysSo)
{
    launch();
    open();
    QTest::keyClicks(text(), "text");
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QApplication::clipboard()->setImage(picture);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text()->toPlainText(), QString("text"));
    QStringList words;
    for (const QLabel* label : window()->findChildren<QLabel*>())
        words += label->text();
    EXPECT_TRUE(words.contains("Only words can be put into the notepad; pictures that it has already stay."));
}

TEST_F(NotepadOnScreen, isReadOnlyWhileTheDefaultDatabaseIs)
{
    putOnDisk("{\\rtf1 first}");
    writeFile("lock.xml", document("<dict><key>reason</key><string>database open</string><key>user</key><string>bert</string></dict>"));
    launch();
    SheetStack::instance().cancelAll();
    open();
    EXPECT_EQ(bars(), QStringList("The notepad is in the default database, which is open for reading only."));
    QTest::keyClicks(text(), "mine ");
    EXPECT_EQ(text()->toPlainText(), QString("first"));
    EXPECT_FALSE(child<QAction>(*window(), "bold")->isEnabled());

    alerts.answer("Yes");
    app().session().unlockDatabase();
    EXPECT_TRUE(bars().isEmpty());
    QTest::keyClicks(text(), "mine ");
    EXPECT_EQ(text()->toPlainText(), QString("mine first"));
}

TEST_F(NotepadOnScreen, showsWhatIsWrongWithItsFileAndWhatItCouldRead)
{
    putOnDisk("{\\rtf1 half a no");
    launch();
    open();
    ASSERT_EQ(bars().size(), 1);
    EXPECT_TRUE(bars()[0].contains("it ends too early")) << bars()[0].toStdString();
    EXPECT_EQ(text()->toPlainText(), QString("half a no"));
}

TEST(ReadableColours, keepWhatCanBeReadAndMoveTheRestAsFarAsNeeded)
{
    const QColor red(0xb3, 0x26, 0x1e);
    EXPECT_EQ(ReadableColours::readable(red, Qt::white), red);
    for (const Shade shade : {Shade::light, Shade::dark}) {
        const QColor ground = colourOf(Colour::surface, shade);
        for (const QColor& colour : {QColor(Qt::black), QColor(Qt::white), red, QColor(Qt::yellow), QColor(Qt::darkBlue), ground}) {
            const QColor shown = ReadableColours::readable(colour, ground);
            EXPECT_GE(kittest::contrast(shown, ground), 4.5) << colour.name().toStdString() << " on " << ground.name().toStdString();
        }
    }
    // Still the same hue.
    EXPECT_NEAR(ReadableColours::readable(red, colourOf(Colour::surface, Shade::dark)).hslHueF(), red.hslHueF(), 0.02);
}

TEST_F(NotepadOnScreen, whatCannotBeChangedCanBeSearched)
{
    launch();
    open();
    auto* bar = window()->findChild<FormatBar*>();
    ASSERT_NE(bar, nullptr);
    bar->setEditable(false);
    EXPECT_FALSE(child<QAction>(*window(), "bold")->isEnabled());
    EXPECT_TRUE(bar->searchField()->isEnabled());
    bar->setEditable(true);
    EXPECT_TRUE(child<QAction>(*window(), "bold")->isEnabled());
}
