// Tests that need a disk nobody can write on. Mounting takes a copy of the test's own program in a name space of its own: what it mounts
// nobody else sees.
#pragma once

#include <QString>

enum class OwnMounts {
    /// This is the copy: it may mount.
    here,
    /// The copy ran this one test and passed.
    passed,
    failed,
    /// Nothing can be mounted on this machine.
    impossible
};

/// In the program itself runs the running test once more in a copy that may mount, and says how that ended; output is then what the copy
/// printed.
OwnMounts ownMounts(QString& output);

/// From now on nothing can be written into the folder, until allowWriting(). False where mounts are not to be had.
bool forbidWriting(const QString& folder);
void allowWriting(const QString& folder);

/// Only the copy goes on behind it.
#define ONLY_WITH_OWN_MOUNTS()                                                                                                             \
    do {                                                                                                                                   \
        QString output;                                                                                                                    \
        const OwnMounts mounts = ownMounts(output);                                                                                        \
        if (mounts == OwnMounts::impossible)                                                                                               \
            GTEST_SKIP() << "nothing can be mounted here";                                                                                 \
        ASSERT_TRUE(mounts != OwnMounts::failed) << output.toStdString();                                                                  \
        if (mounts == OwnMounts::passed)                                                                                                   \
            return;                                                                                                                        \
    } while (false)
