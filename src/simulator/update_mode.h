// The programming interface while it takes an update: from the letters "BO" to the closing block.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace karvo::sim
{

class UpdateMode
{
public:
    // What the interface answers to this byte: 6, 21 for a record with a wrong sum, or nothing (0).
    std::uint8_t receive(std::uint8_t byte);

    // The closing block has come; nothing more is taken.
    bool isComplete() const { return complete_; }

    const std::vector<std::uint8_t>& image() const { return image_; }
    std::array<int, 3> date() const { return date_; } // year, month, day

private:
    enum class Awaited { letter, start, command, records };

    std::uint8_t acknowledge(Awaited next);
    std::uint8_t receiveRecordByte();

    Awaited awaited_ = Awaited::letter;
    std::vector<std::uint8_t> received_;
    std::vector<std::uint8_t> image_;
    std::array<int, 3> date_{};
    bool complete_ = false;
};

} // namespace karvo::sim
