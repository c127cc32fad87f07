// The eight lamps at a receiver in light mode, by CV50 to CV57, CV60 to CV67, CV90 and CV91.
#pragma once

#include "editors/light_rhythm.h"
#include "editors/picture_values.h"

#include <array>

namespace karvo
{

struct ReceiverLamp {
    enum class Glass { plain, red, yellow, green };
    std::optional<int> function{}; // CV50 to CV57
    Glass glass = Glass::plain;    // of a traffic light
    Rhythm rhythm{};
    double brightness = 0; // 0 to 1
};

// Of outputs 1 to 8. Those of a running light and of a traffic light take turns in the order of their
// outputs.
std::array<ReceiverLamp, 8> receiverLamps(const PictureValues& values);

// Whether the outputs are lamps at all: CV9 = 0.
bool lampsInForce(const PictureValues& values);

Text lampText(const PictureWords& words, const ReceiverLamp& lamp, int output);

} // namespace karvo
