#include "link/settings_store.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

std::int16_t SettingsStore::number(std::string_view key, std::string_view byDefault, std::int16_t lowest,
                                   std::int16_t highest) const {
    const std::string stored = get(key, byDefault);
    try {
        const std::int16_t value = toInt16(strictNumber(stored));
        if (value < lowest || value > highest)
            throw RuntimeFault::invalidPropertyValue();
        return value;
    } catch (const RuntimeFault& fault) {
        throw fault.with("The setting \"" + std::string(key) + "\" holds \"" + printable(stored) +
                         "\".\r\nIt is kept in " + place() + ".");
    }
}

}  // namespace quorvex
