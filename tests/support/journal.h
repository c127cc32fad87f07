// What the doubles of one test have seen, in order, one line an event.
#pragma once

#include <string>
#include <vector>

namespace karvo::test
{

using Journal = std::vector<std::string>;

// All events in one line: "busy, open 1, idle".
inline std::string joined(const Journal& journal)
{
    std::string line;
    for (const auto& event : journal)
        line += (line.empty() ? "" : ", ") + event;
    return line;
}

// The end of that line, as long as what is expected of it.
inline std::string tailOf(const Journal& journal, const std::string& expected)
{
    const std::string line = joined(journal);
    return line.size() > expected.size() ? line.substr(line.size() - expected.size()) : line;
}

} // namespace karvo::test
