// A page of text behind its field: what is not touched stays as it was stored, letter for letter.
#include "ui/PageText.h"

#include "UiTest.h"

#include <QPlainTextEdit>
#include <QTextBlock>

using namespace uitest;

namespace {

const QChar noBreak = QChar::Nbsp;

/// A text in a real field, edited at a place that is counted in what the field shows.
class PageOfText : public testing::Test {
protected:
    void show(const QString& stored)
    {
        m_text.setStored(stored);
        m_field.setPlainText(stored);
    }
    void replace(int from, int length, const QString& with)
    {
        QTextCursor cursor(m_field.document());
        cursor.setPosition(from);
        cursor.setPosition(from + length, QTextCursor::KeepAnchor);
        cursor.insertText(with);
        take();
    }
    void undo()
    {
        m_field.undo();
        take();
    }
    void take() { m_text.edit(m_field.document()->toRawText()); }
    QString stored() const { return m_text.stored(); }

    PageText m_text;
    QPlainTextEdit m_field;
};

} // namespace

TEST_F(PageOfText, aLetterTypedAtTheEndLeavesCarriageReturnsBeforeIt)
{
    show("Recurrence of Order 7\rof March");
    replace(30, 0, "!");
    EXPECT_EQ(stored(), QString("Recurrence of Order 7\rof March!"));
}

TEST_F(PageOfText, aLetterTypedAtTheStartLeavesAllThatFollows)
{
    show(QString("one\r\ntwo\rthree\nfour") + noBreak + "five" + QChar(QChar::LineSeparator) + "six");
    replace(0, 0, "x");
    EXPECT_EQ(stored(), QString("xone\r\ntwo\rthree\nfour") + noBreak + "five" + QChar(QChar::LineSeparator) + "six");
}

TEST_F(PageOfText, aLetterInTheMiddleIsReplacedBetweenPairsOfBreaks)
{
    // Shown as "a¶b¶c": b is the third.
    show("a\r\nb\r\nc");
    replace(2, 1, "B");
    EXPECT_EQ(stored(), QString("a\r\nB\r\nc"));
}

TEST_F(PageOfText, aBreakThatIsDeletedGoesWhole)
{
    show("a\r\nb\rc");
    replace(1, 1, "");
    EXPECT_EQ(stored(), QString("ab\rc"));
}

TEST_F(PageOfText, aBreakThatIsTypedIsALineFeed)
{
    show("ab\rc");
    replace(1, 0, "\n");
    EXPECT_EQ(stored(), QString("a\nb\rc"));
    replace(2, 0, QString(QChar::LineSeparator));
    EXPECT_EQ(stored(), QString("a\n\nb\rc"));
}

TEST_F(PageOfText, noBreakBlanksAreKeptTypedOnesToo)
{
    show(QString("10") + noBreak + "kg");
    replace(5, 0, QString(noBreak) + "net");
    EXPECT_EQ(stored(), QString("10") + noBreak + "kg" + noBreak + "net");
}

TEST_F(PageOfText, severalEditsAddUp)
{
    show("a\rb\rc");
    replace(0, 1, "A");
    replace(4, 1, "C");
    replace(2, 1, "");
    EXPECT_EQ(stored(), QString("A\r\rC"));
}

TEST_F(PageOfText, undoingBringsTheStoredTextBack)
{
    show("a\rb\r\nc");
    replace(1, 3, "");
    EXPECT_EQ(stored(), QString("ac"));
    undo();
    EXPECT_EQ(stored(), QString("a\rb\r\nc"));
}

TEST_F(PageOfText, everythingCanBeReplacedAndDeleted)
{
    show("a\rb");
    replace(0, 3, "new");
    EXPECT_EQ(stored(), QString("new"));
    replace(0, 3, "");
    EXPECT_EQ(stored(), QString());
    replace(0, 0, "x");
    EXPECT_EQ(stored(), QString("x"));
}

TEST_F(PageOfText, repeatedLettersAreNotCountedTwice)
{
    show("aaa");
    replace(3, 0, "a");
    EXPECT_EQ(stored(), QString("aaaa"));
    replace(1, 2, "");
    EXPECT_EQ(stored(), QString("aa"));
}

TEST_F(PageOfText, textBeyondTheFirstPlaneStaysWhole)
{
    show(QString::fromUtf8("\U0001F4E6\r\U0001F4E7"));
    // The two signs share their first half.
    replace(3, 2, QString::fromUtf8("\U0001F4E8"));
    EXPECT_EQ(stored(), QString::fromUtf8("\U0001F4E6\r\U0001F4E8"));
}
