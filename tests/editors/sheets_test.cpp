// Function sheets: their files, what they come to on each decoder, and what is done with their values.
#include "editors/describe_settings.h"
#include "editors/sheet_values.h"
#include "language/language_loader.h"
#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"
#include "support/simulated_line.h"
#include "workbench/full_read.h"
#include "workbench/line_use.h"

namespace karvo::test
{

TEST(SheetFileTest, AFaultIsToldWithItsLineAndWhatIsSoundIsASheet)
{
    LanguageTables texts;
    numberEveryText(texts);
    for (const auto& [lines, expected] : casesOf<2>("editors/sheet_files.txt")) {
        const auto parsed = parseSheet(bytesOf(lines));
        const auto* const fault = std::get_if<SheetFault>(&parsed);
        std::string told = "sheet";
        if (fault != nullptr) {
            setTexts(texts, {{560, u"{1} {2}"}}, {});
            told = utf8FromText(faultText(*fault, texts));
            if (!fault->word.empty())
                told += ": " + utf8FromText(fault->word);
        }
        EXPECT_EQ(told, expected) << lines;
    }
}

TEST(SheetStoreTest, OwnSheetsComeBehindTheProgramsAndAFaultyOneIsRefused)
{
    MemoryFiles files;
    const std::string sheet = "sheet;NAME;\ntext;;T;\nsection;\ncv;102;\n";
    for (const char* const name :
         {"own/FKT_a.txt", "program/fkt_b.TXT", "program/CV_c.txt", "own/FKT_d.txt.old"})
        files.content[name] = bytesOf(sheet);
    files.content["own/FKT_bad.txt"] = bytesOf("sheet;bad;\ntext;;T;\n");
    const auto store = loadSheets(files, "program", {"own"});
    std::string paths;
    for (const StoredSheet& one : store.sheets)
        paths += portable(one.path.string()) + (one.isOwn ? " own " : " ");
    EXPECT_EQ(paths, "program/fkt_b.TXT own/FKT_a.txt own ");
    ASSERT_EQ(store.refused.size(), 1u);
    EXPECT_EQ(portable(store.refused[0].path.string()), "own/FKT_bad.txt");
    EXPECT_EQ(store.sheetOf(DecoderProfile{}, 102)->item, "NAME");
    EXPECT_EQ(store.sheetOf("none"), nullptr);
}

struct ProgramFolder : FolderFiles {
    std::vector<FolderEntry> list(const std::filesystem::path& folder) override
    {
        std::vector<FolderEntry> entries;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            entries.push_back({entry.path().filename(), entry.is_directory()});
        return entries;
    }
};

// The program folder's sheets, over a decoder that was read from the simulator.
struct SheetBench {
    Journal journal;
    ScriptedPrompts prompts{journal};
    RecordingView view{journal};
    ProgramFolder files;
    MemorySettings settings;
    ProgramState state;
    SheetStore store;
    SheetView sheet;
    std::optional<SheetValues> values;
    Steps steps;

    SheetBench()
    {
        state.programFolder = KARVO_PROGRAM_FOLDER;
        state.language = LanguageCode::english;
        EXPECT_FALSE(loadLanguage(state.texts, state.language, state.programFolder, files).missing);
        store = loadSheets(files, state.programFolder, {});
        EXPECT_TRUE(store.refused.empty());
        steps = {{"read", [this](auto& decoder) { return read(decoder); }},
                 {"list", [this](auto& cells) { return setList(cells); }},
                 {"why", [this](auto& item) { return why(item); }},
                 {"open", [this](auto& item) { return open(item); }},
                 {"fill", [this](auto& place) { return fill(place); }},
                 {"set", [this](auto& change) { return set(change); }},
                 {"paste", [this](auto& text) { return paste(text); }},
                 {"factory", [this](auto&) { return (values->setFactoryValues(), changes()); }},
                 {"back", [this](auto&) { return (values->setBack(), changes()); }},
                 {"changes", [this](auto&) { return changes(); }},
                 {"plan", [this](auto&) { return plan(); }},
                 {"text", [this](auto&) { return utf8FromText(values->asText()); }},
                 {"marks", [this](auto&) { return marks(); }},
                 {"take", [this](auto&) { return take(); }},
                 {"told", [this](auto& group) { return told(group); }}};
    }
    void script(const std::string&) {}

