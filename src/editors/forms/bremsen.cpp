#include "editors/forms/bremsen.h"

#include "editors/presets.h"
#include "program/path_text.h"
#include "program/text_lines.h"
#include "ui/captions.h"
#include "ui/form_rows.h"
#include "ui/named.h"
#include "ui/typed_text.h"
#include "workbench/export_files.h"
#include "workbench/library_faults.h"

#include <QMenu>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr std::size_t firstPresetTime = 1; // CV48 stays as it is

struct Field {
    const char* name;
    Caption caption;
};
constexpr Field fields[] = {{"Text1", Caption::brakeValueField},
                            {"Text4", Caption::thresholdField},
                            {"Text2", Caption::timeBelowField},
                            {"Text3", Caption::timeAboveField}};

} // namespace

Bremsen::Bremsen(Workbench& bench, std::string_view preset, QWidget* parent)
    : EditorDialog(bench.state.texts, "Bremsen", Caption::brakingTitle, parent), bench_(bench)
{
    build();
    showTableValues();
    if (!preset.empty())
        loadPresetTimes(preset);
    nothingToLose();
}

void Bremsen::build()
{
    addMenus();
    auto* const rows = new FormRows;
    column().addLayout(rows);
    for (std::size_t place = 0; place < fields_.size(); ++place) {
        fields_[place] = entryField(fields[place].name, this);
        whenEntered(*fields_[place], [this, place] { checkField(place); });
        rows->add(*fields_[place], {shown(fields[place].caption)});
    }
    auto* const explanation = captioned<QPushButton>("Label2", this, onButton(Caption::explainDistance));
    connect(explanation, &QPushButton::clicked, this, &Bremsen::explain);
    column().addWidget(explanation, 0, Qt::AlignLeft);
    column().addStretch(1);
    connect(addWriting("OKButton", Caption::writeToVehicle), &QPushButton::clicked, this, &Bremsen::write);
    addButton("CancelButton", Caption::cancelButton, ButtonRow::RejectRole);
}

void Bremsen::addMenus()
{
    QMenu& load = addMenu(Caption::loadMenu);
    addItem(load, "mnu_L_Faller", Caption::presetFaller, [this] { loadPreset("Faller.bcr"); });
    addItem(load, "mnu_L_CI26", Caption::presetCi26, [this] { loadPreset("CI_26.bcr"); });
    addItem(load, "mnu_L_CI46", Caption::presetCi46, [this] { loadPreset("CI_46.bcr"); });
    addItem(load, "menu_L_Datei", Caption::loadFile, [this] { loadChosenFile(); });
    addItem(addMenu(Caption::saveMenu), "mnu_saveas", Caption::saveAsFile, [this] { save(); });
    QMenu& presets = addMenu(Caption::presetMenu);
    addItem(presets, "mnu_aktuell", Caption::presentValues, [this] { showTableValues(); });
    addItem(presets, "mnu_Faller", Caption::presetFaller, [this] { loadPresetTimes("Faller.bcr"); });
    addItem(presets, "mnu_CI46", Caption::presetCi46, [this] { loadPresetTimes("CI_46.bcr"); });
    addItem(presets, "mnu_CI26", Caption::presetCi26, [this] { loadPresetTimes("CI_26.bcr"); });
}

void Bremsen::showTableValues()
{
    showValues(distanceValuesOf(bench_.state.set.table), 0);
}

void Bremsen::loadPreset(std::string_view name)
{
    if (const auto file = read(presetPath(name)))
        showValues(file->values, 0);
}

void Bremsen::loadPresetTimes(std::string_view name)
{
    if (const auto file = read(presetPath(name)))
        showValues(file->values, firstPresetTime);
}

void Bremsen::loadChosenFile()
{
    const UserFolder& folder = bench_.state.userFolders.distances;
    bench_.files.makeFolder(folder.own);
    const auto path = bench_.prompts.openFile(
        {texts_.caption(Caption::loadFile), folder.own, u"*.bcr", u"bcr", {}, std::nullopt, folder.shipped});
    const auto file = path ? read(*path) : std::nullopt;
    if (file)
        showValues(file->values, 0);
}

// Nothing that a decoder would not take is saved: the file is there to be written later.
void Bremsen::save()
{
    const auto planned = planOfDistances(typed());
    if (const auto* const wrong = std::get_if<std::size_t>(&planned)) {
        checkField(*wrong);
        return;
    }
    const UserFolders& folders = bench_.state.userFolders;
    for (const auto& folder : {folders.distances.own, folders.cvLists.own})
        bench_.files.makeFolder(folder);
    const FileRequest request = {texts_.caption(Caption::saveAsFile),
                                 folders.distances.own,
                                 u"*.bcr",
                                 u"bcr",
                                 {},
                                 OtherFileKind{u"*.kvr", u"kvr", folders.cvLists.own}};
    const auto path = bench_.prompts.saveFile(request);
    if (path && !isAmongShipped(bench_, folders.distances, *path) &&
        saveContent(bench_, *path, distanceFileContent(typed(), bench_.state.set.descriptionLines)))
        nothingToLose();
}

// Nothing, after a message, when it can not be opened. What is not understood in it is told.
std::optional<DistanceFile> Bremsen::read(const std::filesystem::path& path)
{
    const auto content = bench_.files.readWhole(path, textFileLimit);
    if (!content) {
        showCannotOpen(bench_.prompts, bench_.state.texts, path);
        return std::nullopt;
    }
    auto file = parseDistanceFile(*content);
    if (const auto line = file.firstFault()) {
        bench_.prompts.message(
            texts_.message(Message::distanceFileFaults, {pathText(path), textFromNumber(*line)}),
            PromptIcon::warning);
    }
    return file;
}

std::filesystem::path Bremsen::presetPath(std::string_view name)
{
    return bench_.state.userFolders.distances.find(bench_.files, std::filesystem::path(name));
}

// A value that is missing leaves its field as it is.
void Bremsen::showValues(const DistanceValues& values, std::size_t first)
{
    for (std::size_t place = first; place < values.size(); ++place) {
        if (!values[place].empty())
            fields_[place]->setText(qtText(values[place]));
    }
}

DistanceValues Bremsen::typed() const
{
    DistanceValues values;
    for (std::size_t place = 0; place < values.size(); ++place)
        values[place] = trimmed(typedText(fields_[place]->text()));
    return values;
}

void Bremsen::checkField(std::size_t place)
{
    if (const auto refusal = refusalOf(distanceCvs()[place], typedText(fields_[place]->text()), texts_))
        refuse(*fields_[place], *refusal, bench_.prompts);
}

void Bremsen::explain()
{
    const auto line = [this](Message start, Message end) {
        return texts_.message(start) + u" " + texts_.message(end);
    };
    bench_.prompts.message(line(Message::distanceBraking1, Message::distanceBraking2) + Text(lineBreak) +
                               line(Message::distanceSpeeding1, Message::distanceSpeeding2),
                           PromptIcon::information);
}

void Bremsen::write()
{
    auto planned = planOfDistances(typed());
    if (const auto* const wrong = std::get_if<std::size_t>(&planned)) {
        checkField(*wrong);
        return;
    }
    plan_ = std::move(std::get<WritePlan>(planned));
    accept();
}

} // namespace karvo
