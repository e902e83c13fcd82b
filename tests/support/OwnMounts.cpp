#include "support/OwnMounts.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

#include <string>

#include <sys/mount.h>

namespace {

constexpr char insideVariable[] = "VENDARO_TEST_HAS_OWN_MOUNTS";

QString runningTest()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return QString(test->test_suite_name()) + '.' + test->name();
}

} // namespace

OwnMounts ownMounts(QString& output)
{
    if (qEnvironmentVariableIsSet(insideVariable))
        return OwnMounts::here;
    if (QProcess::execute("unshare", {"-rm", "true"}) != 0)
        return OwnMounts::impossible;
    QProcess inside;
    inside.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(insideVariable, "1");
    inside.setProcessEnvironment(environment);
    inside.start("unshare", {"-rm", QFile::symLinkTarget("/proc/self/exe"), "--gtest_filter=" + runningTest()});
    if (!inside.waitForFinished(120'000)) {
        output = "it did not end";
        return OwnMounts::failed;
    }
    output = QString::fromUtf8(inside.readAll());
    if (output.contains("[  SKIPPED ]"))
        return OwnMounts::impossible;
    return inside.exitCode() == 0 && output.contains("[  PASSED  ] 1 test") ? OwnMounts::passed : OwnMounts::failed;
}

bool forbidWriting(const QString& folder)
{
    const std::string path = folder.toStdString();
    constexpr unsigned long readOnly = MS_BIND | MS_REMOUNT | MS_RDONLY;
    return mount(path.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) == 0
        && (mount(nullptr, path.c_str(), nullptr, readOnly, nullptr) == 0
            || mount(nullptr, path.c_str(), nullptr, readOnly | MS_NOSUID | MS_NODEV, nullptr) == 0);
}

void allowWriting(const QString& folder)
{
    EXPECT_EQ(umount2(folder.toStdString().c_str(), MNT_DETACH), 0);
}
