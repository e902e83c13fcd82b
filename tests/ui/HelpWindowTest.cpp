// The manual on the screen: F1 from every window, the window itself, and what it says of the menus.
#include "ui/shell/HelpWindow.h"

#include "WithWindows.h"
#include "support/Business.h"
#include "ui/HelpTopic.h"
#include "ui/kit/Label.h"
#include "ui/kit/PickList.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/SideBar.h"
#include "ui/kit/Theme.h"
#include "ui/orders/OrderEditor.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/ManualView.h"
#include "ui/shell/RecoveryWindow.h"
#include "ui/shell/Sheets.h"
#include "ui/shell/ToolBarSheet.h"

#include <QBuffer>
#include <QFile>
#include <QMenuBar>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSet>
#include <QTabWidget>
#include <QTextBlock>
#include <QXmlStreamReader>

using namespace uitest;

namespace {

class HelpOnScreen : public WithWindows<Business> {
protected:
    void launch()
    {
        begin("<key>dontShowTip</key><true/>");
        order("Three stools");
        item("Oak stool");
        contact("Ada Penrose");
        // Whoever has an order when the database is read is not welcomed.
        restart();
        windows = std::make_unique<Windows>(app());
        windows->main().makeLists();
        uitest::show(windows->main());
        windows->main().showPage(Page::orders);
        settle();
    }
    void TearDown() override
    {
        Theme::apply(*qApp, Theme::Mode::light);
        WithWindows::TearDown();
    }
    /// The manual's window; it must be there.
    static HelpWindow& help()
    {
        HelpWindow* window = seen<HelpWindow>();
        EXPECT_NE(window, nullptr) << "the manual did not open";
        return *window;
    }
    static ManualView& page() { return *child<ManualView>(help(), "page"); }
    static QAction& command(const char* name) { return *child<QAction>(help(), name); }
    static QString found() { return child<Label>(help(), "found")->text(); }
    /// Presses F1 where the keyboard is; answers the topic of the page that shows, with its heading.
    QString topicByF1() const
    {
        QTest::keyClick(keyboard(), Qt::Key_F1);
        const QUrl source = page().source();
        const QString topic = help().topic() + (source.hasFragment() ? '#' + source.fragment() : QString());
        help().close();
        settle();
        return topic;
    }
    /// As a person has it in front.
    static void front(QWidget& window)
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    bool hasPage(const QString& topic)
    {
        const QUrl address = app().manual().address(topic);
        if (app().manual().topicAt(address) != topic.section('#', 0, 0))
            return false;
        const QString heading = topic.section('#', 1);
        QFile file(address.toLocalFile());
        return file.open(QIODevice::ReadOnly) && (heading.isEmpty() || file.readAll().contains("id=\"" + heading.toUtf8() + '"'));
    }
    /// Of the window and all that stands in it.
    static QStringList topicsIn(const QWidget& window)
    {
        QStringList topics {helpTopic::of(&window)};
        for (const QWidget* widget : window.findChildren<QWidget*>())
            topics += helpTopic::of(widget);
        topics.removeDuplicates();
        return topics;
    }
    void checkTopics(const QWidget& window)
    {
        for (const QString& topic : topicsIn(window))
            EXPECT_TRUE(hasPage(topic)) << window.windowTitle().toStdString() << ": \"" << topic.toStdString() << '"';
    }
};

/// "Menu | Entry | Key" of every entry, with the menus it stands in; what a menu fills when it opens is left out.
void listEntries(const QString& menu, const QString& path, const QMenu& entries, QStringList& lines)
{
    for (const QAction* entry : entries.actions()) {
        const QString title = path + entry->text().remove('&');
        if (entry->isSeparator())
            continue;
        if (entry->menu() && entry->menu()->objectName() != "sortBy")
            listEntries(menu, title + " › ", *entry->menu(), lines);
        else
            lines += menu + " | " + title + " | " + entry->shortcut().toString(QKeySequence::PortableText);
    }
}

/// The same from the page about the menus: the rows of its tables, by the heading above each.
QStringList entriesOnPage(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QStringList lines;
    QString menu;
    QStringList cells;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement && reader.name() == QLatin1String("tr") && cells.size() == 3)
            lines += menu + " | " + cells[0] + " | " + cells[1];
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("h2"))
            menu = reader.readElementText();
        else if (reader.name() == QLatin1String("tr"))
            cells.clear();
        else if (reader.name() == QLatin1String("td"))
            cells += reader.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
    }
    return lines.filter(QRegularExpression("^(File|Edit|View|Agents|Help) "));
}

} // namespace

