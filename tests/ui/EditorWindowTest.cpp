// What every editor's window does: come and go with its form, and leave the decision to the form.
#include "ui/EditorWindow.h"

#include "UiTest.h"
#include "desktop/Form.h"
#include "ui/kit/Button.h"
#include "ui/kit/Panels.h"

#include <QAccessible>
#include <QVBoxLayout>

using namespace uitest;

namespace {

class NoteForm : public Form {
public:
    TextField words {*this, "words"};
    TextField place {*this, "place"};
    TextField copies {*this, "copies"};
    CommandField cancel {*this, "cancel"};
    CommandField save {*this, "save"};
};

class NoteWindow : public EditorWindow {
public:
    explicit NoteWindow(NoteForm& form, const char* frame = "NoteWindow") : EditorWindow(form, form.cancel, frame)
    {
        resize(400, 300);
        auto* column = new QVBoxLayout(this);
        for (const char* name : {"place", "words"}) {
            auto* line = new QLineEdit;
            line->setObjectName(name);
            column->addWidget(line);
        }
        auto* save = new PrimaryButton("Save");
        save->setObjectName("save");
        column->addWidget(save);
        auto* copies = new QLineEdit;
        copies->setObjectName("copies");
        column->addWidget(copies);
        column->addWidget(new FooterBar);
        setPassing("copies");
        bindForm();
        setFirstField("words");
    }
};

class Note : public testing::Test {
protected:
    Note()
    {
        form.setTitle("Note");
        form.cancel.run = [this] {
            ++cancels;
            if (agrees)
                form.close();
        };
        form.save.run = [this] { ++saves; };
    }
    /// The note in the footer.
    QString told() const
    {
        const auto* footer = window.findChild<FooterBar*>();
        return footer->findChild<Label*>()->text();
    }
    void write(const QString& words)
    {
        settle();
        type(*child<QLineEdit>(window, "words"), words);
    }
    void open()
    {
        form.open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    NoteForm form;
    NoteWindow window {form};
    int cancels = 0;
    int saves = 0;
    bool agrees = true;
};

} // namespace

TEST_F(Note, comesUpAndGoesWithItsForm)
{
    EXPECT_FALSE(window.isVisible());
    open();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.windowTitle(), QString("Note"));
    form.close();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Note, aWindowThatIsMadeLateShowsWhatItMissed)
{
    open();
    NoteWindow late(form, "LateNote");
    EXPECT_FALSE(late.isVisible());
    late.catchUp();
    EXPECT_TRUE(late.isVisible());
    EXPECT_EQ(late.windowTitle(), QString("Note"));
    form.close();
    EXPECT_FALSE(late.isVisible());
    late.catchUp();
    EXPECT_FALSE(late.isVisible());
}

TEST_F(Note, followsTheFormsTitle)
{
    open();
    form.setTitle("Another note");
    EXPECT_EQ(window.windowTitle(), QString("Another note"));
}

TEST_F(Note, openingItAgainBringsItToTheFront)
{
    open();
    QWidget other;
    show(other);
    ASSERT_FALSE(window.isActiveWindow());
    form.open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

TEST_F(Note, anotherRecordTakesThePlaceOfAChangedOneAtTheSecondTry)
{
    EXPECT_TRUE(form.isFreeForAnother()) << "nothing is open";
    open();
    EXPECT_TRUE(form.isFreeForAnother());
    write("milk");
    EXPECT_FALSE(form.isFreeForAnother());
    EXPECT_EQ(told(), QString("Not saved yet: opening another drops the changes"));
    EXPECT_TRUE(form.isFreeForAnother());
    EXPECT_EQ(told(), QString());
    EXPECT_TRUE(form.isFreeForAnother()) << "nothing was changed since";
    write("more milk");
    EXPECT_FALSE(form.isFreeForAnother());
}

TEST_F(Note, escapeCancels)
{
    open();
    child<QLineEdit>(window, "words")->setFocus();
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Note, onceSomethingWasTypedEscapeAsksToBePressedAgain)
{
    open();
    write("milk");
    EXPECT_EQ(told(), QString());
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 0);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(form.words.text(), QString("milk"));
    EXPECT_EQ(told(), QString("Esc again closes without saving"));
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Note, controlWAndTheCloseButtonAskToBeRepeatedAsWell)
{
    open();
    write("milk");
    QTest::keyClick(keyboard(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(told(), QString("Ctrl+W again closes without saving"));
    write("bread");
    EXPECT_EQ(told(), QString());
    window.close();
    EXPECT_EQ(told(), QString("Not saved yet: closing again drops the changes"));
    EXPECT_EQ(cancels, 0);
    window.close();
    EXPECT_EQ(cancels, 1);
}

TEST_F(Note, typingOnTakesTheWarningBack)
{
    open();
    write("milk");
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    write("bread");
    EXPECT_EQ(told(), QString());
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 0);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(Note, theNextRecordBeginsUnedited)
{
    open();
    write("milk");
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    form.close();
    open();
    EXPECT_EQ(told(), QString());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
}

TEST_F(Note, whatTheControllerFillsInIsNothingToLose)
{
    open();
    form.words.setText("milk");
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
}

TEST_F(Note, whatIsNoPartOfTheRecordIsNothingToLose)
{
    open();
    settle();
    type(*child<QLineEdit>(window, "copies"), "2");
    EXPECT_EQ(form.copies.text(), QString("2"));
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 1);
}

TEST_F(Note, theWindowsOwnCloseButtonCancelsToo)
{
    open();
    window.close();
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Note, staysWhenTheFormDoesNotLetGo)
{
    agrees = false;
    open();
    window.close();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(cancels, 2);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(Note, controlWCancelsToo)
{
    open();
    QTest::keyClick(keyboard(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Note, controlSAndControlReturnSave)
{
    open();
    QTest::keyClick(keyboard(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return saves == 1; }, 2'000));
    QTest::keyClick(keyboard(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(saves, 2);
    EXPECT_EQ(child<Button>(window, "save")->toolTip(), QString("Save (Ctrl+S)"));
}

TEST_F(Note, returnInAFieldNeitherSavesNorCloses)
{
    open();
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_EQ(saves, 0);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(Note, opensWithTheKeyboardInItsFirstFieldEveryTime)
{
    form.words.setText("milk");
    open();
    settle();
    auto* words = child<QLineEdit>(window, "words");
    EXPECT_EQ(window.focusWidget(), words);
    EXPECT_EQ(words->selectedText(), QString("milk"));
    child<QLineEdit>(window, "place")->setFocus();
    form.close();
    open();
    settle();
    EXPECT_EQ(window.focusWidget(), words);
}

TEST_F(Note, openingItWhileItIsOpenLeavesTheKeyboardWhereItIs)
{
    open();
    settle();
    auto* place = child<QLineEdit>(window, "place");
    place->setFocus();
    form.open();
    settle();
    EXPECT_EQ(window.focusWidget(), place);
}

TEST_F(Note, otherKeysAreNotItsBusiness)
{
    open();
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(cancels, 0);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(Note, remembersItsSizeUnderItsName)
{
    open();
    window.resize(500, 420);
    form.close();

    NoteForm nextForm;
    NoteWindow next(nextForm);
    nextForm.open();
    EXPECT_EQ(next.size(), QSize(500, 420));

    NoteForm otherForm;
    NoteWindow other(otherForm, "OtherWindow");
    otherForm.open();
    EXPECT_EQ(other.size(), QSize(400, 300));
}

TEST_F(Note, isAWindowToScreenReaders)
{
    open();
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Window);
    EXPECT_EQ(seen->text(QAccessible::Name), QString("Note"));
}
