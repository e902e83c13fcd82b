#include "storage/Settings.h"

#include "foundation/Text.h"

std::optional<std::string> SettingsStore::text(std::string_view key) const
{
    const PlistValue* stored = value(key);
    return stored && stored->hasText() ? std::optional(stored->asText()) : std::nullopt;
}

bool SettingsStore::flag(std::string_view key) const
{
    const std::optional<std::string> stored = text(key);
    return stored == "YES" || stored == "1";
}

void SettingsStore::setText(std::string_view key, std::string_view text)
{
    set(key, PlistValue(cleanUtf8(text)));
}
