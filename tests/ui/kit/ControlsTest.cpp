// The smaller controls, each by its own rules.
#include "KitTest.h"

#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/FormGrid.h"
#include "ui/kit/IconButton.h"
#include "ui/kit/Label.h"
#include "ui/kit/Look.h"
#include "ui/kit/PageHeader.h"
#include "ui/kit/PickList.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SegmentedChoice.h"
#include "ui/kit/SideBar.h"
#include "ui/kit/ToolBar.h"
#include "ui/kit/UnderlineTabs.h"

#include <QAction>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>

using namespace kittest;

TEST(Button, eachKindHasItsGroundAndTextAndIsThirtyPixelsHigh)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* normal = new Button(QStringLiteral("Print"));
    auto* primary = new PrimaryButton(QStringLiteral("Save"));
    auto* danger = new DangerButton(QStringLiteral("Delete"));
    auto* text = new TextButton(QStringLiteral("Copy"));
    for (Button* button : QList<Button*> {normal, primary, danger, text})
        column->addWidget(button);
    show(window);
    EXPECT_TRUE(alike(picture(*normal).pixelColor(8, 8), QColor(0xffffff)));
    EXPECT_TRUE(alike(picture(*primary).pixelColor(8, 8), QColor(0x2a62d6)));
    EXPECT_TRUE(contains(picture(*danger), QColor(0xb02a22)));
    EXPECT_TRUE(contains(picture(*text), QColor(0x2156c4)));
    for (const Button* button : QList<Button*> {normal, primary, danger, text})
        EXPECT_EQ(button->height(), 30);
}

TEST(Button, aKindChangedOnTheScreenShowsAtOnce)
{
    Button button(QStringLiteral("Save"));
    show(button);
    EXPECT_TRUE(alike(picture(button).pixelColor(8, 8), QColor(0xffffff)));
    button.setKind(Button::Kind::primary);
    EXPECT_TRUE(alike(picture(button).pixelColor(8, 8), QColor(0x2a62d6)));
}

TEST(Button, tallOnesAreFortyFourPixelsHigh)
{
    Button button(QStringLiteral("Full amount"));
    button.setSize(Button::Size::tall);
    EXPECT_EQ(button.sizeHint().height(), 44);
}

TEST(Button, anIconTakesTheColourOfItsButtonAndLeavesTheTextAlone)
{
    PrimaryButton button(QStringLiteral("Print"));
    button.setGlyph(QStringLiteral("document-print"));
    EXPECT_EQ(button.text(), QStringLiteral("Print"));
    EXPECT_TRUE(contains(button.icon().pixmap(QSize(16, 16)).toImage(), Qt::white));
    button.setKind(Button::Kind::text);
    EXPECT_TRUE(contains(button.icon().pixmap(QSize(16, 16)).toImage(), QColor(0x2156c4)));
}

TEST(Button, itsKeysPressItAndAreToldInItsTooltip)
{
    QWidget window;
    Button save(QStringLiteral("Save"), &window);
    save.setKeys(QKeySequence(QStringLiteral("Ctrl+S")));
    show(window);
    int presses = 0;
    QObject::connect(&save, &QPushButton::clicked, &window, [&] { ++presses; });
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return presses == 1; }, 2'000));
    EXPECT_EQ(save.toolTip(), QStringLiteral("Save (Ctrl+S)"));
}

