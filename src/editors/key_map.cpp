#include "editors/key_map.h"

#include "editors/vehicle_lights.h"

namespace karvo
{

namespace
{

constexpr int firstKeyCv = 33;
constexpr int pushButtonCv = 19;
constexpr int secondAddressCv = 20;

bool isSwitch(int row)
{
    return row == KeyMapRows::pushButton || row == KeyMapRows::secondAddress;
}

} // namespace

int cvOfPlace(int row, int key)
{
    if (isSwitch(row))
        return row == KeyMapRows::pushButton ? pushButtonCv : secondAddressCv;
    return firstKeyCv + key;
}

bool isPlace(const PictureValues& values, int row, int key)
{
    return values(cvOfPlace(row, key)) && (!isSwitch(row) || key < keysWithSwitches);
}

bool isChosen(const PictureValues& values, int row, int key)
{
    if (!isPlace(values, row, key))
        return false;
    const int value = *values(cvOfPlace(row, key));
    if (isSwitch(row))
        return (value & 1 << key) != 0;
    return row == KeyMapRows::otherValue ? value >= KeyMapRows::knownValues : value == row;
}

std::optional<CvChange> chosenAt(const PictureValues& values, int row, int key)
{
    if (!isPlace(values, row, key) || row == KeyMapRows::otherValue)
        return std::nullopt;
    const int cv = cvOfPlace(row, key);
    if (isSwitch(row))
        return CvChange{cv, *values(cv) ^ 1 << key};
    return isChosen(values, row, key) ? std::nullopt : std::optional(CvChange{cv, row});
}

Text rowName(const PictureWords& words, int row)
{
    switch (row) {
    case KeyMapRows::otherValue:
        return words.texts.caption(Caption::keyOtherValue);
    case KeyMapRows::pushButton:
        return words.texts.caption(Caption::keyPushButton);
    case KeyMapRows::secondAddress:
        return words.texts.caption(Caption::keySecondAddress);
    default:
        break;
    }
    if (row < 1 || row > static_cast<int>(outputCount))
        return wordOf(words, firstKeyCv, row);
    const auto light = lightName(words, static_cast<Light>(row - 1), false);
    return words.texts.caption(Caption::keyOutput, {textFromNumber(row), light});
}

Text placeText(const PictureWords& words, const PictureValues& values, int row, int key)
{
    Text text = joined({u"F", textFromNumber(key), u": "});
    if (!isPlace(values, row, key))
        return joined({text, words.texts.caption(Caption::keyNoSwitch)});
    text = joined({text, rowName(words, row)});
    if (row == KeyMapRows::otherValue && isChosen(values, row, key))
        text = joined({text, u" ", textFromNumber(*values(cvOfPlace(row, key)))});
    const bool chosen = isChosen(values, row, key);
    return joined({text, u", ", words.texts.caption(chosen ? Caption::keyChosen : Caption::keyNotChosen)});
}

} // namespace karvo
