// A business with earlier states, and short ways to look at one and to bring records back from it.
#pragma once

#include "app/Restoring.h"

#include "support/Business.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

class RestoringTest : public Business {
protected:
    /// A business whose state of this morning is kept: an order with two lines and a payment, a contact, an item, a task with its goal.
    void beginWithHistory()
    {
        begin();
        Contact& ada = contact("Ada Hill");
        Item& mug = item("Mug");
        mug.setCode("MUG");
        Order& stools = order("Three stools");
        stools.setOrderNum("S1");
        orders().connectContact(ada, stools);
        Material& line = this->line(stools, "10.00");
        line.setItem("Stool");
        line.setProduct(mug.getID());
        this->line(stools, "5.00").setItem("Cushion");
        payment(stools, "4.00");
        restart(); // the day's first write keeps the empty state
        tomorrow();
        restart(); // and this one keeps what was made
    }
    void tomorrow() { clock.moment = clock.moment.addDays(1); }
    /// Quits today and works tomorrow: what there is now is an earlier state then.
    void goOnTomorrow()
    {
        restart();
        tomorrow();
        restart();
    }
    void deleteAdaTomorrow()
    {
        contacts().getnthItem(0)->setEmail("ada@example.org");
        goOnTomorrow();
        contacts().deleteItem(*contacts().getnthItem(0));
    }
    /// Another contact gets the number that Ada had.
    Contact& bertWithHerNumber()
    {
        Contact& bert = contact("Bert Rivers");
        bert.setEmail("bert@example.org");
        EXPECT_EQ(bert.getID(), 1);
        return bert;
    }
    std::unique_ptr<Restoring> lookAtNewest()
    {
        auto restoring = app().makeRestoring();
        const std::vector<Generation> states = restoring->generations();
        EXPECT_FALSE(states.empty());
        const QStringList troubles = states.empty() ? QStringList() : look(*restoring, states.front());
        EXPECT_TRUE(troubles.isEmpty()) << troubles.join('\n').toStdString();
        return restoring;
    }
    std::unique_ptr<Restoring> lookAtOldest()
    {
        auto restoring = app().makeRestoring();
        look(*restoring, restoring->generations().back());
        return restoring;
    }
    /// Waits until the state was read; answers what was told.
    static QStringList look(Restoring& restoring, const Generation& state)
    {
        QStringList told;
        restoring.onLooked = [&](const QStringList& troubles) { told = troubles; };
        restoring.startLooking(state);
        waitFor(restoring);
        restoring.onLooked = {};
        return told;
    }
    static void waitFor(const Restoring& restoring)
    {
        const QDeadlineTimer longEnough(60'000);
        while (restoring.isLooking() && !longEnough.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        ASSERT_FALSE(restoring.isLooking());
    }
    static std::vector<std::string> rowsOf(const Restoring& restoring)
    {
        std::vector<std::string> rows;
        for (int row = 0; row < restoring.numberOfRows(); ++row)
            rows.push_back(restoring.objectValue("field1", row) + " | " + restoring.objectValue("field2", row) + " | "
                + restoring.objectValue("field3", row));
        return rows;
    }
    void deleteTheOrder()
    {
        orders().selectRow(0);
        alerts.answer(0);
        orders().deleteKey();
    }
};
