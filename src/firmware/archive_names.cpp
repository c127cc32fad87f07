#include "firmware/archive_names.h"

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

// How many bytes follow the first one of a UTF-8 character; nothing for one that begins none.
std::optional<std::size_t> followersOf(unsigned char lead)
{
    if (lead < 0x80)
        return 0;
    if (lead >= 0xC2 && lead < 0xE0)
        return 1;
    if (lead >= 0xE0 && lead < 0xF0)
        return 2;
    return lead >= 0xF0 && lead < 0xF5 ? std::optional<std::size_t>(3) : std::nullopt;
}

// Overlong forms and halves of surrogates could stand for a character that is refused elsewhere.
bool isSoundSecond(unsigned char lead, unsigned char second)
{
    if (lead == 0xE0)
        return second >= 0xA0;
    if (lead == 0xED)
        return second < 0xA0;
    if (lead == 0xF0)
        return second >= 0x90;
    return lead != 0xF4 || second < 0x90;
}

bool isSoundUtf8(std::string_view text)
{
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    for (std::size_t i = 0; i < text.size();) {
        const auto followers = followersOf(at(i));
        if (!followers || i + *followers >= text.size())
            return false;
        for (std::size_t k = 1; k <= *followers; ++k) {
            if ((at(i + k) & 0xC0) != 0x80 || (k == 1 && !isSoundSecond(at(i), at(i + 1))))
                return false;
        }
        i += *followers + 1;
    }
    return true;
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
           std::none_of(name.begin(), name.end(), isForbidden) && isSoundUtf8(name) && !isDeviceName(name);
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
