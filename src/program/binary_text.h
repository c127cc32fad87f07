// A value's binary digits as text, for testing single bits of a CV.
#pragma once

#include "program/text.h"

namespace karvo
{

// Most significant digit first, padded with "0" on the left to at least eight characters: 5 gives "00000101".
Text binaryText(unsigned value);

} // namespace karvo
