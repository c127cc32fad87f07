// The windows that show a memory byte by byte, opened from the main window.
#pragma once

#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class EditorsController;
class Operations;

class MemoryController : public QObject
{
public:
    MemoryController(Workbench& bench, QWidget& window, Operations& operations, EditorsController& editors);

    // Of the vehicle that was read last.
    void showMemory();

    // An image from a file.
    void showImage();

private:
    Workbench& bench_;
    QWidget& window_;
    Operations& operations_;
    EditorsController& editors_;
};

// Why there is no memory to show; nothing where there is one.
std::optional<Text> whyNoMemory(const ProgramState& state);

} // namespace karvo
