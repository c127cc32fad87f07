// The per-user settings store.
#pragma once

#include "program/text.h"

#include <optional>
#include <string_view>

namespace karvo
{

class Settings
{
public:
    virtual ~Settings() = default;

    // Nothing when the key has never been stored.
    virtual std::optional<Text> get(std::string_view section, std::string_view key) const = 0;
    virtual void save(std::string_view section, std::string_view key, const Text& value) = 0;

    // Where the settings would stand, when they can not be stored there; nothing when all is well.
    virtual std::optional<Text> unwritablePlace() = 0;
};

} // namespace karvo
