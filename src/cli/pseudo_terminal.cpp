#include "cli/pseudo_terminal.h"

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
        ::tcsetattr(descriptor, TCSANOW, &attributes);
    }
    return descriptor;
}

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
