#include "simulator/decoder.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <set>

namespace karvo::sim
{

namespace
{

int cv(const Decoder& decoder, std::size_t number)
{
    return decoder.memory.at(number - 1);
}

// What tells a decoder apart: the reply, and the bytes of its block that decide.
struct Traits {
    std::string name;
    std::string identification;
    std::size_t size;
    int firmware; // CV7
    int build;    // CV498
    std::array<int, 3> date;
    std::array<int, 3> signature;
    int topStep; // CV70, 0 where there is no speed table
};

std::ostream& operator<<(std::ostream& out, const Traits& traits)
{
    return out << traits.name;
}

constexpr std::array<int, 3> none{0, 0, 0};
constexpr std::array<int, 3> atmega168{0x1E, 0x94, 0x06};
constexpr std::array<int, 3> atmega328{0x1E, 0x95, 0x14};
constexpr std::array<int, 3> atmega328p{0x1E, 0x95, 0x0F};
constexpr std::array<int, 3> erased{255, 255, 255};

const std::vector<Traits> expectedTraits{
    {"kv07", "27", 1024, 6, 0, {14, 3, 18}, atmega328, 160},
    {"kv07-f3", "27", 1024, 3, 0, {22, 9, 13}, atmega328, 160},
    {"kv07-f4", "27", 1024, 4, 0, {17, 6, 14}, atmega328, 160},
    {"kv07-f5", "27", 1024, 5, 0, {8, 12, 15}, atmega328, 120},
    {"kv07-v1", "27", 1024, 1, 0, {5, 3, 13}, atmega328, 0},
    {"kv07-tacho", "27", 1024, 6, 2, {30, 1, 18}, atmega328, 160},
    {"kv07-lc", "27", 1024, 6, 1, {14, 3, 18}, atmega328, 160},
    {"kv08", "28", 1024, 6, 0, {2, 11, 19}, atmega328p, 165},
    {"kv08-f3", "28", 1024, 3, 0, {6, 10, 13}, atmega328, 165},
    {"kv08-f4", "28", 1024, 4, 0, {1, 7, 14}, atmega328, 165},
    {"kv08-f5", "28", 1024, 5, 0, {20, 12, 15}, atmega328p, 120},
    {"kv08-v1", "28", 1024, 1, 0, {19, 4, 13}, atmega328, 0},
    {"kv08-tacho", "28", 1024, 6, 2, {30, 1, 18}, atmega328p, 165},
    {"kv08-lc", "28", 1024, 6, 1, {2, 11, 19}, atmega328p, 165},
    {"kv04", "14", 512, 4, 0, none, atmega168, 150},
    {"kv04-2008", "04", 512, 1, 0, none, erased, 175},
    {"kv04-2008-v1", "04", 512, 2, 0, none, atmega168, 175},
    {"kv04-2008-v2", "04", 512, 3, 0, none, atmega168, 150},
    {"kv04-f4", "24", 512, 5, 0, none, atmega168, 155},
    {"kv04-mai10", "24", 512, 5, 0, {14, 5, 10}, atmega168, 155},
    {"kv05", "15", 512, 4, 0, none, atmega168, 150},
    {"kv05-f5", "25", 512, 5, 0, none, atmega168, 155},
    {"kv05-mai10", "25", 512, 5, 0, {14, 5, 10}, atmega168, 155},
    {"kv05-nov12", "25", 512, 6, 0, {20, 11, 12}, atmega168, 155},
    {"kv06", "16", 512, 4, 0, none, atmega168, 150},
    {"kv06-f6", "26", 512, 5, 0, none, atmega168, 155},
    {"kv06-mai10", "26", 512, 5, 0, {14, 5, 10}, atmega168, 155},
    {"kv06-nov12", "26", 512, 6, 0, {20, 11, 12}, atmega168, 155},
    {"trailer", "A7", 512, 3, 0, {11, 2, 17}, atmega328, 0},
    {"trailer-v1", "A7", 512, 1, 0, {9, 9, 14}, atmega328, 0},
    {"receiver", "80", 512, 5, 0, {27, 2, 22}, atmega328, 0},
    {"receiver-undated", "80", 512, 1, 0, none, erased, 0},
    {"receiver-2014", "80", 512, 2, 0, {30, 6, 14}, atmega168, 0},
    {"receiver-2015", "80", 512, 4, 0, {1, 9, 15}, atmega168, 0},
    {"receiver-2016", "80", 512, 4, 0, {24, 2, 16}, atmega328, 0},
    {"receiver-readonly", "81", 512, 4, 0, {24, 2, 16}, erased, 0},
};

class EachDecoder : public testing::TestWithParam<Traits>
{
};

TEST_P(EachDecoder, IsToldApartByItsReplyAndItsBlock)
{
    const Traits& expected = GetParam();
    const auto decoder = decoderByName(expected.name);
    ASSERT_TRUE(decoder);
    EXPECT_EQ(decoder->name, expected.name);
    EXPECT_EQ(decoder->identification, expected.identification);
    ASSERT_EQ(decoder->memory.size(), expected.size);
    EXPECT_EQ(cv(*decoder, 7), expected.firmware);
    EXPECT_EQ(cv(*decoder, 498), expected.build);
    EXPECT_EQ((std::array{cv(*decoder, 499), cv(*decoder, 500), cv(*decoder, 501)}), expected.date);
    EXPECT_EQ((std::array{cv(*decoder, 509), cv(*decoder, 510), cv(*decoder, 511)}), expected.signature);
}

TEST_P(EachDecoder, HasARisingSpeedTableOrNone)
{
    const Traits& expected = GetParam();
    const auto decoder = decoderByName(expected.name);
    ASSERT_TRUE(decoder);
    if (expected.topStep == 0) {
        const bool isReceiver = expected.identification[0] == '8';
        EXPECT_EQ(cv(*decoder, 73), isReceiver ? expected.firmware : 0);
        return;
    }
    EXPECT_EQ(cv(*decoder, 97), 5);
    EXPECT_EQ(cv(*decoder, 70), expected.topStep);
    EXPECT_EQ(cv(*decoder, 2), 5) << "the base speed is that of step 1";
    EXPECT_EQ(cv(*decoder, 5), expected.topStep) << "the top speed is that of step 28";
    EXPECT_GE(cv(*decoder, 73), 4);
    for (std::size_t step = 2; step <= 28; ++step) {
        EXPECT_GT(cv(*decoder, 98 - step), cv(*decoder, 98 - step + 1)) << "step " << step;
    }
}

TEST_P(EachDecoder, LeavesTheFactoryOnShortAddressThree)
{
    const auto decoder = decoderByName(GetParam().name);
    ASSERT_TRUE(decoder);
    EXPECT_EQ(cv(*decoder, 1), 3);
    EXPECT_EQ(cv(*decoder, 29), 0);
    EXPECT_TRUE(cv(*decoder, 174) == 0 || cv(*decoder, 175) == 0);
}

TEST_P(EachDecoder, ShowsAShiftedBlockInItsOwnRange)
{
    const auto decoder = decoderByName(GetParam().name);
    ASSERT_TRUE(decoder);
    for (std::size_t number = 258; number <= 496; ++number) {
        EXPECT_NE(cv(*decoder, number), cv(*decoder, number - 1)) << "CV" << number;
    }
}

// Test names allow letters, digits and "_" only.
std::string testName(const testing::TestParamInfo<Traits>& info)
{
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Decoders, EachDecoder, testing::ValuesIn(expectedTraits), testName);

TEST(Decoder, NamesAreThoseOfTheTableInItsOrder)
{
    std::vector<std::string> expected;
    for (const Traits& traits : expectedTraits) {
        expected.push_back(traits.name);
    }
    EXPECT_EQ(decoderNames(), expected);
}

TEST(Decoder, DistanceControlStandsWithinItsLimits)
{
    const auto decoder = decoderByName("kv07");
    ASSERT_TRUE(decoder);
    EXPECT_EQ(cv(*decoder, 48), 20);
    EXPECT_EQ(cv(*decoder, 52), 110);
    EXPECT_EQ(cv(*decoder, 53), 20);
    EXPECT_EQ(cv(*decoder, 54), 40);
}

TEST(Decoder, NameIsFoundWhateverItsLetterCase)
{
    ASSERT_TRUE(decoderByName("KV07-F3"));
    EXPECT_EQ(decoderByName("KV07-F3")->name, "kv07-f3");
}

TEST(Decoder, UnknownNameGivesNothing)
{
    for (const auto* name : {"", "kv", "kv07-", "kv09", "kv077", " kv07"}) {
        EXPECT_FALSE(decoderByName(name)) << name;
    }
}

} // namespace

} // namespace karvo::sim