TEST_F(HelpOnScreen, f1ShowsThePageOfTheMainWindowsPage)
{
    launch();
    EXPECT_EQ(topicByF1(), QString("orders"));
    front(windows->main());
    windows->main().showPage(Page::contacts);
    EXPECT_EQ(topicByF1(), QString("contacts"));
    front(windows->main());
    windows->main().showPage(Page::items);
    EXPECT_EQ(topicByF1(), QString("items"));
    front(windows->main());
    // The list of pages has no page of its own: it is about the one that is shown.
    child<SideBar>(windows->main(), "pages")->setFocus();
    EXPECT_EQ(topicByF1(), QString("items"));
}

TEST_F(HelpOnScreen, whoeverIsWelcomedReadsAboutTheFirstSteps)
{
    begin("<key>dontShowTip</key><true/>");
    windows = std::make_unique<Windows>(app());
    windows->main().makeLists();
    uitest::show(windows->main());
    windows->main().showPage(Page::orders);
    EXPECT_EQ(topicByF1(), QString("welcome"));
}

TEST_F(HelpOnScreen, f1ShowsThePageOfAnEditorAndOfItsTab)
{
    launch();
    orders().editThisOrder(orders().at(0));
    OrderEditor& editor = windows->order();
    front(editor);
    EXPECT_EQ(topicByF1(), QString("order"));
    const std::pair<int, const char*> tabs[] {{1, "order#contact"}, {2, "order#contact"}, {3, "payments"}, {4, "attachments"}};
    for (const auto& [tab, topic] : tabs) {
        front(editor);
        editor.findChild<QTabWidget*>()->setCurrentIndex(tab);
        editor.findChild<QTabWidget*>()->currentWidget()->nextInFocusChain()->setFocus();
        EXPECT_EQ(helpTopic::of(editor.findChild<QTabWidget*>()->currentWidget()), QString(topic));
    }
    orders().form.cancel.trigger();
    items().editThisItem(items().at(0));
    EXPECT_EQ(topicByF1(), QString("item"));
    contacts().editThisContact(contacts().at(0));
    settle();
    EXPECT_EQ(topicByF1(), QString("contact"));
}

TEST_F(HelpOnScreen, f1ShowsThePageOfTheSettingsPage)
{
    launch();
    app().getPrefsController().openWindow();
    SettingsWindow& settings = windows->settings();
    front(settings);
    static constexpr const char* topics[] {"settings-general", "settings-tax", "settings-words", "settings-lists", "settings-colours",
        "settings-columns", "settings-time", "settings-documents", "settings-addressbook", "settings-databases", "settings-look"};
    ASSERT_EQ(settings.pages()->count(), static_cast<int>(std::size(topics)));
    for (int row = 0; row < settings.pages()->count(); ++row) {
        front(settings);
        settings.pages()->setCurrentRow(row);
        settings.pages()->setFocus();
        EXPECT_EQ(topicByF1(), QString(topics[row]));
    }
}

TEST_F(HelpOnScreen, everyTopicThatAWindowNamesIsInTheManual)
{
    launch();
    for (const Page shown : {Page::contacts, Page::orders, Page::items}) {
        windows->main().showPage(shown);
        checkTopics(windows->main());
    }
    orders().editThisOrder(orders().at(0));
    orders().form.tender.trigger();
    items().editThisItem(items().at(0));
    contacts().editThisContact(contacts().at(0));
    contacts().companyEditor.create();
    app().getPrefsController().openWindow();
    app().getPrefsController().newDatabaseMenuItem();
    app().tips().showNext();
    app().notepad().open();
    child<QAction>(windows->main(), "recovery")->trigger();
    child<QAction>(windows->main(), "customiseToolBar")->trigger();
    windows->showHelp("index");
    DateFormatSheet dates(&windows->main());
    LockSheet locked(LockInfo(), &windows->main());
    int windowsSeen = 0;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::Popup)
            continue;
        EXPECT_FALSE(helpTopic::of(window).isEmpty()) << window->metaObject()->className();
        checkTopics(*window);
        ++windowsSeen;
    }
    EXPECT_GE(windowsSeen, 8);
    for (const QWidget* sheet : std::initializer_list<const QWidget*> {&dates, &locked})
        checkTopics(*sheet);
}

TEST_F(HelpOnScreen, thePageAboutTheMenusTellsEveryCommandWithItsKey)
{
    launch();
    QStringList expected;
    for (const QAction* menu : windows->main().menuBar()->actions())
        listEntries(menu->text().remove('&'), {}, *menu->menu(), expected);
    // The screen of the tests has other keys for two of them than the X11 and Wayland desktops that the page is written for.
    for (QString& line : expected) {
        for (const char* onDesktops : {"Edit | Redo | Ctrl+Shift+Z", "File | Quit | Ctrl+Q"}) {
            if (line.startsWith(QString(onDesktops).section('|', 0, 1)))
                line = onDesktops;
        }
    }
    ASSERT_GT(expected.size(), 30);
    EXPECT_EQ(entriesOnPage(app().manual().address("menu").toLocalFile()), expected);
}

