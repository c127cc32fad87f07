// The set on the bench, step by step as tests/data/workbench tells: read from a decoder or shown without one,
// opened and saved, described in another language, and kept for the next start.
#include "cvdata/changes.h"
#include "support/step_bench.h"
#include "workbench/change_value.h"
#include "workbench/decoder_info.h"
#include "workbench/expert_mode.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"
#include "workbench/put_on_bench.h"
#include "workbench/recovery.h"

namespace karvo::test
{

class SetSteps : public StepBench
{
public:
    SetSteps()
    {
        for (const auto& [kind, number, words] : casesOf<3>("workbench/set_texts.txt"))
            (kind == "message" ? setText : setCaption)(state.texts, std::stoi(number), textFromUtf8(words));
        addFile("CV_exp_kv07.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n97;;eins;\r\n");
        addFile("CV_Standart172_v1_6.txt", smallDescription("Standard KV06", "Wort "));
        addFile("CV_Standart172.txt", smallDescription("Standard KV04", "Wort "));
        state.userFolders = {{"lists", {}}, {"fs", {}}, {"abs", {}}, {"fkt", {}}};
        addPreparations();
        addActs();
        addChecks();
    }

private:
    using Words = const std::string&;

    static std::pair<std::string, std::string> split(Words words, char at = ' ')
    {
        const auto end = std::min(words.find(at), words.size());
        return {words.substr(0, end), words.substr(std::min(end + 1, words.size()))};
    }
    static LanguageCode languageOf(Words name)
    {
        return name == "german"    ? LanguageCode::german
               : name == "english" ? LanguageCode::english
                                   : LanguageCode::french;
    }
    void addPreparations()
    {
        prepare("file", [this](Words words) {
            const auto [name, content] = split(words);
            files.content[name] = bytesOf(content);
        });
        prepare("fill", [this](Words words) { // "a.kvr 600 x" adds 600 of them
            const auto [name, rest] = split(words);
            const auto [times, byte] = split(rest);
            files.content[name].resize(files.content[name].size() + std::stoul(times), byte.at(0));
        });
        prepare("words", [this](Words words) { // "a.txt header;Wort ;3": a description of three lines
            const auto [name, rest] = split(words);
            const auto [header, word] = split(rest, ';');
            const auto [begin, rows] = split(word, ';');
            addFile(name, smallDescription(header, begin, rows.empty() ? 176 : std::stoi(rows)));
        });
        prepare("gone", [this](Words name) { EXPECT_EQ(files.content.erase(name), 1U); });
        prepare("disk-full",
                [this](auto&) { files.saveFailure = std::make_error_code(std::errc::no_space_on_device); });
        prepare("disk-free", [this](auto&) { files.saveFailure.clear(); });
        prepare("read-only", [this](Words folder) { files.readOnly.insert(folder); });
        prepare("lists-folder", [this](Words folder) { state.userFolders.cvLists.own = folder; });
        prepare("recovery-file", [this](Words name) { state.recovery.file = name; });
        prepare("language", [this](Words name) { state.language = languageOf(name); });
        prepare("expert", [this](Words on) { state.expert = on == "1"; });
        prepare("busy", [this](Words on) { state.lineBusy = on == "1"; });
        prepare("current", [this](Words cv) { state.set.currentNumber = std::stoi(cv); });
        prepare("not-asked", [this](auto&) { state.askNoMore.emplace(); });
        prepare("identified", [this](auto&) { state.link.identified = true; });
        prepare("offline-item", [this](Words item) { state.set.offlineItem = item; });
        prepare("no-path", [this](auto&) { state.set.listPath.clear(); });
        prepare("xt-module", [this](auto&) { state.set.profile.model = Model::xtModule; });
        prepare("first-generation", [this](auto&) { state.set.profile.generation = Generation::v1; });
        prepare("variant", [this](Words n) { state.automaticVariant = std::stoi(n); });
        prepare("change", [this](Words values) {
            for (const auto& [cv, value] : numbersOf(values))
                EXPECT_EQ(changeValue(bench, cv, value), ChangeEnd::changed);
        });
        prepare("written", [this](Words values) {
            for (const auto& [cv, value] : numbersOf(values)) {
                state.set.table.setValue(cv, value);
                markWritten(state.set, cv);
            }
        });
        prepare("next-start", [this](auto&) { state.set = CvSet(); });
    }

