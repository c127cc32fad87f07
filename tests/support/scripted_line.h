// A port and its wait with a clock of their own: each command that is written sets off the next scripted
// reply, piece by piece, and waiting moves the clock from piece to piece.
#pragma once

#include "program/serial_port.h"
#include "program/wait.h"
#include "support/journal.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace karvo::test
{

struct Piece {
    std::chrono::milliseconds after; // since the command was written
    Bytes bytes;                     // empty: the line hangs up
};

class ScriptedLine : public SerialPort, public Wait
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
    void endDuringNextWait() { ended_ = true; }
    // The first wait for which nothing is scripted ends with the program.
    void endWhenSilent() { endsWhenSilent_ = true; }
    // What an event does while a reply is awaited.
    void onWait(std::function<void()> act) { onWait_ = std::move(act); }
    void addWaitingBytes(const Bytes& bytes) { waiting_.insert(waiting_.end(), bytes.begin(), bytes.end()); }
    bool hasUnusedReplies() const { return !replies_.empty(); }
    std::chrono::microseconds now() const override { return now_; }

    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
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
    bool isOpen() const override { return open_; }
    std::size_t bytesWaiting() const override { return waiting_.size(); }
    Bytes readAll() override { return std::exchange(waiting_, Bytes()); }
    void write(const Bytes& bytes) override
    {
        std::string entry = "write";
        for (const auto byte : bytes)
            entry += " " + std::to_string(byte);
        journal_.push_back(entry);
        writtenAt_ = now_;
        underway_.clear();
        if (replies_.empty())
            return;
        underway_ = std::move(replies_.front());
        replies_.pop_front();
    }
    void setNotice(std::function<void()>) override {}

    WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) override
    {
        EXPECT_FALSE(waits_) << "a wait inside a wait";
        waits_ = true;
        if (onWait_)
            onWait_();
        const auto deadline = now_ + limit;
        auto result = WaitResult::met;
        while (result == WaitResult::met && !condition())
            result = nextPiece(deadline);
        waits_ = false;
        return result;
    }
    void wake() override {}

private:
    WaitResult nextPiece(std::chrono::milliseconds deadline)
    {
        if (ended_ || (endsWhenSilent_ && underway_.empty()))
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
    std::optional<PortError> refusal_;
    std::optional<PortError> laterRefusal_;
    std::function<void()> onWait_;
    Bytes waiting_;
    std::chrono::milliseconds now_{0};
    std::chrono::milliseconds writtenAt_{0};
    int number_ = 0;
    bool open_ = false;
    bool waits_ = false;
    bool ended_ = false;
    bool endsWhenSilent_ = false;
};

} // namespace karvo::test
