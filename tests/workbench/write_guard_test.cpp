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

namespace karvo::test
{

using namespace std::chrono_literals;

// A vehicle that is a KV05 ("15"), or one of another generation ("25"), or a KV07 ("27").
struct GuardBench : WriteBench {
    // Writes CV48 while vehicle and person answer so; what has passed then.
    std::string write48(const std::string& answers)
    {
        script(answers);
        state.set.currentNumber = 48;
        end = writeSingle(bench, keep);
        return passed();
    }
    // A vehicle that has been read and written once: its block is kept.
    void keepKv05()
    {
        readKv05();
        EXPECT_EQ(write48("15 15 B 15 + +"), "% % ER kept % EWS 48=80");
    }
    void sendLive(const std::string& answers, std::chrono::seconds before = 0s,
                  std::chrono::seconds after = 0s)
    {
        line.pause(before);
        script(answers);
        Link link = bench.link();
        EXPECT_EQ(sendLiveValue(link, {1, 2}, ClosedPort::opened), LiveEnd::sent);
        line.pause(after);
    }
    void openWithOtherSettings()
    {
        Link link = bench.link();
        openWith(link, {115200});
    }
    std::optional<WriteEnd> end;
};

class WriteGuardTest : public testing::Test, protected GuardBench
{
};

TEST(WriteGuardTimeTest, TheReadIsLeftOutOnlyInAFaultlessRunOfTheLine)
{
    const struct {
        const char* name;
        std::function<void(GuardBench&)> meanwhile;
        bool isRead;
    } cases[] = {
        {"a minute less one", [](auto& on) { on.line.pause(59s); }, false},
        {"a minute and one", [](auto& on) { on.line.pause(61s); }, true},
        {"live values in between", [](auto& on) { on.sendLive("15 + +", 50s, 50s); }, false},
        {"live values after a long pause", [](auto& on) { on.sendLive("15 + +", 61s); }, true},
        {"live values of another decoder", [](auto& on) { on.sendLive("25 + +"); }, true},
        {"the port opened anew", [](auto& on) { on.line.close(), on.sendLive("15 + +"); }, true},
        {"other settings", [](auto& on) { on.openWithOtherSettings(); }, true},
        {"a refused announcement", [](auto& on) { on.write48("15 -"); }, true},
        {"silence", [](auto& on) { on.write48("."); }, true},
        {"the same block read", [](auto& on) { on.readKv05("B300=1"); }, false},
        {"another block read", [](auto& on) { on.readKv05("B3=9"); }, true},
        {"a damaged block read", [](auto& on) { on.readKv05("D"); }, true},
    };
    for (const auto& [name, meanwhile, isRead] : cases) {
        GuardBench on;
        on.keepKv05();
        meanwhile(on);
        on.journal.clear();
        EXPECT_EQ(on.write48(isRead ? "15 15 B 15 + +" : "15 + +"),
                  isRead ? "% % ER % EWS 48=80" : "% EWS 48=80")
            << name;
        EXPECT_EQ(on.end, WriteEnd::written) << name;
    }
}

TEST_F(WriteGuardTest, ABlockIsKeptWhenItDiffersFromTheKeptOneAndWhatWasWritten)
{
    readKv05();
    changeValue(bench, 48, 200);
    write48("15 15 B 15 + +");
    const struct {
        const char* name;
        const char* block;
        bool isKept;
    } cases[] = {
        {"what was written", "B48=200", false},
        {"behind what can be written", "B48=200,257=1", false},
        {"the last that can be written", "B48=200,256=2", true},
        {"another vehicle", "B3=9,48=200", true},
        {"the first one again", "B48=200", true},
        {"what was not written", "B", true},
    };
    for (const auto& [name, block, isKept] : cases) {
        line.pause(61s);
        EXPECT_EQ(write48(std::string("15 15 ") + block + " 15 + +"),
                  isKept ? "% % ER kept % EWS 48=200" : "% % ER % EWS 48=200")
            << name;
    }
    EXPECT_EQ(kept[2].table.value(3), 9);
}

TEST_F(WriteGuardTest, AnExchangedDecoderIsMetAnewAndKeptUnderItsOwnName)
{
    keepKv05();
    EXPECT_EQ(write48("25 25 25 B y 25 + +"), "% % % ER ? kept % EWS 48=80");
    EXPECT_EQ(end, WriteEnd::written);
    EXPECT_EQ(kept[1].descriptionPath.filename(), "CV_Standart_November12_5.txt");
    keepKv05(); // exchanged twice: the second time ends it
    EXPECT_EQ(write48("25 25 25 B y 15"), "% % % ER ? kept % !");
    EXPECT_EQ(end, WriteEnd::otherDecoder);
    EXPECT_EQ(lastMessage, "message now 15, before 25");

    keepKv05();
    script("27 27");
    EXPECT_EQ(writeValues(bench, {{48, 3}}, keep).end, WriteManyEnd::otherModel);
    EXPECT_EQ(passed(), "% % !");
    EXPECT_EQ(lastMessage, "message list of KV05, vehicle KV07");
    EXPECT_EQ(state.set.table.value(48), 3) << "what the editor has made is not lost";
}

TEST_F(WriteGuardTest, WhoWasOnTheLineBeforeDecidesNothing)
{
    keepKv05();
    changeValue(bench, 48, 200);
    script("27");
    EXPECT_EQ(writeChanged(bench, keep).end, WriteManyEnd::otherModel);
    EXPECT_EQ(passed(), "% !");
    script("15 15 B 15 + +"); // put back
    EXPECT_TRUE(writeChanged(bench, keep).isClean());
    EXPECT_EQ(passed(), "% % ER % EWS 48=200");
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    showOfflineList(bench, "mnu_kv07");
    script("27 27");
    line.replyWith(blockOf(1024));
    EXPECT_EQ(write48("27 + +"), "% % ER kept % EWS 48=1");
}

TEST_F(WriteGuardTest, WhereTheBlockCanNotBeHadThePersonDecides)
{
    const std::pair<std::string, std::string> cases[] = {{"15 .", "% % ! ?"},
                                                         {"15 15 .", "% % ER ! ?"},
                                                         {"15 15 15", "% % ER ! ?"}, // the block is cut short
                                                         {"15 15 D", "% % ER ! ?"}};
    readKv05();
    for (const auto& [answers, before] : cases) {
        EXPECT_EQ(write48(answers + " n"), before);
        EXPECT_EQ(end, std::nullopt);
        EXPECT_EQ(write48(answers + " y 15 + +"), before + " % EWS 48=80");
        EXPECT_EQ(prompts.lastKind, QuestionKind::backup);
    }
    // Where the block decides what is written, nothing is.
    script("15 15 D");
    EXPECT_EQ(writeAll(bench, keep).end, WriteManyEnd::wrongCheckByte);
    EXPECT_EQ(passed(), "% % ER !");
    EXPECT_TRUE(kept.empty());
    // What was kept before is of a vehicle that nobody has met since.
    keepKv05();
    line.pause(61s);
    EXPECT_EQ(write48("15 15 D y 15 + +"), "% % ER ! ? % EWS 48=80");
    EXPECT_EQ(write48("15 15 B 15 + +"), "% % ER kept % EWS 48=80");
}

TEST_F(WriteGuardTest, ListAndVehicleOfDifferentBuildsAreAskedAboutOnce)
{
    const auto later = [&](const std::string& answers) {
        line.pause(61s);
        return write48(answers);
    };
    readKv05();
    script("25 25 B n");
    EXPECT_EQ(writeValues(bench, {{48, 80}}, keep).end, WriteManyEnd::declined);
    EXPECT_EQ(journal[journal.size() - 3],
              "question m430\r\nbuild KV05 standard, Firmware 49 / KV05 newer, Firmware 49\r\nm433");
    EXPECT_EQ(prompts.lastKind, QuestionKind::vehicle);
    EXPECT_EQ(passed(), "% % ER ?");
    EXPECT_EQ(later("25 25 B y 25 + +"), "% % ER ? kept % EWS 48=80");
    EXPECT_EQ(write48("25 + +"), "% EWS 48=80");
    EXPECT_EQ(later("25 25 B 25 + +"), "% % ER % EWS 48=80");
    EXPECT_EQ(later("25 25 B3=9 y 25 + +"), "% % ER ? kept % EWS 48=80"); // another block
    readKv05("B3=9");                                                     // another list
    EXPECT_EQ(later("25 25 B3=9 y 25 + +"), "% % ER ? % EWS 48=80");
}

TEST_F(WriteGuardTest, WhatIsGuardedIsAskedOnceAndNothingIsSentBeforeIt)
{
    const auto writeThese = [&](const std::vector<int>& cvs, const std::string& answers) {
        script(answers);
        end = writeChosen(bench, cvs, keep).outcomes[0].end;
        return passed();
    };
    readKv05();
    state.receiver.firmwareLevel = 2;
    EXPECT_EQ(writeThese({99}, ""), "!");
    EXPECT_EQ(end, WriteEnd::guarded);
    EXPECT_EQ(writeThese({59}, "n"), "?");
    EXPECT_EQ(end, WriteEnd::refusedByUser);
    EXPECT_EQ(writeThese({48, 59, 99}, "n 15 15 B 15 + +"), "? ! % % ER kept % EWS 48=80");
    EXPECT_EQ(writeThese({59}, "y 15 + +"), "? % EWS 59=157 !");
}

TEST_F(WriteGuardTest, AfterAResetTheKeptBlockIsForgotten)
{
    const std::pair<const char*, bool> cases[] = {
        {"y 15 + + n", true}, {"y 15 + - n", true}, {"y 15 + n", true}, {"y 15 -", false}};
    for (const auto& [answers, isForgotten] : cases) {
        keepKv05();
        kept.clear();
        script(answers);
        resetDecoder(bench, keep);
        passed();
        EXPECT_EQ(write48("15 15 B 15 + +"), isForgotten ? "% % ER kept % EWS 48=80" : "% % ER % EWS 48=80");
        state.keptBlock.reset();
    }
}

TEST(VehicleMatchTest, WhatOneSideDoesNotKnowIsNoDifference)
{
    constexpr auto small = Processor::atmega168;
    constexpr auto large = Processor::atmega328;
    const auto laneControl = Generation::laneControl;
    const auto standard = Generation::standard;
    using Known = std::optional<Processor>;
    const struct {
        const char* header; // of a list file; nullptr: the list was read
        Generation ofList;
        Known processorOfList;
        int typeCode;
        Generation ofVehicle;
        Known processor;
        bool isAsked;
    } cases[] = {
        {nullptr, laneControl, large, 7, laneControl, large, false},
        {nullptr, laneControl, large, 7, standard, large, true},
        {nullptr, Generation::f4, large, 7, Generation::f5, large, true},
        {nullptr, standard, small, 7, standard, large, true},
        {nullptr, standard, small, 7, standard, {}, false},
        {nullptr, standard, {}, 7, standard, small, false},
        {"Standard KV07 LC*7", standard, large, 7, standard, large, true},
        {"Standard KV07 LC*7", standard, large, 7, laneControl, large, false},
        {"Standard KV07 F9*9", standard, large, 7, Generation::f5, large, false},
        {"Standard KV07*5", standard, {}, 7, standard, small, false},
        {"Standard KV07*5", standard, small, 7, standard, large, true},
        {"Standard KV04 172*3", standard, small, 0, Generation::until2008Last, small, false},
        {"Standard KV04 172*3", standard, small, 0, Generation::until2008First, small, true},
    };
    const auto profile = [=](int typeCode, Generation generation, Known processor) {
        DecoderProfile made;
        made.typeCode = typeCode;
        made.model = modelOfTypeCode(typeCode);
        made.generation = generation;
        made.processorIsRead = processor.has_value();
        made.processor = processor.value_or(large);
        return made;
    };
    for (const auto& one : cases) {
        CvSet set;
        set.list.push_back({});
        set.profile = profile(7, one.ofList, one.processorOfList);
        if (one.header != nullptr) {
            set.offlineItem = openedListItem;
            set.fileProcessor = one.processorOfList;
            set.descriptionLines = {{}, textFromUtf8(one.header)};
            set.profile = modelOfHeader(set.descriptionLines[1])->profile;
        }
        const auto vehicle = profile(one.typeCode, one.ofVehicle, one.processor);
        const auto at = &one - cases;
        EXPECT_EQ(otherBuildQuestion(set, vehicle, {}).has_value(), one.isAsked) << at;
        set.acceptedVehicle = vehicle;
        EXPECT_FALSE(otherBuildQuestion(set, vehicle, {})) << at;
        set.acceptedVehicle->processor = vehicle.processor == large ? small : large;
        EXPECT_EQ(otherBuildQuestion(set, vehicle, {}).has_value(), one.isAsked) << at;
        set.acceptedVehicle.reset();
        set.offlineItem = "mnu_kv07";
        set.fileProcessor.reset();
        EXPECT_FALSE(otherBuildQuestion(set, vehicle, {})) << at << " without a decoder";
    }
}

} // namespace karvo::test
