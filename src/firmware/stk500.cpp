#include "firmware/stk500.h"

#include <initializer_list>

namespace karvo::stk500
{

namespace
{

constexpr std::uint8_t startByte = 0x1B;
constexpr std::uint8_t token = 0x0E;

// `behind` stands between the body and the check byte and is not counted by the size field.
Bytes message(unsigned sequence, std::initializer_list<std::uint8_t> body,
              std::span<const std::uint8_t> data = {}, std::initializer_list<std::uint8_t> behind = {})
{
    const std::size_t size = body.size() + data.size();
    Bytes bytes = {startByte, static_cast<std::uint8_t>(sequence & 0xFFU),
                   static_cast<std::uint8_t>(size / 256), static_cast<std::uint8_t>(size % 256), token};
    bytes.reserve(bytes.size() + size + behind.size() + 1);
    bytes.insert(bytes.end(), body);
    bytes.insert(bytes.end(), data.begin(), data.end());
    bytes.insert(bytes.end(), behind);
    std::uint8_t check = 0;
    for (const auto byte : bytes)
        check = static_cast<std::uint8_t>(check ^ byte);
    bytes.push_back(check);
    return bytes;
}

} // namespace

Bytes signOn(unsigned sequence)
{
    return message(sequence, {0x01});
}

Bytes getParameter(unsigned sequence, std::uint8_t parameter)
{
    return message(sequence, {0x03, parameter});
}

Bytes setResetPolarity(unsigned sequence)
{
    return message(sequence, {0x02, 0x9E, 0x01});
}

Bytes setControllerInit(unsigned sequence)
{
    return message(sequence, {0x02, controllerInit, 0x01});
}

// Time-out 200, stabilisation delay 100, command delay 25 (all ms), 32 synchronisation loops, byte delay 0,
// poll value 0x53 at index 3, and the controller's own command.
Bytes enterProgrammingMode(unsigned sequence)
{
    return message(sequence, {0x10, 0xC8, 0x64, 0x19, 0x20, 0x00, 0x53, 0x03, 0xAC, 0x53, 0x00, 0x00});
}

Bytes readLockBits(unsigned sequence)
{
    return message(sequence, {0x1A, 0x04, 0x58, 0x00, 0x00, 0x00});
}

Bytes readLowFuse(unsigned sequence)
{
    return message(sequence, {0x18, 0x04, 0x50, 0x00, 0x00, 0x00});
}

Bytes readHighFuse(unsigned sequence)
{
    return message(sequence, {0x18, 0x04, 0x58, 0x08, 0x00, 0x00});
}

Bytes readExtendedFuse(unsigned sequence)
{
    return message(sequence, {0x18, 0x04, 0x50, 0x08, 0x00, 0x00});
}

// Erase delay 45 ms, poll method 1.
Bytes chipErase(unsigned sequence)
{
    return message(sequence, {0x12, 0x2D, 0x01, 0xAC, 0x80, 0x00, 0x00});
}

Bytes leaveProgrammingMode(unsigned sequence, std::uint8_t extra)
{
    return message(sequence, {0x11, 0x01, 0x01}, {}, {extra});
}

// 128 bytes, mode 0xC1, delay 10 ms, three commands of the controller, two poll values.
Bytes programFlashPage(unsigned sequence, const FlashPage& page)
{
    return message(sequence, {0x13, 0x00, 0x80, 0xC1, 0x0A, 0x40, 0x4C, 0x20, 0x00, 0x00}, page);
}

} // namespace karvo::stk500