TEST(IconButton, itsNameIsReadAndShown)
{
    const IconButton button(QStringLiteral("list-add"), QStringLiteral("Add a rate"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Add a rate"));
    EXPECT_EQ(button.toolTip(), QStringLiteral("Add a rate"));
    EXPECT_TRUE(button.focusPolicy() & Qt::TabFocus);
}

TEST(Label, neverReadsMarkup)
{
    const Label label(QStringLiteral("<b>x</b>"));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST(ElidedLabel, aLongHeadingDoesNotWidenItsWindow)
{
    const ElidedLabel label(QStringLiteral("A very long name of a company ").repeated(20), LabelSize::heading);
    EXPECT_LT(label.minimumSizeHint().width(), 40);
}

TEST(NumberField, isRightAlignedAndKnowsTwoLargerSizes)
{
    NumberField field;
    EXPECT_TRUE(field.alignment() & Qt::AlignRight);
    field.ensurePolished();
    EXPECT_EQ(field.sizeHint().height(), 30);
    field.setSize(NumberField::Size::big);
    EXPECT_EQ(field.sizeHint().height(), 48);
}

TEST(Figure, hasNoBoxUntilTheKeyboardIsOnItAndCannotBeTypedInto)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* figure = new Figure(QStringLiteral("337.50"));
    auto* other = new QLineEdit;
    column->addWidget(figure);
    column->addWidget(other);
    show(window);
    other->setFocus();
    EXPECT_EQ(picture(window).pixelColor(figure->geometry().left() + 20, figure->geometry().top()), picture(window).pixelColor(1, 1));
    figure->setFocus();
    EXPECT_TRUE(alike(picture(window).pixelColor(figure->geometry().left() + 20, figure->geometry().top()), QColor(0x2a62d6)));
    QTest::keyClick(figure, Qt::Key_9);
    EXPECT_EQ(figure->text(), QStringLiteral("337.50"));
}

TEST(Figure, standsOnTheRightEdgeOfTheFieldsBelowIt)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* figure = new Figure(QStringLiteral("12.00"));
    auto* field = new NumberField;
    field->setText(QStringLiteral("12.00"));
    column->addWidget(figure);
    column->addWidget(field);
    show(window);
    window.setFocus();
    figure->clearFocus();
    const auto lastInk = [](QWidget& widget) {
        const QImage image = picture(widget);
        for (int x = image.width() - 4; x > 0; --x) {
            for (int y = 6; y < 24; ++y) {
                if (luminance(image.pixelColor(x, y)) < 0.3 && image.pixelColor(x, y).alpha() > 200)
                    return x;
            }
        }
        return 0;
    };
    EXPECT_EQ(lastInk(*figure), lastInk(*field));
}

TEST(ChoiceBox, theWheelTurnsItOnlyWithTheKeyboardOnIt)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* box = new ChoiceBox({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    auto* field = new QLineEdit;
    column->addWidget(box);
    column->addWidget(field);
    show(window);
    const auto turn = [&] {
        QWheelEvent wheel(
            QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
    };
    field->setFocus();
    turn();
    EXPECT_EQ(box->currentIndex(), 0);
    box->setFocus();
    turn();
    EXPECT_EQ(box->currentIndex(), 1);
}

TEST(Look, aFaultIsShownAndTakenAway)
{
    QLineEdit field(QStringLiteral("12.5%"));
    show(field);
    look::setFault(&field, look::Fault::wrong);
    EXPECT_TRUE(contains(picture(field), QColor(0xb02a22)));
    look::setFault(&field, look::Fault::none);
    EXPECT_FALSE(contains(picture(field), QColor(0xb02a22)));
}

TEST(SearchField, theClearButtonStandsThereOnlyWithText)
{
    SearchField field(QStringLiteral("Search items"));
    QAction* clear = field.actions().constLast();
    EXPECT_FALSE(clear->isVisible());
    field.setText(QStringLiteral("oak"));
    EXPECT_TRUE(clear->isVisible());
    clear->trigger();
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(clear->isVisible());
    EXPECT_EQ(field.accessibleName(), QStringLiteral("Search items"));
}

TEST(SearchField, escapeEmptiesItAndThenLeavesIt)
{
    SearchField field(QStringLiteral("Search"));
    field.setText(QStringLiteral("oak"));
    QSignalSpy abandoned(&field, &SearchField::abandoned);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(abandoned.count(), 0);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(abandoned.count(), 1);
}

TEST(SearchField, aWindowThatClosesWithEscapeWaitsUntilItIsEmpty)
{
    QWidget window;
    SearchField field(QStringLiteral("Search"), &window);
    QAction close(&window);
    close.setShortcut(Qt::Key_Escape);
    window.addAction(&close);
    QSignalSpy closed(&close, &QAction::triggered);
    show(window);
    field.setFocus();
    QTest::keyClicks(&field, "oak");

    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(closed.count(), 0);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(closed.count(), 1);
}

TEST(SearchField, arrowKeysMoveInTheListItSteersAndLettersStay)
{
    QListWidget list;
    list.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    list.setCurrentRow(0);
    SearchField field(QStringLiteral("Search"));
    field.steer(&list);
    show(field);
    QTest::keyClick(&field, Qt::Key_Down);
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 2);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(list.currentRow(), 1);
    QTest::keyClick(&field, Qt::Key_C);
    EXPECT_EQ(field.text(), QStringLiteral("c"));
    EXPECT_EQ(list.currentRow(), 1);
}

TEST(SegmentedChoice, exactlyOneHoldsAndTheArrowsMoveIt)
{
    SegmentedChoice choice({QStringLiteral("%"), QStringLiteral("£")});
    choice.setName(QStringLiteral("Discount in"));
    show(choice);
    EXPECT_EQ(choice.index(), 0);
    QSignalSpy chosen(&choice, &SegmentedChoice::chosen);
    choice.findChildren<QToolButton*>()[0]->setFocus();
    QTest::keyClick(keyboard(), Qt::Key_Right);
    EXPECT_EQ(choice.index(), 1);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toInt(), 1);
    EXPECT_EQ(choice.findChildren<QToolButton*>()[1]->accessibleName(), QStringLiteral("Discount in: £"));
}

TEST(SegmentedChoice, isOneStopForTab)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* before = new QLineEdit;
    auto* choice = new SegmentedChoice({QStringLiteral("%"), QStringLiteral("£")});
    auto* after = new QLineEdit;
    for (QWidget* widget : QList<QWidget*> {before, choice, after})
        row->addWidget(widget);
    show(window);
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(choice->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST(SegmentedChoice, settingItTellsNothingAndAnImpossibleIndexChangesNothing)
{
    SegmentedChoice choice({QStringLiteral("%"), QStringLiteral("£")});
    QSignalSpy chosen(&choice, &SegmentedChoice::chosen);
    choice.setIndex(1);
    choice.setIndex(9);
    EXPECT_EQ(choice.index(), 1);
    EXPECT_EQ(chosen.count(), 0);
    choice.setTitles({QStringLiteral("%"), QStringLiteral("$")});
    EXPECT_EQ(choice.index(), 1);
    EXPECT_EQ(choice.titles(), QStringList({QStringLiteral("%"), QStringLiteral("$")}));
}

TEST(SideBar, arrowsGoFromPageToPageAndSettingTellsNothing)
{
    SideBar bar(QStringLiteral("Pages"));
    for (const char* title : {"Contacts", "Orders", "Items"})
        bar.addPage(QStringLiteral("tag"), QString::fromLatin1(title));
    show(bar);
    EXPECT_EQ(bar.page(), 0);
    QSignalSpy chosen(&bar, &SideBar::pageChosen);
    bar.setPage(1);
    EXPECT_EQ(chosen.count(), 0);
    bar.setFocus();
    QTest::keyClick(&bar, Qt::Key_Down);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toInt(), 2);
    EXPECT_EQ(bar.width(), 184);
    EXPECT_EQ(bar.visualItemRect(bar.item(0)).height(), 36);
}

TEST(PickList, theChosenEntryIsFilledWithTheKeyboardAndTintedWithout)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* list = new PickList(QStringLiteral("Available"));
    list->addEntry(QStringLiteral("tag"), QStringLiteral("Items"));
    list->setCurrentRow(0);
    auto* other = new QLineEdit;
    row->addWidget(list);
    row->addWidget(other);
    show(window);
    list->setFocus();
    EXPECT_TRUE(contains(picture(*list->viewport()), QColor(0x2a62d6)));
    EXPECT_TRUE(contains(picture(*list->viewport()), Qt::white, QRect(10, 6, 18, 18)));
    other->setFocus();
    EXPECT_FALSE(contains(picture(*list->viewport()), QColor(0x2a62d6)));
    EXPECT_TRUE(contains(picture(*list->viewport()), QColor(0x3d4554), QRect(10, 6, 18, 18)));
}

