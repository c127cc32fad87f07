#include "simulator/simulator.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace karvo::sim
{

namespace
{

using namespace std::chrono_literals;

constexpr int bootLoaderBaud = 115200;
constexpr long long bitsPerByte = 10;

constexpr std::uint8_t acknowledge = 6;
constexpr std::uint8_t refusal = 21;
constexpr std::size_t frameLength = 3;
constexpr std::size_t liveChannels = 3;
constexpr Time frameTimeOut = 2s;

constexpr std::uint8_t identifyCommand = '%';
constexpr std::string_view readCommand = "ER";
constexpr std::string_view writeCommand = "EWS";
constexpr std::string_view liveCommand = "EWM";
constexpr std::string_view updateCommand = "BO";
constexpr std::size_t longestUpdateStep = 6; // of those before the records

constexpr Time lateBlockDelay = 12s;
constexpr Time lateReplyDelay = 6s;
constexpr std::size_t excess = 100; // bytes
constexpr Time tornBlockPause = 300ms;
constexpr std::size_t tornBlockPiece = 128;
constexpr std::size_t shortBlockLack = 100;

std::uint8_t sumOf(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0U));
}

LoaderManner mannerUnder(Fault fault)
{
    switch (fault) {
    case Fault::strictLoader:
        return LoaderManner::strict;
    case Fault::terseLoader:
        return LoaderManner::terse;
    case Fault::changedByte:
        return LoaderManner::changedByte;
    default:
        return LoaderManner::usual;
    }
}

bool isEqual(std::span<const std::uint8_t> bytes, std::string_view command)
{
    return std::equal(bytes.begin(), bytes.end(), command.begin(), command.end());
}

bool beginsACommand(std::span<const std::uint8_t> bytes)
{
    const auto commands = {readCommand, writeCommand, liveCommand, updateCommand};
    return std::any_of(commands.begin(), commands.end(), [bytes](std::string_view command) {
        return isEqual(bytes, command.substr(0, bytes.size()));
    });
}

} // namespace

Simulator::Simulator(Decoder decoder, Pace pace, Fault fault)
    : decoder_(std::move(decoder)), pace_(pace), fault_(fault)
{
}

void Simulator::receive(std::span<const std::uint8_t> bytes, Time now)
{
    if (hungUp(now))
        return;
    if (fault_ == Fault::silence && watcher_)
        watcher_({false, "unheard", bytes});
    forgetStaleFrame(now);
    const Time start = std::max(now, inwardFree_);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        receiveByte(bytes[i], start + lineTime(i + 1));
    inwardFree_ = start + lineTime(bytes.size());
}

std::vector<std::uint8_t> Simulator::take(Time now)
{
    std::vector<std::uint8_t> readable;
    while (!outgoing_.empty() && outgoing_.front().due <= now) {
        readable.push_back(outgoing_.front().byte);
        outgoing_.pop_front();
    }
    return readable;
}

std::optional<Time> Simulator::nextEvent() const
{
    if (!outgoing_.empty())
        return outgoing_.front().due;
    return hangUpAt_;
}

bool Simulator::hungUp(Time now) const
{
    return hangUpAt_ && *hangUpAt_ <= now;
}

void Simulator::reconnect()
{
    if (hangUpAt_ && fault_ == Fault::hangUp)
        fault_ = Fault::none;
    hangUpAt_.reset();
    outgoing_.clear();
    cutShort();
    bootLoader_.reset();
    awaited_ = Awaited::command;
    inwardFree_ = {};
    outwardFree_ = {};
}

void Simulator::setBaud(int baud)
{
    baud_ = baud;
}

void Simulator::setFault(Fault fault)
{
    fault_ = fault;
}

void Simulator::forgetStaleFrame(Time now)
{
    const bool isAwaited = awaited_ != Awaited::command || !bootLoader_.isBetweenMessages();
    if (isAwaited && now - inwardFree_ > frameTimeOut) {
        cutShort();
        bootLoader_.reset();
        awaited_ = Awaited::command;
    }
}

// The first `count` bytes of what was received are told, and done with.
void Simulator::tellCommand(std::string_view word, std::size_t count)
{
    if (watcher_)
        watcher_({false, word, std::span(received_).first(count)});
    received_.erase(received_.begin(), received_.begin() + static_cast<std::ptrdiff_t>(count));
}

void Simulator::cutShort()
{
    if (!received_.empty())
        tellCommand("cut-short");
}

void Simulator::receiveByte(std::uint8_t byte, Time arrival)
{
    if (fault_ == Fault::silence)
        return;
    if (baud_ == bootLoaderBaud) {
        receiveBootLoaderByte(byte, arrival);
    } else if (awaited_ == Awaited::command) {
        receiveCommandByte(byte, arrival);
    } else if (awaited_ == Awaited::update) {
        receiveUpdateByte(byte, arrival);
    } else {
        receiveFrameByte(byte, arrival);
    }
}

void Simulator::receiveCommandByte(std::uint8_t byte, Time arrival)
{
    if (byte == identifyCommand)
        cutShort();
    received_.push_back(byte);
    if (byte == identifyCommand) {
        tellCommand("identify");
        sendIdentification(arrival);
        return;
    }
    std::size_t strangers = 0;
    while (!beginsACommand(std::span(received_).subspan(strangers)))
        ++strangers;
    if (strangers != 0)
        tellCommand("unknown", strangers);
    if (isEqual(received_, readCommand)) {
        tellCommand("read");
        sendBlock(arrival);
    } else if (isEqual(received_, writeCommand)) {
        acknowledgeCommand("write", Awaited::writeFrame, arrival);
    } else if (isEqual(received_, liveCommand)) {
        acknowledgeCommand("live", Awaited::liveFrame, arrival);
    } else if (isEqual(received_, updateCommand))
        startUpdate(arrival);
}

