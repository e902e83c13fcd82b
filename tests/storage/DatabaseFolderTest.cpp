#include "storage/DatabaseFolderTest.h"

// Loading

TEST_F(DatabaseFolderTest, filesAreTakenOverInTheirOrderWhetherThereOrNot)
{
    put("mugs.xml", document("a b"));
    put("itemsordered.xml", document("c"));

    const LoadReport report = load();

    EXPECT_EQ(loaded, (QStringList {"mugs.xml there", "orders.xml missing", "itemsordered.xml there"}));
    EXPECT_TRUE(report.damaged.isEmpty());
    EXPECT_EQ(folder.location(), location());
    EXPECT_EQ(mugs.articles.getCount(), 2);
    EXPECT_EQ(orders.articles.getCount(), 0);
    EXPECT_EQ(lines.articles.getFirstItem()->getFieldByName("name"), "c");
}

TEST_F(DatabaseFolderTest, loadingAFolderThatIsNotThereMakesNone)
{
    EXPECT_TRUE(load().damaged.isEmpty());

    EXPECT_EQ(loaded.size(), 3);
    EXPECT_FALSE(QFileInfo::exists(location()));
}

TEST_F(DatabaseFolderTest, loadingChangesNothingInTheFolder)
{
    put("mugs.xml", "damaged");
    put(".vendaro-orders.xml.1.0.tmp", "left over");
    load();

    EXPECT_EQ(contents("mugs.xml"), "damaged");
    EXPECT_EQ(QDir(location()).entryList(QDir::Files | QDir::Hidden), (QStringList {".vendaro-orders.xml.1.0.tmp", "mugs.xml"}));
}

TEST_F(DatabaseFolderTest, aDamagedFileIsToldAndKeptAndTheOthersAreRead)
{
    const QByteArray damaged = document("a b").chopped(30);
    put("mugs.xml", damaged);
    put("orders.xml", document("c"));

    const LoadReport report = load();

    const QString kept = recoveryFolder() + "/20240301-101530 mugs.xml";
    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].startsWith("mugs.xml could not be read (line ")) << report.damaged[0].toStdString();
    EXPECT_TRUE(report.damaged[0].endsWith("Its original is kept as " + kept + ".")) << report.damaged[0].toStdString();
    EXPECT_TRUE(log().contains(report.damaged[0]));
    EXPECT_EQ(contents(kept), damaged);
    EXPECT_EQ(mugs.articles.getCount(), 0);
    EXPECT_EQ(orders.articles.getCount(), 1);
}

TEST_F(DatabaseFolderTest, aFolderInAFilesPlaceIsDamageToo)
{
    block("mugs.xml");

    const LoadReport report = load();

    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].contains("is not an ordinary file"));
}

TEST_F(DatabaseFolderTest, anOriginalThatCouldNotBeKeptIsKeptBeforeItIsReplaced)
{
    put("mugs.xml", "damaged");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const LoadReport report = load();
    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].contains("Its original could not be copied yet")) << report.damaged[0].toStdString();
    mugs.articles.addNamed("new");

    write({&mugFile});
    EXPECT_EQ(contents("mugs.xml"), "damaged");
    EXPECT_NE(folder.unsavedReason(), "");

    ASSERT_TRUE(inTheWay.remove());
    write({&mugFile});
    EXPECT_EQ(contents("mugs.xml"), document("new"));
    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 mugs.xml"), "damaged");
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, anOriginalThatSomebodyTookAwayHoldsNothingUp)
{
    put("mugs.xml", "damaged");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    load();
    ASSERT_TRUE(QFile::remove(location() + "/mugs.xml"));
    mugs.articles.addNamed("new");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("new"));
}

// Writing

TEST_F(DatabaseFolderTest, whatIsWrittenNowIsOnDiskWhenItReturns)
{
    load();
    mugs.articles.addNamed("a");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_FALSE(QFileInfo::exists(location() + "/orders.xml"));
    EXPECT_TRUE(leftovers().isEmpty());
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, severalFilesAreWrittenTogether)
{
    load();
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");

    write({&orderFile, &lineFile, &mugFile});

    EXPECT_EQ(contents("orders.xml"), document("order"));
    EXPECT_EQ(contents("itemsordered.xml"), document("line"));
    EXPECT_EQ(contents("mugs.xml"), document(""));
    EXPECT_TRUE(leftovers().isEmpty());
}

