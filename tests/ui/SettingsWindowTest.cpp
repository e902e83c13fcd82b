// The settings window on the running application, with mouse and keys.
#include "ui/settings/SettingsWindow.h"

#include "SettingsOnScreen.h"
#include "ui/LookChoice.h"
#include "ui/kit/Button.h"
#include "ui/kit/ColourPalette.h"
#include "ui/kit/Fields.h"
#include "ui/kit/IconButton.h"
#include "ui/kit/MessageBar.h"
#include "ui/settings/Pages.h"
#include "ui/settings/SettingsPage.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>

using namespace uitest;

// The window

TEST_F(SettingsOnScreen, opensFromTheMenuAndTheToolBarWithTheKeyboardOnItsPages)
{
    launch();
    EXPECT_EQ(child<QAction>(windows->main(), "preferences")->shortcut(), QKeySequence("Ctrl+,"));
    open();
    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(window().isModal());
    EXPECT_EQ(window().windowTitle(), QString("Preferences"));
    EXPECT_EQ(keyboard(), window().pages());
    EXPECT_EQ(window().pages()->count(), lookPage + 1);
}

TEST_F(SettingsOnScreen, everyFieldHasItsWidgetAndSaysItsName)
{
    launch();
    open();
    for (const FormField* each : form().fields()) {
        if (each == &form().dbLocation || each == &form().leave)
            continue;
        const auto* widget = window().findChild<QWidget*>(each->name());
        ASSERT_NE(widget, nullptr) << each->name().toStdString();
        const auto* named = qobject_cast<const QAbstractButton*>(widget);
        EXPECT_NE(named && !named->text().isEmpty() ? named->text() : widget->accessibleName(), QString()) << each->name().toStdString();
    }
}

