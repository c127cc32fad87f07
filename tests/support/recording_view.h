// A view that writes down what it is told.
#pragma once

#include "program/view.h"
#include "support/journal.h"

namespace karvo::test
{

class RecordingView : public View
{
public:
    explicit RecordingView(Journal& journal) : journal_(journal) {}

    void showStatus(const Text& text) override { journal_.push_back("status " + utf8FromText(text)); }
    void showProgress(std::size_t done, std::size_t total) override { progress.emplace_back(done, total); }
    void showHourglass(bool shown) override { journal_.push_back(shown ? "hourglass" : "no hourglass"); }
    void showLineBusy(bool busy) override { journal_.push_back(busy ? "busy" : "idle"); }
    void listChanged() override { journal_.push_back("list changed"); }

    std::vector<std::pair<std::size_t, std::size_t>> progress;

private:
    Journal& journal_;
};

} // namespace karvo::test
