#include "workbench/vehicle_match.h"

#include "cvdata/list_header.h"

#include <gtest/gtest.h>

namespace karvo::test
{

using Known = std::optional<Processor>;
using enum Generation;

static DecoderProfile profileOf(int typeCode, Generation generation, Known processor)
{
    DecoderProfile made;
    made.typeCode = TypeCode{typeCode};
    made.model = modelOfTypeCode(made.typeCode);
    made.generation = generation;
    made.processorIsRead = processor.has_value();
    made.processor = processor.value_or(Processor::atmega328);
    return made;
}

// A list that was read, or a file with this header.
static CvSet listOf(const char* header, Generation generation, Known processor)
{
    CvSet set;
    set.list.push_back({});
    set.profile = profileOf(7, generation, processor);
    if (header != nullptr) {
        set.offlineItem = openedListItem;
        set.fileProcessor = processor;
        set.descriptionLines = {{}, textFromUtf8(header)};
        set.profile = modelOfHeader(set.descriptionLines[1])->profile;
    }
    return set;
}

TEST(VehicleMatchTest, WhatOneSideDoesNotKnowIsNoDifference)
{
    constexpr auto small = Processor::atmega168;
    constexpr auto large = Processor::atmega328;
    const struct {
        const char* header;
        Generation ofList;
        Known processorOfList;
        int typeCode;
        Generation ofVehicle;
        Known processor;
        bool isAsked;
    } cases[] = {
        {nullptr, laneControl, large, 7, laneControl, large, false},
        {nullptr, laneControl, large, 7, standard, large, true},
        {nullptr, standard, small, 7, standard, large, true},
        {nullptr, standard, small, 7, standard, {}, false},
        {nullptr, standard, {}, 7, standard, small, false},
        {"Standard KV07 LC*7", standard, large, 7, standard, large, true},
        {"Standard KV07 LC*7", standard, large, 7, laneControl, large, false},
        {"Standard KV07 F9*9", standard, large, 7, f5, large, false},
        {"Standard KV07*5", standard, {}, 7, standard, small, false},
        {"Standard KV07*5", standard, small, 7, standard, large, true},
        {"Standard KV04 172*3", standard, small, 0, until2008Last, small, false},
        {"Standard KV04 172*3", standard, small, 0, until2008First, small, true},
    };
    for (const auto& one : cases) {
        const auto at = &one - cases;
        CvSet set = listOf(one.header, one.ofList, one.processorOfList);
        const auto vehicle = profileOf(one.typeCode, one.ofVehicle, one.processor);
        const auto isAsked = [&] { return otherBuildQuestion(set, vehicle, {}).has_value(); };
        EXPECT_EQ(isAsked(), one.isAsked) << at;
        set.acceptedVehicle = vehicle;
        EXPECT_FALSE(isAsked()) << at;
        set.acceptedVehicle->processor = vehicle.processor == large ? small : large;
        EXPECT_EQ(isAsked(), one.isAsked) << at;
        set.acceptedVehicle.reset();
        set.offlineItem = "mnu_kv07";
        set.fileProcessor.reset();
        EXPECT_FALSE(isAsked()) << at << " without a decoder";
    }
}

} // namespace karvo::test
