#pragma once

#include "program/text.h"

#include <system_error>

namespace karvo
{

// What the system says to an error, in its own language and in any letters, without a full stop.
Text systemWords(const std::error_code& error);

} // namespace karvo
