// Which CVs a write of many writes, and in which order.
#pragma once

#include "cvdata/cv_change.h"
#include "cvdata/cv_set.h"
#include "cvdata/decoder_profile.h"
#include "link/link.h"

#include <optional>
#include <vector>

namespace karvo
{

// Why a CV that was to be written is left out.
enum class WriteSkip {
    none,
    notUsed,            // the description, which gives others a factory value, gives it none
    decodersOwn,        // the decoder alone decides its value, as of CV7 and CV8
    reset,              // CV59: whatever is written sets the decoder back
    outsideLimits,      // a list from elsewhere holds a value that the description does not allow
    otherSteps,         // a speed step in a plan with others outside their limits
    addressUnconfirmed, // it would put an address to use that the decoder has not confirmed
    withSeries,         // one of CV167 to CV171 can not be written, and none of them is without the others
    unticked            // the person has left it out
};

// What stands against writing a value to a CV: outsideLimits, notUsed, decodersOwn, or none. The reset has a
// question of its own.
WriteSkip limitsAgainst(const CvTable& table, int cv, int value);

struct PlannedWrite {
    int cv;
    int value;
    WriteSkip skip = WriteSkip::none;
    std::optional<int> held = std::nullopt; // what the vehicle holds, as far as that is known
};

// CVs that the write of the changed ones refuses with a message of its own where the model lacks them.
constexpr bool isServoCv(int cv)
{
    return cv >= 11 && cv <= 14;
}

// In the order of writing, which is ascending but for these: CV59 comes first, since it undoes what was
// written before; of the switches that make other settings act (isActingSwitch) one that goes to 0 comes next
// and any other behind all settings, so that a write that is stopped never runs half a setting; the
// addresses, then CV29 and CV21, which choose between them, come behind the others, so that a write that is
// stopped leaves a vehicle that drives under the address it had; CV161 comes last, since its decoder
// restarts. Where the model uses CV167 to CV171 and the table has a value for all of them, none is planned
// without the others, nor written. The speed steps, CV70 to CV97, are written all or none: a curve with holes
// drives badly.
using WritePlan = std::vector<PlannedWrite>;

// CV102 and CV108 switch the automatics of vehicles on, CV112 what is built in; CV9 and CV30 choose what a
// receiver does. A vehicle's CV9 and a receiver's CV112 are settings like others.
bool isActingSwitch(Model model, int cv);

// Whether what the description does not provide for is planned with the rest.
enum class BeyondLimits { leftOut, planned };

// The CVs whose table value differs from the block's, and behind a servo's address on a receiver the CV that
// puts it to use.
WritePlan planOfDifferences(const CvSet& set, const CvImage& block,
                            BeyondLimits beyond = BeyondLimits::leftOut);

// Every CV that has a value.
WritePlan planOfAll(const CvSet& set, const CvImage& block, BeyondLimits beyond = BeyondLimits::leftOut);

// Leaves out what the firmware of the receiver on the line lacks, though the list has it.
void leaveOutWhatItLacks(WritePlan& plan, const CvTable& table, const DecoderProfile& vehicle);

// Just these, whatever they are; those without a value in the table are left out of the plan.
WritePlan planOfChosen(const CvSet& set, const std::vector<int>& cvs);

// These values instead of the list's, in the order of writing, with what belongs to them: the rest of the
// series, and what puts a servo's address to use.
WritePlan planOfValues(CvSet set, const std::vector<CvChange>& values);

// The plan without all other CVs, in its order, but for the parts of an address that are left out: they hold
// back what would put it to use. One of CV167 to CV171 brings the others. A CV
// that puts a servo's address to use is planned also where nothing differs any more.
WritePlan restOf(WritePlan plan, const std::vector<int>& cvs);

// Whether the model is without one of CV11 to CV14 that is planned.
bool lacksPlannedServoCv(const WritePlan& plan);

} // namespace karvo
