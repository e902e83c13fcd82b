// Marks of running, ended and unknown processes; the processes are real ones.
#include "foundation/ProcessMark.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using processMark::Life;

namespace {

/// A process of its own that waits until it is ended.
class Waiting {
public:
    Waiting()
    {
        int ends[2];
        if (pipe(ends) != 0)
            return;
        m_process = fork();
        if (m_process == 0) {
            const std::string mark = processMark::own();
            [[maybe_unused]] const ssize_t written = write(ends[1], mark.data(), mark.size());
            close(ends[0]);
            close(ends[1]);
            for (;;)
                pause();
        }
        close(ends[1]);
        char bytes[1024];
        for (ssize_t got; (got = read(ends[0], bytes, sizeof bytes)) > 0;)
            m_mark.append(bytes, static_cast<std::size_t>(got));
        close(ends[0]);
    }
    ~Waiting() { end(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    const std::string& mark() const { return m_mark; }
    /// Ended, and nobody has asked how yet.
    void kill()
    {
        ::kill(m_process, SIGKILL);
        siginfo_t info;
        waitid(P_PID, static_cast<id_t>(m_process), &info, WEXITED | WNOWAIT);
    }
    void end()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
    std::string m_mark;
};

/// The mark's words; the first says that it is one.
enum Word : std::size_t { head, machine, host, boot, numbering, number, started };

std::vector<std::string> wordsOf(const std::string& mark)
{
    std::vector<std::string> words(1);
    for (const char letter : mark) {
        if (letter == ' ')
            words.emplace_back();
        else
            words.back() += letter;
    }
    return words;
}

std::string with(const std::string& mark, Word word, const std::string& text)
{
    std::vector<std::string> words = wordsOf(mark);
    words.at(word) = text;
    std::string changed;
    for (const std::string& each : words)
        changed += (changed.empty() ? "" : " ") + each;
    return changed;
}

class ProcessMarkTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (processMark::own().empty())
            GTEST_SKIP() << "this system tells too little about its processes";
    }
};

} // namespace

TEST_F(ProcessMarkTest, namesThisProcess)
{
    const std::vector<std::string> words = wordsOf(processMark::own());

    ASSERT_EQ(words.size(), 7u);
    EXPECT_EQ(words[number], std::to_string(getpid()));
    EXPECT_EQ(processMark::lifeOf(processMark::own()), Life::running);
}

TEST_F(ProcessMarkTest, aProcessRunsUntilItIsEnded)
{
    Waiting other;
    EXPECT_NE(other.mark(), processMark::own());
    EXPECT_EQ(processMark::lifeOf(other.mark()), Life::running);

    other.kill();
    EXPECT_EQ(processMark::lifeOf(other.mark()), Life::ended) << "though its number is still taken";

    other.end();
    EXPECT_EQ(processMark::lifeOf(other.mark()), Life::ended);
}

TEST_F(ProcessMarkTest, aNumberThatWasGivenToAnotherProcessIsNotTheProcess)
{
    const std::string own = processMark::own();

    EXPECT_EQ(processMark::lifeOf(with(own, started, "1")), Life::ended);
}

TEST_F(ProcessMarkTest, whatRanBeforeTheComputerWasStartedHasEnded)
{
    EXPECT_EQ(processMark::lifeOf(with(processMark::own(), boot, "0b9c2d3e-0000-4000-8000-000000000000")), Life::ended);
}

TEST_F(ProcessMarkTest, ofAnotherComputerNothingIsKnown)
{
    const std::string own = processMark::own();

    EXPECT_EQ(processMark::lifeOf(with(own, machine, "0123456789abcdef0123456789abcdef")), Life::unknown);
    EXPECT_EQ(processMark::lifeOf(with(own, host, "elsewhere")), Life::unknown);
    const std::string cloned = with(with(own, host, "elsewhere"), boot, "0b9c2d3e-0000-4000-8000-000000000000");
    EXPECT_EQ(processMark::lifeOf(cloned), Life::unknown) << "a copy of this computer's disk";
}

TEST_F(ProcessMarkTest, ofProcessesThatAreNumberedApartNothingIsKnown)
{
    EXPECT_EQ(processMark::lifeOf(with(processMark::own(), numbering, "pid:[1]")), Life::unknown);
}

TEST_F(ProcessMarkTest, whatIsNoMarkSaysNothing)
{
    const std::string own = processMark::own();
    for (const std::string& mark : {std::string(), std::string("process-1"), std::string("process-1 a b c d"), with(own, head, "process-9"),
             with(own, number, "0"), with(own, number, "-1"), with(own, number, "x")})
        EXPECT_EQ(processMark::lifeOf(mark), Life::unknown) << mark;
}
