// The logic's view as signals: it exists before the window does, and the window listens.
#pragma once

#include "program/view.h"

#include <QObject>

namespace karvo
{

class MainWindowView : public QObject, public View
{
    Q_OBJECT

public:
    void showStatus(const Text& text) override
    {
        status_ = text;
        emit statusShown(text);
    }
    Text statusText() const override { return status_; }
    void showProgress(std::size_t done, std::size_t total) override { emit progressShown(done, total); }
    void showWriteProgress(int cv, std::size_t remaining) override { emit writeProgressShown(cv, remaining); }
    void showReading(bool underWay) override { emit readingShown(underWay); }
    void showHourglass(bool shown) override { emit hourglassShown(shown); }
    void showLineBusy(bool busy) override { emit lineBusyShown(busy); }
    void listChanged() override { emit listReplaced(); }

signals:
    void statusShown(const karvo::Text& text);
    void progressShown(std::size_t done, std::size_t total);
    void writeProgressShown(int cv, std::size_t remaining);
    void readingShown(bool underWay);
    void hourglassShown(bool shown);
    void lineBusyShown(bool busy);
    void listReplaced();

private:
    Text status_;
};

} // namespace karvo