TEST_F(HelpOnScreen, helpOnTheToolBarOpensThePageAboutTheMenusInTheBrowser)
{
    launch();
    QAction* action = child<QAction>(windows->main(), "help");
    EXPECT_EQ(action->iconText(), QString("Help"));
    action->trigger();
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0], app().manual().address("menu"));
    EXPECT_EQ(seen<HelpWindow>(), nullptr);
}

TEST_F(HelpOnScreen, theContentsShowThePagesUnderTheirChapters)
{
    launch();
    windows->showHelp("orders");
    auto* contents = child<PickList>(help(), "contents");
    int pages = 0;
    int chapters = 0;
    for (int row = 0; row < contents->count(); ++row) {
        QListWidgetItem* entry = contents->item(row);
        if (!(entry->flags() & Qt::ItemIsSelectable)) {
            ++chapters;
            continue;
        }
        ++pages;
        contents->setCurrentItem(entry);
        EXPECT_EQ(page().documentTitle(), entry->text());
        EXPECT_FALSE(page().toPlainText().trimmed().isEmpty());
    }
    EXPECT_GT(chapters, 4);
    EXPECT_GT(pages, 30);
}

TEST_F(HelpOnScreen, marksInTheContentsWhatIsShown)
{
    launch();
    windows->showHelp("orders");
    auto* contents = child<PickList>(help(), "contents");
    ASSERT_NE(contents->currentItem(), nullptr);
    EXPECT_EQ(contents->currentItem()->text(), QString("Orders"));
    EXPECT_EQ(help().windowTitle(), QString("Orders – Vendaro Help"));
    windows->showHelp("teleporting");
    EXPECT_EQ(contents->currentItem(), nullptr);
    EXPECT_EQ(help().topic(), QString("index"));
}

TEST_F(HelpOnScreen, goesBackForwardAndToTheContents)
{
    launch();
    windows->showHelp("orders");
    EXPECT_FALSE(command("back").isEnabled());
    windows->showHelp("items");
    command("back").trigger();
    EXPECT_EQ(help().topic(), QString("orders"));
    EXPECT_FALSE(command("back").isEnabled());
    command("forward").trigger();
    EXPECT_EQ(help().topic(), QString("items"));
    command("contents").trigger();
    EXPECT_EQ(help().topic(), QString("index"));
}

TEST_F(HelpOnScreen, searchesInThePageRoundItsEndAndSaysWhenNothingIsFound)
{
    launch();
    windows->showHelp("recovery");
    front(help());
    QTest::keyClick(&help(), Qt::Key_F, Qt::ControlModifier);
    auto* search = child<SearchField>(help(), "search");
    ASSERT_EQ(keyboard(), search);
    QTest::keyClicks(search, "bring back");
    EXPECT_EQ(page().textCursor().selectedText().toLower(), QString("bring back"));
    EXPECT_EQ(found(), QString());
    QSet<int> places;
    for (int i = 0; i < 20; ++i) {
        places.insert(page().textCursor().position());
        QTest::keyClick(search, Qt::Key_Return);
    }
    const int there = static_cast<int>(page().toPlainText().count("bring back", Qt::CaseInsensitive));
    EXPECT_EQ(places.size(), there);
    const int place = page().textCursor().position();
    QTest::keyClick(search, Qt::Key_F3);
    QTest::keyClick(search, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(page().textCursor().position(), place);
    type(*search, "zebra");
    EXPECT_EQ(found(), QString("Not on this page"));
    type(*search, "bring");
    EXPECT_EQ(found(), QString());
}

TEST_F(HelpOnScreen, printsThePageAndShowsItInTheBrowser)
{
    launch();
    windows->showHelp("orders#undo");
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        printing.device = &writer;
        command("print").trigger();
        printing.device = nullptr;
    }
    EXPECT_EQ(printing.titles, QStringList {"Orders"});
    EXPECT_GT(bytes.size(), 10'000);
    command("browser").trigger();
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0], app().manual().address("orders#undo"));
}

TEST_F(HelpOnScreen, whatLeadsOutOfTheManualOpensInTheBrowser)
{
    launch();
    windows->showHelp("orders");
    page().setSource(QUrl("https://example.org/"));
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_EQ(opener.urls[0], QUrl("https://example.org/"));
    EXPECT_EQ(help().topic(), QString("orders"));
}

