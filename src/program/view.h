// What the logic tells whoever shows it: the main window, or the command line.
#pragma once

#include "program/text.h"

#include <cstddef>

namespace karvo
{

class View
{
public:
    virtual ~View() = default;

    virtual void showStatus(const Text& text) = 0;

    // What showStatus() has shown last.
    virtual Text statusText() const = 0;

    // How many of how many bytes or steps have come in; a total of 0 ends the progress display.
    virtual void showProgress(std::size_t done, std::size_t total) = 0;

    // Which CV of several is being written, and how many come after it; CV 0 ends the display.
    virtual void showWriteProgress(int cv, std::size_t remaining) = 0;

    // A block is being read, or no longer: whoever can stop it offers so.
    virtual void showReading(bool /*underWay*/) {}

    virtual void showHourglass(bool shown) = 0;

    // While the line is busy, everything that would start an exchange or replace the tables in use is
    // disabled.
    virtual void showLineBusy(bool busy) = 0;

    // The main list, the loaded data's caption or the current CV have been replaced.
    virtual void listChanged() = 0;
};

} // namespace karvo
