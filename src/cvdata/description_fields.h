// How a line of a description, expert or CV list file is cut into fields.
#pragma once

#include "program/text.h"

#include <vector>

namespace karvo
{

// The fields that a ";" ends; what follows the last ";" is no field.
std::vector<TextView> fieldsOf(TextView line);

// A field as it is shown: each "$" is a line break.
Text withLineBreaks(TextView field);

} // namespace karvo
