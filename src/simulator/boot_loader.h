// The boot loader of a decoder: STK500 version 2 messages in, replies out, and the flash that it was sent.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace karvo::sim
{

class BootLoader
{
public:
    // The reply that this byte sets off; empty while the message is not complete. A message whose check byte
    // is wrong is not answered.
    std::vector<std::uint8_t> receive(std::uint8_t byte);

    // The port was opened anew: what was received of a message is forgotten.
    void reset();

    // As far as pages have come since the last erase. Pages before an erase are not taken.
    const std::vector<std::uint8_t>& flash() const { return flash_; }
    bool erased() const { return erased_; }

private:
    std::vector<std::uint8_t> answer();
    std::vector<std::uint8_t> answerBody(std::uint8_t command);
    std::size_t messageLength() const;

    std::vector<std::uint8_t> received_;
    std::vector<std::uint8_t> flash_;
    bool erased_ = false;
};

} // namespace karvo::sim
