// What passes a simulated line, as a file that can be read while it grows.
#pragma once

#include "simulator/simulator.h"

#include <filesystem>
#include <fstream>

namespace karvo
{

// One line each, complete on disk at once: the seconds since the start, ">" for what the program sent, "<"
// for a reply and "-" for the line itself, a word, and the bytes in hexadecimal digits:
//     1.204 > identify 25
//     1.206 < model 32 37
class LineLog
{
public:
    // An older file of this name is replaced. Throws std::system_error where that can not be done, and so do
    // the others where a line can not be written.
    explicit LineLog(std::filesystem::path path);

    void opened(const std::string& device);
    void rate(int baud);
    void passed(const sim::Passed& passed);

private:
    void write(char kind, std::string_view word, const std::string& rest);
    void check();

    std::filesystem::path path_;
    std::ofstream file_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace karvo
