// A running application of a person who chose day-first dates, with short ways to make the records a test needs.
#pragma once

#include "support/Scenario.h"

class Business : public Scenario {
protected:
    /// keysAndValues: further settings, as they stand in the file.
    void begin(const QByteArray& keysAndValues = {})
    {
        writeSettings("<key>VendaroDateFormat</key><string>0</string>" + keysAndValues);
        start();
    }
    /// The same, with the database locked by Bob: it can only be read.
    void beginReadOnly()
    {
        writeFile("lock.xml",
            document("<dict><key>datetime</key><string>2024-03-01 09:00:00 +0000</string><key>reason</key>"
                     "<string>database open</string><key>user</key><string>bob</string></dict>"));
        begin();
    }
    /// Settings of somebody who handles tax: "S" is 20 percent on top, and shipping is taxed with it.
    static QByteArray taxSettings(const QByteArray& priceMode = "1")
    {
        return "<key>VendaroHandlesTax</key><string>YES</string><key>VendaroTaxShipping</key><string>S</string>"
               "<key>VendaroTaxRates</key><array><dict><key>code</key><string>S</string><key>rate</key><string>20</"
               "string>"
               "</dict></array><key>VendaroPricesTaxInclusive</key><string>"
            + priceMode + "</string>";
    }

    OrderManager& orders() { return app().getOrderManager(); }
    BOMManager& lines() { return app().getBOMManager(); }
    ItemManager& items() { return app().getItemManager(); }
    ContactManager& contacts() { return app().getContactManager(); }
    Order& currentOrder() { return *orders().currentItem(); }

    Contact& contact(const char* name, const char* type = "Customer")
    {
        auto contact = std::make_unique<Contact>();
        contact->setName(name);
        contact->setType(type);
        return contacts().add(std::move(contact));
    }
    Contact& firm(const char* name)
    {
        Contact& made = contact(name);
        made.makeCompany();
        return made;
    }
    Contact& personOf(const Contact& company, const char* name)
    {
        Contact& made = contact(name);
        made.setKind("Company Contact");
        made.setCompany(company.getID());
        return made;
    }
    /// Managed stock, warned about from none left.
    Item& item(const char* name, const char* qty = "10", const char* price = "5.00")
    {
        auto item = std::make_unique<Item>(items().rules());
        item->setItem(name);
        item->setQty(qty);
        item->setPrice(price);
        item->setWarnlevel("0");
        return items().add(std::move(item));
    }
    Item& collectiveItem(const char* name, std::initializer_list<std::pair<const Item*, float>> parts)
    {
        Item& collective = item(name, "");
        collective.makeCollectiveItem(true);
        for (const auto& [part, qty] : parts) {
            collective.addConstituent(*part);
            collective.setConstituentQty(static_cast<int>(collective.getConstituents().size()) - 1, qty);
        }
        return collective;
    }
    Order& order(const char* title, const char* status = "Enquiry")
    {
        Order& order = orders().createAndAddDataObject();
        order.setTitle(title);
        order.setStatus(status);
        return order;
    }
    /// A line with a total, that is from no item.
    Material& line(const Order& order, const char* total, const char* taxCode = "S")
    {
        auto line = std::make_unique<Material>(lines().rules(), order.getID());
        line->setTotal(total);
        line->setTaxCode(taxCode);
        return lines().add(std::move(line));
    }
    Payment& payment(Order& order, const char* amount, const char* date = "01/03/24")
    {
        Payment& payment = app().getPaymentManager().addPaymentTo(order, {});
        payment.setAmount(amount);
        payment.setDatePaid(date);
        return payment;
    }
    template <class R>
    static std::vector<std::string> shown(const Collection<R>& list, std::string_view field)
    {
        std::vector<std::string> cells;
        for (int row = 0; row < list.numberOfRows(); ++row)
            cells.push_back(list.objectValue(field, row));
        return cells;
    }
    /// As a person does it, who is told when it cannot be.
    void deleteItem(const Item& item)
    {
        items().selectRow(items().rowOf(item));
        alerts.answer("OK");
        items().deleteKey();
    }
    const Alert& lastAlert() const { return alerts.asked().back(); }
    /// The command does nothing but say that the database is only read.
    template <class Command>
    void expectRefusal(const char* what, Command command)
    {
        alerts.forget();
        alerts.answer("OK");
        command();
        ASSERT_EQ(alerts.asked().size(), 1u) << what;
        EXPECT_EQ(lastAlert().title, "Read-only mode") << what;
    }
};
