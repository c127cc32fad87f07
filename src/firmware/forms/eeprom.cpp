#include "firmware/forms/eeprom.h"

#include "firmware/forms/image_changes.h"
#include "firmware/image_into_list.h"
#include "firmware/memory_image_file.h"
#include "program/path_text.h"
#include "ui/captions.h"

#include <QDir>

namespace karvo
{

EEPROM::EEPROM(Workbench& bench, QWidget* parent)
    : MemoryWindow(bench, "EEPROM", Caption::eepromTitle, parent), take_(nullptr)
{
    show({}, qtText(texts_.message(Message::imageMissing)));
    if (bench.state.lastRead)
        compareWithVehicle();
    else if (!bench.state.set.isEmpty())
        compareWithBenchList();
    auto* const opening = addButton("Oeffnen", Caption::openMemoryImage, ButtonRow::ActionRole);
    connect(opening, &QPushButton::clicked, this, &EEPROM::open);
    take_ = addButton("Uebernehmen", Caption::showImageChanges, ButtonRow::ActionRole);
    connect(take_, &QPushButton::clicked, this, &EEPROM::take);
    showWhetherTakeable();
    addLastButtons();
    opening->setFocus();
}

void EEPROM::open()
{
    auto opened =
        openMemoryImage(bench_, texts_.caption(Caption::openMemoryImage), QDir::homePath().toStdU16String());
    if (!opened)
        return;
    const Text known = textFromNumber(static_cast<long long>(opened->image.countOfKnown()));
    const Text source = texts_.message(Message::imageSource, {pathText(opened->path), known});
    show(std::move(opened->image), qtText(source));
    showWhetherTakeable();
}

void EEPROM::showWhetherTakeable()
{
    const bool hasList = !bench_.state.set.isEmpty();
    take_->setEnabled(hasList && image().size() != 0);
    take_->setToolTip(hasList ? QString() : qtText(texts_.message(Message::editorNeedsList)));
    take_->setAccessibleDescription(take_->toolTip());
}

void EEPROM::take()
{
    const CvTable& table = bench_.state.set.table;
    const Text question = unusualImageQuestion(table, image(), texts_);
    if (!question.empty() && !bench_.prompts.question(question, QuestionKind::limits))
        return;
    const auto changes = changesByImage(bench_.state.set, image());
    Abbild_Aenderungen preview(changes, bench_.state, this);
    if (preview.exec() != QDialog::Accepted)
        return;
    const auto count = takeImage(bench_, changes);
    compareAnewWithBenchList();
    tell(texts_.message(Message::imageTaken, {textFromNumber(static_cast<long long>(count))}));
}

} // namespace karvo
