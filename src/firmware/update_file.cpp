#include "firmware/update_file.h"

#include "program/bytes.h"
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

// One line of the header, whose items are parted by commas. True when it ends the header.
std::variant<bool, FileFault> readHeaderLine(TextView text, int line, UpdateFile& file)
{
    for (std::size_t start = 0; start <= text.size();) {
        const auto comma = std::min(text.find(u',', start), text.size());
        const auto item = trimmed(text.substr(start, comma - start));
        if (item == headerEnd) {
            if (comma != text.size())
                return FileFault::recordForm; // records begin on a line of their own
            return true;
        }
        if (file.header.size() == mostHeaderItems)
            return FileFault::headerTooLong;
        file.header.push_back({Text(item), line});
        start = comma + 1;
    }
    return false;
}

std::optional<FileRefusal> readHeader(LineReader& reader, UpdateFile& file)
{
    while (const auto text = reader.next()) {
        const auto isEnd = readHeaderLine(*text, reader.number(), file);
        if (const auto* const fault = std::get_if<FileFault>(&isEnd))
            return FileRefusal{*fault, reader.number()};
        if (std::get<bool>(isEnd))
            return std::nullopt;
    }
    return FileRefusal{FileFault::headerOpen, std::max(reader.number(), 1)};
}

std::variant<Bytes, FileFault> recordOf(TextView line)
{
    if (line.size() <= prefixLength)
        return FileFault::recordForm;
    auto bytes = bytesFromHex(line.substr(prefixLength));
    if (!bytes)
        return FileFault::recordForm;
    if (bytes->size() > updateRecordSize)
        return FileFault::recordTooLong;
    return std::move(*bytes);
}

std::optional<FileRefusal> readRecords(LineReader& reader, UpdateFile& file)
{
    file.firstRecordLine = reader.number() + 1;
    while (const auto text = reader.next()) {
        const auto bytes = recordOf(*text);
        if (const auto* const fault = std::get_if<FileFault>(&bytes))
            return FileRefusal{*fault, reader.number()};
        const auto& data = std::get<Bytes>(bytes);
        UpdateRecord& record = file.records.emplace_back();
        record.fill(0xFF);
        std::copy(data.begin(), data.end(), record.begin());
        if (data.size() < updateRecordSize)
            file.shortLines.push_back(reader.number());
    }
    if (file.records.empty())
        return FileRefusal{FileFault::noData, reader.number()};
    if (!file.shortLines.empty() && file.shortLines.back() == reader.number())
        file.shortLines.pop_back();
    return std::nullopt;
}

} // namespace

std::variant<UpdateFile, FileRefusal> parseUpdateFile(std::span<const std::uint8_t> content)
{
    LineReader reader(content);
    UpdateFile file;
    if (const auto refusal = readHeader(reader, file))
        return *refusal;
    const auto start = file.header.empty() ? std::nullopt : bytesFromHex(file.header.front().text);
    if (!start || start->size() != startBytes)
        return FileRefusal{FileFault::headerStart, 1};
    file.start = *start;
    if (const auto refusal = readRecords(reader, file))
        return *refusal;
    file.lineEndMissing = content.back() != '\n';
    return file;
}

} // namespace karvo