TEST(PickList, withoutEntriesItSaysWhatBelongsThere)
{
    PickList list(QStringLiteral("Files"));
    list.resize(160, 120);
    show(list);
    const QImage blank = picture(*list.viewport());
    list.setEmptyText(QStringLiteral("No files yet. Add one of your telephone."));
    const QImage hint = picture(*list.viewport());
    EXPECT_NE(hint, blank);
    // More than the first line: it does not end at the edge.
    EXPECT_NE(hint.copy(0, 28, hint.width(), 60), blank.copy(0, 28, blank.width(), 60));
    EXPECT_EQ(list.accessibleDescription(), QStringLiteral("No files yet. Add one of your telephone."));
    list.addItem(QStringLiteral("a"));
    EXPECT_EQ(picture(*list.viewport()).copy(0, 28, hint.width(), 60), blank.copy(0, 28, blank.width(), 60));
    list.clear();
    EXPECT_EQ(picture(*list.viewport()), hint);
}

TEST(PageHeader, holdsHeadingSearchAndFilter)
{
    PageHeader header(QStringLiteral("Orders"), QStringLiteral("Search orders and contacts"));
    header.filter()->addItem(QStringLiteral("All"));
    header.resize(1000, header.sizeHint().height());
    show(header);
    EXPECT_EQ(header.height(), 14 + 30 + 14 + 1);
    EXPECT_EQ(header.searchField()->width(), 300);
    EXPECT_EQ(header.filter()->width(), 168);
    EXPECT_EQ(header.filter()->accessibleName(), QStringLiteral("Show"));
    EXPECT_EQ(header.filter(), header.filter());
    EXPECT_EQ(header.width() - header.filter()->geometry().right() - 1, 16);
}

