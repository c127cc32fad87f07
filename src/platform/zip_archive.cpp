#include "platform/zip_archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <cwchar>
#include <fstream>
#include <memory>

namespace karvo
{

namespace
{

constexpr std::size_t blockSize = std::size_t{64} * 1024;

struct ReaderEnd {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, ReaderEnd>;

// How names are taken that are not marked as UTF-8.
constexpr const char* asOfDos = "zip:hdrcharset=CP437";        // the system that ZIP comes from
constexpr const char* asTheyLie = "zip:hdrcharset=ISO-8859-1"; // each byte is the character of its number

Reader makeReader(const char* names)
{
    Reader reader(archive_read_new());
    archive_read_support_format_zip_seekable(reader.get());
    archive_read_set_options(reader.get(), names);
    return reader;
}

std::optional<Text> wordsOf(archive* reader)
{
    const char* const words = archive_error_string(reader);
    return textFromUtf8(words != nullptr ? words : "?");
}

int openFile(archive* reader, const std::filesystem::path& path)
{
#ifdef _WIN32
    return archive_read_open_filename_w(reader, path.c_str(), blockSize);
#else
    return archive_read_open_filename(reader, path.c_str(), blockSize);
#endif
}

// The library takes an archive that is nothing but its end record, without entries, for no archive at all.
bool isEmptyArchive(const std::filesystem::path& path)
{
    constexpr std::string_view noEntries("PK\x05\x06\0\0\0\0\0\0\0\0", 12); // mark, disks, counts
    constexpr std::uintmax_t recordLength = 22;
    constexpr std::uintmax_t longestComment = 65535;
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    if (unknown || size < recordLength || size > recordLength + longestComment)
        return false;
    std::array<char, noEntries.size()> start{};
    std::ifstream(path, std::ios::binary).read(start.data(), static_cast<std::streamsize>(start.size()));
    return std::string_view(start.data(), start.size()) == noEntries;
}

// In UTF-8. Where a name can not be told so its bytes are handed on: whoever checks names refuses them.
std::string nameOf(archive_entry* entry)
{
#ifdef _WIN32
    // There the library tells UTF-8 only in a locale of UTF-8, which this system does not have.
    if (const wchar_t* const wide = archive_entry_pathname_w(entry))
        return utf8FromText(Text(wide, wide + std::wcslen(wide)));
#else
    if (const char* const utf8 = archive_entry_pathname_utf8(entry))
        return utf8;
#endif
    const char* const bytes = archive_entry_pathname(entry);
    return bytes != nullptr ? bytes : "";
}

// Programs of other systems than that of ZIP write UTF-8 without marking it.
std::string meantName(const std::string& ofDos, const std::string& asItLies)
{
    if (ofDos == asItLies) // marked, or letters that all have in common
        return ofDos;
    std::string bytes;
    for (const char16_t character : textFromUtf8(asItLies))
        bytes += static_cast<char>(character);
    return isUtf8(bytes) ? bytes : ofDos;
}

// The names of all entries once more, as they lie.
class PlainNames
{
public:
    explicit PlainNames(const std::filesystem::path& path) : reader_(makeReader(asTheyLie))
    {
        isOpen_ = openFile(reader_.get(), path) == ARCHIVE_OK;
    }

    // In the order of the archive; nothing where it can not be told.
    std::optional<std::string> next()
    {
        archive_entry* entry = nullptr;
        const int found = isOpen_ ? archive_read_next_header(reader_.get(), &entry) : ARCHIVE_EOF;
        return found == ARCHIVE_OK || found == ARCHIVE_WARN ? std::optional(nameOf(entry)) : std::nullopt;
    }

private:
    Reader reader_;
    bool isOpen_ = false;
};

ArchiveEntry described(archive_entry* entry, PlainNames& plainNames)
{
    ArchiveEntry described;
    described.name = nameOf(entry);
    described.name = meantName(described.name, plainNames.next().value_or(described.name));
    described.encrypted = archive_entry_is_encrypted(entry) != 0;
    const bool isLink = archive_entry_hardlink(entry) != nullptr || archive_entry_symlink(entry) != nullptr;
    if (isLink) {
        described.kind = ArchiveEntry::Kind::other;
    } else if (archive_entry_filetype(entry) == AE_IFDIR) {
        described.kind = ArchiveEntry::Kind::folder;
    } else {
        described.kind =
            archive_entry_filetype(entry) == AE_IFREG ? ArchiveEntry::Kind::file : ArchiveEntry::Kind::other;
    }
    return described;
}

enum class Reading { whole, faulty, ended };

Reading readBytes(archive* reader, ArchiveSink& sink)
{
    std::array<std::uint8_t, blockSize> block; // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    for (;;) {
        const auto count = archive_read_data(reader, block.data(), block.size());
        if (count == 0)
            return Reading::whole;
        if (count < 0)
            return Reading::faulty;
        if (!sink.takeBytes(std::span(block).first(static_cast<std::size_t>(count))))
            return Reading::ended;
    }
}

} // namespace

std::optional<Text> ZipArchive::read(const std::filesystem::path& path, ArchiveSink& sink)
{
    if (isEmptyArchive(path))
        return std::nullopt;
    PlainNames plainNames(path);
    const Reader reader = makeReader(asOfDos);
    if (openFile(reader.get(), path) != ARCHIVE_OK)
        return wordsOf(reader.get());
    for (;;) {
        archive_entry* entry = nullptr;
        const int found = archive_read_next_header(reader.get(), &entry);
        if (found == ARCHIVE_EOF)
            return std::nullopt;
        // A warning is about a name or a field that is checked elsewhere.
        if (found != ARCHIVE_OK && found != ARCHIVE_WARN)
            return wordsOf(reader.get());
        const auto entryFound = described(entry, plainNames);
        if (!sink.takeEntry(entryFound))
            return std::nullopt;
        if (entryFound.kind != ArchiveEntry::Kind::file)
            continue;
        switch (readBytes(reader.get(), sink)) {
        case Reading::faulty:
            return wordsOf(reader.get());
        case Reading::ended:
            return std::nullopt;
        case Reading::whole:
            break;
        }
    }
}

} // namespace karvo
