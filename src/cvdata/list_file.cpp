#include "cvdata/list_file.h"

#include "cvdata/description_fields.h"
#include "cvdata/description_file.h"
#include "cvdata/list_header.h"
#include "cvdata/speed_cvs.h"
#include "program/text_lines.h"

#include <algorithm>
#include <bitset>
#include <utility>

namespace karvo
{

namespace
{

using Kind = ListFault::Kind;

constexpr TextView fileEnd = u"Ende FS";
constexpr TextView firmwareLabel = u"Firmware_Version: ";
constexpr TextView receiverLine = u"80";
constexpr std::size_t ownTrailerLines = 5; // at most

bool isProcessorLine(TextView line)
{
    return line == processorName(Processor::atmega168) || line == processorName(Processor::atmega328);
}

// A file that was cut or edited may lack the line that ends its rows: then the next one it knows does.
bool endsRows(TextView line)
{
    const TextView text = trimmed(line);
    return text == cvSectionEnd || text == speedStepSectionStart || text == fileEnd ||
           isProcessorLine(text) || text.starts_with(trimmed(firmwareLabel));
}

class Parser
{
public:
    explicit Parser(std::vector<Text> lines) : end_(lines.size()) { file_.lines = std::move(lines); }

    std::optional<ListFile> parse()
    {
        takeRows();
        if (taken_.none())
            return std::nullopt;
        takeTrailer();
        return std::move(file_);
    }

private:
    void fault(Kind kind, std::size_t line, std::optional<int> number = std::nullopt)
    {
        file_.faults.push_back({kind, static_cast<int>(line), number});
    }

    void takeRows()
    {
        const auto first = file_.lines.begin() + 2;
        rowsEnd_ =
            static_cast<std::size_t>(std::find_if(first, file_.lines.end(), endsRows) - file_.lines.begin());
        file_.rowCount = static_cast<int>(rowsEnd_) - 2;
        for (std::size_t line = 2; line < rowsEnd_; ++line) {
            if (!file_.lines[line].empty())
                takeRow(line);
        }
    }

    void takeRow(std::size_t line)
    {
        const auto fields = fieldsOf(file_.lines[line]);
        const auto row = fields.empty() ? std::nullopt : numberFromText(fields.front());
        if (!row)
            return fault(Kind::noRow, line);
        if (*row < 1 || *row > CvTable::lastRow)
            return fault(Kind::numberOutOfRange, line, row);
        if (taken_.test(static_cast<std::size_t>(*row)))
            return fault(Kind::repeatedRow, line);
        taken_.set(static_cast<std::size_t>(*row));
        const auto kept = std::min<std::size_t>(fields.size(), CvTable::lastColumn);
        for (std::size_t i = 0; i < kept; ++i)
            file_.table.at(*row, static_cast<int>(i) + 1) = withLineBreaks(fields[i]);
        takeValue(*row, line, fields.size() >= 2);
    }

    // As plain digits; a row may be without a value.
    void takeValue(int row, std::size_t line, bool hasField)
    {
        Text& field = file_.table.at(row, Column::value);
        const auto value = numberFromText(field);
        const bool sound = isCvValue(value);
        if (!sound && (!hasField || !trimmed(field).empty()))
            fault(Kind::wrongValue, line, value);
        field = sound ? textFromNumber(*value) : Text();
    }

    void takeTrailer()
    {
        std::size_t line = rowsEnd_;
        if (line < end_ && trimmed(file_.lines[line]) == cvSectionEnd)
            ++line;
        else
            fault(Kind::noEnd, std::min(line, end_ - 1));
        for (bool first = true; line < end_; ++line) {
            const TextView text = trimmed(file_.lines[line]);
            if (text == fileEnd)
                return;
            if (text == speedStepSectionStart)
                break;
            if (!text.empty())
                takeTrailerLine(text, line, std::exchange(first, false));
        }
        lookForFileEnd(line);
    }

    // Only of a file that has got so far: one note that it was cut is enough.
    void lookForFileEnd(std::size_t line)
    {
        const auto isNoEnd = [](const ListFault& fault) { return fault.kind == Kind::noEnd; };
        const auto rest = std::span(file_.lines).subspan(line);
        const bool isThere =
            std::any_of(rest.begin(), rest.end(), [](const Text& text) { return trimmed(text) == fileEnd; });
        if (!isThere && std::none_of(file_.faults.begin(), file_.faults.end(), isNoEnd))
            fault(Kind::noFileEnd, end_ - 1);
    }

