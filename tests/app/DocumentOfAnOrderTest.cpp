// A document and the order it was made from: its PDF goes to that order or to none, and what is said of it is true.
#include "documents/CustomInvoiceController.h"

#include "support/Business.h"

#include <QDir>
#include <QFile>

namespace {

class DocumentOfAnOrder : public Business {
protected:
    CustomInvoiceController& print(Order& order)
    {
        CustomInvoiceController* opened = nullptr;
        QObject::connect(&app(), &Vendaro::documentOpened, [&](CustomInvoiceController* document) { opened = document; });
        orders().editThisOrder(order);
        orders().form.stationery.setTitle("Invoice");
        orders().form.printInvoice.trigger();
        EXPECT_NE(opened, nullptr);
        QObject::disconnect(&app(), &Vendaro::documentOpened, nullptr, nullptr);
        return *opened;
    }
    int attachmentsOf(const Order& order) const
    {
        return static_cast<int>(
            QDir(databaseFolder() + "/Attachments/order" + QString::number(order.getID())).entryList(QDir::Files).size());
    }
};

} // namespace

TEST_F(DocumentOfAnOrder, isAttachedToItAlsoWhenAnotherOrderIsInTheEditor)
{
    begin();
    Order& bench = order("Bench");
    Order& chair = order("Chair");
    CustomInvoiceController& document = print(bench);
    orders().editThisOrder(chair);
    alerts.answer("OK");
    document.savePDF();
    EXPECT_EQ(lastAlert().title, "PDF Saved");
    EXPECT_EQ(attachmentsOf(bench), 1);
    EXPECT_EQ(attachmentsOf(chair), 0);
}

TEST_F(DocumentOfAnOrder, isNotGivenToTheNextOrderOfItsNumberOnceItsOwnIsDeleted)
{
    begin();
    Order& bench = order("Bench");
    CustomInvoiceController& document = print(bench);
    orders().deleteOrder(bench);
    Order& next = order("Chair");
    ASSERT_EQ(next.getID(), bench.getID());
    alerts.answer("OK");
    document.savePDF();
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(lastAlert().title, "Save PDF");
    EXPECT_TRUE(lastAlert().text.startsWith("The order of this document was deleted. The PDF is ")) << lastAlert().text.toStdString();
    EXPECT_EQ(attachmentsOf(next), 0);
}

TEST_F(DocumentOfAnOrder, thatCannotBeAttachedIsToldWithItsReason)
{
    begin();
    Order& bench = order("Bench");
    CustomInvoiceController& document = print(bench);
    // A file stands where the folder of the attachments belongs.
    writeFile("Attachments", "in the way");
    alerts.answer("OK");
    document.savePDF();
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(lastAlert().title, "Save PDF");
    EXPECT_TRUE(lastAlert().text.contains("could not be made")) << lastAlert().text.toStdString();
}
