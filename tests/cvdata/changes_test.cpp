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

// Each step shows the CVs that are changed then.
struct ChangesBench {
    CvSet set;
    test::Steps steps;

    ChangesBench()
    {
        for (const int cv : {1, 5, 70, 71, 97, 98, 105, 153}) {
            set.table.at(cv, Column::number) = textFromNumber(cv);
            set.table.setValue(cv, 7);
        }
        set.table.at(153, Column::value).clear();
        startUnchanged(set);
        add("list", [this](auto& path) { set.listPath = path; });
        add("offline", [this](auto& item) { set.offlineItem = item; });
        add("no-baseline", [this](auto&) { set.baseline.reset(); });
        add("put", [this](auto& values) {
            for (const auto& word : test::wordsOf(values))
                set.table.at(std::stoi(word), Column::value) = textFromUtf8(word.substr(word.find('=') + 1));
        });
        add("note", [this](auto&) { noteChange(set); });
        add("written", [this](auto& cv) { markWritten(set, std::stoi(cv)); });
        // A vehicle that holds 7 in every other CV.
        add("measure", [this](auto& values) {
            CvImage image{};
            image.fill(7);
            for (const auto& [cv, value] : test::numbersOf(values))
                image[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(value);
            measureAgainst(set, image);
        });
        add("back", [this](auto& cv) { tookBack = takeBack(set, std::stoi(cv)); });
        add("back-all", [this](auto&) { tookBack = takeBackAll(set); });
        steps["value"] = [this](auto& cv) {
            return utf8FromText(set.table.at(std::stoi(cv), Column::value));
        };
        steps["changed"] = [this](auto& cv) {
            return std::string(isChanged(set, std::stoi(cv)) ? "yes" : "no");
        };
    }
    void script(const std::string&) {}
    void add(const std::string& name, const std::function<void(const std::string&)>& act)
    {
        steps[name] = [this, act](const std::string& words) {
            tookBack = false;
            act(words);
            std::string shown = tookBack ? "taken back " : "";
            for (const int cv : changedCvs(set))
                shown += std::to_string(cv) + " ";
            return shown + (set.unsavedChanges ? "unsaved" : "");
        };
    }

    bool tookBack = false;
};

TEST(ChangesTest, EachStepShowsWhatItShould)
{
    test::carryOut<ChangesBench>("cvdata/changes.txt");
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
    applyBatch(files, texts, batch);
    for (const auto& [name, content, changed] : contents)
        EXPECT_EQ(files.content[name], bytesOf(changed)) << name;
    for (std::size_t i = 0; i < batch.size(); ++i)
        EXPECT_EQ(batch[i].done, i < 2);
    EXPECT_EQ(files.saves, 2);
    auto same = preview({{4, 8}});
    applyBatch(files, texts, same);
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
        applyBatch(files, texts, batch);
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
    applyBatch(files, texts, batch);
    EXPECT_EQ(refusalText(batch[0], texts), u"not saved: m653");
    EXPECT_EQ(refusalText(batch[1], texts), u"m731");
    EXPECT_EQ(files.content["b.kvr"], bytesOf("KV05*2\r\n4;7;Auslauf;\r\nEnde CV\r\n"));
    EXPECT_TRUE(batch[2].done);
}

} // namespace
} // namespace karvo
