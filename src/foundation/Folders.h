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
/// Makes the folder and those above it.
Result<void> make(const QString& path);
/// Copies a folder with everything in it. Links are copied as links, devices and pipes left out; target must not exist.
Result<void> copyTree(const QString& source, const QString& target);
/// Moves a file or folder, across file systems too.
Result<void> move(const QString& source, const QString& target);

} // namespace folders
