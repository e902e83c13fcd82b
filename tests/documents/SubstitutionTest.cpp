#include "documents/Substitution.h"

#include "Paperwork.h"
#include "storage/TableExport.h"

#include <gmock/gmock.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <QTextTable>

namespace {

constexpr const char* lineRemovers[] {"<contactadd2>", "<contactadd3>", "<contactcounty>", "<contact2add2>", "<contact2add3>",
    "<contact2county>", "<contactcompany>", "<contact2company>", "<contactjobtitle>", "<contact2jobtitle>", "<contacttitle>",
    "<contact2title>", "<contact:add2>", "<contact:add3>", "<contact:county>", "<contact:2add2>", "<contact:2add3>", "<contact2:county>",
    "<contact:company>", "<contact2:company>", "<contact:jobtitle>", "<contact2:jobtitle>", "<contact:title>", "<contact2:title>",
    "<contactsalutation>", "<contact2salutation>", "<contact:salutation>", "<contact2:salutation>", "<discountdescription>"};

class SubstitutionTest : public Paperwork {
protected:
    void write(const QString& text) { document->setPlainText(text); }
    std::string text() const { return plainTextOf(*document).toStdString(); }
    std::string replaced(const QString& in, const QString& tag, const QString& value)
    {
        write(in);
        substitution().replaceAllOccurencesOf(tag, value);
        return text();
    }
    Substitution substitution() { return Substitution(*document); }
    QTextCharFormat formatAtStartOf(const QString& words) const
    {
        QTextCursor found = document->find(words);
        EXPECT_FALSE(found.isNull()) << words.toStdString();
        found.setPosition(found.selectionStart() + 1);
        return found.charFormat();
    }
    const QTextTable* table() const
    {
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            if (const QTextTable* found = QTextCursor(block).currentTable())
                return found;
        }
        return nullptr;
    }
    std::unique_ptr<QTextDocument> document = makeSealedDocument();
};

// Every occurrence

TEST_F(SubstitutionTest, everyOccurrenceIsReplaced)
{
    EXPECT_EQ(replaced("<a> b <a><a>", "<a>", "x"), "x b xx");
}

TEST_F(SubstitutionTest, onlyTheExactTagIsReplaced)
{
    EXPECT_EQ(replaced("<Date> <date > <date>", "<date>", "x"), "<Date> <date > x");
}

TEST_F(SubstitutionTest, aTagThatIsNotThereChangesNothing)
{
    EXPECT_EQ(replaced("plain", "<a>", "x"), "plain");
}

TEST_F(SubstitutionTest, anEmptyValueTakesTheTagAway)
{
    EXPECT_EQ(replaced("a\n<net>\nb", "<net>", ""), "a\n\nb");
}

TEST_F(SubstitutionTest, aValueMayHaveLines)
{
    EXPECT_EQ(replaced("[<a>]", "<a>", "one\ntwo"), "[one\ntwo]");
}

TEST_F(SubstitutionTest, aValueIsTextAndNeverMarkup)
{
    EXPECT_EQ(replaced("[<a>]", "<a>", "<b>5 % \\1 &amp;</b>"), "[<b>5 % \\1 &amp;</b>]");
}

TEST_F(SubstitutionTest, whatAReplacementJoinsIsReplacedAgain)
{
    // Taking the inner one out leaves another.
    EXPECT_EQ(replaced("<n<net>et>!", "<net>", ""), "!");
    EXPECT_EQ(replaced("<n<n<net>et>et>!", "<net>", ""), "!");
    EXPECT_EQ(replaced("<nxt>", "x", "e"), "<net>");
}

TEST_F(SubstitutionTest, aValueThatHoldsItsOwnTagIsPutInOnce)
{
    EXPECT_EQ(replaced("<a> and <a>", "<a>", "see <a>!"), "see <a>! and see <a>!");
    EXPECT_EQ(replaced("<a>", "<a>", "<a>"), "<a>");
}

