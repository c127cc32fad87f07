// The progress window of the update through the programming interface.
#pragma once

#include "firmware/interface_update.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace karvo
{

// Opens with the first record and closes behind the last. Closing it meanwhile asks whether to stop.
class Firmware_Ablauf : public QDialog, public UpdateObserver
{
    Q_OBJECT

public:
    Firmware_Ablauf(const LanguageTables& texts, Prompts& prompts, QWidget* parent = nullptr);

    void reject() override;

    void showStart(const Text& text) override;
    void showRecords(std::size_t sent, std::size_t total) override;
    void showEnd() override;
    bool stopRequested() override { return stopRequested_; }

private:
    const LanguageTables& texts_;
    Prompts& prompts_;
    QPlainTextEdit* text_;
    QProgressBar* progress_;
    bool stopRequested_ = false;
};

} // namespace karvo
