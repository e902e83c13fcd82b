// Writes that wait behind others.
#include "storage/DatabaseFolderTest.h"

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
