// The desktop behind the windows: save panels, alerts, who is working.
#include "ui/RealDesktop.h"

#include "UiTest.h"
#include "desktop/AlertTexts.h"
#include "ui/kit/AlertCard.h"
#include "ui/kit/IconLabel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <pwd.h>
#include <unistd.h>

using namespace uitest;

namespace {

class SavingPanel : public testing::Test {
protected:
    void SetUp() override
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        show(window);
        panel.title = "Save as PDF";
        panel.fileType = "pdf";
        panel.folder = folder.path();
        panel.name = "invoice 7";
    }
    void TearDown() override { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); }

    /// Answers the file dialog as soon as it is there.
    template <class Answer>
    void answer(Answer with)
    {
        QTimer::singleShot(50, &window, [this, with] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shownTitle = dialog->windowTitle();
            with(*dialog);
        });
    }
    static void typeName(QFileDialog& dialog, const QString& name)
    {
        auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(field, nullptr);
        field->setText(name);
        QMetaObject::invokeMethod(&dialog, "accept");
    }
    void exists(const QString& name) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("before");
    }
    QString path(const QString& name) const { return QDir(folder.path()).canonicalPath() + '/' + name; }

    const QTemporaryDir folder;
    QWidget window;
    RealFilePanels panels;
    SavePanel panel;
    QString shownTitle;
};

} // namespace

TEST_F(SavingPanel, startsFromTheFolderAndNameAndAddsTheEnding)
{
    answer([](QFileDialog& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
    const std::optional<QString> chosen = panels.saveFile(panel);
    EXPECT_EQ(chosen.value_or("none"), path("invoice 7.pdf"));
    EXPECT_EQ(shownTitle, QString("Save as PDF"));
}

TEST_F(SavingPanel, anotherEndingIsKeptAndOursComesBehindIt)
{
    answer([](QFileDialog& dialog) { typeName(dialog, "invoice 1.2"); });
    EXPECT_EQ(panels.saveFile(panel).value_or("none"), path("invoice 1.2.pdf"));
}

TEST_F(SavingPanel, aFolderThatIsThereIsChosenAsItIs)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("Shop.vendb"));
    panel.fileType = "vendb";
    panel.name = {};
    panel.what = SavePanel::What::existingFolder;
    answer([](QFileDialog& dialog) { typeName(dialog, "Shop.vendb"); });
    EXPECT_EQ(panels.saveFile(panel), path("Shop.vendb"));
}

TEST_F(SavingPanel, ofFoldersTheOneThatIsShownIsChosenButNoneThatIsOnlySelected)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("site"));
    panel.fileType = {};
    panel.name = {};
    panel.prompt = "Choose";
    panel.nameLabel = "Folder name";
    panel.what = SavePanel::What::shownFolder;
    answer([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.labelText(QFileDialog::Accept), QString("Choose"));
        EXPECT_EQ(dialog.labelText(QFileDialog::FileName), QString("Folder name"));
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        typeName(dialog, "site");
    });
    EXPECT_EQ(panels.saveFile(panel), std::nullopt);
    answer([this](QFileDialog& dialog) {
        dialog.setDirectory(path("site"));
        typeName(dialog, {});
    });
    EXPECT_EQ(panels.saveFile(panel).value_or("none"), path("site"));
}

TEST_F(SavingPanel, cancellingAnswersNothing)
{
    answer([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(panels.saveFile(panel), std::nullopt);
}

TEST_F(SavingPanel, aFileThatWouldBeReplacedIsAskedAboutUnderItsWholeName)
{
    exists("invoice 1.2.pdf");
    for (const int button : {0, 1}) {
        answer([](QFileDialog& dialog) { typeName(dialog, "invoice 1.2"); });
        QString asked;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &window, [&] {
            if (auto* alert = qobject_cast<AlertCard*>(SheetStack::instance().top())) {
                watch.stop();
                asked = alert->text();
                alert->buttons()[button]->click();
            }
        });
        watch.start(20);
        const std::optional<QString> chosen = panels.saveFile(panel);
        EXPECT_TRUE(asked.contains("invoice 1.2.pdf")) << asked.toStdString();
        EXPECT_EQ(chosen.has_value(), button == 1);
    }
}

TEST(RealUser, isWhoeverRunsTheProgram)
{
    const RealUser user;
    EXPECT_EQ(user.loginName(), QString::fromLocal8Bit(getpwuid(getuid())->pw_name));
    EXPECT_EQ(user.home(), QDir::homePath());
    EXPECT_FALSE(user.home().endsWith('/'));
}

TEST(RealAlerts, answerTheIndexOfTheButtonAndCancelledForEscape)
{
    QWidget window;
    window.resize(800, 600);
    show(window);
    RealAlerts alerts;
    const Alert alert {"Out of Stock", "Do you still wish to add 1?", {"Add anyway", "Cancel"}};
    QTimer::singleShot(50, &window, [] {
        auto* card = qobject_cast<AlertCard*>(SheetStack::instance().top());
        ASSERT_NE(card, nullptr);
        EXPECT_EQ(card->title(), QString("Out of Stock"));
        EXPECT_EQ(card->text(), QString("Do you still wish to add 1?"));
        card->buttons()[1]->click();
    });
    EXPECT_EQ(alerts.ask(alert), 1);
    QTimer::singleShot(50, &window, [] { SheetStack::instance().top()->cancel(); });
    EXPECT_EQ(alerts.ask(alert), -1);
}

TEST(RealAlerts, onlyQuestionsCarryTheSignOfWarning)
{
    QWidget window;
    window.resize(800, 600);
    show(window);
    RealAlerts alerts;
    const auto iconOf = [&](const AlertText& wording) {
        QString name;
        QTimer::singleShot(50, &window, [&name] {
            name = SheetStack::instance().top()->findChild<IconLabel*>()->iconName();
            SheetStack::instance().top()->cancel();
        });
        alerts.ask(makeAlert(wording));
        return name;
    };
    EXPECT_EQ(iconOf(alerts::pdfSaved), QString("data-information"));
    EXPECT_EQ(iconOf(alerts::deleteOrder), QString("data-warning"));
}

TEST(RealAlerts, whatCanLoseDataIsNotWhatReturnPresses)
{
    QWidget window;
    window.resize(800, 600);
    show(window);
    RealAlerts alerts;
    QTimer::singleShot(50, &window, [] {
        auto* card = qobject_cast<AlertCard*>(SheetStack::instance().top());
        ASSERT_NE(card, nullptr);
        EXPECT_TRUE(card->buttons()[1]->hasFocus());
        QTest::keyClick(keyboard(), Qt::Key_Return);
    });
    EXPECT_EQ(alerts.ask(makeAlert(alerts::deleteOrder)), 1);
}
