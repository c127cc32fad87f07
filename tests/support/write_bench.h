// A workbench that can read and write a KV05, that remembers what was to be kept, and tells a write as text.
#pragma once

#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/write_backup.h"
#include "workbench/write_report.h"

#include <cstdio>
#include <sstream>

namespace karvo::test
{

inline std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// "48=200 49=7", or "48 49" for numbers alone.
inline std::vector<std::pair<int, int>> numbersOf(const std::string& text)
{
    std::vector<std::pair<int, int>> numbers;
    for (const std::string& word : wordsOf(text)) {
        auto& [number, value] = numbers.emplace_back();
        std::sscanf(word.c_str(), "%d=%d", &number, &value);
    }
    return numbers;
}

// "48.upper=100 20.factory=": the cells of a list.
inline void setCells(CvTable& table, const std::string& text)
{
    const std::map<std::string, Column> columns = {
        {"number", Column::number},    {"value", Column::value},      {"factory", Column::factoryValue},
        {"lower", Column::lowerLimit}, {"upper", Column::upperLimit}, {"marks", Column::marks}};
    for (const std::string& word : wordsOf(text)) {
        const auto dot = word.find('.');
        const auto equals = word.find('=');
        table.at(std::stoi(word), columns.at(word.substr(dot + 1, equals - dot - 1))) =
            textFromUtf8(word.substr(equals + 1));
    }
}

// Short words for all that a write says, in place of a language.
inline void addWordsOfWrites(LanguageTables& texts)
{
    for (const auto& [kind, number, words] : casesOf<3>("workbench/write_texts.txt"))
        (kind == "message" ? setText : setCaption)(texts, std::stoi(number), textFromUtf8(words));
}

struct WriteBench : TestBench {
    std::vector<CvSet> kept;
    std::optional<Text> keepTrouble;
    Journal last; // what passed() has told
    KeepBackup keep = [this](const CvSet& set) {
        kept.push_back(set);
        journal.push_back("kept " + std::to_string(kept.size()));
        return KeptBackup{"lists/" + std::to_string(kept.size()) + ".kvr", keepTrouble};
    };

    WriteBench()
    {
        addWriteTexts(state.texts);
        addWordsOfWrites(state.texts);
        numberTexts(state.texts, {430, 433, 434}, {});
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
        addFile("CV_Standart_November12_5.txt", smallDescription("Standard KV05 November12", "Wort "));
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart_receiver.txt", smallDescription("Standard KV-XT", "Wort ", 250));
    }

    // The value that blockOf() has for a CV.
    static int blockValue(int cv) { return (cv * 7 + cv / 256) & 0xFF; }

