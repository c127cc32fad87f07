// The window of the boot loader upload: phase, page, time left, the log as it grows, and a summary at the
// end.
#pragma once

#include "firmware/forms/stop_question.h"
#include "firmware/upload.h"

#include <QDialog>
#include <QElapsedTimer>

class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace karvo
{

// The upload starts when the window is shown for the first time and runs without further questions. Closing
// the window meanwhile asks whether to stop; the window stays open when the upload is done.
class Upgrade : public QDialog, private UploadObserver
{
    Q_OBJECT

public:
    Upgrade(Workbench& bench, HexImage image, QWidget* parent = nullptr);

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void upload();
    void showReport(const UploadReport& report);
    void copyLog();
    QString timeLeft(const UploadProgress& progress) const;

    void showUpload(const UploadProgress& progress) override;
    void showStep(const UploadStep& step) override;
    bool stopRequested() override { return bench_.state.stopRequested; }

    Workbench& bench_;
    const LanguageTables& texts_;
    const HexImage image_;
    QLabel* phase_;
    QLabel* timeLeft_;
    QProgressBar* progress_;
    QPlainTextEdit* log_;
    QPushButton* copy_;
    QPushButton* close_;
    QElapsedTimer sincePages_; // runs from the first page on
    bool started_ = false;
    bool running_ = false;
    StopQuestion stopQuestion_;
};

} // namespace karvo