    // Shows what the act says of itself, and what the person was shown and asked.
    void act(const std::string& name, const Steps::mapped_type& doIt)
    {
        steps[name] = [this, doIt](Words words) {
            const bool wasBusy = state.lineBusy;
            journal.clear();
            auto shown = doIt(words);
            EXPECT_EQ(state.lineBusy, wasBusy);
            last = std::exchange(journal, {});
            for (const std::string& entry : last) {
                for (const char* const kind :
                     {"message", "question", "choice", "save", "open *", "list", "end"})
                    shown += entry.starts_with(kind) ? (shown.empty() ? "" : ", ") + entry : "";
            }
            return shown;
        };
    }
    void attempt(const std::string& name, const std::function<bool(Words)>& doIt)
    {
        act(name, [doIt](Words words) -> std::string { return doIt(words) ? "done" : "not done"; });
    }
    void addActs()
    {
        act("read", [this](auto&) -> std::string {
            const auto end = readIntoList(bench, ReadStarter::other);
            return !end                       ? "not read"
                   : *end == ReadEnd::read    ? "read"
                   : *end == ReadEnd::noReply ? "no reply"
                                              : "other end";
        });
        attempt("open", [this](Words path) { return openList(bench, path); });
        attempt("open-chosen", [this](auto&) { return openChosenList(bench, u"open"); });
        attempt("save", [this](auto&) { return saveList(bench, u"save"); });
        attempt("save-as", [this](Words path) { return saveListAs(bench, path); });
        attempt("save-anew", [this](auto&) { return saveListUnderNewName(bench, u"save as"); });
        attempt("replace", [this](auto&) { return mayReplaceSet(bench); });
        attempt("list", [this](Words item) { return showOfflineList(bench, item); });
        attempt("list-chosen", [this](Words item) { return showChosenOfflineList(bench, item); });
        attempt("standard", [this](auto&) { return showStandardList(bench); });
        attempt("confirm", [this](auto&) { return confirmOfflineList(bench); });
        attempt("take-back", [this](Words cv) { return takeBackValue(bench, std::stoi(cv)); });
        attempt("recover", [this](auto&) { return offerRecovery(bench); });
        attempt("use-language", [this](Words name) { return useLanguage(bench, languageOf(name)); });
        const auto silent = [this](const std::string& name, const std::function<void()>& doIt) {
            act(name, [doIt](auto&) { return doIt(), std::string(); });
        };
        silent("clear", [this] { clearDisplay(bench); });
        silent("describe", [this] { describeAnew(bench); });
        silent("no-expert", [this] { setExpertMode(bench, false); });
        silent("store-spanish", [this] { storeLanguage(settings, LanguageCode::spanish); });
        silent("drop-recovery", [this] { dropRecovery(state.recovery, files); });
        silent("change-told", [this] { changeValue(bench, 1, *state.set.table.value(1) + 1); });
        act("backup", [this](auto&) {
            const auto backup = keepBackup(files, state.texts, FixedClock(), state.userFolders, state.set);
            return backup.trouble ? "trouble: " + utf8FromText(*backup.trouble)
                                  : backup.file.generic_string();
        });
    }

