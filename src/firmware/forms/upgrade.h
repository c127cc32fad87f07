// The window of the boot loader upload: phase, page, time left, the log as it grows, and the verdict at the
// end.
#pragma once

#include "firmware/forms/stop_question.h"
#include "firmware/upload.h"
#include "ui/form.h"

#include <QElapsedTimer>

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace karvo
{

// The upload starts when the window is shown for the first time and runs without further questions. Closing
// the window meanwhile asks whether to stop, and so does a loader that answers nothing; the window stays open
// with its log when the upload is done or stopped.
class Upgrade : public Form, private UploadObserver
{
    Q_OBJECT

public:
    Upgrade(Workbench& bench, HexImage image, QWidget* parent = nullptr);

signals:
    void transferEnded();

protected:
    void showEvent(QShowEvent* event) override;
    bool mayClose() override;

private:
    void build();
    void upload();
    void showReport(const UploadReport& report);
    void showNotice(const QString& notice);
    void copyLog();
    QString timeLeft(const UploadProgress& progress) const;

    void showUpload(const UploadProgress& progress) override;
    void showStep(const UploadStep& step) override;
    void showSilence(EraseState erase) override;
    bool stopRequested() override { return bench_.state.stopRequested; }

    Workbench& bench_;
    const HexImage image_;
    QLabel* phase_;
    QLabel* notice_; // that no loader answers
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
