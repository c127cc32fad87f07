#include "firmware/update_verdict.h"

#include "link/exchange.h"

namespace karvo
{

void UpdateVerdict::note(std::size_t record, const Bytes& reply)
{
    if (IsAck(reply) || ++refusals_ > 1)
        return;
    firstRefused_ = record;
    firstRefusal_ = reply;
}

} // namespace karvo
