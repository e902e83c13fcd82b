// The bytes of a file of records from its beginning, a piece at a time: a piece is used while it is in the processor's cache, and the
// memory for it does not grow with the file.
//
// Every piece but the last ends with a record's end. That is a guess by what stands there: who cannot make sense of a piece, or of how it
// ends, asks for the whole file.
#pragma once

#include "foundation/LargeMemory.h"
#include "foundation/SafeFile.h"

#include <cstddef>
#include <string>
#include <string_view>

class FilePieces {
public:
    static constexpr std::size_t usualPiece = 2 * 1024 * 1024;

    /// Bytes that are there already; they must stay where they are.
    explicit FilePieces(std::string_view bytes) : m_piece(bytes), m_fileSize(bytes.size()) { }
    /// Reads the first piece. A file that is not longer than largest, or has no recordEnd in its beginning, is one piece.
    FilePieces(std::string path, std::string_view recordEnd, std::size_t largest = usualPiece);
    ~FilePieces();
    FilePieces(const FilePieces&) = delete;
    FilePieces& operator=(const FilePieces&) = delete;

    /// Why there is no piece; told by the constructor and by takeWhole().
    ReadTrouble trouble() const { return m_whole.trouble; }
    const std::string& reason() const { return m_whole.reason; }

    std::string_view piece() const { return m_piece; }
    /// Bytes of the file before the piece, and of all of it.
    std::size_t passed() const { return m_passed; }
    std::size_t fileSize() const { return m_fileSize; }
    /// Goes on to the next piece. At the end, and when there is none that ends with a record, the answer is false and the piece empty.
    bool next();
    /// Whether the piece is all of the file.
    bool isWhole() const { return m_file < 0; }
    /// All of the file becomes the piece.
    void takeWhole();

private:
    bool fill();
    void close();

    std::string m_path;
    std::string_view m_recordEnd;
    std::string_view m_piece;
    std::size_t m_passed = 0;
    std::size_t m_fileSize = 0;
    FileBytes m_whole;
    /// Closed, and negative, where the piece is the whole file.
    int m_file = -1;
    ByteBuffer m_buffer;
};
