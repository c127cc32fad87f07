#include "workbench/library_faults.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

using Kind = LibraryFault::Kind;

bool isToldEachTime(Kind kind)
{
    return kind == Kind::cannotOpen || kind == Kind::notADescription;
}

Text faultText(const LanguageTables& texts, const LibraryFault& fault)
{
    const Text file = pathText(fault.file);
    const Text line = textFromNumber(fault.line);
    switch (fault.kind) {
    case Kind::cannotOpen:
        break;
    case Kind::notADescription:
        return texts.message(Message::notADescription, {file});
    case Kind::notAnExpertFile:
        return texts.message(Message::notAnExpertFile, {file});
    case Kind::wordsMissing:
        return texts.message(Message::wordsMissing, {file});
    case Kind::linesLeftOut:
        return texts.message(Message::descriptionFaults,
                             {file, textFromNumber(static_cast<long long>(fault.count)), line});
    case Kind::cutOff:
        return texts.message(Message::descriptionCutOff, {file, line});
    }
    return joined({texts.message(Message::cannotOpenFile), u" ", file, lineBreak,
                   texts.message(Message::cannotOpenFileAdvice)});
}

} // namespace

void showCannotOpen(Prompts& prompts, const LanguageTables& texts, const std::filesystem::path& path)
{
    prompts.message(faultText(texts, {Kind::cannotOpen, path}), PromptIcon::warning);
}

void tellFaults(Workbench& bench, std::span<const LibraryFault> faults)
{
    for (const LibraryFault& fault : faults) {
        if (isToldEachTime(fault.kind) || bench.state.faultyFiles.insert(fault.file).second)
            bench.prompts.message(faultText(bench.state.texts, fault), PromptIcon::warning);
    }
}

std::optional<Description> describeOrTell(Workbench& bench, const std::string& fileName,
                                          const DecoderProfile& profile)
{
    auto description = bench.library().describe(fileName, profile);
    tellFaults(bench, description.faults);
    return std::move(description.content);
}

} // namespace karvo
