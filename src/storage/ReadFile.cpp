#include "storage/ReadFile.h"

#include "foundation/FilePieces.h"
#include "foundation/WrittenMark.h"

ReadFile ReadFile::read(RecordFile& file, const std::string& ownPath, const std::string& instead)
{
    ReadFile result {instead.empty() ? ownPath : instead, false, {}, {}, instead.empty() && writtenMark::stands(ownPath)};
    FilePieces pieces(result.path, RecordFile::recordEnd);
    result.exists = pieces.trouble() != ReadTrouble::missing;
    // Another program has put them into their place meanwhile.
    if (!result.exists && !instead.empty())
        return read(file, ownPath, {});
    result.reason = pieces.reason();
    if (pieces.trouble() != ReadTrouble::none)
        return result;
    Result<std::unique_ptr<ParsedFile>> parsed = file.parse(pieces);
    if (parsed)
        result.parsed = std::move(parsed).value();
    else
        result.reason = parsed.error().message;
    return result;
}