void Simulator::startUpdate(Time arrival)
{
    update_ = UpdateMode();
    acknowledgeCommand("update", Awaited::update, arrival);
}

void Simulator::receiveUpdateByte(std::uint8_t byte, Time arrival)
{
    received_.push_back(byte);
    const auto reply = update_.receive(byte);
    if (update_.isComplete()) {
        tellCommand("update-end");
        awaited_ = Awaited::command;
    }
    if (reply == 0)
        return;
    tellCommand(received_.size() > longestUpdateStep ? "record" : "update-step");
    if (update_.image().empty())
        send("reply", std::array{reply}, arrival);
    else if (fault_ != Fault::silentUpdate)
        sendTransferReply({reply}, arrival);
}

void Simulator::receiveBootLoaderByte(std::uint8_t byte, Time arrival)
{
    received_.push_back(byte);
    const auto reply = bootLoader_.receive(byte, mannerUnder(fault_));
    if (bootLoader_.isBetweenMessages())
        tellCommand(wordForMessage(received_));
    if (reply.empty())
        return;
    if (bootLoader_.flash().empty())
        send("reply", reply, arrival);
    else if (fault_ != Fault::silentLoader)
        sendTransferReply(reply, arrival);
}

// A reply behind the first page or record.
void Simulator::sendTransferReply(std::vector<std::uint8_t> reply, Time arrival)
{
    if (fault_ == Fault::hangUp) {
        hangUpAt_ = arrival;
        return;
    }
    if (fault_ == Fault::refusedFrame && baud_ != bootLoaderBaud) {
        reply.assign(1, refusal);
    } else if (fault_ == Fault::garbledReply) {
        for (auto& byte : reply)
            byte = static_cast<std::uint8_t>(~byte);
    } else if (fault_ == Fault::excessReply)
        reply.insert(reply.end(), excess, 0x55);
    send("reply", reply, fault_ == Fault::lateReply ? arrival + lateReplyDelay : arrival);
}

void Simulator::acknowledgeCommand(std::string_view word, Awaited next, Time arrival)
{
    const bool refused = fault_ == Fault::refusedCommand;
    tellCommand(word);
    awaited_ = refused ? Awaited::command : next;
    sendAcknowledge(refused, arrival);
}

void Simulator::sendAcknowledge(bool refused, Time arrival)
{
    send(refused ? "refusal" : "acknowledge", std::array{refused ? refusal : acknowledge}, arrival);
}

void Simulator::receiveFrameByte(std::uint8_t byte, Time arrival)
{
    received_.push_back(byte);
    if (received_.size() == frameLength) {
        answerFrame(arrival);
        awaited_ = Awaited::command;
    }
}

void Simulator::answerFrame(Time arrival)
{
    const std::size_t place = received_[0]; // an address or a channel
    const std::uint8_t value = received_[1];
    const bool live = awaited_ == Awaited::liveFrame;
    const bool refused = received_[2] != sumOf(std::span(received_).first(2)) ||
                         (live && (place < 1 || place > liveChannels)) || fault_ == Fault::refusedCommand ||
                         fault_ == Fault::refusedFrame;
    if (!refused && live)
        liveValues_.push_back({static_cast<int>(place), value});
    else if (!refused)
        decoder_.memory[place] = value;
    tellCommand(live ? "live-frame" : "write-frame");
    sendAcknowledge(refused, arrival);
}

void Simulator::sendIdentification(Time arrival)
{
    const std::string_view text =
        fault_ == Fault::unknownIdentification ? std::string_view("99") : decoder_.identification;
    send("model", std::vector<std::uint8_t>(text.begin(), text.end()), arrival);
}

std::vector<std::uint8_t> Simulator::block() const
{
    std::vector<std::uint8_t> bytes = decoder_.memory;
    bytes.push_back(sumOf(decoder_.memory));
    if (fault_ == Fault::wrongCheckByte) {
        ++bytes.back();
    } else if (fault_ == Fault::shortBlock) {
        bytes.resize(bytes.size() - shortBlockLack);
    } else if (fault_ == Fault::hangUp)
        bytes.resize(bytes.size() / 2);
    return bytes;
}

void Simulator::sendBlock(Time arrival)
{
    const std::vector<std::uint8_t> bytes = block();
    const std::size_t piece = fault_ == Fault::tornBlock ? tornBlockPiece : bytes.size();
    Time start = fault_ == Fault::lateBlock ? arrival + lateBlockDelay : arrival;
    for (std::size_t begin = 0; begin < bytes.size(); begin += piece) {
        send("block", std::span(bytes).subspan(begin, std::min(piece, bytes.size() - begin)), start);
        start = outwardFree_ + tornBlockPause;
    }
    if (fault_ == Fault::hangUp)
        hangUpAt_ = outwardFree_;
}

void Simulator::send(std::string_view word, std::span<const std::uint8_t> bytes, Time start)
{
    if (hangUpAt_)
        return;
    if (watcher_)
        watcher_({true, word, bytes});
    start = std::max(start, outwardFree_);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        outgoing_.push_back({start + lineTime(i + 1), bytes[i]});
    }
    outwardFree_ = start + lineTime(bytes.size());
}

// From the first start bit to the last stop bit, rounded down to microseconds.
Time Simulator::lineTime(std::size_t bytes) const
{
    if (pace_ == Pace::none)
        return Time::zero();
    return Time(static_cast<long long>(bytes) * bitsPerByte * 1'000'000 / baud_);
}

} // namespace karvo::sim
