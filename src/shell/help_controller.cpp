#include "shell/help_controller.h"

#include "shell/named_shortcut.h"
#include "shell/program_version.h"
#include "workbench/decoder_info.h"

namespace karvo
{

HelpController::HelpController(ProgramState& state, Prompts& prompts, QWidget& window)
    : state_(state), texts_(state.texts), prompts_(prompts)
{
    addShortcut(window, Qt::Key_F1, "Help", this, &HelpController::showHelp);
}

void HelpController::showVersion()
{
    tell(texts_.caption(Caption::versionText, {Text(programVersion)}));
}

void HelpController::showAbout()
{
    Text lines;
    for (const Caption line :
         {Caption::about1, Caption::about2, Caption::about3, Caption::about4, Caption::about5})
        lines += (lines.empty() ? Text() : Text(lineBreak)) + texts_.caption(line, {Text(programVersion)});
    tell(lines);
}

void HelpController::showDecoderInfo()
{
    tell(decoderInfoText(state_));
}

void HelpController::showModuleHelp()
{
    tell(moduleHelpText(texts_));
}

void HelpController::showHelp()
{
    if (!state_.lineBusy)
        tell(helpText(texts_));
}

void HelpController::tell(const Text& text)
{
    prompts_.message(text, PromptIcon::information);
}

} // namespace karvo
