#include "workbench/forms/vergleichen.h"

#include "program/text_lines.h"
#include "ui/captions.h"
#include "ui/named.h"
#include "ui/tabbed_list.h"
#include "workbench/expert_mode.h"
#include "workbench/export_files.h"
#include "workbench/list_files.h"

#include <QCheckBox>
#include <QMenu>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(860, 640);

QLabel* label(QWidget* parent, const char* name)
{
    auto* const made = textLabel(name, parent);
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return made;
}

Caption captionOf(std::size_t model)
{
    constexpr Caption captions[] = {Caption::compareKv04,  Caption::compareKv04New, Caption::compareKv05,
                                    Caption::compareKv06,  Caption::compareKv07,    Caption::compareKv08,
                                    Caption::compareModule};
    return captions[model];
}

} // namespace

Vergleichen::Vergleichen(Workbench& bench, QWidget* parent)
    : Form(bench.state.texts, "Vergleichen", Caption::compareTitle, parent),
      bench_(bench),
      sets_(bench),
      model_(label(this, "Label1")),
      firstSide_(label(this, "FirstSide")),
      secondSide_(label(this, "SecondSide")),
      counts_(label(this, "Counts")),
      list_(named<TabbedList>("List1", this, windowTitle())),
      onlyDifferences_(captioned<QCheckBox>("OnlyDifferences", this, onButton(Caption::onlyDifferences))),
      compareButton_(addButton("Command1", Caption::compareButton, ButtonRow::ActionRole)),
      lookUpButton_(addButton("Command2", Caption::lookUpButton, ButtonRow::ActionRole))
{
    build();
    showExpertMode();
    showSides();
    showLines();
}

void Vergleichen::build()
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setUsualSize(usualSize);
    addMenus();
    for (QWidget* const widget :
         std::initializer_list<QWidget*>{model_, firstSide_, secondSide_, onlyDifferences_})
        column().addWidget(widget);
    column().addWidget(list_, 1);
    column().addWidget(counts_);
    addSaveButton();
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole);
    connect(onlyDifferences_, &QCheckBox::toggled, this, &Vergleichen::showLines);
    connect(compareButton_, &QPushButton::clicked, this, &Vergleichen::compare);
    connect(lookUpButton_, &QPushButton::clicked, this, &Vergleichen::lookUp);
}

void Vergleichen::addMenus()
{
    QMenu& file = addMenu(Caption::compareFileMenu);
    addItem(file, "mnu_saved", Caption::compareFirstFile, [this] { openFirst(); });
    addItem(file, "mnu_saved_2", Caption::compareSecondFile, [this] {
        openSecond();
    })->setShortcut(QKeySequence::Open);
    QMenu& model = addMenu(Caption::compareModelMenu);
    std::size_t place = 0;
    for (const ComparedModel& one : comparedModels()) {
        const std::string name(one.menuItem);
        addItem(model, name.c_str(), captionOf(place++), [this, item = one.menuItem] { chooseModel(item); });
    }
    QMenu& expert = addMenu(Caption::compareExpertMenu);
    expertOn_ = addItem(expert, "mnu_expert_ein", Caption::expertOn, [this] { switchExpertMode(true); });
    expertOff_ = addItem(expert, "mnu_expert_aus", Caption::expertOff, [this] { switchExpertMode(false); });
}

void Vergleichen::addSaveButton()
{
    save_ = addButton("SaveResult", Caption::saveComparison, ButtonRow::ActionRole);
    auto* const forms = new QMenu(save_);
    addItem(*forms, "SaveAsText", Caption::saveComparisonAsText, [this] { save(false); });
    addItem(*forms, "SaveAsCsv", Caption::saveComparisonAsCsv, [this] { save(true); });
    save_->setMenu(forms);
}

void Vergleichen::chooseModel(std::string_view menuItem)
{
    if (sets_.chooseModel(menuItem))
        compare();
}

void Vergleichen::openFirst()
{
    const auto path = askForList(Caption::compareFirstFile);
    if (path && sets_.openFirst(*path))
        compare();
}

void Vergleichen::openSecond()
{
    const auto path = askForList(Caption::compareSecondFile);
    if (path && sets_.openSecond(*path))
        compare();
}

std::optional<std::filesystem::path> Vergleichen::askForList(Caption title)
{
    auto request = listFileRequest(bench_, texts_.caption(title));
    request.name.clear();
    return bench_.prompts.openFile(request);
}

void Vergleichen::compare()
{
    comparison_ = sets_.compare();
    showSides();
    showLines();
}

void Vergleichen::showSides()
{
    const auto nameOr = [this](const Text& name) {
        return name.empty() ? texts_.caption(Caption::sideMissing) : name;
    };
    model_->setText(qtText(texts_.caption(Caption::compareModelLabel) + u" = " + sets_.modelLabel()));
    firstSide_->setText(filledCaption(texts_, Caption::firstSide, {nameOr(sets_.firstName())}));
    secondSide_->setText(filledCaption(texts_, Caption::secondSide, {nameOr(sets_.secondName())}));
    const bool isComplete = !sets_.firstName().empty() && !sets_.secondName().empty();
    compareButton_->setEnabled(isComplete);
    lookUpButton_->setEnabled(!sets_.firstName().empty() || !sets_.secondName().empty());
}

void Vergleichen::showLines()
{
    std::vector<TabbedList::Line> lines;
    if (comparison_) {
        for (const ComparisonLine& line : comparison_->lines) {
            const bool differs = line.likeness != Likeness::equal;
            if (differs || !onlyDifferences_->isChecked())
                lines.push_back({qtText(line.text()),
                                 qtText(likenessText(line.likeness, texts_) + u"\t" + line.name), differs});
        }
    }
    list_->setLines(lines);
    list_->setEmptyHint(comparison_ ? QString() : shown(Caption::compareHint));
    counts_->setText(comparison_ ? qtText(countsText(*comparison_, texts_)) : QString());
    onlyDifferences_->setEnabled(comparison_.has_value());
    save_->setEnabled(comparison_.has_value());
}

void Vergleichen::lookUp()
{
    const auto answer = bench_.prompts.input(texts_.caption(Caption::compareTitle),
                                             texts_.message(Message::lookUpPrompt), Text());
    const auto found = answer ? sets_.lookUp(*answer) : std::nullopt;
    if (found)
        list_->appendText(qtText(*found));
}

void Vergleichen::switchExpertMode(bool on)
{
    if (on)
        askForExpertMode(bench_);
    else
        setExpertMode(bench_, false);
    showExpertMode();
}

void Vergleichen::showExpertMode()
{
    expertOn_->setVisible(!bench_.state.expert);
    expertOff_->setVisible(bench_.state.expert);
}

void Vergleichen::save(bool asCsv)
{
    const Text extension = asCsv ? u"csv" : u"txt";
    const auto path = bench_.prompts.saveFile(
        {texts_.caption(Caption::saveComparison), bench_.state.userFolders.cvLists.own, u"*." + extension,
         extension, texts_.caption(Caption::compareButton) + u"." + extension});
    if (!path || !comparison_)
        return;
    saveContent(bench_, *path,
                asCsv ? comparisonCsv(*comparison_, texts_)
                      : contentOfLines(comparisonReport(*comparison_, texts_)));
}

} // namespace karvo
