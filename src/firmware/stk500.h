// The messages of the boot loader upload: STK500 version 2 framing (docs/protocol.md, "The boot loader").
#pragma once

#include "firmware/hex_image.h"

#include <cstdint>

namespace karvo::stk500
{

// Every message: start byte 0x1B, the low byte of `sequence`, size of the body (two bytes, high byte first),
// 0x0E, the body, and the XOR of all bytes before.
Bytes signOn(unsigned sequence);
Bytes getParameter(unsigned sequence, std::uint8_t parameter);
Bytes setResetPolarity(unsigned sequence);
Bytes setControllerInit(unsigned sequence);
Bytes enterProgrammingMode(unsigned sequence);
Bytes readLockBits(unsigned sequence);
Bytes readLowFuse(unsigned sequence);
Bytes readHighFuse(unsigned sequence);
Bytes readExtendedFuse(unsigned sequence);
Bytes chipErase(unsigned sequence);
Bytes programFlashPage(unsigned sequence, const FlashPage& page);

// Ten bytes: one byte more than its size field says stands before the check byte. The boot loaders in the
// field have always been sent it that way.
Bytes leaveProgrammingMode(unsigned sequence, std::uint8_t extra);

inline constexpr std::uint8_t controllerInit = 0x9F;

} // namespace karvo::stk500
