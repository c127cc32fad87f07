#include "simulator/update_mode.h"

#include <algorithm>
#include <numeric>
#include <string_view>

namespace karvo::sim
{

namespace
{

constexpr std::uint8_t accepted = 6;
constexpr std::uint8_t refused = 21;
constexpr std::uint8_t nothing = 0;
constexpr std::string_view command = "UPDATE";
constexpr std::string_view closingStart = "XF01";
constexpr std::string_view closingEnd = "CI";
constexpr std::ptrdiff_t closingLength = 9;
constexpr std::size_t dataLength = 16;

bool isClosingBlock(const std::vector<std::uint8_t>& bytes)
{
    return static_cast<std::ptrdiff_t>(bytes.size()) == closingLength &&
           std::equal(closingStart.begin(), closingStart.end(), bytes.begin()) &&
           std::equal(closingEnd.begin(), closingEnd.end(), bytes.end() - 2);
}

} // namespace

std::uint8_t UpdateMode::acknowledge(Awaited next)
{
    received_.clear();
    awaited_ = next;
    return accepted;
}

std::uint8_t UpdateMode::receive(std::uint8_t byte)
{
    if (complete_)
        return nothing;
    received_.push_back(byte);
    switch (awaited_) {
    case Awaited::letter:
        if (byte == 'A')
            return acknowledge(Awaited::start);
        received_.clear();
        return nothing;
    case Awaited::start:
        return received_.size() == 2 ? acknowledge(Awaited::command) : nothing;
    case Awaited::command:
        return std::equal(received_.begin(), received_.end(), command.begin(), command.end())
                   ? acknowledge(Awaited::records)
                   : nothing;
    case Awaited::records:
        return receiveRecordByte();
    }
    return nothing;
}

std::uint8_t UpdateMode::receiveRecordByte()
{
    if (isClosingBlock(received_)) {
        date_ = {2000 + received_[4], received_[5], received_[6]};
        complete_ = true;
        return nothing;
    }
    if (received_.size() < dataLength + 2)
        return nothing;
    const auto dataEnd = received_.begin() + dataLength;
    const unsigned sum = std::accumulate(received_.begin(), dataEnd, 0U);
    const bool sound = sum == received_[dataLength] * 256U + received_[dataLength + 1];
    if (sound)
        image_.insert(image_.end(), received_.begin(), dataEnd);
    received_.clear();
    return sound ? accepted : refused;
}

} // namespace karvo::sim
