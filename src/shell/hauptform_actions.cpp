// What the main window's controls and menu items do.
#include "link/forms/aktive_com.h"
#include "link/port_choice.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "shell/port_bar.h"
#include "shell/status_line.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "workbench/decoder_info.h"
#include "workbench/describe.h"
#include "workbench/language_change.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo
{

void Hauptform::read(ReadStarter starter)
{
    readTimer_.stop();
    if (!state_.lineBusy && !(takePendingValue() && mayReplaceSet(bench_)))
        return;
    const auto end = readIntoList(bench_, starter);
    if (closing_) {
        close();
        return;
    }
    if (end == ReadEnd::read)
        list_->setFocus();
    else if (starter == ReadStarter::button)
        portBar_->focusStart(); // it lost the focus when it was disabled
}

void Hauptform::clear()
{
    if (state_.lineBusy || !mayReplaceSet(bench_))
        return;
    clearDisplay(bench_);
    bench_.view.showStatus(texts_.caption(Caption::ready));
}

void Hauptform::choosePortNumber(int number)
{
    if (state_.lineBusy || !takePendingValue())
        portBar_->showPort(state_.link.portNumber);
    else
        choosePort(state_.link, bench_.port, bench_.settings, number);
}

void Hauptform::findPorts()
{
    Aktive_COM search(state_.link, bench_.port, bench_.settings, texts_, listPortDevices_, listNewPorts_,
                      this);
    search.exec();
    portBar_->showPort(state_.link.portNumber);
}

void Hauptform::showOffline(std::string_view menuItem)
{
    if (!confirmOfflineList(bench_) || !mayReplaceSet(bench_))
        return;
    readTimer_.stop();
    if (showChosenOfflineList(bench_, menuItem))
        showWithoutDecoder();
}

void Hauptform::showStandard()
{
    if (mayReplaceSet(bench_) && showStandardList(bench_))
        showWithoutDecoder();
}

void Hauptform::showWithoutDecoder()
{
    applyCaptions();
    bench_.view.showStatus(texts_.caption(Caption::offlineList));
    list_->setFocus();
}

void Hauptform::changeLanguage(LanguageCode code)
{
    storeLanguage(bench_, code);
    menu_->markLanguage(code);
    if (!useLanguage(bench_, code))
        return;
    if (useQtTexts_)
        useQtTexts_(code);
    applyCaptions();
    bench_.view.showStatus(texts_.caption(Caption::ready));
    showDetails();
    describeAnew(bench_);
}

void Hauptform::askCvNumber()
{
    const auto typed = bench_.prompts.input(texts_.caption(Caption::searchIndexTitle),
                                            texts_.caption(Caption::searchIndexPrompt), Text());
    if (!typed || trimmed(*typed).empty())
        return;
    const auto number = numberFromText(*typed);
    if (number && goToCv(*number))
        list_->setFocus();
    else
        bench_.prompts.message(texts_.caption(Caption::cvNotInList), PromptIcon::information);
}

// The same word again goes on to its next hit, another one begins at the top.
void Hauptform::askWord()
{
    const auto typed = bench_.prompts.input(texts_.caption(Caption::searchWordTitle),
                                            texts_.caption(Caption::searchWordPrompt), word_);
    if (!typed || trimmed(*typed).empty())
        return;
    const bool again = *typed == word_;
    word_ = *typed;
    searchWord(again ? chosenPlace() : std::nullopt);
}

void Hauptform::findNext()
{
    if (!word_.empty() && !state_.lineBusy && !state_.set.isEmpty() && takePendingValue())
        searchWord(chosenPlace());
}

void Hauptform::searchWord(std::optional<ListHit> after)
{
    const auto hit = nextHit(state_.set.list, state_.set.table, word_, after);
    if (!hit) {
        bench_.prompts.message(texts_.caption(Caption::nothingFound), PromptIcon::information);
        return;
    }
    goTo(*hit);
    list_->setFocus();
}

std::optional<ListHit> Hauptform::chosenPlace() const
{
    const int row = list_->currentRow();
    return row < 0 ? std::nullopt
                   : std::optional(ListHit{static_cast<std::size_t>(row), state_.set.currentNumber});
}

void Hauptform::showVersion()
{
    bench_.prompts.message(texts_.caption(Caption::versionText, {Text(programVersion)}),
                           PromptIcon::information);
}

void Hauptform::showAbout()
{
    Text lines;
    for (const Caption line :
         {Caption::about1, Caption::about2, Caption::about3, Caption::about4, Caption::about5})
        lines += (lines.empty() ? Text() : Text(lineBreak)) + texts_.caption(line, {Text(programVersion)});
    bench_.prompts.message(lines, PromptIcon::information);
}

void Hauptform::showDecoderInfo()
{
    bench_.prompts.message(decoderInfoText(state_), PromptIcon::information);
}

void Hauptform::showModuleHelp()
{
    bench_.prompts.message(moduleHelpText(texts_), PromptIcon::information);
}

void Hauptform::showHelp()
{
    if (!state_.lineBusy)
        bench_.prompts.message(helpText(texts_), PromptIcon::information);
}

} // namespace karvo
