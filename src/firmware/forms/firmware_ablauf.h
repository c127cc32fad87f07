// The progress window of the update through the programming interface.
#pragma once

#include "firmware/forms/stop_question.h"
#include "firmware/interface_update.h"
#include "ui/form.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace karvo
{

// Opens with the first record and closes behind the last. Closing it meanwhile asks whether to stop.
class Firmware_Ablauf : public Form, public UpdateObserver
{
    Q_OBJECT

public:
    explicit Firmware_Ablauf(Workbench& bench, QWidget* parent = nullptr);

    void showHeader(const Text& header) override;
    void showStart(const Text& text) override;
    void showProgress(std::uint64_t sent, std::uint64_t total) override;
    void showEnd() override;
    bool stopRequested() override { return bench_.state.stopRequested; }

protected:
    bool mayClose() override;

private:
    Workbench& bench_;
    QLabel* header_;
    QPlainTextEdit* text_;
    QProgressBar* progress_;
    StopQuestion stopQuestion_;
};

} // namespace karvo
