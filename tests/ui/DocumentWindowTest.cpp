// The window of a document made from a template, on the running application.
#include "ui/documents/DocumentWindow.h"

#include "UiTest.h"
#include "support/Business.h"
#include "ui/documents/BackgroundImageTextView.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/ToolBar.h"

#include <QClipboard>
#include <QDir>
#include <QMimeData>
#include <QPointer>
#include <QTextDocument>

using namespace uitest;

namespace {

class DocumentOnScreen : public Business {
protected:
    void SetUp() override
    {
        begin();
        QObject::connect(&app(), &Vendaro::documentOpened, &m_context, [this](CustomInvoiceController* opened) {
            document = opened;
            window = new DocumentWindow(opened);
            window->show();
        });
        Contact& ada = contact("Ada Penrose");
        orders().create();
        orders().form.orderTitle.edit("Three stools");
        orders().addItemToCurrentOrder(item("Oak stool", "10", "12.50"));
        orders().connectContact(ada, currentOrder());
        orders().form.stationery.setTitle("Invoice");
        orders().form.printInvoice.trigger();
        ASSERT_FALSE(window.isNull());
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    void TearDown() override
    {
        delete window;
        settle();
    }
    BackgroundImageTextView* paper() const { return window->findChild<BackgroundImageTextView*>(); }
    QStringList attachments() const
    {
        const QString folder = databaseFolder() + "/Attachments/order1";
        return QDir(folder).entryList(QDir::Files);
    }

    QObject m_context;
    QPointer<CustomInvoiceController> document;
    QPointer<DocumentWindow> window;
};

} // namespace

TEST_F(DocumentOnScreen, showsTheFilledTemplateWithTheKeyboardOnThePaper)
{
    EXPECT_EQ(window->windowTitle(), QString("Invoice"));
    EXPECT_TRUE(paper()->hasFocus());
    const QString text = paper()->toPlainText();
    for (const char* words : {"Ada Penrose", "Oak stool", "12.50"})
        EXPECT_TRUE(text.contains(words)) << words << " is missing in " << text.toStdString();
    EXPECT_FALSE(text.contains('<')) << text.toStdString();
}

TEST_F(DocumentOnScreen, aDamagedTemplateIsToldAboveThePaper)
{
    EXPECT_EQ(window->findChild<MessageBar*>(), nullptr);
    delete window;
    const QString options = supportFolder() + "/stationary/Invoice.plist";
    QFile file(options);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plist><array/></plist>");
    file.close();

    orders().form.printInvoice.trigger();

    ASSERT_FALSE(window.isNull());
    auto* bar = window->findChild<MessageBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->text(), options + " could not be read: its root is no dictionary. The document goes without its options.");
    EXPECT_TRUE(paper()->toPlainText().contains("Ada Penrose"));
    EXPECT_LE(bar->mapTo(window, bar->rect().bottomLeft()).y(), paper()->mapTo(window, QPoint()).y());
}

TEST_F(DocumentOnScreen, thePaperHasTheWidthOfTheSheetAndAtLeastItsHeight)
{
    const QSizeF points = document->pageSetup().paper.size(QPageSize::Point);
    EXPECT_EQ(paper()->width(), qRound(points.width() * 96 / 72));
    EXPECT_GE(paper()->height(), qRound(points.height() * 96 / 72));
}

TEST_F(DocumentOnScreen, whatIsTypedGoesIntoTheDocumentAndThePdf)
{
    paper()->moveCursor(QTextCursor::End);
    QTest::keyClicks(paper(), "Thank you Ada");
    EXPECT_TRUE(document->document().toPlainText().endsWith("Thank you Ada"));
    alerts.answer("OK");
    child<QAction>(*window, "pdfItemIdentifier")->trigger();
    EXPECT_EQ(alerts.texts(), QStringList({"Invoice saved and attached to the order"}));
    EXPECT_EQ(attachments().size(), 1);
}

TEST_F(DocumentOnScreen, ctrlSSavesThePdfAndCtrlPPrints)
{
    alerts.answer("OK");
    QTest::keyClick(paper(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(attachments().size(), 1);
    QTest::keyClick(paper(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(printing.titles.size(), 1);
}

TEST_F(DocumentOnScreen, wordsPastedFromElsewhereLeaveTheirStyleAndPicturesBehind)
{
    auto* clip = new QMimeData;
    clip->setHtml("<img src=\"http://example.invalid/x.png\"><b>Dear</b> Ada");
    clip->setText("Dear Ada");
    QApplication::clipboard()->setMimeData(clip);
    paper()->moveCursor(QTextCursor::End);
    paper()->paste();
    EXPECT_TRUE(document->document().toPlainText().endsWith("Dear Ada"));
    EXPECT_FALSE(document->document().toPlainText().contains(QChar::ObjectReplacementCharacter));
}

TEST_F(DocumentOnScreen, closingTheWindowEndsTheDocument)
{
    QTest::keyClick(paper(), Qt::Key_W, Qt::ControlModifier);
    settle();
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(document.isNull());
}

TEST_F(DocumentOnScreen, escapeClosesItAsWell)
{
    QTest::keyClick(paper(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(window.isNull());
}

TEST_F(DocumentOnScreen, theWindowGoesWhenTheDocumentGoes)
{
    delete document;
    settle();
    EXPECT_TRUE(window.isNull());
}

TEST_F(DocumentOnScreen, quittingTakesTheWindowAlong)
{
    app().quit();
    settle();
    EXPECT_TRUE(document.isNull());
    EXPECT_TRUE(window.isNull());
}

TEST_F(DocumentOnScreen, itsCommandsCanBeReachedByNameAndKeyboard)
{
    auto* bar = window->findChild<ToolBar*>();
    for (const char* name : {"printItemIdentifier", "pdfItemIdentifier"}) {
        const QAction* action = child<QAction>(*window, name);
        EXPECT_FALSE(action->shortcut().isEmpty()) << name;
        const QWidget* button = bar->widgetForAction(const_cast<QAction*>(action));
        ASSERT_NE(button, nullptr);
        EXPECT_FALSE(button->accessibleName().isEmpty()) << name;
        EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus) << name;
    }
    EXPECT_FALSE(paper()->accessibleName().isEmpty());
}
