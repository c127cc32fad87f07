// The measurements, by subject.
#pragma once

#include "table.h"

#include <filesystem>

namespace karvo::bench
{

// A full read over the paced line, from the last byte to the filled list, and the processor time while a
// silent decoder is awaited.
std::vector<Row> measureReading(const std::filesystem::path& programFolder);

// Writing many CVs over the paced line.
std::vector<Row> measureWriting(const std::filesystem::path& programFolder);

// The pages of an upload to the boot loader and the records of an update through the interface, over the
// paced line, against what the wire and the mandatory pauses take.
std::vector<Row> measureFirmware(const std::filesystem::path& programFolder);

// From a description file to the list, and all files of the program folder against reading them with cat.
std::vector<Row> measureDescriptions(const std::filesystem::path& programFolder);

// Opening, comparing and saving a CV list file, and a change in many of them against copying them, each copy
// brought to the disk.
std::vector<Row> measureListFiles(const std::filesystem::path& programFolder);

// Unpacking an archive against bsdtar; nothing where there is no bsdtar.
std::vector<Row> measureUnpacking();

// Start to the first idle window, and memory, against an empty window of the same toolkit. Runs this very
// program again with the argument of a child.
std::vector<Row> measureWindows(const std::filesystem::path& programFolder);

// The longest time, in milliseconds, from a move of the mouse that drags a bar of the speed-step editor to
// the painted window.
double slowestDrag(const std::filesystem::path& programFolder);

// The child's part: shows the window that is asked for, prints its figures when it is idle, and returns the
// exit code.
int runWindowChild(int argc, char** argv, const std::filesystem::path& programFolder);

} // namespace karvo::bench
