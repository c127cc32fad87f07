#include "program/text_lines.h"

#include <algorithm>
#include <array>

namespace karvo
{

namespace
{

constexpr std::array<std::uint8_t, 3> utf8Mark = {0xEF, 0xBB, 0xBF};

bool startsWithUtf8Mark(std::span<const std::uint8_t> content)
{
    return content.size() >= utf8Mark.size() && std::equal(utf8Mark.begin(), utf8Mark.end(), content.begin());
}

std::string_view asNarrow(std::span<const std::uint8_t> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Windows-1252 text with a letter above 0x7F is, but for contrived cases, no valid UTF-8.
bool isUtf8BeyondAscii(std::span<const std::uint8_t> content)
{
    const bool ascii =
        std::none_of(content.begin(), content.end(), [](std::uint8_t byte) { return byte > 0x7F; });
    return !ascii && isUtf8(asNarrow(content));
}

std::span<const std::uint8_t> withoutMark(std::span<const std::uint8_t> content)
{
    return startsWithUtf8Mark(content) ? content.subspan(utf8Mark.size()) : content;
}

// Takes the first line off, its line end included.
std::span<const std::uint8_t> cutLine(std::span<const std::uint8_t>& content)
{
    const auto lineFeed = std::find(content.begin(), content.end(), std::uint8_t{'\n'});
    const auto line =
        content.first(std::min(content.size(), static_cast<std::size_t>(lineFeed - content.begin()) + 1));
    content = content.subspan(line.size());
    return line;
}

Text decodedLine(std::span<const std::uint8_t> line)
{
    return isUtf8BeyondAscii(line) ? textFromUtf8(asNarrow(line)) : textFromWindows1252(line);
}

} // namespace

Text decodedTextFile(std::span<const std::uint8_t> content)
{
    content = withoutMark(content);
    Text text;
    while (!content.empty())
        text += decodedLine(cutLine(content));
    return text;
}

LineReader::LineReader(std::span<const std::uint8_t> content) : rest_(withoutMark(content))
{
}

std::optional<Text> LineReader::next()
{
    if (rest_.empty())
        return std::nullopt;
    ++number_;
    Text line = decodedLine(cutLine(rest_));
    for (const char16_t end : {u'\n', u'\r'}) {
        if (!line.empty() && line.back() == end)
            line.pop_back();
    }
    return line;
}

std::vector<Text> linesOf(std::span<const std::uint8_t> content)
{
    std::vector<Text> lines;
    LineReader reader(content);
    while (auto line = reader.next())
        lines.push_back(std::move(*line));
    return lines;
}

Bytes encodedTextFile(TextView text)
{
    auto plain = windows1252FromText(text);
    if (plain && decodedTextFile(*plain) == text)
        return std::move(*plain);
    const std::string utf8 = utf8FromText(text);
    Bytes marked(utf8Mark.begin(), utf8Mark.end());
    marked.insert(marked.end(), utf8.begin(), utf8.end());
    return marked;
}

Bytes contentOfLines(std::span<const Text> lines)
{
    Text text;
    for (const Text& line : lines)
        text += line + Text(lineBreak);
    return encodedTextFile(text);
}

} // namespace karvo
