// A decoder's memory as a file, as a table, and on its way into the list.
#include "firmware/image_into_list.h"
#include "firmware/memory_image_file.h"
#include "firmware/memory_view.h"
#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/full_read.h"

namespace karvo
{
namespace
{

std::string numbersIn(const MemoryImage& image)
{
    std::string all;
    for (std::size_t address = 0; address < image.size(); ++address) {
        if (const auto byte = image.at(address))
            all += (all.empty() ? "" : " ") + std::to_string(address) + "=" + std::to_string(*byte);
    }
    return all;
}

MemoryImage imageOf(const std::string& numbers)
{
    MemoryImage image;
    for (const auto& [address, value] : test::numbersOf(numbers))
        image.set(static_cast<std::size_t>(address), static_cast<std::uint8_t>(value));
    return image;
}

struct ImageBench : test::TestBench {
    ImageBench()
    {
        test::numberEveryText(state.texts);
        test::setTexts(state.texts, {{874, u"line {2}: {3}"}, {876, u"{1} {2} {3}"}, {891, u"{1}: {2}"}},
                       {{276, u"{1} {2} {3} {4}"}, {695, u"CV{1} at {2} {3}"}, {696, u"{1} {2}"}});
    }
};

TEST(MemoryImage, IsReadWithHolesFromAnyLinesAndRefusedWithLineAndReason)
{
    ImageBench bench;
    for (const auto& [content, told] : test::casesOf<2>("firmware/memory_images.txt")) {
        bench.journal.clear();
        bench.addFile("a.hex", content);
        bench.prompts.chooseFile("program/a.hex");
        const auto image = openMemoryImage(bench.bench, u"title", "home");
        EXPECT_EQ(image ? numbersIn(image->image) : bench.journal.back(), image ? told : "message " + told)
            << content;
    }
}

TEST(MemoryImage, IsSavedWithItsHolesAndItsFolderIsKept)
{
    ImageBench bench;
    EXPECT_EQ(memoryImageRequest(bench.bench, {}, "home").folder, "home");
    bench.state.driveC = "program";
    bench.addFile("x.txt", "");
    bench.prompts.chooseFile("folder/a.hex");
    const auto image = imageOf("0=3 1=255 15=1 16=2 20=7");
    EXPECT_TRUE(saveMemoryImage(bench.bench, image, memoryImageRequest(bench.bench, {}, "home")));
    const Bytes& saved = bench.files.content["folder/a.hex"];
    EXPECT_EQ(std::string(saved.begin(), saved.end()),
              ":0200000003FFFC\r\n:01000F0001EF\r\n:0100100002ED\r\n:0100140007E4\r\n:00000001FF\r\n");
    EXPECT_EQ(bench.settings.get("Parameter", "ATMELpath"), Text(u"folder"));
    EXPECT_EQ(memoryImageRequest(bench.bench, {}, "home").folder, "folder");
}

TEST(MemoryView, ShowsMarksFindsAndCopiesBytes)
{
    CvSet set;
    set.table.at(18, Column::number) = u"18";
    set.table.at(18, Column::text) = u"Second Address";
    set.table.setValue(18, 40);
    MemoryView view;
    view.show(imageOf("0=1 1=27 3=27 4=1 17=200 18=27"));
    view.compareWith(ComparedMemory{u"other", imageOf("0=1 1=28 2=5 17=201")});
    EXPECT_EQ(view.differences(), (std::vector<std::size_t>{1, 17})); // a byte of one side alone is none
    EXPECT_EQ(view.nextDifference(1, true), 17U);
    EXPECT_EQ(view.nextDifference(17, true), 1U);
    EXPECT_EQ(view.nextDifference(1, false), 17U);
    EXPECT_EQ(view.rowCount(), 2U);

    ImageBench bench;
    const auto details = byteDetails(view, 17, set, bench.state.texts);
    EXPECT_EQ(utf8FromText(details[0] + u"|" + details[1] + u"|" + details[2]),
              "CV18 at 17 0x0011 = 200 = 0xC8|Second Address 40|other: 201");

    struct {
        bool hexadecimal;
        TextView wanted;
        std::optional<std::size_t> place; // behind address 3
    } const cases[] = {{true, u"1b", 18},  {true, u"1B01", 3},  {true, u"1b 1", 3},       {false, u"27 1", 3},
                       {false, u"27", 18}, {false, u"256", {}}, {true, u"CV18", 17},      {true, u"cv20", {}},
                       {true, u"add", 17}, {true, u"  ", {}},   {false, u"second a", 17}, {true, u"2B", {}}};
    for (const auto& [hexadecimal, wanted, place] : cases) {
        view.useHexadecimal(hexadecimal);
        EXPECT_EQ(view.find(wanted, set.table, 3), place) << utf8FromText(wanted);
    }
    EXPECT_EQ(view.cellText(1) + view.cellText(2) + view.cellText(3), u"1B*1B");
    EXPECT_EQ(view.copied({17, 18, 0}), u"0x0000\t01\r\n0x0011\tC8\t1B");
    view.useHexadecimal(false);
    EXPECT_EQ(view.copied({}), u"0\t1\t27\t\t27\t1\t\t\t\t\t\t\t\t\t\t\t\r\n16\t\t200\t27");
}

TEST(ImageIntoList, TakesWhatAWriteWouldTakeAndAsksAboutWhatIsUnusual)
{
    ImageBench bench;
    CvTable& table = bench.state.set.table;
    for (const int cv : {1, 7, 8, 29, 48, 49, 59, 99}) {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.at(cv, Column::factoryValue) = cv == 99 ? u"" : u"1";
        table.at(cv, Column::upperLimit) = u"126";
        table.setValue(cv, 13);
    }
    table.at(49, Column::value).clear();
    bench.state.set.baseline = CvValues();

    // CV n lies at address n - 1: the image changes CV1, CV8, CV48, CV49, CV59, CV99 and says nothing of CV2
    const auto changes = changesByImage(bench.state.set, imageOf("0=127 6=13 7=14 47=20 48=0 58=1 98=2 1=5"));
    std::string told;
    for (const ImageChange& change : changes)
        told += std::to_string(change.cv) + "=" + std::to_string(change.value) +
                (change.isTaken() ? "" : " left out") + ", ";
    EXPECT_EQ(told, "1=127 left out, 8=14 left out, 48=20, 49=0, 59=1 left out, 99=2 left out, ");

    const std::pair<std::string, std::string> questions[] = {
        {"0=13 6=13 7=13 28=32 47=255", ""},
        {"47=255", ""}, // of a CV that says nothing about the image
        {"0=0 6=13 28=126", ""},
        {"0=127 6=12 7=14 28=127", "m875|CV1 127 0 126|CV7 12 13|CV8 14 13|CV29 127 0 126|m877"}};
    for (const auto& [image, question] : questions) {
        auto asked = utf8FromText(unusualImageQuestion(table, imageOf(image), bench.state.texts));
        for (std::size_t at; (at = asked.find("\r\n")) != std::string::npos;)
            asked.replace(at, 2, "|");
        EXPECT_EQ(asked, question);
    }

    bench.state.lineBusy = true;
    EXPECT_EQ(takeImage(bench.bench, changes), 0U);
    bench.state.lineBusy = false;
    EXPECT_EQ(takeImage(bench.bench, changes), 2U);
    EXPECT_EQ(table.value(48), 20);
    EXPECT_EQ(table.value(1), 13);
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    EXPECT_TRUE(bench.state.set.list[4].changed);
}

} // namespace
} // namespace karvo
