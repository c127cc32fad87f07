#include "firmware/interface_update.h"

#include "firmware/reply_wait.h"
#include "link/exchange.h"
#include "link/identification.h"
#include "program/path_text.h"
#include "workbench/line_use.h"
#include "workbench/recovery.h"

#include <numeric>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

// The interface's receiver is slow: these are minimums.
constexpr std::chrono::milliseconds afterFirstByte = 5ms;
constexpr std::chrono::milliseconds aroundLetters = 10ms;
constexpr std::chrono::milliseconds beforeRecords = 25ms;
constexpr std::chrono::milliseconds beforeSum = 50ms;

constexpr std::size_t identificationLength = 2;
constexpr int receiverCode = 80;

bool isUpdatable(std::optional<int> model)
{
    return model && (*model == 7 || *model == 8 || *model == receiverCode);
}

// Ends the transfer from wherever it stands.
struct Interrupted {
    UpdateEnd end;
};

class Transfer
{
public:
    Transfer(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file)
        : bench_(bench), setup_(setup), file_(file)
    {
    }

    UpdateEnd run()
    {
        try {
            return sendAll();
        } catch (const Interrupted& interrupted) {
            return interrupted.end;
        }
    }

private:
    UpdateEnd sendAll()
    {
        announce();
        const std::size_t total = file_.records.size();
        for (std::size_t sent = 0; sent < total;) {
            sendRecord(file_.records[sent]);
            ++sent;
            const bool endsABlock = sent % recordsOfABlock == 0 || sent == total;
            if (endsABlock)
                pause(aroundLetters);
            setup_.observer.showRecords(sent, total);
            if (endsABlock && sent != total && setup_.observer.stopRequested())
                return UpdateEnd::stopped;
        }
        return close();
    }

    // Nothing answers the closing block: whether it went out shows only in the port that took it.
    UpdateEnd close()
    {
        if (bench_.port.isOpen())
            bench_.port.write(closingBlock(setup_.clock.now()));
        return bench_.port.isOpen() ? UpdateEnd::sent : UpdateEnd::brokenOff;
    }

    void announce()
    {
        pause(beforeRecords);
        sendAndWait({'A'});
        sendAndWait(file_.start);
        const auto command = windows1252FromText(bench_.state.texts.message(Message::updateCommand));
        sendAndWait(command.value_or(Bytes()));
    }

    void sendRecord(const UpdateRecord& record)
    {
        bench_.port.write({record.front()});
        pause(afterFirstByte);
        for (std::size_t i = 1; i < record.size(); ++i)
            bench_.port.write({record[i]});
        pause(beforeSum);
        sendAndWait(recordSum(record));
    }

    void pause(std::chrono::milliseconds duration)
    {
        if (bench_.wait.pause(duration) == WaitResult::ended)
            throw Interrupted{UpdateEnd::ended};
    }

    // The reply is not examined.
    void sendAndWait(const Bytes& bytes)
    {
        Link link = bench_.link();
        link.state.outgoingFrame = bytes;
        link.port.write(bytes);
        const auto end = awaitReply(link, 1);
        if (end != ReplyEnd::replied)
            throw Interrupted{end == ReplyEnd::ended ? UpdateEnd::ended : UpdateEnd::brokenOff};
    }

    Workbench& bench_;
    const UpdateSetup& setup_;
    const UpdateFile& file_;
};

UpdateEnd reportNoReply(Workbench& bench)
{
    bench.port.close();
    bench.prompts.message(bench.state.texts.message(Message::noReply));
    return UpdateEnd::noReply;
}

// Nothing when the port is open.
std::optional<UpdateEnd> openPort(Workbench& bench)
{
    if (bench.port.isOpen() && !bench.state.link.otherSettings)
        return std::nullopt;
    const auto error = tryToOpen(bench.state.link, bench.port);
    if (!error)
        return std::nullopt;
    const Text text = Text(lineBreak) + Text(lineBreak) + error->description +
                      bench.state.texts.message(Message::updateNotStartedQuestion);
    if (bench.prompts.question(withUnsavedWork(bench.state, text)))
        return UpdateEnd::portRefused;
    bench.prompts.endProgram();
    return UpdateEnd::ended;
}

std::optional<UpdateEnd> awaitReplyOrReport(Workbench& bench, std::size_t count)
{
    Link link = bench.link();
    switch (awaitReply(link, count)) {
    case ReplyEnd::replied:
        return std::nullopt;
    case ReplyEnd::ended:
        return UpdateEnd::ended;
    default:
        return reportNoReply(bench);
    }
}

