// Writes to a scripted vehicle, step by step, as tests/data/workbench tells them.
#include "link/exchange.h"
#include "link/live_value.h"
#include "support/step_bench.h"
#include "workbench/change_value.h"
#include "workbench/full_read.h"
#include "workbench/line_use.h"
#include "workbench/offline_list.h"
#include "workbench/write_many.h"
#include "workbench/write_run.h"
#include "workbench/write_single.h"

namespace karvo::test
{

static std::string textOf(const std::vector<int>& numbers)
{
    std::string text;
    for (const int number : numbers)
        text += " " + std::to_string(number);
    return text;
}

class WriteSteps : public StepBench
{
public:
    WriteSteps()
    {
        addPreparations();
        addWrites();
        addChecksOfWhatPassed();
        addChecksOfState();
        line.onWait([this] {
            const auto step = journal.empty() ? std::string() : stepOf(journal.back());
            state.stopRequested = state.stopRequested || (!step.empty() && step == stopAfter_);
        });
    }

private:
    static constexpr std::size_t longest = 500; // of what is told in full

    void addPreparations()
    {
        prepare("read", [this](auto&) { readIntoList(bench, ReadStarter::other); });
        prepare("list", [this](auto& item) { EXPECT_TRUE(showOfflineList(bench, item)); });
        prepare("change", [this](auto& values) {
            for (const auto& [cv, value] : numbersOf(values))
                EXPECT_EQ(changeValue(bench, cv, value), ChangeEnd::changed);
        });
        prepare("put", [this](auto& values) {
            for (const auto& [cv, value] : numbersOf(values))
                state.set.table.setValue(cv, value);
        });
        prepare("put-block", [this](auto& lastCv) {
            for (int cv = 1; cv <= std::stoi(lastCv); ++cv)
                state.set.table.setValue(cv, blockValue(cv));
        });
        prepare("cells", [this](auto& cells) { setCells(state.set.table, cells); });
        prepare("wait", [this](auto& seconds) { line.pause(std::chrono::seconds(std::stoi(seconds))); });
        prepare("close", [this](auto&) { line.close(); });
        prepare("unplugged-next", [this](auto&) {
            line.refuseToOpenAgain({u"no such device", {}});
            line.close();
        });
        prepare("settings", [this](auto&) {
            Link link = bench.link();
            openWith(link, {115200});
        });
        prepare("live", [this](auto&) {
            Link link = bench.link();
            EXPECT_EQ(sendLiveValue(link, {1, 2}, ClosedPort::opened), LiveEnd::sent);
        });
        prepare("stop-after", [this](auto& step) { stopAfter_ = step; });
        prepare("no-backup", [this](auto& trouble) { keepTrouble = textFromUtf8(trouble); });
        prepare("no-files", [this](auto&) { files.content.clear(); });
        prepare("firmware", [this](auto& level) { state.receiver.firmwareLevel = std::stoi(level); });
        prepare("notices", [this](auto&) { state.link.noticeAfterWrite = true; });
        prepare("busy", [this](auto&) { state.lineBusy = true; });
        prepare("other-list", [this](auto&) { state.set.listPath = "other.kvr"; });
        prepare("forget", [this](auto&) { state.keptBlock.reset(); });
    }

    void addMany(const std::string& name, const std::function<WriteReport(const std::string&)>& write)
    {
        addWrite(name, [this, write](const std::string& words) {
            report_ = write(words);
            return told(report_);
        });
    }
    void addWrite(const std::string& name, const Steps::mapped_type& write)
    {
        steps[name] = [this, write](const std::string& words) {
            const bool wasBusy = state.lineBusy;
            view.writeProgress.clear();
            const auto end = write(words);
            EXPECT_EQ(state.lineBusy, wasBusy);
            EXPECT_FALSE(state.link.manyUnderWay);
            auto shown = passed();
            if (shown.size() > longest)
                shown = "...";
            return shown + (shown.empty() ? "> " : " > ") + end;
        };
    }
    std::string endOf(std::optional<WriteEnd> end) const
    {
        return end ? utf8FromText(outcomeText({48, 0, WriteSkip::none, end}, state.texts)) : "nothing";
    }
    void addWrites()
    {
        addWrite("single", [this](auto& cv) {
            state.set.currentNumber = std::stoi(cv);
            return endOf(writeSingle(bench, keep));
        });
        addWrite("reset", [this](auto&) { return endOf(resetDecoder(bench, keep)); });
        addMany("reset-alone", [this](auto&) { return writeReset(bench, 1, keep); });
        addMany("changed", [this](auto&) { return writeChanged(bench, keep); });
        addMany("forced",
                [this](auto&) { return writeChanged(bench, keep, {.beyond = BeyondLimits::planned}); });
        addMany("all", [this](auto&) { return writeAll(bench, keep); });
        addMany("chosen", [this](auto& cvs) {
            std::vector<int> chosen;
            for (const auto& [cv, value] : numbersOf(cvs))
                chosen.push_back(cv);
            return writeChosen(bench, chosen, keep);
        });
        addMany("values", [this](auto& values) { return writeValues(bench, planOf(values), keep); });
        addMany("run", [this](auto& values) {
            const LineUse use(bench);
            WriteGuard guard(bench, keep);
            return runPlan(bench, planOf(values), guard, RunKind::many);
        });
        // The answer to the preview, and the CVs that lose their ticks; "own": all of this vehicle's own.
        addMany("preview", [this](auto& words) {
            return writeChanged(bench, keep,
                                {.confirm = [&](WritePreview& preview) { return answered(preview, words); }});
        });
    }
    // "17=1 18=2:outside 29=32/0": a value, why it is left out, and what the vehicle holds.
    WritePlan planOf(const std::string& text) const
    {
        WritePlan plan;
        for (const std::string& word : wordsOf(text)) {
            PlannedWrite& write = plan.emplace_back();
            int held = 0;
            if (std::sscanf(word.c_str(), "%d=%d/%d", &write.cv, &write.value, &held) == 3)
                write.held = held;
            const auto skip = textFromUtf8(word.substr(std::min(word.find(':'), word.size() - 1) + 1));
            while (!skip.empty() && outcomeText({0, 0, write.skip}, state.texts) != skip)
                write.skip = static_cast<WriteSkip>(static_cast<int>(write.skip) + 1);
        }
        return plan;
    }
    PreviewAnswer answered(WritePreview& preview, const std::string& words)
    {
        shown_ = preview;
        EXPECT_EQ(passed(), "% % ER") << "nothing is kept before";
        for (const std::string& word : wordsOf(words)) {
            const auto isMeant = [&](const PreviewRow& row) { return std::to_string(row.cv) == word; };
            const auto row = std::find_if(preview.rows.begin(), preview.rows.end(), isMeant);
            if (row != preview.rows.end())
                tick(preview, static_cast<std::size_t>(row - preview.rows.begin()), false);
            else if (word == "own")
                tickVehiclesOwn(preview, false);
        }
        if (words.starts_with("cancel"))
            return PreviewAnswer::cancel;
        return words.starts_with("no-more") ? PreviewAnswer::writeAndAskNoMore : PreviewAnswer::write;
    }

