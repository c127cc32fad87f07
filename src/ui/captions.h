// Texts of the language tables, ready for widgets.
#pragma once

#include "language/language_tables.h"

#include <QString>

#include <initializer_list>

namespace karvo
{

QString qtText(TextView text);

// The same for buttons, menus and labels with a buddy, where a single "&" would become an underline.
QString buttonText(TextView text);

// A caption with its "{1}", "{2}" filled in.
QString filledCaption(const LanguageTables& texts, Caption number, std::initializer_list<Text> arguments);

} // namespace karvo
