// Settings that live in memory only, for tests of records that read a setting or two.
#pragma once

#include "storage/Settings.h"

#include <map>
#include <string>

class MemorySettings : public SettingsStore {
public:
    const PlistValue* value(std::string_view key) const override
    {
        const auto found = m_values.find(key);
        return found == m_values.end() ? nullptr : &found->second;
    }
    void set(std::string_view key, PlistValue value) override { m_values.insert_or_assign(std::string(key), std::move(value)); }
    void remove(std::string_view key) override { m_values.erase(std::string(key)); }
    void registerDefault(std::string_view key, std::string_view text) override
    {
        m_values.try_emplace(std::string(key), PlistValue(std::string(text)));
    }

    void keepUnusable(std::string_view) override { }

private:
    std::map<std::string, PlistValue, std::less<>> m_values;
};
