// What differs from the decoder or the file, and the same change in many files.
#include "cvdata/batch_change.h"
#include "cvdata/changes.h"

#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

class ChangesTest : public testing::Test
{
protected:
    ChangesTest()
    {
        for (const int cv : {1, 5, 70, 71, 97, 98, 105, 153}) {
            set.table.at(cv, Column::number) = textFromNumber(cv);
            set.table.setValue(cv, 7);
        }
        set.table.at(153, Column::value).clear();
        startUnchanged(set);
    }

    CvSet set;
};

TEST_F(ChangesTest, OnlyAnotherValueIsAChangeAndItGoesAgain)
{
    const std::tuple<int, TextView, bool> cases[] = {
        {105, u"8", true}, {5, u"007", false}, {1, u"", true}, {153, u"0", true}, {153, u"", false}};
    for (const auto& [cv, value, isChange] : cases) {
        const Text before = std::exchange(set.table.at(cv, Column::value), Text(value));
        EXPECT_EQ(isChanged(set, cv), isChange) << cv;
        EXPECT_EQ(changedCvs(set), isChange ? std::vector{cv} : std::vector<int>());
        EXPECT_EQ(takeBack(set, cv), isChange);
        EXPECT_EQ(set.table.at(cv, Column::value), isChange ? before : value);
    }
}

TEST_F(ChangesTest, WithoutABaselineAndBeyondTheTableNothingIsChanged)
{
    for (const int cv : {-1, 0, 257, 1111}) {
        EXPECT_FALSE(isChanged(set, cv));
        markWritten(set, cv);
    }
    set.baseline.reset();
    set.table.setValue(1, 200);
    EXPECT_FALSE(isChanged(set, 1));
    EXPECT_FALSE(takeBackAll(set));
    markWritten(set, 1);
    EXPECT_FALSE(set.baseline);
}

TEST_F(ChangesTest, WhatWasNeverAFileIsUnsavedOnlyWhileItDiffers)
{
    const std::tuple<const char*, const char*, bool, bool> cases[] = {{"", "", false, false},
                                                                      {"", "mnu_kv07", false, true},
                                                                      {"a.kvr", "", true, true},
                                                                      {"a.kvr", "mnu_open", true, true}};
    for (const auto& [path, offlineItem, unsavedAfterTakingBack, unsavedAfterWriting] : cases) {
        set.listPath = path;
        set.offlineItem = offlineItem;
        set.table.setValue(1, 7);
        startUnchanged(set);
        set.table.setValue(1, 201);
        noteChange(set);
        EXPECT_TRUE(set.unsavedChanges);
        takeBack(set, 1);
        EXPECT_EQ(set.unsavedChanges, unsavedAfterTakingBack) << path << offlineItem;
        set.table.setValue(1, 202);
        noteChange(set);
        markWritten(set, 1);
        EXPECT_EQ(set.unsavedChanges, unsavedAfterWriting) << path << offlineItem;
    }
}

TEST_F(ChangesTest, WhatTheDecoderHoldsIsNoLongerChangedAndStaysUnsavedInAFile)
{
    set.listPath = "bus.kvr";
    set.table.setValue(1, 200);
    set.table.setValue(5, 9);
    set.unsavedChanges = true;
    markWritten(set, 1);
    EXPECT_EQ(changedCvs(set), std::vector{5});
    EXPECT_TRUE(takeBackAll(set));
    EXPECT_EQ(set.table.value(1), 200);
    EXPECT_EQ(set.table.value(5), 7);
    EXPECT_TRUE(set.unsavedChanges);
    EXPECT_FALSE(takeBackAll(set));
    CvImage image{};
    image.fill(7); // CV153 too: the list has no value to write there
    image[1] = 201;
    measureAgainst(set, image);
    EXPECT_EQ(changedCvs(set), std::vector{1});
    takeBack(set, 1);
    EXPECT_EQ(set.table.value(1), 201);
}

class BatchChangeTest : public testing::Test
{
protected:
    BatchChangeTest()
    {
        for (const auto& [name, content, changed] : contents)
            put(name, content);
        put("f.kvr", std::string(textFileLimit + 1, ';'));
        test::numberEveryText(texts);
        test::setText(texts, 727, u"no CV{1}");
        test::setText(texts, 728, u"CV{1} {2} to {3}");
        test::setText(texts, 732, u"not saved: {1}");
        test::setText(texts, 448, u"{1} > {2}");
    }

