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

    void showStatus(const Text& text) override
    {
        status_ = text;
        journal_.push_back("status " + utf8FromText(text));
    }
    Text statusText() const override { return status_; }
    void showProgress(std::size_t done, std::size_t total) override { progress.emplace_back(done, total); }
    void showWriteProgress(int cv, std::size_t remaining) override
    {
        writeProgress.emplace_back(cv, remaining);
    }
    void showHourglass(bool shown) override { journal_.push_back(shown ? "hourglass" : "no hourglass"); }
    void showLineBusy(bool busy) override { journal_.push_back(busy ? "busy" : "idle"); }
    void listChanged() override { journal_.push_back("list changed"); }

    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::vector<std::pair<int, std::size_t>> writeProgress;

private:
    Journal& journal_;
    Text status_;
};

} // namespace karvo::test
