#include "workbench/recovery.h"

#include "cvdata/changes.h"
#include "cvdata/dcc_address.h"
#include "cvdata/description_fields.h"
#include "cvdata/list_file.h"
#include "language/file_trouble.h"
#include "program/path_text.h"
#include "workbench/list_files.h"
#include "workbench/put_on_bench.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace karvo
{

namespace
{

// The first line names the list file that was open, as UTF-8. The second holds, for each CV that is marked as
// changed, the value that it is a change of: "3=4;29=;". The list follows.
constexpr std::string_view mark = "Karvo recovery;";

struct Kept {
    std::filesystem::path listPath;
    std::map<int, Text> before; // by CV; empty for a CV that had no value
    std::span<const std::uint8_t> list;
};

std::string beforeText(const CvSet& set)
{
    std::string text;
    for (const int cv : changedCvs(set))
        text += std::to_string(cv) + "=" + utf8FromText((*set.baseline)[static_cast<std::size_t>(cv)]) + ";";
    return text;
}

std::map<int, Text> beforeFrom(TextView line)
{
    std::map<int, Text> before;
    for (const TextView field : fieldsOf(line)) {
        const auto equals = std::min(field.find(u'='), field.size());
        const auto cv = numberFromText(field.substr(0, equals));
        if (cv && *cv >= 1 && *cv <= CvTable::lastRow && equals < field.size())
            before[*cv] = field.substr(equals + 1);
    }
    return before;
}

Bytes keptContent(const CvSet& set)
{
    const std::string lines =
        std::string(mark) + utf8FromText(pathText(set.listPath)) + "\r\n" + beforeText(set) + "\r\n";
    Bytes content(lines.begin(), lines.end());
    const Bytes list = listFileContent(set);
    content.insert(content.end(), list.begin(), list.end());
    return content;
}

std::filesystem::path pathFromText(const Text& text)
{
    if constexpr (sizeof(std::filesystem::path::value_type) == 2)
        return std::filesystem::path(text);
    else
        return std::filesystem::path(utf8FromText(text));
}

// The next line without its end; nothing when no end comes. `content` goes on behind it.
std::optional<std::string> takeLine(std::span<const std::uint8_t>& content)
{
    const auto end = std::find(content.begin(), content.end(), static_cast<std::uint8_t>('\n'));
    if (end == content.end())
        return std::nullopt;
    std::string line(content.begin(), end);
    content = content.subspan(line.size() + 1);
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

std::optional<Kept> keptIn(std::span<const std::uint8_t> content)
{
    const auto first = takeLine(content);
    const auto second = first ? takeLine(content) : std::nullopt;
    if (!second || !first->starts_with(mark))
        return std::nullopt;
    return Kept{pathFromText(textFromUtf8(std::string_view(*first).substr(mark.size()))),
                beforeFrom(textFromUtf8(*second)), content};
}

// What is kept stays on disk meanwhile, though the list is at first without changes.
bool takeKept(Workbench& bench, const Kept& kept)
{
    const auto file = std::exchange(bench.state.recovery.file, {});
    const bool taken = takeListContent(bench, kept.list, kept.listPath);
    bench.state.recovery.file = file;
    if (!taken)
        return false;
    CvSet& set = bench.state.set;
    for (const auto& [cv, value] : kept.before)
        (*set.baseline)[static_cast<std::size_t>(cv)] = value;
    set.unsavedChanges = true;
    fillList(bench);
    return true;
}

// "recovery-1.kvr.old", or the first of ".old2" and so on that is free: what was put aside before stays.
std::filesystem::path asidePath(Files& files, const std::filesystem::path& file)
{
    for (int number = 1;; ++number) {
        auto aside = file;
        aside += ".old" + (number == 1 ? std::string() : std::to_string(number));
        if (!files.exists(aside))
            return aside;
    }
}

// "C:\lists\bus.kvr", or "Standard KV07 F5, Address: 3" where the values have no file.
Text nameOf(const LanguageTables& texts, const Kept& kept)
{
    if (!kept.listPath.empty())
        return pathText(kept.listPath);
    const auto parsed = parseListFile(kept.list);
    const auto* const list = std::get_if<ListFile>(&parsed);
    if (list == nullptr)
        return u"---";
    const Text& header = list->header();
    const Text address = firstAddress(list->table);
    const Text model = header.substr(0, header.find(u'*'));
    return address.empty() ? model : model + u", " + texts.caption(Caption::address) + u" " + address;
}

Text questionAbout(Workbench& bench, const Kept& kept)
{
    const auto& file = bench.state.recovery.file;
    const auto time = bench.files.changedAt(file);
    return bench.state.texts.message(
        Message::recoveryQuestion,
        {nameOf(bench.state.texts, kept), time ? momentText(*time) : Text(u"---"),
         textFromNumber(static_cast<long long>(kept.before.size())), pathText(asidePath(bench.files, file))});
}

} // namespace

void keepRecovery(Workbench& bench)
{
    RecoveryState& recovery = bench.state.recovery;
    if (recovery.file.empty())
        return;
    const CvSet& set = bench.state.set;
    if (!set.unsavedChanges || set.isEmpty())
        return dropRecovery(recovery, bench.files);
    const auto error = bench.files.saveAtomically(recovery.file, keptContent(set));
    recovery.holdsChanges = !error;
    if (!error || std::exchange(recovery.troubleShown, true))
        return;
    bench.prompts.message(bench.state.texts.message(Message::recoveryNotKept,
                                                    {pathText(recovery.file),
                                                     fileTroubleText(error, bench.state.texts, bench.files)}),
                          PromptIcon::warning);
}

bool offerRecovery(Workbench& bench)
{
    const auto& file = bench.state.recovery.file;
    const auto content = file.empty() ? std::nullopt : bench.files.readWhole(file, textFileLimit);
    if (!content)
        return false;
    const auto kept = keptIn(*content);
    const bool wanted =
        kept && bench.prompts.question(questionAbout(bench, *kept), QuestionKind::usual, ProposedAnswer::yes);
    if (wanted && takeKept(bench, *kept))
        return true;
    // A wrong click or a damaged file costs nothing: it can still be opened by hand.
    const auto error = bench.files.saveAtomically(
        asidePath(bench.files, file), kept ? Bytes(kept->list.begin(), kept->list.end()) : *content);
    if (!error) {
        bench.files.remove(file);
        return false;
    }
    // Then it stays where it is, and nothing of this run is written over it.
    bench.prompts.message(
        bench.state.texts.message(Message::recoveryNotKept,
                                  {pathText(file), fileTroubleText(error, bench.state.texts, bench.files)}),
        PromptIcon::warning);
    bench.state.recovery.file.clear();
    return false;
}

Text withUnsavedWork(const ProgramState& state, Text text)
{
    if (state.recovery.holdsChanges)
        text += Text(lineBreak) + state.texts.message(Message::unsavedWorkKept);
    return text;
}

void dropRecovery(RecoveryState& recovery, Files& files)
{
    recovery.holdsChanges = false;
    if (!recovery.file.empty() && files.exists(recovery.file))
        files.remove(recovery.file);
}

} // namespace karvo
