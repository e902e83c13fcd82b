#include "KitTest.h"

#include "ui/kit/Button.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SideBar.h"
#include "ui/kit/ToolBar.h"
#include "ui/kit/UnderlineTabs.h"

#include <QAction>
#include <QFile>
#include <QFontInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace kittest;

TEST(Theme, itsStyleSheetHasEveryColourFilledIn)
{
    for (const Shade shade : {Shade::light, Shade::dark}) {
        const QString sheet = Theme::styleSheet(shade);
        EXPECT_FALSE(sheet.contains(QLatin1Char('@')));
        EXPECT_TRUE(sheet.contains(colourOf(Colour::accent, shade).name()));
    }
    EXPECT_TRUE(Theme::styleSheet(Shade::dark).contains(QLatin1String("chevron-down-dark.svg")));
}

TEST(Theme, everyPictureTheStyleSheetNamesExists)
{
    static const QRegularExpression address(QStringLiteral("url\\(([^)]*)\\)"));
    for (const Shade shade : {Shade::light, Shade::dark}) {
        const QString sheet = Theme::styleSheet(shade);
        int found = 0;
        for (QRegularExpressionMatchIterator urls = address.globalMatch(sheet); urls.hasNext(); ++found)
            EXPECT_TRUE(QFile::exists(urls.next().captured(1))) << qPrintable(sheet);
        EXPECT_GT(found, 5);
    }
}

TEST(Theme, modesAreNamedForTheSettings)
{
    for (const auto mode : {Theme::Mode::light, Theme::Mode::dark, Theme::Mode::asDesktop})
        EXPECT_EQ(Theme::modeNamed(Theme::nameOf(mode)), mode);
    EXPECT_EQ(Theme::modeNamed({}), Theme::Mode::asDesktop);
    EXPECT_EQ(Theme::modeNamed(QStringLiteral("purple")), Theme::Mode::asDesktop);
}

TEST(Theme, followingADesktopThatTellsNothingIsLight)
{
    const ThemeGuard guard;
    Theme::apply(*qApp, Theme::Mode::dark);
    // When: the test's surroundings have no settings portal.
    Theme::apply(*qApp, Theme::Mode::asDesktop);
    EXPECT_EQ(Theme::current().mode(), Theme::Mode::asDesktop);
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        EXPECT_EQ(Theme::current().shade(), Shade::light);
    }
}

TEST(Theme, switchingRepolishesWhatIsOnTheScreen)
{
    const ThemeGuard guard;
    // Given a window shown in light.
    QWidget window;
    window.setProperty("look", "window");
    window.setAttribute(Qt::WA_StyledBackground);
    auto* column = new QVBoxLayout(&window);
    auto* button = new PrimaryButton(QStringLiteral("Save"));
    auto* field = new QLineEdit(QStringLiteral("text"));
    column->addWidget(button);
    column->addWidget(field);
    show(window);
    EXPECT_TRUE(alike(picture(window).pixelColor(1, 1), QColor(0xf5f6f8)));
    QSignalSpy changed(&Theme::current(), &Theme::changed);

    // When dark is chosen.
    Theme::apply(*qApp, Theme::Mode::dark);

    // Then ground, button and field have the dark colours, and it was told once.
    const QImage dark = picture(window);
    EXPECT_TRUE(alike(dark.pixelColor(1, 1), QColor(0x1c1e23)));
    EXPECT_TRUE(alike(dark.pixelColor(button->mapTo(&window, QPoint(8, 6))), QColor(0x3470e0)));
    EXPECT_TRUE(alike(dark.pixelColor(field->mapTo(&window, QPoint(field->width() - 8, 6))), QColor(0x2b2f36)));
    EXPECT_EQ(changed.count(), 1);

    // And choosing dark again changes nothing.
    Theme::apply(*qApp, Theme::Mode::dark);
    EXPECT_EQ(changed.count(), 1);
}

TEST(Theme, placeholdersHaveTheirColourFromTheTable)
{
    QLineEdit field;
    field.ensurePolished();
    EXPECT_EQ(field.palette().color(QPalette::PlaceholderText), QColor(0x7c8596));
}

TEST(Theme, noWidgetFallsBackToAFontOfTheDesktop)
{
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("File"))->addAction(QStringLiteral("Quit"));
    window.statusBar()->addWidget(new QLabel(QStringLiteral("ready")));
    auto* bar = new ToolBar(QStringLiteral("Main"));
    bar->addCommand(new QAction(QStringLiteral("Print"), bar));
    window.addToolBar(bar);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    auto* sides = new SideBar(QStringLiteral("Pages"));
    sides->addPage(QStringLiteral("tag"), QStringLiteral("Items"));
    auto* tabs = new UnderlineTabs;
    tabs->addTab(new QWidget, QStringLiteral("Order"));
    for (QWidget* widget : QList<QWidget*> {sides, tabs, new Button(QStringLiteral("Save")), new NumberField,
             new ChoiceBox({QStringLiteral("one")}), new RecordTable, new Label(QStringLiteral("x"), LabelSize::total)})
        column->addWidget(widget);
    window.setCentralWidget(content);
    show(window);
    int looked = 0;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        EXPECT_EQ(QFontInfo(widget->font()).family(), QStringLiteral("Vendaro Sans")) << widget->metaObject()->className();
        ++looked;
    }
    EXPECT_GT(looked, 20);
}
