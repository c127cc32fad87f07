#include "editors/picture_values.h"

namespace karvo
{

Text durationText(int milliseconds, bool decimalComma)
{
    if (milliseconds > 0 && milliseconds < 1000)
        return textFromNumber(milliseconds) + u" ms";
    Text decimals = textFromNumber(1000 + milliseconds % 1000).substr(1);
    decimals.erase(decimals.find_last_not_of(u'0') + 1);
    const TextView point = decimals.empty() ? u"" : decimalComma ? u"," : u".";
    return joined({textFromNumber(milliseconds / 1000), point, decimals, u" s"});
}

Text wordOf(const PictureWords& words, int cv, int value)
{
    const Text word = words.valueWord ? words.valueWord(cv, value) : Text();
    return word.empty() ? textFromNumber(value) : word;
}

} // namespace karvo
