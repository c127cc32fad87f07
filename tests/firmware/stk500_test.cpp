#include "firmware/stk500.h"

#include "firmware/hex_digits.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(Stk500Test, IsLaidOutByteForByteWithItsCheckByte)
{
    const std::pair<Bytes, TextView> cases[] = {
        {stk500::signOn(1), u"1B 01 00 01 0E 01 14"},
        {stk500::getParameter(2, 0x9A), u"1B 02 00 02 0E 03 9A 8C"},
        {stk500::setResetPolarity(12), u"1B 0C 00 03 0E 02 9E 01 87"},
        {stk500::setControllerInit(13), u"1B 0D 00 03 0E 02 9F 01 87"},
        {stk500::enterProgrammingMode(14), u"1B 0E 00 0C 0E 10 C8 64 19 20 00 53 03 AC 53 00 00 3D"},
        {stk500::readLockBits(15), u"1B 0F 00 06 0E 1A 04 58 00 00 00 5A"},
        {stk500::readLowFuse(22), u"1B 16 00 06 0E 18 04 50 00 00 00 49"},
        {stk500::readHighFuse(23), u"1B 17 00 06 0E 18 04 58 08 00 00 48"},
        {stk500::readExtendedFuse(24), u"1B 18 00 06 0E 18 04 50 08 00 00 4F"},
        {stk500::chipErase(39), u"1B 27 00 07 0E 12 2D 01 AC 80 00 00 27"},
        {stk500::leaveProgrammingMode(16, 0x9F), u"1B 10 00 03 0E 11 01 01 9F 88"}, // 9F is not counted
        {stk500::signOn(258), u"1B 02 00 01 0E 01 17"},                             // the low byte counts
    };
    for (const auto& [message, expected] : cases)
        EXPECT_EQ(utf8FromText(hexText(message)), utf8FromText(expected));
}

TEST(Stk500Test, APageStandsBehindFifteenBytes)
{
    FlashPage page;
    for (std::size_t i = 0; i < page.size(); ++i)
        page[i] = static_cast<std::uint8_t>(i);
    const Bytes message = stk500::programFlashPage(41, page);
    ASSERT_EQ(message.size(), 144U);
    EXPECT_EQ(utf8FromText(hexText(Bytes(message.begin(), message.begin() + 15))),
              "1B 29 00 8A 0E 13 00 80 C1 0A 40 4C 20 00 00");
    EXPECT_TRUE(std::equal(page.begin(), page.end(), message.begin() + 15));
    EXPECT_EQ(message.back(), 0x29 ^ 0x1B ^ 0x8A ^ 0x0E ^ 0x13 ^ 0x80 ^ 0xC1 ^ 0x0A ^ 0x40 ^ 0x4C ^ 0x20);
}

} // namespace karvo
