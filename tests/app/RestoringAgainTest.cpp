// What was brought back is known again: a second look at the same state, or at another that has it too, does not list it once more.
#include "RestoringTest.h"

namespace {

class RestoringAgainTest : public RestoringTest {
protected:
    ActionManager& tasks() { return app().getActionManager(); }
    GoalManager& goals() { return app().getGoalManager(); }
    BillManager& bills() { return app().getBillManager(); }

    Action& task(const char* title)
    {
        Action& made = tasks().add(std::make_unique<Action>());
        made.setFieldByName("title", title);
        made.setFieldByName("details", std::string("All about: ") + title);
        return made;
    }
    Goal& goal(const char* name)
    {
        Goal& made = goals().add(std::make_unique<Goal>());
        made.setName(name);
        made.setDetails(std::string("All about: ") + name);
        return made;
    }
    /// An order with Ada and a line that says it has no contact, both saved yesterday.
    void storeALineWithoutAContact()
    {
        begin();
        Order& stools = order("Three stools");
        orders().connectContact(contact("Ada Hill"), stools);
        Material& stool = line(stools, "10.00");
        stool.setItem("Stool");
        stool.setContact(0);
        goOnTomorrow();
    }
    Bill& bill(const char* number, const char* name)
    {
        Bill& made = bills().createAndAddDataObject();
        made.setNumber(number);
        made.setName(name);
        return made;
    }
    Item& described(Item& item, const char* description)
    {
        item.setDescription(description);
        return item;
    }
    Contact& reached(Contact& contact, const char* email)
    {
        contact.setEmail(email);
        return contact;
    }
    /// They take the two lowest numbers of contacts that are free.
    void addTwoOthers()
    {
        reached(contact("Bert Rivers"), "bert@example.org");
        reached(contact("Cleo Marsh"), "cleo@example.org");
    }
    /// Every record that is there goes, without a question.
    void clearEverything()
    {
        for (qvDataSource* list :
            std::initializer_list<qvDataSource*> {&contacts(), &orders(), &items(), &lines(), &bills(), &tasks(), &goals()})
            list->deleteItems(std::vector<dataObject*>(list->records()));
        app().getPaymentManager().deleteItems(std::vector<dataObject*>(app().getPaymentManager().records()));
    }
    static Generation newestOf(const Restoring& restoring) { return restoring.generations().front(); }
    std::vector<std::string> lookAgainAt(const Generation& state)
    {
        const auto restoring = app().makeRestoring();
        EXPECT_TRUE(look(*restoring, state).isEmpty());
        return rowsOf(*restoring);
    }
    /// Brings all of the newest state back; nothing of it may be listed afterwards: at once, in a new look, and in a program started anew.
    void bringAllBackOnce()
    {
        const auto restoring = lookAtNewest();
        const Generation state = newestOf(*restoring);
        ASSERT_GT(restoring->numberOfRows(), 0);
        ASSERT_TRUE(restoring->bringBackAll().ok());
        const std::vector<std::string> nothing;
        EXPECT_EQ(rowsOf(*restoring), nothing);
        EXPECT_EQ(lookAgainAt(state), nothing) << "looked at again";
        restart();
        EXPECT_EQ(lookAgainAt(state), nothing) << "looked at after a start";
    }
};

} // namespace

TEST_F(RestoringAgainTest, anOrderAndItsBillWhoseNumbersOthersHave)
{
    begin();
    Order& stools = order("Three stools");
    stools.setDescription("Of beech");
    stools.setBillId(bill("B1", "Timber").getID());
    goOnTomorrow();
    clearEverything();
    Order& table = order("A table");
    table.setDescription("Of oak");
    bill("B9", "Rent");
    ASSERT_EQ(table.getID(), 1);

    bringAllBackOnce();

    ASSERT_EQ(orders().getCount(), 2);
    ASSERT_EQ(bills().getCount(), 2);
    EXPECT_EQ(presentItem(orders(), 1)->getTitle(), "A table");
    EXPECT_EQ(presentItem(orders(), 1)->getBillId(), 0);
    EXPECT_EQ(presentItem(bills(), 1)->getName(), "Rent");
    EXPECT_EQ(presentItem(orders(), 2)->getTitle(), "Three stools");
    EXPECT_EQ(presentItem(orders(), 2)->getBillId(), 2);
    EXPECT_EQ(presentItem(bills(), 2)->getName(), "Timber");
}

