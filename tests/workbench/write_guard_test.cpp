// What stands before the first byte of a write: who is on the line, what he holds, and what is asked.
#include "cvdata/list_header.h"
#include "link/exchange.h"
#include "link/live_value.h"
#include "support/write_bench.h"
#include "workbench/change_value.h"
#include "workbench/offline_list.h"
#include "workbench/vehicle_match.h"
#include "workbench/write_many.h"
#include "workbench/write_single.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::blockOf;
using test::blockWith;

const Bytes kv05 = {'1', '5'};
const Bytes newerKv05 = {'2', '5'}; // another generation of the same model
const Bytes kv07 = {'2', '7'};

struct GuardBench : test::WriteBench {
    std::optional<WriteEnd> write48()
    {
        state.set.currentNumber = 48;
        return writeSingle(bench, keep);
    }
    // A vehicle that has been read and written once: its block is kept.
    void keepKv05()
    {
        readKv05();
        answerMeeting();
        answerWrite();
        EXPECT_EQ(write48(), WriteEnd::written);
        EXPECT_EQ(passed(), "% % ER kept % EWS 48=80");
    }
    void sendLive(const Bytes& identification)
    {
        for (const Bytes& reply : {identification, Bytes{6}, Bytes{6}})
            line.replyWith(reply);
        Link link = bench.link();
        EXPECT_EQ(sendLiveValue(link, {1, 2}, ClosedPort::opened), LiveEnd::sent);
    }
};

class WriteGuardTest : public testing::Test, protected GuardBench
{
};

TEST(WriteGuardTimeTest, TheReadIsLeftOutOnlyInAFaultlessRunOfTheLine)
{
    struct Case {
        const char* name;
        std::function<void(GuardBench&)> meanwhile;
        bool isRead;
    };
    const Case cases[] = {
        {"a minute less one", [](auto& on) { on.line.pause(59s); }, false},
        {"a minute and one", [](auto& on) { on.line.pause(61s); }, true},
        {"live values in between",
         [](auto& on) {
             on.line.pause(50s);
             on.sendLive(kv05);
             on.line.pause(50s);
         },
         false},
        {"live values after a long pause",
         [](auto& on) {
             on.line.pause(61s);
             on.sendLive(kv05);
         },
         true},
        {"live values of another decoder", [](auto& on) { on.sendLive(newerKv05); }, true},
        {"the port closed and opened anew",
         [](auto& on) {
             on.line.close();
             on.sendLive(kv05);
         },
         true},
        {"other settings",
         [](auto& on) {
             Link link = on.bench.link();
             openWith(link, {115200});
         },
         true},
        {"a refused announcement",
         [](auto& on) {
             on.line.replyWith(kv05);
             on.line.replyWith({21});
             on.write48();
         },
         true},
        {"silence", [](auto& on) { on.write48(); }, true},
        {"the same block read",
         [](auto& on) {
             on.readKv05(blockWith({{300, 1}}));
         },
         false},
        {"another block read",
         [](auto& on) {
             on.readKv05(blockWith({{3, 9}}));
         },
         true},
        {"a damaged block read",
         [](auto& on) {
             Bytes damaged = blockOf(512);
             damaged.back() ^= 1;
             on.readKv05(damaged);
         },
         true},
    };
    for (const auto& [name, meanwhile, isRead] : cases) {
        GuardBench on;
        on.keepKv05();
        meanwhile(on);
        on.journal.clear();
        if (isRead)
            on.answerMeeting();
        on.answerWrite();
        EXPECT_EQ(on.write48(), WriteEnd::written) << name;
        EXPECT_EQ(on.passed(), isRead ? "% % ER % EWS 48=80" : "% EWS 48=80") << name;
    }
}

