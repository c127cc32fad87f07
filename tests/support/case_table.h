// Tables of cases in tests/data: each line is a case, and "|" stands between its fields.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace karvo::test
{

// "\r", "\n", "\t" and "\xE4" in a field are the bytes that they stand for.
inline std::string unescaped(const std::string& field)
{
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\') {
            bytes += field[i];
            continue;
        }
        const char kind = field[++i];
        bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : '\0';
        if (kind == 'x') {
            bytes.back() = static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16));
            i += 2;
        }
    }
    return bytes;
}

// The cases of a file; lines that start with "#" explain it.
template <std::size_t fields>
std::vector<std::array<std::string, fields>> casesOf(const std::string& name)
{
    std::ifstream file(std::filesystem::path(KARVO_SOURCE_FOLDER) / "tests" / "data" / name);
    std::vector<std::array<std::string, fields>> cases;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        auto& one = cases.emplace_back();
        std::size_t start = 0;
        for (std::string& field : one) {
            const auto end = line.find('|', start);
            EXPECT_EQ(end == std::string::npos, &field == &one.back()) << name << ": " << line;
            field = unescaped(line.substr(std::min(start, line.size()), end - start));
            start = end == std::string::npos ? line.size() : end + 1;
        }
    }
    EXPECT_FALSE(cases.empty()) << name;
    return cases;
}

} // namespace karvo::test