TEST_F(SettingsOnScreen, arrowsGoFromPageToPageAndTabIntoIt)
{
    launch();
    open();
    QTest::keyClick(keyboard(), Qt::Key_Down);
    EXPECT_TRUE(field("VendaroTaxStatement")->isVisible());
    EXPECT_FALSE(field("VendaroCurrency")->isVisible());
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    EXPECT_EQ(keyboard(), button("VendaroHandlesTax"));
    QTest::keyClick(keyboard(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(window().pages()->page(), words);
    QTest::keyClick(keyboard(), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(window().pages()->page(), tax);
}

TEST_F(SettingsOnScreen, escapeClosesAndKeepsWhatWasTyped)
{
    launch();
    open();
    type(*field("VendaroCurrency"), "$");
    EXPECT_EQ(preferences().getCurrency(), "$");
    QTest::keyClick(keyboard(), Qt::Key_Escape);

    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(preferences().getCurrency(), "$");
    EXPECT_EQ(setting("VendaroCurrency"), "\xc2\xa3");
    open();
    EXPECT_EQ(field("VendaroCurrency")->text(), QString("$"));
}

TEST_F(SettingsOnScreen, returnCommitsAndCloses)
{
    launch();
    open();
    type(*field("VendaroCurrency"), "$");
    QTest::keyClick(keyboard(), Qt::Key_Return);

    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(setting("VendaroCurrency"), "$");
}

TEST_F(SettingsOnScreen, returnIsALineWhereListsAreTypedAndCtrlReturnCommits)
{
    launch();
    open(lists);
    auto* statuses = child<QPlainTextEdit>(window(), "VendaroStatuses");
    statuses->setFocus();
    QTest::keyClick(statuses, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(statuses, "New");
    QTest::keyClick(statuses, Qt::Key_Return);
    QTest::keyClicks(statuses, "Done");
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(preferences().getStatusList(), (QStringList {"New", "Done"}));
    QTest::keyClick(statuses, Qt::Key_Return, Qt::ControlModifier);

    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(setting("VendaroStatuses"), "New\nDone");
    EXPECT_EQ(orders().form.status.titles(), (QStringList {"New", "Done"}));
}

TEST_F(SettingsOnScreen, theButtonCommitsAndTheClosersDoNot)
{
    launch();
    open();
    type(*field("VendaroCurrencyCode"), "EUR");
    window().close();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(setting("VendaroCurrencyCode"), "GBP");
    open();
    press(*button("ok"));
    EXPECT_EQ(setting("VendaroCurrencyCode"), "EUR");
}

TEST_F(SettingsOnScreen, thePageIsRememberedToTheNextRun)
{
    launch();
    open(colours);
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    windows.reset();
    quit();
    launch();
    child<QAction>(windows->main(), "preferences")->trigger();
    EXPECT_EQ(window().pages()->page(), colours);
    EXPECT_TRUE(child<QWidget>(window(), "palette")->isVisible());
}

TEST_F(SettingsOnScreen, aLowWindowScrollsItsPage)
{
    launch();
    open();
    window().resize(window().minimumSize());
    settle();
    const SettingsPage* page = nullptr;
    for (const auto* each : window().findChildren<SettingsPage*>()) {
        if (each->isVisible())
            page = each;
    }
    ASSERT_NE(page, nullptr);
    EXPECT_GT(page->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0);
}

// General

TEST_F(SettingsOnScreen, theCaptionSaysHowDatesAreWritten)
{
    launch();
    open();
    EXPECT_EQ(caption("VendaroDateFormatCaption"), QString("dd/mm/yy"));
    auto* choice = child<ChoiceBox>(window(), "VendaroDateFormat");
    choice->setFocus();
    QTest::keyClick(choice, Qt::Key_Down);
    EXPECT_EQ(caption("VendaroDateFormatCaption"), QString("mm/dd/yy"));
    EXPECT_FALSE(preferences().isUKFormat());
}

TEST_F(SettingsOnScreen, aWarnLevelThatIsNoNumberIsToldBelowItsField)
{
    launch();
    open();
    type(*field("VendaroStockWarn"), "few");
    EXPECT_TRUE(isTold("This does not read as a whole number; it counts as 0."));
    EXPECT_EQ(preferences().getStockWarn(), "few");
    type(*field("VendaroStockWarn"), "3");
    EXPECT_FALSE(isTold("This does not read as a whole number; it counts as 0."));
}

// Tax

TEST_F(SettingsOnScreen, taxIsSwitchedOnWithAllThatBelongsToIt)
{
    launch();
    open(tax);
    EXPECT_FALSE(field("VendaroTaxStatement")->isEnabled());
    EXPECT_FALSE(rates()->isEnabled());
    EXPECT_FALSE(button("addTaxRate")->isEnabled());
    EXPECT_EQ(caption("VendaroPricesTaxInclusiveCaption"), QString("(Exclusive)"));
    QTest::keyClick(button("VendaroHandlesTax"), Qt::Key_Space);

    EXPECT_TRUE(preferences().handlesTax());
    EXPECT_TRUE(field("VendaroTaxStatement")->isEnabled());
    EXPECT_TRUE(rates()->isEnabled());
    EXPECT_TRUE(button("addTaxRate")->isEnabled());
    auto* prices = child<ChoiceBox>(window(), "VendaroPricesTaxInclusive");
    prices->setFocus();
    QTest::keyClick(prices, Qt::Key_Up);
    EXPECT_EQ(caption("VendaroPricesTaxInclusiveCaption"), QString("(Inclusive)"));
}

TEST_F(SettingsOnScreen, aRateIsAddedTypedAndDeletedByKeys)
{
    launch("<key>VendaroHandlesTax</key><string>YES</string>");
    open(tax);
    press(*button("addTaxRate"));
    settle();
    ASSERT_EQ(rates()->model()->rowCount(), 5);
    EXPECT_EQ(rates()->currentIndex().row(), 4);
    QTest::keyClicks(keyboard(), "R");
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    QTest::keyClicks(keyboard(), "reduced");
    QTest::keyClick(keyboard(), Qt::Key_Tab);
    QTest::keyClicks(keyboard(), "12.5");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(preferences().getTaxRateForCode("R"), "12.5");
    EXPECT_EQ(preferences().getTaxRates()[4].description, "reduced");

    rates()->setFocus();
    QTest::keyClick(rates(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(rates()->model()->rowCount(), 4);
    EXPECT_EQ(rates()->currentIndex().row(), 3);
    press(*button("deleteTaxRate"));
    EXPECT_FALSE(preferences().getTaxRateForCode("E").has_value());
}

TEST_F(SettingsOnScreen, aRateThatIsNoNumberIsToldUnderTheTable)
{
    launch("<key>VendaroHandlesTax</key><string>YES</string>");
    open(tax);
    auto* trouble = child<MessageBar>(window(), "taxTrouble");
    EXPECT_FALSE(trouble->isVisible());
    rates()->model()->setData(rates()->model()->index(0, 2), "12.5%");
    EXPECT_TRUE(trouble->isVisible());
    EXPECT_EQ(trouble->text(), QString("Code \"S\", rate \"12.5%\": This does not read as a number; it counts as 12.5."));
    rates()->model()->setData(rates()->model()->index(0, 2), "12.5");
    EXPECT_FALSE(trouble->isVisible());
}

// Words, columns, colours

TEST_F(SettingsOnScreen, wordsLabelTheMainWindowAsTheyAreTyped)
{
    launch();
    open(words);
    type(*field("VendaroTermOrder"), "Job");
    type(*field("VendaroTermOrders"), "Jobs");
    EXPECT_EQ(child<QAction>(windows->main(), "newOrder")->iconText(), QString("New Job"));
    EXPECT_EQ(child<QAction>(windows->main(), "showOrders")->iconText(), QString("Jobs"));
    EXPECT_EQ(child<SideBar>(windows->main(), "pages")->item(1)->text(), QString("Jobs"));
}

TEST_F(SettingsOnScreen, aSwitchHidesItsColumnAtOnce)
{
    launch();
    open(columns);
    // On its box: beside its words nothing is pressed.
    const QPoint box(8, button("orderTableTitleColumn")->height() / 2);
    QTest::mouseClick(button("orderTableTitleColumn"), Qt::LeftButton, {}, box);
    EXPECT_FALSE(orders().list.column("title")->visible);
    QTest::keyClick(button("orderTableTitleColumn"), Qt::Key_Space);
    EXPECT_TRUE(orders().list.column("title")->visible);
}

TEST_F(SettingsOnScreen, aColourIsChosenByMouseAndByItsParts)
{
    launch();
    open(colours);
    auto* palette = child<ColourPalette>(window(), "palette");
    EXPECT_EQ(palette->colour(), QColor(Qt::white));
    auto* square = palette->findChildren<QAbstractButton*>().first();
    press(*square);
    EXPECT_EQ(palette->colour().rgb(), QColor(0xd6, 0x45, 0x45).rgb());
    EXPECT_EQ(field("redComponent")->text(), QString("214"));
    EXPECT_EQ(field("greenComponent")->text(), QString("69"));
    type(*field("greenComponent"), "green");
    EXPECT_TRUE(isTold("This is no number from 0 to 255; it counts as 0."));
    EXPECT_FALSE(palette->colour().isValid());
    const RgbColour shown = preferences().shownStatusColour();
    EXPECT_EQ(shown.green, 0);
    EXPECT_NEAR(shown.red, 214 / 255.0f, 0.000001f) << "six digits are stored";
}

TEST_F(SettingsOnScreen, anotherStatusShowsItsOwnColour)
{
    launch();
    form().colourStatus.setIndex(1);
    preferences().setColorForStatus({0, 0, 0});
    form().colourStatus.edit(0);
    open(colours);
    auto* status = child<ChoiceBox>(window(), "colourStatus");
    status->setFocus();
    QTest::keyClick(status, Qt::Key_Down);
    EXPECT_EQ(field("redComponent")->text(), QString("0"));
    EXPECT_EQ(child<ColourPalette>(window(), "palette")->colour(), QColor(Qt::black));
}

TEST_F(SettingsOnScreen, aStatusWithoutAColourStandsPlainAsItDoesInTheList)
{
    launch();
    open(colours);
    auto* sample = child<QWidget>(window(), "statusSample");
    const auto ground = [sample] { return kittest::picture(*sample).pixelColor(sample->width() - 2, 2); };
    const auto bar = [sample] { return kittest::picture(*sample).pixelColor(1, sample->height() / 2); };
    EXPECT_EQ(bar(), themeColour(Colour::surface));
    EXPECT_EQ(ground(), themeColour(Colour::surface));
    preferences().setColorForStatus({0, 0, 0});
    EXPECT_EQ(bar(), QColor(Qt::black));
    EXPECT_NE(ground(), themeColour(Colour::surface));
}

TEST_F(SettingsOnScreen, anyOtherColourIsChosenInADialog)
{
    launch();
    open(colours);
    const auto choose = [&](const QColor& colour, QDialog::DialogCode answer) {
        QTimer::singleShot(100, &window(), [colour, answer] {
            auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->setCurrentColor(colour);
            static_cast<QDialog*>(dialog)->done(answer);
        });
        press(*button("otherColour"));
    };
    choose(QColor(12, 34, 56), QDialog::Accepted);
    choose(QColor(1, 1, 1), QDialog::Rejected);
    EXPECT_EQ(field("redComponent")->text(), QString("12"));
    EXPECT_EQ(field("greenComponent")->text(), QString("34"));
    EXPECT_EQ(field("blueComponent")->text(), QString("56"));
}

// Documents, look

TEST_F(SettingsOnScreen, theTemplatesAreListedAndTheirFolderOpens)
{
    launch();
    open(documents);
    const auto* templates = child<PickList>(window(), "templates");
    EXPECT_GT(templates->count(), 0);
    EXPECT_EQ(templates->count(), app().stationeryNames().size());
    press(*button("openStationery"));
    EXPECT_EQ(opener.folders, QStringList {supportFolder() + "/stationary"});
}

TEST_F(SettingsOnScreen, theLookChangesAtOnceAndIsRemembered)
{
    const kittest::ThemeGuard guard;
    launch();
    open(lookPage);
    EXPECT_TRUE(child<QRadioButton>(window(), "look-light")->isChecked());
    press(*button("look-dark"));
    EXPECT_EQ(Theme::current().shade(), Shade::dark);
    EXPECT_EQ(WindowMemory::state("look"), QByteArray("dark"));
    WindowMemory::rememberState("look", {});
}

TEST_F(SettingsOnScreen, theMenuAndThePageOfferTheSameLooksAndFollowEachOther)
{
    const kittest::ThemeGuard guard;
    launch();
    open(lookPage);
    chooseLook(Theme::Mode::dark);
    QMenu* menu = nullptr;
    for (auto* each : windows->main().findChildren<QMenu*>()) {
        if (each->title() == "&Look")
            menu = each;
    }
    ASSERT_NE(menu, nullptr);
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), static_cast<int>(lookChoices().size()));
    EXPECT_TRUE(menu->actions()[1]->isChecked());
    menu->actions()[0]->trigger();
    EXPECT_EQ(Theme::current().shade(), Shade::light);
    window().pages()->setCurrentRow(general);
    window().pages()->setCurrentRow(lookPage);
    EXPECT_TRUE(child<QRadioButton>(window(), "look-light")->isChecked());
    WindowMemory::rememberState("look", {});
}

TEST_F(SettingsOnScreen, theTipsAreSwitchedOffHereToo)
{
    launch();
    open(lookPage);
    press(*button("prefDontShowTips"));
    EXPECT_TRUE(app().tips().form.dontShowTips.isOn());
    EXPECT_EQ(setting("dontShowTip"), "YES");
    press(*button("prefDontShowTips"));
    EXPECT_FALSE(app().tips().form.dontShowTips.isOn());
}

// Address book

TEST_F(SettingsOnScreen, filesOfTheAddressBookAreAddedAndRemovedWithTheirButtons)
{
    launch();
    open(addressBookPage);
    auto* list = child<PickList>(window(), "addressBook");
    EXPECT_FALSE(button("removeFromAddressBook")->isEnabled());
    EXPECT_TRUE(list->accessibleDescription().startsWith("No files yet. ")) << list->accessibleDescription().toStdString();
    panels.choose("/home/ada/friends.vcf");
    press(*button("addAddressBookFile"));
    panels.choose("/home/ada/cards");
    press(*button("addAddressBookFolder"));
    settle();
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->currentRow(), 1);
    QTest::keyClick(list, Qt::Key_Up);
    settle();
    press(*button("removeFromAddressBook"));
    settle();
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), QString("/home/ada/cards"));
    EXPECT_EQ(preferences().addressBookPaths(), QStringList({"/home/ada/cards"}));
}
