#include "platform/safe_file.h"

#include "platform/temporary_files.h"
#include "platform/text_conversion.h"

#include <QFileInfo>

#include <system_error>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <unistd.h>
#endif

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

// Some file systems can not; the file is then as safe as they make it.
void syncToDisk(const QFile& file)
{
#ifdef Q_OS_WIN
    const HANDLE handle = CreateFileW(toPath(file.fileName()).c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return;
    FlushFileBuffers(handle);
    CloseHandle(handle);
#else
    ::fsync(file.handle());
#endif
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

bool SafeFile::open()
{
    const QFileInfo old(pathToQString(target_));
    // A device or a pipe would be replaced by a file.
    if (target_.empty() || (old.exists() && !old.isFile()))
        return fail(std::make_error_code(std::errc::invalid_argument));
    if (old.exists() && !old.isWritable())
        return fail(std::make_error_code(std::errc::permission_denied));
    clearLeftovers(target_.parent_path());
    const auto path = temporaryPath(target_.parent_path());
    file_.setFileName(pathToQString(path));
    if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return failAsFile();
    temporary_ = path;
    if (old.exists())
        file_.setPermissions(old.permissions());
    return true;
}

bool SafeFile::write(const QByteArray& bytes)
{
    return file_.write(bytes) == bytes.size() || failAsFile();
}

bool SafeFile::commit()
{
    syncToDisk(file_);
    file_.close();
    if (file_.error() != QFileDevice::NoError)
        return failAsFile();
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error)
        return fail(error);
    temporary_.clear();
    return true;
}

bool SafeFile::fail(const std::error_code& error)
{
    reason_ = toText(QString::fromLocal8Bit(error.message().c_str()));
    return false;
}

bool SafeFile::failAsFile()
{
    reason_ = toText(file_.errorString());
    return false;
}

} // namespace karvo
