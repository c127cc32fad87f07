// A workbench that can read and write a KV05, that remembers what was to be kept, and tells a write as text.
#pragma once

#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/write_backup.h"
#include "workbench/write_report.h"

#include <cstdio>

namespace karvo::test
{

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
        addTexts(state.texts, "link/write_texts.txt");
        addTexts(state.texts, "workbench/write_texts.txt");
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
                for (int left = std::stoi(word.substr(1)); left > 0; --left)
                    script("15 + +");
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
        const std::pair<std::string, const char*> steps[] = {
            {"write 37", "%"},      {"write 69 82", "ER"}, {"write 69 87 83", "EWS"}, {"question ", "?"},
            {"save changes ", "?"}, {"message ", "!"},     {"kept ", "kept"}};
        for (const auto& [begin, step] : steps) {
            if (begin.ends_with(' ') ? entry.starts_with(begin) : entry == begin)
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
        std::string text = report.isClean() ? "clean " : "";
        text += casesOf<1>("workbench/write_ends.txt").at(static_cast<std::size_t>(report.end))[0];
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
