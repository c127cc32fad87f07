#include "cvdata/batch_change.h"

#include "cvdata/cv_use.h"
#include "cvdata/description_fields.h"
#include "language/file_trouble.h"
#include "program/path_text.h"
#include "program/text_lines.h"

#include <algorithm>
#include <set>

namespace karvo
{

namespace
{

BatchRow previewedRow(const CvTable& table, const CvChange& change)
{
    BatchRow row{change.cv, {}, change.value};
    const bool isRow = change.cv >= 1 && change.cv <= CvTable::lastRow && table.describes(change.cv);
    if (!isRow) {
        row.refusal = BatchRefusal::notInList;
        return row;
    }
    row.oldValue = table.at(change.cv, Column::value);
    const ValueLimits limits = limitsOf(table, change.cv);
    row.lowerLimit = limits.lower;
    row.upperLimit = limits.upper;
    if (!limits.allow(change.value))
        row.refusal = BatchRefusal::outsideLimits;
    return row;
}

struct ReadList {
    Bytes content;
    std::optional<ListFile> list;
    BatchRefusal refusal = BatchRefusal::none;
};

ReadList readList(Files& files, const std::filesystem::path& path)
{
    auto content = files.readWhole(path, textFileLimit);
    if (!content) {
        const bool isTooLarge = files.sizeOf(path) > textFileLimit;
        return {{}, std::nullopt, isTooLarge ? BatchRefusal::tooLarge : BatchRefusal::cannotRead};
    }
    auto parsed = parseListFile(*content);
    if (auto* const list = std::get_if<ListFile>(&parsed))
        return {std::move(*content), std::move(*list), BatchRefusal::none};
    return {{}, std::nullopt, BatchRefusal::notAList};
}

BatchFile previewedFile(Files& files, const std::filesystem::path& path, std::span<const CvChange> changes)
{
    BatchFile file{path, {}, BatchRefusal::none, {}, false};
    const ReadList read = readList(files, path);
    file.refusal = read.refusal;
    if (!read.list)
        return file;
    for (const CvChange& change : changes)
        file.rows.push_back(previewedRow(read.list->table, change));
    return file;
}

bool isAsPreviewed(const ListFile& list, const BatchFile& file)
{
    return std::all_of(file.rows.begin(), file.rows.end(), [&](const BatchRow& row) {
        return list.table.describes(row.cv) && list.table.at(row.cv, Column::value) == row.oldValue;
    });
}

// Each with its line end, so that they are the content again when they are joined.
std::vector<Bytes> rawLinesOf(const Bytes& content)
{
    std::vector<Bytes> lines;
    for (auto at = content.begin(); at != content.end();) {
        auto end = std::find(at, content.end(), std::uint8_t{'\n'});
        end += end == content.end() ? 0 : 1;
        lines.emplace_back(at, end);
        at = end;
    }
    return lines;
}

// The place of the first line among the rows that has the CV's number, in a file's raw lines.
std::optional<std::size_t> rawLineOfRow(const ListFile& list, int cv)
{
    for (std::size_t i = 2; i < static_cast<std::size_t>(list.rowCount) + 2; ++i) {
        const auto fields = fieldsOf(list.lines[i]);
        if (!fields.empty() && numberFromText(fields.front()) == cv)
            return i - 1;
    }
    return std::nullopt;
}

// Whatever the encoding, a separator is one byte.
void replaceSecondField(Bytes& line, int value)
{
    const auto first = std::find(line.begin(), line.end(), std::uint8_t{';'});
    const auto start = first == line.end() ? first : first + 1;
    const auto second = std::find(start, line.end(), std::uint8_t{';'});
    std::string digits = std::to_string(value);
    if (second == line.end())
        digits += ';';
    const auto at = line.erase(start, second == line.end() ? start : second);
    line.insert(at, digits.begin(), digits.end());
}

// Nothing changes but the values: encoding, line ends and the end of the file stay.
Bytes changedContent(const ReadList& read, const BatchFile& file)
{
    auto lines = rawLinesOf(read.content);
    for (const BatchRow& row : file.rows) {
        const auto at = rawLineOfRow(*read.list, row.cv);
        if (at && read.list->table.value(row.cv) != row.newValue)
            replaceSecondField(lines.at(*at), row.newValue);
    }
    Bytes content;
    for (const Bytes& line : lines)
        content.insert(content.end(), line.begin(), line.end());
    return content;
}

void applyTo(Files& files, const LanguageTables& texts, BatchFile& file)
{
    auto read = readList(files, file.path);
    if (read.list && !isAsPreviewed(*read.list, file))
        read.refusal = BatchRefusal::changedMeanwhile;
    file.refusal = read.refusal;
    if (file.refusal != BatchRefusal::none)
        return;
    if (const auto error = files.saveAtomically(file.path, changedContent(read, file))) {
        file.refusal = BatchRefusal::cannotSave;
        file.reason = fileTroubleText(error, texts, files);
        return;
    }
    file.done = true;
}

} // namespace

bool BatchFile::isRefused() const
{
    return refusal != BatchRefusal::none || std::any_of(rows.begin(), rows.end(), [](const BatchRow& row) {
               return row.refusal != BatchRefusal::none;
           });
}

bool BatchFile::changesAnything() const
{
    return std::any_of(rows.begin(), rows.end(), [](const BatchRow& row) {
        return numberFromText(row.oldValue) != std::optional<int>(row.newValue);
    });
}

std::vector<BatchFile> previewBatch(Files& files, std::span<const std::filesystem::path> paths,
                                    std::span<const CvChange> changes)
{
    std::vector<BatchFile> batch;
    std::set<std::filesystem::path> seen;
    for (const auto& path : paths) {
        if (seen.insert(path.lexically_normal()).second)
            batch.push_back(previewedFile(files, path, changes));
    }
    return batch;
}

void applyBatch(Files& files, const LanguageTables& texts, std::span<BatchFile> batch)
{
    for (BatchFile& file : batch) {
        if (file.isRefused() || file.done)
            continue;
        if (file.changesAnything())
            applyTo(files, texts, file);
        else
            file.done = true;
    }
}

Text refusalText(const BatchRow& row, const LanguageTables& texts)
{
    switch (row.refusal) {
    case BatchRefusal::notInList:
        return texts.message(Message::batchNotInList, {textFromNumber(row.cv)});
    case BatchRefusal::outsideLimits:
        return texts.message(
            Message::batchOutsideLimits,
            {textFromNumber(row.cv), textFromNumber(row.lowerLimit), textFromNumber(row.upperLimit)});
    default:
        return {};
    }
}

Text refusalText(const BatchFile& file, const LanguageTables& texts)
{
    switch (file.refusal) {
    case BatchRefusal::cannotRead:
        return texts.message(Message::batchCannotRead);
    case BatchRefusal::tooLarge:
        return texts.message(Message::listFileTooLarge,
                             {pathText(file.path), textFromNumber(textFileLimit / megabyte)});
    case BatchRefusal::notAList:
        return texts.message(Message::batchNotAList);
    case BatchRefusal::changedMeanwhile:
        return texts.message(Message::batchChangedMeanwhile);
    case BatchRefusal::cannotSave:
        return texts.message(Message::batchCannotSave, {file.reason});
    default:
        return {};
    }
}

} // namespace karvo