TEST_F(DatabaseFolderTest, aWriteInTheBackgroundHoldsTheStateOfItsMoment)
{
    load();
    Article& mug = mugs.articles.addNamed("before");
    int told = 0;
    folder.onSavedStateChanged = [&] { ++told; };

    write({&mugFile}, DatabaseFolder::When::inBackground);
    mug.setFieldByName("name", "after");
    folder.drain();

    EXPECT_EQ(contents("mugs.xml"), document("before"));
    EXPECT_EQ(told, 1);
}

TEST_F(DatabaseFolderTest, writesOfOneFileNeverOvertakeEachOther)
{
    load();
    Article& mug = mugs.articles.addNamed("0");
    for (int i = 1; i <= 50; ++i) {
        mug.setFieldByName("name", std::to_string(i));
        write({&mugFile}, DatabaseFolder::When::inBackground);
    }
    mug.setFieldByName("name", "last");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("last"));
}

TEST_F(DatabaseFolderTest, whatIsQueuedIsWrittenBeforeTheProgramEnds)
{
    {
        DatabaseFolder brief(recovery, clock, user);
        brief.registerFile(mugFile);
        brief.load(location(), [](RecordFile&, bool) {});
        mugs.articles.addNamed("a");
        RecordFile* const files[] {&mugFile};
        brief.write(files, DatabaseFolder::When::inBackground);
    }

    EXPECT_EQ(contents("mugs.xml"), document("a"));
}

TEST_F(DatabaseFolderTest, aFileThatCannotBeWrittenIsLoggedAndTheOthersGo)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");

    write({&mugFile, &orderFile, &lineFile});

    EXPECT_EQ(contents("orders.xml"), document("order"));
    EXPECT_EQ(contents("itemsordered.xml"), document("line"));
    EXPECT_TRUE(log().contains("mugs not written successfully"));
    EXPECT_FALSE(log().contains("orders not written successfully"));
    EXPECT_TRUE(folder.unsavedReason().contains("mugs.xml could not be put into its place"));
    EXPECT_TRUE(leftovers().isEmpty()) << leftovers().join(' ').toStdString();
}

TEST_F(DatabaseFolderTest, whatCouldNotBeWrittenIsTriedAgain)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    write({&mugFile});
    unblock("mugs.xml");
    mugs.articles.addNamed("another");

    folder.retry();
    folder.drain();

    EXPECT_EQ(contents("mugs.xml"), document("mug another"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, theReasonIsThatOfAFileThatIsUnsavedStill)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    block("orders.xml");
    write({&mugFile});
    write({&orderFile});
    unblock("orders.xml");
    write({&orderFile});

    EXPECT_TRUE(folder.unsavedReason().contains("mugs.xml")) << folder.unsavedReason().toStdString();
}

TEST_F(DatabaseFolderTest, aWriteOfAnotherCollectionDoesNotTakeAlongWhatIsUnsaved)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    write({&mugFile});
    unblock("mugs.xml");

    write({&orderFile});

    EXPECT_EQ(contents("mugs.xml"), "(none)");
    EXPECT_NE(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, ordersAndTheirLinesGoBothOrNeither)
{
    put("orders.xml", document("old"));
    put("itemsordered.xml", document("old"));
    load();
    block("orders.xml");
    lines.articles.addNamed("line");

    write({&orderFile, &lineFile, &mugFile});

    EXPECT_EQ(contents("itemsordered.xml"), document("old"));
    EXPECT_EQ(contents("mugs.xml"), document(""));
    EXPECT_TRUE(log().contains("orders not written successfully"));
    EXPECT_TRUE(log().contains("materials not written successfully"));
}

