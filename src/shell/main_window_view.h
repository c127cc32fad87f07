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
    void showStatus(const Text& text) override { emit statusShown(text); }
    void showProgress(std::size_t done, std::size_t total) override { emit progressShown(done, total); }
    void showHourglass(bool shown) override { emit hourglassShown(shown); }
    void showLineBusy(bool busy) override { emit lineBusyShown(busy); }
    void listChanged() override { emit listReplaced(); }

signals:
    void statusShown(const karvo::Text& text);
    void progressShown(std::size_t done, std::size_t total);
    void hourglassShown(bool shown);
    void lineBusyShown(bool busy);
    void listReplaced();
};

} // namespace karvo