    // What vehicle and person answer next: "15" is an identification, "+" and "-" are 6 and 21, "." is
    // silence, "B" is the block, "B48=200,3=9" the same with other values, "Z7=1" zeros else, "D" one whose
    // check byte is wrong, "L" a long one, "pulled" the last acknowledge of an adapter that does not come
    // back; "y" and "n" answer questions, "cancel", "discard" and "save" whether to save, "file=a.kvr" and
    // "option=2" dialogs, which are cancelled without a name or number. A write begins with "15 15 B", and a
    // value is sent with "15 + +"; "w3" are three of them.
    void script(const std::string& text)
    {
        using namespace std::chrono_literals;
        for (const std::string& word : wordsOf(text)) {
            if (answer(word))
                continue;
            if (word == "pulled")
                line.replyInPieces({{0ms, {6}}, {50ms, {}}});
            else if (word.front() == 'w')
                script(repeated("15 + + ", std::stoi(word.substr(1))));
            else if (word == ".")
                line.replyInPieces({});
            else
                line.replyWith(replyOf(word));
        }
    }
    // What has happened since the last call, in short: "%", "ER", "EWS", a frame as "48=200", "?" for a
    // question, "!" for a message, and "kept".
    std::string passed()
    {
        std::string steps;
        for (const auto& entry : journal) {
            const auto step = stepOf(entry);
            steps += step.empty() || steps.empty() ? step : " " + step;
        }
        last = std::exchange(journal, {});
        return steps;
    }
    static std::string stepOf(const std::string& entry)
    {
        const std::pair<const char*, const char*> steps[] = {
            {"write 37", "%"},      {"write 69 82", "ER"}, {"write 69 87 83", "EWS"}, {"question ", "?"},
            {"save changes ", "?"}, {"message ", "!"},     {"kept ", "kept"}};
        for (const auto& [begin, step] : steps) {
            const bool isBegin = std::string(begin).ends_with(' ');
            if (isBegin ? entry.starts_with(begin) : entry == begin)
                return step;
        }
        int address = 0;
        int value = 0;
        const bool isFrame = std::sscanf(entry.c_str(), "write %d %d", &address, &value) == 2;
        return isFrame ? std::to_string(address + 1) + "=" + std::to_string(value) : std::string();
    }
    // "finished: 48 written, 49 unused"; "clean" is one that left nothing to be desired.
    std::string told(const WriteReport& report) const
    {
        const char* const ends[] = {
            "finished",      "stopped by user", "stopped by fault", "nothing to write",
            "busy",          "cancelled",       "declined",         "other model",
            "backup failed", "no reply",        "unknown decoder",  "wrong check byte",
            "ended"};
        std::string text = report.isClean() ? "clean " : "";
        text += ends[static_cast<int>(report.end)];
        if (report.outcomes.size() > 12)
            return text + ": " + std::to_string(report.countOf(WriteEnd::written)) + " of " +
                   std::to_string(report.outcomes.size());
        for (const WriteOutcome& outcome : report.outcomes)
            text += (&outcome == &report.outcomes.front() ? ": " : ", ") + std::to_string(outcome.cv) + " " +
                    utf8FromText(outcomeText(outcome, state.texts));
        return text;
    }

private:
    // Whether it was the person's.
    bool answer(const std::string& word)
    {
        static const std::map<std::string, SaveChoice> choices = {
            {"cancel", SaveChoice::cancel}, {"discard", SaveChoice::discard}, {"save", SaveChoice::save}};
        const auto chosen = word.substr(std::min(word.find('='), word.size() - 1) + 1);
        if (word == "y" || word == "n")
            prompts.answer(word == "y");
        else if (choices.contains(word))
            prompts.answerSaveChanges(choices.at(word));
        else if (word.starts_with("file="))
            prompts.chooseFile(chosen.empty() ? std::nullopt : std::optional<std::filesystem::path>(chosen));
        else if (word.starts_with("option="))
            prompts.choose(chosen.empty() ? std::nullopt : std::optional<std::size_t>(std::stoul(chosen)));
        else
            return false;
        return true;
    }
    static std::string repeated(const std::string& text, int times)
    {
        return times == 0 ? std::string() : text + repeated(text, times - 1);
    }
    static Bytes replyOf(const std::string& word)
    {
        if (word == "+" || word == "-")
            return {static_cast<std::uint8_t>(word == "+" ? 6 : 21)};
        if (word == "L")
            return blockOf(1024);
        if (word.front() != 'B' && word.front() != 'Z' && word != "D")
            return bytesOf(word);
        Bytes block = word.front() == 'Z' ? Bytes(513, 0) : blockOf(512);
        if (word == "D")
            block.back() ^= 1;
        std::string values = word.substr(1);
        std::replace(values.begin(), values.end(), ',', ' ');
        for (const auto& [cv, value] : numbersOf(values)) {
            auto& held = block[static_cast<std::size_t>(cv) - 1];
            block.back() = static_cast<std::uint8_t>(block.back() + value - held);
            held = static_cast<std::uint8_t>(value);
        }
        return block;
    }
};

} // namespace karvo::test
