#include "workbench/write_preview.h"

#include "cvdata/battery.h"
#include "cvdata/cv_use.h"
#include "cvdata/dcc_address.h"
#include "cvdata/main_list.h"
#include "cvdata/speed_cvs.h"
#include "link/write.h"
#include "workbench/write_report.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int warningLevelCv = 153;

bool isOfSeries(int cv)
{
    return cv >= firstSeriesCv && cv <= lastSeriesCv;
}

PreviewGroup groupOf(int cv, const CvTable& table)
{
    if (isOfSeries(cv))
        return PreviewGroup::series;
    return isSpeedStepCv(cv) && hasSpeedTable(table) ? PreviewGroup::speedTable : PreviewGroup::none;
}

std::optional<LowBattery> lowBatteryOf(const CvTable& table, const CvImage& block,
                                       const DecoderProfile& vehicle)
{
    const auto measured = measuredBattery(vehicle, std::span(block).subspan(1));
    const int level = block[warningLevelCv];
    if (!measured || !isUsed(table, warningLevelCv) || *measured >= level)
        return std::nullopt;
    return LowBattery{*measured, level};
}

bool isSameList(const CvSet& set, const AskNoMore& asked)
{
    return set.listPath == asked.listPath && set.offlineItem == asked.offlineItem;
}

void leaveOut(WritePreview& preview, const AskNoMore& asked)
{
    for (std::size_t row = 0; row < preview.rows.size(); ++row) {
        const int cv = preview.rows[row].cv;
        if (asked.leftOut.count(cv) != 0 || (asked.withoutVehiclesOwn && isOfThisVehicle(cv)))
            tick(preview, row, false);
    }
}

AskNoMore asRemembered(const CvSet& set, const WritePreview& preview)
{
    AskNoMore asked{set.listPath, set.offlineItem, {}, preview.otherVehicle};
    for (const PreviewRow& row : preview.rows) {
        if (row.skip == WriteSkip::none && !row.ticked)
            asked.leftOut.insert(row.cv);
        if (isOfThisVehicle(row.cv) && row.isWritten())
            asked.withoutVehiclesOwn = false;
    }
    return asked;
}

} // namespace

std::size_t WritePreview::countOfWritten() const
{
    return static_cast<std::size_t>(
        std::count_if(rows.begin(), rows.end(), [](const PreviewRow& row) { return row.isWritten(); }));
}

bool isOfThisVehicle(int cv)
{
    return isAddressCv(cv) || (isOfSeries(cv) && cv != firstSeriesCv);
}

WritePreview previewOf(const WritePlan& plan, const CvSet& set, const CvImage& block,
                       const DecoderProfile& vehicle)
{
    WritePreview preview;
    for (const PlannedWrite& write : plan) {
        preview.rows.push_back({write.cv, nameOfCv(set.table, write.cv), write.held, write.value, write.skip,
                                groupOf(write.cv, set.table)});
        if (write.skip == WriteSkip::none && isOfThisVehicle(write.cv) && write.held != write.value)
            preview.otherVehicle = true;
    }
    preview.lowBattery = lowBatteryOf(set.table, block, vehicle);
    return preview;
}

void tick(WritePreview& preview, std::size_t row, bool ticked)
{
    const PreviewGroup group = preview.rows[row].group;
    preview.rows[row].ticked = ticked;
    for (PreviewRow& other : preview.rows) {
        if (group != PreviewGroup::none && other.group == group)
            other.ticked = ticked;
    }
}

void tickVehiclesOwn(WritePreview& preview, bool ticked)
{
    for (std::size_t row = 0; row < preview.rows.size(); ++row) {
        if (isOfThisVehicle(preview.rows[row].cv))
            tick(preview, row, ticked);
    }
}

std::vector<Text> reasonsOf(const WritePreview& preview, const LanguageTables& texts)
{
    std::vector<WriteSkip> skips;
    for (const PreviewRow& row : preview.rows) {
        if (!row.isWritten())
            skips.push_back(row.skip == WriteSkip::none ? WriteSkip::unticked : row.skip);
    }
    return reasonsOf(skips, texts);
}

Text lowBatteryText(const WritePreview& preview, const ProgramState& state)
{
    if (!preview.lowBattery)
        return {};
    const bool comma = state.language != LanguageCode::english;
    return state.texts.caption(Caption::previewLowBattery, {voltsText(preview.lowBattery->measured, comma),
                                                            voltsText(preview.lowBattery->level, comma)});
}

std::optional<WritePlan> confirmPlan(ProgramState& state, WritePlan plan, WritePreview preview,
                                     const ConfirmPlan& confirm, bool isKept)
{
    if (!confirm)
        return plan;
    if (isKept && state.askNoMore && isSameList(state.set, *state.askNoMore)) {
        leaveOut(preview, *state.askNoMore);
    } else {
        state.askNoMore.reset();
        const auto answer = confirm(preview);
        if (answer == PreviewAnswer::cancel)
            return std::nullopt;
        if (answer == PreviewAnswer::writeAndAskNoMore)
            state.askNoMore = asRemembered(state.set, preview);
    }
    for (std::size_t i = 0; i < plan.size(); ++i) {
        if (plan[i].skip == WriteSkip::none && !preview.rows[i].ticked)
            plan[i].skip = WriteSkip::unticked;
    }
    return plan;
}

} // namespace karvo
