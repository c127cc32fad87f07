#include "editors/forms/bremsen.h"

#include "editors/presets.h"
#include "program/path_text.h"
#include "program/text_lines.h"
#include "ui/captions.h"
#include "ui/typed_text.h"
#include "workbench/export_files.h"
#include "workbench/library_faults.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

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
    : EditorDialog(bench.state.texts, parent), bench_(bench), texts_(bench.state.texts)
{
    build();
    showTableValues();
    if (!preset.empty())
        loadPresetTimes(preset);
    nothingToLose();
}

void Bremsen::build()
{
    setObjectName(QStringLiteral("Bremsen"));
    setWindowTitle(qtText(texts_.caption(Caption::brakingTitle)));
    auto* const grid = new QGridLayout(this);
    grid->setMenuBar(menus());
    for (std::size_t place = 0; place < fields_.size(); ++place) {
        auto* const field = new QLineEdit(this);
        field->setObjectName(QString::fromLatin1(fields[place].name));
        field->setValidator(new Windows1252Validator(field));
        auto* const label = new QLabel(buttonText(texts_.caption(fields[place].caption)), this);
        label->setTextFormat(Qt::PlainText);
        label->setBuddy(field);
        field->setAccessibleName(label->text());
        connect(field, &QLineEdit::editingFinished, this, [this, place] { checkField(place); });
        grid->addWidget(label, static_cast<int>(place), 0);
        grid->addWidget(field, static_cast<int>(place), 1);
        fields_[place] = field;
    }
    auto* const explanation = new QPushButton(buttonText(texts_.caption(Caption::explainDistance)), this);
    explanation->setObjectName(QStringLiteral("Label2"));
    explanation->setAutoDefault(false);
    connect(explanation, &QPushButton::clicked, this, &Bremsen::explain);
    grid->addWidget(explanation, 4, 0, Qt::AlignLeft);
    grid->setRowStretch(5, 1);
    grid->addWidget(buttons(), 6, 0, 1, 2);
}

QMenuBar* Bremsen::menus()
{
    auto* const bar = new QMenuBar(this);
    bar->setNativeMenuBar(false);
    QMenu* const load = bar->addMenu(buttonText(texts_.caption(Caption::loadMenu)));
    addItem(*load, "mnu_L_Faller", Caption::presetFaller, [this] { loadPreset("Faller.bcr"); });
    addItem(*load, "mnu_L_CI26", Caption::presetCi26, [this] { loadPreset("CI_26.bcr"); });
    addItem(*load, "mnu_L_CI46", Caption::presetCi46, [this] { loadPreset("CI_46.bcr"); });
    addItem(*load, "menu_L_Datei", Caption::loadFile, [this] { loadChosenFile(); });
    QMenu* const save = bar->addMenu(buttonText(texts_.caption(Caption::saveMenu)));
    addItem(*save, "mnu_saveas", Caption::saveAsFile, [this] { this->save(); });
    QMenu* const presets = bar->addMenu(buttonText(texts_.caption(Caption::presetMenu)));
    addItem(*presets, "mnu_aktuell", Caption::presentValues, [this] { showTableValues(); });
    addItem(*presets, "mnu_Faller", Caption::presetFaller, [this] { loadPresetTimes("Faller.bcr"); });
    addItem(*presets, "mnu_CI46", Caption::presetCi46, [this] { loadPresetTimes("CI_46.bcr"); });
    addItem(*presets, "mnu_CI26", Caption::presetCi26, [this] { loadPresetTimes("CI_26.bcr"); });
    return bar;
}

void Bremsen::addItem(QMenu& menu, const char* name, Caption caption, std::function<void()> act)
{
    QAction* const item = menu.addAction(buttonText(texts_.caption(caption)));
    item->setObjectName(QString::fromLatin1(name));
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this, std::move(act));
}

QWidget* Bremsen::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    auto* const writing =
        box->addButton(buttonText(texts_.caption(Caption::writeToVehicle)), QDialogButtonBox::ActionRole);
    writing->setObjectName(QStringLiteral("OKButton"));
    writing->setAutoDefault(false); // Enter ends an entry, and never writes to the vehicle
    auto* const cancel =
        box->addButton(buttonText(texts_.caption(Caption::cancelButton)), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setAutoDefault(false);
    cancel->setFocusPolicy(Qt::TabFocus); // a click does not leave the field first, which would check it
    connect(writing, &QPushButton::clicked, this, &Bremsen::write);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
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
        refuse(*wrong);
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

// Once for what was typed: leaving the field for the box must not bring up another one.
void Bremsen::checkField(std::size_t place)
{
    const QString text = fields_[place]->text();
    const auto refusal = refusalOf(distanceCvs()[place], typedText(text), texts_);
    if (!refusal || telling_ || text == refused_[place])
        return;
    refused_[place] = text;
    telling_ = true;
    bench_.prompts.message(*refusal, PromptIcon::warning);
    telling_ = false;
    fields_[place]->setFocus();
    fields_[place]->selectAll();
}

// Said again, though it was said when the field was left: the person has just asked for the whole.
void Bremsen::refuse(std::size_t place)
{
    refused_[place].reset();
    checkField(place);
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
        refuse(*wrong);
        return;
    }
    plan_ = std::move(std::get<WritePlan>(planned));
    accept();
}

} // namespace karvo
