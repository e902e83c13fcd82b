#include "foundation/FilePieces.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr std::string_view recordEnd = "</r>";

class FilePiecesTest : public testing::Test {
protected:
    std::string write(const std::string& bytes)
    {
        const std::string path = folder.filePath("file").toStdString();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::vector<std::string> piecesOf(FilePieces& pieces)
    {
        std::vector<std::string> all {std::string(pieces.piece())};
        while (pieces.next())
            all.emplace_back(pieces.piece());
        return all;
    }
    using Texts = std::vector<std::string>;

    QTemporaryDir folder;
};

} // namespace

TEST_F(FilePiecesTest, everyPieceButTheLastEndsWithARecord)
{
    FilePieces pieces(write("<a><r>1</r><r>22</r><r>3</r></a>"), recordEnd, 16);

    EXPECT_FALSE(pieces.isWhole());
    EXPECT_EQ(pieces.fileSize(), 32U);
    EXPECT_EQ(pieces.passed(), 0U);
    EXPECT_EQ(pieces.piece(), "<a><r>1</r>");
    EXPECT_TRUE(pieces.next());
    EXPECT_EQ(pieces.passed(), 11U);
    EXPECT_EQ(pieces.piece(), "<r>22</r>");
    EXPECT_TRUE(pieces.next());
    EXPECT_EQ(pieces.piece(), "<r>3</r></a>");
    EXPECT_EQ(pieces.passed(), 20U);
    EXPECT_FALSE(pieces.next());
}

TEST_F(FilePiecesTest, togetherTheyAreTheFileWhateverTheirSize)
{
    std::string bytes = "<a>";
    for (int i = 0; i < 40; ++i)
        bytes += "<r>" + std::string(static_cast<std::size_t>(i), 'x') + "</r>";
    bytes += "</a>";
    const std::string path = write(bytes);
    for (std::size_t largest = 47; largest < bytes.size(); ++largest) {
        FilePieces pieces(path, recordEnd, largest);
        std::string together;
        for (const std::string& piece : piecesOf(pieces)) {
            EXPECT_LE(piece.size(), largest);
            together += piece;
        }
        EXPECT_EQ(together, bytes) << largest;
        EXPECT_EQ(pieces.passed(), bytes.size());
        EXPECT_EQ(pieces.piece(), "");
    }
}

TEST_F(FilePiecesTest, whatFitsIsOnePiece)
{
    FilePieces pieces(write("<r>1</r><r>2</r>"), recordEnd, 16);

    EXPECT_TRUE(pieces.isWhole());
    EXPECT_EQ(piecesOf(pieces), (Texts {"<r>1</r><r>2</r>"}));
}

TEST_F(FilePiecesTest, aFileWithoutARecordsEndInItsBeginningIsOnePiece)
{
    FilePieces pieces(write("<r>0123456789</r><r>2</r>"), recordEnd, 16);

    EXPECT_TRUE(pieces.isWhole());
    EXPECT_EQ(piecesOf(pieces), (Texts {"<r>0123456789</r><r>2</r>"}));
}

TEST_F(FilePiecesTest, aLongRecordFurtherOnEndsThePiecesAndTheWholeFileCanBeHad)
{
    FilePieces pieces(write("<r>1</r><r>0123456789abcdef</r><r>2</r>"), recordEnd, 16);

    EXPECT_EQ(pieces.piece(), "<r>1</r>");
    EXPECT_FALSE(pieces.next());
    EXPECT_FALSE(pieces.isWhole());
    pieces.takeWhole();
    EXPECT_TRUE(pieces.isWhole());
    EXPECT_EQ(pieces.trouble(), ReadTrouble::none);
    EXPECT_EQ(pieces.passed(), 0U);
    EXPECT_EQ(piecesOf(pieces), (Texts {"<r>1</r><r>0123456789abcdef</r><r>2</r>"}));
}

TEST_F(FilePiecesTest, bytesOfOnesOwnAreOnePiece)
{
    FilePieces pieces("<r>1</r>");

    EXPECT_TRUE(pieces.isWhole());
    pieces.takeWhole();
    EXPECT_EQ(piecesOf(pieces), (Texts {"<r>1</r>"}));
    EXPECT_EQ(pieces.fileSize(), 8U);
}

TEST_F(FilePiecesTest, anEmptyFileIsOneEmptyPiece)
{
    FilePieces pieces(write(""), recordEnd, 16);

    EXPECT_EQ(pieces.trouble(), ReadTrouble::none);
    EXPECT_EQ(piecesOf(pieces), (Texts {""}));
}

TEST_F(FilePiecesTest, aMissingFileIsToldFromAnUnreadableOne)
{
    const FilePieces missing(folder.filePath("missing").toStdString(), recordEnd);
    EXPECT_EQ(missing.trouble(), ReadTrouble::missing);
    const FilePieces unreadable(folder.path().toStdString(), recordEnd);
    EXPECT_EQ(unreadable.trouble(), ReadTrouble::unreadable);
    EXPECT_EQ(unreadable.reason(), folder.path().toStdString() + " is not an ordinary file");
}

TEST_F(FilePiecesTest, aFileThatGoesMeanwhileIsReadOnWhileItIsTakenInPieces)
{
    const std::string path = write("<a><r>1</r><r>22</r><r>3</r></a>");
    FilePieces pieces(path, recordEnd, 16);
    std::filesystem::remove(path);

    EXPECT_EQ(piecesOf(pieces), (Texts {"<a><r>1</r>", "<r>22</r>", "<r>3</r></a>"}));
    pieces.takeWhole();
    EXPECT_EQ(pieces.trouble(), ReadTrouble::missing);
}
