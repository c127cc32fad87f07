#include "program/binary_text.h"

#include <algorithm>

namespace karvo
{

Text binaryText(unsigned value)
{
    Text digits;
    for (; value != 0; value /= 2)
        digits += value % 2 != 0 ? u'1' : u'0';
    digits.append(digits.size() < 8 ? 8 - digits.size() : 0, u'0');
    std::reverse(digits.begin(), digits.end());
    return digits;
}

} // namespace karvo
