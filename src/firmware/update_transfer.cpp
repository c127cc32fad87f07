#include "firmware/update_transfer.h"

#include "link/exchange.h"

#include <numeric>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

// The interface's receiver is slow: these are minimums.
constexpr std::chrono::milliseconds afterFirstByte = 5ms;
constexpr std::chrono::milliseconds behindBlock = 10ms;
constexpr std::chrono::milliseconds beforeRecords = 25ms;
constexpr std::chrono::milliseconds beforeSum = 50ms;

// Nothing: go on. Else how the transfer ends.
using Ending = std::optional<UpdateEnd>;

class Transfer
{
public:
    Transfer(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file, UpdateVerdict& verdict)
        : bench_(bench), setup_(setup), file_(file), verdict_(verdict)
    {
    }

    UpdateEnd run()
    {
        if (const Ending end = announce())
            return *end;
        while (sent_ < file_.records.size()) {
            if (const Ending end = sendNext())
                return *end;
        }
        return close();
    }

private:
    Ending sendNext()
    {
        const std::size_t total = file_.records.size();
        if (const Ending end = sendRecord(file_.records[sent_]))
            return end;
        ++sent_;
        const bool endsABlock = sent_ % recordsOfABlock == 0 || sent_ == total;
        if (endsABlock) {
            if (const Ending end = pause(behindBlock))
                return end;
        }
        setup_.observer.showProgress(sent_, total);
        if (endsABlock && sent_ != total && setup_.observer.stopRequested())
            return UpdateEnd::stopped;
        return std::nullopt;
    }

    // Nothing answers the closing block: whether it went out shows only in the port that took it.
    UpdateEnd close()
    {
        if (bench_.port.isOpen())
            bench_.port.write(closingBlock(setup_.clock.now()));
        if (!bench_.port.isOpen())
            return UpdateEnd::brokenOff;
        return verdict_.isConfirmed() ? UpdateEnd::sent : UpdateEnd::notConfirmed;
    }

    Ending announce()
    {
        if (const Ending end = pause(beforeRecords))
            return end;
        const auto command = windows1252FromText(bench_.state.texts.message(Message::updateCommand));
        for (const Bytes& bytes : {Bytes{'A'}, file_.start, command.value_or(Bytes())}) {
            if (const Ending end = sendAndWait(bytes, 0))
                return end;
        }
        return std::nullopt;
    }

    Ending sendRecord(const UpdateRecord& record)
    {
        bench_.port.write({record.front()});
        if (const Ending end = pause(afterFirstByte))
            return end;
        for (std::size_t i = 1; i < record.size(); ++i)
            bench_.port.write({record[i]});
        if (const Ending end = pause(beforeSum))
            return end;
        return sendAndWait(recordSum(record), sent_ + 1);
    }

    Ending pause(std::chrono::milliseconds duration)
    {
        return bench_.wait.pause(duration) == WaitResult::ended ? Ending(UpdateEnd::ended) : std::nullopt;
    }

    // An update that broke off because of a reply would leave the decoder without firmware: only silence ends
    // it.
    Ending sendAndWait(const Bytes& bytes, std::size_t record)
    {
        Link link = bench_.link();
        link.state.outgoingFrame = bytes;
        link.port.write(bytes);
        const auto end = awaitReply(link, 1);
        if (end != ReplyEnd::replied)
            return end == ReplyEnd::ended ? UpdateEnd::ended : UpdateEnd::brokenOff;
        verdict_.note(record, link.state.lastReply);
        return std::nullopt;
    }

    Workbench& bench_;
    const UpdateSetup& setup_;
    const UpdateFile& file_;
    UpdateVerdict& verdict_;
    std::size_t sent_ = 0; // records
};

} // namespace

UpdateEnd sendUpdate(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file,
                     UpdateVerdict& verdict)
{
    return Transfer(bench, setup, file, verdict).run();
}

Bytes closingBlock(const DateTime& date)
{
    const auto byte = [](int number) { return static_cast<std::uint8_t>(number); };
    return {'X', 'F', '0', '1', byte(date.year - 2000), byte(date.month), byte(date.day), 'C', 'I'};
}

Bytes recordSum(const UpdateRecord& record)
{
    const unsigned sum = std::accumulate(record.begin(), record.end(), 0U);
    return {static_cast<std::uint8_t>(sum / 256), static_cast<std::uint8_t>(sum % 256)};
}

} // namespace karvo