TEST(ToolBar, everyCommandCanBeReachedByTabAndHasItsName)
{
    ToolBar bar(QStringLiteral("Main"));
    auto* print = new QAction(QStringLiteral("Print"), &bar);
    bar.addCommand(print);
    auto* start = new QAction(QStringLiteral("Log time: start"), &bar);
    auto* stop = new QAction(QStringLiteral("Log time: stop"), &bar);
    bar.addPair(QStringLiteral("Log time"), start, stop);
    show(bar);
    QWidget* button = bar.widgetForAction(print);
    EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus);
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Print"));
    // A command renamed later is read by its new name.
    print->setText(QStringLiteral("Print Invoice"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Print Invoice"));
    QStringList names;
    for (const QToolButton* each : bar.findChildren<QToolButton*>())
        names << each->accessibleName();
    EXPECT_TRUE(names.contains(QStringLiteral("Log time: start")));
    EXPECT_TRUE(names.contains(QStringLiteral("Log time: stop")));
}

TEST(ToolBar, canBeEmptiedAndFilledAnew)
{
    ToolBar bar(QStringLiteral("Main"));
    auto* print = new QAction(QStringLiteral("Print"), &bar);
    print->setShortcut(QKeySequence(QStringLiteral("Ctrl+P")));
    bar.addCommand(print);
    bar.addGap();
    bar.addFlexibleGap();
    bar.removeAll();
    EXPECT_TRUE(bar.actions().isEmpty());
    bar.addGap();
    bar.addCommand(print);
    EXPECT_EQ(bar.actions().size(), 2);
    EXPECT_EQ(bar.widgetForAction(print)->toolTip(), QStringLiteral("Print (Ctrl+P)"));
}

TEST(ToolBar, showsIconsWordsOrBoth)
{
    ToolBar bar(QStringLiteral("Main"));
    EXPECT_EQ(bar.toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    bar.setShownParts(ToolBar::Show::iconOnly);
    EXPECT_EQ(bar.toolButtonStyle(), Qt::ToolButtonIconOnly);
    bar.setShownParts(ToolBar::Show::textOnly);
    EXPECT_EQ(bar.toolButtonStyle(), Qt::ToolButtonTextOnly);
    EXPECT_EQ(bar.shownParts(), ToolBar::Show::textOnly);
}

TEST(FormGrid, labelsAreBuddiesAndNameTheirFields)
{
    QWidget window;
    auto* form = new FormGrid(FormGrid::Labels::right, &window);
    auto* title = new QLineEdit;
    auto* code = new QLineEdit;
    auto* page = new QPlainTextEdit;
    auto* unit = new Label(QStringLiteral("%"));
    auto* amount = new NumberField;
    Label* words = form->addRow(QStringLiteral("Title"), title);
    form->addRow(QStringLiteral("Postcode"), code, 110);
    form->addGap(16);
    Label* comments = form->addRow(QStringLiteral("Comments"), page);
    Label* discount = form->addRow(QStringLiteral("Discount"), {unit, amount});
    window.resize(500, 400);
    show(window);
    EXPECT_EQ(words->buddy(), title);
    EXPECT_EQ(title->accessibleName(), QStringLiteral("Title"));
    EXPECT_EQ(discount->buddy(), amount);
    EXPECT_EQ(amount->accessibleName(), QStringLiteral("Discount"));
    EXPECT_EQ(code->width(), 110);
    EXPECT_TRUE(words->alignment() & Qt::AlignRight);
    EXPECT_TRUE(comments->alignment() & Qt::AlignTop);
    // Label to field 12, rows 8 apart.
    EXPECT_EQ(title->x() - words->geometry().right() - 1, 12);
    EXPECT_EQ(code->y() - title->geometry().bottom() - 1, 8);
}

TEST(FormGrid, aButtonBesideAFieldKeepsItsWidthAndTheFieldTakesTheRest)
{
    QWidget window;
    auto* form = new FormGrid(FormGrid::Labels::right, &window);
    auto* supplier = new QLineEdit;
    auto* select = new Button(QStringLiteral("Select…"));
    form->addRow(QStringLiteral("Supplier"), {supplier, select});
    window.resize(500, 100);
    show(window);
    EXPECT_EQ(select->width(), select->sizeHint().width());
    EXPECT_EQ(select->x() - supplier->geometry().right() - 1, 8);
    EXPECT_EQ(select->geometry().right() + 1, 500);
}

TEST(FormGrid, inSidePanelsLabelsStandLeft)
{
    QWidget window;
    auto* form = new FormGrid(FormGrid::Labels::left, &window);
    EXPECT_TRUE(form->addRow(QStringLiteral("Number"), new QLineEdit)->alignment() & Qt::AlignLeft);
}

TEST(UnderlineTabs, controlPageKeysTurnThemFromInside)
{
    UnderlineTabs tabs;
    auto* field = new QLineEdit;
    tabs.addTab(field, QStringLiteral("Order"));
    tabs.addTab(new QWidget, QStringLiteral("Contact"));
    tabs.addTab(new QLineEdit, QStringLiteral("Payments"));
    tabs.setTabEnabled(1, false);
    show(tabs);
    field->setFocus();
    QTest::keyClick(tabs.windowHandle(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs.currentIndex(), 2);
    QTest::keyClick(tabs.windowHandle(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs.currentIndex(), 2);
    QTest::keyClick(tabs.windowHandle(), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(tabs.currentIndex(), 0);
}

TEST(UnderlineTabs, controlPageKeysTurnThemFromAnywhereInTheirWindow)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* tabs = new UnderlineTabs;
    tabs->addTab(new QLineEdit, QStringLiteral("Order"));
    tabs->addTab(new QLineEdit, QStringLiteral("Contact"));
    row->addWidget(tabs);
    auto* beside = new QLineEdit;
    row->addWidget(beside);
    show(window);
    beside->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_TRUE(beside->hasFocus());
}

TEST(UnderlineTabs, arrowsTurnThemAndNothingMovesSideways)
{
    UnderlineTabs tabs;
    for (const char* title : {"Order", "Contact", "Payments"})
        tabs.addTab(new QWidget, QString::fromLatin1(title));
    tabs.resize(600, 200);
    show(tabs);
    const QRect second = tabs.tabBar()->tabRect(1);
    tabs.tabBar()->setFocus();
    QTest::keyClick(tabs.tabBar(), Qt::Key_Right);
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_EQ(tabs.tabBar()->tabRect(1), second);
    // The underline stands under the chosen one.
    const QImage image = picture(*tabs.tabBar());
    EXPECT_TRUE(alike(image.pixelColor(second.left() + 5, image.height() - 1), QColor(0x2a62d6)));
    EXPECT_FALSE(alike(image.pixelColor(5, image.height() - 1), QColor(0x2a62d6)));
}
