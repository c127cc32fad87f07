#include "platform/console.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace karvo
{

namespace
{

std::FILE* fileOf(StandardStream stream)
{
    return stream == StandardStream::out ? stdout : stderr;
}

std::error_code lastError()
{
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

// Until a line was typed: true. Ctrl-C: false; without this wait the read behind it would just go on.
bool awaitTyping(const InterruptNotice& interrupt)
{
    constexpr int turnMs = 200;
    pollfd typed{STDIN_FILENO, POLLIN, 0};
    while (interrupt.times() == 0) {
        if (poll(&typed, 1, turnMs) > 0)
            return true;
    }
    return false;
}

} // namespace

bool isTerminal(StandardStream stream)
{
    return isatty(stream == StandardStream::in ? STDIN_FILENO : fileno(fileOf(stream))) != 0;
}

std::error_code print(StandardStream stream, const std::string& utf8)
{
    errno = 0;
    const bool isDone = std::fwrite(utf8.data(), 1, utf8.size(), fileOf(stream)) == utf8.size();
    return isDone ? std::error_code() : lastError();
}

std::error_code flushOutput()
{
    errno = 0;
    return std::fflush(stdout) == 0 ? std::error_code() : lastError();
}

std::optional<Text> typedLine(const InterruptNotice& interrupt)
{
    std::string line;
    if (awaitTyping(interrupt) && std::getline(std::cin, line))
        return textFromUtf8(line);
    return std::nullopt;
}

void holdStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const bool isClosed = fcntl(stream, F_GETFD) == -1 && errno == EBADF;
        // Only to be read: what is printed to it fails, as it would have.
        if (isClosed && open("/dev/null", O_RDONLY) != stream)
            return;
    }
}

} // namespace karvo
