// The wait of the firmware transfers for a reply, which they do not examine.
#pragma once

#include "link/link.h"

namespace karvo
{

enum class ReplyEnd { replied, timedOut, lineLost, ended };

// Until at least `count` bytes are there, for at most LinkState::timeOutInterval. All that has come stands in
// LinkState::lastReply then, whatever the end.
ReplyEnd awaitReply(Link& link, std::size_t count);

} // namespace karvo