TEST_F(SubstitutionTest, anEmptyTagChangesNothing)
{
    EXPECT_EQ(replaced("plain", "", "x"), "plain");
}

TEST_F(SubstitutionTest, noTagIsLoggedAndChangesNothing)
{
    write("plain");
    substitution().replaceAllOccurencesOf(std::nullopt, QString("x"));
    EXPECT_EQ(text(), "plain");
    EXPECT_EQ(log, QStringList("replaceAllOccurencesOf: passed nil as find string"));
}

TEST_F(SubstitutionTest, noValueIsLoggedAndCountsAsEmpty)
{
    write("[<a>] <contactadd2>\nrest");
    substitution().replaceAllOccurencesOf(QString("<a>"), std::nullopt);
    substitution().replaceAllOccurencesOf(QString("<contactadd2>"), std::nullopt);
    EXPECT_EQ(text(), "[] rest");
    EXPECT_EQ(log,
        QStringList({"replaceAllOccurencesOf: passed nil as replace string for <a>",
            "replaceAllOccurencesOf: passed nil as replace string for <contactadd2>"}));
}

TEST_F(SubstitutionTest, aDocumentStopsGrowingAtSomePoint)
{
    write("<a><a><a>");
    substitution().replaceAllOccurencesOf(QString("<a>"), QString(12 * 1024 * 1024, 'x'));
    EXPECT_EQ(document->characterCount(), 24 * 1024 * 1024 + 4);
    EXPECT_TRUE(document->toPlainText().endsWith("x<a>"));
    EXPECT_TRUE(logged("the document grew too large at <a>"));
}

// Formats

TEST_F(SubstitutionTest, aValueLooksLikeTheTagItReplaces)
{
    document->setHtml("<p>plain <b><i>&lt;a&gt;</i></b> plain</p>");
    substitution().replaceAllOccurencesOf(QString("<a>"), QString("value"));
    EXPECT_EQ(formatAtStartOf("value").fontWeight(), QFont::Bold);
    EXPECT_TRUE(formatAtStartOf("value").fontItalic());
    EXPECT_EQ(formatAtStartOf("plain").fontWeight(), QFont::Normal);
}

TEST_F(SubstitutionTest, aTagOfTwoFormatsIsFoundAndGivesItsFirst)
{
    document->setHtml("<p>x <b>&lt;contact</b><i>name&gt;</i> y</p>");
    substitution().replaceAllOccurencesOf(QString("<contactname>"), QString("value"));
    EXPECT_EQ(text(), "x value y");
    EXPECT_EQ(formatAtStartOf("value").fontWeight(), QFont::Bold);
    EXPECT_FALSE(formatAtStartOf("value").fontItalic());
}

TEST_F(SubstitutionTest, aTagInATableIsReplaced)
{
    document->setHtml("<table><tr><td>&lt;a&gt;</td><td>b</td></tr></table>");
    substitution().replaceAllOccurencesOf(QString("<a>"), QString("value"));
    ASSERT_NE(table(), nullptr);
    EXPECT_EQ(table()->cellAt(0, 0).firstCursorPosition().block().text(), "value");
}

TEST_F(SubstitutionTest, aLinkStaysOneWhenItsTagIsReplaced)
{
    document->setHtml("<p><a href=\"http://example.com/\">&lt;a&gt;</a> x</p>");
    substitution().replaceAllOccurencesOf(QString("<a>"), QString("value"));
    EXPECT_EQ(formatAtStartOf("value").anchorHref(), "http://example.com/");
}

// Tags that take their line along

TEST_F(SubstitutionTest, twentyNineTagsTakeTheirLineAlong)
{
    ASSERT_EQ(std::size(lineRemovers), 29U);
    for (const char* tag : lineRemovers)
        EXPECT_EQ(replaced(QString("a\n%1\nb").arg(tag), tag, ""), "a\nb") << tag;
}

