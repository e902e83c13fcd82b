// Paths and folders, where the file system's own manners would get in the way.
#pragma once

#include "foundation/Result.h"

#include <QString>

namespace folders {

/// A leading "~" stands for the home folder.
QString expandHome(const QString& path, const QString& home);
/// Whether the name can stand as one path component: not empty, no "/" or NUL, not "." or "..".
bool isSingleComponent(const QString& name);
/// parent/name, with the name spelled as an existing entry spells it, whatever the case; as given when there is none.
QString resolveIgnoringCase(const QString& parent, const QString& name);
/// Makes the folder and those above it, and flushes what it made.
Result<void> make(const QString& path);
/// The same, and nobody but the user may look into it.
Result<void> makePrivate(const QString& path);
/// Copies a file or a folder with everything in it, and flushes the copies. Links in it are copied as links, devices and pipes left out; of a
/// link what it leads to is copied. The owner may write into copied folders. Target must not exist. What was copied until something failed is
/// taken away again.
Result<void> copyTree(const QString& source, const QString& target);
/// A second name for the file, or a flushed copy where there can be none; target must not exist.
Result<void> linkOrCopy(const QString& source, const QString& target);
/// Whether something stands there, as far as anybody knows: also when the file system cannot tell. For whoever would lose it otherwise.
bool mayBeThere(const QString& path);
/// The same of a file.
bool mayBeFile(const QString& path);
/// Whether both are files that can be read, with the same bytes in them.
bool haveSameBytes(const QString& path, const QString& other);
/// Moves a file or folder, across file systems too, and flushes that; target must not exist. When it fails, the source stays as it is.
/// What of a source on another file system cannot be removed after all is left hidden beside its place, and that is logged.
/// Devices and pipes do not cross file systems: what holds one stays where it is, and that is an error.
Result<void> move(const QString& source, const QString& target);
/// The same; answers false, with nothing done, when something stands at the target. What stands there is never touched, whatever a look
/// at it said before.
Result<bool> moveIfFree(const QString& source, const QString& target);
/// Removes a file or a folder with everything in it, whatever is in it is called and whoever may write into it; of a link the link alone.
void remove(const QString& path);
/// Moves a file or folder into the desktop's trash, which is made when there is none yet. When that fails, it stays where it is.
Result<void> moveToTrash(const QString& path);

} // namespace folders