    void addChecks()
    {
        steps["journal"] = [this](auto&) { return joined(last); };
        // What was loaded; its file; its description; its model, and how many lines it has.
        steps["set"] = [this](auto&) {
            const CvSet& set = state.set;
            auto text = utf8FromText(set.loadedData) + "; " + set.listPath.generic_string() + "; " +
                        set.descriptionPath.filename().string() + "; " + utf8FromText(set.modelCode) + "; " +
                        std::to_string(set.list.size());
            const std::pair<bool, const char*> is[] = {{set.isEmpty(), " empty"},
                                                       {set.isFromFile(), " from a file"},
                                                       {set.isOffline(), " offline"},
                                                       {set.unsavedChanges, " unsaved"},
                                                       {state.askNoMore.has_value(), " not asked"},
                                                       {state.link.identified, " identified"}};
            for (const auto& [yes, word] : is)
                text += yes ? word : "";
            return text + (set.rawReply.empty() ? "" : " reply of " + std::to_string(set.rawReply.size())) +
                   (set.currentNumber == 0 ? "" : " at CV" + std::to_string(set.currentNumber));
        };
        // Version and level of the firmware, the expert file, and the last line.
        steps["decoder"] = [this](auto&) {
            const DecoderProfile& profile = state.set.profile;
            return std::to_string(profile.firmwareVersion) + " " + std::to_string(profile.firmwareLevel) +
                   " " + state.set.expertPath.filename().string() + " " +
                   utf8FromText(state.set.list.back().text);
        };
        steps["processor"] = [this](auto&) {
            return std::string(state.set.fileProcessor ? "told " : "assumed ") +
                   (state.set.profile.processor == Processor::atmega328 ? "large" : "small");
        };
        steps["lines"] = [this](Words places) {
            std::string text;
            for (const auto& [place, none] : numbersOf(places)) {
                const ListLine& one = state.set.list.at(static_cast<std::size_t>(place));
                text += std::to_string(one.cv) + " " + utf8FromText(one.text) + ";";
            }
            return text;
        };
        // Value, limits, factory value and text.
        steps["row"] = [this](Words cv) {
            std::string text;
            for (const Column column :
                 {Column::value, Column::lowerLimit, Column::upperLimit, Column::factoryValue, Column::text})
                text += utf8FromText(state.set.table.at(std::stoi(cv), column)) + ";";
            return text;
        };
        steps["place"] = [this](Words cv) {
            const auto place = positionOf(state.set.list, std::stoi(cv));
            return place ? std::to_string(*place) : "none";
        };
        steps["knowledge"] = [this](Words cvs) {
            std::string text;
            for (const auto& [cv, none] : numbersOf(cvs))
                text += utf8FromText(state.set.expert.at(cv).name) + ";";
            return state.set.expert.empty() ? "none" : text;
        };
        steps["info"] = [this](auto&) { return utf8FromText(decoderInfoText(state)); };
        steps["setting"] = [this](Words key) { return utf8FromText(settings.values["Parameter/" + key]); };
        steps["variant-is"] = [this](auto&) { return std::to_string(state.automaticVariant); };
        steps["content"] = [this](Words name) { // or what of it is enough
            return std::string(files.content[name].begin(), files.content[name].end()).substr(0, 200);
        };
        steps["files"] = [this](auto&) {
            std::vector<std::string> names;
            for (const auto& [path, bytes] : files.content) {
                if (path.parent_path() != state.programFolder)
                    names.push_back(path.generic_string());
            }
            return joined(names);
        };
        steps["folder"] = [this](Words name) { return files.folders.contains(name) ? "made" : "not made"; };
        // The changed CVs, with the values before.
        steps["changed"] = [this](auto&) {
            std::string text;
            for (const int cv : changedCvs(state.set))
                text += std::to_string(cv) + "=" +
                        utf8FromText((*state.set.baseline)[static_cast<std::size_t>(cv)]) + ";";
            return text;
        };
        steps["box"] = [this](auto&) {
            return utf8FromText(withUnsavedWork(state, u"end")) +
                   (bench.link().unsavedWorkKept ? ", work is kept" : "");
        };
    }
};

class SetStepsTest : public testing::TestWithParam<const char*>
{
};

TEST_P(SetStepsTest, EachStepShowsWhatItShould)
{
    carryOut<SetSteps>(std::string("workbench/") + GetParam() + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Files, SetStepsTest, testing::Values("set_lists", "set_files", "set_recovery"),
                         [](const auto& file) { return std::string(file.param); });

} // namespace karvo::test