TEST_F(WriteGuardTest, ABlockIsKeptWhenItDiffersFromTheKeptOneAndWhatWasWritten)
{
    struct Case {
        const char* name;
        Bytes block;
        bool isKept;
    };
    readKv05();
    changeValue(bench, 48, 200);
    answerMeeting();
    answerWrite();
    write48();
    passed();
    const Case cases[] = {
        {"what was written", blockWith({{48, 200}}), false},
        {"behind what can be written", blockWith({{48, 200}, {257, 1}}), false},
        {"the last that can be written", blockWith({{48, 200}, {256, 2}}), true},
        {"another vehicle", blockWith({{3, 9}, {48, 200}}), true},
        {"the first one again", blockWith({{48, 200}}), true},
        {"what was not written", blockOf(512), true},
    };
    for (const auto& [name, block, isKept] : cases) {
        line.pause(61s);
        answerMeeting(block);
        answerWrite();
        write48();
        EXPECT_EQ(passed(), isKept ? "% % ER kept % EWS 48=200" : "% % ER % EWS 48=200") << name;
    }
    EXPECT_EQ(kept[2].table.value(3), 9);
}

TEST_F(WriteGuardTest, AnExchangedDecoderIsMetAnewAndKeptUnderItsOwnName)
{
    keepKv05();
    line.replyWith(newerKv05);
    answerMeeting(blockOf(512), newerKv05);
    prompts.answer(true);
    answerWrite({6}, newerKv05);
    EXPECT_EQ(write48(), WriteEnd::written);
    EXPECT_EQ(passed(), "% % % ER ? kept % EWS 48=80");
    EXPECT_EQ(kept[1].descriptionPath.filename(), "CV_Standart_November12_5.txt");

    keepKv05(); // exchanged twice: the second time ends it
    line.replyWith(newerKv05);
    answerMeeting(blockOf(512), newerKv05);
    prompts.answer(true);
    line.replyWith(kv05);
    EXPECT_EQ(write48(), WriteEnd::otherDecoder);
    EXPECT_EQ(journal[journal.size() - 2], "message now 15, before 25");
    EXPECT_EQ(passed(), "% % % ER ? kept % !");

    keepKv05();
    line.replyWith(kv07);
    line.replyWith(kv07);
    EXPECT_EQ(writeValues(bench, {{48, 3}}, keep).end, WriteManyEnd::otherModel);
    EXPECT_EQ(journal[journal.size() - 3], "message list of KV05, vehicle KV07");
    EXPECT_EQ(passed(), "% % !");
    EXPECT_EQ(state.set.table.value(48), 3) << "what the editor has made is not lost";
}

TEST_F(WriteGuardTest, WhoWasOnTheLineBeforeDecidesNothing)
{
    keepKv05();
    changeValue(bench, 48, 200);
    line.replyWith(kv07);
    EXPECT_EQ(writeChanged(bench, keep).end, WriteManyEnd::otherModel);
    EXPECT_EQ(passed(), "% !");
    answerMeeting(); // put back
    answerWrite();
    EXPECT_TRUE(writeChanged(bench, keep).isClean());
    EXPECT_EQ(passed(), "% % ER % EWS 48=200");

    addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
    showOfflineList(bench, "mnu_kv07");
    answerMeeting(blockOf(1024), kv07);
    answerWrite({6}, kv07);
    EXPECT_EQ(write48(), WriteEnd::written);
    EXPECT_EQ(passed(), "% % ER kept % EWS 48=1");
}

