// What is wrong with a firmware file, found before the first byte of it is sent, or with a memory image.
#pragma once

#include "language/language_tables.h"

#include <filesystem>

namespace karvo
{

enum class FileFault {
    otherFirstLine, // HEX: not the line with which every image for the boot loader begins
    lineForm,       // HEX: no ":" followed by pairs of hexadecimal digits
    lineLength,     // HEX: another number of bytes than the line says
    lineSum,        // HEX: the bytes of a line do not add up to 0
    lineType,       // HEX: neither data nor the end
    imageLineType,  // a memory image: a line of an unknown type
    overlap,        // HEX: data for an address that has some
    gap,            // HEX: data begin behind the end of those before
    tooManyLines,   // HEX: more than 2048 data lines
    tooLarge,       // HEX: data beyond 32,768 bytes
    endMissing,     // HEX: no end record
    linesBehindEnd, // HEX: something behind the end record
    noData,         // both: no line of data
    headerTooLong,  // UHX: more than six items before "Update Ende"
    headerOpen,     // UHX: no "Update Ende"
    headerStart,    // UHX: the first item is no four hexadecimal digits
    recordForm,     // UHX: no five characters followed by pairs of hexadecimal digits
    recordTooLong   // UHX: more than sixteen bytes
};

struct FileRefusal {
    FileFault fault;
    int line; // from 1
};

// What the person is told: the path, the line and what is wrong with it, and what that means.
Text refusalText(const LanguageTables& texts, const std::filesystem::path& path, const FileRefusal& refusal,
                 Message meaning = Message::firmwareFileFault);

} // namespace karvo
