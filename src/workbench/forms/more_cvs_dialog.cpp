#include "workbench/forms/more_cvs_dialog.h"

#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/named.h"
#include "ui/result_table.h"
#include "workbench/batch_on_bench.h"
#include "workbench/list_files.h"

#include <QElapsedTimer>
#include <QGridLayout>
#include <QGroupBox>
#include <QListWidget>
#include <QProgressBar>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace karvo
{

namespace
{

constexpr QSize usualSize(900, 700);
constexpr int sliceMs = 30; // the window answers in between

} // namespace

Change_more_CV::Change_more_CV(Workbench& bench, QWidget* parent)
    : EditorDialog(bench.state.texts, "Change_more_CV", Caption::moreCvsTitle, parent),
      bench_(bench),
      files_(named<QListWidget>("Files", this, shown(Caption::moreCvsFiles))),
      changeList_(named<QListWidget>("Changes", this, shown(Caption::moreCvsChanges))),
      cv_(named<QSpinBox>("CV", this, shown(Caption::moreCvsCv))),
      value_(named<QSpinBox>("Value", this, shown(Caption::moreCvsNewValue))),
      preview_(resultTable("Preview", this, shown(Caption::moreCvsPreview),
                           {shown(Caption::moreCvsFile), shown(Caption::moreCvsCv),
                            shown(Caption::moreCvsOldValue), shown(Caption::moreCvsNewValue),
                            shown(Caption::moreCvsRemark)})),
      state_(textLabel("State", this)),
      progress_(named<QProgressBar>("Progress", this, shown(Caption::moreCvsPreview)))
{
    build();
    timer_.setParent(this);
    connect(&timer_, &QTimer::timeout, this, &Change_more_CV::workOn);
    showAvailability();
}

void Change_more_CV::build()
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setUsualSize(usualSize);
    fitColumns(*preview_);
    auto* const top = new QHBoxLayout;
    top->addWidget(filesBox(), 3);
    top->addWidget(changesBox(), 2);
    column().addLayout(top, 2);
    column().addWidget(preview_, 3);
    column().addWidget(state_);
    column().addWidget(progress_);
    addButtons();
}

QWidget* Change_more_CV::filesBox()
{
    auto* const box = new QGroupBox(shown(Caption::moreCvsFiles), this);
    files_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* const layout = new QGridLayout(box);
    layout->addWidget(files_, 0, 0, 1, 3);
    layout->addWidget(editing("AddFiles", Caption::moreCvsAddFiles, &Change_more_CV::addFiles), 1, 0);
    layout->addWidget(editing("RemoveFiles", Caption::moreCvsRemove, &Change_more_CV::removeFiles), 1, 1);
    layout->setColumnStretch(2, 1);
    return box;
}

QWidget* Change_more_CV::changesBox()
{
    auto* const box = new QGroupBox(shown(Caption::moreCvsChanges), this);
    changeList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    cv_->setRange(1, CvTable::lastRow);
    cv_->setPrefix(shown(Caption::moreCvsCv));
    value_->setRange(0, 255);
    value_->setPrefix(QStringLiteral("= "));
    auto* const layout = new QGridLayout(box);
    layout->addWidget(cv_, 0, 0);
    layout->addWidget(value_, 0, 1);
    layout->addWidget(editing("AddChange", Caption::moreCvsAddChange, &Change_more_CV::addChange), 0, 2);
    layout->addWidget(changeList_, 1, 0, 1, 3);
    layout->addWidget(editing("RemoveChanges", Caption::moreCvsRemove, &Change_more_CV::removeChanges), 2, 2);
    return box;
}

// A button for what is closed while files are looked at or changed.
QPushButton* Change_more_CV::editing(const char* name, Caption caption, void (Change_more_CV::*act)())
{
    auto* const button = captioned<QPushButton>(name, this, onButton(caption));
    connect(button, &QPushButton::clicked, this, act);
    editing_.push_back(button);
    return button;
}

void Change_more_CV::addButtons()
{
    apply_ = addButton("Apply", Caption::moreCvsApply, ButtonRow::ActionRole);
    stop_ = addButton("Anhalten", Caption::moreCvsStop, ButtonRow::ActionRole);
    connect(apply_, &QPushButton::clicked, this, &Change_more_CV::startChange);
    connect(stop_, &QPushButton::clicked, this, &Change_more_CV::stop);
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole);
}

// Changes that were typed and are in no file yet.
bool Change_more_CV::holdsWork() const
{
    const bool knowsAll = !paths_.empty() && batch_.size() == paths_.size();
    return hasAnyToChange() || (typedAnew_ && !changes_.empty() && !knowsAll);
}

// The work rests while the question stands, and goes on with what is left where the window stays.
bool Change_more_CV::mayClose()
{
    timer_.stop();
    const bool closes = EditorDialog::mayClose();
    if (closes)
        stop();
    else if (work_ != Work::none)
        timer_.start(0);
    return closes;
}

void Change_more_CV::addFiles()
{
    auto request = listFileRequest(bench_, texts_.caption(Caption::moreCvsAddFiles));
    request.name.clear();
    std::set<std::filesystem::path> known(paths_.begin(), paths_.end());
    for (const auto& path : bench_.prompts.openFiles(request)) {
        if (!known.insert(path).second)
            continue;
        paths_.push_back(path);
        files_->addItem(qtText(pathText(path)));
    }
    startPreview();
}

void Change_more_CV::removeFiles()
{
    for (int row = files_->count() - 1; row >= 0; --row) {
        if (!files_->item(row)->isSelected())
            continue;
        paths_.erase(paths_.begin() + row);
        delete files_->takeItem(row);
    }
    startPreview();
}