    void put(const std::string& name, std::string_view content) { files.content[name] = bytesOf(content); }

    std::vector<BatchFile> preview(const std::vector<CvChange>& changes)
    {
        const std::filesystem::path paths[] = {"a.kvr", "b.kvr", "c.kvr",  "d.kvr",
                                               "e.kvr", "f.kvr", "./a.kvr"};
        return previewBatch(files, paths, changes);
    }

    const std::vector<std::array<std::string, 3>> contents = test::casesOf<3>("cvdata/batch_files.txt");
    test::MemoryFiles files;
    LanguageTables texts;
};

TEST_F(BatchChangeTest, PreviewTellsValuesAndRefusalsInWords)
{
    const auto before = files.content;
    const auto batch = preview({{3, 100}, {4, 9}});
    ASSERT_EQ(batch.size(), 6u); // a file that is named twice counts once
    EXPECT_EQ(batch[0].rows[0].oldValue, u"4");
    EXPECT_EQ(batch[0].rows[0].newValue, 100);
    const TextView refusals[] = {u" ", u" CV3 1 to 99", u" no CV3", u"m730 ", u"m729 ", u"f.kvr > 4 "};
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const Text ofRow = batch[i].rows.empty() ? Text() : refusalText(batch[i].rows[0], texts);
        EXPECT_EQ(refusalText(batch[i], texts) + u" " + ofRow, refusals[i]) << i;
        EXPECT_EQ(batch[i].isRefused(), i != 0);
    }
    EXPECT_EQ(batch[1].rows[1].refusal, BatchRefusal::none);
    EXPECT_EQ(files.content, before);
}

TEST_F(BatchChangeTest, ChangesTheValuesAndNothingElse)
{
    auto batch = preview({{3, 99}, {4, 8}});
    applyBatch(files, batch);
    for (const auto& [name, content, changed] : contents)
        EXPECT_EQ(files.content[name], bytesOf(changed)) << name;
    for (std::size_t i = 0; i < batch.size(); ++i)
        EXPECT_EQ(batch[i].done, i < 2);
    EXPECT_EQ(files.saves, 2);
    auto same = preview({{4, 8}});
    applyBatch(files, same);
    EXPECT_TRUE(same[0].done && same[1].done && same[2].done);
    EXPECT_EQ(files.saves, 2) << "what is so already is not written";
}

TEST_F(BatchChangeTest, EncodingLineEndsAndTheEndOfTheFileStay)
{
    const std::filesystem::path paths[] = {"a.kvr"};
    const CvChange changes[] = {{3, 5}, {5, 8}, {6, 255}};
    for (const auto& [content, changed] : test::casesOf<2>("cvdata/batch_encodings.txt")) {
        put("a.kvr", content);
        auto batch = previewBatch(files, paths, changes);
        applyBatch(files, batch);
        EXPECT_TRUE(batch[0].done);
        EXPECT_EQ(files.content["a.kvr"], bytesOf(changed));
    }
}

TEST_F(BatchChangeTest, AFileThatFailsIsLeftAndTheOthersAreDone)
{
    files.content["locked/a.kvr"] = files.content["a.kvr"];
    files.readOnly.insert("locked");
    const std::filesystem::path paths[] = {"locked/a.kvr", "b.kvr", "a.kvr"};
    const CvChange changes[] = {{4, 9}};
    auto batch = previewBatch(files, paths, changes);
    put("b.kvr", "KV05*2\r\n4;7;Auslauf;\r\nEnde CV\r\n");
    applyBatch(files, batch);
    EXPECT_EQ(refusalText(batch[0], texts), u"not saved: read-only");
    EXPECT_EQ(refusalText(batch[1], texts), u"m731");
    EXPECT_EQ(files.content["b.kvr"], bytesOf("KV05*2\r\n4;7;Auslauf;\r\nEnde CV\r\n"));
    EXPECT_TRUE(batch[2].done);
}

} // namespace
} // namespace karvo
