#include "link/read.h"

#include "link/identification.h"
#include "program/check_byte.h"

#include <algorithm>

namespace karvo
{

namespace
{

const Bytes readCommand = {'E', 'R'};
constexpr int firstReceiverCode = 80;

// Takes the hourglass and the long time-out back on every way out.
class ReadGuard
{
public:
    explicit ReadGuard(Link& link) : link_(link) {}
    ~ReadGuard()
    {
        link_.state.timeOutInterval = usualTimeOut;
        link_.view.showHourglass(false);
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

ReadEnd reportNoReply(Link& link)
{
    link.state.timeOut = false;
    link.prompts.message(link.texts.message(Message::noReply));
    link.view.showStatus(link.texts.caption(Caption::noReplyStatus));
    return ReadEnd::noReply;
}

ReadEnd fetchBlock(Link& link)
{
    const auto length = blockReplyLength(link.state.typeCode);
    link.state.timeOutInterval = length > 513 ? longBlockTimeOut : usualTimeOut;
    switch (Exchange(link, readCommand, ReplyLength::exactly(length), Pointer::hourglass)) {
    case ExchangeEnd::ended:
        return ReadEnd::ended;
    case ExchangeEnd::timedOut:
        return reportNoReply(link);
    case ExchangeEnd::replied:
        break;
    }
    return ReadEnd::read;
}

// The order matters where a later value replaces an earlier one: CV73 that of CV479, CV72 the constant.
ReceiverValues receiverValues(const CvImage& image)
{
    ReceiverValues values;
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
        const auto end = reportNoReply(link);
        link.port.close();
        return end;
    }
    case IdentificationEnd::unknown:
        showReadStatus(link);
        return ReadEnd::unknownDecoder;
    case IdentificationEnd::identified:
        break;
    }
    if (const auto end = fetchBlock(link); end != ReadEnd::read)
        return end;
    if (!takeBlock(link.state.lastReply, image)) {
        link.prompts.message(link.texts.message(Message::wrongCheckByte));
        showReadStatus(link);
        return ReadEnd::wrongCheckByte;
    }
    receiver = link.state.typeCode >= firstReceiverCode ? receiverValues(image) : ReceiverValues{};
    return ReadEnd::read;
}

} // namespace karvo