TEST_F(WriteGuardTest, WhereTheBlockCanNotBeHadThePersonDecides)
{
    Bytes damaged = blockOf(512);
    damaged.back() ^= 1;
    struct Case {
        std::vector<Bytes> replies; // to the presence check and the block read
        const char* passed;
    };
    const Case cases[] = {{{}, "% % ! ?"},
                          {{kv05}, "% % ER ! ?"},
                          {{kv05, Bytes(100, 1)}, "% % ER ! ?"},
                          {{kv05, damaged}, "% % ER ! ?"}};
    readKv05();
    for (const auto& [replies, before] : cases) {
        for (const bool yes : {false, true}) {
            line.replyWith(kv05);
            for (const Bytes& reply : replies)
                line.replyWith(reply);
            if (replies.empty() || replies.size() == 1)
                line.replyInPieces({}); // silence
            prompts.answer(yes);
            if (yes)
                answerWrite();
            EXPECT_EQ(write48().has_value(), yes);
            EXPECT_EQ(passed(), before + std::string(yes ? " % EWS 48=80" : ""));
            EXPECT_EQ(prompts.lastKind, QuestionKind::backup);
        }
    }
    // Where the block decides what is written, nothing is.
    line.replyWith(kv05);
    line.replyWith(kv05);
    line.replyWith(damaged);
    EXPECT_EQ(writeAll(bench, keep).end, WriteManyEnd::wrongCheckByte);
    EXPECT_EQ(passed(), "% % ER !");
    EXPECT_TRUE(kept.empty());
}

TEST_F(WriteGuardTest, ListAndVehicleOfDifferentBuildsAreAskedAboutOnce)
{
    const auto meetNewer = [&](const Bytes& block) {
        line.pause(61s);
        answerMeeting(block, newerKv05);
    };
    const auto writeNewer = [&] {
        answerWrite({6}, newerKv05);
        write48();
        return passed();
    };
    readKv05();
    meetNewer(blockOf(512));
    prompts.answer(false);
    EXPECT_EQ(writeValues(bench, {{48, 80}}, keep).end, WriteManyEnd::declined);
    EXPECT_EQ(journal[journal.size() - 3],
              "question m430\r\nbuild KV05 standard, Firmware 49 / KV05 newer, Firmware 49\r\nm433");
    EXPECT_EQ(prompts.lastKind, QuestionKind::vehicle);
    EXPECT_EQ(passed(), "% % ER ?");
    meetNewer(blockOf(512));
    prompts.answer(true);
    EXPECT_EQ(writeNewer(), "% % ER ? kept % EWS 48=80");
    EXPECT_EQ(writeNewer(), "% EWS 48=80");
    meetNewer(blockOf(512));
    EXPECT_EQ(writeNewer(), "% % ER % EWS 48=80");
    meetNewer(blockWith({{3, 9}})); // another block
    prompts.answer(true);
    EXPECT_EQ(writeNewer(), "% % ER ? kept % EWS 48=80");
    readKv05(blockWith({{3, 9}})); // another list
    meetNewer(blockWith({{3, 9}}));
    prompts.answer(true);
    EXPECT_EQ(writeNewer(), "% % ER ? % EWS 48=80");
}

TEST_F(WriteGuardTest, WhatIsGuardedIsAskedOnceAndNothingIsSentBeforeIt)
{
    readKv05();
    state.receiver.firmwareLevel = 2;
    EXPECT_EQ(writeChosen(bench, {99}, keep).outcomes[0].end, WriteEnd::guarded);
    EXPECT_EQ(passed(), "!");
    prompts.answer(false);
    EXPECT_EQ(writeChosen(bench, {59}, keep).outcomes[0].end, WriteEnd::refusedByUser);
    EXPECT_EQ(passed(), "?");
    prompts.answer(false);
    answerMeeting();
    answerWrite();
    writeChosen(bench, {48, 59, 99}, keep);
    EXPECT_EQ(passed(), "? ! % % ER kept % EWS 48=80");
    prompts.answer(true);
    answerWrite();
    writeChosen(bench, {59}, keep);
    EXPECT_EQ(passed(), "? % EWS 59=157 !");
}