TEST_F(RestoringAgainTest, anOrderThatStayedNamesItsBillThatCameBack)
{
    begin();
    order("Three stools").setBillId(bill("B1", "Timber").getID());
    goOnTomorrow();
    bills().deleteItem(*bills().getItemById(1));
    bill("B9", "Rent");
    ASSERT_EQ(rowsOf(*lookAtNewest()),
        (std::vector<std::string> {"Order | 1 Three stools | Changed: bill", "Bill | B1 Timber | Deleted; its number is used by B9 Rent"}))
        << "it names another bill now";

    bringAllBackOnce();

    ASSERT_EQ(orders().getCount(), 1);
    EXPECT_EQ(orders().at(0).getBillId(), 2);
    EXPECT_EQ(presentItem(bills(), 1)->getName(), "Rent");
}

TEST_F(RestoringAgainTest, aPersonAndItsCompanyThatStandsBehindItInTheList)
{
    begin();
    Contact& ada = reached(contact("Ada Hill"), "ada@example.org");
    Contact& works = reached(firm("Hill Works"), "works@example.org");
    ada.setKind("Company Contact");
    ada.setCompany(works.getID());
    goOnTomorrow();
    clearEverything();
    addTwoOthers();

    bringAllBackOnce();

    ASSERT_EQ(contacts().getCount(), 4);
    EXPECT_EQ(presentItem(contacts(), 1)->getName(), "Bert Rivers");
    EXPECT_EQ(presentItem(contacts(), 2)->getName(), "Cleo Marsh");
    EXPECT_EQ(presentItem(contacts(), 3)->getName(), "Ada Hill");
    EXPECT_EQ(presentItem(contacts(), 3)->getCompany(), 4);
    EXPECT_EQ(presentItem(contacts(), 4)->getName(), "Hill Works");
}

TEST_F(RestoringAgainTest, setsOfSetsWithTheirPartsAndSuppliers)
{
    begin();
    reached(contact("Clay Pits", "Supplier"), "clay@example.org");
    Item& crate = described(collectiveItem("Crate", {}), "For the fair");
    Item& set = described(collectiveItem("Set", {}), "For two");
    Item& mug = described(item("Mug"), "Blue, of clay");
    mug.setSupplier("1");
    set.addConstituent(mug);
    crate.addConstituent(set);
    goOnTomorrow();
    clearEverything();
    reached(contact("Bert Rivers"), "bert@example.org");
    described(item("Tray"), "Of oak");
    described(item("Stool"), "Of beech");
    described(item("Chair"), "Of ash");

    bringAllBackOnce();

    ASSERT_EQ(items().getCount(), 6);
    EXPECT_EQ(presentItem(items(), 1)->getItem(), "Tray");
    EXPECT_EQ(presentItem(items(), 2)->getItem(), "Stool");
    EXPECT_EQ(presentItem(items(), 3)->getItem(), "Chair");
    EXPECT_EQ(presentItem(items(), 4)->getConstituents().at(0).id(), 5);
    EXPECT_EQ(presentItem(items(), 5)->getConstituents().at(0).id(), 6);
    EXPECT_EQ(presentItem(items(), 6)->getItem(), "Mug");
    EXPECT_EQ(presentItem(items(), 6)->getSupplier(), "2");
    EXPECT_EQ(presentItem(contacts(), 2)->getName(), "Clay Pits");
}

TEST_F(RestoringAgainTest, setsThatContainEachOtherAndTheLinesTheyAreSoldOn)
{
    begin();
    Item& box = described(collectiveItem("Gift box", {}), "For a friend");
    Item& set = described(collectiveItem("Tea set", {}), "In its box");
    Item& mug = described(item("Mug"), "Blue, of clay");
    box.addConstituent(set);
    set.addConstituent(mug);
    set.addConstituent(box);
    Material& sold = line(order("A present"), "30.00");
    sold.setItem("Gift box");
    sold.setProduct(box.getID());
    goOnTomorrow();
    items().deleteItems(std::vector<dataObject*>(items().records()));
    described(item("Tray"), "Of oak");
    described(item("Stool"), "Of beech");

    bringAllBackOnce();

    ASSERT_EQ(items().getCount(), 5);
    EXPECT_EQ(presentItem(items(), 1)->getItem(), "Tray");
    EXPECT_EQ(presentItem(items(), 2)->getItem(), "Stool");
    EXPECT_EQ(presentItem(items(), 3)->getItem(), "Mug") << "nobody has its number";
    EXPECT_EQ(presentItem(items(), 4)->getItem(), "Gift box");
    EXPECT_EQ(presentItem(items(), 4)->getConstituents().at(0).id(), 5);
    EXPECT_EQ(presentItem(items(), 5)->getItem(), "Tea set");
    EXPECT_EQ(presentItem(items(), 5)->getConstituents().at(0).id(), 3);
    EXPECT_EQ(presentItem(items(), 5)->getConstituents().at(1).id(), 4);
    ASSERT_EQ(lines().getCount(), 2) << "the line as it was, and the one that names what has the number now";
    EXPECT_EQ(lines().at(1).getProduct(), 4);
}

