#include "cvdata/list_header.h"

#include <gtest/gtest.h>

namespace karvo
{

// The headers of all descriptions are read in list_file_test.cpp.
TEST(ListHeaderTest, AHeaderMayBeAddedTo)
{
    using enum Generation;
    // Type code, model, generation, firmware, whether it is a preset.
    using Named = std::tuple<int, Model, Generation, int, bool>;
    const std::pair<TextView, Named> cases[] = {
        {u"Standard KV04 180 V1*2", {0, Model::kv04, until2008Second, 2, false}},
        {u"Standard KV08 LC*255", {8, Model::kv08, laneControl, 255, false}},
        {u"Standard KV05-XT*4", {80, Model::xtModule, standard, 4, false}},
        {u"Standard KV04 180 Bus V1*0", {0, Model::kv04, until2008First, 0, true}},
        {u"Standard KV04 172 Feuerwehr V2", {0, Model::kv04, from2009, 0, true}},
        {u"Linie 7  KV07 F4 *4", {7, Model::kv07, f4, 4, false}},
        {u"Standard KV07 mein Lkw*300", {7, Model::kv07, standard, 0, false}}, // the model's first form
    };
    for (const auto& [header, expected] : cases) {
        const auto named = modelOfHeader(header);
        ASSERT_TRUE(named) << utf8FromText(header);
        const DecoderProfile& of = named->profile;
        EXPECT_EQ(Named(of.typeCode, of.model, of.generation, of.firmwareVersion, named->isPreset), expected)
            << utf8FromText(header);
        EXPECT_EQ(of.processor, usualProcessor(of.model));
    }
    for (const TextView header : {u"", u"CV-Nummer;CV-Wert;CV-Text", u"Standard KV09", u"Standard *KV07"})
        EXPECT_FALSE(modelOfHeader(header)) << utf8FromText(header);
}

TEST(ListHeaderTest, TheVersionIsAddedOnceOnly)
{
    EXPECT_EQ(headerWithVersion(u"Standard KV07", 5), u"Standard KV07*5");
    EXPECT_EQ(headerWithVersion(u"Standard KV07*5", 5), u"Standard KV07*5");
    EXPECT_EQ(headerWithVersion(u"Standard KV07*15", 5), u"Standard KV07*15*5");
    EXPECT_EQ(versionInHeader(u"Standard KV07*15*5"), 5);
    EXPECT_EQ(versionInHeader(u"Standard KV07*x"), std::nullopt);
}

} // namespace karvo
