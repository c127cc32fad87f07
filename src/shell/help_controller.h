// What the main window tells about the program and the decoder.
#pragma once

#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class HelpController : public QObject
{
public:
    HelpController(ProgramState& state, Prompts& prompts, QWidget& window);

    void showVersion();
    void showAbout();
    void showDecoderInfo();
    void showModuleHelp();

private:
    void showHelp();
    void tell(const Text& text);

    ProgramState& state_;
    const LanguageTables& texts_;
    Prompts& prompts_;
};

} // namespace karvo
