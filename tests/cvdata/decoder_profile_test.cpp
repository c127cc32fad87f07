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

TEST(DecoderProfileTest, ModelAndGenerationFollowFromIdentificationAndMemory)
{
    using enum Generation;
    const std::tuple<int, TextView, CvImage, Model, Generation> cases[] = {
        {0, u"04", imageWith({{7, 1}}), Model::kv04, until2008First},
        {0, u"04", imageWith({{7, 2}}), Model::kv04, until2008Second},
        {0, u"04", imageWith({{7, 3}}), Model::kv04, until2008Last},
        {0, u"14", imageWith({{7, 1}}), Model::kv04, from2009},
        {4, u"24", imageWith({{499, 3}, {500, 12}, {501, 12}}), Model::kv04, may2010},
        {5, u"25", imageWith({{499, 30}, {500, 10}, {501, 12}}), Model::kv05, may2010},
        {5, u"25", imageWith({{499, 1}, {500, 11}, {501, 12}}), Model::kv05, november2012},
        {6, u"26", imageWith({{499, 1}, {500, 1}, {501, 13}}), Model::kv06, november2012},
        {6, u"26", imageWith({{499, 1}, {500, 4}, {501, 10}}), Model::kv06, undated},
        {6, u"26", imageWith({{499, 1}, {500, 5}, {501, 10}}), Model::kv06, may2010},
        {7, u"27", imageWith({{7, 6}}), Model::kv07, standard},
        {7, u"27", imageWith({{7, 5}}), Model::kv07, f5},
        {7, u"27", imageWith({{7, 4}}), Model::kv07, f4},
        {8, u"28", imageWith({{7, 3}}), Model::kv08, f3},
        {8, u"28", imageWith({{7, 9}, {73, 3}}), Model::kv08, v1},
        {8, u"28", imageWith({{7, 9}, {73, 4}}), Model::kv08, standard},
        {7, u"27", imageWith({{7, 4}, {73, 0}, {498, 1}}), Model::kv07, laneControl},
        {7, u"27", imageWith({{7, 4}, {498, 2}}), Model::kv07, tacho},
        {57, u"A7", imageWith({{7, 1}}), Model::trailer, v1},
        {57, u"A7", imageWith({{7, 2}}), Model::trailer, standard},
    };
    for (const auto& [typeCode, identification, image, model, generation] : cases) {
        const auto profile = profileOf(typeCode, identification, image, {});
        EXPECT_EQ(profile.model, model) << utf8FromText(identification);
        EXPECT_EQ(profile.generation, generation) << utf8FromText(identification) << int(image[7]);
        EXPECT_EQ(profile.isOlderKv04(), identification == u"04");
    }
}

TEST(DecoderProfileTest, ProcessorAndFirmwareComeFromTheBlockOrElseTheModel)
{
    using Signature = std::array<int, 3>;
    const std::tuple<int, Signature, Processor> cases[] = {
        {7, {0x1E, 0x94, 0x06}, Processor::atmega168}, {0, {0x1E, 0x95, 0x0F}, Processor::atmega328},
        {0, {0x1E, 0x95, 0x14}, Processor::atmega328}, {0, {0, 0, 0}, Processor::atmega168},
        {6, {0x1E, 0x95, 0x06}, Processor::atmega168}, {8, {0, 0, 0}, Processor::atmega328}};
    for (const auto& [typeCode, signature, processor] : cases) {
        const auto image = imageWith({{509, signature[0]}, {510, signature[1]}, {511, signature[2]}});
        EXPECT_EQ(profileOf(typeCode, u"", image, {}).processor, processor) << typeCode << signature[2];
    }
    const auto profile =
        profileOf(7, u"27", imageWith({{7, 6}, {497, 21}, {499, 29}, {500, 8}, {501, 22}}), {});
    const auto& [year, month, day] = profile.firmwareDate;
    EXPECT_EQ(
        (std::array{profile.firmwareVersion, profile.subLevel, profile.firmwareLevel, year, month, day}),
        (std::array{6, 21, 3, 2022, 8, 29}));
}

} // namespace
} // namespace karvo
