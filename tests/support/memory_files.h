// Files and settings that exist in memory only.
#pragma once

#include "program/files.h"
#include "program/settings.h"

#include <map>
#include <string>

namespace karvo::test
{

inline Bytes bytesOf(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

class MemoryFiles : public Files
{
public:
    std::map<std::filesystem::path, Bytes> content;

    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override
    {
        const auto found = content.find(path);
        if (found == content.end() || found->second.size() > limit)
            return std::nullopt;
        return found->second;
    }
    bool exists(const std::filesystem::path& path) override { return content.count(path) != 0; }
};

class MemorySettings : public Settings
{
public:
    std::map<std::string, Text> values; // by "Section/Key"

    std::optional<Text> get(std::string_view section, std::string_view key) const override
    {
        const auto found = values.find(std::string(section) + "/" + std::string(key));
        return found == values.end() ? std::nullopt : std::optional<Text>(found->second);
    }
    void save(std::string_view section, std::string_view key, const Text& value) override
    {
        values[std::string(section) + "/" + std::string(key)] = value;
    }
};

} // namespace karvo::test
