#include "simulator/decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace karvo::sim
{

// What holds for every one; what tells them apart is what the descriptions of the CVs are chosen by.
TEST(Decoder, LeavesTheFactoryInOrder)
{
    const auto names = decoderNames();
    EXPECT_EQ(names.size(), 36U);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const auto decoder = decoderByName(name);
        ASSERT_TRUE(decoder);
        EXPECT_EQ(decoder->name, name);
        const auto cv = [&](std::size_t number) { return int{decoder->memory.at(number - 1)}; };
        const bool isNewer = decoder->identification == "27" || decoder->identification == "28";
        EXPECT_EQ(decoder->memory.size(), isNewer ? 1024U : 512U);
        EXPECT_TRUE(cv(1) == 3 && cv(29) == 0) << "the short address three";
        EXPECT_TRUE(cv(174) == 0 || cv(175) == 0);
        for (std::size_t number = 258; number <= 496; ++number)
            EXPECT_NE(cv(number), cv(number - 1)) << "a shifted block must show";
        const bool hasNoTable = name == "kv07-v1" || name == "kv08-v1" || name.starts_with("trailer") ||
                                name.starts_with("receiver");
        if (hasNoTable) {
            EXPECT_EQ(cv(73), name.starts_with("receiver") ? cv(7) : 0);
            continue;
        }
        EXPECT_EQ(cv(97), 5);
        EXPECT_EQ(cv(2), 5) << "the base speed is that of step 1";
        EXPECT_EQ(cv(5), cv(70)) << "the top speed is that of step 28";
        EXPECT_GE(cv(73), 4);
        for (std::size_t step = 2; step <= 28; ++step)
            EXPECT_GT(cv(98 - step), cv(98 - step + 1)) << "step " << step;
    }
    EXPECT_EQ(decoderByName("KV07-F3")->name, "kv07-f3");
    for (const auto* name : {"", "kv", "kv07-", "kv09", "kv077", " kv07"})
        EXPECT_FALSE(decoderByName(name)) << name;
}

} // namespace karvo::sim
