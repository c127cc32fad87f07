#include "cvdata/description_library.h"

#include "cvdata/cv_use.h"
#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "cvdata/receiver_releases.h"

#include <algorithm>

namespace karvo
{

namespace
{

using Kind = LibraryFault::Kind;

std::optional<LibraryFault> leftOutOf(const std::filesystem::path& file,
                                      const std::vector<DescriptionFault>& faults)
{
    if (faults.empty())
        return std::nullopt;
    const auto end = std::find_if(faults.begin(), faults.end(), [](const DescriptionFault& fault) {
        return fault.kind == DescriptionFault::Kind::noEnd;
    });
    if (end != faults.end())
        return LibraryFault{Kind::cutOff, file, 0, end->line};
    const auto first = std::min_element(
        faults.begin(), faults.end(),
        [](const DescriptionFault& one, const DescriptionFault& other) { return one.line < other.line; });
    return LibraryFault{Kind::linesLeftOut, file, faults.size(), first->line};
}

void noteFaultyLines(ExpertKnowledge& knowledge, const std::filesystem::path& file,
                     const std::vector<int>& lines)
{
    if (!lines.empty())
        knowledge.faults.push_back({Kind::linesLeftOut, file, lines.size(), lines.front()});
}

} // namespace

std::optional<Bytes> DescriptionLibrary::contentOf(const std::filesystem::path& file) const
{
    return files_.readWhole(file, textFileLimit);
}

LibraryDescription DescriptionLibrary::describe(const std::string& fileName,
                                                const DecoderProfile& profile) const
{
    LibraryDescription description{folder_ / fileName, {}, {}, {}};
    const auto content = contentOf(description.file);
    if (content)
        description.content = parseDescription(*content);
    if (!description.content) {
        description.faults.push_back({content ? Kind::notADescription : Kind::cannotOpen, description.file});
        return description;
    }
    const auto companionName = textCompanionName(fileName, language_);
    if (!companionName.empty())
        takeWords(description, companionName);
    if (releaseOf(profile))
        leaveOutLaterCvs(*description.content, profile);
    else
        addReleaseRemarks(description.content->table, texts_.message(Message::onlyFromFirmware));
    description.leftOut = leftOutOf(description.file, description.content->faults);
    return description;
}

// Rows that the companion does not describe keep the words they have.
void DescriptionLibrary::takeWords(LibraryDescription& description, const std::string& companionName) const
{
    const auto file = folder_ / companionName;
    const auto content = contentOf(file);
    const auto companion = content ? parseDescription(*content) : std::nullopt;
    if (!companion) {
        description.faults.push_back({Kind::wordsMissing, file});
        return;
    }
    if (const auto leftOut = leftOutOf(file, companion->faults))
        description.faults.push_back(*leftOut);
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (companion->table.describes(row))
            takeTexts(description.content->table, row, companion->table, row);
    }
}

ExpertKnowledge DescriptionLibrary::expertKnowledge(const std::string& fileName, const CvTable& table) const
{
    ExpertKnowledge knowledge{folder_ / fileName, {}, {}};
    if (!opensExpertFiles_)
        return knowledge;
    const auto content = contentOf(knowledge.file);
    auto file = content ? parseExpertFile(*content) : std::nullopt;
    if (!file) {
        knowledge.faults.push_back({content ? Kind::notAnExpertFile : Kind::cannotOpen, knowledge.file});
        return knowledge;
    }
    noteFaultyLines(knowledge, knowledge.file, file->faultyLines);
    knowledge.entries = std::move(file->entries);
    const auto companionName = textCompanionName(fileName, language_);
    if (!companionName.empty())
        takeWords(knowledge, companionName);
    std::erase_if(knowledge.entries, [&](const auto& entry) { return !isUsed(table, entry.first); });
    return knowledge;
}

void DescriptionLibrary::takeWords(ExpertKnowledge& knowledge, const std::string& companionName) const
{
    const auto file = folder_ / companionName;
    const auto content = contentOf(file);
    const auto companion = content ? parseExpertFile(*content) : std::nullopt;
    if (!companion) {
        knowledge.faults.push_back({Kind::wordsMissing, file});
        return;
    }
    noteFaultyLines(knowledge, file, companion->faultyLines);
    for (const auto& [cv, entry] : companion->entries)
        knowledge.entries[cv] = entry;
}

} // namespace karvo
