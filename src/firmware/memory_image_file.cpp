#include "firmware/memory_image_file.h"

#include "firmware/hex_record.h"
#include "program/path_text.h"
#include "workbench/export_files.h"
#include "workbench/library_faults.h"

namespace karvo
{

namespace
{

constexpr std::size_t recordSize = 16;           // bytes of a line that is written
constexpr std::size_t imageFileLimit = megabyte; // 1,024 bytes in lines of one each are 15 KB
constexpr TextView imageFilter = u"*.hex";
constexpr TextView imageExtension = u"hex";

// Reads line by line; where a fault comes up, the reader stands in its line.
class ImageReader
{
public:
    explicit ImageReader(std::span<const std::uint8_t> content) : reader_(content) {}

    std::variant<MemoryImage, FileRefusal> read()
    {
        while (const auto line = reader_.next()) {
            const auto text = withoutTrail(*line);
            if (text.empty())
                continue;
            auto record = hexRecordOf(text);
            if (const auto* const fault = std::get_if<FileFault>(&record))
                return refusal(*fault == FileFault::lineType ? FileFault::imageLineType : *fault);
            if (const auto fault = take(std::get<HexRecord>(record)))
                return refusal(*fault);
            if (std::get<HexRecord>(record).type == HexRecordType::end)
                return finished();
        }
        return refusal(FileFault::endMissing);
    }

private:
    FileRefusal refusal(FileFault fault) const { return {fault, std::max(reader_.number(), 1)}; }

    std::variant<MemoryImage, FileRefusal> finished()
    {
        if (const auto behind = refusalBehindEnd(reader_))
            return *behind;
        if (image_.size() == 0)
            return refusal(FileFault::noData);
        return std::move(image_);
    }

    std::optional<FileFault> take(const HexRecord& record)
    {
        switch (record.type) {
        case HexRecordType::data:
            return takeData(record);
        case HexRecordType::segment:
            return takeBase(record, 4);
        case HexRecordType::linear:
            return takeBase(record, 16);
        case HexRecordType::end:
            return record.data.empty() ? std::nullopt : std::optional(FileFault::lineLength);
        case HexRecordType::segmentStart:
        case HexRecordType::linearStart:
            break; // where a processor begins: of no use for a memory of values
        }
        return std::nullopt;
    }

    // What is added to the addresses of the lines that follow.
    std::optional<FileFault> takeBase(const HexRecord& record, unsigned shift)
    {
        if (record.data.size() != 2)
            return FileFault::lineLength;
        base_ = (record.data[0] * std::size_t{256} + record.data[1]) << shift;
        return std::nullopt;
    }

    std::optional<FileFault> takeData(const HexRecord& record)
    {
        std::size_t address = base_ + record.address;
        if (address + record.data.size() > memorySize)
            return FileFault::tooLarge;
        for (const auto byte : record.data) {
            if (image_.at(address))
                return FileFault::overlap;
            image_.set(address++, byte);
        }
        return std::nullopt;
    }

    LineReader reader_;
    MemoryImage image_;
    std::size_t base_ = 0;
};

std::filesystem::path startFolder(const Workbench& bench, const std::filesystem::path& home)
{
    for (const auto& folder : {std::filesystem::path(bench.state.hexFolder), bench.state.driveC}) {
        if (!folder.empty() && bench.files.exists(folder))
            return folder;
    }
    return home;
}

void keepFolder(Workbench& bench, const std::filesystem::path& file)
{
    bench.state.hexFolder = pathText(file.parent_path());
    bench.settings.save("Parameter", "ATMELpath", bench.state.hexFolder);
}

std::optional<MemoryImage> readMemoryImage(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    const auto content = bench.files.readWhole(path, imageFileLimit);
    const bool isTooLarge = !content && bench.files.sizeOf(path) > imageFileLimit;
    if (!content && !isTooLarge) {
        showCannotOpen(bench.prompts, bench.state.texts, path);
        return std::nullopt;
    }
    auto parsed = isTooLarge ? FileRefusal{FileFault::tooLarge, 1} : parseMemoryImage(*content);
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        bench.prompts.message(refusalText(texts, path, *refusal, Message::imageFileFault),
                              PromptIcon::warning);
        return std::nullopt;
    }
    return std::get<MemoryImage>(std::move(parsed));
}

} // namespace

std::variant<MemoryImage, FileRefusal> parseMemoryImage(std::span<const std::uint8_t> content)
{
    return ImageReader(content).read();
}

Bytes memoryImageContent(const MemoryImage& image)
{
    std::vector<Text> lines;
    for (std::size_t row = 0; row < image.size(); row += recordSize) {
        HexRecord record{row, HexRecordType::data, {}};
        for (std::size_t address = row; address < row + recordSize; ++address) {
            if (const auto byte = image.at(address)) {
                record.data.push_back(*byte);
                continue;
            }
            if (!record.data.empty())
                lines.push_back(hexRecordLine(record));
            record = {address + 1, HexRecordType::data, {}};
        }
        if (!record.data.empty())
            lines.push_back(hexRecordLine(record));
    }
    lines.push_back(hexRecordLine({0, HexRecordType::end, {}}));
    return contentOfLines(lines);
}

FileRequest memoryImageRequest(const Workbench& bench, const Text& title, const std::filesystem::path& home)
{
    return {title, startFolder(bench, home), Text(imageFilter), Text(imageExtension), {}};
}

std::optional<NamedImage> openMemoryImage(Workbench& bench, const Text& title,
                                          const std::filesystem::path& home)
{
    const auto path = bench.prompts.openFile(memoryImageRequest(bench, title, home));
    if (!path)
        return std::nullopt;
    keepFolder(bench, *path);
    auto image = readMemoryImage(bench, *path);
    if (!image)
        return std::nullopt;
    return NamedImage{*path, std::move(*image)};
}

std::optional<std::filesystem::path> saveMemoryImage(Workbench& bench, const MemoryImage& image,
                                                     const FileRequest& request)
{
    auto path = bench.prompts.saveFile(request);
    if (!path)
        return std::nullopt;
    keepFolder(bench, *path);
    if (!saveContent(bench, *path, memoryImageContent(image)))
        return std::nullopt;
    return path;
}

} // namespace karvo
