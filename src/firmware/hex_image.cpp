#include "firmware/hex_image.h"

#include "firmware/hex_record.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr TextView firstLine = u":020000020000FC";
constexpr std::size_t mostDataLines = 2048;
constexpr std::size_t flashSize = 32768; // bytes

struct DataLine {
    int line;
    std::size_t address;
    Bytes data;
};

std::optional<FileFault> faultOfRecord(const HexRecord& record)
{
    const bool isData = record.type == HexRecordType::data;
    if (!isData && record.type != HexRecordType::end)
        return FileFault::lineType;
    if (record.data.empty() == isData)
        return FileFault::lineLength;
    return std::nullopt;
}

// All data lines up to the end record.
std::variant<std::vector<DataLine>, FileRefusal> dataLinesOf(LineReader& reader)
{
    std::vector<DataLine> found;
    while (const auto text = reader.next()) {
        const int line = reader.number();
        auto read = hexRecordOf(withoutTrail(*text));
        if (const auto* const fault = std::get_if<FileFault>(&read))
            return FileRefusal{*fault, line};
        auto& record = std::get<HexRecord>(read);
        if (const auto fault = faultOfRecord(record))
            return FileRefusal{*fault, line};
        if (record.type == HexRecordType::end) {
            if (const auto refusal = refusalBehindEnd(reader))
                return *refusal;
            return found;
        }
        if (found.size() == mostDataLines)
            return FileRefusal{FileFault::tooManyLines, line};
        found.push_back({line, record.address, std::move(record.data)});
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
