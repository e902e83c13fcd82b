// What the orders ask of the program around them.
#pragma once

#include <QString>
#include <QStringList>

class Contact;
class Order;

class Shell {
public:
    virtual ~Shell() = default;
    /// The welcome view goes once there is an order.
    virtual void hideSplash() = 0;
    virtual void bringOrdersToFront() = 0;
    /// One line in the main window's status bar.
    virtual void showStatus(const QString& line) = 0;
    /// Opens the contact's editor; saving it connects the contact to the order.
    virtual void editContactForOrder(Contact& contact, Order& order) = 0;
    virtual void createContactForOrder(Order& order) = 0;
};

/// Documents made from the user's templates.
class Stationery {
public:
    virtual ~Stationery() = default;
    /// Puts missing built-in templates into the stationery folder and answers the names to choose from.
    virtual QStringList installStationary() = 0;
    /// Opens the document of the order from the template of that name; the table is that of the order's lines.
    virtual void openDocument(const QString& templateName, Order& order) = 0;
};