TEST_F(RestoringAgainTest, companiesThatNameEachOther)
{
    begin();
    Contact& hill = reached(firm("Hill Works"), "hill@example.org");
    Contact& river = reached(firm("River Works"), "river@example.org");
    hill.setCompany(river.getID());
    river.setCompany(hill.getID());
    goOnTomorrow();
    clearEverything();
    addTwoOthers();

    bringAllBackOnce();

    ASSERT_EQ(contacts().getCount(), 4);
    EXPECT_EQ(presentItem(contacts(), 3)->getCompany(), 4);
    EXPECT_EQ(presentItem(contacts(), 4)->getCompany(), 3);
}

TEST_F(RestoringAgainTest, ofSetsThatContainEachOtherOneIsChangedAfterwards)
{
    begin();
    Item& box = described(collectiveItem("Gift box", {}), "For a friend");
    Item& set = described(collectiveItem("Tea set", {}), "In its box");
    box.addConstituent(set);
    set.addConstituent(box);
    goOnTomorrow();
    clearEverything();
    described(item("Tray"), "Of oak");
    described(item("Stool"), "Of beech");
    const auto restoring = lookAtNewest();
    const Generation state = newestOf(*restoring);
    ASSERT_TRUE(restoring->bringBackAll().ok());
    ASSERT_EQ(restoring->numberOfRows(), 0);

    presentItem(items(), 4)->setDescription("Without its box");

    EXPECT_EQ(lookAgainAt(state),
        (std::vector<std::string> {
            "Item | Gift box | Deleted; its number is used by Tray", "Item | Tea set | Deleted; its number is used by Stool"}));
}

TEST_F(RestoringAgainTest, aWholeBusinessWhoseNumbersAnotherHas)
{
    begin();
    const auto fill = [&](const std::string& name) {
        const auto called = [&](const char* what) { return name + ' ' + what; };
        Contact& person = reached(contact(called("person").c_str()), (name + "@example.org").c_str());
        Contact& company = reached(firm(called("company").c_str()), (name + ".works@example.org").c_str());
        person.setKind("Company Contact");
        person.setCompany(company.getID());
        Item& set = described(collectiveItem(called("set").c_str(), {}), called("set, with a part").c_str());
        Item& part = described(item(called("part").c_str()), called("part, of a set").c_str());
        part.setSupplier(std::to_string(company.getID()));
        set.addConstituent(part);
        Order& made = order(called("order").c_str());
        made.setDescription(called("order, with lines"));
        made.setBillId(bill(called("B").c_str(), called("bill").c_str()).getID());
        orders().connectContact(person, made);
        orders().connectContact2(company, made);
        payment(made, name == "First" ? "4.00" : "7.00");
        for (const Item* sold : {&set, &part}) {
            Material& row = line(made, "10.00");
            row.setItem(sold->getItem());
            row.setProduct(sold->getID());
            row.setContact(person.getID());
            row.setDateAdded(name == "First" ? "01/03/24" : "02/04/24");
        }
        Action& write = task(called("writing").c_str());
        write.setFieldByName("order", std::to_string(made.getID()));
        Goal& grow = goal(called("goal").c_str());
        grow.addAction(write);
        grow.addAction(task(called("calling").c_str()));
    };
    fill("First");
    goOnTomorrow();
    clearEverything();
    fill("Second");
    ASSERT_EQ(contacts().getItemById(1)->getName(), "Second person");
    app().session().writeDatabase(orders());
    const QByteArray ordersBefore = readFile("orders.xml");
    const QByteArray linesBefore = readFile("itemsordered.xml");

    bringAllBackOnce();

    for (const qvDataSource* list : std::initializer_list<const qvDataSource*> {&contacts(), &items(), &lines(), &tasks()})
        EXPECT_EQ(list->getCount(), 4);
    EXPECT_EQ(orders().getCount(), 2);
    EXPECT_EQ(bills().getCount(), 2);
    EXPECT_EQ(goals().getCount(), 2);
    EXPECT_EQ(app().getPaymentManager().getCount(), 2);
    const Order& first = *presentItem(orders(), 2);
    EXPECT_EQ(first.getTitle(), "First order");
    EXPECT_EQ(first.getContactId(), 3);
    EXPECT_EQ(first.getContact2Id(Order::Fallback::none), 4);
    EXPECT_EQ(first.getBillId(), 2);
    EXPECT_EQ(first.getTotalPayments(), 4.0F);
    ASSERT_EQ(lines().linesOfOrder(2).size(), 2U);
    EXPECT_EQ(lines().linesOfOrder(2)[0]->getProduct(), 3);
    EXPECT_EQ(lines().linesOfOrder(2)[1]->getProduct(), 4);
    EXPECT_EQ(lines().linesOfOrder(2)[0]->getContact(), 3);
    EXPECT_EQ(presentItem(goals(), 2)->getActionsAsID(), (std::vector<int> {3, 4}));
    EXPECT_EQ(presentItem(tasks(), 3)->values().order, 2);
    const Order& second = *presentItem(orders(), 1);
    EXPECT_EQ(second.getTitle(), "Second order");
    EXPECT_EQ(second.getTotalPayments(), 7.0F);
    const auto startOf = [](const QByteArray& file) { return file.left(file.lastIndexOf("</dict>\n\t</array>")); };
    EXPECT_TRUE(readFile("orders.xml").startsWith(startOf(ordersBefore))) << "what had the numbers is as it was";
    EXPECT_TRUE(readFile("itemsordered.xml").startsWith(startOf(linesBefore)));
}

