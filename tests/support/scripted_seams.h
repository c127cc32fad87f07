// A line, prompts and a view that do what a test says, and write down in one journal what they are told; an
// archive and a web server likewise.
#pragma once

#include "program/archive.h"
#include "program/downloader.h"
#include "program/prompts.h"
#include "program/serial_port.h"
#include "program/view.h"
#include "program/wait.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <any>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace karvo::test
{

// In order, one line an event.
using Journal = std::vector<std::string>;

// All events in one line: "busy, open 1, idle".
inline std::string joined(const Journal& journal)
{
    std::string line;
    for (const auto& event : journal)
        line += (line.empty() ? "" : ", ") + event;
    return line;
}

// The end of that line, as long as what is expected of it.
inline std::string tailOf(const Journal& journal, const std::string& expected)
{
    const std::string line = joined(journal);
    return line.size() > expected.size() ? line.substr(line.size() - expected.size()) : line;
}

// A port and its wait, with a clock that goes only as far as something is awaited.
class LineDouble : public SerialPort, public Wait
{
public:
    std::chrono::microseconds now() const override { return now_; }
    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
    bool isOpen() const override { return open_; }
    std::size_t bytesWaiting() const override { return waiting_.size(); }
    Bytes readAll() override { return std::exchange(waiting_, Bytes()); }
    void addWaitingBytes(const Bytes& bytes) { waiting_.insert(waiting_.end(), bytes.begin(), bytes.end()); }
    void setNotice(std::function<void()>) override {}
    void wake() override {}

protected:
    std::chrono::microseconds now_{0};
    bool open_ = false;
    Bytes waiting_;
    int number_ = 0;
};

struct Piece {
    std::chrono::milliseconds after; // since the command was written
    Bytes bytes;                     // empty: the line hangs up
};

// Each command that is written sets off the next scripted reply, piece by piece, and waiting moves the clock
// from piece to piece.
class ScriptedLine : public LineDouble
{
public:
    explicit ScriptedLine(Journal& journal) : journal_(journal) {}

    // The reply to the next command that has none yet.
    void replyInPieces(const std::vector<Piece>& pieces)
    {
        replies_.emplace_back(pieces.begin(), pieces.end());
    }
    void replyWith(const Bytes& bytes) { replyInPieces({Piece{std::chrono::milliseconds{0}, bytes}}); }
    void stayPresent(std::vector<int> numbers) { present_ = std::move(numbers); }
    void refuseToOpen(PortError error) { refusal_ = std::move(error); }
    // A port that is open stays so until it hangs up.
    void refuseToOpenAgain(PortError error) { laterRefusal_ = std::move(error); }
    // The first wait for which nothing is scripted ends with the program.
    void endWhenSilent() { endsWhenSilent_ = true; }
    // What an event does while a reply is awaited.
    void onWait(std::function<void()> act) { onWait_ = std::move(act); }
    bool hasUnusedReplies() const { return !replies_.empty(); }

    void setSettings(const LineSettings& settings) override
    {
        journal_.push_back("settings " + std::to_string(settings.baud) + " n " +
                           std::to_string(settings.stopBits));
    }
    std::optional<PortError> open() override
    {
        if (!present_.empty() && std::find(present_.begin(), present_.end(), number_) == present_.end())
            return PortError{u"no such port", {}};
        if (refusal_)
            return refusal_;
        journal_.push_back("open " + std::to_string(number_));
        open_ = true;
        refusal_ = laterRefusal_;
        return std::nullopt;
    }
    void close() override
    {
        journal_.push_back("close");
        open_ = false;
        waiting_.clear();
    }
    void write(const Bytes& bytes) override
    {
        journal_.push_back("write");
        for (const auto byte : bytes)
            journal_.back() += " " + std::to_string(byte);
        writtenAt_ = now_;
        underway_.clear();
        if (replies_.empty())
            return;
        underway_ = std::move(replies_.front());
        replies_.pop_front();
    }
    WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) override
    {
        EXPECT_FALSE(std::exchange(waits_, true)) << "a wait inside a wait";
        if (onWait_)
            onWait_();
        const auto deadline = now_ + limit;
        auto result = WaitResult::met;
        while (result == WaitResult::met && !condition())
            result = nextPiece(deadline);
        waits_ = false;
        return result;
    }

private:
    WaitResult nextPiece(std::chrono::microseconds deadline)
    {
        if (endsWhenSilent_ && underway_.empty())
            return WaitResult::ended;
        if (underway_.empty() || writtenAt_ + underway_.front().after > deadline) {
            now_ = deadline;
            return WaitResult::timedOut;
        }
        const Piece piece = std::move(underway_.front());
        underway_.pop_front();
        now_ = std::max(now_, writtenAt_ + piece.after);
        open_ = open_ && !piece.bytes.empty();
        addWaitingBytes(piece.bytes);
        return WaitResult::met;
    }

    Journal& journal_;
    std::deque<std::deque<Piece>> replies_;
    std::deque<Piece> underway_;
    std::vector<int> present_;
    std::optional<PortError> refusal_, laterRefusal_;
    std::function<void()> onWait_;
    std::chrono::microseconds writtenAt_{0};
    bool waits_ = false, endsWhenSilent_ = false;
};

