#include "firmware/forms/transfer_progress.h"

#include "ui/captions.h"

namespace karvo
{

namespace
{

constexpr int thousandths = 1000;

} // namespace

TransferProgress::TransferProgress(Workbench& bench, Work work, Caption title, const QString& text,
                                   QWidget* parent)
    : QProgressDialog(text, buttonText(bench.state.texts.caption(Caption::cancelButton)), 0, 0, parent),
      wait_(bench.wait),
      work_(work)
{
    constexpr int showAfter = 400;
    setObjectName(QStringLiteral("TransferProgress"));
    setWindowTitle(qtText(bench.state.texts.caption(title)));
    setWindowModality(Qt::WindowModal);
    setAutoReset(false);
    setMinimumDuration(showAfter);
    setMinimumWidth(50 * fontMetrics().averageCharWidth());
    setValue(0);
    sinceEvents_.start();
}

void TransferProgress::showProgress(std::uint64_t done, std::uint64_t total)
{
    if (total == 0)
        return;
    setMaximum(thousandths);
    setValue(static_cast<int>(done * thousandths / total));
}

bool TransferProgress::stopRequested()
{
    constexpr qint64 every = 50;
    if (work_ == Work::waitsForNothing && sinceEvents_.elapsed() >= every) {
        ended_ = ended_ || wait_.pause(std::chrono::milliseconds(1)) == WaitResult::ended;
        sinceEvents_.restart();
    }
    return ended_ || wasCanceled();
}

} // namespace karvo