TEST_F(RestoringAgainTest, ofTwoAlikeEachOrderKeepsItsOwn)
{
    begin();
    for (int n = 0; n < 2; ++n) {
        Contact& ada = reached(contact("Ada Hill"), "ada@example.org");
        ada.setRef("A");
        orders().connectContact(ada, order(n == 0 ? "Three stools" : "Four stools"));
    }
    goOnTomorrow();
    contacts().deleteItems(std::vector<dataObject*>(contacts().records()));
    addTwoOthers();

    bringAllBackOnce();

    EXPECT_EQ(contacts().getCount(), 4);
    EXPECT_EQ(presentItem(orders(), 1)->getContactId(), 3);
    EXPECT_EQ(presentItem(orders(), 2)->getContactId(), 4);
}

TEST_F(RestoringAgainTest, ofTwoAlikeTheSecondIsKnownToBeTheOneThatCameBack)
{
    begin();
    for (int n = 0; n < 2; ++n)
        reached(contact("Ada Hill"), "ada@example.org").setRef("A");
    orders().connectContact(*contacts().getItemById(2), order("Three stools"));
    goOnTomorrow();
    contacts().deleteItems(std::vector<dataObject*>(contacts().records()));
    addTwoOthers();
    const auto restoring = lookAtNewest();

    restoring->selectRow(2);
    ASSERT_EQ(restoring->objectValue("field1", 2), "Order");
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    EXPECT_EQ(contacts().getCount(), 3);
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {"Contact | Ada Hill | Deleted; its number is used by Bert Rivers"});
}

TEST_F(RestoringAgainTest, aRecordWithoutAnythingToCallItBy)
{
    beginWithHistory();
    lines().getnthItem(0)->setItem("");
    goOnTomorrow();
    lines().deleteItem(*lines().getItemById(1));
    lines().deleteItem(*lines().getItemById(2));
    line(order("A table"), "70.00").setItem("Plank");
    ASSERT_EQ(lines().at(0).getID(), 1);

    bringAllBackOnce();

    EXPECT_EQ(lines().getCount(), 3);
    EXPECT_EQ(presentItem(lines(), 1)->getItem(), "Plank");
}

TEST_F(RestoringAgainTest, whatAnOlderStateHasUnderANumberThatItCameBackUnder)
{
    begin();
    reached(contact("Ada Hill"), "ada@example.org");
    reached(contact("Bert Rivers"), "bert@example.org");
    goOnTomorrow();
    const Generation both = newestOf(*lookAtNewest());
    contacts().deleteItems(std::vector<dataObject*>(contacts().records()));
    reached(contact("Cleo Marsh"), "cleo@example.org");
    // As if brought back from a state of another day.
    reached(contact("Ada Hill"), "ada@example.org").setRef("1");

    EXPECT_EQ(lookAgainAt(both), std::vector<std::string> {"Contact | Bert Rivers | Deleted; its number is used by Ada Hill"});
}

