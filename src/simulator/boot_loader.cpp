#include "simulator/boot_loader.h"

#include <utility>

namespace karvo::sim
{

namespace
{

constexpr std::uint8_t start = 0x1B;
constexpr std::uint8_t token = 0x0E;
constexpr std::size_t headLength = 5;
constexpr std::size_t pageHead = 10;
constexpr std::size_t pageLength = 128;
constexpr std::size_t flashLength = 32768;

constexpr std::size_t changedPage = 3; // from 0
constexpr std::size_t changedPlace = 60;

constexpr std::uint8_t signOn = 0x01;
constexpr std::uint8_t setParameter = 0x02;
constexpr std::uint8_t getParameter = 0x03;
constexpr std::uint8_t enterMode = 0x10;
constexpr std::uint8_t leaveMode = 0x11;
constexpr std::uint8_t eraseChip = 0x12;
constexpr std::uint8_t programFlash = 0x13;
constexpr std::uint8_t readFuse = 0x18;
constexpr std::uint8_t readLock = 0x1A;
constexpr std::uint8_t done = 0x00;
constexpr std::uint8_t failed = 0xC0;
constexpr std::uint8_t checkSumAnswer = 0xB0;
constexpr std::uint8_t checkSumError = 0xC1;

std::uint8_t xorOf(std::span<const std::uint8_t> bytes)
{
    std::uint8_t check = 0;
    for (const auto byte : bytes)
        check = static_cast<std::uint8_t>(check ^ byte);
    return check;
}

bool writesFlash(std::uint8_t command)
{
    return command == signOn || command == enterMode || command == eraseChip || command == programFlash;
}

} // namespace

void BootLoader::reset()
{
    received_.clear();
}

// Both leave messages carry one byte that their size does not count.
std::size_t BootLoader::messageLength() const
{
    const std::size_t body = received_[2] * std::size_t{256} + received_[3];
    const std::size_t uncounted = received_[headLength] == leaveMode ? 1 : 0;
    return headLength + body + uncounted + 1;
}

bool BootLoader::isByteToChange() const
{
    return !changed_ && flash_.size() == changedPage * pageLength && received_.size() == changedPlace;
}

std::vector<std::uint8_t> BootLoader::receive(std::uint8_t byte, LoaderManner manner)
{
    if (received_.empty() && byte != start)
        return {};
    if (manner == LoaderManner::changedByte && isByteToChange()) {
        byte ^= 1U;
        changed_ = true;
    }
    received_.push_back(byte);
    if (received_.size() <= headLength || received_.size() < messageLength())
        return {};
    const bool sound = xorOf(received_) == 0 && received_[4] == token;
    auto reply = sound ? answer(manner) : std::vector<std::uint8_t>();
    received_.clear();
    return reply;
}

std::vector<std::uint8_t> BootLoader::answer(LoaderManner manner)
{
    const auto command = received_[headLength];
    const bool knows = writesFlash(command);
    if (manner == LoaderManner::terse && !knows)
        return {};
    const auto body = manner == LoaderManner::strict && !knows
                          ? std::vector<std::uint8_t>{checkSumAnswer, checkSumError}
                          : answerBody(command);
    std::vector<std::uint8_t> reply = {start, received_[1], 0, static_cast<std::uint8_t>(body.size()), token};
    reply.reserve(reply.size() + body.size() + 1);
    reply.insert(reply.end(), body.begin(), body.end());
    reply.push_back(xorOf(reply));
    return reply;
}

std::vector<std::uint8_t> BootLoader::answerBody(std::uint8_t command)
{
    switch (command) {
    case signOn:
        return {command, done, 8, 'A', 'V', 'R', 'I', 'S', 'P', '_', '2'};
    case getParameter:
        return {command, done, 2};
    case readFuse:
    case readLock:
        return {command, done, 0xFF, done};
    case eraseChip:
        flash_.clear();
        erased_ = true;
        changed_ = false;
        return {command, done};
    case programFlash: {
        if (!erased_ || received_.size() != headLength + pageHead + pageLength + 1 ||
            flash_.size() + pageLength > flashLength)
            return {command, failed};
        flash_.insert(flash_.end(), received_.begin() + headLength + pageHead, received_.end() - 1);
        return {command, done};
    }
    default:
        return {command, done};
    }
}

std::string_view wordForMessage(std::span<const std::uint8_t> message)
{
    switch (message.size() > headLength ? message[headLength] : 0) {
    case signOn:
        return "sign-on";
    case setParameter:
        return "set-parameter";
    case getParameter:
        return "get-parameter";
    case enterMode:
        return "enter-mode";
    case leaveMode:
        return "leave-mode";
    case eraseChip:
        return "erase";
    case programFlash:
        return "page";
    case readFuse:
        return "read-fuse";
    case readLock:
        return "read-lock";
    default:
        return "unknown";
    }
}

} // namespace karvo::sim
