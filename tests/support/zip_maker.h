// ZIP files for tests, made by the library that reads them.
#pragma once

#include "program/archive.h"

#include <gtest/gtest.h>

#include <archive.h>
#include <archive_entry.h>

#include <filesystem>
#include <string>
#include <vector>

namespace karvo::test
{

struct ZipItem {
    std::string name;
    std::string content; // of a link: where it leads
    ArchiveEntry::Kind kind = ArchiveEntry::Kind::file;
};

inline std::string makeZip(const std::vector<ZipItem>& items, const char* options = "hdrcharset=UTF-8")
{
    std::string zip(std::size_t{64} * 1024, '\0');
    std::size_t used = 0;
    archive* const writer = archive_write_new();
    archive_write_set_format_zip(writer);
    EXPECT_EQ(archive_write_set_options(writer, options), ARCHIVE_OK) << archive_error_string(writer);
    archive_write_set_passphrase(writer, "password");
    archive_write_open_memory(writer, zip.data(), zip.size(), &used);
    for (const ZipItem& item : items) {
        archive_entry* const entry = archive_entry_new();
#ifdef _WIN32 // without a locale of UTF-8
        const std::filesystem::path name(std::u8string(item.name.begin(), item.name.end()));
        archive_entry_copy_pathname_w(entry, name.c_str());
#else
        archive_entry_update_pathname_utf8(entry, item.name.c_str());
#endif
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_filetype(entry, item.kind == ArchiveEntry::Kind::folder  ? AE_IFDIR
                                          : item.kind == ArchiveEntry::Kind::other ? AE_IFLNK
                                                                                   : AE_IFREG);
        if (item.kind == ArchiveEntry::Kind::other)
            archive_entry_set_symlink(entry, item.content.c_str());
        else
            archive_entry_set_size(entry, static_cast<la_int64_t>(item.content.size()));
        EXPECT_EQ(archive_write_header(writer, entry), ARCHIVE_OK) << archive_error_string(writer);
        archive_write_data(writer, item.content.data(), item.content.size());
        archive_entry_free(entry);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    zip.resize(used);
    return zip;
}

} // namespace karvo::test
