// What a write from the list is about to do, shown before the first value is sent.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_plan.h"

#include <functional>
#include <vector>

namespace karvo
{

// Rows that are written together or not at all.
enum class PreviewGroup {
    none,
    series,    // CV167 to CV171
    speedTable // CV70 to CV97 of models that have one
};

struct PreviewRow {
    int cv;
    Text name;
    std::optional<int> held; // what the vehicle holds
    int value;               // what the list has
    WriteSkip skip = WriteSkip::none;
    PreviewGroup group = PreviewGroup::none;
    bool ticked = true; // of use where `skip` is none

    bool isWritten() const { return skip == WriteSkip::none && ticked; }
};

// A battery below the level at which the vehicle warns; in units of 20 mV.
struct LowBattery {
    int measured;
    int level; // CV153
};

struct WritePreview {
    std::vector<PreviewRow> rows; // in the order of writing
    bool otherVehicle = false;    // the list has other addresses or numbers than the vehicle
    std::optional<LowBattery> lowBattery;

    std::size_t countOfWritten() const;
    std::size_t countOfLeftOut() const { return rows.size() - countOfWritten(); }
};

enum class PreviewAnswer { cancel, write, writeAndAskNoMore };

// Shows a preview, whose ticks may be changed. Nothing is sent while it is shown.
using ConfirmPlan = std::function<PreviewAnswer(WritePreview&)>;

// Whether the CV makes a vehicle this one: its addresses, and the numbers of CV168 to CV171. CV167 is written
// with these or not at all.
bool isOfThisVehicle(int cv);

// `block`: what the vehicle on the line holds, and who it is.
WritePreview previewOf(const WritePlan& plan, const CvSet& set, const CvImage& block,
                       const DecoderProfile& vehicle);

// Ticks a row, or takes its tick away, and with it the rows of its group.
void tick(WritePreview& preview, std::size_t row, bool ticked);

// The same for all rows that make a vehicle this one.
void tickVehiclesOwn(WritePreview& preview, bool ticked);

// Why rows are left out, as in a report.
std::vector<Text> reasonsOf(const WritePreview& preview, const LanguageTables& texts);

// "The battery is ...": empty where there is none to speak of.
Text lowBatteryText(const WritePreview& preview, const ProgramState& state);

// The plan without the rows that have no tick. Nothing when the person has cancelled. Where he wished not to
// be asked any more about this vehicle and this list, what he left out then stays out. `isKept`: the vehicle
// is the one that was written last.
std::optional<WritePlan> confirmPlan(ProgramState& state, WritePlan plan, WritePreview preview,
                                     const ConfirmPlan& confirm, bool isKept);

} // namespace karvo
