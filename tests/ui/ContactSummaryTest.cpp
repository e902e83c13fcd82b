// A contact in an order's editor: its name, how to reach it, and the buttons that choose and open it.
#include "ui/orders/ContactSummary.h"

#include "UiTest.h"
#include "orders/OrderForm.h"

#include <QLabel>

using namespace uitest;

namespace {

class ContactShown : public testing::Test {
protected:
    /// Every text that the summary shows, its buttons' apart.
    static QStringList words(const QWidget& summary)
    {
        QStringList texts;
        for (const QLabel* label : summary.findChildren<QLabel*>()) {
            if (!label->text().isEmpty())
                texts += label->text();
        }
        return texts;
    }

    OrderForm form;
};

} // namespace

TEST_F(ContactShown, withoutAContactItSaysHowToGetOne)
{
    ContactSummary summary(form, "contact");
    EXPECT_EQ(words(summary), QStringList({"No contact", "Choose one with Select Contact…, or make one with New Contact."}));
    EXPECT_TRUE(child<QAbstractButton>(summary, "newContact")->isEnabled());
    EXPECT_TRUE(child<QAbstractButton>(summary, "pickContact")->isEnabled());
}

TEST_F(ContactShown, nameAndWaysToReachItAreShownUnderTheirWords)
{
    ContactSummary summary(form, "contact");
    form.contactName.setText("Dora Quill");
    form.contactDetails.setText("add1\t4 Mill Lane\nemail\tdora@example.org");
    const QStringList shown = words(summary);
    for (const char* word : {"Dora Quill", "Address", "4 Mill Lane", "E-mail", "dora@example.org"})
        EXPECT_TRUE(shown.contains(QString(word))) << word;
}

TEST_F(ContactShown, theSecondContactIsAPlaceOfItsOwn)
{
    ContactSummary first(form, "contact");
    ContactSummary second(form, "contact2");
    form.contact2Name.setText("Eve");
    EXPECT_TRUE(words(first).contains("No contact"));
    EXPECT_TRUE(words(second).contains("Eve"));
}

TEST_F(ContactShown, aNameOfAnyLengthLeavesRoomForTheButtons)
{
    ContactSummary summary(form, "contact");
    const int narrow = summary.minimumSizeHint().width();
    form.contactName.setText(QString("Donaudampfschifffahrtsgesellschaft ").repeated(10));
    EXPECT_LE(summary.minimumSizeHint().width(), narrow);
}

TEST_F(ContactShown, nothingIsAccentedThatCannotBePressed)
{
    ContactSummary summary(form, "contact");
    form.contactName.setText("Dora Quill");
    form.contactDetails.setText("email\tdora@example.org");
    for (const QLabel* label : summary.findChildren<QLabel*>())
        EXPECT_NE(label->property("tone").toString(), QString("accent")) << label->text().toStdString();
}
