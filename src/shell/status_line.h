// The lowest row: what is going on, how far it is, and the version.
#pragma once

#include "language/language_tables.h"

#include <QPointer>
#include <QStatusBar>
#include <QTimer>

#include <cstddef>

class QLabel;
class QProgressBar;
class QPushButton;

namespace karvo
{

class StatusLine : public QStatusBar
{
    Q_OBJECT

public:
    // In demo mode a note says that the interface is simulated.
    StatusLine(bool simulated, QWidget* parent);

    void applyCaptions(const LanguageTables& texts);
    void showStatus(const QString& text);

    // A total of 0 takes the progress bar away.
    void showProgress(const LanguageTables& texts, std::size_t done, std::size_t total);

    // Which CV of many is being written, and a button that ends it; CV 0 takes both away.
    void showWriteProgress(const LanguageTables& texts, int cv, std::size_t remaining);

    // A read is under way, which the button ends, or no longer.
    void showReading(bool underWay);

    void showVersion(const QString& version);

    // A sign changes its shape while the line is in use.
    void setLineBusy(bool busy);

signals:
    void stopWanted();

private:
    void blink();
    void offerStop();
    void withdrawStop();
    void showStopping(bool stopping);

    QLabel* status_;
    QProgressBar* progress_;
    QPushButton* stop_;
    QLabel* sign_;
    QLabel* simulation_ = nullptr; // in demo mode only
    QLabel* version_;
    QString stopCaption_;
    QString stopReadingCaption_;
    QString stoppingCaption_;
    QPointer<QWidget> focusBefore_; // what had the keyboard before the button took it
    bool reading_ = false;
    QTimer blinkTimer_;       // "Timer2"
    std::size_t toWrite_ = 0; // of the write of many under way
};

} // namespace karvo
