#include "editors/forms/function_sheet_form.h"

#include "editors/forms/picture.h"
#include "ui/captions.h"
#include "ui/content_area.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::string_view settingsSection = "Window";
constexpr std::string_view animationsKey = "Animations";

constexpr QSize usualSize(900, 800);
constexpr int helpLines = 5;
constexpr int controlShare = 5; // of the width, against the names' share
constexpr int nameShare = 3;

bool hasDecimalComma(LanguageCode language)
{
    return language != LanguageCode::english;
}

} // namespace

FunctionSheetForm::FunctionSheetForm(Workbench& bench, const SheetView& view, std::string_view item,
                                     QWidget* parent)
    : EditorDialog(bench.state.texts, view.window.c_str(), qtText(view.title), parent),
      bench_(bench),
      view_(view),
      item_(item),
      values_(view_, bench.state.set),
      help_(named<QPlainTextEdit>("Hilfe", this, shown(Caption::sheetHelp)))
{
    build();
    setBack();
    opened_ = values_.asText();
}

void FunctionSheetForm::build()
{
    addMenus();
    if (!view_.variants.empty() || !view_.readyMade.empty())
        column().addWidget(choices());
    addParts();
    help_->setReadOnly(true);
    help_->setTabChangesFocus(true);
    help_->setFixedHeight(help_->fontMetrics().lineSpacing() * helpLines);
    column().addWidget(help_);
    if (rows_.empty())
        help_->hide();
    else
        help_->setPlainText(rows_.front()->help());
    addButtons();
    setUsualSize({usualSize.width(), std::min(usualSize.height(), sizeHint().height())});
}

// Lights take much room, and are to be seen while the fields are changed: they do not scroll away with these.
void FunctionSheetForm::addParts()
{
    const auto newColumn = [this] {
        auto* const content = new QWidget(this);
        auto* const layout = new QVBoxLayout(content);
        layout->setContentsMargins(0, 0, 0, 0);
        return layout;
    };
    const auto add = [this](QVBoxLayout& layout) {
        layout.addStretch(1);
        auto* const area = new ContentArea(layout.parentWidget(), this);
        area->guardFromWheel();
        column().addWidget(area, 1);
        return area;
    };
    auto* layout = newColumn();
    addPicture(*layout);
    if (picture_ != nullptr && view_.picture == "lights") {
        add(*layout)->setMaximumHeight(picture_->heightForWidth(usualSize.width()));
        layout = newColumn();
    }
    addFields(*layout);
    add(*layout);
}

void FunctionSheetForm::addMenus()
{
    QMenu& menu = addMenu(Caption::sheetMenu);
    addItem(menu, "mnu_copy", Caption::sheetCopy, [this] { copyValues(); });
    addItem(menu, "mnu_paste", Caption::sheetPaste, [this] { pasteValues(); });
    if (view_.picture.empty())
        return;
    menu.addSeparator();
    QAction* const moving = addItem(menu, "mnu_animate", Caption::sheetAnimate, [] {});
    moving->setCheckable(true);
    moving->setChecked(bench_.settings.get(settingsSection, animationsKey) != u"0");
    connect(moving, &QAction::toggled, this, &FunctionSheetForm::animate);
}

QWidget* FunctionSheetForm::choices()
{
    auto* const line = new QWidget(this);
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    if (!view_.variants.empty())
        variants_ = addChoice(*layout, "Variante", Caption::sheetVariant, view_.variants, true);
    if (!view_.readyMade.empty())
        readyMade_ = addChoice(*layout, "Vorgabe", Caption::sheetReadyMade, view_.readyMade, false);
    return line;
}

// The first one stands for values of one's own, and fills in nothing.
QComboBox* FunctionSheetForm::addChoice(QLayout& line, const char* name, Caption label,
                                        std::span<const SheetViewValues> sets, bool areVariants)
{
    auto* const choice = named<QComboBox>(name, this);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(18);
    choice->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    choice->addItem(shown(Caption::sheetOwnValues));
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const QString word = qtText(sets[i].name);
        const QString number = QString::number(i + 1);
        choice->addItem(!areVariants ? word : word.isEmpty() ? number : number + QStringLiteral(": ") + word);
    }
    connect(choice, &QComboBox::activated, this, [this, sets, areVariants](int index) {
        if (index > 0)
            values_.fill(sets[static_cast<std::size_t>(index - 1)],
                         areVariants ? sets : std::span<const SheetViewValues>());
        showValues();
    });
    line.addWidget(labelFor(*choice, shown(label)));
    line.addWidget(choice);
    return choice;
}

void FunctionSheetForm::addFields(QVBoxLayout& layout)
{
    QWidget* const content = layout.parentWidget();
    auto* const grid = new QGridLayout;
    grid->setColumnStretch(0, nameShare);
    grid->setColumnStretch(SheetFieldRow::controlColumn, controlShare);
    layout.addLayout(grid);
    for (const Text& note : view_.notes)
        grid->addWidget(textLabel("", content, qtText(note)), grid->rowCount(), 0, 1, SheetFieldRow::columns);
    for (const SheetViewSection& section : view_.sections)
        addSection(section, *grid, content);
    if (!view_.leftOut.empty())
        layout.addWidget(textLabel("Fehlende", content, qtText(view_.leftOut)));
}

