// A form with a field of every kind, bound to a window with a widget of every kind.
#include "ui/FormBinder.h"

#include "UiTest.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/SegmentedChoice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

using namespace uitest;

namespace {

class EveryField : public Form {
public:
    TextField name {*this, "name"};
    TextField notes {*this, "notes"};
    TextField total {*this, "total"};
    TextField summary {*this, "summary"};
    FlagField paid {*this, "paid"};
    ChoiceField kind {*this, "kind"};
    ChoiceField unit {*this, "unit"};
    CommandField save {*this, "save"};
    TextField absent {*this, "absent"};
};

class BoundForm : public testing::Test {
protected:
    BoundForm()
    {
        m_column = new QVBoxLayout(&m_window);
        m_name = add<QLineEdit>("name");
        m_notes = add<QPlainTextEdit>("notes");
        m_total = add<Figure>("total");
        m_summary = add<QLabel>("summary");
        m_paid = add<QCheckBox>("paid");
        m_kind = add<ChoiceBox>("kind");
        m_unit = add<SegmentedChoice>("unit", QStringList());
        m_save = add<QPushButton>("save");
        m_nameLabel = new QLabel("Name");
        m_column->addWidget(m_nameLabel);
        m_form.kind.setTitles({"Person", "Company"});
        m_form.unit.setTitles({"%", "£"});
    }

    void bind()
    {
        m_binder = new FormBinder(m_form, &m_window);
        show(m_window);
    }

    void connectEdited(int& told) const
    {
        QObject::connect(m_binder, &FormBinder::edited, [&told] { ++told; });
    }

    template <class Widget, class... Arguments>
    Widget* add(const char* name, Arguments&&... arguments)
    {
        auto* widget = new Widget(std::forward<Arguments>(arguments)...);
        widget->setObjectName(QString::fromLatin1(name));
        m_column->addWidget(widget);
        return widget;
    }

    EveryField m_form;
    QWidget m_window;
    QVBoxLayout* m_column;
    QLineEdit* m_name;
    QPlainTextEdit* m_notes;
    Figure* m_total;
    QLabel* m_summary;
    QCheckBox* m_paid;
    ChoiceBox* m_kind;
    SegmentedChoice* m_unit;
    QPushButton* m_save;
    QLabel* m_nameLabel;
    FormBinder* m_binder = nullptr;
};

} // namespace

TEST_F(BoundForm, showsWhatTheFormHeldBeforeItWasBound)
{
    m_form.name.setText("Ada");
    m_form.notes.setText("one\ntwo");
    m_form.paid.setOn(true);
    m_form.kind.setIndex(1);
    m_form.unit.setIndex(1);
    bind();
    EXPECT_EQ(m_name->text(), QString("Ada"));
    EXPECT_EQ(m_notes->toPlainText(), QString("one\ntwo"));
    EXPECT_TRUE(m_paid->isChecked());
    EXPECT_EQ(m_kind->currentText(), QString("Company"));
    EXPECT_EQ(m_unit->index(), 1);
}

TEST_F(BoundForm, whatACommandChangedIsUndoneLikeTyping)
{
    int told = 0;
    m_form.save.run = [this] { m_form.name.setText("ADA"); };
    m_form.open();
    bind();
    connectEdited(told);
    type(*m_name, "ada");
    ASSERT_EQ(told, 3);
    press(*m_save);
    EXPECT_EQ(m_name->text(), QString("ADA"));
    EXPECT_EQ(told, 3) << "nobody typed it";
    m_name->setFocus();
    QTest::keyClick(m_name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_name->text(), QString("ada"));
    EXPECT_EQ(m_form.name.text(), QString("ada"));
    m_name->redo();
    EXPECT_EQ(m_form.name.text(), QString("ADA"));
}

TEST_F(BoundForm, whatWasTypedForOneRecordIsNotUndoneInTheNext)
{
    m_form.open();
    bind();
    type(*m_name, "Ada");
    m_form.close();
    m_form.name.setText("Ada");
    m_form.open();
    m_name->setFocus();
    QTest::keyClick(m_name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_form.name.text(), QString("Ada"));
    m_form.name.setText("Eve");
    QTest::keyClick(m_name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_form.name.text(), QString("Eve")) << "no command changed it";
}