// Lines without a contact

TEST_F(RestoringAgainTest, aLineStoredWithoutAContactSaysNothingOfIt)
{
    begin();
    Order& stools = order("Three stools");
    line(stools, "10.00").setItem("Stool");
    goOnTomorrow();
    orders().connectContact(contact("Ada Hill"), *orders().getnthItem(0));
    lines().getnthItem(0)->setContact(1);

    EXPECT_EQ(rowsOf(*lookAtNewest()), std::vector<std::string> {"Order | 1 Three stools | Changed: contact"});
}

TEST_F(RestoringAgainTest, aLineStoredWithoutAContactKeepsTheOneItWasFilledInWith)
{
    storeALineWithoutAContact();
    ASSERT_EQ(lines().getnthItem(0)->getContact(), 1);
    orders().connectContact(contact("Bert Rivers"), *orders().getnthItem(0));

    EXPECT_EQ(rowsOf(*lookAtNewest()), std::vector<std::string> {"Order | 1 Three stools | Changed: contact"});
}

TEST_F(RestoringAgainTest, aLineStoredWithoutAContactIsKnownWhateverContactItsOrderHas)
{
    storeALineWithoutAContact();
    orders().connectContact(contact("Bert Rivers"), *orders().getnthItem(0));
    lines().deleteItem(*lines().getItemById(1));
    line(order("A table"), "70.00").setItem("Plank");
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring),
        (std::vector<std::string> {
            "Order | 1 Three stools | Changed: contact", "Line | Stool, of order 1 | Deleted; its number is used by Plank"}));

    restoring->selectRow(1);
    ASSERT_TRUE(restoring->bringBackSelected().ok());
    ASSERT_EQ(lines().at(1).getContact(), 2) << "whom the order has now";
    ASSERT_TRUE(restoring->bringBackAll().ok());

    EXPECT_EQ(orders().at(0).getContactId(), 1);
    EXPECT_EQ(lines().getCount(), 2);
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {});
}

TEST_F(RestoringAgainTest, aLineThatLostItsContactIsChanged)
{
    begin();
    Order& stools = order("Three stools");
    Material& stool = line(stools, "10.00");
    stool.setItem("Stool");
    stool.setContact(contact("Ada Hill").getID());
    goOnTomorrow();
    lines().getnthItem(0)->setContact(0);

    EXPECT_EQ(rowsOf(*lookAtNewest()), std::vector<std::string> {"Line | Stool, of order 1 | Changed: contact"});
}

// Goals and their tasks

TEST_F(RestoringAgainTest, aGoalThatNamedATaskThatWasGoneAlready)
{
    begin();
    Goal& grow = goal("Grow");
    grow.addAction(task("Call"));
    grow.addAction(task("Write"));
    tasks().deleteItem(*tasks().getItemById(2));
    goOnTomorrow();
    ASSERT_EQ(goals().at(0).getActionsAsID(), std::vector<int> {1});

    EXPECT_EQ(rowsOf(*lookAtNewest()), std::vector<std::string> {});
    goals().at(0).setDetails("More");
    bringAllBackOnce();
    EXPECT_EQ(goals().at(0).getActionsAsID(), std::vector<int> {1});
}

TEST_F(RestoringAgainTest, aGoalWhoseTaskWasDeletedTodayHasNotChanged)
{
    begin();
    Goal& grow = goal("Grow");
    grow.addAction(task("Call"));
    grow.addAction(task("Write"));
    goOnTomorrow();
    tasks().deleteItem(*tasks().getItemById(2));

    EXPECT_EQ(rowsOf(*lookAtNewest()), std::vector<std::string> {"Task | Write | Deleted"}) << "it still names it";
}

TEST_F(RestoringAgainTest, aGoalBringsTheTasksAlongThatItHad)
{
    begin();
    Goal& grow = goal("Grow");
    grow.addAction(task("Call"));
    grow.addAction(task("Write"));
    task("Read");
    goOnTomorrow();
    goals().at(0).removeActionAtIndex(1);
    tasks().deleteItem(*tasks().getItemById(2));
    tasks().deleteItem(*tasks().getItemById(3));
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring),
        (std::vector<std::string> {"Task | Write | Deleted", "Task | Read | Deleted", "Goal | Grow | Changed: actions"}));

    restoring->selectRow(2);
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    EXPECT_EQ(goals().at(0).getActionsAsID(), (std::vector<int> {1, 2}));
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {"Task | Read | Deleted"});
}
