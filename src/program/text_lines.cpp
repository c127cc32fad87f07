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

Text decodedLine(std::span<const std::uint8_t> line)
{
    return isUtf8BeyondAscii(line) ? textFromUtf8(asNarrow(line)) : textFromWindows1252(line);
}

} // namespace

Text decodedTextFile(std::span<const std::uint8_t> content)
{
    if (startsWithUtf8Mark(content))
        content = content.subspan(utf8Mark.size());
    Text text;
    while (!content.empty()) {
        const auto lineFeed = std::find(content.begin(), content.end(), std::uint8_t{'\n'});
        const auto length =
            std::min(content.size(), static_cast<std::size_t>(lineFeed - content.begin()) + 1);
        text += decodedLine(content.first(length));
        content = content.subspan(length);
    }
    return text;
}

std::vector<Text> linesOf(std::span<const std::uint8_t> content)
{
    const Text text = decodedTextFile(content);
    std::vector<Text> lines;
    for (std::size_t start = 0; start < text.size();) {
        const auto lineFeed = std::min(text.find(u'\n', start), text.size());
        const bool carriageReturn = lineFeed > start && text[lineFeed - 1] == u'\r';
        lines.push_back(text.substr(start, lineFeed - start - (carriageReturn ? 1 : 0)));
        start = lineFeed + 1;
    }
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
