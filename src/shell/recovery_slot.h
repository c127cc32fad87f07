// The recovery file of this run: another one than that of a program that runs beside it.
#pragma once

#include <QLockFile>

#include <filesystem>
#include <memory>

namespace karvo
{

class RecoverySlot
{
public:
    // The first file that no running program has, one that holds something before an empty place. Nothing
    // when the folder can not be made or all places are taken.
    static std::unique_ptr<RecoverySlot> take(const std::filesystem::path& folder);

    const std::filesystem::path& file() const { return file_; }

private:
    RecoverySlot(std::unique_ptr<QLockFile> lock, std::filesystem::path file)
        : lock_(std::move(lock)), file_(std::move(file))
    {
    }

    std::unique_ptr<QLockFile> lock_; // held for the whole run; that of a program that crashed is free
    std::filesystem::path file_;
};

} // namespace karvo
