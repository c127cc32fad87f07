#include "ui/typed_text.h"

#include <algorithm>

namespace karvo
{

Text typedText(const QString& typed)
{
    return typed.toStdU16String();
}

QValidator::State Windows1252Validator::validate(QString& typed, int& /*position*/) const
{
    const bool fits = std::all_of(typed.cbegin(), typed.cend(),
                                  [](QChar character) { return fitsWindows1252(character.unicode()); });
    return fits ? Acceptable : Invalid;
}

} // namespace karvo
