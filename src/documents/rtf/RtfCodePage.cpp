#include "documents/rtf/RtfCodePage.h"

#include <unicode/unistr.h>

namespace {

constexpr int utf8Page = 65001;

std::string converterFor(int codePage)
{
    if (codePage == utf8Page)
        return "UTF-8";
    if (codePage == rtf::macRoman)
        return "macintosh";
    return (codePage >= 1250 && codePage <= 1258 ? "windows-" : "cp") + std::to_string(codePage);
}

icu::UnicodeString convert(std::string_view bytes, int codePage)
{
    return {bytes.data(), static_cast<int32_t>(bytes.size()), converterFor(codePage).c_str()};
}

} // namespace

namespace rtf {

int codePageOfCharset(int charset)
{
    switch (charset) {
    case 77: return macRoman;
    case 128: return 932;
    case 129: return 949;
    case 134: return 936;
    case 136: return 950;
    case 161: return 1253;
    case 162: return 1254;
    case 177: return 1255;
    case 178: return 1256;
    case 186: return 1257;
    case 204: return 1251;
    case 222: return 874;
    case 238: return 1250;
    default: return 0;
    }
}

bool isDoubleByte(int codePage)
{
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
}

QString decoded(std::string_view bytes, int codePage)
{
    icu::UnicodeString text = convert(bytes, codePage);
    if (text.isEmpty())
        text = convert(bytes, westernEurope);
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace rtf
