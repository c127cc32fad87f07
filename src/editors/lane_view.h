// How a vehicle with lane control keeps to its line: CV177 to CV184.
#pragma once

#include "editors/picture_values.h"

#include <vector>

namespace karvo
{

struct LaneView {
    static constexpr int off = 0;
    static constexpr int steers = 1;
    static constexpr int centre = 128; // of the servo
    int mode = off;
    bool leftOfLine = false;
    int straight = centre; // positions of the servo, 1 to 255
    int lowest = centre;   // how far it steers to either side
    int highest = centre;
    int strength = 0;  // 0 to 255
    int threshold = 0; // 0 to 255: from this brightness on it is the line
    int stopAfter = 0; // ms without the line
    int speedStep = 0; // no faster
};

LaneView laneView(const PictureValues& values);

// Side, steering, range and limits, a sentence each.
std::vector<Text> laneTexts(const PictureWords& words, const LaneView& view);

} // namespace karvo
