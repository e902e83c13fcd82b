#include "orders/StatusColours.h"

#include "foundation/Numbers.h"

std::optional<RgbColour> statusColour(const PlistValue& flagColours, std::string_view status)
{
    if (!flagColours.isArray())
        return std::nullopt;
    const auto component = [](const PlistValue& entry, const char* key) {
        const PlistValue* value = entry.find(key);
        return value ? numbers::leadingFloat(value->asText()) : 0.0f;
    };
    for (const PlistValue& entry : flagColours.array()) {
        const PlistValue* name = entry.isDict() ? entry.find("Status") : nullptr;
        if (name && name->asText() == status)
            return RgbColour {component(entry, "redComponent"), component(entry, "greenComponent"), component(entry, "blueComponent")};
    }
    return std::nullopt;
}