TEST_F(SubstitutionTest, orTheBlankBehindThem)
{
    for (const char* tag : lineRemovers)
        EXPECT_EQ(replaced(QString("a %1 b").arg(tag), tag, ""), "a b") << tag;
}

TEST_F(SubstitutionTest, butNotWhatStandsBeforeThemAndNeverMoreThanOne)
{
    EXPECT_EQ(replaced("a \n<contactadd2>\n\nb", "<contactadd2>", ""), "a \n\nb");
    EXPECT_EQ(replaced("<contactadd2>  b", "<contactadd2>", ""), " b");
    EXPECT_EQ(replaced("<contactadd2>\tb", "<contactadd2>", ""), "\tb");
    EXPECT_EQ(replaced("<contactadd2>\u00a0b", "<contactadd2>", ""), "\u00a0b");
    EXPECT_EQ(replaced("a\n<contactadd2>", "<contactadd2>", ""), "a\n");
    EXPECT_EQ(replaced("x<contactadd2>\ny", "<contactadd2>", ""), "xy");
}

TEST_F(SubstitutionTest, lineEndsGoBeforeBlanks)
{
    // The tag before a line end goes first with it, which puts the next line's start behind the tag in front of it.
    EXPECT_EQ(replaced("<contactadd2> <contactadd2>\nb", "<contactadd2>", ""), "b");
    EXPECT_EQ(replaced("<contactadd2><contactadd2>\n b", "<contactadd2>", ""), "b");
    EXPECT_EQ(replaced("<contactadd2><contactadd2>\n\nb", "<contactadd2>", ""), "b");
}

TEST_F(SubstitutionTest, severalLinesGo)
{
    EXPECT_EQ(replaced("a\n<contactadd2>\n<contactadd2>\nb\n<contactadd2>\n", "<contactadd2>", ""), "a\nb\n");
}

TEST_F(SubstitutionTest, otherTagsLeaveTheirLine)
{
    for (const char* tag : {"<contact2:add2>", "<contact2:add3>", "<contactadd1>", "<contact:add1>", "<contactname>", "<contactpostcode>",
             "<contactcountry>", "<contactitle>", "<contactphone>", "<balance>", "<payments>", "<description>"}) {
        EXPECT_EQ(replaced(QString("a\n%1\nb").arg(tag), tag, ""), "a\n\nb") << tag;
        EXPECT_EQ(replaced(QString("a %1 b").arg(tag), tag, ""), "a  b") << tag;
    }
}

TEST_F(SubstitutionTest, aValueKeepsLineAndBlank)
{
    EXPECT_EQ(replaced("a\n<contactadd2>\nb", "<contactadd2>", "x"), "a\nx\nb");
    EXPECT_EQ(replaced("<contacttitle> b", "<contacttitle>", " "), "  b");
}

TEST_F(SubstitutionTest, aLineAboveATableGoesToo)
{
    for (const auto& [before, after] : {std::pair("Mug\n<contactcounty>", "Mug"), std::pair("Mug\n<contactadd3>\n<contactcounty>", "Mug"),
             std::pair("Mug\nin <contactcounty>", "Mug\nin "), std::pair("<contactcounty>", "")}) {
        write(before);
        QTextCursor end(document.get());
        end.movePosition(QTextCursor::End);
        end.insertTable(1, 1)->cellAt(0, 0).firstCursorPosition().insertText("cell");
        substitution().replaceAllOccurencesOf(QString("<contactadd3>"), QString());
        substitution().replaceAllOccurencesOf(QString("<contactcounty>"), QString());
        ASSERT_NE(table(), nullptr) << before;
        EXPECT_EQ(table()->cellAt(0, 0).firstCursorPosition().block().text(), "cell");
        QTextCursor above(document.get());
        above.setPosition(table()->firstPosition() - 1, QTextCursor::KeepAnchor);
        EXPECT_EQ(above.selection().toPlainText(), after) << before;
    }
}

