#include "cvdata/batch_change.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

class BatchChangeTest : public testing::Test
{
protected:
    BatchChangeTest()
    {
        put("a.kvr",
            "Standard KV07\r\n3;4;Adresse;1;126;4;\r\n4;8;Auslauf;0;255;\r\nEnde CV\r\nATmega328\r\n");
        put("b.kvr", "KV05*2\r\n3;4;Adresse;1;99;4;\r\n4;8;Auslauf;\r\nEnde CV\r\nfremd\r\n300;1;x;\r\n");
        put("c.kvr", "KV05*2\r\n4;8;Auslauf;\r\nEnde CV\r\n");
        put("d.kvr", "kein CV\r\n");
    }

    void put(const char* name, std::string_view content) { files.content[name] = bytesOf(content); }

    std::vector<BatchFile> preview(const std::vector<CvChange>& changes)
    {
        const std::filesystem::path paths[] = {"a.kvr", "b.kvr", "c.kvr", "d.kvr", "e.kvr", "./a.kvr"};
        return previewBatch(files, paths, changes);
    }

    test::MemoryFiles files;
};

TEST_F(BatchChangeTest, PreviewTellsValuesAndRefusals)
{
    const auto before = files.content;
    const auto batch = preview({{3, 100}, {4, 9}});
    ASSERT_EQ(batch.size(), 5u); // a file that is named twice counts once
    EXPECT_EQ(batch[0].rows[0].oldValue, u"4");
    EXPECT_EQ(batch[0].rows[0].newValue, 100);
    EXPECT_FALSE(batch[0].isRefused());
    EXPECT_EQ(batch[1].rows[0].refusal, BatchRefusal::outsideLimits);
    EXPECT_EQ(batch[1].rows[0].upperLimit, 99);
    EXPECT_EQ(batch[1].rows[1].refusal, BatchRefusal::none);
    EXPECT_TRUE(batch[1].isRefused());
    EXPECT_EQ(batch[2].rows[0].refusal, BatchRefusal::notInList);
    EXPECT_EQ(batch[3].refusal, BatchRefusal::notAList);
    EXPECT_EQ(batch[4].refusal, BatchRefusal::cannotRead);
    EXPECT_EQ(files.content, before);
    EXPECT_EQ(files.saves, 0);
}

TEST_F(BatchChangeTest, ChangesTheValuesAndNothingElse)
{
    auto batch = preview({{3, 99}, {4, 9}});
    applyBatch(files, batch);
    EXPECT_EQ(
        files.content["a.kvr"],
        bytesOf("Standard KV07\r\n3;99;Adresse;1;126;4;\r\n4;9;Auslauf;0;255;\r\nEnde CV\r\nATmega328\r\n"));
    EXPECT_EQ(files.content["b.kvr"],
              bytesOf("KV05*2\r\n3;99;Adresse;1;99;4;\r\n4;9;Auslauf;\r\nEnde CV\r\nfremd\r\n300;1;x;\r\n"));
    EXPECT_EQ(files.content["c.kvr"], bytesOf("KV05*2\r\n4;8;Auslauf;\r\nEnde CV\r\n"));
    EXPECT_EQ(files.content["d.kvr"], bytesOf("kein CV\r\n"));
    EXPECT_TRUE(batch[0].done && batch[1].done);
    EXPECT_FALSE(batch[2].done || batch[3].done || batch[4].done);
    EXPECT_EQ(files.saves, 2);
}

TEST_F(BatchChangeTest, EncodingLineEndsAndTheEndOfTheFileStay)
{
    put("a.kvr",
        "\xEF\xBB\xBFKV07*5\n3;4;\xC3\xA4;1;126;4;\n4\r\n 5 ; 08;x\n6; 7 ;y;rest\r\nEnde CV\nATmega328");
    const std::filesystem::path paths[] = {"a.kvr"};
    const CvChange changes[] = {{3, 5}, {5, 8}, {6, 255}};
    auto batch = previewBatch(files, paths, changes);
    applyBatch(files, batch);
    EXPECT_TRUE(batch[0].done);
    EXPECT_EQ(
        files.content["a.kvr"],
        bytesOf(
            "\xEF\xBB\xBFKV07*5\n3;5;\xC3\xA4;1;126;4;\n4\r\n 5 ; 08;x\n6;255;y;rest\r\nEnde CV\nATmega328"));
    put("b.kvr", "KV07*5\n3;\n4;8;x;\nEnde CV\n");
    const std::filesystem::path shorter[] = {"b.kvr"};
    const CvChange first[] = {{3, 5}};
    auto second = previewBatch(files, shorter, first);
    applyBatch(files, second);
    EXPECT_EQ(files.content["b.kvr"], bytesOf("KV07*5\n3;5;\n4;8;x;\nEnde CV\n"));
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
    EXPECT_EQ(batch[0].refusal, BatchRefusal::cannotSave);
    EXPECT_EQ(batch[0].reason, u"read-only");
    EXPECT_EQ(batch[1].refusal, BatchRefusal::changedMeanwhile);
    EXPECT_EQ(files.content["b.kvr"], bytesOf("KV05*2\r\n4;7;Auslauf;\r\nEnde CV\r\n"));
    EXPECT_TRUE(batch[2].done);
}

TEST_F(BatchChangeTest, WhatIsSoAlreadyIsNotWritten)
{
    auto batch = preview({{4, 8}});
    applyBatch(files, batch);
    EXPECT_TRUE(batch[0].done && batch[1].done && batch[2].done);
    EXPECT_EQ(files.saves, 0);
}

TEST_F(BatchChangeTest, RefusalsAreToldInWords)
{
    LanguageTables texts;
    test::setText(texts, 727, u"no CV{1}");
    test::setText(texts, 728, u"CV{1} {2} to {3}");
    test::setText(texts, 730, u"no list");
    test::setText(texts, 732, u"not saved: {1}");
    const auto batch = preview({{3, 127}});
    EXPECT_EQ(refusalText(batch[0].rows[0], texts), u"CV3 1 to 126");
    EXPECT_EQ(refusalText(batch[2].rows[0], texts), u"no CV3");
    EXPECT_EQ(refusalText(batch[3], texts), u"no list");
    EXPECT_EQ(refusalText(batch[0], texts), u"");
    BatchFile failed{"a", {}, BatchRefusal::cannotSave, u"disk full", false};
    EXPECT_EQ(refusalText(failed, texts), u"not saved: disk full");
}

TEST_F(BatchChangeTest, AFileThatIsTooLargeIsToldAsSuch)
{
    put("a.kvr", std::string(textFileLimit + 1, ';'));
    EXPECT_EQ(preview({{3, 100}})[0].refusal, BatchRefusal::tooLarge);
}

} // namespace
} // namespace karvo
