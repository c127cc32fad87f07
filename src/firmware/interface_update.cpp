#include "firmware/interface_update.h"

#include "firmware/firmware_file.h"
#include "firmware/update_checks.h"
#include "firmware/update_transfer.h"
#include "link/exchange.h"
#include "link/identification.h"
#include "program/bytes.h"
#include "program/path_text.h"
#include "workbench/line_use.h"
#include "workbench/recovery.h"

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds betweenLetters = 10ms; // a minimum: the interface's receiver is slow
constexpr std::size_t identificationLength = 2;

struct ChosenUpdate {
    std::filesystem::path path;
    UpdateFile file;
};

bool isUpdatable(std::optional<TypeCode> model)
{
    return model && (isKv07OrKv08(*model) || *model == TypeCode::receiver);
}

// `more`: a line below, of what that means and what to do.
UpdateEnd reportNoReply(Workbench& bench, std::optional<Message> more)
{
    bench.port.close();
    const LanguageTables& texts = bench.state.texts;
    bench.prompts.message(texts.message(Message::noReply) +
                          (more ? Text(lineBreak) + texts.message(*more) : Text()));
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
    if (!bench.prompts.question(withUnsavedWork(bench.state, text)))
        bench.prompts.endProgram();
    return UpdateEnd::portRefused;
}

// An interface that has not been asked in this run is asked once: behind an update that broke off it may
// answer while the decoder cannot be read. Nothing when it has answered.
std::optional<UpdateEnd> findInterface(Workbench& bench)
{
    if (bench.state.link.interfaceAnswered)
        return std::nullopt;
    if (const auto end = openPort(bench))
        return *end;
    Link link = bench.link();
    const auto asked = askForPresence(link);
    if (asked == ExchangeEnd::replied)
        return std::nullopt;
    if (asked == ExchangeEnd::ended)
        return UpdateEnd::ended;
    bench.port.close();
    const LanguageTables& texts = bench.state.texts;
    bench.prompts.message(texts.message(Message::interfaceSilent1) + Text(lineBreak) +
                          texts.message(Message::interfaceSilent2));
    return UpdateEnd::notAnswered;
}

std::optional<UpdateEnd> awaitReplyOrReport(Workbench& bench, std::size_t count,
                                            std::optional<Message> more = std::nullopt)
{
    Link link = bench.link();
    switch (awaitReply(link, count)) {
    case ReplyEnd::replied:
        return std::nullopt;
    case ReplyEnd::ended:
        return UpdateEnd::ended;
    default:
        return reportNoReply(bench, more);
    }
}

// The decoder's type code, or why it can not be updated.
std::variant<TypeCode, UpdateEnd> askModel(Workbench& bench)
{
    LinkState& state = bench.state.link;
    bench.port.readAll(); // what is left of an exchange before
    state.outgoingFrame = {'%'};
    bench.port.write(state.outgoingFrame);
    if (const auto end = awaitReplyOrReport(bench, identificationLength))
        return *end;
    const auto model = typeCodeOf(state.lastReply, ReadOnlyReceiver::refused);
    if (isUpdatable(model))
        return *model;
    bench.prompts.message(bench.state.texts.message(Message::modelNotUpdatable));
    return UpdateEnd::wrongModel;
}

// All that is unusual stands in one question.
bool mayBeSent(Prompts& prompts, const LanguageTables& texts, const ChosenUpdate& update, TypeCode model)
{
    auto findings = otherModelsIn(texts, update.file, update.path, model);
    for (Text& finding : unusualIn(texts, update.file))
        findings.push_back(std::move(finding));
    if (findings.empty())
        return true;
    Text question = updateHeaderText(texts, update.file) + Text(lineBreak);
    for (const Text& finding : findings)
        question += finding + Text(lineBreak);
    return prompts.question(question + texts.message(Message::updateFindingsQuestion));
}

// Sends the letters that call the interface's update mode.
std::optional<UpdateEnd> callUpdateMode(Workbench& bench, UpdateVerdict& verdict)
{
    bench.state.firmwareAtRisk = true;
    bench.state.link.lastReply.clear();
    breakLineRun(bench.state.link);
    bench.port.write({'B'});
    if (bench.wait.pause(betweenLetters) == WaitResult::ended)
        return UpdateEnd::ended;
    bench.port.write({'O'});
    if (const auto end = awaitReplyOrReport(bench, 1, Message::updateModeSilent))
        return *end;
    verdict.note(0, bench.state.link.lastReply);
    return std::nullopt;
}

Text runningText(const LanguageTables& texts)
{
    Text text;
    for (int number = static_cast<int>(Message::updateRunningFirst);
         number <= static_cast<int>(Message::updateRunningLast); ++number)
        text += (text.empty() ? Text() : Text(lineBreak)) + texts.message(static_cast<Message>(number));
    return text;
}

