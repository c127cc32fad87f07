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
    int typeCode;
};

constexpr Entry identifications[] = {
    {"04", 0},
    {"14", 0},
    {"15", 1},
    {"16", 2},
    {"24", 4},
    {"25", 5},
    {"26", 6},
    {"27", 7},
    {"28", 8},
    {"80", 80},
    {"81", readOnlyReceiverCode},
    {"A7", 57},
};

} // namespace

std::optional<int> typeCodeOf(const Bytes& reply, ReadOnlyReceiver readOnlyReceiver)
{
    for (const Entry& entry : identifications) {
        if (entry.typeCode == readOnlyReceiverCode && readOnlyReceiver == ReadOnlyReceiver::refused)
            continue;
        if (std::equal(reply.begin(), reply.end(), entry.reply.begin(), entry.reply.end()))
            return entry.typeCode;
    }
    return std::nullopt;
}

std::size_t blockReplyLength(int typeCode)
{
    return typeCode == 7 || typeCode == 8 ? 1025 : 513;
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
