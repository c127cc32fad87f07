#include "firmware/archive_names.h"

#include "program/text.h"

#include <algorithm>
#include <array>
#include <string>

namespace karvo
{

namespace
{

constexpr std::size_t longestPart = 255;
constexpr std::size_t longestName = 1024;
constexpr std::string_view forbidden = "<>:\"/\\|?*";
constexpr unsigned char firstPrintable = 0x20;
constexpr unsigned char deleteCharacter = 0x7F;

bool isForbidden(char character)
{
    const auto code = static_cast<unsigned char>(character);
    return code < firstPrintable || code == deleteCharacter ||
           forbidden.find(character) != std::string_view::npos;
}

std::string upperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
    return upper;
}

// A digit, or one of the raised ones 1 to 3, which count as digits here.
bool isPortDigit(std::string_view text)
{
    constexpr std::array<std::string_view, 3> raised = {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return (text.size() == 1 && text[0] >= '0' && text[0] <= '9') ||
           std::find(raised.begin(), raised.end(), text) != raised.end();
}

// With any extension such a name is a device of Windows.
bool isDeviceName(std::string_view name)
{
    std::string stem = upperCase(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    constexpr std::array<std::string_view, 7> devices = {"CON",    "PRN",     "AUX",   "NUL",
                                                         "CONIN$", "CONOUT$", "CLOCK$"};
    if (std::find(devices.begin(), devices.end(), stem) != devices.end())
        return true;
    constexpr std::size_t prefix = 3;
    return (stem.starts_with("COM") || stem.starts_with("LPT")) && isPortDigit(stem.substr(prefix));
}

} // namespace

bool isHere(std::string_view name)
{
    return name == "." || name == "./" || name == ".\\";
}

bool isPlainFileName(std::string_view name)
{
    return !name.empty() && name.size() <= longestPart && name.back() != '.' && name.back() != ' ' &&
           std::none_of(name.begin(), name.end(), isForbidden) && isUtf8(name) && !isDeviceName(name);
}

std::optional<std::filesystem::path> pathOfEntry(std::string_view name)
{
    if (name.size() > longestName)
        return std::nullopt;
    if (!name.empty() && (name.back() == '/' || name.back() == '\\'))
        name.remove_suffix(1);
    constexpr std::size_t hereLength = 2;
    while (name.size() > hereLength && isHere(name.substr(0, hereLength)))
        name.remove_prefix(hereLength);
    std::filesystem::path path;
    for (;;) {
        const auto end = std::min(name.find_first_of("/\\"), name.size());
        const std::string_view part = name.substr(0, end);
        if (!isPlainFileName(part))
            return std::nullopt;
        path /= std::filesystem::path(std::u8string(part.begin(), part.end()));
        if (end == name.size())
            return path;
        name.remove_prefix(end + 1);
    }
}

} // namespace karvo
