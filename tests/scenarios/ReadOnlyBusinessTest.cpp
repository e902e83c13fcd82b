// A database that somebody else has open: nothing that would change it does, each refusal says why, and no byte moves.
#include "support/Business.h"

#include <QDirIterator>
#include <QFile>

#include <map>

namespace {

class ReadOnlyBusinessTest : public Business {
protected:
    void SetUp() override
    {
        begin(taxSettings());
        contact("Ann Lee");
        contact("Potters Ltd").makeCompany();
        item("Mug", "10").setTaxcode("S");
        Order& sale = order("Sale");
        orders().editThisOrder(sale);
        orders().addItemToCurrentOrder(items().at(0));
        orders().form.tenderFullAmount.trigger();
        orders().form.shipping.edit("5.00");
        orders().form.save.trigger();
        quit();
        writeFile("lock.xml",
            document("<dict><key>datetime</key><string>2024-03-01 09:00:00 +0000</string><key>reason</key>"
                     "<string>database open</string><key>user</key><string>bob</string></dict>"));
        m_before = bytes();
        start();
        ASSERT_TRUE(app().session().isReadOnly());
    }
    void TearDown() override
    {
        quit();
        const std::map<QString, QByteArray> after = bytes();
        for (const auto& [path, before] : m_before) {
            ASSERT_TRUE(after.contains(path)) << path.toStdString();
            EXPECT_EQ(after.at(path).toStdString(), before.toStdString()) << path.toStdString() << '\n' << log().join('\n').toStdString();
        }
        for (const auto& [path, added] : after)
            EXPECT_TRUE(m_before.contains(path)) << path.toStdString() << " is new:\n" << added.toStdString();
    }
    std::map<QString, QByteArray> bytes() const
    {
        std::map<QString, QByteArray> files;
        QDirIterator walk(databaseFolder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile file(walk.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            files[file.fileName()] = file.readAll();
        }
        return files;
    }
    template <class Work>
    void refused(Work work)
    {
        alerts.forget();
        alerts.answer("OK");
        work();
        EXPECT_EQ(alerts.answersLeft(), 0u) << "nothing was said";
        if (alerts.asked().empty())
            return;
        EXPECT_EQ(lastAlert().title, "Read-only mode");
        EXPECT_EQ(lastAlert().text, "Database is in read-only mode.");
        EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    }
    Order& sale() { return orders().at(0); }

private:
    std::map<QString, QByteArray> m_before;
};

TEST_F(ReadOnlyBusinessTest, nothingNewIsMade)
{
    refused([&] { orders().create(); });
    refused([&] { orders().createPurchaseOrder(); });
    refused([&] { items().create(); });
    refused([&] { items().createForCurrentOrder(); });
    refused([&] { contacts().create(); });
    refused([&] { contacts().companyEditor.create(); });
    EXPECT_EQ(orders().getCount(), 1);
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(contacts().getCount(), 2);
    EXPECT_FALSE(orders().form.isOpen() || items().form.isOpen() || contacts().form.isOpen());
}

TEST_F(ReadOnlyBusinessTest, savingJustClosesTheEditors)
{
    orders().editThisOrder(sale());
    orders().form.orderTitle.edit("Other");
    refused([&] { orders().form.save.trigger(); });
    EXPECT_EQ(sale().getTitle(), "Sale");
    EXPECT_FALSE(orders().form.isOpen());

    items().editThisItem(items().at(0));
    items().form.item.edit("Other");
    items().form.collective.edit(true);
    refused([&] { items().form.save.trigger(); });
    EXPECT_EQ(items().at(0).getItem(), "Mug");
    EXPECT_FALSE(items().at(0).isCollectiveItem());
    EXPECT_FALSE(items().form.isOpen());

    contacts().editThisContact(contacts().at(0));
    contacts().form.name.edit("Other");
    refused([&] { contacts().form.save.trigger(); });
    EXPECT_EQ(contacts().at(0).getName(), "Ann Lee");
    EXPECT_FALSE(contacts().form.isOpen());
}

TEST_F(ReadOnlyBusinessTest, aCompanyIsNotEvenOpened)
{
    refused([&] { contacts().editThisContact(contacts().at(1)); });
    EXPECT_FALSE(contacts().companyEditor.form.isOpen());
}

TEST_F(ReadOnlyBusinessTest, nothingIsDeleted)
{
    orders().selectRow(0);
    items().selectRow(0);
    contacts().selectRow(0);
    for (qvDataSource* list : std::initializer_list<qvDataSource*> {&orders(), &items(), &contacts()}) {
        alerts.answer("OK");
        refused([&] { list->deleteKey(); });
    }
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(contacts().getCount(), 2);
    refused([&] { orders().deleteOrder(sale()); });
    refused([&] { lines().deleteLine(lines().at(0)); });
    EXPECT_EQ(orders().getCount(), 1);
    EXPECT_EQ(lines().getCount(), 1);
    EXPECT_EQ(items().at(0).getQty(), "9");
}

TEST_F(ReadOnlyBusinessTest, linesAndStockStayAsTheyAre)
{
    orders().editThisOrder(sale());
    refused([&] { orders().addItemToCurrentOrder(items().at(0)); });
    refused([&] { lines().setObjectValue("qty", 0, "5"); });
    refused([&] { lines().setObjectValue("item", 0, "Other"); });
    refused([&] { lines().deleteAllForCurrentOrder(); });
    orders().form.lineEntry.edit("Mug");
    refused([&] { orders().form.addLine.trigger(); });
    refused([&] { orders().form.addFreeLine.trigger(); });
    EXPECT_EQ(orders().form.lineEntry.text(), "Mug");
    EXPECT_EQ(lines().getCount(), 1);
    EXPECT_EQ(lines().at(0).getQty(), "1");
    EXPECT_EQ(items().at(0).getQty(), "9");
}

TEST_F(ReadOnlyBusinessTest, theKindOfAnOrderStaysAsItIs)
{
    orders().editThisOrder(sale());
    ChoiceField& type = orders().form.type;
    refused([&] { type.edit(static_cast<int>(type.titles().indexOf("Purchase Order"))); });
    EXPECT_EQ(sale().getType(), "Customer");
    EXPECT_EQ(type.title(), "Customer");
    EXPECT_FALSE(orders().form.addStock.isVisible());
}

TEST_F(ReadOnlyBusinessTest, noPaymentIsTakenOrGivenBack)
{
    orders().editThisOrder(sale());
    refused([&] { orders().form.tender.trigger(); });
    EXPECT_FALSE(orders().tender.form.isOpen());
    refused([&] { orders().form.tenderFullAmount.trigger(); });
    orders().paymentTable.selectRow(0);
    refused([&] { orders().form.tenderRemove.trigger(); });
    refused([&] { EXPECT_FALSE(orders().paymentTable.setObjectValue("amount", 0, "1.00")); });
    ASSERT_EQ(sale().getPaymentArray().size(), 1u);
    EXPECT_EQ(sale().getPaymentArray().front()->getAmount(), "6.00");
}

TEST_F(ReadOnlyBusinessTest, noContactIsConnectedAndNoFileAttached)
{
    orders().editThisOrder(sale());
    orders().form.tab.edit(OrderForm::contactTab);
    refused([&] { orders().setContact(contacts().at(0)); });
    refused([&] { orders().form.attach.trigger(); });
    refused([&] { orders().fileDropped(settingsPath()); });
    EXPECT_EQ(sale().getContact(), nullptr);
}

} // namespace
