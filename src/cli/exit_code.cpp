#include "cli/exit_code.h"

namespace karvo
{

namespace
{

struct Exit {
    int number;
    std::string_view word;
};

Exit exitOf(ExitCode code)
{
    switch (code) {
    case ExitCode::done:
        return {0, "done"};
    case ExitCode::listsDiffer:
        return {1, "listsDiffer"};
    case ExitCode::cannotCompare:
        return {2, "cannotCompare"};
    case ExitCode::fileTrouble:
        return {1, "fileTrouble"};
    case ExitCode::wrongArguments:
        return {2, "wrongArguments"};
    case ExitCode::portRefused:
        return {3, "portRefused"};
    case ExitCode::noReply:
        return {4, "noReply"};
    case ExitCode::unknownDecoder:
        return {5, "unknownDecoder"};
    case ExitCode::damagedData:
        return {6, "damagedData"};
    case ExitCode::notAllWritten:
        return {7, "notAllWritten"};
    case ExitCode::interrupted:
        break;
    }
    return {130, "interrupted"};
}

} // namespace

int exitNumber(ExitCode code)
{
    return exitOf(code).number;
}

std::string_view exitWord(ExitCode code)
{
    return exitOf(code).word;
}

} // namespace karvo
