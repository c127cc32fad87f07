#include "platform/zip_archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>
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

// Where a name can not be told in UTF-8 its bytes are handed on: whoever checks names refuses them.
std::string nameOf(archive_entry* entry)
{
    const char* const utf8 = archive_entry_pathname_utf8(entry);
    const char* const bytes = utf8 != nullptr ? utf8 : archive_entry_pathname(entry);
    return bytes != nullptr ? bytes : "";
}

ArchiveEntry described(archive_entry* entry)
{
    ArchiveEntry described;
    described.name = nameOf(entry);
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
    const Reader reader(archive_read_new());
    archive_read_support_format_zip_seekable(reader.get());
    // Names that are not marked as UTF-8 are those of the system that ZIP comes from.
    archive_read_set_options(reader.get(), "zip:hdrcharset=CP437");
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
        const auto entryFound = described(entry);
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
