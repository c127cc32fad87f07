// What the doubles of one test have seen, in order, one line an event.
#pragma once

#include <string>
#include <vector>

namespace karvo::test
{

using Journal = std::vector<std::string>;

} // namespace karvo::test
