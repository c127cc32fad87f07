#include "firmware/forms/memory_window.h"

#include "firmware/memory_image_file.h"
#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/fixed_width_font.h"
#include "ui/flow_layout.h"
#include "ui/named.h"
#include "ui/typed_text.h"
#include "workbench/list_files.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(900, 640);
constexpr int linesOfDetails = 3;
constexpr int rowSpacing = 6; // pixels
constexpr int leastRows = 5;

std::filesystem::path home()
{
    return QDir::homePath().toStdU16String();
}

bool isHexadecimalWanted(const Settings& settings)
{
    return settings.get("Window", "Hexadecimal") == Text(u"1");
}

Text countText(std::size_t count)
{
    return textFromNumber(static_cast<long long>(count));
}

} // namespace

MemoryWindow::MemoryWindow(Workbench& bench, const char* name, Caption title, QWidget* parent)
    : Form(bench.state.texts, name, title, parent),
      bench_(bench),
      model_(new MemoryModel(view_, bench.state.set, texts_, this)),
      table_(named<QTableView>("Speicherinhalt", this, windowTitle())),
      source_(textLabel("Herkunft", this)),
      differences_(textLabel("Unterschiede", this)),
      byte_(textLabel("Byte", this)),
      note_(textLabel("Hinweis", this)),
      hexadecimal_(captioned<QCheckBox>("Hexadezimal", this, onButton(Caption::hexadecimal))),
      wanted_(entryField("Suchtext", this))
{
    view_.useHexadecimal(isHexadecimalWanted(bench.settings));
    hexadecimal_->setChecked(view_.isHexadecimal());
    connect(hexadecimal_, &QCheckBox::toggled, this, &MemoryWindow::useHexadecimal);
    buildTable();
    build();
    setUsualSize(usualSize);
    compareWith({});
}

void MemoryWindow::build()
{
    byte_->setMinimumHeight(linesOfDetails * fontMetrics().lineSpacing());
    column().addWidget(source_);
    column().addLayout(viewRow());
    column().addWidget(differences_);
    column().addWidget(table_, 1);
    column().addWidget(byte_);
    column().addLayout(searchRow());
    column().addWidget(note_);
}

void MemoryWindow::buildTable()
{
    table_->setModel(model_);
    table_->setFont(fixedWidthFont());
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->setCornerButtonEnabled(false);
    QHeaderView* const columns = table_->horizontalHeader();
    const int width = QFontMetrics(table_->font()).horizontalAdvance(QStringLiteral("0000*"));
    columns->setMinimumSectionSize(width);
    columns->setSectionResizeMode(QHeaderView::Stretch);
    QHeaderView* const rows = table_->verticalHeader();
    rows->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(QFontMetrics(table_->font()).height() + rowSpacing);
    table_->setMinimumHeight(leastRows * rows->defaultSectionSize());
    connect(table_->selectionModel(), &QItemSelectionModel::currentChanged, this, &MemoryWindow::showByte);
    auto* const copying = new QShortcut(QKeySequence::Copy, table_);
    copying->setContext(Qt::WidgetShortcut);
    connect(copying, &QShortcut::activated, this, &MemoryWindow::copy);
}

QPushButton* MemoryWindow::tool(const char* name, Caption caption, std::function<void()> act)
{
    auto* const button = captioned<QPushButton>(name, this, onButton(caption));
    connect(button, &QPushButton::clicked, this, std::move(act));
    return button;
}

QLayout* MemoryWindow::viewRow()
{
    auto* const row = new FlowLayout(nullptr);
    row->addWidget(hexadecimal_);
    row->addWidget(compareButton());
    const auto add = [&](const char* name, Caption caption, bool forward) {
        ofDifferences_.push_back(tool(name, caption, [this, forward] { goToDifference(forward); }));
        row->addWidget(ofDifferences_.back());
    };
    add("VorigerUnterschied", Caption::previousDifference, false);
    add("NaechsterUnterschied", Caption::nextDifference, true);
    return row;
}

QLayout* MemoryWindow::searchRow()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(labelFor(*wanted_, shown(Caption::memorySearch)));
    row->addWidget(wanted_, 1);
    connect(wanted_, &QLineEdit::returnPressed, this, &MemoryWindow::search);
    ofBytes_ = {tool("Suchen", Caption::memorySearchNext, [this] { search(); }),
                tool("Kopieren", Caption::copyBytes, [this] { copy(); })};
    for (QPushButton* const button : ofBytes_)
        row->addWidget(button);
    return row;
}

QPushButton* MemoryWindow::compareButton()
{
    auto* const button = captioned<QPushButton>("Vergleichen", this, onButton(Caption::compareMemoryWith));
    auto* const choices = new QMenu(button);
    const ProgramState& state = bench_.state;
    addItem(*choices, "Liste", Caption::compareBenchList, [this] {
        compareWithBenchList();
    })->setEnabled(!state.set.isEmpty());
    addItem(*choices, "Sicherung", Caption::compareBackup, [this] {
        compareWithListFile(bench_.state.keptFile);
    })->setEnabled(!state.keptFile.empty());
    addItem(*choices, "Fahrzeug", Caption::compareReadVehicle, [this] {
        compareWithVehicle();
    })->setEnabled(state.lastRead.has_value());
    addItem(*choices, "Listendatei", Caption::compareListFile, [this] { chooseListFile(); });
    addItem(*choices, "Abbild", Caption::compareImageFile, [this] { chooseImage(); });
    choices->addSeparator();
    addItem(*choices, "Nichts", Caption::compareNothing, [this] { compareWith({}); });
    button->setMenu(choices);
    return button;
}