TEST_F(BoundForm, showsWhatTheControllerChangesLater)
{
    bind();
    m_form.name.setText("Ada");
    m_form.notes.setText("one");
    m_form.total.setText("12.50");
    m_form.summary.setText("all well");
    m_form.paid.setOn(true);
    m_form.kind.setTitle("Company");
    m_form.unit.setIndex(1);
    EXPECT_EQ(m_name->text(), QString("Ada"));
    EXPECT_EQ(m_notes->toPlainText(), QString("one"));
    EXPECT_EQ(m_total->text(), QString("12.50"));
    EXPECT_EQ(m_summary->text(), QString("all well"));
    EXPECT_TRUE(m_paid->isChecked());
    EXPECT_EQ(m_kind->currentIndex(), 1);
    EXPECT_EQ(m_unit->index(), 1);
}

TEST_F(BoundForm, handsEveryKeystrokeToTheFormAtOnce)
{
    bind();
    QStringList seen;
    m_form.name.onEdited = [&] { seen += m_form.name.text(); };
    type(*m_name, "Ada");
    EXPECT_EQ(seen, QStringList({"A", "Ad", "Ada"}));
    m_notes->setFocus();
    QTest::keyClicks(m_notes, "hi");
    QTest::keyClick(m_notes, Qt::Key_Return);
    EXPECT_EQ(m_form.notes.text(), QString("hi\n"));
}

TEST_F(BoundForm, doesNotTakeItsOwnShowingForTyping)
{
    bind();
    int edits = 0;
    for (FormField* field : m_form.fields())
        field->onEdited = [&] { ++edits; };
    m_form.name.setText("Ada");
    m_form.notes.setText("one");
    m_form.paid.setOn(true);
    m_form.kind.setIndex(1);
    m_form.kind.setTitles({"Person", "Company", "Club"});
    m_form.unit.setIndex(1);
    EXPECT_EQ(edits, 0);
}

TEST_F(BoundForm, leavesTheCursorWhereItIsWhileThePersonTypesInTheMiddle)
{
    m_form.name.setText("Aa");
    bind();
    m_name->setFocus();
    m_name->setCursorPosition(1);
    QTest::keyClicks(m_name, "d");
    EXPECT_EQ(m_form.name.text(), QString("Ada"));
    EXPECT_EQ(m_name->cursorPosition(), 2);
}

TEST_F(BoundForm, ticksAndUnticks)
{
    bind();
    m_paid->setFocus();
    QTest::keyClick(m_paid, Qt::Key_Space);
    EXPECT_TRUE(m_form.paid.isOn());
    QTest::keyClick(m_paid, Qt::Key_Space);
    EXPECT_FALSE(m_form.paid.isOn());
}

TEST_F(BoundForm, choosesWithTheKeyboard)
{
    m_form.kind.setIndex(0);
    m_form.unit.setIndex(0);
    bind();
    m_kind->setFocus();
    QTest::keyClick(m_kind, Qt::Key_Down);
    EXPECT_EQ(m_form.kind.title(), QString("Company"));
    QTest::mouseClick(m_unit->findChildren<QToolButton*>()[1], Qt::LeftButton);
    EXPECT_EQ(m_form.unit.index(), 1);
}

TEST_F(BoundForm, showsThatNothingIsChosen)
{
    m_form.kind.setIndex(-1);
    bind();
    EXPECT_EQ(m_kind->currentIndex(), -1);
    m_form.kind.setIndex(1);
    m_form.kind.setTitles({"Person"});
    EXPECT_EQ(m_kind->currentIndex(), -1);
    EXPECT_EQ(m_kind->count(), 1);
}

TEST_F(BoundForm, offersTheTitlesTheFormHasNow)
{
    m_form.kind.setIndex(1);
    bind();
    m_form.kind.setTitles({"Company", "Club"});
    EXPECT_EQ(m_kind->count(), 2);
    EXPECT_EQ(m_kind->currentText(), QString("Company"));
    m_form.unit.setTitles({"%", "€"});
    EXPECT_EQ(m_unit->titles(), QStringList({"%", "€"}));
}

