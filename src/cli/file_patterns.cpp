#include "cli/file_patterns.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

bool matches(TextView name, TextView pattern)
{
    std::size_t at = 0;
    std::size_t next = 0;
    std::size_t behindStar = Text::npos; // of the pattern; what stands there was tried at `tried` last
    std::size_t tried = 0;
    while (at < name.size()) {
        if (next < pattern.size() && pattern[next] == u'*') {
            behindStar = ++next;
            tried = at;
        } else if (next < pattern.size() && (pattern[next] == u'?' || pattern[next] == name[at])) {
            ++next;
            ++at;
        } else if (behindStar != Text::npos) {
            next = behindStar;
            at = ++tried;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', next) == Text::npos;
}

} // namespace

std::vector<std::filesystem::path> filesMeant(Files& files, const std::filesystem::path& word)
{
    const Text pattern = lowerCase(pathText(word.filename()));
    if (pattern.find_first_of(u"*?") == Text::npos)
        return {word};
    const auto folder = word.parent_path();
    std::vector<std::filesystem::path> meant;
    for (const auto& [name, isFolder] : files.list(folder.empty() ? "." : folder)) {
        if (!isFolder && matches(lowerCase(pathText(name)), pattern))
            meant.push_back(folder / name);
    }
    return meant.empty() ? std::vector{word} : meant;
}

} // namespace karvo
