// The boot loader of a decoder: STK500 version 2 messages in, replies out, and the flash that it was sent.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace karvo::sim
{

// How a loader takes what a programmer of this framing asks beyond the writing of flash: parameters,
// settings, lock bits, fuses, and the leave messages with the byte that their size does not count.
enum class LoaderManner {
    usual,
    strict,     // it answers them with a check-sum error
    terse,      // it does not answer them
    changedByte // as usual, but one byte of the fourth page is changed on its way to the loader
};

class BootLoader
{
public:
    // The reply that this byte sets off; empty while the message is not complete. A message whose check byte
    // is wrong is not answered; a page in it is skipped.
    std::vector<std::uint8_t> receive(std::uint8_t byte, LoaderManner manner = LoaderManner::usual);

    // The port was opened anew: what was received of a message is forgotten.
    void reset();

    // False while a message is not complete.
    bool isBetweenMessages() const { return received_.empty(); }

    // As far as pages have come since the last erase. Pages before an erase are not taken.
    const std::vector<std::uint8_t>& flash() const { return flash_; }
    bool erased() const { return erased_; }

private:
    std::vector<std::uint8_t> answer(LoaderManner manner);
    bool isByteToChange() const;
    std::vector<std::uint8_t> answerBody(std::uint8_t command);
    std::size_t messageLength() const;

    std::vector<std::uint8_t> received_;
    std::vector<std::uint8_t> flash_;
    bool erased_ = false;
    bool changed_ = false; // the one byte, since the last erase
};

// What a complete message asks for, in a word for logs; "unknown" for what is none.
std::string_view wordForMessage(std::span<const std::uint8_t> message);

} // namespace karvo::sim
