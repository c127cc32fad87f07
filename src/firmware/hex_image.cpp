#include "firmware/hex_image.h"

#include "program/bytes.h"
#include "program/text_lines.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr TextView firstLine = u":020000020000FC";
constexpr std::size_t mostDataLines = 2048;
constexpr std::size_t flashSize = 32768;   // bytes
constexpr std::size_t bytesAroundData = 5; // length, address (2), type, checksum
constexpr std::size_t longestLine = 1 + 2 * (255 + bytesAroundData);
constexpr TextView mayTrail = u" \t\x1A"; // blanks, and the mark that old editors put behind a file
constexpr std::uint8_t dataType = 0;
constexpr std::uint8_t endType = 1;

struct DataLine {
    int line;
    std::size_t address;
    Bytes data;
};

// A sound line's bytes, from its length to its checksum.
std::variant<Bytes, FileFault> recordOf(TextView line)
{
    if (line.empty() || line.front() != u':')
        return FileFault::lineForm;
    if (line.size() > longestLine)
        return FileFault::lineLength;
    auto bytes = bytesFromHex(line.substr(1));
    if (!bytes || bytes->empty())
        return FileFault::lineForm;
    if (bytes->size() != bytes->front() + bytesAroundData)
        return FileFault::lineLength;
    if (checkByte(*bytes) != 0)
        return FileFault::lineSum;
    return std::move(*bytes);
}

std::optional<FileFault> faultOfRecord(const Bytes& record)
{
    const bool hasData = record[0] != 0;
    if (record[3] != dataType && record[3] != endType)
        return FileFault::lineType;
    if (hasData != (record[3] == dataType))
        return FileFault::lineLength;
    return std::nullopt;
}

TextView withoutTrail(TextView line)
{
    return line.substr(0, line.find_last_not_of(mayTrail) + 1);
}

DataLine dataLine(int line, const Bytes& record)
{
    const std::size_t address = record[1] * std::size_t{256} + record[2];
    return {line, address, Bytes(record.begin() + 4, record.end() - 1)};
}

// Behind the end record there may be empty lines.
std::optional<FileRefusal> refusalBehindEnd(LineReader& reader)
{
    while (const auto line = reader.next()) {
        if (!withoutTrail(*line).empty())
            return FileRefusal{FileFault::linesBehindEnd, reader.number()};
    }
    return std::nullopt;
}

// All data lines up to the end record.
std::variant<std::vector<DataLine>, FileRefusal> dataLinesOf(LineReader& reader)
{
    std::vector<DataLine> found;
    while (const auto text = reader.next()) {
        const int line = reader.number();
        auto record = recordOf(withoutTrail(*text));
        if (const auto* const fault = std::get_if<FileFault>(&record))
            return FileRefusal{*fault, line};
        const Bytes& bytes = std::get<Bytes>(record);
        if (const auto fault = faultOfRecord(bytes))
            return FileRefusal{*fault, line};
        if (bytes[3] == endType) {
            if (const auto refusal = refusalBehindEnd(reader))
                return *refusal;
            return found;
        }
        if (found.size() == mostDataLines)
            return FileRefusal{FileFault::tooManyLines, line};
        found.push_back(dataLine(line, bytes));
    }
    return FileRefusal{FileFault::endMissing, reader.number()};
}

// The boot loader counts its address from 0 by itself: a hole would move all that stands behind it.
std::variant<HexImage, FileRefusal> joined(std::vector<DataLine> lines)
{
    std::stable_sort(lines.begin(), lines.end(), [](const DataLine& left, const DataLine& right) {
        return left.address < right.address;
    });
    HexImage image;
    for (const DataLine& line : lines) {
        if (line.address < image.data.size())
            return FileRefusal{FileFault::overlap, line.line};
        if (line.address > image.data.size())
            return FileRefusal{FileFault::gap, line.line};
        image.data.insert(image.data.end(), line.data.begin(), line.data.end());
        if (image.data.size() > flashSize)
            return FileRefusal{FileFault::tooLarge, line.line};
    }
    return image;
}

} // namespace

std::vector<FlashPage> HexImage::pages() const
{
    std::vector<FlashPage> pages((data.size() + flashPageSize - 1) / flashPageSize);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const auto count = std::min(flashPageSize, data.size() - i * flashPageSize);
        pages[i].fill(0xFF);
        std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(i * flashPageSize), count, pages[i].begin());
    }
    return pages;
}

std::variant<HexImage, FileRefusal> parseHexImage(std::span<const std::uint8_t> content)
{
    LineReader reader(content);
    if (const auto first = reader.next(); first != firstLine)
        return FileRefusal{FileFault::otherFirstLine, 1};
    auto found = dataLinesOf(reader);
    if (const auto* const refusal = std::get_if<FileRefusal>(&found))
        return *refusal;
    auto& dataLines = std::get<std::vector<DataLine>>(found);
    if (dataLines.empty())
        return FileRefusal{FileFault::noData, reader.number()};
    return joined(std::move(dataLines));
}

} // namespace karvo