TEST_F(HelpOnScreen, escapeClosesItAndF1OpensItAgainWhereItIsWanted)
{
    launch();
    EXPECT_EQ(topicByF1(), QString("orders"));
    windows->showHelp("items");
    front(help());
    QTest::keyClick(&page(), Qt::Key_Escape);
    EXPECT_EQ(seen<HelpWindow>(), nullptr);
    windows->showHelp("items");
    front(help());
    QTest::keyClick(&page(), Qt::Key_F1);
    EXPECT_EQ(help().topic(), QString("help"));
}

TEST_F(HelpOnScreen, canBeReadWhileSomethingIsAsked)
{
    launch();
    orders().editThisOrder(orders().at(0));
    front(windows->order());
    orders().form.pickMaterial.trigger();
    Sheet* sheet = SheetStack::instance().top();
    ASSERT_NE(sheet, nullptr);
    ASSERT_EQ(sheet->blocks(), Sheet::Blocks::theProgram);
    QTest::keyClick(keyboard(), Qt::Key_F1);
    EXPECT_EQ(help().topic(), QString("search"));
    EXPECT_FALSE(SheetStack::instance().isBlocked(&page()));
    EXPECT_TRUE(SheetStack::instance().isBlocked(&windows->main()));
    EXPECT_TRUE(sheet->isOpen());
}

TEST_F(HelpOnScreen, thePageFollowsTheLook)
{
    launch();
    windows->showHelp("orders");
    const auto groundOfKey = [] {
        QTextCursor key = page().document()->find("Ctrl+N");
        return key.charFormat().background().color();
    };
    const QColor light = groundOfKey();
    ASSERT_TRUE(light.isValid());
    Theme::apply(*qApp, Theme::Mode::dark);
    EXPECT_NE(groundOfKey(), light);
    EXPECT_LT(groundOfKey().lightness(), 128);
    EXPECT_EQ(help().topic(), QString("orders"));
}

TEST_F(HelpOnScreen, onPaperThePageIsLightAndItsPicturesAreNoWiderThanThePaper)
{
    launch();
    const QUrl address = app().manual().address("order");
    const auto look = [&address](ManualView::Ground ground) {
        ManualView view(ground);
        view.setSource(address);
        const QTextCursor key = view.document()->find("Ctrl+Shift+P");
        EXPECT_FALSE(key.isNull());
        int widest = 0;
        for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
                if (picture.isValid())
                    widest = std::max(
                        widest, view.document()->resource(QTextDocument::ImageResource, QUrl(picture.name())).value<QImage>().width());
            }
        }
        return std::pair(key.charFormat().background().color(), widest);
    };
    const auto [lightGround, widthOnScreen] = look(ManualView::Ground::screen);
    Theme::apply(*qApp, Theme::Mode::dark);
    const auto [paperGround, widthOnPaper] = look(ManualView::Ground::paper);
    EXPECT_EQ(paperGround, lightGround);
    EXPECT_NE(look(ManualView::Ground::screen).first, lightGround);
    EXPECT_GT(widthOnScreen, 600);
    EXPECT_EQ(widthOnPaper, 600);
}

TEST_F(HelpOnScreen, aMissingManualIsToldInTheWindow)
{
    resources = home();
    launch();
    windows->showHelp("orders");
    EXPECT_TRUE(page().toPlainText().contains(home() + "/manual")) << page().toPlainText().toStdString();
    EXPECT_EQ(child<PickList>(help(), "contents")->count(), 0);
}

TEST(ManualStyle, takesTheRulesForTheDarkOnlyInTheDark)
{
    const QString sheet = "p { color: black; }\n@media (prefers-color-scheme: dark) {\np { color: white; }\na { color: blue; }\n}\n";
    EXPECT_EQ(ManualView::styleFor(sheet, false), QString("p { color: black; }\n"));
    EXPECT_EQ(ManualView::styleFor(sheet, true), QString("p { color: black; }\n\np { color: white; }\na { color: blue; }\n"));
    EXPECT_EQ(ManualView::styleFor("p { color: black; }", true), QString("p { color: black; }"));
    EXPECT_EQ(ManualView::styleFor("@media broken", true), QString("@media broken"));
}

TEST(HelpTopic, isTheNearestOneOutwards)
{
    QWidget window;
    QWidget part(&window);
    QWidget field(&part);
    EXPECT_EQ(helpTopic::of(&field), QString());
    EXPECT_EQ(helpTopic::of(nullptr), QString());
    helpTopic::set(window, "order");
    EXPECT_EQ(helpTopic::of(&field), QString("order"));
    helpTopic::set(part, "payments");
    EXPECT_EQ(helpTopic::of(&field), QString("payments"));
    EXPECT_EQ(helpTopic::of(&window), QString("order"));
}
