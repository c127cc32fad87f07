#include "platform/caller.h"

#include "platform/console.h"

namespace karvo
{

std::vector<std::string> argumentsOf(int count, char** values)
{
    return {values + 1, values + count};
}

void tellCaller(CallerNews news, const std::string& lines)
{
    print(news == CallerNews::answer ? StandardStream::out : StandardStream::err, lines);
}

} // namespace karvo
