// What may stand on the program's command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace karvo
{

struct Options {
    bool help = false;
    bool version = false;
    bool read = false;
    std::optional<std::string> simulate; // name of a simulated decoder
    std::vector<std::string> mapPorts;   // such as "COM5=/dev/ttyUSB0"
    std::optional<std::string> programFolder;
    std::optional<std::string> settingsFile;
    std::optional<std::string> language; // "de" or "1", as typed
    std::vector<std::string> others;     // belongs to the window system, or to nobody
    std::string error;                   // in words; empty when all is well
};

// Of the arguments, in UTF-8, behind the program's name. An unknown option of two dashes is an error;
// whatever else is unknown stands in `others`. A value follows its option, or stands behind "=".
Options parseOptions(const std::vector<std::string>& arguments);

std::string helpText();

} // namespace karvo
