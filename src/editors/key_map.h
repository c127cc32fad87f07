// What the function keys F0 to F12 switch, and how: CV33 to CV45, CV19 and CV20.
#pragma once

#include "cvdata/cv_change.h"
#include "editors/picture_values.h"

namespace karvo
{

// The map has a column for each key, and these rows.
struct KeyMapRows {
    static constexpr int knownValues = 13;   // rows 0 to 12: the key has this value
    static constexpr int otherValue = 13;    // it has one that no text explains; only to be looked at
    static constexpr int pushButton = 14;    // CV19
    static constexpr int secondAddress = 15; // CV20
    static constexpr int count = 16;
};
inline constexpr int functionKeys = 13;    // F0 to F12
inline constexpr int keysWithSwitches = 8; // F0 to F7

// The CV behind a place of the map.
int cvOfPlace(int row, int key);

// Whether the model has the CV behind it, and the key such a switch.
bool isPlace(const PictureValues& values, int row, int key);

bool isChosen(const PictureValues& values, int row, int key);

// What choosing there changes: the value of a key, or a switch that is turned over. Nothing where nothing
// changes.
std::optional<CvChange> chosenAt(const PictureValues& values, int row, int key);

// "Output 4, left indicator" for a row.
Text rowName(const PictureWords& words, int row);

// "F3: hazard lights, chosen".
Text placeText(const PictureWords& words, const PictureValues& values, int row, int key);

} // namespace karvo
