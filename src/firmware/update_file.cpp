#include "firmware/update_file.h"

#include "firmware/hex_digits.h"
#include "program/text_lines.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr TextView headerEnd = u"Update Ende";
constexpr std::size_t mostHeaderItems = 6;
constexpr std::size_t startBytes = 2;
constexpr std::size_t prefixLength = 5;

// Reads the header items; the position of the first record line, or what is wrong.
std::variant<std::size_t, FileRefusal> readHeader(const std::vector<Text>& lines, UpdateFile& file)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        for (std::size_t start = 0; start <= lines[i].size();) {
            const auto comma = std::min(lines[i].find(u',', start), lines[i].size());
            const auto item = trimmed(TextView(lines[i]).substr(start, comma - start));
            if (item == headerEnd) {
                if (comma != lines[i].size())
                    return FileRefusal{FileFault::recordForm, line}; // records begin on a line of their own
                return i + 1;
            }
            if (file.header.size() == mostHeaderItems)
                return FileRefusal{FileFault::headerTooLong, line};
            file.header.emplace_back(item);
            start = comma + 1;
        }
    }
    return FileRefusal{FileFault::headerOpen, static_cast<int>(std::max<std::size_t>(lines.size(), 1))};
}

std::variant<UpdateRecord, FileFault> recordOf(TextView line)
{
    if (line.size() <= prefixLength)
        return FileFault::recordForm;
    const auto bytes = bytesFromHex(line.substr(prefixLength));
    if (!bytes)
        return FileFault::recordForm;
    if (bytes->size() > updateRecordSize)
        return FileFault::recordTooLong;
    UpdateRecord record;
    record.fill(0xFF);
    std::copy(bytes->begin(), bytes->end(), record.begin());
    return record;
}

} // namespace

std::variant<UpdateFile, FileRefusal> parseUpdateFile(std::span<const std::uint8_t> content)
{
    const auto lines = linesOf(content);
    UpdateFile file;
    const auto header = readHeader(lines, file);
    if (const auto* const refusal = std::get_if<FileRefusal>(&header))
        return *refusal;
    const auto start = file.header.empty() ? std::nullopt : bytesFromHex(file.header.front());
    if (!start || start->size() != startBytes)
        return FileRefusal{FileFault::headerStart, 1};
    file.start = *start;
    for (std::size_t i = std::get<std::size_t>(header); i < lines.size(); ++i) {
        const auto record = recordOf(lines[i]);
        if (const auto* const fault = std::get_if<FileFault>(&record))
            return FileRefusal{*fault, static_cast<int>(i) + 1};
        file.records.push_back(std::get<UpdateRecord>(record));
    }
    if (file.records.empty())
        return FileRefusal{FileFault::noData, static_cast<int>(lines.size())};
    return file;
}

} // namespace karvo
