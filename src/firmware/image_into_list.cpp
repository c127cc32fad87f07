#include "firmware/image_into_list.h"

#include "cvdata/changes.h"
#include "cvdata/cv_use.h"
#include "link/write.h"
#include "workbench/put_on_bench.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int tellingCvs[] = {1, 7, 8, 29}; // of an image of ours these hold what such a decoder can hold

std::optional<std::uint8_t> byteOf(const MemoryImage& image, int cv)
{
    return image.at(addressOfCv(cv));
}

// The list's values as a decoder would hold them. Where the list has none, any value of the image is another.
CvImage heldBy(const CvTable& table, const MemoryImage& image)
{
    CvImage held{};
    for (const int cv : table.describedCvs()) {
        const auto value = table.value(cv);
        const int other = 255 - byteOf(image, cv).value_or(0);
        held[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(isCvValue(value) ? *value : other);
    }
    return held;
}

// Empty where the value is nothing unusual.
Text unusualLine(const CvTable& table, int cv, int value, const LanguageTables& texts)
{
    const auto limits = limitsOf(table, cv);
    const auto inList = table.value(cv);
    if (!limits.allow(value))
        return texts.caption(Caption::valueBeyondLimits,
                             {joined({u"CV", textFromNumber(cv)}), textFromNumber(value),
                              textFromNumber(limits.lower), textFromNumber(limits.upper)});
    if (isReadOnly(table, cv) && inList && *inList != value)
        return texts.message(Message::imageOtherThanList, {joined({u"CV", textFromNumber(cv)}),
                                                           textFromNumber(value), textFromNumber(*inList)});
    return {};
}

} // namespace

// The rules of a write from the list decide, so that nothing comes into the list that would not leave it.
std::vector<ImageChange> changesByImage(const CvSet& set, const MemoryImage& image)
{
    const CvTable& table = set.table;
    CvSet taken;
    taken.profile = set.profile;
    taken.table = table;
    for (const int cv : table.describedCvs()) {
        if (const auto byte = byteOf(image, cv))
            taken.table.setValue(cv, *byte);
    }
    std::vector<ImageChange> changes;
    for (const PlannedWrite& write : planOfDifferences(taken, heldBy(table, image))) {
        const bool isOrder = isTakeOverCv(write.cv); // no value that a decoder keeps
        if (!isOrder && byteOf(image, write.cv) == write.value && table.value(write.cv) != write.value)
            changes.push_back({write.cv, write.value, table.value(write.cv), write.skip});
    }
    std::sort(changes.begin(), changes.end(),
              [](const ImageChange& a, const ImageChange& b) { return a.cv < b.cv; });
    return changes;
}

Text unusualImageQuestion(const CvTable& table, const MemoryImage& image, const LanguageTables& texts)
{
    Text lines;
    for (const int cv : tellingCvs) {
        const auto byte = byteOf(image, cv);
        const Text line = byte && table.describes(cv) ? unusualLine(table, cv, *byte, texts) : Text();
        if (!line.empty())
            lines += joined({lineBreak, line});
    }
    if (lines.empty())
        return {};
    return joined({texts.message(Message::unusualImage), lines, lineBreak,
                   texts.message(Message::unusualImageQuestion)});
}

std::size_t takeImage(Workbench& bench, const std::vector<ImageChange>& changes)
{
    if (bench.state.lineBusy)
        return 0;
    CvSet& set = bench.state.set;
    std::size_t count = 0;
    for (const ImageChange& change : changes) {
        if (!change.isTaken())
            continue;
        set.table.setValue(change.cv, change.value);
        ++count;
    }
    if (count != 0)
        noteChange(set);
    fillList(bench);
    return count;
}

} // namespace karvo
