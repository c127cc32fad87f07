// HEX files for the boot loader, made up.
#pragma once

#include "program/text.h"
#include "support/memory_files.h"

#include <cstdio>
#include <numeric>
#include <string>

namespace karvo::test
{

// With the line end.
inline std::string hexLine(unsigned address, const Bytes& data)
{
    Bytes record = {static_cast<std::uint8_t>(data.size()), static_cast<std::uint8_t>(address / 256),
                    static_cast<std::uint8_t>(address % 256), 0};
    record.insert(record.end(), data.begin(), data.end());
    const auto sum = std::accumulate(record.begin(), record.end(), 0U);
    record.push_back(static_cast<std::uint8_t>(0U - sum));
    std::string line = ":";
    for (const auto byte : record) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte));
        line += digits;
    }
    return line + "\r\n";
}

// What hexFile() holds at an address.
inline std::uint8_t flashByte(std::size_t address)
{
    return static_cast<std::uint8_t>(address * 7 + address / 256);
}

// Of so many data lines of sixteen bytes.
inline std::string hexFile(std::size_t dataLines)
{
    std::string content = ":020000020000FC\r\n";
    for (std::size_t line = 0; line < dataLines; ++line) {
        Bytes data;
        for (std::size_t i = 0; i < 16; ++i)
            data.push_back(flashByte(line * 16 + i));
        content += hexLine(static_cast<unsigned>(line * 16), data);
    }
    return content + ":00000001FF\r\n";
}

} // namespace karvo::test