Text notConfirmedText(const LanguageTables& texts, const UpdateVerdict& verdict)
{
    const auto number = [](std::size_t value) { return textFromNumber(static_cast<long long>(value)); };
    const Text where = verdict.firstRefused() == 0
                           ? texts.caption(Caption::updateCallName)
                           : texts.caption(Caption::updateRecordName, {number(verdict.firstRefused())});
    return texts.message(Message::updateNotConfirmed,
                         {where, hexText(verdict.firstRefusal()), number(verdict.refusals())});
}

// What a list shows that was read from the decoder is what it held before.
void markListStale(Workbench& bench)
{
    CvSet& set = bench.state.set;
    if (set.isEmpty() || set.isOffline())
        return;
    set.precedesUpdate = true;
    bench.view.listChanged();
}

void tellEnd(Workbench& bench, UpdateEnd end, std::size_t records, const UpdateVerdict& verdict)
{
    const LanguageTables& texts = bench.state.texts;
    switch (end) {
    case UpdateEnd::brokenOff:
        bench.prompts.message(withUnsavedWork(bench.state, texts.message(Message::updateBrokenOff)),
                              PromptIcon::stop);
        bench.prompts.endProgram();
        break;
    case UpdateEnd::stopped:
        bench.prompts.message(texts.message(Message::updateStopped), PromptIcon::warning);
        break;
    case UpdateEnd::notConfirmed:
        markListStale(bench);
        bench.view.showStatus(texts.caption(Caption::updateUnconfirmed));
        bench.prompts.message(notConfirmedText(texts, verdict), PromptIcon::warning);
        break;
    case UpdateEnd::sent:
        markListStale(bench);
        bench.view.showStatus(
            texts.caption(Caption::updateAcknowledged, {textFromNumber(static_cast<long long>(records))}));
        break;
    default:
        break;
    }
}

UpdateEnd transfer(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file, UpdateVerdict& verdict)
{
    setup.observer.showStart(runningText(bench.state.texts));
    setup.observer.showProgress(0, file.records.size());
    const auto end = sendUpdate(bench, setup, file, verdict);
    setup.observer.showEnd();
    tellEnd(bench, end, file.records.size(), verdict);
    return end;
}

std::optional<ChosenUpdate> chooseUpdateFile(Workbench& bench, const UpdateSetup& setup)
{
    const auto path = setup.chooseFile();
    if (!path || path->filename() == proposedUpdate) {
        bench.prompts.message(bench.state.texts.message(Message::noUpdateChosen));
        return std::nullopt;
    }
    setup.showFile(*path);
    auto file = readUpdateFile(bench, *path);
    return file ? std::optional<ChosenUpdate>({*path, std::move(*file)}) : std::nullopt;
}

// Up to here nothing has changed in the decoder.
UpdateEnd sendChosen(Workbench& bench, const UpdateSetup& setup, const ChosenUpdate& update)
{
    bench.state.firmwareAtRisk = false;
    if (const auto end = openPort(bench))
        return *end;
    const auto model = askModel(bench);
    if (const auto* const end = std::get_if<UpdateEnd>(&model))
        return *end;
    setup.observer.showHeader(updateHeaderText(bench.state.texts, update.file));
    if (!mayBeSent(bench.prompts, bench.state.texts, update, std::get<TypeCode>(model)))
        return UpdateEnd::declined;
    if (setup.observer.stopRequested()) {
        bench.prompts.message(bench.state.texts.message(Message::updateStoppedBefore));
        return UpdateEnd::stopped;
    }
    UpdateVerdict verdict;
    if (const auto end = callUpdateMode(bench, verdict))
        return *end;
    return transfer(bench, setup, update.file, verdict);
}

} // namespace

std::optional<std::filesystem::path> chooseUpdate(Prompts& prompts, const LanguageTables& texts,
                                                  const std::filesystem::path& folder)
{
    return prompts.openFile({.title = texts.caption(Caption::updateTitle),
                             .folder = folder,
                             .filter = texts.caption(Caption::updateFiles) + u" (*.uhx *.UHX)",
                             .extension = u"uhx",
                             .name = Text(proposedUpdate)});
}

std::optional<UpdateFile> readUpdateFile(Workbench& bench, const std::filesystem::path& path)
{
    const auto content = readFirmwareFile(bench, path);
    if (!content)
        return std::nullopt;
    auto parsed = parseUpdateFile(*content);
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        bench.prompts.message(refusalText(bench.state.texts, path, *refusal));
        return std::nullopt;
    }
    return std::move(std::get<UpdateFile>(parsed));
}

UpdateEnd updateThroughInterface(Workbench& bench, const UpdateSetup& setup)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return UpdateEnd::lineBusy;
    if (const auto end = findInterface(bench))
        return *end;
    const auto update = chooseUpdateFile(bench, setup);
    return update ? sendChosen(bench, setup, *update) : UpdateEnd::noFile;
}

} // namespace karvo
