#include "language/file_trouble.h"

#include <algorithm>
#include <iterator>

namespace karvo
{

namespace
{

struct Trouble {
    std::errc kind;
    Message message;
};

constexpr Trouble troubles[] = {
    {std::errc::no_such_file_or_directory, Message::fileNotFound},
    {std::errc::permission_denied, Message::fileAccessDenied},
    {std::errc::operation_not_permitted, Message::fileAccessDenied},
    {std::errc::read_only_file_system, Message::diskWriteProtected},
    {std::errc::no_space_on_device, Message::diskFull},
    {std::errc::device_or_resource_busy, Message::fileInUse},
    {std::errc::text_file_busy, Message::fileInUse},
    {std::errc::filename_too_long, Message::fileNameTooLong},
    {std::errc::file_exists, Message::fileNameTaken},
    {std::errc::is_a_directory, Message::fileNameTaken},
    {std::errc::not_a_directory, Message::fileNameTaken},
    {std::errc::io_error, Message::diskFaulty},
    {std::errc::no_such_device, Message::diskFaulty},
    {std::errc::no_such_device_or_address, Message::diskFaulty},
};

} // namespace

Text fileTroubleText(const std::error_code& error, const LanguageTables& texts, const Files& files)
{
    const auto* const known = std::find_if(std::begin(troubles), std::end(troubles),
                                           [&](const Trouble& trouble) { return error == trouble.kind; });
    const Text words = known == std::end(troubles) ? Text() : texts.message(known->message);
    return words.empty() ? files.systemWords(error) : words;
}

} // namespace karvo
