#include "platform/interrupt_notice.h"

#include <atomic>

#ifdef Q_OS_WIN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace karvo
{

namespace
{

std::atomic<int> count = 0; // what a handler may touch
static_assert(std::atomic<int>::is_always_lock_free);

} // namespace

InterruptNotice::~InterruptNotice()
{
    if (interrupted_)
        end();
}

void InterruptNotice::listen(std::function<void()> interrupted)
{
    const bool begins = !interrupted_;
    interrupted_ = std::move(interrupted);
    if (begins) {
        count = 0;
        begin();
    }
}

int InterruptNotice::times() const
{
    return interrupted_ ? count.load() : 0;
}

#ifdef Q_OS_WIN

namespace
{

// The system calls its handler in a thread of its own, with nothing but the kind of the event.
std::atomic<InterruptNotice*> listener = nullptr;

BOOL WINAPI onConsoleEvent(DWORD event)
{
    InterruptNotice* const notice = listener;
    if (notice == nullptr || (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT))
        return FALSE;
    ++count;
    QMetaObject::invokeMethod(notice, "tell", Qt::QueuedConnection);
    return TRUE;
}

} // namespace

void InterruptNotice::begin()
{
    listener = this;
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

void InterruptNotice::end()
{
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    listener = nullptr;
}

#else

namespace
{

// A signal handler may do little more than write to a pipe.
std::array<int, 2> wakePipe = {-1, -1};

void onSignal(int)
{
    const int error = errno;
    ++count;
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
    errno = error;
}

void handleWith(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // as nohup has it
            sigaction(signal, &action, nullptr);
    }
}

} // namespace

void InterruptNotice::begin()
{
    if (pipe(wakePipe.data()) != 0)
        return; // then Ctrl-C ends the program as ever
    for (const int end : wakePipe)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    auto* const watch = new QSocketNotifier(wakePipe[0], QSocketNotifier::Read, this);
    connect(watch, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(wakePipe[0], &byte, 1) == 1)
            tell();
    });
    handleWith(onSignal);
}

void InterruptNotice::end()
{
    if (wakePipe[0] < 0)
        return;
    handleWith(SIG_DFL);
    qDeleteAll(findChildren<QSocketNotifier*>());
    for (int& end : wakePipe) {
        close(end);
        end = -1;
    }
}

#endif

} // namespace karvo
