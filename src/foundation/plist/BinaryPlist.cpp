// The binary form of a property list: an offset table at the end, objects that refer to each other by number.
#include "foundation/plist/PlistReader.h"

#include "foundation/Text.h"

#include <QDateTime>
#include <QTimeZone>

#include <cmath>
#include <cstring>
#include <optional>

namespace {

constexpr std::string_view binaryMagic = "bplist00";
constexpr std::size_t trailerSize = 32;
/// Shared objects are copied out; lists of lists of the same objects must not grow without end. For every byte of the file there may
/// be so many values, which is more than there is room for references unless lists are shared, and so many bytes of shared texts.
constexpr std::size_t mostValuesForByte = 4;
constexpr std::size_t mostTextForByte = 64;

class BinaryReader {
public:
    explicit BinaryReader(std::string_view bytes) : m_bytes(bytes) { }

    std::optional<PlistValue> read()
    {
        if (m_bytes.size() < binaryMagic.size() + trailerSize)
            return std::nullopt;
        const std::size_t trailer = m_bytes.size() - trailerSize;
        m_offsetSize = byte(trailer + 6);
        m_referenceSize = byte(trailer + 7);
        m_count = number(trailer + 8, 8);
        const std::uint64_t top = number(trailer + 16, 8);
        m_table = number(trailer + 24, 8);
        const bool sizesFit = m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8;
        if (!sizesFit || m_table > trailer || m_count > (trailer - m_table) / m_offsetSize || top >= m_count)
            return std::nullopt;
        return object(top, 0);
    }

private:
    unsigned byte(std::size_t at) const { return static_cast<unsigned char>(m_bytes[at]); }
    bool reaches(std::uint64_t at, std::uint64_t size) const { return at <= m_bytes.size() && size <= m_bytes.size() - at; }
    std::uint64_t number(std::size_t at, std::size_t size) const
    {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = (value << 8) | byte(at + i);
        return value;
    }

    std::optional<PlistValue> object(std::uint64_t index, int depth)
    {
        if (index >= m_count || depth > plist::deepestNesting || ++m_made > mostValuesForByte * m_bytes.size())
            return std::nullopt;
        std::uint64_t at = number(m_table + index * m_offsetSize, m_offsetSize);
        if (!reaches(at, 1))
            return std::nullopt;
        const unsigned marker = byte(at++);
        const unsigned kind = marker >> 4;
        const unsigned low = marker & 0xf;
        if (kind == 0)
            return low == 8 || low == 9 ? std::optional(PlistValue::makeBoolean(low == 9)) : std::nullopt;
        if (kind >= 1 && kind <= 3)
            return scalarNumber(kind, at, std::size_t(1) << low);
        std::uint64_t size = low;
        if (low == 0xf && !takeSize(at, size))
            return std::nullopt;
        if ((kind == 4 || kind == 5 || kind == 6) && !mayCopy(size))
            return std::nullopt;
        switch (kind) {
        case 4: return reaches(at, size) ? std::optional(PlistValue::makeData(std::string(m_bytes.substr(at, size)))) : std::nullopt;
        case 5: return reaches(at, size) ? std::optional(PlistValue(cleanUtf8(m_bytes.substr(at, size)))) : std::nullopt;
        case 6: return wideText(at, size);
        case 10: return list(at, size, depth);
        case 13: return dictionary(at, size, depth);
        default: return std::nullopt;
        }
    }

    /// Whether a text or data of this size may be copied out once more.
    bool mayCopy(std::uint64_t size)
    {
        if (size > m_bytes.size())
            return false;
        m_copied += static_cast<std::size_t>(size);
        return m_copied <= mostTextForByte * m_bytes.size();
    }

    bool takeSize(std::uint64_t& at, std::uint64_t& size) const
    {
        if (!reaches(at, 1) || byte(at) >> 4 != 1)
            return false;
        const std::size_t width = std::size_t(1) << (byte(at) & 0xf);
        if (width > 8 || !reaches(at + 1, width))
            return false;
        size = number(at + 1, width);
        at += 1 + width;
        return true;
    }

