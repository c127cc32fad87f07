#include "firmware/firmware_file.h"

#include "program/path_text.h"

namespace karvo
{

std::optional<Bytes> readFirmwareFile(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    if (auto content = bench.files.readWhole(path, firmwareFileLimit))
        return content;
    if (bench.files.sizeOf(path) > firmwareFileLimit) {
        bench.prompts.message(texts.message(Message::firmwareFileTooLarge,
                                            {pathText(path), textFromNumber(firmwareFileLimit / megabyte)}));
    } else
        bench.prompts.message(texts.message(Message::cannotOpenFile) + u" " + pathText(path) + u" " +
                              texts.message(Message::cannotOpenFileAdvice));
    return std::nullopt;
}

} // namespace karvo
