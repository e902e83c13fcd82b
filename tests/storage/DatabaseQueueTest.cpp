// Writes that wait behind others, and what becomes of them when one of them comes to nothing.
#include "storage/DatabaseFolderTest.h"

#include <new>
#include <stdexcept>

namespace {

/// A file with a deed in the middle of being written.
class EventfulFile : public ArticleFile {
public:
    using ArticleFile::ArticleFile;

    std::unique_ptr<FileSnapshot> snapshot() const override { return std::make_unique<Snapshot>(ArticleFile::snapshot(), whileWritten); }
    std::function<void()> whileWritten = [] {};

private:
    class Snapshot : public FileSnapshot {
    public:
        Snapshot(std::unique_ptr<FileSnapshot> whole, std::function<void()> deed) : m_whole(std::move(whole)), m_deed(std::move(deed)) { }
        void write(PlistWriter& writer) const override
        {
            m_deed();
            m_whole->write(writer);
        }

    private:
        std::unique_ptr<FileSnapshot> m_whole;
        std::function<void()> m_deed;
    };
};

class DatabaseQueueTest : public DatabaseFolderTest {
protected:
    DatabaseQueueTest() { folder.registerFile(cupFile); }

    ArticleShop cups;
    EventfulFile cupFile {cups.articles, "cups.xml", "cups"};
};

} // namespace

TEST_F(DatabaseQueueTest, asLongAsSomethingWaitsNotAllIsWritten)
{
    load();
    EXPECT_FALSE(folder.isWriting());
    std::mutex mutex;
    std::condition_variable changed;
    bool goOn = false;
    std::vector<bool> told;
    folder.onSavedStateChanged = [&] {
        const std::lock_guard guard(mutex);
        told.push_back(folder.isWriting());
        changed.notify_all();
    };
    cupFile.whileWritten = [&] {
        std::unique_lock guard(mutex);
        changed.wait(guard, [&] { return goOn; });
    };

    write({&cupFile}, DatabaseFolder::When::inBackground);
    write({&mugFile}, DatabaseFolder::When::inBackground);
    write({&cupFile}, DatabaseFolder::When::inBackground);
    EXPECT_TRUE(folder.isWriting());
    {
        const std::lock_guard guard(mutex);
        goOn = true;
    }
    changed.notify_all();
    folder.drain();

    EXPECT_EQ(told, (std::vector<bool> {true, true, false}));
    EXPECT_FALSE(folder.isWriting());
    folder.onSavedStateChanged = nullptr;
}

TEST_F(DatabaseQueueTest, aWriteForWhichThereIsNoMemoryIsUnsavedAndTheNextGoOn)
{
    put("cups.xml", document("old"));
    load();
    cups.articles.addNamed("new");
    cupFile.whileWritten = [] { throw std::bad_alloc(); };

    write({&cupFile}, DatabaseFolder::When::inBackground);
    write({&mugFile});

    EXPECT_EQ(folder.unsavedReason(), "There was not enough memory for writing");
    EXPECT_TRUE(log().contains("cups not written successfully"));
    EXPECT_EQ(contents("cups.xml"), document("old"));
    EXPECT_EQ(contents("mugs.xml"), document(""));
    EXPECT_TRUE(leftovers().isEmpty());

    cupFile.whileWritten = [] {};
    folder.retry();
    folder.drain();
    EXPECT_TRUE(contents("cups.xml").contains(">new<"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseQueueTest, anythingElseThatGoesWrongIsToldAsItIs)
{
    load();
    cupFile.whileWritten = [] { throw std::runtime_error("no thread"); };

    write({&cupFile});

    EXPECT_EQ(folder.unsavedReason(), "Writing came to nothing: no thread");
}
