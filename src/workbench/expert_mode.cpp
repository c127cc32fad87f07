#include "workbench/expert_mode.h"

#include "cvdata/described_set.h"
#include "workbench/put_on_bench.h"

namespace karvo
{

bool askForExpertMode(Workbench& bench)
{
    constexpr TextView title = u"Passwort 4 Zeichen";
    constexpr TextView password = u"Rofu";
    const LanguageTables& texts = bench.state.texts;
    const auto typed = bench.prompts.input(Text(title), texts.message(Message::expertPasswordPrompt), Text());
    if (!typed)
        return false;
    if (*typed != password) {
        bench.prompts.message(texts.message(Message::wrongExpertPassword), PromptIcon::warning);
        return false;
    }
    setExpertMode(bench, true);
    return true;
}

void setExpertMode(Workbench& bench, bool on)
{
    ProgramState& state = bench.state;
    bench.settings.save("Parameter", "Expert", on ? u"1" : u"0");
    state.expert = on;
    if (state.set.isEmpty() || state.lineBusy)
        return;
    SetFaults faults;
    const auto fileName = state.set.expertPath.filename().string();
    takeKnowledge(state.set, bench.library().expertKnowledge(fileName, state.set.table), faults.ofFiles);
    showAnew(bench, faults);
}

} // namespace karvo