TEST_F(WriteGuardTest, AfterAResetTheKeptBlockIsForgotten)
{
    struct Case {
        std::vector<Bytes> replies; // to the reset
        bool isForgotten;
    };
    const Case cases[] = {
        {{kv05, {6}, {6}}, true}, {{kv05, {6}, {21}}, true}, {{kv05, {6}}, true}, {{kv05, {21}}, false}};
    for (const auto& [replies, isForgotten] : cases) {
        keepKv05();
        kept.clear();
        for (const Bytes& reply : replies)
            line.replyWith(reply);
        prompts.answer(true);
        if (isForgotten)
            prompts.answer(false);
        resetDecoder(bench, keep);
        passed();
        answerMeeting();
        answerWrite();
        write48();
        EXPECT_EQ(passed(), isForgotten ? "% % ER kept % EWS 48=80" : "% % ER % EWS 48=80");
        state.keptBlock.reset();
    }
}

// What each side of the comparison is made of.
struct Side {
    const char* header; // of a list file; nullptr: it was read
    Generation generation;
    std::optional<Processor> processor;
};

CvSet listOf(const Side& side)
{
    CvSet set;
    set.list.push_back({});
    set.profile.generation = side.generation;
    set.profile.typeCode = 7;
    set.profile.model = Model::kv07;
    set.profile.processorIsRead = side.header == nullptr && side.processor;
    set.profile.processor = side.processor.value_or(Processor::atmega328);
    if (side.header == nullptr)
        return set;
    set.offlineItem = openedListItem;
    set.fileProcessor = side.processor;
    set.descriptionLines = {{}, textFromUtf8(side.header)};
    set.profile = modelOfHeader(set.descriptionLines[1])->profile;
    return set;
}

TEST(VehicleMatchTest, WhatOneSideDoesNotKnowIsNoDifference)
{
    constexpr auto small = Processor::atmega168;
    constexpr auto large = Processor::atmega328;
    const auto laneControl = Generation::laneControl;
    const auto standard = Generation::standard;
    struct Case {
        Side list;
        int typeCode;
        Generation generation; // of the vehicle
        std::optional<Processor> processor;
        bool isAsked;
    };
    const Case cases[] = {
        {{nullptr, laneControl, large}, 7, laneControl, large, false},
        {{nullptr, laneControl, large}, 7, standard, large, true},
        {{nullptr, Generation::f4, large}, 7, Generation::f5, large, true},
        {{nullptr, standard, small}, 7, standard, large, true},
        {{nullptr, standard, small}, 7, standard, std::nullopt, false},
        {{nullptr, standard, std::nullopt}, 7, standard, small, false},
        {{"Standard KV07 LC*7", standard, large}, 7, standard, large, true},
        {{"Standard KV07 LC*7", standard, large}, 7, laneControl, large, false},
        {{"Standard KV07 F9*9", standard, large}, 7, Generation::f5, large, false},
        {{"Standard KV07*5", standard, std::nullopt}, 7, standard, small, false},
        {{"Standard KV07*5", standard, small}, 7, standard, large, true},
        {{"Standard KV04 172*3", standard, small}, 0, Generation::until2008Last, small, false},
        {{"Standard KV04 172*3", standard, small}, 0, Generation::until2008First, small, true},
    };
    for (const Case& one : cases) {
        CvSet set = listOf(one.list);
        DecoderProfile vehicle;
        vehicle.typeCode = one.typeCode;
        vehicle.model = modelOfTypeCode(one.typeCode);
        vehicle.generation = one.generation;
        vehicle.processor = one.processor.value_or(large);
        vehicle.processorIsRead = one.processor.has_value();
        const auto at = &one - cases;
        EXPECT_EQ(otherBuildQuestion(set, vehicle, {}).has_value(), one.isAsked) << at;
        set.acceptedVehicle = vehicle;
        EXPECT_FALSE(otherBuildQuestion(set, vehicle, {})) << at;
        set.acceptedVehicle.reset();
        set.offlineItem = "mnu_kv07";
        set.fileProcessor.reset();
        EXPECT_FALSE(otherBuildQuestion(set, vehicle, {})) << at << " without a decoder";
    }
}

} // namespace
} // namespace karvo
