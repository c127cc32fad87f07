#include "firmware/forms/speicher.h"

#include "cvdata/decoder_profile.h"
#include "ui/captions.h"

namespace karvo
{

Speicher::Speicher(Workbench& bench, SpeedSteps steps, QWidget* parent)
    : MemoryWindow(bench, "Speicher", Caption::memoryTitle, parent)
{
    const DecoderBlock& block = *bench.state.lastRead;
    auto image = imageOfBlock(block);
    const Text known = textFromNumber(static_cast<long long>(image.countOfKnown()));
    const Text source = texts_.message(Message::memorySource, {typeText(block.profile, texts_), known});
    show(std::move(image), qtText(source));
    if (!bench.state.set.isEmpty())
        compareWithBenchList();
    auto* const button = addButton("Fahrstufen_zeigen", Caption::showSpeedSteps, ButtonRow::ActionRole);
    button->setEnabled(!steps.whyNot);
    button->setToolTip(steps.whyNot ? qtText(*steps.whyNot) : QString());
    button->setAccessibleDescription(button->toolTip());
    connect(button, &QPushButton::clicked, this, std::move(steps.show));
    addLastButtons();
}

} // namespace karvo
