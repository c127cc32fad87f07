#include "workbench/forms/more_cvs_dialog.h"

#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/usual_size.h"
#include "workbench/batch_on_bench.h"
#include "workbench/list_files.h"

#include <QElapsedTimer>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
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
    : QDialog(parent),
      bench_(bench),
      texts_(bench.state.texts),
      files_(new QListWidget(this)),
      changeList_(new QListWidget(this)),
      cv_(new QSpinBox(this)),
      value_(new QSpinBox(this)),
      preview_(new QTableWidget(0, 5, this)),
      state_(new QLabel(this)),
      progress_(new QProgressBar(this))
{
    build();
    timer_.setParent(this);
    connect(&timer_, &QTimer::timeout, this, &Change_more_CV::workOn);
    showAvailability();
}

void Change_more_CV::build()
{
    setObjectName(QStringLiteral("Change_more_CV"));
    setWindowTitle(qtText(texts_.caption(Caption::moreCvsTitle)));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    preview_->setObjectName(QStringLiteral("Preview"));
    preview_->setAccessibleName(qtText(texts_.caption(Caption::moreCvsPreview)));
    preview_->setHorizontalHeaderLabels(
        {qtText(texts_.caption(Caption::moreCvsFile)), qtText(texts_.caption(Caption::moreCvsCv)),
         qtText(texts_.caption(Caption::moreCvsOldValue)), qtText(texts_.caption(Caption::moreCvsNewValue)),
         qtText(texts_.caption(Caption::moreCvsRemark))});
    preview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    preview_->setSelectionBehavior(QAbstractItemView::SelectRows);
    preview_->setTabKeyNavigation(false);
    preview_->verticalHeader()->hide();
    preview_->horizontalHeader()->setStretchLastSection(true);
    preview_->resizeColumnsToContents();
    state_->setObjectName(QStringLiteral("State"));
    state_->setTextFormat(Qt::PlainText);
    progress_->setObjectName(QStringLiteral("Progress"));
    progress_->setAccessibleName(qtText(texts_.caption(Caption::moreCvsPreview)));

    auto* const top = new QHBoxLayout;
    top->addWidget(filesBox(), 3);
    top->addWidget(changesBox(), 2);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(top, 2);
    layout->addWidget(preview_, 3);
    layout->addWidget(state_);
    layout->addWidget(progress_);
    layout->addWidget(buttons());
    resizeToUsual(*this, usualSize);
}

QWidget* Change_more_CV::filesBox()
{
    auto* const box = new QGroupBox(qtText(texts_.caption(Caption::moreCvsFiles)), this);
    files_->setObjectName(QStringLiteral("Files"));
    files_->setAccessibleName(box->title());
    files_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* const add = button("AddFiles", Caption::moreCvsAddFiles);
    auto* const remove = button("RemoveFiles", Caption::moreCvsRemove);
    editing_.insert(editing_.end(), {add, remove});
    connect(add, &QPushButton::clicked, this, &Change_more_CV::addFiles);
    connect(remove, &QPushButton::clicked, this, &Change_more_CV::removeFiles);
    auto* const layout = new QGridLayout(box);
    layout->addWidget(files_, 0, 0, 1, 3);
    layout->addWidget(add, 1, 0);
    layout->addWidget(remove, 1, 1);
    layout->setColumnStretch(2, 1);
    return box;
}

QWidget* Change_more_CV::changesBox()
{
    auto* const box = new QGroupBox(qtText(texts_.caption(Caption::moreCvsChanges)), this);
    changeList_->setObjectName(QStringLiteral("Changes"));
    changeList_->setAccessibleName(box->title());
    changeList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    cv_->setObjectName(QStringLiteral("CV"));
    cv_->setRange(1, CvTable::lastRow);
    cv_->setPrefix(qtText(texts_.caption(Caption::moreCvsCv)));
    cv_->setAccessibleName(qtText(texts_.caption(Caption::moreCvsCv)));
    value_->setObjectName(QStringLiteral("Value"));
    value_->setRange(0, 255);
    value_->setPrefix(QStringLiteral("= "));
    value_->setAccessibleName(qtText(texts_.caption(Caption::moreCvsNewValue)));
    auto* const add = button("AddChange", Caption::moreCvsAddChange);
    auto* const remove = button("RemoveChanges", Caption::moreCvsRemove);
    editing_.insert(editing_.end(), {add, remove});
    connect(add, &QPushButton::clicked, this, &Change_more_CV::addChange);
    connect(remove, &QPushButton::clicked, this, &Change_more_CV::removeChanges);
    auto* const layout = new QGridLayout(box);
    layout->addWidget(cv_, 0, 0);
    layout->addWidget(value_, 0, 1);
    layout->addWidget(add, 0, 2);
    layout->addWidget(changeList_, 1, 0, 1, 3);
    layout->addWidget(remove, 2, 2);
    return box;
}

QWidget* Change_more_CV::buttons()
{
    auto* const row = new QWidget(this);
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    apply_ = button("Apply", Caption::moreCvsApply);
    stop_ = button("Anhalten", Caption::moreCvsStop);
    auto* const close = button("Schliessen", Caption::closeButton);
    connect(apply_, &QPushButton::clicked, this, &Change_more_CV::startChange);
    connect(stop_, &QPushButton::clicked, this, &Change_more_CV::stop);
    connect(close, &QPushButton::clicked, this, &Change_more_CV::reject);
    layout->addWidget(apply_);
    layout->addWidget(stop_);
    layout->addStretch();
    layout->addWidget(close);
    return row;
}

QPushButton* Change_more_CV::button(const char* name, Caption caption)
{
    auto* const made = new QPushButton(buttonText(texts_.caption(caption)), this);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

// A file under change is finished first; the others are left.
void Change_more_CV::reject()
{
    stop();
    QDialog::reject();
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
    if (changed)
        takeBatchChanges(bench_, batch_);
    const auto done =
        std::count_if(batch_.begin(), batch_.end(), [](const BatchFile& file) { return file.done; });
    if (changed)
        state_->setText(filledCaption(
            texts_, Caption::moreCvsSummary,
            {textFromNumber(done), textFromNumber(static_cast<long long>(batch_.size()) - done)}));
    else
        state_->setText(counts());
    preview_->resizeColumnsToContents();
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
    const bool anyToChange = std::any_of(batch_.begin(), batch_.end(), [](const BatchFile& file) {
        return !file.isRefused() && !file.done && file.changesAnything();
    });
    apply_->setEnabled(idle && anyToChange);
    stop_->setEnabled(!idle);
    progress_->setVisible(!idle);
}

void Change_more_CV::addRows(const BatchFile& file)
{
    const QString name = qtText(pathText(file.path.filename()));
    const auto add = [&](const QStringList& cells) {
        const int row = preview_->rowCount();
        preview_->insertRow(row);
        for (int column = 0; column < cells.size(); ++column) {
            auto* const item = new QTableWidgetItem(cells[column]);
            item->setToolTip(column == 0 ? qtText(pathText(file.path)) : cells[column]);
            preview_->setItem(row, column, item);
        }
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
        return qtText(texts_.caption(Caption::moreCvsFileRefused));
    if (numberFromText(row.oldValue) == row.newValue)
        return qtText(texts_.caption(Caption::moreCvsIsSo));
    return qtText(texts_.caption(file.done ? Caption::moreCvsChanged : Caption::moreCvsWillChange));
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
