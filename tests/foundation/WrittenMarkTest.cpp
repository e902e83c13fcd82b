// The note at a file that this program wrote it.
#include "foundation/WrittenMark.h"

#include "foundation/SafeFile.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class WrittenMarkTest : public testing::Test {
protected:
    void SetUp() override
    {
        write("hello");
        writtenMark::put(path());
        if (!writtenMark::stands(path()))
            GTEST_SKIP() << "the file system keeps no attributes";
    }
    std::string path(const char* name = "file") const { return folder.filePath(name).toStdString(); }
    /// Into the same file, as most programs do.
    void write(std::string_view bytes) const
    {
        const int file = ::open(path().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        EXPECT_EQ(::write(file, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        ::close(file);
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(WrittenMarkTest, standsUntilSomebodyWrites)
{
    EXPECT_TRUE(writtenMark::stands(path()));
    usleep(20'000);
    write("HELLO");
    EXPECT_FALSE(writtenMark::stands(path())) << "as many bytes at another time";
    writtenMark::put(path());
    EXPECT_TRUE(writtenMark::stands(path()));
}

TEST_F(WrittenMarkTest, anotherLengthAtTheSameTimeIsNoticed)
{
    struct stat before { };
    ASSERT_EQ(::stat(path().c_str(), &before), 0);
    write("longer");
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, path().c_str(), times, 0), 0);
    EXPECT_FALSE(writtenMark::stands(path()));
}

TEST_F(WrittenMarkTest, goesAlongWithARenameAndNotWithWhatTakesItsPlace)
{
    ASSERT_EQ(::rename(path().c_str(), path("other").c_str()), 0);
    EXPECT_TRUE(writtenMark::stands(path("other")));
    ASSERT_TRUE(writeFileSafely(path("other"), "hello"));
    EXPECT_FALSE(writtenMark::stands(path("other")));
}

TEST_F(WrittenMarkTest, aFileThatIsNotThereHasNone)
{
    writtenMark::put(path("missing"));
    EXPECT_FALSE(writtenMark::stands(path("missing")));
    EXPECT_NE(::access(path("missing").c_str(), F_OK), 0);
}
