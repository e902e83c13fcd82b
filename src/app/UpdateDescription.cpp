#include "app/UpdateDescription.h"

#include "app/Fetch.h"
#include "desktop/TextTable.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"

#include <QStringList>

#include <algorithm>
#include <charconv>

namespace {

/// Leading zeros and all; more would not fit on its line.
constexpr qsizetype mostDigits = 9;
constexpr int longestDate = 60;
constexpr int lengthOfDay = 10;

std::optional<int> readVersionPart(const QString& part)
{
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (part.isEmpty() || part.size() > mostDigits || !std::all_of(part.begin(), part.end(), isDigit))
        return std::nullopt;
    return part.toInt();
}

QString updateText(const PlistValue& description, std::string_view key)
{
    const PlistValue* value = description.find(key);
    return value ? QString::fromStdString(value->asText()).simplified() : QString();
}

QString releaseDay(const PlistValue& description)
{
    const PlistValue* date = description.find("releasedate");
    const bool isDate = date && date->kind() == PlistValue::Kind::date;
    return updateText(description, "releasedate").left(isDate ? lengthOfDay : longestDate);
}

QUrl updateAddress(const PlistValue& description, std::string_view key)
{
    const QUrl address(updateText(description, key), QUrl::StrictMode);
    return Fetch::mayAsk(address) ? address : QUrl();
}

} // namespace

std::optional<ProgramVersion> readVersion(const QString& text)
{
    const QStringList parts = text.trimmed().split('.');
    ProgramVersion version {};
    if (parts.size() < 2 || parts.size() > static_cast<int>(version.size()))
        return std::nullopt;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const std::optional<int> number = readVersionPart(parts[i]);
        if (!number)
            return std::nullopt;
        version[static_cast<std::size_t>(i)] = *number;
    }
    return version;
}

Result<UpdateDescription> readUpdateDescription(std::string_view bytes)
{
    const Result<PlistValue> read = plist::read(bytes);
    if (!read)
        return Error {read.error().message};
    if (!read.value().isDict())
        return Error {localText("It is no dictionary.").toStdString()};
    UpdateDescription description;
    description.version = updateText(read.value(), "currentversion");
    if (description.version.isEmpty())
        return Error {localText("It names no currentversion.").toStdString()};
    description.number = readVersion(description.version);
    description.releaseDate = releaseDay(read.value());
    description.newInThisVersion = updateAddress(read.value(), "newinthisversionurl");
    description.download = updateAddress(read.value(), "downloadurl");
    return description;
}