TEST_F(BoundForm, runsACommandAfterWhatWasTypedBefore)
{
    bind();
    QString saved;
    m_form.save.run = [&] { saved = m_form.name.text(); };
    type(*m_name, "Ada");
    press(*m_save);
    EXPECT_EQ(saved, QString("Ada"));
}

TEST_F(BoundForm, aShortcutTakesTheCellThatIsBeingEdited)
{
    auto* table = add<QTableView>("table");
    QStandardItemModel lines(1, 1);
    table->setModel(&lines);
    bind();
    m_save->setShortcut(QKeySequence("Ctrl+S"));
    QString saved = "nothing";
    m_form.save.run = [&] { saved = lines.item(0, 0) ? lines.item(0, 0)->text() : QString(); };

    table->setCurrentIndex(lines.index(0, 0));
    table->edit(lines.index(0, 0));
    QWidget* editor = QApplication::focusWidget();
    ASSERT_TRUE(qobject_cast<QLineEdit*>(editor)) << "the cell is not being edited";
    QTest::keyClicks(editor, "3");
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
    // A button pressed by its key is seen going down first.
    EXPECT_TRUE(QTest::qWaitFor([&] { return saved != "nothing"; }, 2'000));
    EXPECT_EQ(saved, QString("3"));
}

TEST_F(BoundForm, disablesHidesAndShowsAgain)
{
    bind();
    m_form.name.setEnabled(false);
    m_form.save.setVisible(false);
    EXPECT_FALSE(m_name->isEnabled());
    EXPECT_FALSE(m_save->isVisible());
    m_form.name.setEnabled(true);
    m_form.save.setVisible(true);
    EXPECT_TRUE(m_name->isEnabled());
    EXPECT_TRUE(m_save->isVisible());
}

TEST_F(BoundForm, cannotBeTypedIntoWhereTheFormSaysSo)
{
    m_form.name.setText("fixed");
    bind();
    m_form.name.setReadOnly(true);
    m_name->setFocus();
    QTest::keyClicks(m_name, "x");
    EXPECT_EQ(m_name->text(), QString("fixed"));
    m_form.name.setReadOnly(false);
    m_name->end(false);
    QTest::keyClicks(m_name, "x");
    EXPECT_EQ(m_form.name.text(), QString("fixedx"));
}

TEST_F(BoundForm, aFigureStaysAFigureWhateverTheFormSays)
{
    bind();
    m_form.total.setReadOnly(false);
    EXPECT_TRUE(m_total->isReadOnly());
}

TEST_F(BoundForm, aCaptionStandsOnTheLabelAndNamesTheFieldForScreenReaders)
{
    m_nameLabel->setBuddy(m_name);
    bind();
    m_binder->bindCaption("name", m_nameLabel);
    EXPECT_EQ(m_nameLabel->text(), QString("Name"));
    m_form.name.setCaption("Company name");
    EXPECT_EQ(m_nameLabel->text(), QString("Company name"));
    EXPECT_EQ(m_name->accessibleName(), QString("Company name"));
    m_form.name.setVisible(false);
    EXPECT_FALSE(m_nameLabel->isVisible());
    EXPECT_FALSE(m_name->isVisible());
}

TEST_F(BoundForm, aCaptionIsTheTextOfACheckBoxOrButton)
{
    bind();
    m_paid->setText("Paid");
    m_form.paid.setCaption("Order placed");
    m_form.save.setCaption("Keep");
    EXPECT_EQ(m_paid->text(), QString("Order placed"));
    EXPECT_EQ(m_save->text(), QString("Keep"));
}

TEST_F(BoundForm, companionsComeAndGoWithTheirField)
{
    bind();
    m_binder->bindVisibility("paid", m_nameLabel);
    m_form.paid.setVisible(false);
    EXPECT_FALSE(m_nameLabel->isVisible());
    m_form.paid.setVisible(true);
    EXPECT_TRUE(m_nameLabel->isVisible());
}

TEST_F(BoundForm, putsTheKeyboardWhereTheFormWantsIt)
{
    m_form.name.setText("Ada");
    bind();
    m_save->setFocus();
    m_form.focus(m_form.name);
    settle();
    EXPECT_TRUE(m_name->hasFocus());
    EXPECT_EQ(m_name->selectedText(), QString("Ada"));
}

TEST_F(BoundForm, oneFieldCanBeShownInTwoPlaces)
{
    auto* second = add<QLineEdit>("name");
    bind();
    type(*m_name, "Ada");
    EXPECT_EQ(second->text(), QString("Ada"));
    type(*second, "Eve");
    EXPECT_EQ(m_name->text(), QString("Eve"));
}

TEST_F(BoundForm, aWidgetThatIsGoneIsForgotten)
{
    bind();
    delete m_name;
    m_form.name.setText("Ada");
    m_form.focus(m_form.name);
    settle();
    EXPECT_EQ(m_form.name.text(), QString("Ada"));
}

TEST_F(BoundForm, aFieldThatTheWindowLacksKeepsItsValue)
{
    m_form.absent.setText("kept");
    bind();
    m_form.absent.setText("still kept");
    EXPECT_EQ(m_form.absent.text(), QString("still kept"));
}

TEST_F(BoundForm, oneLetterLeavesTheRestOfAPageAsItWasStored)
{
    const QString stored = QString("Recurrence of Order 7\r\nfor 10") + QChar(QChar::Nbsp) + "kg\rby hand";
    m_form.notes.setText(stored);
    bind();
    m_notes->setFocus();
    m_notes->moveCursor(QTextCursor::End);
    QTest::keyClicks(m_notes, "!");
    EXPECT_EQ(m_form.notes.text(), stored + "!");
    QTest::keyClick(m_notes, Qt::Key_Backspace);
    EXPECT_EQ(m_form.notes.text(), stored);
}

TEST_F(BoundForm, theCursorStaysInAPageWithUnusualBreaks)
{
    m_form.notes.setText("one\rtwo");
    bind();
    m_notes->setFocus();
    m_notes->moveCursor(QTextCursor::Start);
    QTest::keyClicks(m_notes, "ab");
    EXPECT_EQ(m_form.notes.text(), QString("abone\rtwo"));
    EXPECT_EQ(m_notes->textCursor().position(), 2);
}

TEST_F(BoundForm, aLineLongerThanFieldsUsuallyAllowKeepsItsEnd)
{
    const QString longName(40'000, 'x');
    m_form.name.setText(longName + "end");
    bind();
    m_name->setFocus();
    m_name->setCursorPosition(0);
    QTest::keyClicks(m_name, "a");
    EXPECT_EQ(m_form.name.text().size(), 40'004);
    EXPECT_TRUE(m_form.name.text().endsWith("xend"));
}

TEST_F(BoundForm, tellsOfWhatThePersonEditsOnly)
{
    bind();
    QStringList edited;
    QObject::connect(m_binder, &FormBinder::edited, &m_window, [&edited](const FormField* field) { edited += field->name(); });
    m_form.name.setText("Ada");
    m_form.notes.setText("one");
    m_form.kind.setIndex(1);
    m_form.paid.setOn(true);
    EXPECT_EQ(edited, QStringList());
    QTest::keyClicks(m_name, "x");
    QTest::keyClicks(m_notes, "y");
    m_paid->click();
    QTest::keyClick(m_kind, Qt::Key_Up);
    EXPECT_EQ(edited, QStringList({"name", "notes", "paid", "kind"}));
}

TEST_F(BoundForm, aLongTextIsSeenFromItsBeginningUnlessItIsBeingTyped)
{
    const QString longName = QString("Donaudampfschifffahrtsgesellschaft ").repeated(20);
    bind();
    m_notes->setFocus();
    m_form.name.setText(longName);
    EXPECT_EQ(m_name->cursorPosition(), 0);
    m_name->setFocus();
    m_name->end(false);
    QTest::keyClicks(m_name, "x");
    EXPECT_EQ(m_name->cursorPosition(), longName.size() + 1);
    m_notes->setFocus();
    settle();
    EXPECT_EQ(m_name->cursorPosition(), 0);
}

TEST_F(BoundForm, anotherWindowInFrontLeavesThePlaceWhereOneTyped)
{
    bind();
    m_name->setFocus();
    QTest::keyClicks(m_name, "Ada");
    QWidget other;
    show(other);
    settle();
    EXPECT_EQ(m_name->cursorPosition(), 3);
}

// Values that cannot be used

namespace {

/// A form of two rows, as the editors lay them out.
class FaultyForm : public testing::Test {
protected:
    FaultyForm()
    {
        m_grid = new FormGrid;
        m_name = new QLineEdit;
        m_name->setObjectName("name");
        m_total = new QLineEdit;
        m_total->setObjectName("total");
        m_grid->addRow("Name", m_name);
        m_grid->addRow("Total", {new QPushButton("Work out"), m_total});
        auto* column = new QVBoxLayout(&m_window);
        column->addLayout(m_grid);
        column->addStretch(1);
        m_window.resize(420, 300);
        m_binder = new FormBinder(m_form, &m_window);
        show(m_window);
    }
    /// The notes that can be seen.
    QList<QLabel*> notes() const
    {
        QList<QLabel*> seen = m_window.findChildren<QLabel*>();
        seen.removeIf([](const QLabel* label) { return !label->isVisible() || label->property("tone") != "error"; });
        return seen;
    }

    EveryField m_form;
    QWidget m_window;
    FormGrid* m_grid;
    QLineEdit* m_name;
    QLineEdit* m_total;
    FormBinder* m_binder;
};

} // namespace

TEST_F(FaultyForm, aFaultIsSeenBelowItsFieldPointedAtAndReadAloud)
{
    m_form.total.setFault("This is no total.");
    settle();
    EXPECT_EQ(m_total->property("error").toString(), QString("true"));
    EXPECT_EQ(m_total->toolTip(), QString("This is no total."));
    EXPECT_EQ(m_total->accessibleDescription(), QString("This is no total."));
    ASSERT_EQ(notes().size(), 1);
    EXPECT_EQ(notes()[0]->text(), QString("This is no total."));
    EXPECT_GE(notes()[0]->mapTo(&m_window, QPoint()).y(), m_total->mapTo(&m_window, QPoint(0, m_total->height())).y());
    EXPECT_EQ(m_name->property("error").toString(), QString());
}

TEST_F(FaultyForm, aFaultThatIsMendedLeavesNothingBehind)
{
    m_form.name.setFault("Nobody is called that.");
    settle();
    const int totalBelowNote = m_total->mapTo(&m_window, QPoint()).y();
    m_form.name.setFault({});
    settle();
    EXPECT_EQ(m_name->property("error").toString(), QString("false"));
    EXPECT_EQ(m_name->toolTip(), QString());
    EXPECT_EQ(m_name->accessibleDescription(), QString());
    EXPECT_TRUE(notes().isEmpty());
    EXPECT_LT(m_total->mapTo(&m_window, QPoint()).y(), totalBelowNote);
    // Two rows as near to each other as if there had never been a note.
    EXPECT_EQ(m_total->mapTo(&m_window, QPoint()).y(), m_name->mapTo(&m_window, QPoint(0, m_name->height())).y() + 8);
}

TEST_F(FaultyForm, theSentenceFollowsAndOneNoteIsEnough)
{
    m_form.name.setFault("Too long.");
    m_form.name.setFault("Far too long.");
    ASSERT_EQ(notes().size(), 1);
    EXPECT_EQ(notes()[0]->text(), QString("Far too long."));
    m_form.total.setFault("Too much.");
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(FaultyForm, theNoteComesAndGoesWithItsField)
{
    m_form.name.setFault("Too long.");
    m_form.name.setVisible(false);
    EXPECT_TRUE(notes().isEmpty());
    m_form.name.setVisible(true);
    EXPECT_EQ(notes().size(), 1);
}

TEST_F(BoundForm, outsideAFormsRowsAFaultIsStillMarkedAndPointedAt)
{
    bind();
    m_form.name.setFault("Nobody is called that.");
    m_form.notes.setFault("Too much to say.");
    EXPECT_EQ(m_name->property("error").toString(), QString("true"));
    EXPECT_EQ(m_name->toolTip(), QString("Nobody is called that."));
    EXPECT_EQ(m_notes->accessibleDescription(), QString("Too much to say."));
}
