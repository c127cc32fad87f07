// The standard streams of a program that people use at a terminal, and other programs by pipes.
#pragma once

#include "platform/interrupt_notice.h"
#include "program/text.h"

#include <optional>
#include <string>
#include <system_error>

namespace karvo
{

enum class StandardStream { in, out, err };

// Whether a person sits there.
bool isTerminal(StandardStream stream);

// UTF-8. On Windows a terminal shows it as wide characters, whatever its code page is, and in a pipe or a
// file each line ends with CR LF. To `out` it may wait for flushOutput().
std::error_code print(StandardStream stream, const std::string& utf8);
std::error_code flushOutput();

// A line from the terminal, without its end; nothing when the input has ended, and after Ctrl-C.
std::optional<Text> typedLine(const InterruptNotice& interrupt);

// A standard stream that was closed by whoever started the program would be given its number to the serial
// line: what is printed would go to the decoder.
void holdStandardStreams();

} // namespace karvo
