#include "cvdata/receiver_releases.h"

#include "cvdata/cv_use.h"
#include "cvdata/description_fields.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace karvo
{

namespace
{

struct Release {
    ReceiverRelease release;
    TextView mark; // as in "from=240216"
    FirmwareDate date;
    bool onNewerBoardOnly = false;
};

constexpr Release releases[] = {
    {ReceiverRelease::september2015, u"010915", {2015, 9, 1}},
    {ReceiverRelease::february2016, u"240216", {2016, 2, 24}},
    {ReceiverRelease::february2016NewBoard, u"240216_neu", {2016, 2, 24}, true},
    {ReceiverRelease::february2022, u"270222", {2022, 2, 27}},
};

const Release* releaseMarked(TextView mark)
{
    const auto* const found = std::find_if(std::begin(releases), std::end(releases),
                                           [&](const Release& one) { return one.mark == mark; });
    return found == std::end(releases) ? nullptr : found;
}

auto inOrder(const FirmwareDate& date)
{
    return std::tie(date.year, date.month, date.day);
}

// A mark that is not known is no reason to hide a CV.
bool lacks(ReceiverRelease release, TextView mark)
{
    const Release* const first = mark.empty() ? nullptr : releaseMarked(mark);
    return first != nullptr && std::max(release, ReceiverRelease::september2015) < first->release;
}

TextView firstField(TextView line)
{
    return line.substr(0, std::min(line.find(u';'), line.size()));
}

Text* lineOf(Description& description, int cv)
{
    const auto begin = description.lines.begin() + 2;
    const auto end = begin + description.rowCount;
    const auto found =
        std::find_if(begin, end, [cv](const Text& line) { return numberFromText(firstField(line)) == cv; });
    return found == end ? nullptr : &*found;
}

// The line too: it is what a list file is made of.
void makeUnused(Description& description, int cv, int unused)
{
    CvTable& table = description.table;
    for (int column = static_cast<int>(Column::value); column <= CvTable::lastColumn; ++column)
        table.at(cv, column) = table.at(unused, column);
    Text* const line = lineOf(description, cv);
    const Text* const model = lineOf(description, unused);
    if (line != nullptr && model != nullptr)
        *line = Text(firstField(*line)).append(*model, firstField(*model).size());
}

Text dateOf(TextView mark)
{
    const Release* const release = releaseMarked(mark);
    if (release == nullptr)
        return Text(mark);
    const auto& [year, month, day] = release->date;
    return textFromNumber(day) + u"." + textFromNumber(month) + u"." + textFromNumber(year);
}

} // namespace

std::optional<ReceiverRelease> releaseOf(const DecoderProfile& profile)
{
    if (!isReceiver(profile.typeCode) || !profile.firmwareDate.isRecorded())
        return std::nullopt;
    auto newest = ReceiverRelease::earlier;
    for (const Release& release : releases) {
        const bool isReached = inOrder(profile.firmwareDate) >= inOrder(release.date);
        if (isReached && (!release.onNewerBoardOnly || profile.subLevel > 0))
            newest = release.release;
    }
    return newest;
}

bool lacksCv(const DecoderProfile& profile, const CvTable& table, int cv)
{
    const auto release = releaseOf(profile);
    return release && lacks(*release, firstFirmwareOf(table, cv));
}

void leaveOutLaterCvs(Description& description, const DecoderProfile& profile)
{
    const auto unused = unusedCvOf(description.table);
    if (!unused)
        return;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (lacksCv(profile, description.table, cv))
            makeUnused(description, cv, *unused);
    }
}

void addReleaseRemarks(CvTable& table, TextView remark)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const TextView mark = firstFirmwareOf(table, cv);
        if (mark.empty())
            continue;
        const Text date[] = {dateOf(mark)};
        const Text words = filledIn(remark, date);
        Text& advice = table.at(cv, Column::advice);
        if (advice.find(words) == Text::npos)
            advice += (advice.empty() ? u"" : u" ") + words;
    }
}

} // namespace karvo
