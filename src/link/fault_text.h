// The words for what came in place of a reply, for a person to pass on.
#pragma once

#include "link/link.h"

namespace karvo
{

// Message 233, and on a line of its own how far the last reply came.
Text noReplyText(const Link& link);

// Message 234, and on a line of its own the reply that came.
Text unknownDecoderText(const Link& link);

} // namespace karvo
