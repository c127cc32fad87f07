#include "cvdata/decoder_profile.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

CvImage imageWith(std::initializer_list<std::pair<std::size_t, int>> values)
{
    CvImage image{};
    image[73] = 100; // a speed step, unless a case says otherwise
    for (const auto& [cv, value] : values)
        image[cv] = static_cast<std::uint8_t>(value);
    return image;
}

struct ProfileCase {
    int typeCode;
    TextView identification;
    CvImage image;
    Model model;
    Generation generation;
};

TEST(DecoderProfileTest, ModelAndGenerationFollowFromIdentificationAndMemory)
{
    const ProfileCase cases[] = {
        {0, u"04", imageWith({{7, 0}}), Model::kv04, Generation::until2008First},
        {0, u"04", imageWith({{7, 1}}), Model::kv04, Generation::until2008First},
        {0, u"04", imageWith({{7, 2}}), Model::kv04, Generation::until2008Second},
        {0, u"04", imageWith({{7, 3}}), Model::kv04, Generation::until2008Last},
        {0, u"14", imageWith({{7, 1}}), Model::kv04, Generation::from2009},
        {1, u"15", imageWith({}), Model::kv05, Generation::standard},
        {2, u"16", imageWith({}), Model::kv06, Generation::standard},
        {4, u"24", imageWith({}), Model::kv04, Generation::undated},
        {4, u"24", imageWith({{499, 3}, {500, 5}, {501, 10}}), Model::kv04, Generation::may2010},
        {4, u"24", imageWith({{499, 3}, {500, 12}, {501, 12}}), Model::kv04, Generation::may2010},
        {5, u"25", imageWith({{499, 30}, {500, 10}, {501, 12}}), Model::kv05, Generation::may2010},
        {5, u"25", imageWith({{499, 1}, {500, 11}, {501, 12}}), Model::kv05, Generation::november2012},
        {6, u"26", imageWith({{499, 1}, {500, 1}, {501, 13}}), Model::kv06, Generation::november2012},
        {6, u"26", imageWith({{499, 1}, {500, 4}, {501, 10}}), Model::kv06, Generation::undated},
        {7, u"27", imageWith({{7, 6}}), Model::kv07, Generation::standard},
        {7, u"27", imageWith({{7, 5}}), Model::kv07, Generation::f5},
        {7, u"27", imageWith({{7, 4}}), Model::kv07, Generation::f4},
        {8, u"28", imageWith({{7, 3}}), Model::kv08, Generation::f3},
        {8, u"28", imageWith({{7, 9}, {73, 3}}), Model::kv08, Generation::v1},
        {8, u"28", imageWith({{7, 9}, {73, 4}}), Model::kv08, Generation::standard},
        {7, u"27", imageWith({{7, 4}, {73, 0}, {498, 1}}), Model::kv07, Generation::laneControl},
        {7, u"27", imageWith({{7, 4}, {498, 2}}), Model::kv07, Generation::tacho},
        {57, u"A7", imageWith({{7, 1}}), Model::trailer, Generation::v1},
        {57, u"A7", imageWith({{7, 2}}), Model::trailer, Generation::standard},
        {80, u"80", imageWith({}), Model::receiver, Generation::standard},
        {81, u"81", imageWith({}), Model::receiver, Generation::standard},
    };
    for (const ProfileCase& c : cases) {
        const auto profile = profileOf(c.typeCode, c.identification, c.image, {});
        EXPECT_EQ(profile.model, c.model) << utf8FromText(c.identification);
        EXPECT_EQ(profile.generation, c.generation)
            << utf8FromText(c.identification) << " " << int(c.image[7]);
        EXPECT_EQ(profile.isOlderKv04(), c.identification == u"04");
    }
}

TEST(DecoderProfileTest, ProcessorComesFromTheSignatureOrElseTheModel)
{
    const auto processor = [](int typeCode, int a, int b, int c) {
        return profileOf(typeCode, u"", imageWith({{509, a}, {510, b}, {511, c}}), {}).processor;
    };
    EXPECT_EQ(processor(7, 0x1E, 0x94, 0x06), Processor::atmega168);
    EXPECT_EQ(processor(0, 0x1E, 0x95, 0x0F), Processor::atmega328);
    EXPECT_EQ(processor(0, 0x1E, 0x95, 0x14), Processor::atmega328);
    EXPECT_EQ(processor(0, 0, 0, 0), Processor::atmega168);
    EXPECT_EQ(processor(6, 0x1E, 0x95, 0x06), Processor::atmega168);
    EXPECT_EQ(processor(8, 0, 0, 0), Processor::atmega328);
}

TEST(DecoderProfileTest, FirmwareNumbersComeFromTheBlock)
{
    const auto profile =
        profileOf(7, u"27", imageWith({{7, 6}, {497, 21}, {499, 29}, {500, 8}, {501, 22}}), {});
    EXPECT_EQ(profile.firmwareVersion, 6);
    EXPECT_EQ(profile.subLevel, 21);
    EXPECT_EQ(profile.firmwareDate.year, 2022);
    EXPECT_EQ(profile.firmwareDate.month, 8);
    EXPECT_EQ(profile.firmwareDate.day, 29);
    EXPECT_EQ(profile.firmwareLevel, 3);
}

} // namespace
} // namespace karvo
