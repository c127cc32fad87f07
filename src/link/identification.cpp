#include "link/identification.h"

#include "link/fault_text.h"

#include <algorithm>
#include <string_view>

namespace karvo
{

namespace
{

const Bytes identifyCommand = {'%'};

struct Entry {
    std::string_view reply;
    TypeCode typeCode;
};

constexpr Entry identifications[] = {
    {"04", TypeCode::kv04},
    {"14", TypeCode::kv04},
    {"15", TypeCode::kv05},
    {"16", TypeCode::kv06},
    {"24", TypeCode::kv04From2010},
    {"25", TypeCode::kv05From2010},
    {"26", TypeCode::kv06From2010},
    {"27", TypeCode::kv07},
    {"28", TypeCode::kv08},
    {"80", TypeCode::receiver},
    {"81", TypeCode::readOnlyReceiver},
    {"A7", TypeCode::trailer},
};

} // namespace

std::optional<TypeCode> typeCodeOf(const Bytes& reply, ReadOnlyReceiver readOnlyReceiver)
{
    for (const Entry& entry : identifications) {
        if (entry.typeCode == TypeCode::readOnlyReceiver && readOnlyReceiver == ReadOnlyReceiver::refused)
            continue;
        if (std::equal(reply.begin(), reply.end(), entry.reply.begin(), entry.reply.end()))
            return entry.typeCode;
    }
    return std::nullopt;
}

std::size_t blockReplyLength(TypeCode typeCode)
{
    return isKv07OrKv08(typeCode) ? 1025 : 513;
}

ExchangeEnd askForPresence(Link& link, Pointer pointer)
{
    return Exchange(link, identifyCommand, ReplyLength::identification(), pointer);
}

void noteWhoAnswered(Link& link)
{
    if (textFromWindows1252(link.state.lastReply) != link.state.identification)
        breakLineRun(link.state);
}

IdentificationEnd IdentifyDecoder(Link& link, ReadOnlyReceiver readOnlyReceiver, Pointer pointer)
{
    switch (askForPresence(link, pointer)) {
    case ExchangeEnd::ended:
        return IdentificationEnd::ended;
    case ExchangeEnd::timedOut:
        return IdentificationEnd::timedOut;
    case ExchangeEnd::replied:
        break;
    }
    const auto typeCode = typeCodeOf(link.state.lastReply, readOnlyReceiver);
    noteWhoAnswered(link);
    if (!typeCode) {
        link.prompts.message(unknownDecoderText(link));
        return IdentificationEnd::unknown;
    }
    link.state.typeCode = *typeCode;
    link.state.identification = textFromWindows1252(link.state.lastReply);
    link.state.identified = true;
    link.state.lastReply.clear();
    return IdentificationEnd::identified;
}

} // namespace karvo