void FunctionSheetForm::addPicture(QVBoxLayout& layout)
{
    const ProgramState& state = bench_.state;
    const PictureWords words = {texts_, hasDecimalComma(state.language), [&state](int cv, int value) {
                                    return Text(kindOf(state.set.table, cv).wordOfValue(value));
                                }};
    picture_ =
        makePicture(view_.picture, words, state.set.profile.model == Model::trailer, layout.parentWidget());
    if (picture_ == nullptr)
        return;
    picture_->setAnimated(bench_.settings.get(settingsSection, animationsKey) != u"0");
    connect(picture_, &Picture::changed, this, [this](int cv, int value) {
        values_.setValue(cv, value);
        showValues();
    });
    layout.addWidget(picture_);
}

void FunctionSheetForm::addSection(const SheetViewSection& section, QGridLayout& grid, QWidget* parent)
{
    const auto addWide = [&](QWidget* wide) {
        grid.addWidget(wide, grid.rowCount(), 0, 1, SheetFieldRow::columns);
    };
    if (!section.title.empty()) {
        QLabel* const title = textLabel("", parent, qtText(section.title));
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
        title->setContentsMargins(0, title->fontMetrics().height() / 2, 0, 0);
        addWide(title);
    }
    for (const Text& note : section.notes)
        addWide(textLabel("", parent, qtText(note)));
    for (const SheetViewField& field : section.fields)
        addRow(field, grid, parent);
}

void FunctionSheetForm::addRow(const SheetViewField& field, QGridLayout& grid, QWidget* parent)
{
    const SheetRowWords words = {texts_, hasDecimalComma(bench_.state.language), bench_.state.set.table};
    auto* const row = new SheetFieldRow(field, words, grid, parent);
    rows_.push_back(row);
    connect(row, &SheetFieldRow::valueChosen, this, [this](const SheetViewField& of, int value) {
        values_.setValue(of, value);
        showValues();
    });
    connect(row, &SheetFieldRow::switchChosen, this, [this](const SheetSwitch& one, bool on) {
        values_.setBit(one.cv, one.weight, on);
        showValues();
    });
    connect(row, &SheetFieldRow::addressesWanted, this, &FunctionSheetForm::openAddresses);
    connect(row, &SheetFieldRow::entered, this, [this, row] { help_->setPlainText(row->help()); });
}

void FunctionSheetForm::addButtons()
{
    const auto add = [this](const char* name, Caption caption, auto act) {
        QPushButton* const button = addButton(name, caption, ButtonRow::ActionRole);
        connect(button, &QPushButton::clicked, this, act);
        return button;
    };
    QPushButton* const factory = add("Werkswerte", Caption::sheetFactoryButton, [this] {
        values_.setFactoryValues();
        showValues();
    });
    QPushButton* const back = add("Zuruecksetzen", Caption::sheetBackButton, [this] { setBack(); });
    for (QPushButton* const button : {factory, back})
        button->setEnabled(values_.hasEdited());
    connect(addWriting("Schreiben", Caption::writeToVehicle), &QPushButton::clicked, this,
            [this] { finish(End::write); });
    add("OKButton", Caption::sheetTakeButton, [this] { finish(End::takeOver); });
    addButton("CancelButton", Caption::cancelButton, ButtonRow::RejectRole);
}

void FunctionSheetForm::setBack()
{
    values_.setBack();
    if (const SheetViewValues* const preset = view_.readyMadeOf(item_))
        values_.fill(*preset, {});
    showValues();
}

void FunctionSheetForm::copyValues()
{
    QGuiApplication::clipboard()->setText(qtText(values_.asText()));
}

void FunctionSheetForm::pasteValues()
{
    const SheetPaste paste = values_.paste(typedText(QGuiApplication::clipboard()->text()));
    showValues();
    const Text notTaken = pasteText(paste, texts_);
    if (!notTaken.empty())
        bench_.prompts.message(notTaken, PromptIcon::warning);
}

void FunctionSheetForm::animate(bool wanted)
{
    bench_.settings.save(settingsSection, animationsKey, wanted ? u"1" : u"0");
    if (picture_ != nullptr)
        picture_->setAnimated(wanted);
}

// The sheet opens anew behind it, with the addresses as they are then.
void FunctionSheetForm::openAddresses()
{
    if (mayClose())
        finish(End::addresses);
}

void FunctionSheetForm::finish(End end)
{
    end_ = end;
    accept();
}

void FunctionSheetForm::showValues()
{
    for (SheetFieldRow* const row : rows_)
        row->showValues(values_);
    const auto choose = [this](QComboBox* choice, std::span<const SheetViewValues> sets) {
        if (choice == nullptr)
            return;
        const QSignalBlocker quiet(choice);
        const auto filled = values_.filledWith(sets);
        choice->setCurrentIndex(filled ? static_cast<int>(*filled) + 1 : 0);
    };
    choose(variants_, view_.variants);
    choose(readyMade_, view_.readyMade);
    if (picture_ == nullptr)
        return;
    const CvTable& table = bench_.state.set.table;
    picture_->setValues([this, &table](int cv) {
        const auto own = values_.value(cv);
        return own || !isUsed(table, cv) ? own : table.value(cv);
    });
}

} // namespace karvo
