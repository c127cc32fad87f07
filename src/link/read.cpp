#include "link/read.h"

#include "link/fault_text.h"
#include "link/identification.h"
#include "program/bytes.h"

#include <algorithm>
#include <optional>

namespace karvo
{

namespace
{

const Bytes readCommand = {'E', 'R'};

constexpr std::size_t lastZeroedCv = 1030;

// For as long as it lives a read is under way, which the person can stop. Takes the hourglass and the long
// time-out back on every way out.
class ReadGuard
{
public:
    explicit ReadGuard(Link& link) : link_(link)
    {
        link_.state.readUnderWay = true;
        link_.view.showReading(true);
    }
    ~ReadGuard()
    {
        link_.state.readUnderWay = false;
        link_.view.showReading(false);
        link_.state.timeOutInterval = usualTimeOut;
        link_.view.showHourglass(false);
        if (link_.stopRequested != nullptr && *link_.stopRequested)
            link_.view.showStatus(link_.texts.caption(Caption::readStopped));
    }
    ReadGuard(const ReadGuard&) = delete;
    ReadGuard& operator=(const ReadGuard&) = delete;

private:
    Link& link_;
};

void showReadStatus(Link& link)
{
    link.view.showStatus(link.texts.caption(Caption::readAll));
}

// Tells the person that nothing, or not enough, has come.
ReadEnd reportNoReplyToRead(Link& link)
{
    link.state.timeOut = false;
    link.prompts.message(noReplyText(link));
    link.view.showStatus(link.texts.caption(Caption::noReplyStatus));
    return ReadEnd::noReply;
}

// Sends "ER", awaits the block of the decoder type at hand within the time-out interval as it is set, checks
// the block and copies it into the image.
ReadEnd fetchBlock(Link& link, CvImage& image)
{
    const auto length = blockReplyLength(link.state.typeCode);
    switch (Exchange(link, readCommand, ReplyLength::exactly(length), Pointer::hourglass)) {
    case ExchangeEnd::ended:
        return ReadEnd::ended;
    case ExchangeEnd::timedOut:
        return reportNoReplyToRead(link);
    case ExchangeEnd::replied:
        break;
    }
    if (takeBlock(link.state.lastReply, image))
        return ReadEnd::read;
    breakLineRun(link.state);
    link.prompts.message(link.texts.message(Message::wrongCheckByte));
    showReadStatus(link);
    return ReadEnd::wrongCheckByte;
}

ReadEnd readInto(Link& link, CvImage& image)
{
    if (!EnsurePortOpen(link))
        return ReadEnd::ended;
    std::optional<ReadGuard> guard(std::in_place, link);
    switch (askForPresence(link, Pointer::hourglass)) {
    case ExchangeEnd::ended:
        return ReadEnd::ended;
    case ExchangeEnd::timedOut:
        link.port.close();
        guard.reset(); // the hourglass goes before the box comes
        return reportNoReplyToRead(link);
    case ExchangeEnd::replied:
        break;
    }
    return fetchBlock(link, image);
}

} // namespace

bool takeBlock(const Bytes& block, CvImage& image)
{
    if (block.empty() || block.size() > image.size())
        return false;
    const auto data = std::span(block).first(block.size() - 1);
    if (checkByte(data) != block.back())
        return false;
    std::copy(data.begin(), data.end(), image.begin() + 1);
    return true;
}

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

ReadEnd readForSave(Link& link, CvImage& image)
{
    const CvImage before = image;
    std::fill(image.begin() + 1, image.begin() + lastZeroedCv + 1, std::uint8_t{0});
    const auto end = readInto(link, image);
    if (end != ReadEnd::read)
        image = before;
    return end;
}

} // namespace karvo
