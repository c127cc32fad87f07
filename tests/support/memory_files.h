// Files and settings that exist in memory only, and a clock that stands.
#pragma once

#include "program/clock.h"
#include "program/files.h"
#include "program/settings.h"

#include <algorithm>
#include <fstream>
#include <iterator>
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
    using Path = std::filesystem::path;
    using Trouble = std::error_code;

public:
    std::map<Path, Bytes> content;
    std::set<Path> folders;
    std::set<Path> readOnly; // folders in which nothing can be made or changed
    Trouble saveFailure;     // the disk is full
    int saves = 0;

    std::optional<Bytes> readWhole(const Path& path, std::size_t limit) override
    {
        const auto found = content.find(path);
        return found == content.end() || found->second.size() > limit ? std::nullopt
                                                                      : std::optional(found->second);
    }
    bool exists(const Path& path) override { return content.contains(path) || isFolder(path); }
    std::uintmax_t sizeOf(const Path& path) override
    {
        return content.contains(path) ? content[path].size() : 0;
    }
    Trouble saveAtomically(const Path& path, const Bytes& bytes) override
    {
        if (auto trouble = saveFailure ? saveFailure : troubleIn(path.parent_path()))
            return trouble;
        content[path] = bytes;
        ++saves;
        return {};
    }
    Path temporaryPath(const Path& folder) override { return folder / "karvo.tmp"; }
    std::optional<DateTime> changedAt(const Path& path) override
    {
        return exists(path) ? std::optional(DateTime{2026, 11, 24, 8, 5, 7}) : std::nullopt;
    }
    Trouble makeFolder(const Path& folder) override
    {
        const auto trouble = troubleIn(folder.parent_path());
        if (!trouble)
            folders.insert(folder);
        return trouble;
    }
    bool canWriteInto(const Path& folder) override { return isFolder(folder) && !readOnly.contains(folder); }
    std::vector<FolderEntry> list(const Path& folder) override
    {
        std::map<Path, bool> all;
        for (const auto& [path, bytes] : content)
            all.emplace(path, false);
        for (const auto& path : folders)
            all[path] = true;
        std::vector<FolderEntry> entries;
        for (const auto& [path, isOne] : all) {
            if (path.parent_path() == folder)
                entries.push_back({path.filename(), isOne});
        }
        return entries;
    }
    Trouble remove(const Path& path) override
    {
        const auto trouble = troubleIn(path.parent_path());
        if (!trouble)
            content.erase(path);
        return trouble;
    }
    Text systemWords(const std::error_code& error) const override { return textFromUtf8(error.message()); }

private:
    Trouble troubleIn(const Path& folder) const
    {
        return readOnly.contains(folder) ? std::make_error_code(std::errc::read_only_file_system) : Trouble();
    }
    bool isFolder(const Path& path) const
    {
        return folders.contains(path) || std::any_of(content.begin(), content.end(), [&](const auto& file) {
                   return file.first.parent_path() == path;
               });
    }
};

// Files of a real folder, without any toolkit; what is written stays in memory.
class FolderFiles : public MemoryFiles
{
public:
    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override
    {
        std::ifstream stream(path, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
        return stream && bytes.size() <= limit ? std::optional(bytes) : std::nullopt;
    }
    bool exists(const std::filesystem::path& path) override { return std::filesystem::exists(path); }
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
    std::optional<Text> unwritable;     // nothing can be stored, and this is where it would stand

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
};

} // namespace karvo::test