    template <typename Act>
    auto onBench(const std::string& decoder, Act act)
    {
        SimulatedLine line(sim::Simulator(*sim::decoderByName(decoder), sim::Pace::line, sim::Fault::none));
        Workbench bench{state, line, line, prompts, view, files, settings};
        return act(bench);
    }
    std::string read(const std::string& decoder)
    {
        onBench(decoder, [](auto& bench) { return readIntoList(bench, ReadStarter::other); });
        std::string items;
        for (const StoredSheet& one : store.sheets) {
            if (!whyNotOpen(one.sheet, state.set, state.texts))
                items += (items.empty() ? "" : " ") + one.sheet.item;
        }
        return items;
    }
    // The values of the list, as typed.
    std::string setList(const std::string& changes)
    {
        for (const auto& [cv, value] : numbersOf(changes))
            state.set.table.setValue(cv, value);
        return {};
    }
    std::string why(const std::string& item)
    {
        return utf8FromText(whyNotOpen(*store.sheetOf(item), state.set, state.texts).value_or(Text()));
    }
    // "switches 22:1,2,4": the fields, sections apart, and what is left out.
    std::string open(const std::string& item)
    {
        sheet = viewOf(*store.sheetOf(item), state.set, state.texts, state.language);
        values.emplace(sheet, state.set);
        std::string fields;
        for (const SheetViewSection& section : sheet.sections) {
            fields += fields.empty() ? "" : "/ ";
            for (const SheetViewField& field : section.fields)
                fields += told(field) + " ";
        }
        return fields + utf8FromText(sheet.leftOut);
    }
    static std::string told(const SheetViewField& field)
    {
        constexpr const char* kinds[] = {"bits",    "choice", "number", "time", "long",
                                         "address", "shown",  "volts",  "set"};
        std::string text = kinds[static_cast<std::size_t>(field.kind)] + std::string(":");
        for (const int cv : field.cvs)
            text += (text.back() == ':' ? "" : "_") + std::to_string(cv);
        int bits = 0;
        for (const SheetSwitch& one : field.switches)
            bits += one.weight;
        if (field.setTo)
            text += "=" + std::to_string(*field.setTo);
        return text + (bits == 0 ? "" : ":" + std::to_string(bits));
    }
    std::string fill(const std::string& place)
    {
        if (const auto* const readyMade = sheet.readyMadeOf(place))
            values->fill(*readyMade, {});
        else
            values->fill(sheet.variants.at(std::stoul(place) - 1), sheet.variants);
        const auto filled = values->filledWith(sheet.variants);
        return changes() + (filled ? " variant " + std::to_string(*filled + 1) : "");
    }
    std::string set(const std::string& change)
    {
        const auto [cv, value] = numbersOf(change).front();
        for (const SheetViewSection& section : sheet.sections) {
            for (const SheetViewField& field : section.fields) {
                if (field.kind == SheetViewField::Kind::longNumber && field.cvs.front() == cv)
                    return values->setValue(field, value) ? changes() : "refused";
            }
        }
        return values->setValue(cv, value) ? changes() : "refused";
    }
    std::string paste(const std::string& text)
    {
        const auto result = values->paste(textFromUtf8(text));
        const auto told = utf8FromText(pasteText(result, state.texts));
        return changes() + (told.empty() ? "" : " " + told);
    }
    std::string changes() const { return utf8FromText(textOfChanges(values->changes())); }
    std::string plan() const
    {
        std::string text;
        for (const PlannedWrite& write : values->plan(state.set))
            text += (text.empty() ? "" : " ") + std::to_string(write.cv) + "=" + std::to_string(write.value);
        return text;
    }
    // Which fields differ from the vehicle, and which hold no factory value.
    std::string marks() const
    {
        std::string differs = values->isTouched() ? "touched" : "untouched";
        std::string others;
        for (const SheetViewSection& section : sheet.sections) {
            for (const SheetViewField& field : section.fields) {
                if (field.isEdited() && values->differs(field))
                    differs += " " + objectNameOf(field);
                if (field.isEdited() && !values->isFactory(field))
                    others += " " + objectNameOf(field);
            }
        }
        return differs + " /" + others;
    }
    std::string take()
    {
        const auto count =
            onBench("kv07", [this](auto& bench) { return takeIntoList(bench, values->changes()); });
        return std::to_string(*count) + (state.set.unsavedChanges ? " unsaved" : "");
    }
    // The sentences of a group, with a star where something is no factory value, and the sheet.
    std::string told(const std::string& group)
    {
        std::string text;
        for (const DescribedGroup& one : describeSettings(state.set, store, state.texts, state.language)) {
            for (const DescribedSetting& setting : one.settings) {
                if (utf8FromText(Text(wordOf(one.group))) == group)
                    text += (setting.isFactory ? "" : "*") + utf8FromText(setting.sentence) + " (" +
                            setting.item + ") ";
            }
        }
        return text;
    }
};

TEST(SheetTest, EachDecoderHasItsSheetsAndTheirValuesAreWorkedOn)
{
    carryOut<SheetBench>("editors/sheets.txt");
}

} // namespace karvo::test
