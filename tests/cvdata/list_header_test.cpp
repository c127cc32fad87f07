#include "cvdata/list_header.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

TEST(ListHeaderTest, EachHeaderNamesItsModel)
{
    struct Case {
        TextView header;
        int typeCode;
        Model model;
        Generation generation;
        int firmware;
        bool preset;
    };
    const Case cases[] = {
        {u"Standard KV04 180*1", 0, Model::kv04, Generation::until2008First, 1, false},
        {u"Standard KV04 180 V1*2", 0, Model::kv04, Generation::until2008Second, 2, false},
        {u"Standard KV04 172*3", 0, Model::kv04, Generation::from2009, 3, false},
        {u"Standard KV04 172 Mai10*4", 4, Model::kv04, Generation::undated, 4, false},
        {u"Standard KV04 Mai10*5", 4, Model::kv04, Generation::may2010, 5, false},
        {u"Standard KV05", 1, Model::kv05, Generation::standard, 0, false},
        {u"Standard KV05 172 Mai10", 5, Model::kv05, Generation::undated, 0, false},
        {u"Standard KV06 Mai10*9", 6, Model::kv06, Generation::may2010, 9, false},
        {u"Standard KV06 November12*9", 6, Model::kv06, Generation::november2012, 9, false},
        {u"Standard KV07*6", 7, Model::kv07, Generation::standard, 6, false},
        {u"Standard KV07 F5*5", 7, Model::kv07, Generation::f5, 5, false},
        {u"Standard KV08 LC*255", 8, Model::kv08, Generation::laneControl, 255, false},
        {u"Standard KV08 Tacho", 8, Model::kv08, Generation::tacho, 0, false},
        {u"Standard KV08 V1*2", 8, Model::kv08, Generation::v1, 2, false},
        {u"Standard AN07 V1*1", 57, Model::trailer, Generation::v1, 1, false},
        {u"Standard KV05-XT*4", 80, Model::xtModule, Generation::standard, 4, false},
        {u"Standard KV04 180 Bus V1*0", 0, Model::kv04, Generation::until2008First, 0, true},
        {u"Standard KV04 172 Feuerwehr V2", 0, Model::kv04, Generation::from2009, 0, true},
        {u"Standard KV08 Bus V1", 8, Model::kv08, Generation::standard, 0, true},
        {u"Linie 7  KV07 F4 *4", 7, Model::kv07, Generation::f4, 4, false},
        {u"Standard KV07 mein Lkw*300", 7, Model::kv07, Generation::standard, 0, false},
    };
    for (const Case& expected : cases) {
        const auto model = modelOfHeader(expected.header);
        ASSERT_TRUE(model) << utf8FromText(expected.header);
        EXPECT_EQ(model->profile.typeCode, expected.typeCode) << utf8FromText(expected.header);
        EXPECT_EQ(model->profile.model, expected.model) << utf8FromText(expected.header);
        EXPECT_EQ(model->profile.generation, expected.generation) << utf8FromText(expected.header);
        EXPECT_EQ(model->profile.firmwareVersion, expected.firmware) << utf8FromText(expected.header);
        EXPECT_EQ(model->isPreset, expected.preset) << utf8FromText(expected.header);
    }
    EXPECT_EQ(modelOfHeader(u"Standard KV06")->profile.processor, Processor::atmega168);
    EXPECT_EQ(modelOfHeader(u"Standard AN07")->profile.processor, Processor::atmega328);
}

TEST(ListHeaderTest, WhatNamesNoModelIsNone)
{
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

} // namespace
} // namespace karvo
