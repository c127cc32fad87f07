// How karvo-cli ends.
#pragma once

#include <string_view>

namespace karvo
{

enum class ExitCode {
    done,
    listsDiffer,   // of a comparison, as the next
    cannotCompare, // a file, or the comparison's own output
    fileTrouble,   // or the output could not be written
    wrongArguments,
    portRefused,
    noReply,
    unknownDecoder,
    damagedData,
    notAllWritten,
    interrupted // by Ctrl-C
};

// What the system is told: 0 done, 1 fileTrouble and listsDiffer, 2 wrongArguments and cannotCompare, then 3
// to 7 in their order; 130 for an interruption, as shells have it.
int exitNumber(ExitCode code);

// A word that never changes, for programs: "noReply".
std::string_view exitWord(ExitCode code);

// Whether the command has done what was asked for.
constexpr bool isSuccess(ExitCode code)
{
    return code == ExitCode::done || code == ExitCode::listsDiffer;
}

} // namespace karvo
