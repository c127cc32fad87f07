#include "firmware/unzip.h"

#include "firmware/archive_names.h"
#include "firmware/staged_files.h"
#include "language/file_trouble.h"
#include "program/path_text.h"

#include <set>

namespace karvo
{

namespace
{

class Unpacking : public ArchiveSink
{
public:
    Unpacking(const UnzipPlace& place, WorkObserver& observer, const UnzipLimits& limits)
        : staged_(place.folder, place.staging), observer_(observer), limits_(limits)
    {
    }

    UnzipResult run(Archive& archive, const std::filesystem::path& file)
    {
        std::error_code unknown;
        if (!std::filesystem::exists(file, unknown))
            return {UnzipEnd::missing, pathText(file), {}};
        if (refuse(staged_.begin()))
            return result_;
        const auto words = archive.read(file, *this);
        if (result_.end != UnzipEnd::unpacked)
            return result_;
        if (words)
            return {UnzipEnd::notReadable, pathText(file), *words};
        if (!hasEntry_)
            return {UnzipEnd::empty, pathText(file), {}};
        if (!refuse(staged_.finishFile()))
            refuse(staged_.place());
        return result_;
    }

    bool takeEntry(const ArchiveEntry& entry) override
    {
        if (refuse(staged_.finishFile()) || !mayGoOn())
            return false;
        if (++entries_ > limits_.entries)
            return end(UnzipEnd::tooMany);
        if (entry.encrypted)
            return end(UnzipEnd::encrypted);
        if (entry.kind == ArchiveEntry::Kind::other)
            return end(UnzipEnd::linkRefused, textFromUtf8(entry.name));
        const bool isFolder = entry.kind == ArchiveEntry::Kind::folder;
        if (isFolder && isHere(entry.name))
            return true;
        hasEntry_ = true;
        const auto path = pathOfEntry(entry.name);
        if (!path || !claim(*path, isFolder))
            return end(UnzipEnd::nameRefused, textFromUtf8(entry.name));
        if (!isFolder)
            return !refuse(staged_.startFile(*path));
        staged_.addFolder(*path);
        return true;
    }

    bool takeBytes(std::span<const std::uint8_t> bytes) override
    {
        unpacked_ += bytes.size();
        if (unpacked_ > limits_.bytes)
            return end(UnzipEnd::tooLarge);
        return !refuse(staged_.append(bytes)) && mayGoOn();
    }

private:
    bool end(UnzipEnd why, Text about = {})
    {
        result_ = {why, std::move(about), {}};
        return false;
    }

    bool mayGoOn()
    {
        observer_.showProgress(unpacked_, 0);
        return !observer_.stopRequested() || end(UnzipEnd::stopped);
    }

    // True for a fault.
    bool refuse(const std::optional<PlaceFault>& fault)
    {
        if (fault)
            result_ = {UnzipEnd::notPlaced, pathText(fault->path), {}, fault->error};
        return fault.has_value();
    }

    // Every file has a name of its own, on systems that mind letter case and on those that do not, and no
    // file is a folder too.
    bool claim(const std::filesystem::path& path, bool isFolder)
    {
        for (auto above = path.parent_path(); !above.empty(); above = above.parent_path()) {
            if (!claimFolder(lowerCase(pathText(above))))
                return false;
        }
        const Text name = lowerCase(pathText(path));
        if (isFolder)
            return claimFolder(name);
        return !folders_.contains(name) && files_.insert(name).second;
    }

    bool claimFolder(const Text& name)
    {
        folders_.insert(name);
        return !files_.contains(name);
    }

    StagedFiles staged_;
    WorkObserver& observer_;
    const UnzipLimits limits_;
    UnzipResult result_;
    std::set<Text> files_;
    std::set<Text> folders_;
    std::size_t entries_ = 0;
    bool hasEntry_ = false; // other than the folder itself
    std::uint64_t unpacked_ = 0;
};

std::optional<Message> messageNumberOf(UnzipEnd end)
{
    switch (end) {
    case UnzipEnd::unpacked:
    case UnzipEnd::stopped:
        break;
    case UnzipEnd::missing:
        return Message::archiveMissing;
    case UnzipEnd::empty:
        return Message::archiveEmpty;
    case UnzipEnd::notReadable:
        return Message::archiveNotReadable;
    case UnzipEnd::nameRefused:
        return Message::archiveNameRefused;
    case UnzipEnd::linkRefused:
        return Message::archiveLinkRefused;
    case UnzipEnd::encrypted:
        return Message::archiveEncrypted;
    case UnzipEnd::tooMany:
        return Message::archiveTooMany;
    case UnzipEnd::tooLarge:
        return Message::archiveTooLarge;
    case UnzipEnd::notPlaced:
        return Message::archiveNotPlaced;
    }
    return std::nullopt;
}

} // namespace

UnzipResult unzip(Archive& archive, const std::filesystem::path& file, const UnzipPlace& place,
                  WorkObserver& observer, const UnzipLimits& limits)
{
    return Unpacking(place, observer, limits).run(archive, file);
}

std::optional<Text> messageOf(const UnzipResult& result, const LanguageTables& texts, const Files& files)
{
    const auto number = messageNumberOf(result.end);
    if (!number)
        return std::nullopt;
    return texts.message(
        *number, {result.about, result.error ? fileTroubleText(result.error, texts, files) : result.words});
}

} // namespace karvo
