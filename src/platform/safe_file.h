// A file that is written under a temporary name in its own folder and takes its place when it is complete on
// disk. Until then, and for good if it never is, the old file stays as it is.
#pragma once

#include "program/text.h"

#include <QFile>

#include <filesystem>

namespace karvo
{

class SafeFile
{
public:
    // A link is followed: what it leads to is replaced.
    explicit SafeFile(const std::filesystem::path& target);
    ~SafeFile(); // removes what was not committed
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    // Each returns false when it fails; reason() then has the system's words. What other programs left in the
    // folder is cleared on the way.
    bool open();
    bool write(const QByteArray& bytes);
    bool commit();

    Text reason() const { return reason_; }

private:
    bool fail(const std::error_code& error);
    bool failAsFile();

    std::filesystem::path target_;
    std::filesystem::path temporary_; // empty: there is none
    QFile file_;
    Text reason_;
};

} // namespace karvo
