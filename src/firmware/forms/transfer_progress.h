// How far a download or an unpacking is, with a button that ends it.
#pragma once

#include "program/work_observer.h"
#include "workbench/workbench.h"

#include <QElapsedTimer>
#include <QProgressDialog>

namespace karvo
{

class TransferProgress : public QProgressDialog, public WorkObserver
{
    Q_OBJECT

public:
    // Work that waits for nothing has its events run now and then, where it asks whether it is to end.
    enum class Work { waits, waitsForNothing };

    TransferProgress(Workbench& bench, Work work, Caption title, const QString& text, QWidget* parent);

    // There is nothing to be shown any more, not even after the time behind which it would have come up.
    void end() { reset(); }

    void showProgress(std::uint64_t done, std::uint64_t total) override;
    bool stopRequested() override;

private:
    Wait& wait_;
    Work work_;
    QElapsedTimer sinceEvents_;
    bool ended_ = false;
};

} // namespace karvo
