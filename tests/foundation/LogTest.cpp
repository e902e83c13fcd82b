#include "foundation/Log.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Collects the log's lines until the test ends.
class LogLines {
public:
    LogLines() : m_before(setLogSink([this](std::string_view line) { lines.emplace_back(line); })) { }
    ~LogLines() { setLogSink(m_before); }
    std::vector<std::string> lines;

private:
    LogSink m_before;
};

} // namespace

TEST(Log, linesGoToTheSinkInForce)
{
    LogLines log;

    logLine("application loaded");
    logFormat("can't find contact for order %i (%s)", 7, "%s %n 100%");

    EXPECT_EQ(log.lines, (std::vector<std::string> {"application loaded", "can't find contact for order 7 (%s %n 100%)"}));
}

TEST(Log, aLongLineIsKeptWhole)
{
    LogLines log;
    const std::string name(100'000, 'x');

    logFormat("sorting by '%s'", name.c_str());

    EXPECT_EQ(log.lines.front(), "sorting by '" + name + "'");
}

TEST(Log, theSinkThatWasInForceIsHandedBack)
{
    LogLines outer;
    {
        LogLines inner;
        logLine("inner");
        EXPECT_EQ(inner.lines.size(), 1u);
    }
    logLine("outer");

    EXPECT_EQ(outer.lines, std::vector<std::string> {"outer"});
}

TEST(Log, aLogFileGetsItsFolderAndAStampOnEveryLine)
{
    QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/Library/Logs/Vendaro.log";
    const LogSink before = setLogSink(fileLogSink(path));
    testing::internal::CaptureStderr();

    logLine("first");
    logLine("second with \xc3\xa9");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "first\nsecond with \xc3\xa9\n");
    setLogSink(before);
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpression lines(
        QString::fromUtf8("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d first\n\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d "
                          "second with é\n$"));
    EXPECT_TRUE(lines.match(text).hasMatch()) << text.toStdString();
}

TEST(Log, aLogFileIsContinued)
{
    QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/Vendaro.log";
    testing::internal::CaptureStderr();
    for (const char* line : {"yesterday", "today"}) {
        const LogSink before = setLogSink(fileLogSink(path));
        logLine(line);
        setLogSink(before);
    }
    testing::internal::GetCapturedStderr();

    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().count('\n'), 2);
}

TEST(Log, aLogFileThatCannotBeOpenedLosesNoLine)
{
    testing::internal::CaptureStderr();
    const LogSink before = setLogSink(fileLogSink("/dev/null/Vendaro.log"));

    logLine("still told");

    setLogSink(before);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "still told\n");
}

TEST(Log, linesOfSeveralThreadsComeWhole)
{
    LogLines log;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([thread] {
            for (int i = 0; i < 500; ++i)
                logFormat("thread %d line %d", thread, i);
        });
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(log.lines.size(), 2000u);
}
