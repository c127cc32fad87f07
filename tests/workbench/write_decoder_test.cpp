// Writing to simulated decoders, with the real texts and descriptions of the program folder.
#include "language/language_loader.h"
#include "support/link_bench.h"
#include "support/memory_files.h"
#include "support/simulated_line.h"
#include "workbench/change_value.h"
#include "workbench/full_read.h"
#include "workbench/write_many.h"

namespace karvo::test
{

struct DecoderOnBench {
    explicit DecoderOnBench(const std::string& decoder)
        : line(sim::Simulator(*sim::decoderByName(decoder), sim::Pace::line, sim::Fault::none))
    {
        state.programFolder = KARVO_PROGRAM_FOLDER;
        EXPECT_FALSE(loadLanguage(state.texts, LanguageCode::german, state.programFolder, files).missing);
        read();
    }

    void read() { EXPECT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::read); }
    WriteReport write() { return writeChanged(bench, keep); }

    Journal journal;
    ScriptedPrompts prompts{journal};
    RecordingView view{journal};
    FolderFiles files;
    MemorySettings settings;
    ProgramState state;
    SimulatedLine line;
    Workbench bench{state, line, line, prompts, view, files, settings};
    int keptSets = 0;
    KeepBackup keep = [this](const CvSet&) {
        ++keptSets;
        return KeptBackup{"backup.kvr"};
    };
};

TEST(WriteDecoderTest, WhatWasChangedIsInTheDecoderAndNothingElse)
{
    DecoderOnBench on("kv07");
    CvImage expected = on.state.image;
    for (const auto& [cv, value] : {std::pair{1, 17}, {48, 5}, {29, 32}, {168, 44}, {161, 3}}) {
        ASSERT_EQ(changeValue(on.bench, cv, value), ChangeEnd::changed) << cv;
        expected[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(value);
    }
    const auto report = on.write();
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(report.outcomes.size(), 9u); // four, and five of the series
    on.read();
    for (std::size_t cv = 1; cv <= 256; ++cv)
        EXPECT_EQ(on.state.image[cv], expected[cv]) << cv;
    EXPECT_EQ(on.keptSets, 1);
    EXPECT_EQ(on.write().end, WriteManyEnd::nothingToWrite);
}

TEST(WriteDecoderTest, EveryDecoderTakesAllOfItsOwnList)
{
    for (const auto& name : sim::decoderNames()) {
        DecoderOnBench on(name);
        const auto report = writeAll(on.bench, on.keep);
        if (name == "receiver-readonly") {
            EXPECT_EQ(report.end, WriteManyEnd::unknownDecoder);
            continue;
        }
        EXPECT_EQ(report.end, WriteManyEnd::finished) << name;
        for (const WriteOutcome& outcome : report.outcomes) {
            // A value of the factory that its own description refuses would be a fault of the description.
            EXPECT_NE(outcome.skip, WriteSkip::outsideLimits) << name << " CV" << outcome.cv;
            EXPECT_EQ(outcome.end.has_value(), outcome.skip == WriteSkip::none)
                << name << " CV" << outcome.cv;
        }
        EXPECT_GE(report.countOf(WriteEnd::written), 15u) << name;
    }
}

} // namespace karvo::test
