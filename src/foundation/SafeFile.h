// The safe writer: a file changes from its old contents to its new ones at one moment, and never stands half written.
//
// The new contents go into a temporary file beside the target, are flushed, read back and compared, and take the target's name;
// then the folder is flushed. Nothing of the old file is touched when a step fails. A flush that failed is never tried again on
// the same file: the temporary is thrown away.
#pragma once

#include "foundation/ByteHash.h"
#include "foundation/LargeMemory.h"
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
    /// Whether there was trouble already, so that nothing appended from now on can help.
    bool hasFailed() const { return !m_trouble.empty(); }
    /// Makes the new contents durable in the temporary file; the target is untouched.
    Result<void> prepare();
    /// prepare(), rename, flush of the folder.
    Result<void> commit();

    const std::string& path() const { return m_path; }
    const std::string& temporaryPath() const { return m_temporary; }
    const ByteHash& written() const { return m_written; }
    /// Whether the new contents have the target's name, whatever came after that.
    bool isInPlace() const { return m_isInPlace; }

private:
    friend class FileGroup;
    void open();
    void flushBuffer();
    void write(std::string_view bytes);
    void startFlushing();
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
    /// So many of the bytes the disk works on already.
    std::uint64_t m_flushing = 0;
    int m_file = -1;
    bool m_prepared = false;
    bool m_isInPlace = false;
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
    ByteBuffer bytes;
    ReadTrouble trouble = ReadTrouble::none;
    /// In words, when there was trouble.
    std::string reason;
};
/// Refuses files that are larger than what anything but records fills, and would take the memory of everything else.
FileBytes readWholeFile(const std::string& path);
/// A file of records: refused only when it is larger than mostOfRecords().
FileBytes readRecords(const std::string& path);
/// The bytes that a file of records may have: as many as the computer's whole memory.
std::size_t mostOfRecords();

/// Makes a file that is complete the moment it appears. Answers false when there was one already. finish, if given, does to the file what
/// belongs to it beside its bytes, before it appears where that is possible.
Result<bool> createExclusively(const std::string& path, std::string_view bytes, void (*finish)(const std::string& path) = nullptr);

/// Flushes the contents of a file that something else wrote.
Result<void> flushFile(const std::string& path);

/// Flushes the folder's entries; file systems that cannot do that count as done.
Result<void> flushFolder(const std::string& folder);
