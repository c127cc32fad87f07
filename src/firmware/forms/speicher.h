// The memory of the vehicle that was read last.
#pragma once

#include "firmware/forms/memory_window.h"

#include <functional>

namespace karvo
{

class Speicher : public MemoryWindow
{
    Q_OBJECT

public:
    // How the speed steps of that vehicle are shown, or why they can not be.
    struct SpeedSteps {
        std::optional<Text> whyNot;
        std::function<void()> show;
    };

    // A vehicle has been read.
    Speicher(Workbench& bench, SpeedSteps steps, QWidget* parent = nullptr);
};

} // namespace karvo
