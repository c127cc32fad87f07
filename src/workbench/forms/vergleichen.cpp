#include "workbench/forms/vergleichen.h"

#include "program/text_lines.h"
#include "ui/captions.h"
#include "ui/tabbed_list.h"
#include "ui/usual_size.h"
#include "workbench/expert_mode.h"
#include "workbench/export_files.h"
#include "workbench/list_files.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(860, 640);

QLabel* label(QWidget* parent, const char* name)
{
    auto* const made = new QLabel(parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setTextFormat(Qt::PlainText); // a path may look like markup
    made->setWordWrap(true);
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
    : QDialog(parent),
      bench_(bench),
      texts_(bench.state.texts),
      sets_(bench),
      model_(label(this, "Label1")),
      firstSide_(label(this, "FirstSide")),
      secondSide_(label(this, "SecondSide")),
      counts_(label(this, "Counts")),
      list_(new TabbedList(this)),
      onlyDifferences_(new QCheckBox(buttonText(texts_.caption(Caption::onlyDifferences)), this)),
      compareButton_(new QPushButton(buttonText(texts_.caption(Caption::compareButton)), this)),
      lookUpButton_(new QPushButton(buttonText(texts_.caption(Caption::lookUpButton)), this))
{
    build();
    showExpertMode();
    showSides();
    showLines();
}

void Vergleichen::build()
{
    setObjectName(QStringLiteral("Vergleichen"));
    setWindowTitle(qtText(texts_.caption(Caption::compareTitle)));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    list_->setObjectName(QStringLiteral("List1"));
    list_->setAccessibleName(windowTitle());
    list_->setEmptyHint(qtText(texts_.caption(Caption::compareHint)));
    onlyDifferences_->setObjectName(QStringLiteral("OnlyDifferences"));
    connect(onlyDifferences_, &QCheckBox::toggled, this, &Vergleichen::showLines);

    auto* const layout = new QVBoxLayout(this);
    layout->setMenuBar(menus());
    for (QWidget* const widget :
         std::initializer_list<QWidget*>{model_, firstSide_, secondSide_, onlyDifferences_})
        layout->addWidget(widget);
    layout->addWidget(list_, 1);
    layout->addWidget(counts_);
    layout->addWidget(buttons());
    resizeToUsual(*this, usualSize);
}

QMenuBar* Vergleichen::menus()
{
    auto* const bar = new QMenuBar(this);
    bar->setNativeMenuBar(false);
    QMenu* const file = bar->addMenu(buttonText(texts_.caption(Caption::compareFileMenu)));
    connect(addItem(*file, "mnu_saved", Caption::compareFirstFile), &QAction::triggered, this,
            &Vergleichen::openFirst);
    QAction* const second = addItem(*file, "mnu_saved_2", Caption::compareSecondFile);
    second->setShortcut(QKeySequence::Open);
    connect(second, &QAction::triggered, this, &Vergleichen::openSecond);
    QMenu* const model = bar->addMenu(buttonText(texts_.caption(Caption::compareModelMenu)));
    std::size_t place = 0;
    for (const ComparedModel& one : comparedModels()) {
        const std::string name(one.menuItem);
        connect(addItem(*model, name.c_str(), captionOf(place++)), &QAction::triggered, this,
                [this, item = one.menuItem] { chooseModel(item); });
    }
    QMenu* const expert = bar->addMenu(buttonText(texts_.caption(Caption::compareExpertMenu)));
    expertOn_ = addItem(*expert, "mnu_expert_ein", Caption::expertOn);
    expertOff_ = addItem(*expert, "mnu_expert_aus", Caption::expertOff);
    connect(expertOn_, &QAction::triggered, this, [this] { switchExpertMode(true); });
    connect(expertOff_, &QAction::triggered, this, [this] { switchExpertMode(false); });
    return bar;
}

QAction* Vergleichen::addItem(QMenu& menu, const char* name, Caption caption)
{
    QAction* const item = menu.addAction(buttonText(texts_.caption(caption)));
    item->setObjectName(QString::fromLatin1(name));
    item->setMenuRole(QAction::NoRole);
    return item;
}

QWidget* Vergleichen::buttons()
{
    auto* const row = new QWidget(this);
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    compareButton_->setObjectName(QStringLiteral("Command1"));
    lookUpButton_->setObjectName(QStringLiteral("Command2"));
    connect(compareButton_, &QPushButton::clicked, this, &Vergleichen::compare);
    connect(lookUpButton_, &QPushButton::clicked, this, &Vergleichen::lookUp);
    save_ = saveButton();
    auto* const close = new QPushButton(buttonText(texts_.caption(Caption::closeButton)), this);
    close->setObjectName(QStringLiteral("Schliessen"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    for (QPushButton* const button : {compareButton_, lookUpButton_, save_}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    layout->addStretch();
    layout->addWidget(close);
    return row;
}

QPushButton* Vergleichen::saveButton()
{
    auto* const button = new QPushButton(buttonText(texts_.caption(Caption::saveComparison)), this);
    button->setObjectName(QStringLiteral("SaveResult"));
    auto* const forms = new QMenu(button);
    connect(addItem(*forms, "SaveAsText", Caption::saveComparisonAsText), &QAction::triggered, this,
            [this] { save(false); });
    connect(addItem(*forms, "SaveAsCsv", Caption::saveComparisonAsCsv), &QAction::triggered, this,
            [this] { save(true); });
    button->setMenu(forms);
    return button;
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
    list_->setEmptyHint(comparison_ ? QString() : qtText(texts_.caption(Caption::compareHint)));
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
