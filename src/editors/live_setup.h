// What the windows for servos set up: which CVs, what the decoder follows at once, and what is written at the
// end.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"
#include "link/live_value.h"
#include "workbench/write_plan.h"

#include <optional>
#include <span>
#include <vector>

namespace karvo
{

enum class LiveWindow { bothServos, firstServo, secondServo, times };

// A value with a slider.
struct LiveControl {
    int cv;
    Caption caption;
    bool followed; // the decoder is sent it at once
};

// Which value goes over which channel stands in docs/protocol.md, "Live values".
class LiveSetup
{
public:
    // The table has values for the window's CVs, and for CV173 (editor_gate.h sees to it).
    LiveSetup(LiveWindow window, const CvTable& table);

    static std::span<const LiveControl> controlsOf(LiveWindow window);

    std::span<const LiveControl> controls() const { return controlsOf(window_); }
    int valueOf(int cv) const;

    // `value`: 0 to 255. A followed one becomes what is being tried.
    void move(int cv, int value);

    // CV174 and CV175 exclude each other: where both have got a value CV175 loses its own, with the words for
    // it. `changed`: the one that was changed last.
    std::optional<Text> clearExcluded(int changed, const LanguageTables& texts);

    LiveValue opening() const;
    std::span<const int> channels() const; // of a tick, in their order
    LiveValue tried(int channel) const;
    LiveValue stored(int channel) const; // as it was at the beginning

    // All of the window's CVs; a time that is 0 comes before the other one.
    WritePlan plan() const;

private:
    struct Value {
        int cv;
        int now;
        int stored;
    };

    Value& at(int cv);
    const Value& at(int cv) const;
    int firstTried() const;

    LiveWindow window_;
    std::vector<Value> values_; // in the order of the controls
    int opening_;               // the position that the setup starts from
    int triedCv_;               // the followed one that was moved last
};

// What to say of a vehicle whose CV112 does not name the window's servo as fitted: the decoder gives it no
// power. Nothing for a model whose CV112 is something else.
std::optional<Text> servoWithoutPower(LiveWindow window, const CvSet& set, const LanguageTables& texts);

} // namespace karvo
