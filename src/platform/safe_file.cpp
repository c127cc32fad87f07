#include "platform/safe_file.h"

#include "platform/temporary_files.h"
#include "platform/text_conversion.h"

#include <QFileInfo>

namespace karvo
{

namespace
{

namespace fs = std::filesystem;

fs::path behindLinks(const fs::path& path)
{
    std::error_code error;
    if (!fs::is_symlink(path, error))
        return path;
    const auto target = fs::weakly_canonical(path, error);
    return error ? path : target;
}

// Why what stands there can not be replaced. A device or a pipe would become a file.
std::error_code refusalOf(const fs::path& target)
{
    const QFileInfo old(pathToQString(target));
    if (target.empty())
        return std::make_error_code(std::errc::invalid_argument);
    if (old.exists() && !old.isFile())
        return std::make_error_code(std::errc::file_exists);
    if (old.exists() && !old.isWritable())
        return std::make_error_code(std::errc::permission_denied);
    return {};
}

} // namespace

SafeFile::SafeFile(const fs::path& target) : target_(behindLinks(target))
{
}

SafeFile::~SafeFile()
{
    file_.close();
    std::error_code ignored;
    if (!temporary_.empty())
        fs::remove(temporary_, ignored);
}

std::error_code SafeFile::open()
{
    if (const auto refusal = refusalOf(target_))
        return refusal;
    clearLeftovers(target_.parent_path());
    const auto path = temporaryPath(target_.parent_path());
    if (const auto error = file_.create(path))
        return error;
    temporary_ = path;
    std::error_code unknown;
    const auto old = fs::status(target_, unknown);
    if (fs::exists(old))
        fs::permissions(temporary_, old.permissions(), unknown);
    return {};
}

std::error_code SafeFile::commit()
{
    auto error = file_.sync();
    if (const auto closing = file_.close(); !error)
        error = closing;
    if (!error)
        error = replaceFile(temporary_, target_);
    if (!error)
        temporary_.clear();
    return error;
}

} // namespace karvo
