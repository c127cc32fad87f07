#include "workbench/user_folders.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

constexpr const char* shippedFolder = "original"; // of the program folder; the build writes it

struct Place {
    std::filesystem::path path;
    bool exists;
};

Place folderIn(Files& files, const std::filesystem::path& parent, const std::string& name)
{
    const Text wanted = lowerCase(textFromUtf8(name));
    for (const FolderEntry& entry : files.list(parent)) {
        if (entry.isFolder && lowerCase(pathText(entry.name)) == wanted)
            return {parent / entry.name, true};
    }
    return {parent / name, false};
}

UserFolder findUserFolder(Files& files, const std::filesystem::path& programFolder,
                          const std::filesystem::path& documentsFolder, const std::string& name)
{
    const Place beside = folderIn(files, programFolder, name);
    const auto shipped = folderBelow(files, programFolder, {shippedFolder, name.c_str()});
    if (files.canWriteInto(beside.exists ? beside.path : programFolder))
        return {beside.path, shipped, {}};
    return {folderIn(files, documentsFolder, name).path, shipped,
            beside.exists ? beside.path : std::filesystem::path()};
}

Text comparable(const std::filesystem::path& folder)
{
    return lowerCase(pathText(folder.lexically_normal()));
}

} // namespace

std::filesystem::path UserFolder::find(Files& files, const std::filesystem::path& name) const
{
    for (const auto& folder : {own, beside, shipped}) {
        if (!folder.empty() && files.exists(folder / name))
            return folder / name;
    }
    return own / name;
}

bool UserFolder::isShipped(const std::filesystem::path& file) const
{
    return !shipped.empty() && comparable(file.parent_path()) == comparable(shipped);
}

UserFolders findUserFolders(Files& files, const std::filesystem::path& programFolder,
                            const std::filesystem::path& documentsFolder)
{
    const auto folder = [&](const char* name) {
        return findUserFolder(files, programFolder, documentsFolder, name);
    };
    return {folder("CV_listen"), folder("FS_listen"), folder("ABS_listen"), folder("FKT_listen")};
}

std::filesystem::path folderBelow(Files& files, std::filesystem::path folder,
                                  std::initializer_list<const char*> names)
{
    for (const char* const name : names)
        folder = folderIn(files, folder, name).path;
    return folder;
}

} // namespace karvo
