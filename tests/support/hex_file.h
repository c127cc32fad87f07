// HEX files for the boot loader, made up.
#pragma once

#include "program/bytes.h"
#include "program/text.h"
#include "support/memory_files.h"

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
    std::string digits = utf8FromText(hexText(record));
    std::erase(digits, ' ');
    return ":" + digits + "\r\n";
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
        Bytes data(16);
        for (std::size_t i = 0; i < data.size(); ++i)
            data[i] = flashByte(line * 16 + i);
        content += hexLine(static_cast<unsigned>(line * 16), data);
    }
    return content + ":00000001FF\r\n";
}

} // namespace karvo::test
