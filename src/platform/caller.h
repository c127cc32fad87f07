// Whoever started a program of windows: what was typed, and where the answer can be read.
#pragma once

#include <string>
#include <vector>

namespace karvo
{

// Behind the program's name, in UTF-8. On Windows as they were typed, not in the letters of the code page;
// `values` are not looked at there.
std::vector<std::string> argumentsOf(int count, char** values);

enum class CallerNews { answer, fault };

// Prints lines in UTF-8, an answer to the standard output, a fault to the standard error stream. On Windows a
// program of windows has neither, unless they lead into a file or a pipe: an answer then goes to the console
// it was called from, and a fault, or an answer without a console, comes as a box.
void tellCaller(CallerNews news, const std::string& lines);

} // namespace karvo
