#include "shell/search_controller.h"

#include "shell/entry_controller.h"
#include "shell/named_shortcut.h"

namespace karvo
{

SearchController::SearchController(Workbench& bench, QWidget& window, EntryController& entry)
    : bench_(bench), texts_(bench.state.texts), entry_(entry)
{
    addShortcut(window, Qt::Key_F3, "NextHit", this, &SearchController::findNext);
}

void SearchController::askCvNumber()
{
    const auto typed = bench_.prompts.input(texts_.caption(Caption::searchIndexTitle),
                                            texts_.caption(Caption::searchIndexPrompt), Text());
    if (!typed || trimmed(*typed).empty())
        return;
    const auto number = numberFromText(*typed);
    if (number && entry_.goToCv(*number))
        entry_.focusList();
    else
        bench_.prompts.message(texts_.caption(Caption::cvNotInList), PromptIcon::information);
}

// The same word again goes on to its next hit, another one begins at the top.
void SearchController::askWord()
{
    const auto typed = bench_.prompts.input(texts_.caption(Caption::searchWordTitle),
                                            texts_.caption(Caption::searchWordPrompt), word_);
    if (!typed || trimmed(*typed).empty())
        return;
    const bool again = *typed == word_;
    word_ = *typed;
    searchWord(again ? entry_.place() : std::nullopt);
}

void SearchController::findNext()
{
    const ProgramState& state = bench_.state;
    if (!word_.empty() && !state.lineBusy && !state.set.isEmpty() && entry_.takePending())
        searchWord(entry_.place());
}

void SearchController::searchWord(std::optional<ListHit> after)
{
    const auto hit = nextHit(bench_.state.set.list, bench_.state.set.table, word_, after);
    if (!hit) {
        bench_.prompts.message(texts_.caption(Caption::nothingFound), PromptIcon::information);
        return;
    }
    entry_.goTo(*hit);
    entry_.focusList();
}

} // namespace karvo
