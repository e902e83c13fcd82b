#include "storage/FieldTable.h"

const char* flagText(bool value, FlagWords words)
{
    switch (words) {
    case FlagWords::upper: return value ? "YES" : "NO";
    case FlagWords::capital: return value ? "Yes" : "No";
    case FlagWords::lower: break;
    }
    return value ? "yes" : "no";
}

bool flagFromText(std::string_view value, FlagSetBy setBy)
{
    switch (setBy) {
    case FlagSetBy::upperYes: return value == "YES";
    case FlagSetBy::capitalYes: return value == "Yes";
    case FlagSetBy::capitalNo: break;
    }
    return value == "No";
}

bool equalInAnyCase(std::string_view left, std::string_view right)
{
    const auto lower = [](char character) { return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [&](char a, char b) { return lower(a) == lower(b); });
}
