#include "cli/line_log.h"

#include <cerrno>
#include <iomanip>
#include <sstream>
#include <system_error>
#include <utility>

namespace karvo
{

namespace
{

std::string hexOf(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += {' ', digits[byte / 16U], digits[byte % 16U]};
    return text;
}

} // namespace

LineLog::LineLog(std::filesystem::path path) : path_(std::move(path)), file_(path_)
{
    check();
}

void LineLog::opened(const std::string& device)
{
    write('-', "device", ' ' + device);
}

void LineLog::rate(int baud)
{
    write('-', "rate", ' ' + std::to_string(baud));
}

void LineLog::passed(const sim::Passed& passed)
{
    write(passed.isReply ? '<' : '>', passed.word, hexOf(passed.bytes));
}

void LineLog::write(char kind, std::string_view word, const std::string& rest)
{
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
    file_ << std::fixed << std::setprecision(3) << elapsed.count() << ' ' << kind << ' ' << word << rest
          << std::endl;
    check();
}

void LineLog::check()
{
    if (!file_)
        throw std::system_error(errno, std::generic_category(), path_.string());
}

} // namespace karvo
