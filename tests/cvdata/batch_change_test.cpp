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
        put("f.kvr", std::string(textFileLimit + 1, ';'));
        test::numberEveryText(texts);
        test::setText(texts, 727, u"no CV{1}");
        test::setText(texts, 728, u"CV{1} {2} to {3}");
        test::setText(texts, 732, u"not saved: {1}");
        test::setText(texts, 448, u"{1} > {2}");
    }

    void put(const char* name, std::string_view content) { files.content[name] = bytesOf(content); }

    std::vector<BatchFile> preview(const std::vector<CvChange>& changes)
    {
        const std::filesystem::path paths[] = {"a.kvr", "b.kvr", "c.kvr",  "d.kvr",
                                               "e.kvr", "f.kvr", "./a.kvr"};
        return previewBatch(files, paths, changes);
    }

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
    const std::pair<TextView, TextView> refusals[] = {{u"", u""},       {u"", u"CV3 1 to 99"},
                                                      {u"", u"no CV3"}, {u"m730", u""},
                                                      {u"m729", u""},   {u"f.kvr > 4", u""}};
    for (std::size_t i = 0; i < batch.size(); ++i) {
        EXPECT_EQ(refusalText(batch[i], texts), refusals[i].first) << i;
        EXPECT_EQ(batch[i].rows.empty() ? Text() : refusalText(batch[i].rows[0], texts), refusals[i].second)
            << i;
        EXPECT_EQ(batch[i].isRefused(), i != 0);
    }
    EXPECT_EQ(batch[1].rows[1].refusal, BatchRefusal::none);
    EXPECT_EQ(files.content, before);
}

TEST_F(BatchChangeTest, ChangesTheValuesAndNothingElse)
{
    auto batch = preview({{3, 99}, {4, 8}});
    const auto before = files.content;
    applyBatch(files, batch);
    EXPECT_EQ(
        files.content["a.kvr"],
        bytesOf("Standard KV07\r\n3;99;Adresse;1;126;4;\r\n4;8;Auslauf;0;255;\r\nEnde CV\r\nATmega328\r\n"));
    EXPECT_EQ(files.content["b.kvr"],
              bytesOf("KV05*2\r\n3;99;Adresse;1;99;4;\r\n4;8;Auslauf;\r\nEnde CV\r\nfremd\r\n300;1;x;\r\n"));
    for (const char* const refused : {"c.kvr", "d.kvr"})
        EXPECT_EQ(files.content[refused], before.at(refused));
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
    const std::pair<std::string, std::string> cases[] = {
        {"\xEF\xBB\xBFKV07*5\n3;4;\xC3\xA4;1;126;4;\n4\r\n 5 ; 08;x\n6; 7 ;y;rest\r\nEnde CV\nATmega328",
         "\xEF\xBB\xBFKV07*5\n3;5;\xC3\xA4;1;126;4;\n4\r\n 5 ; 08;x\n6;255;y;rest\r\nEnde CV\nATmega328"},
        {"KV07*5\n3;\n5;8;x;\n6;0\nEnde CV\n", "KV07*5\n3;5;\n5;8;x;\n6;255;0\nEnde CV\n"}};
    const std::filesystem::path paths[] = {"a.kvr"};
    const CvChange changes[] = {{3, 5}, {5, 8}, {6, 255}};
    for (const auto& [content, changed] : cases) {
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
