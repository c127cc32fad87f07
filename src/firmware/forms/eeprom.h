// A memory image from a file: looked at, compared, and taken into the list.
#pragma once

#include "firmware/forms/memory_window.h"

namespace karvo
{

class EEPROM : public MemoryWindow
{
    Q_OBJECT

public:
    explicit EEPROM(Workbench& bench, QWidget* parent = nullptr);

private:
    void open();
    void take();
    void showWhetherTakeable();

    QPushButton* take_;
};

} // namespace karvo