TEST_F(SubstitutionTest, aLineThatGoesLeavesTheNextOneAsItWas)
{
    document->setHtml("<p align=left>a</p><p align=left>&lt;contactadd2&gt;</p><p align=right>b</p>");
    substitution().replaceAllOccurencesOf(QString("<contactadd2>"), QString());
    EXPECT_EQ(text(), "a\nb");
    EXPECT_TRUE(document->find("b").block().blockFormat().alignment() & Qt::AlignRight);
}

// The table

TEST_F(SubstitutionTest, theFirstTagBecomesTheTableAndFurtherOnesStay)
{
    write("before\n<itemsordered>\nafter <itemsordered>");
    substitution().insertTable("<itemsordered>", rows, {});
    ASSERT_NE(table(), nullptr);
    EXPECT_EQ(table()->rows(), 4);
    EXPECT_EQ(table()->columns(), 2);
    EXPECT_EQ(table()->cellAt(0, 1).firstCursorPosition().block().text(), "Price");
    EXPECT_EQ(table()->cellAt(3, 0).firstCursorPosition().block().text(), "Plums");
    EXPECT_THAT(text(), testing::HasSubstr("after <itemsordered>"));
    EXPECT_THAT(text(), testing::StartsWith("before\n"));
    EXPECT_EQ(document->toPlainText().count("<itemsordered>"), 1);
}

TEST_F(SubstitutionTest, withoutItsTagThereIsNoTable)
{
    write("nothing");
    substitution().insertTable("<itemsordered>", rows, {});
    EXPECT_EQ(text(), "nothing");
    EXPECT_EQ(table(), nullptr);
}

TEST_F(SubstitutionTest, theStyleDressesTheTable)
{
    write("<itemsordered>");
    substitution().insertTable(
        "<itemsordered>", rows, "<style>td.alt{background:#f0f0ff} th{background:#eeeeee} td.total{color:#ff0000}</style>");
    ASSERT_NE(table(), nullptr);
    const auto background = [&](int row) { return table()->cellAt(row, 0).format().background(); };
    EXPECT_EQ(background(0).color(), QColor("#eeeeee"));
    EXPECT_EQ(background(1).style(), Qt::NoBrush);
    EXPECT_EQ(background(2).color(), QColor("#f0f0ff"));
    EXPECT_EQ(background(3).style(), Qt::NoBrush);
    EXPECT_EQ(formatAtStartOf("1.00").foreground().color(), QColor("#ff0000"));
    EXPECT_EQ(text().find("style"), std::string::npos);
}

TEST_F(SubstitutionTest, alternateRowsKeepTheirOwnColumnsStyle)
{
    write("<itemsordered>");
    substitution().insertTable("<itemsordered>", rows, "<style>td.alt{background:#f0f0ff} td.total{color:#ff0000}</style>");
    EXPECT_EQ(formatAtStartOf("2.50").foreground().color(), QColor("#ff0000"));
}

TEST_F(SubstitutionTest, theHeadRepeatsOnEveryPage)
{
    write("<itemsordered>");
    substitution().insertTable("<itemsordered>", rows, {});
    ASSERT_NE(table(), nullptr);
    EXPECT_EQ(table()->format().headerRowCount(), 1);
}

TEST_F(SubstitutionTest, aTableThatStoodBeforeKeepsItsOwnHead)
{
    document->setHtml("<table><tr><td>x</td></tr><tr><td>y</td></tr></table><p>&lt;itemsordered&gt;</p>");
    substitution().insertTable("<itemsordered>", rows, {});
    EXPECT_EQ(table()->format().headerRowCount(), 0);
}