    // Of what the last write has told.
    void addChecksOfWhatPassed()
    {
        steps["journal"] = [this](auto&) { return joined(last); };
        steps["tail"] = [this](auto&) { return joined({last.end() - 3, last.end()}); };
        steps["last"] = [this](auto& kind) {
            const auto isOfKind = [&](auto& entry) { return entry.starts_with(kind); };
            const auto found = std::find_if(last.rbegin(), last.rend(), isOfKind);
            return found == last.rend() ? "none" : found->substr(std::min(kind.size() + 1, found->size()));
        };
        steps["times"] = [this](auto& entry) {
            return std::to_string(std::count(last.begin(), last.end(), entry));
        };
        steps["kind"] = [this](auto&) {
            const std::map<QuestionKind, std::string> kinds = {{QuestionKind::backup, "backup"},
                                                               {QuestionKind::vehicle, "vehicle"},
                                                               {QuestionKind::limits, "limits"}};
            return kinds.at(prompts.lastKind);
        };
        steps["progress"] = [this](auto&) {
            std::string text;
            for (const auto& [cv, remaining] : view.writeProgress)
                text += " " + std::to_string(cv) + ":" + std::to_string(remaining);
            return text;
        };
        steps["milliseconds"] = [this](auto&) {
            return std::to_string((line.now() - std::exchange(since_, line.now())).count() / 1000);
        };
        // What the preview has shown since this was asked last.
        steps["shown"] = [this](auto&) {
            auto text = std::to_string(shown_.countOfWritten()) + (shown_.otherVehicle ? " of another" : "");
            for (const PreviewRow& row : std::exchange(shown_, {}).rows)
                text += " " + std::to_string(row.cv) + "(" + utf8FromText(row.name) +
                        ")=" + std::to_string(row.value) + "/" + utf8FromText(heldText(row.held)) +
                        (row.skip == WriteSkip::none ? "" : "-");
            return text;
        };
        steps["report"] = [this](auto&) { return utf8FromText(reportText(report_, state.texts)); };
        steps["line"] = [this](auto&) {
            return utf8FromText(outcomeLine(report_.outcomes.front(), state.texts));
        };
        steps["notice"] = [this](auto&) { return utf8FromText(report_.addressNotice); };
        steps["rest"] = [this](auto&) { return textOf(report_.rest()); };
    }
    // Of what the program holds now.
    void addChecksOfState()
    {
        steps["marked"] = [this](auto&) {
            std::vector<int> cvs;
            for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
                const auto place = positionOf(state.set.list, cv);
                if (place && state.set.list[*place].changed)
                    cvs.push_back(cv);
            }
            return textOf(cvs);
        };
        // How many sets, and of the last a value, its description and the vehicle's type code.
        steps["kept"] = [this](auto& cv) {
            const CvSet& set = kept.back();
            EXPECT_FALSE(set.isOffline());
            return std::to_string(kept.size()) + ": " + std::to_string(*set.table.value(std::stoi(cv))) +
                   " " + set.descriptionPath.filename().string() + " " +
                   std::to_string(numberOf(set.profile.typeCode));
        };
        steps["value"] = [this](auto& cv) { return std::to_string(*state.set.table.value(std::stoi(cv))); };
        steps["held"] = [this](auto& cv) { return std::to_string(state.image[std::stoul(cv)]); };
        steps["level"] = [this](auto&) { return std::to_string(state.receiver.firmwareLevel); };
    }

    WriteReport report_;
    WritePreview shown_;
    std::string stopAfter_;
    std::chrono::microseconds since_{0};
};

class WriteStepsTest : public testing::TestWithParam<const char*>
{
};

TEST_P(WriteStepsTest, EachStepShowsWhatItShould)
{
    carryOut<WriteSteps>(std::string("workbench/") + GetParam() + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Files, WriteStepsTest,
                         testing::Values("write_many", "write_guard", "write_preview", "write_run",
                                         "write_single"),
                         [](const auto& file) { return std::string(file.param); });

} // namespace karvo::test
