// The same change of CVs in many saved lists: files, changes, a preview, and the change.
#pragma once

#include "cvdata/batch_change.h"
#include "ui/editor_dialog.h"
#include "workbench/workbench.h"

#include <QTimer>

#include <vector>

class QLabel;
class QListWidget;
class QProgressBar;
class QSpinBox;
class QTableWidget;

namespace karvo
{

class Change_more_CV : public EditorDialog
{
    Q_OBJECT

public:
    explicit Change_more_CV(Workbench& bench, QWidget* parent = nullptr);

protected:
    bool holdsWork() const override;
    bool mayClose() override;

private:
    enum class Work { none, preview, change };

    void build();
    QWidget* filesBox();
    QWidget* changesBox();
    void addButtons();
    QPushButton* editing(const char* name, Caption caption, void (Change_more_CV::*act)());

    void addFiles();
    void removeFiles();
    void addChange();
    void removeChanges();
    void startPreview();
    void startChange();
    void stop();
    void workOn();
    void finish();
    void showChanges();
    void showProgress();
    void showAvailability();
    void addRows(const BatchFile& file);
    QString remarkOf(const BatchFile& file, const BatchRow& row) const;
    QString counts() const;
    bool hasAnyToChange() const;

    Workbench& bench_;
    std::vector<std::filesystem::path> paths_;
    std::vector<CvChange> changes_;
    std::vector<BatchFile> batch_;
    bool typedAnew_ = false; // a change that is not in all files yet
    Work work_ = Work::none;
    std::size_t next_ = 0; // of the files
    QTimer timer_;
    QListWidget* files_;
    QListWidget* changeList_;
    QSpinBox* cv_;
    QSpinBox* value_;
    QTableWidget* preview_;
    QLabel* state_;
    QProgressBar* progress_;
    std::vector<QPushButton*> editing_; // disabled while files are looked at or changed
    QPushButton* apply_ = nullptr;
    QPushButton* stop_ = nullptr;
};

} // namespace karvo