// Another value for a CV takes the place of the one before.
void Change_more_CV::addChange()
{
    const CvChange change{cv_->value(), value_->value()};
    const auto same = std::find_if(changes_.begin(), changes_.end(),
                                   [&](const CvChange& other) { return other.cv == change.cv; });
    if (same == changes_.end())
        changes_.push_back(change);
    else
        *same = change;
    typedAnew_ = true;
    showChanges();
    startPreview();
}

void Change_more_CV::removeChanges()
{
    for (int row = changeList_->count() - 1; row >= 0; --row) {
        if (changeList_->item(row)->isSelected())
            changes_.erase(changes_.begin() + row);
    }
    showChanges();
    startPreview();
}

void Change_more_CV::showChanges()
{
    changeList_->clear();
    for (const CvChange& change : changes_)
        changeList_->addItem(QStringLiteral("CV%1 = %2").arg(change.cv).arg(change.value));
}

void Change_more_CV::startPreview()
{
    batch_.clear();
    preview_->setRowCount(0);
    work_ = Work::preview;
    next_ = changes_.empty() ? paths_.size() : 0;
    timer_.start(0);
    showProgress();
    showAvailability();
}

void Change_more_CV::startChange()
{
    preview_->setRowCount(0);
    work_ = Work::change;
    next_ = 0;
    timer_.start(0);
    showProgress();
    showAvailability();
}

void Change_more_CV::stop()
{
    if (work_ == Work::none)
        return;
    for (; work_ == Work::change && next_ < batch_.size(); ++next_)
        addRows(batch_[next_]);
    finish();
}

void Change_more_CV::workOn()
{
    QElapsedTimer slice;
    slice.start();
    const std::size_t count = work_ == Work::preview ? paths_.size() : batch_.size();
    while (next_ < count && !slice.hasExpired(sliceMs)) {
        if (work_ == Work::preview) {
            for (BatchFile& file : previewBatch(bench_.files, std::span(paths_).subspan(next_, 1), changes_))
                batch_.push_back(std::move(file));
        } else {
            applyBatch(bench_.files, texts_, std::span(batch_).subspan(next_, 1));
        }
        addRows(batch_[next_]);
        ++next_;
    }
    showProgress();
    if (next_ >= count)
        finish();
}

void Change_more_CV::finish()
{
    const bool changed = work_ == Work::change;
    timer_.stop();
    work_ = Work::none;
    if (changed) {
        typedAnew_ = hasAnyToChange();
        takeBatchChanges(bench_, batch_);
    }
    const auto done =
        std::count_if(batch_.begin(), batch_.end(), [](const BatchFile& file) { return file.done; });
    if (changed)
        state_->setText(filledCaption(
            texts_, Caption::moreCvsSummary,
            {textFromNumber(done), textFromNumber(static_cast<long long>(batch_.size()) - done)}));
    else
        state_->setText(counts());
    fitColumns(*preview_);
    showAvailability();
}

void Change_more_CV::showProgress()
{
    const std::size_t count = work_ == Work::preview ? paths_.size() : batch_.size();
    progress_->setRange(0, static_cast<int>(std::max<std::size_t>(count, 1)));
    progress_->setValue(static_cast<int>(next_));
    state_->setText(filledCaption(
        texts_, Caption::moreCvsProgress,
        {textFromNumber(static_cast<long long>(next_)), textFromNumber(static_cast<long long>(count))}));
}

void Change_more_CV::showAvailability()
{
    const bool idle = work_ == Work::none;
    for (QPushButton* const button : editing_)
        button->setEnabled(idle);
    apply_->setEnabled(idle && hasAnyToChange());
    stop_->setEnabled(!idle);
    progress_->setVisible(!idle);
}

bool Change_more_CV::hasAnyToChange() const
{
    return std::any_of(batch_.begin(), batch_.end(), [](const BatchFile& file) {
        return !file.isRefused() && !file.done && file.changesAnything();
    });
}

void Change_more_CV::addRows(const BatchFile& file)
{
    const QString name = qtText(pathText(file.path.filename()));
    const auto add = [&](const QStringList& cells) {
        const int row = appendRow(*preview_, cells);
        preview_->item(row, 0)->setToolTip(qtText(pathText(file.path)));
    };
    if (file.rows.empty())
        add({name, {}, {}, {}, qtText(refusalText(file, texts_))});
    for (const BatchRow& row : file.rows)
        add({name, QStringLiteral("CV%1").arg(row.cv),
             row.oldValue.empty() ? QStringLiteral("---") : qtText(row.oldValue),
             QString::number(row.newValue), remarkOf(file, row)});
}

QString Change_more_CV::remarkOf(const BatchFile& file, const BatchRow& row) const
{
    if (row.refusal != BatchRefusal::none)
        return qtText(refusalText(row, texts_));
    if (file.refusal != BatchRefusal::none)
        return qtText(refusalText(file, texts_));
    if (file.isRefused())
        return shown(Caption::moreCvsFileRefused);
    if (numberFromText(row.oldValue) == row.newValue)
        return shown(Caption::moreCvsIsSo);
    return shown(file.done ? Caption::moreCvsChanged : Caption::moreCvsWillChange);
}

QString Change_more_CV::counts() const
{
    if (batch_.empty())
        return {};
    const auto refused =
        std::count_if(batch_.begin(), batch_.end(), [](const BatchFile& file) { return file.isRefused(); });
    const auto toChange = std::count_if(batch_.begin(), batch_.end(), [](const BatchFile& file) {
        return !file.isRefused() && file.changesAnything();
    });
    return filledCaption(texts_, Caption::moreCvsPreviewCounts,
                         {textFromNumber(toChange), textFromNumber(refused)});
}

} // namespace karvo