TEST_F(SubstitutionTest, cellsShowMarkupOfWordsAndNothingElse)
{
    rows.cells = {{"<b>Bold</b> & co", "<script>x</script>"}, {"a < b", "</td></tr></table><table><tr><td>y"}};
    write("<itemsordered>");
    substitution().insertTable("<itemsordered>", rows, {});
    ASSERT_NE(table(), nullptr);
    EXPECT_EQ(table()->rows(), 3);
    EXPECT_EQ(table()->cellAt(1, 0).firstCursorPosition().block().text(), "Bold & co");
    EXPECT_EQ(formatAtStartOf("Bold").fontWeight(), QFont::Bold);
    EXPECT_EQ(table()->cellAt(1, 1).firstCursorPosition().block().text(), "<script>x</script>");
    EXPECT_EQ(table()->cellAt(2, 0).firstCursorPosition().block().text(), "a < b");
    EXPECT_EQ(table()->cellAt(2, 1).firstCursorPosition().block().text(), "</td></tr></table><table><tr><td>y");
}

TEST_F(SubstitutionTest, cellsLoadNothing)
{
    rows.cells = {{"<img src=/dev/zero>", "<a href=\"http://example.com/\">link</a>"}};
    write("<itemsordered>");
    substitution().insertTable("<itemsordered>", rows, {});
    EXPECT_THAT(text(), testing::HasSubstr("<img src=/dev/zero>"));
}

TEST_F(SubstitutionTest, aTagInACellIsNotFilledAgainByTheTable)
{
    rows.cells = {{"<itemsordered>", "1"}};
    write("[<itemsordered>]");
    substitution().insertTable("<itemsordered>", rows, {});
    ASSERT_NE(table(), nullptr);
    EXPECT_EQ(table()->cellAt(1, 0).firstCursorPosition().block().text(), "<itemsordered>");
}

// The table's text

TEST_F(SubstitutionTest, theTableAsTextHasItsFixedForm)
{
    EXPECT_EQ(getDataAsHTML(rows),
        "<table width=100%><tr><th class = item>Description</th><th class = total>Price</th></tr>"
        "<tr><td class = item>Apples</td><td class = total>1.00</td></tr>"
        "<tr><td class = \"item alt\">Pears</td><td class = \"total alt\">2.50</td></tr>"
        "<tr><td class = item>Plums</td><td class = total>3.75</td></tr></table><br />");
}

TEST_F(SubstitutionTest, aSingleRowHasNoAlternate)
{
    rows.cells.resize(1);
    EXPECT_THAT(getDataAsHTML(rows), testing::Not(testing::HasSubstr("alt")));
}

TEST_F(SubstitutionTest, noRowsLeaveTheHeads)
{
    rows.cells.clear();
    EXPECT_EQ(
        getDataAsHTML(rows), "<table width=100%><tr><th class = item>Description</th><th class = total>Price</th></tr></table><br />");
}

TEST_F(SubstitutionTest, hiddenColumnsStayAway)
{
    rows.list.columns[0].visible = false;
    rows.cells.resize(1);
    EXPECT_EQ(
        getDataAsHTML(rows), "<table width=100%><tr><th class = total>Price</th></tr><tr><td class = total>1.00</td></tr></table><br />");
}

TEST_F(SubstitutionTest, nothingIsEscapedInIt)
{
    rows.list.columns[0].heading = "A & <b>B</b>";
    rows.cells = {{"x < \"y\" & z", "1"}};
    EXPECT_THAT(getDataAsHTML(rows), testing::HasSubstr("<th class = item>A & <b>B</b></th>"));
    EXPECT_THAT(getDataAsHTML(rows), testing::HasSubstr("<td class = item>x < \"y\" & z</td>"));
}

TEST_F(SubstitutionTest, onlyMarkupOfWordsPassesIntoTheProgramsOwnTables)
{
    EXPECT_EQ(defusedCellText("<b>a</b> <BR/> <em>x</em>"), "<b>a</b> <BR/> <em>x</em>");
    EXPECT_EQ(defusedCellText("<table><td></td>"), "&lt;table>&lt;td>&lt;/td>");
    EXPECT_EQ(defusedCellText("<img src=x> <"), "&lt;img src=x> &lt;");
    EXPECT_EQ(defusedCellText("<bx><!-- <style>"), "&lt;bx>&lt;!-- &lt;style>");
    EXPECT_EQ(defusedCellText(""), "");
}

} // namespace
