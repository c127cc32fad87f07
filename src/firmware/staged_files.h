// Files that are written beside the folder they belong in, and moved there when all of them are complete.
#pragma once

#include "program/text.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <span>
#include <system_error>
#include <vector>

namespace karvo
{

struct PlaceFault {
    std::filesystem::path path;
    std::error_code error;
};

class StagedFiles
{
public:
    // `staging` is a folder that nobody has, on the same disk: moving within one disk cannot run out of
    // space.
    StagedFiles(std::filesystem::path folder, std::filesystem::path staging);
    ~StagedFiles(); // removes what was not placed
    StagedFiles(const StagedFiles&) = delete;
    StagedFiles& operator=(const StagedFiles&) = delete;

    // Paths are relative. What returns a fault returns nothing on success.
    std::optional<PlaceFault> begin();
    void addFolder(const std::filesystem::path& path); // stands on no disk before place()
    std::optional<PlaceFault> startFile(const std::filesystem::path& path);
    std::optional<PlaceFault> append(std::span<const std::uint8_t> bytes);
    std::optional<PlaceFault> finishFile();

    // Looks first whether every place is free or a plain file's, then moves. A link on the way is refused: it
    // could lead anywhere.
    std::optional<PlaceFault> place();

private:
    std::optional<PlaceFault> stageFolder(const std::filesystem::path& path);
    std::optional<PlaceFault> checkPlace(const std::filesystem::path& path, bool isFolder) const;

    std::filesystem::path folder_;
    std::filesystem::path staging_;
    bool begun_ = false;                            // the staging folder is ours
    std::set<std::filesystem::path> folders_;       // their order puts those above before those below
    std::set<std::filesystem::path> stagedFolders_; // those that stand in the staging folder
    std::vector<std::filesystem::path> files_;
    std::filesystem::path current_;
    std::ofstream stream_;
};

} // namespace karvo