TEST_F(DatabaseFolderTest, writesGoToTheFolderThatWasLoaded)
{
    load();
    mugs.articles.addNamed("a");
    write({&mugFile}, DatabaseFolder::When::inBackground);
    folder.load(user.home() + "/other.vendb", [](RecordFile&, bool) {});
    write({&orderFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_EQ(contents("orders.xml"), "(none)");
    EXPECT_EQ(contents(user.home() + "/other.vendb/orders.xml"), document(""));
}

TEST_F(DatabaseFolderTest, aSecondLoadForgetsWhatWasUnsavedInTheFirst)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    write({&mugFile});
    ASSERT_NE(folder.unsavedReason(), "");

    folder.load(user.home() + "/other.vendb", [](RecordFile&, bool) {});

    EXPECT_EQ(folder.unsavedReason(), "");
}

// Somebody else's hands

TEST_F(DatabaseFolderTest, aFileThatCameWentOrChangedSinceItWasReadIsSeen)
{
    put("mugs.xml", document("a"));
    load();
    EXPECT_FALSE(folder.changedSinceRead());

    put("mugs.xml", document("a b"));
    EXPECT_TRUE(folder.changedSinceRead());
    load();
    EXPECT_FALSE(folder.changedSinceRead());
    put("orders.xml", document("c"));
    EXPECT_TRUE(folder.changedSinceRead());
    load();
    QFile::remove(location() + "/mugs.xml");
    EXPECT_TRUE(folder.changedSinceRead());
}

TEST_F(DatabaseFolderTest, otherFilesOfTheFolderMayChange)
{
    put("mugs.xml", document("a"));
    load();

    put("notes.txt", "somebody's");

    EXPECT_FALSE(folder.changedSinceRead());
}

TEST_F(DatabaseFolderTest, readingAgainTakesWhatIsThereNowAndLeavesTheLock)
{
    put("mugs.xml", document("a"));
    load();
    ASSERT_TRUE(folder.lock().acquire().value());
    put("mugs.xml", document("b c"));
    mugs.articles.clear();
    loaded.clear();

    folder.readAgain([this](RecordFile& file, bool) { loaded += file.fileName(); });

    EXPECT_EQ(loaded, (QStringList {"mugs.xml", "orders.xml", "itemsordered.xml"}));
    EXPECT_EQ(mugs.articles.getCount(), 2);
    EXPECT_TRUE(folder.lock().isOurs());
    EXPECT_FALSE(folder.changedSinceRead());
}

// Rescue

TEST_F(DatabaseFolderTest, whatCouldNotBeWrittenIsKeptAsItIsNow)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    Article& mug = mugs.articles.addNamed("before");
    write({&mugFile, &orderFile});
    mug.setFieldByName("name", "now");

    const QStringList sentences = folder.keepUnsaved();

    const QString kept = recoveryFolder() + "/20240301-101530 mugs.xml";
    EXPECT_EQ(sentences, QStringList {"mugs.xml could not be written. What it should hold is kept as " + kept + "."});
    EXPECT_EQ(contents(kept), document("now"));
    EXPECT_EQ(QDir(recoveryFolder()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(log().contains(sentences.value(0)));
}

TEST_F(DatabaseFolderTest, whenAllIsSavedNothingIsKept)
{
    load();
    write({&mugFile});

    EXPECT_TRUE(folder.keepUnsaved().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(recoveryFolder()));
}

TEST_F(DatabaseFolderTest, whatCannotBeKeptEitherIsSaid)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    write({&mugFile});
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    const QStringList sentences = folder.keepUnsaved();

    ASSERT_EQ(sentences.size(), 1);
    EXPECT_TRUE(sentences[0].startsWith("mugs.xml could not be written. cannot make the folder")) << sentences[0].toStdString();
}

TEST_F(DatabaseFolderTest, aFolderThatWentAwayIsMadeAnewAndEachFileKeptBesides)
{
    QDir().mkpath(location());
    load();
    mugs.articles.addNamed("a");
    write({&mugFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));

    write({&mugFile});
    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_EQ(contents(user.home() + "/gone.vendb/mugs.xml"), document("a"));
    EXPECT_EQ(QDir(recoveryFolder()).entryList({"* mugs.xml"}).size(), 1) << "the newest copy is enough";
    EXPECT_EQ(folder.unsavedReason(), location() + " is not the folder that was opened");
}

TEST_F(DatabaseFolderTest, whenItComesBackWritingGoesOnAsBefore)
{
    QDir().mkpath(location());
    load();
    mugs.articles.addNamed("a");
    write({&mugFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    write({&mugFile});
    ASSERT_TRUE(QDir(location()).removeRecursively());
    ASSERT_TRUE(QDir().rename(user.home() + "/gone.vendb", location()));
    mugs.articles.addNamed("b");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a b"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, aFolderThatStandsInAnothersPlaceGivesNoStateOfTheDay)
{
    put("mugs.xml", document("a"));
    load();
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    write({&mugFile});
    write({&mugFile});
    EXPECT_TRUE(folder.generations().of(location()).empty());
    ASSERT_TRUE(QDir(location()).removeRecursively());
    ASSERT_TRUE(QDir().rename(user.home() + "/gone.vendb", location()));
    mugs.articles.addNamed("b");

    write({&mugFile});

    ASSERT_EQ(folder.generations().of(location()).size(), 1U);
    EXPECT_EQ(contents(folder.generations().of(location())[0].folder + "/mugs.xml"), document("a"));
}

TEST_F(DatabaseFolderTest, aFolderMadeByTheFirstWriteIsNotAnotherOne)
{
    load();
    write({&mugFile});
    write({&mugFile});

    EXPECT_EQ(folder.unsavedReason(), "");
    EXPECT_TRUE(recovery.things().empty());
}

TEST_F(DatabaseFolderTest, whatWentIntoAnotherFolderIsUnsavedUntilItIsInItsOwn)
{
    QDir().mkpath(location());
    load();
    write({&mugFile, &orderFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    orders.articles.addNamed("order");
    write({&orderFile});
    ASSERT_TRUE(QDir(location()).removeRecursively());
    ASSERT_TRUE(QDir().rename(user.home() + "/gone.vendb", location()));
    mugs.articles.addNamed("mug");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("mug"));
    EXPECT_EQ(contents("orders.xml"), document(""));
    EXPECT_EQ(folder.unsavedReason(), location() + " is not the folder that was opened");

    folder.retry();
    folder.drain();
    EXPECT_EQ(contents("orders.xml"), document("order"));
    EXPECT_EQ(folder.unsavedReason(), "");
    EXPECT_TRUE(folder.keepUnsaved().isEmpty());
}

TEST_F(DatabaseFolderTest, whatIsUnsavedAfterItsFolderCameBackIsKeptAsItIsNow)
{
    QDir().mkpath(location());
    load();
    write({&orderFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    orders.articles.addNamed("order");
    write({&orderFile});
    ASSERT_TRUE(QDir(location()).removeRecursively());
    ASSERT_TRUE(QDir().rename(user.home() + "/gone.vendb", location()));
    block("orders.xml");
    orders.articles.addNamed("another");
    folder.retry();
    folder.drain();
    clock.moment = clock.moment.addSecs(60);

    const QStringList sentences = folder.keepUnsaved();

    ASSERT_EQ(sentences.size(), 1);
    EXPECT_TRUE(sentences[0].startsWith("orders.xml could not be written.")) << sentences[0].toStdString();
    EXPECT_EQ(contents(recovery.things().at(0).path), document("order another"));
}

TEST_F(DatabaseFolderTest, whileAnotherFolderStandsThereItIsKeptOnceAndNotTriedAgain)
{
    QDir().mkpath(location());
    load();
    write({&mugFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    mugs.articles.addNamed("mug");
    write({&mugFile});
    ASSERT_EQ(recovery.things().size(), 1U);
    const QString copy = recovery.things()[0].path;
    clock.moment = clock.moment.addSecs(60);

    folder.retry();
    folder.drain();

    ASSERT_EQ(recovery.things().size(), 1U);
    EXPECT_EQ(recovery.things()[0].path, copy);
    EXPECT_EQ(
        folder.keepUnsaved(), QStringList {"mugs.xml was written into another folder than was opened. A copy is kept as " + copy + "."});
}
