// A folder on the disk for one test, gone behind it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <set>
#include <string>

namespace karvo::test
{

class ScratchFolder
{
public:
    ScratchFolder() { std::filesystem::create_directory(path_); }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path write(const std::filesystem::path& name, const std::string& content) const
    {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }
    std::string read(const std::filesystem::path& name) const
    {
        std::ifstream file(path_ / name, std::ios::binary);
        EXPECT_TRUE(file) << name;
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Everything below, folders with a "/" behind, sorted.
    std::string listing() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_))
            names.insert(nameOf(entry) + (entry.is_directory() && !entry.is_symlink() ? "/ " : " "));
        return std::accumulate(names.begin(), names.end(), std::string());
    }

private:
    std::string nameOf(const std::filesystem::path& path) const
    {
        const auto utf8 = path.lexically_relative(path_).generic_u8string();
        return {utf8.begin(), utf8.end()};
    }

    const std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("karvo-test-" + std::to_string(std::random_device()()));
};

} // namespace karvo::test
