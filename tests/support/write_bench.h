// A workbench that can read and write a KV05, and that remembers what was to be kept.
#pragma once

#include "support/test_bench.h"
#include "workbench/full_read.h"
#include "workbench/write_backup.h"

namespace karvo::test
{

struct WriteBench : TestBench {
    std::vector<CvSet> kept;
    std::optional<Text> keepTrouble;
    KeepBackup keep = [this](const CvSet& set) {
        kept.push_back(set);
        journal.push_back("kept " + std::to_string(kept.size()));
        return KeptBackup{"lists/" + std::to_string(kept.size()) + ".kvr", keepTrouble};
    };

    WriteBench()
    {
        addWriteTexts(state.texts);
        setText(state.texts, 683, u"list of {1}, vehicle {2}");
        setText(state.texts, 684, u"not kept: {1}");
        setText(state.texts, 685, u"now {1}, before {2}");
        setCaption(state.texts, 161, u"changed");
        setCaption(state.texts, 180, u"nothing to write");
        setCaption(state.texts, 181, u"{1} of {2} written");
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
    }

    // The value that blockOf() has for a CV.
    static int blockValue(int cv) { return (cv * 7 + cv / 256) & 0xFF; }

    void readKv05(const Bytes& block = blockOf(512))
    {
        line.replyWith({'1', '5'});
        line.replyWith(block);
        readIntoList(bench, ReadStarter::other);
        journal.clear();
    }
    void answerSaveRead(const Bytes& block = blockOf(512))
    {
        line.replyWith({'1', '5'});
        line.replyWith(block);
    }
    void answerWrite(const Bytes& frameReply = {6})
    {
        line.replyWith({'1', '5'});
        line.replyWith({6});
        line.replyWith(frameReply);
    }
};

} // namespace karvo::test
