#include "editors/picture_values.h"

#include "cvdata/cv_kind.h"

namespace karvo
{

Text durationText(int milliseconds, bool decimalComma)
{
    if (milliseconds > 0 && milliseconds < 1000)
        return textFromNumber(milliseconds) + u" ms";
    return timeText(milliseconds, decimalComma);
}

Text wordOf(const PictureWords& words, int cv, int value)
{
    const Text word = words.valueWord ? words.valueWord(cv, value) : Text();
    return word.empty() ? textFromNumber(value) : word;
}

} // namespace karvo