std::optional<UpdateEnd> askModel(Workbench& bench)
{
    LinkState& state = bench.state.link;
    bench.port.readAll(); // what is left of an exchange before
    state.outgoingFrame = {'%'};
    bench.port.write(state.outgoingFrame);
    if (const auto end = awaitReplyOrReport(bench, identificationLength))
        return end;
    if (!isUpdatable(typeCodeOf(state.lastReply, ReadOnlyReceiver::refused))) {
        bench.prompts.message(bench.state.texts.message(Message::modelNotUpdatable));
        return UpdateEnd::wrongModel;
    }
    return std::nullopt;
}

// Sends the letters that call the interface's update mode.
std::optional<UpdateEnd> callUpdateMode(Workbench& bench)
{
    bench.state.link.lastReply.clear();
    breakLineRun(bench.state.link);
    bench.port.write({'B'});
    if (bench.wait.pause(aroundLetters) == WaitResult::ended)
        return UpdateEnd::ended;
    bench.port.write({'O'});
    return awaitReplyOrReport(bench, 1);
}

Text runningText(const LanguageTables& texts)
{
    Text text;
    for (int number = static_cast<int>(Message::updateRunningFirst);
         number <= static_cast<int>(Message::updateRunningLast); ++number)
        text += (text.empty() ? Text() : Text(lineBreak)) + texts.message(static_cast<Message>(number));
    return text;
}

UpdateEnd transfer(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file)
{
    setup.observer.showStart(runningText(bench.state.texts));
    setup.observer.showRecords(0, file.records.size());
    const auto end = Transfer(bench, setup, file).run();
    setup.observer.showEnd();
    if (end == UpdateEnd::brokenOff) {
        const Text text = bench.state.texts.message(Message::updateBrokenOff);
        bench.prompts.message(withUnsavedWork(bench.state, text), PromptIcon::stop);
        bench.prompts.endProgram();
    } else if (end == UpdateEnd::sent)
        bench.view.showStatus(bench.state.texts.caption(Caption::updateSent));
    return end;
}

std::optional<UpdateFile> chooseUpdateFile(Workbench& bench, const UpdateSetup& setup)
{
    const auto path = setup.chooseFile();
    if (!path || path->filename() == proposedUpdate) {
        bench.prompts.message(bench.state.texts.message(Message::noUpdateChosen));
        return std::nullopt;
    }
    setup.showFile(*path);
    return readUpdateFile(bench, *path);
}

} // namespace

std::optional<std::filesystem::path> chooseUpdate(Workbench& bench, const std::filesystem::path& folder)
{
    const LanguageTables& texts = bench.state.texts;
    return bench.prompts.openFile({.title = texts.caption(Caption::updateTitle),
                                   .folder = folder,
                                   .filter = texts.caption(Caption::updateFiles) + u" (*.uhx *.UHX)",
                                   .extension = u"uhx",
                                   .name = Text(proposedUpdate)});
}

std::optional<UpdateFile> readUpdateFile(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    const auto content = bench.files.readWhole(path, firmwareFileLimit);
    if (!content) {
        bench.prompts.message(texts.message(Message::cannotOpenFile) + u" " + pathText(path) + u" " +
                              texts.message(Message::cannotOpenFileAdvice));
        return std::nullopt;
    }
    auto parsed = parseUpdateFile(*content);
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        bench.prompts.message(refusalText(texts, path, *refusal));
        return std::nullopt;
    }
    return std::move(std::get<UpdateFile>(parsed));
}

UpdateEnd updateThroughInterface(Workbench& bench, const UpdateSetup& setup)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return UpdateEnd::lineBusy;
    const LanguageTables& texts = bench.state.texts;
    if (!bench.state.link.interfaceAnswered) {
        bench.prompts.message(texts.message(Message::interfaceSilent1) + Text(lineBreak) +
                              texts.message(Message::interfaceSilent2));
        return UpdateEnd::notAnswered;
    }
    const auto file = chooseUpdateFile(bench, setup);
    if (!file)
        return UpdateEnd::noFile;
    if (const auto end = openPort(bench))
        return *end;
    if (const auto end = askModel(bench))
        return *end;
    if (setup.observer.stopRequested())
        return UpdateEnd::stopped; // nothing has changed in the decoder yet
    if (const auto end = callUpdateMode(bench))
        return *end;
    return transfer(bench, setup, *file);
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
