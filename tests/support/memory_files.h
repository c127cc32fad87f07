// Files and settings that exist in memory only, and a clock that stands.
#pragma once

#include "program/clock.h"
#include "program/files.h"
#include "program/settings.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace karvo::test
{

inline Bytes bytesOf(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

// Every folder that a file lies in is there; others have to be made.
class MemoryFiles : public Files
{
public:
    std::map<std::filesystem::path, Bytes> content;
    std::set<std::filesystem::path> folders;
    std::set<std::filesystem::path> readOnly; // folders in which nothing can be made or changed
    std::optional<Text> saveFailure;          // the disk is full
    int saves = 0;

    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override
    {
        const auto found = content.find(path);
        if (found == content.end() || found->second.size() > limit)
            return std::nullopt;
        return found->second;
    }
    bool exists(const std::filesystem::path& path) override
    {
        return content.count(path) != 0 || isFolder(path);
    }
    std::uintmax_t sizeOf(const std::filesystem::path& path) override
    {
        const auto found = content.find(path);
        return found == content.end() ? 0 : found->second.size();
    }
    std::optional<Text> saveAtomically(const std::filesystem::path& path, const Bytes& bytes) override
    {
        if (saveFailure)
            return saveFailure;
        if (readOnly.count(path.parent_path()) != 0)
            return u"read-only";
        content[path] = bytes;
        ++saves;
        return std::nullopt;
    }
    std::filesystem::path temporaryPath(const std::filesystem::path& folder) override
    {
        return folder / "karvo.tmp";
    }
    std::optional<DateTime> changedAt(const std::filesystem::path& path) override
    {
        return exists(path) ? std::optional(DateTime{2026, 11, 24, 8, 5, 7}) : std::nullopt;
    }
    std::optional<Text> makeFolder(const std::filesystem::path& folder) override
    {
        if (readOnly.count(folder.parent_path()) != 0)
            return u"read-only";
        folders.insert(folder);
        return std::nullopt;
    }
    bool canWriteInto(const std::filesystem::path& folder) override
    {
        return isFolder(folder) && readOnly.count(folder) == 0;
    }
    std::vector<FolderEntry> list(const std::filesystem::path& folder) override
    {
        std::map<std::filesystem::path, bool> names;
        for (const auto& [path, bytes] : content) {
            if (path.parent_path() == folder)
                names.emplace(path.filename(), false);
        }
        for (const auto& path : folders) {
            if (path.parent_path() == folder)
                names[path.filename()] = true;
        }
        std::vector<FolderEntry> entries;
        for (const auto& [name, isOne] : names)
            entries.push_back({name, isOne});
        return entries;
    }
    std::optional<Text> remove(const std::filesystem::path& path) override
    {
        if (readOnly.count(path.parent_path()) != 0)
            return u"read-only";
        content.erase(path);
        return std::nullopt;
    }

private:
    bool isFolder(const std::filesystem::path& path) const
    {
        return folders.count(path) != 0 || std::any_of(content.begin(), content.end(), [&](const auto& file) {
                   return file.first.parent_path() == path;
               });
    }
};

class FixedClock : public Clock
{
public:
    DateTime time{2026, 11, 22, 9, 5, 7};
    DateTime now() const override { return time; }
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
    std::optional<Text> unwritablePlace() override { return unwritable; }

    std::optional<Text> unwritable; // nothing can be stored, and this is where it would stand
};

} // namespace karvo::test
