// The recovery file of this run: another one than that of a program that runs beside it.
#pragma once

#include <QLockFile>

#include <filesystem>

#include <memory>

class QDir;

namespace karvo
{

class RecoverySlot
{
public:
    // The first file that no running program has, one that holds something before an empty place. Nothing
    // when no file can be made in the folder. Only the places that are tried are locked, and only the one
    // that is taken stays so.
    static std::unique_ptr<RecoverySlot> take(const std::filesystem::path& folder);

    const std::filesystem::path& file() const { return file_; }

private:
    static std::unique_ptr<RecoverySlot> takePlace(const QDir& dir, int place);

    RecoverySlot(std::unique_ptr<QLockFile> lock, std::filesystem::path file)
        : lock_(std::move(lock)), file_(std::move(file))
    {
    }

    std::unique_ptr<QLockFile> lock_; // held for the whole run; that of a program that crashed is free
    std::filesystem::path file_;
};

} // namespace karvo