void MemoryWindow::addLastButtons()
{
    ofBytes_.push_back(addButton("Speichern", Caption::saveMemoryImage, ButtonRow::ActionRole));
    connect(ofBytes_.back(), &QPushButton::clicked, this, &MemoryWindow::save);
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole);
    for (QPushButton* const button : ofBytes_)
        button->setEnabled(view_.rowCount() != 0);
    table_->setFocus();
}

void MemoryWindow::show(MemoryImage image, const QString& source)
{
    model_->replace([&] { view_.show(std::move(image)); });
    source_->setText(source);
    for (QPushButton* const button : ofBytes_)
        button->setEnabled(view_.rowCount() != 0);
    showDifferences();
    goTo(0);
}

void MemoryWindow::compareWith(std::optional<ComparedMemory> other)
{
    model_->repaint([&] { view_.compareWith(std::move(other)); });
    showDifferences();
    showByte();
}

void MemoryWindow::compareWithBenchList()
{
    compareWith(ComparedMemory{texts_.caption(Caption::compareBenchList),
                               imageOfValues(bench_.state.set.table), true});
}

void MemoryWindow::compareAnewWithBenchList()
{
    if (view_.compared() && view_.compared()->isBenchList)
        compareWithBenchList();
    showByte();
}

void MemoryWindow::compareWithVehicle()
{
    compareWith(
        ComparedMemory{texts_.caption(Caption::compareReadVehicle), imageOfBlock(*bench_.state.lastRead)});
}

void MemoryWindow::compareWithListFile(const std::filesystem::path& path)
{
    if (const auto list = readListFile(bench_, path))
        compareWith(ComparedMemory{pathText(path.filename()), imageOfValues(list->table)});
}

void MemoryWindow::chooseListFile()
{
    const auto path =
        bench_.prompts.openFile(listFileRequest(bench_, texts_.caption(Caption::compareListFile)));
    if (path)
        compareWithListFile(*path);
}

void MemoryWindow::chooseImage()
{
    if (auto other = openMemoryImage(bench_, texts_.caption(Caption::compareImageFile), home()))
        compareWith(ComparedMemory{pathText(other->path.filename()), std::move(other->image)});
}

void MemoryWindow::useHexadecimal(bool wanted)
{
    model_->repaint([&] { view_.useHexadecimal(wanted); });
    bench_.settings.save("Window", "Hexadecimal", wanted ? u"1" : u"0");
}

void MemoryWindow::showDifferences()
{
    const auto& other = view_.compared();
    const auto count = view_.differences().size();
    differences_->setText(
        qtText(other ? texts_.message(Message::memoryDifferences, {other->name, countText(count)})
                     : texts_.message(Message::memoryNotCompared)));
    for (QPushButton* const button : ofDifferences_)
        button->setEnabled(count != 0);
}

void MemoryWindow::showByte()
{
    QStringList lines;
    if (table_->currentIndex().isValid()) {
        for (const Text& line : byteDetails(view_, current(), bench_.state.set, texts_))
            lines.append(qtText(line));
    }
    byte_->setText(lines.join(u'\n'));
    note_->clear();
}

std::size_t MemoryWindow::current() const
{
    return MemoryModel::addressOf(table_->currentIndex());
}

void MemoryWindow::goTo(std::size_t address)
{
    if (view_.rowCount() == 0)
        return;
    table_->setCurrentIndex(model_->indexOf(address));
    table_->scrollTo(table_->currentIndex());
}

void MemoryWindow::goToDifference(bool forward)
{
    if (const auto address = view_.nextDifference(current(), forward))
        goTo(*address);
}

void MemoryWindow::search()
{
    const Text wanted = typedText(wanted_->text());
    const auto address = view_.find(wanted, bench_.state.set.table, current());
    if (address)
        goTo(*address);
    if (!address && !trimmed(wanted).empty())
        tell(texts_.message(Message::memoryNotFound, {wanted}));
}

void MemoryWindow::copy()
{
    std::vector<std::size_t> chosen;
    for (const QModelIndex& index : table_->selectionModel()->selectedIndexes())
        chosen.push_back(MemoryModel::addressOf(index));
    QApplication::clipboard()->setText(qtText(view_.copied(std::move(chosen))));
    tell(texts_.message(Message::bytesCopied));
}

void MemoryWindow::save()
{
    const auto request = memoryImageRequest(bench_, texts_.caption(Caption::saveMemoryImage), home());
    if (const auto path = saveMemoryImage(bench_, view_.image(), request))
        tell(texts_.caption(Caption::fileSaved, {pathText(*path)}));
}

void MemoryWindow::tell(const Text& note)
{
    note_->setText(qtText(note));
    bench_.view.showStatus(note);
}

} // namespace karvo
