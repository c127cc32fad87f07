// How far a download or an unpacking is, with a button that ends it.
#pragma once

#include "firmware/unzip.h"
#include "program/downloader.h"
#include "workbench/workbench.h"

#include <QElapsedTimer>
#include <QProgressDialog>

namespace karvo
{

class TransferProgress : public QProgressDialog, public DownloadObserver, public UnzipObserver
{
    Q_OBJECT

public:
    TransferProgress(Workbench& bench, Caption title, const QString& text, QWidget* parent);

    // There is nothing to be shown any more, not even after the time behind which it would have come up.
    void end() { reset(); }

    void showBytes(long long received, long long total) override;
    bool stopRequested() override { return wasCanceled(); }

    // Lets events run now and then: unpacking waits for nothing.
    bool goOn(std::uint64_t unpackedBytes) override;

private:
    Wait& wait_;
    QElapsedTimer sinceEvents_;
    bool ended_ = false;
};

} // namespace karvo
