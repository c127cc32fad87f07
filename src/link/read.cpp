#include "link/read.h"

#include "link/identification.h"

namespace karvo
{

// The order matters where a later value replaces an earlier one: CV73 that of CV479, CV72 the constant.
ReceiverValues receiverValuesOf(TypeCode typeCode, const CvImage& image)
{
    ReceiverValues values;
    if (!isReceiver(typeCode))
        return values;
    values.firmwareVersion = image[479];
    values.cv478 = image[478];
    values.firmwareLevel = image[72];
    values.firmwareVersion = image[73];
    values.cv74 = image[74];
    values.cv77 = image[77];
    values.cv78 = image[78];
    values.cv80 = image[80];
    return values;
}

ReadEnd readDecoder(Link& link, CvImage& image, ReceiverValues& receiver)
{
    showReadStatus(link);
    if (!EnsurePortOpen(link))
        return ReadEnd::ended;
    const ReadGuard guard(link);
    switch (IdentifyDecoder(link, ReadOnlyReceiver::accepted, Pointer::hourglass)) {
    case IdentificationEnd::ended:
        return ReadEnd::ended;
    case IdentificationEnd::timedOut: {
        const auto end = reportNoReplyToRead(link);
        link.port.close();
        return end;
    }
    case IdentificationEnd::unknown:
        showReadStatus(link);
        return ReadEnd::unknownDecoder;
    case IdentificationEnd::identified:
        break;
    }
    constexpr std::size_t shortBlock = 513;
    const bool isLong = blockReplyLength(link.state.typeCode) > shortBlock;
    link.state.timeOutInterval = isLong ? longBlockTimeOut : usualTimeOut;
    const auto end = fetchBlock(link, image);
    if (end == ReadEnd::read)
        receiver = receiverValuesOf(link.state.typeCode, image);
    return end;
}

} // namespace karvo
