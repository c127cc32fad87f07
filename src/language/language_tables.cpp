#include "language/language_tables.h"

namespace karvo
{

Text shownText(TextView entry)
{
    constexpr std::size_t numberingField = 4;
    return entry.size() > numberingField ? Text(entry.substr(numberingField)) : Text();
}

Text LanguageTables::menuCaption(std::size_t number) const
{
    return number < menu.size() ? shownText(menu[number]) : Text();
}

Text LanguageTables::caption(Caption number) const
{
    const Text text = shownText(captions[static_cast<std::size_t>(number)]);
    return text.substr(0, text.find(u'\t'));
}

Text LanguageTables::message(Message number, std::initializer_list<Text> words) const
{
    return filledIn(message(number), {words.begin(), words.size()});
}

Text LanguageTables::caption(Caption number, std::initializer_list<Text> words) const
{
    return filledIn(caption(number), {words.begin(), words.size()});
}

} // namespace karvo
