// Tables of cases in tests/data: each line is a case, and "|" stands between its fields.
#pragma once

#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace karvo::test
{

// A file of tests/data, to the byte.
inline Bytes golden(const std::string& name)
{
    const auto path = std::filesystem::path(KARVO_SOURCE_FOLDER) / "tests" / "data" / name;
    return FolderFiles().readWhole(path, textFileLimit).value_or(Bytes());
}

// "\r", "\n", "\t" and "\xE4" in a field are the bytes that they stand for.
inline std::string unescaped(const std::string& field)
{
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const char kind = field[i] == '\\' ? field[++i] : '\0';
        bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : field[i];
        if (kind == 'x')
            bytes.back() = static_cast<char>(std::stoi(field.substr((i += 2) - 1, 2), nullptr, 16));
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
        EXPECT_EQ(std::count(line.begin(), line.end(), '|') + 1, static_cast<std::ptrdiff_t>(fields)) << line;
        std::istringstream content(line);
        for (std::string& field : cases.emplace_back()) {
            std::getline(content, field, '|');
            field = unescaped(field);
        }
    }
    EXPECT_FALSE(cases.empty()) << name;
    return cases;
}

inline std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// "48=200 49=7", or "48 49" for numbers alone.
inline std::vector<std::pair<int, int>> numbersOf(const std::string& text)
{
    std::vector<std::pair<int, int>> numbers;
    for (const std::string& word : wordsOf(text)) {
        auto& [number, value] = numbers.emplace_back();
        std::sscanf(word.c_str(), "%d=%d", &number, &value);
    }
    return numbers;
}

// What is shown, with the separator of paths that stands in the cases.
inline std::string portable(std::string shown)
{
    if constexpr (std::filesystem::path::preferred_separator != '/')
        std::replace(shown.begin(), shown.end(), '\\', '/');
    return shown;
}

// What a step does with the words behind its name, and what it shows then.
using Steps = std::map<std::string, std::function<std::string(const std::string&)>>;

// Carries out a file of steps, "name words|answers|shown": each one on the bench that the last "case" made,
// whose name stands in place of the answers. A bench may have something to check behind each step.
template <typename Bench>
void carryOut(const std::string& file)
{
    std::optional<Bench> bench;
    std::string name;
    for (const auto& [step, answers, shown] : casesOf<3>(file)) {
        if (step == "case") {
            name = answers;
            bench.reset();
            bench.emplace();
            continue;
        }
        bench->script(answers);
        const auto nameEnd = std::min(step.find(' '), step.size());
        const auto words = step.substr(std::min(nameEnd + 1, step.size()));
        EXPECT_EQ(portable(bench->steps.at(step.substr(0, nameEnd))(words)), shown)
            << name << ": " << step << "|" << answers;
        if constexpr (requires { bench->checkStepsEnd(); })
            bench->checkStepsEnd();
    }
}

} // namespace karvo::test
