#include "cli/pseudo_terminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace karvo
{

namespace
{

// -1 with errno set, as the system calls inside.
int openOwnEnd()
{
    const int descriptor = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || (::grantpt(descriptor) == 0 && ::unlockpt(descriptor) == 0))
        return descriptor;
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return -1;
}

int openOtherEnd(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios attributes{};
    if (descriptor >= 0 && ::tcgetattr(descriptor, &attributes) == 0) {
        ::cfmakeraw(&attributes);
        ::cfsetispeed(&attributes, B4800);
        ::cfsetospeed(&attributes, B4800);
        ::tcsetattr(descriptor, TCSANOW, &attributes);
    }
    return descriptor;
}

struct Rate {
    speed_t code;
    int baud;
};
constexpr std::array rates = {Rate{B300, 300},       Rate{B600, 600},      Rate{B1200, 1200},
                              Rate{B2400, 2400},     Rate{B4800, 4800},    Rate{B9600, 9600},
                              Rate{B19200, 19200},   Rate{B38400, 38400},  Rate{B57600, 57600},
                              Rate{B115200, 115200}, Rate{B230400, 230400}};

} // namespace

PseudoTerminal::PseudoTerminal() : ownEnd_(openOwnEnd())
{
    if (ownEnd_ < 0)
        throw std::system_error(errno, std::generic_category(), "pseudo terminal");
    std::array<char, 128> name{};
    ::ptsname_r(ownEnd_, name.data(), name.size());
    path_ = name.data();
    otherEnd_ = openOtherEnd(path_);
    if (otherEnd_ < 0) {
        const int error = errno;
        ::close(ownEnd_);
        throw std::system_error(error, std::generic_category(), path_);
    }
}

PseudoTerminal::~PseudoTerminal()
{
    ::close(ownEnd_);
    ::close(otherEnd_);
}

std::optional<int> PseudoTerminal::baud() const
{
    termios attributes{};
    if (::tcgetattr(ownEnd_, &attributes) != 0) // tells what was set at the other end
        return std::nullopt;
    const auto code = ::cfgetospeed(&attributes);
    const auto found =
        std::find_if(rates.begin(), rates.end(), [code](const Rate& rate) { return rate.code == code; });
    return found != rates.end() ? std::optional(found->baud) : std::nullopt;
}

std::vector<std::uint8_t> PseudoTerminal::read()
{
    std::vector<std::uint8_t> bytes(4096);
    const auto count = ::read(ownEnd_, bytes.data(), bytes.size());
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    // A program that was killed leaves its claim to be the only user behind, and nobody could open the device
    // again.
    ::ioctl(otherEnd_, TIOCNXCL);
    return bytes;
}

void PseudoTerminal::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto count = ::write(ownEnd_, bytes.data(), bytes.size());
        if (count <= 0)
            return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

} // namespace karvo
