#include "workbench/recovery.h"

#include "program/path_text.h"
#include "workbench/list_files.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace karvo
{

namespace
{

// The first line names the list file that was open, as UTF-8; the list follows.
constexpr std::string_view mark = "Karvo recovery;";

struct Kept {
    std::filesystem::path listPath;
    std::span<const std::uint8_t> list;
};

Bytes keptContent(const CvSet& set)
{
    const std::string line = std::string(mark) + utf8FromText(pathText(set.listPath)) + "\r\n";
    Bytes content(line.begin(), line.end());
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

std::optional<Kept> keptIn(std::span<const std::uint8_t> content)
{
    const auto end = std::find(content.begin(), content.end(), static_cast<std::uint8_t>('\n'));
    const std::string line(content.begin(), end);
    if (end == content.end() || !line.starts_with(mark))
        return std::nullopt;
    std::string path = line.substr(mark.size());
    path.erase(std::find(path.begin(), path.end(), '\r'), path.end());
    return Kept{pathFromText(textFromUtf8(path)),
                content.subspan(static_cast<std::size_t>(end - content.begin()) + 1)};
}

std::filesystem::path asidePath(const std::filesystem::path& file)
{
    auto aside = file;
    return aside += ".old";
}

} // namespace

void keepRecovery(Workbench& bench)
{
    RecoveryState& recovery = bench.state.recovery;
    if (recovery.file.empty())
        return;
    const CvSet& set = bench.state.set;
    if (!set.unsavedChanges || set.isEmpty())
        return dropRecovery(bench);
    const auto reason = bench.files.saveAtomically(recovery.file, keptContent(set));
    if (!reason || std::exchange(recovery.troubleShown, true))
        return;
    const Text arguments[] = {pathText(recovery.file), *reason};
    bench.prompts.message(filledIn(bench.state.texts.message(Message::recoveryNotKept), arguments),
                          PromptIcon::warning);
}

bool offerRecovery(Workbench& bench)
{
    const auto& file = bench.state.recovery.file;
    const auto content = file.empty() ? std::nullopt : bench.files.readWhole(file, textFileLimit);
    if (!content)
        return false;
    const auto kept = keptIn(*content);
    const Text name[] = {kept && !kept->listPath.empty() ? pathText(kept->listPath) : Text(u"---")};
    const bool wanted =
        kept && bench.prompts.question(filledIn(bench.state.texts.message(Message::recoveryQuestion), name));
    if (wanted && takeListContent(bench, kept->list, kept->listPath)) {
        bench.state.set.unsavedChanges = true;
        return true;
    }
    // A wrong click or a damaged file costs nothing: it can still be opened by hand.
    if (!bench.files.saveAtomically(asidePath(file),
                                    kept ? Bytes(kept->list.begin(), kept->list.end()) : *content))
        bench.files.remove(file);
    return false;
}

void dropRecovery(Workbench& bench)
{
    const auto& file = bench.state.recovery.file;
    if (!file.empty() && bench.files.exists(file))
        bench.files.remove(file);
}

} // namespace karvo
