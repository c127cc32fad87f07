// A workbench that can read and write a KV05, and that remembers what was to be kept.
#pragma once

#include "support/test_bench.h"
#include "workbench/full_read.h"
#include "workbench/write_backup.h"

#include <cstdio>
#include <sstream>

namespace karvo::test
{

// Another value in a block, and its check byte.
inline void setValue(Bytes& block, std::size_t cv, std::uint8_t value)
{
    block.back() = static_cast<std::uint8_t>(block.back() + value - block[cv - 1]);
    block[cv - 1] = value;
}

inline Bytes damagedBlock()
{
    Bytes block = blockOf(512);
    block.back() ^= 1;
    return block;
}

struct WriteBench : TestBench {
    std::vector<CvSet> kept;
    std::optional<Text> keepTrouble;
    std::string lastMessage; // of what passed() has told
    KeepBackup keep = [this](const CvSet& set) {
        kept.push_back(set);
        journal.push_back("kept " + std::to_string(kept.size()));
        return KeptBackup{"lists/" + std::to_string(kept.size()) + ".kvr", keepTrouble};
    };

    WriteBench()
    {
        addWriteTexts(state.texts);
        numberTexts(state.texts, {430, 433, 434}, {});
        setTexts(state.texts, {{431, u"build {1} / {2}"}, {432, u"processor {1} / {2}"}}, {});
        setTexts(state.texts, {{683, u"list of {1}, vehicle {2}"}, {684, u"not kept: {1}"}}, {});
        setText(state.texts, 685, u"now {1}, before {2}");
        setTexts(state.texts, {}, {{161, u"changed"}, {800, u"standard"}, {804, u"newer"}});
        setTexts(state.texts, {}, {{180, u"nothing to write"}, {181, u"{1} of {2} written"}});
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
        addFile("CV_Standart_November12_5.txt", smallDescription("Standard KV05 November12", "Wort "));
    }

    // The value that blockOf() has for a CV.
    static int blockValue(int cv) { return (cv * 7 + cv / 256) & 0xFF; }

    void readKv05(const std::string& block = "B")
    {
        script("15 " + block);
        readIntoList(bench, ReadStarter::other);
        journal.clear();
    }
    // What vehicle and person answer next: "15" is an identification, "+" and "-" are 6 and 21, "." is
    // silence, "B" is the block, "B48=200,3=9" the same with other values, "D" one whose check byte is wrong;
    // "y" and "n" answer questions. A write begins with "15 15 B", and a value is sent with "15 + +".
    void script(const std::string& text)
    {
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            if (word == "y" || word == "n")
                prompts.answer(word == "y");
            else if (word == ".")
                line.replyInPieces({});
            else
                line.replyWith(replyOf(word));
        }
    }
    std::size_t count(const std::string& entry) const
    {
        return static_cast<std::size_t>(std::count(journal.begin(), journal.end(), entry));
    }
    // What has happened since the last call, in short: "%", "ER", "EWS", a frame as "48=200", "?" for a
    // question, "!" for a message, and "kept".
    std::string passed()
    {
        std::string steps;
        for (const auto& entry : journal) {
            const auto step = stepOf(entry);
            steps += step.empty() || steps.empty() ? step : " " + step;
            if (step == "!")
                lastMessage = entry;
        }
        journal.clear();
        return steps;
    }

private:
    static Bytes replyOf(const std::string& word)
    {
        if (word == "+" || word == "-")
            return {static_cast<std::uint8_t>(word == "+" ? 6 : 21)};
        if (word == "D")
            return damagedBlock();
        if (!word.starts_with('B'))
            return bytesOf(word);
        Bytes block = blockOf(512);
        std::istringstream values(word.substr(1));
        char separator = ',';
        for (std::size_t cv = 0, value = 0; values >> cv >> separator >> value; values >> separator)
            setValue(block, cv, static_cast<std::uint8_t>(value));
        return block;
    }
    static std::string stepOf(const std::string& entry)
    {
        const std::pair<const char*, const char*> steps[] = {
            {"write 37", "%"}, {"write 69 82", "ER"}, {"write 69 87 83", "EWS"}};
        for (const auto& [written, step] : steps) {
            if (entry == written)
                return step;
        }
        if (entry.starts_with("question"))
            return "?";
        if (entry.starts_with("message"))
            return "!";
        if (entry.starts_with("kept"))
            return "kept";
        int address = 0;
        int value = 0;
        if (std::sscanf(entry.c_str(), "write %d %d", &address, &value) == 2)
            return std::to_string(address + 1) + "=" + std::to_string(value);
        return {};
    }
};

} // namespace karvo::test