    std::optional<PlistValue> scalarNumber(unsigned kind, std::uint64_t at, std::size_t width) const
    {
        if ((width > 8 && !(kind == 1 && width == 16)) || !reaches(at, width))
            return std::nullopt;
        if (kind == 1)
            return PlistValue::makeInteger(static_cast<std::int64_t>(number(at + (width == 16 ? 8 : 0), std::min<std::size_t>(width, 8))));
        double value = 0;
        if (width == 4) {
            const auto bits = static_cast<std::uint32_t>(number(at, 4));
            float single;
            std::memcpy(&single, &bits, sizeof single);
            value = static_cast<double>(single);
        } else {
            const std::uint64_t bits = number(at, 8);
            std::memcpy(&value, &bits, sizeof value);
        }
        if (!std::isfinite(value) || (kind == 3 && std::fabs(value) > 1e12))
            return std::nullopt;
        return kind == 2 ? PlistValue::makeReal(value) : date(value);
    }

    /// As text where the year has not four digits: the file it is written to would be unreadable for others.
    static PlistValue date(double secondsSince2001)
    {
        const QDateTime epoch(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
        const QDateTime moment = epoch.addSecs(static_cast<qint64>(std::floor(secondsSince2001)));
        const std::string text = moment.toString("yyyy-MM-ddTHH:mm:ssZ").toStdString();
        const int year = moment.date().year();
        return year >= 1 && year <= 9999 ? PlistValue::makeScalar(PlistValue::Kind::date, text) : PlistValue(text);
    }

    std::optional<PlistValue> wideText(std::uint64_t at, std::uint64_t size) const
    {
        if (size > m_bytes.size() || !reaches(at, size * 2))
            return std::nullopt;
        QString text(static_cast<qsizetype>(size), Qt::Uninitialized);
        for (std::size_t i = 0; i < size; ++i)
            text[static_cast<qsizetype>(i)] = QChar(static_cast<char16_t>(number(at + 2 * i, 2)));
        return PlistValue(cleanUtf8(text));
    }

    std::optional<PlistValue> list(std::uint64_t at, std::uint64_t size, int depth)
    {
        if (size > m_bytes.size() || !reaches(at, size * m_referenceSize))
            return std::nullopt;
        PlistValue values = PlistValue::makeArray();
        for (std::uint64_t i = 0; i < size; ++i) {
            std::optional<PlistValue> value = object(number(at + i * m_referenceSize, m_referenceSize), depth + 1);
            if (!value)
                return std::nullopt;
            values.append(std::move(*value));
        }
        return values;
    }

    std::optional<PlistValue> dictionary(std::uint64_t at, std::uint64_t size, int depth)
    {
        if (size > m_bytes.size() || !reaches(at, 2 * size * m_referenceSize))
            return std::nullopt;
        PlistValue values = PlistValue::makeDict();
        for (std::uint64_t i = 0; i < size; ++i) {
            std::optional<PlistValue> key = object(number(at + i * m_referenceSize, m_referenceSize), depth + 1);
            std::optional<PlistValue> value = object(number(at + (size + i) * m_referenceSize, m_referenceSize), depth + 1);
            if (!key || !value || key->kind() != PlistValue::Kind::text)
                return std::nullopt;
            values.set(cleanUtf8(key->raw()), std::move(*value));
        }
        return values;
    }

    std::string_view m_bytes;
    std::uint64_t m_count = 0;
    std::uint64_t m_table = 0;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::size_t m_made = 0;
    std::size_t m_copied = 0;
};

} // namespace

namespace plist {

bool isBinary(std::string_view bytes)
{
    return bytes.starts_with("bplist");
}

Result<PlistValue> readBinary(std::string_view bytes)
{
    if (!bytes.starts_with(binaryMagic))
        return Error {"the file is a binary list of an unknown version"};
    std::optional<PlistValue> value = BinaryReader(bytes).read();
    if (!value)
        return Error {"the file is a binary list that is damaged"};
    return std::move(*value);
}

} // namespace plist