    void takeTrailerLine(TextView text, std::size_t line, bool first)
    {
        const TextView label = trimmed(firmwareLabel);
        if (text.starts_with(label)) {
            const auto version = numberFromText(text.substr(label.size()));
            if (version && *version >= 1 && *version <= 255)
                file_.firmwareVersion = version;
        } else if (isProcessorLine(text)) {
            file_.processor =
                text == processorName(Processor::atmega168) ? Processor::atmega168 : Processor::atmega328;
        } else if (first && text != receiverLine) {
            file_.unknownProcessor = text;
            fault(Kind::unknownProcessor, line);
        }
    }

    ListFile file_;
    std::size_t end_;
    std::size_t rowsEnd_ = 0;
    std::bitset<CvTable::lastRow + 1> taken_;
};

bool isSameValue(TextView field, TextView value)
{
    return value.empty() || (numberFromText(field) && numberFromText(field) == numberFromText(value));
}

Text withMarks(TextView text)
{
    Text field(text);
    for (auto at = field.find(lineBreak); at != Text::npos; at = field.find(lineBreak, at + 1))
        field.replace(at, lineBreak.size(), u"$");
    return field;
}

// What of a row's line the table does not stand for.
TextView behindFields(TextView line, std::size_t fields)
{
    for (; fields > 0; --fields)
        line.remove_prefix(line.find(u';') + 1);
    return line;
}

// The line of a row with the value and the text of the table in it; everything else in it stays.
Text rowLine(TextView line, const CvTable& table, int row)
{
    const auto fields = fieldsOf(line);
    const Text& value = table.at(row, Column::value);
    Text saved = table.at(row, Column::number) + u";";
    // What means the same stays as it was written.
    if (fields.size() >= 2 && isSameValue(fields[1], value))
        saved += Text(fields[1]) + u";";
    else if (fields.size() >= 2 || !value.empty())
        saved += value + u";";
    if (fields.size() >= 3)
        saved += withMarks(table.at(row, Column::text)) + u";";
    return saved.append(behindFields(line, std::min<std::size_t>(fields.size(), 3)));
}

// A read-only receiver takes no write. Its last row only acts when it is written: it is not kept.
int rowsToSave(const CvSet& set)
{
    return set.profile.typeCode == TypeCode::readOnlyReceiver ? set.rowCount - 1 : set.rowCount;
}

void addRows(std::vector<Text>& file, const CvSet& set)
{
    std::bitset<CvTable::lastRow + 1> written;
    for (int i = 0; i < rowsToSave(set); ++i) {
        const Text& line = set.descriptionLines[static_cast<std::size_t>(i) + 2];
        const auto fields = fieldsOf(line);
        const auto row = fields.empty() ? std::nullopt : numberFromText(fields.front());
        if (row && *row > CvTable::lastRow)
            continue;
        const bool isRow =
            row && *row >= 1 && set.table.describes(*row) && !written.test(static_cast<std::size_t>(*row));
        if (isRow)
            written.set(static_cast<std::size_t>(*row));
        file.push_back(isRow ? rowLine(line, set.table, *row) : line);
    }
}

void addOwnTrailer(std::vector<Text>& file, const DecoderProfile& profile)
{
    constexpr int lowestNamedVersion = 4;
    file.emplace_back(processorName(profile.processor));
    if (isReceiver(profile.typeCode))
        file.emplace_back(receiverLine);
    if (profile.firmwareVersion >= lowestNamedVersion) {
        file.push_back(Text(firmwareLabel) + textFromNumber(profile.firmwareVersion));
        return;
    }
    file.emplace_back(u" ");
    file.push_back(Text(firmwareLabel) + textFromNumber(0));
    file.emplace_back(u" ");
}

// What the speed table of the set comes to, in place of the description's own.
void addComputedSpeedSteps(std::vector<Text>& file, const CvTable& table)
{
    file.emplace_back(speedStepSectionStart);
    for (int step = 1; step <= speedStepCount; ++step)
        file.push_back(u"FS" + textFromNumber(step) + u" = " + table.at(cvOfSpeedStep(step), Column::value));
}

using Lines = std::span<const Text>;

// The lines before the first that is one of these; all of them when none is.
Lines linesBefore(Lines lines, std::initializer_list<TextView> ends)
{
    const auto isEnd = [&](const Text& line) {
        return std::find(ends.begin(), ends.end(), trimmed(line)) != ends.end();
    };
    const auto end = std::find_if(lines.begin(), lines.end(), isEnd);
    return lines.first(static_cast<std::size_t>(end - lines.begin()));
}

// What stands behind the rows: in an opened list all of it, in a description the speed-step section alone.
struct Tail {
    Lines trailer;
    Lines speedSteps;
    Lines behindEnd; // lines of other hands behind the end of a list file
};

enum class WithoutEnd { toFirstEmptyLine, all };

// `withoutEnd`: what belongs to the section where no line ends the file.
Tail tailOf(Lines lines, int rowCount, WithoutEnd withoutEnd)
{
    Lines rest = lines.subspan(std::min(lines.size(), static_cast<std::size_t>(rowCount) + 2));
    if (!rest.empty() && trimmed(rest.front()) == cvSectionEnd)
        rest = rest.subspan(1);
    Tail tail;
    tail.trailer = linesBefore(rest, {speedStepSectionStart, fileEnd});
    rest = rest.subspan(tail.trailer.size());
    tail.speedSteps = linesBefore(rest, {fileEnd});
    if (tail.speedSteps.size() < rest.size())
        tail.behindEnd = rest.subspan(tail.speedSteps.size() + 1);
    else if (withoutEnd == WithoutEnd::toFirstEmptyLine)
        tail.speedSteps =
            rest.first(static_cast<std::size_t>(std::find(rest.begin(), rest.end(), Text()) - rest.begin()));
    return tail;
}

Tail tailOf(const CvSet& set)
{
    return tailOf(set.descriptionLines, set.rowCount,
                  set.isFromFile() ? WithoutEnd::all : WithoutEnd::toFirstEmptyLine);
}

bool hasComputedSpeedSteps(TextView header)
{
    return header.find(u"Berechnete") != TextView::npos;
}

void add(std::vector<Text>& file, Lines lines)
{
    file.insert(file.end(), lines.begin(), lines.end());
}

std::vector<Text> listFileLines(const CvSet& set)
{
    const Text& header = set.descriptionLines[1];
    const Tail tail = tailOf(set);
    std::vector<Text> file = {headerWithVersion(header, set.profile.firmwareVersion)};
    addRows(file, set);
    file.emplace_back(cvSectionEnd);
    if (tail.trailer.empty())
        addOwnTrailer(file, set.profile);
    else
        add(file, tail.trailer);
    if (hasComputedSpeedSteps(header))
        addComputedSpeedSteps(file, set.table);
    else
        add(file, tail.speedSteps);
    file.emplace_back(fileEnd);
    add(file, tail.behindEnd);
    return file;
}

// What is saved has to open again.
std::size_t mostLinesWhenSaved(const ListFile& file)
{
    const Tail tail = tailOf(file.lines, file.rowCount, WithoutEnd::all);
    const bool computed = hasComputedSpeedSteps(file.header());
    return 1 + static_cast<std::size_t>(file.rowCount) + 1 +
           (tail.trailer.empty() ? ownTrailerLines : tail.trailer.size()) +
           (computed ? 1 + std::size_t{speedStepCount} : tail.speedSteps.size()) + 1 + tail.behindEnd.size();
}

} // namespace

std::variant<ListFile, ListRefusal> parseListFile(std::span<const std::uint8_t> content)
{
    auto lines = linesOf(content);
    lines.insert(lines.begin(), Text());
    if (lines.size() > listLineLimit + 1)
        return ListRefusal{ListRefusal::Kind::tooManyLines, static_cast<int>(listLineLimit) + 1};
    auto file = lines.size() > 2 ? Parser(std::move(lines)).parse() : std::nullopt;
    if (!file)
        return ListRefusal{ListRefusal::Kind::noRow, 2};
    if (mostLinesWhenSaved(*file) > listLineLimit)
        return ListRefusal{ListRefusal::Kind::tooManyLines, static_cast<int>(file->lines.size()) - 1};
    return std::move(*file);
}

Bytes listFileContent(const CvSet& set)
{
    return contentOfLines(listFileLines(set));
}

Bytes save_data(CvSet& set)
{
    Text& header = set.descriptionLines[1];
    header = headerWithVersion(header, set.profile.firmwareVersion);
    return listFileContent(set);
}

} // namespace karvo
