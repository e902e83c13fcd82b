// The safe writer: a file changes from its old contents to its new ones at one moment, and never stands half written.
//
// The new contents go into a temporary file beside the target, are flushed, read back and compared, and take the target's name;
// then the folder is flushed. Nothing of the old file is touched when a step fails. A flush that failed is never tried again on
// the same file: the temporary is thrown away.
#pragma once

#include "foundation/ByteHash.h"
#include "foundation/Result.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>

class SafeFile {
public:
    explicit SafeFile(std::string path);
    ~SafeFile();
    SafeFile(SafeFile&&) noexcept;
    SafeFile& operator=(SafeFile&&) = delete;

    /// Bytes to come next. Trouble is remembered and told by commit() or prepare().
    void append(std::string_view bytes);
    /// Makes the new contents durable in the temporary file; the target is untouched.
    Result<void> prepare();
    /// prepare(), rename, flush of the folder.
    Result<void> commit();

    const std::string& path() const { return m_path; }
    const std::string& temporaryPath() const { return m_temporary; }
    const ByteHash& written() const { return m_written; }

private:
    friend class FileGroup;
    void open();
    void flushBuffer();
    void fail(const char* step);
    void discard();
    bool stillWaits() const { return !m_temporary.empty(); }
    void keepTemporary() { m_temporary.clear(); }
    Result<void> readBack();
    Result<void> rename();

    std::string m_path;
    std::string m_temporary;
    std::string m_buffer;
    std::string m_trouble;
    ByteHash m_written;
    int m_file = -1;
    bool m_prepared = false;
};

Result<void> writeFileSafely(const std::string& path, std::string_view bytes);

/// Several files of one folder that change together or not at all, whatever happens in between.
///
/// A list of what is about to be renamed (the intent) is written once all new contents are durable. A reader that finds an intent
/// whose temporaries are whole takes those, otherwise the old files; the next writer finishes or clears away what was left. A file that
/// cannot be replaced goes on being read through its intent, whatever else is written meanwhile.
class FileGroup {
public:
    explicit FileGroup(std::string folder) : m_folder(std::move(folder)) { }

    /// The reference stays good as long as the group.
    SafeFile& add(const std::string& fileName);
    Result<void> commit();

    /// What a reader has to read instead: file name to path of its new contents. Empty when no commit was interrupted; an error when
    /// there is one that cannot be read, so that nobody knows which contents belong together.
    static Result<std::map<std::string, std::string>> interrupted(const std::string& folder);
    /// Finishes an interrupted commit and removes leftovers; what cannot be read stays. Only for the holder of the folder's lock.
    static Result<void> repair(const std::string& folder);

private:
    Result<void> commitTogether();
    Result<void> renameAll();
    void keepTemporaries();

    std::string m_folder;
    std::deque<SafeFile> m_files;
};

/// Why a file could not be read.
enum class ReadTrouble { none, missing, unreadable };
struct FileBytes {
    std::string bytes;
    ReadTrouble trouble = ReadTrouble::none;
    /// In words, when there was trouble.
    std::string reason;
};
FileBytes readWholeFile(const std::string& path);

/// Makes a file that is complete the moment it appears. Answers false when there was one already.
Result<bool> createExclusively(const std::string& path, std::string_view bytes);

/// Flushes the contents of a file that something else wrote.
Result<void> flushFile(const std::string& path);

/// Flushes the folder's entries; file systems that cannot do that count as done.
Result<void> flushFolder(const std::string& folder);