// An unexpected question and an unused answer fail the test.
class ScriptedPrompts : public Prompts
{
    using Path = std::filesystem::path;

public:
    explicit ScriptedPrompts(Journal& journal) : journal_(journal) {}
    ~ScriptedPrompts() override { EXPECT_TRUE(answers_.empty()) << "an answer was never asked for"; }

    // What is answered next, in order; nothing cancels.
    void answer(bool yes) { answers_.emplace_back(yes); }
    void type(std::optional<Text> text) { answers_.emplace_back(std::move(text)); }
    void choose(std::optional<std::size_t> place) { answers_.emplace_back(place); }
    void chooseFile(std::optional<Path> path) { answers_.emplace_back(std::move(path)); }
    void answerSaveChanges(SaveChoice choice) { answers_.emplace_back(choice); }

    QuestionKind lastKind = QuestionKind::usual; // of the last question

    void message(const Text& text, PromptIcon) override
    {
        journal_.push_back("message " + utf8FromText(text));
    }
    void error(const Text& text) override { journal_.push_back("error " + utf8FromText(text)); }
    bool question(const Text& text, QuestionKind kind, ProposedAnswer proposed) override
    {
        lastKind = kind;
        return next<bool>("question " + utf8FromText(text) +
                          (proposed == ProposedAnswer::yes ? " [yes]" : ""));
    }
    std::optional<Text> input(const Text& title, const Text&, const Text&) override
    {
        return next<std::optional<Text>>("input " + utf8FromText(title));
    }
    std::optional<std::size_t> choice(const Text& title, const Text& prompt, const std::vector<Text>& options,
                                      std::size_t current) override
    {
        std::string entry = "choice " + utf8FromText(title) + ": " + utf8FromText(prompt);
        for (std::size_t i = 0; i < options.size(); ++i)
            entry += (i == current ? " *" : " ") + utf8FromText(options[i]);
        return next<std::optional<std::size_t>>(entry);
    }
    std::optional<Path> openFile(const FileRequest& request) override { return nextFile("open", request); }
    std::vector<Path> openFiles(const FileRequest& request) override
    {
        const auto chosen = nextFile("open some", request);
        return chosen ? std::vector{*chosen} : std::vector<Path>();
    }
    std::optional<Path> saveFile(const FileRequest& request) override { return nextFile("save", request); }
    SaveChoice saveChanges(const Text& text) override
    {
        return next("save changes " + utf8FromText(text), SaveChoice::cancel);
    }
    void endProgram() override { journal_.push_back("end program"); }

private:
    template <typename Answer>
    Answer next(const std::string& asked, Answer otherwise = {})
    {
        journal_.push_back(asked);
        const auto* const answer = answers_.empty() ? nullptr : std::any_cast<Answer>(&answers_.front());
        EXPECT_NE(answer, nullptr) << "unexpected " << asked;
        if (answer != nullptr) {
            otherwise = *answer;
            answers_.pop_front();
        }
        return otherwise;
    }
    std::optional<Path> nextFile(const std::string& what, const FileRequest& request)
    {
        auto entry = what + " " + utf8FromText(request.filter) + " in " + request.folder.string();
        if (request.other)
            entry += " or " + utf8FromText(request.other->filter) + " in " + request.other->folder.string();
        return next<std::optional<Path>>(entry + ": " + utf8FromText(request.name));
    }

    Journal& journal_;
    std::deque<std::any> answers_;
};

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
    void showWriteProgress(int cv, std::size_t left) override { writeProgress.emplace_back(cv, left); }
    void showHourglass(bool shown) override { journal_.push_back(shown ? "hourglass" : "no hourglass"); }
    void showLineBusy(bool busy) override { journal_.push_back(busy ? "busy" : "idle"); }
    void listChanged() override { journal_.push_back("list changed"); }

    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::vector<std::pair<int, std::size_t>> writeProgress;

private:
    Journal& journal_;
    Text status_;
};

class ScriptedArchive : public Archive
{
public:
    std::vector<std::pair<ArchiveEntry, std::vector<std::string>>> entries; // with their bytes in pieces
    std::optional<Text> fault;                                              // behind the last entry
    std::filesystem::path read_;

    std::optional<Text> read(const std::filesystem::path& path, ArchiveSink& sink) override
    {
        read_ = path;
        const auto takes = [&](auto& piece) { return sink.takeBytes(Bytes(piece.begin(), piece.end())); };
        for (const auto& [entry, pieces] : entries) {
            if (!sink.takeEntry(entry) || !std::all_of(pieces.begin(), pieces.end(), takes))
                return std::nullopt;
        }
        return fault;
    }
};

class ScriptedDownloader : public Downloader
{
public:
    DownloadEnd end = DownloadEnd::complete;
    std::function<void(WorkObserver&)> during;
    Text address;
    std::filesystem::path target;

    DownloadEnd fetch(const Text& from, const std::filesystem::path& to, WorkObserver& observer) override
    {
        address = from;
        target = to;
        if (during)
            during(observer);
        return end;
    }
};

struct ScriptedSeams {
    Journal journal;
    ScriptedLine line{journal};
    ScriptedPrompts prompts{journal};
    RecordingView view{journal};
};

} // namespace karvo::test
