// A serial device without hardware: whatever opens path() talks to this end. POSIX systems only.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace karvo
{

// Passes all 256 byte values unchanged in both directions, as fast as it can whatever rate is set. Whoever
// opened path() sees the device go away when the object does. It may be closed and opened as often as wanted
// meanwhile.
class PseudoTerminal
{
public:
    // Throws std::system_error when the system has none to give.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& path() const { return path_; }

    // Becomes readable when bytes have come.
    int descriptor() const { return ownEnd_; }

    // The rate that whoever opened path() has set, 4800 baud before anybody did; nothing where it is none of
    // the usual ones. It stays when path() is closed.
    std::optional<int> baud() const;

    // What waits, at most 4096 bytes; never blocks.
    std::vector<std::uint8_t> read();

    // Never blocks: when nobody reads, what exceeds the system's buffer (some 4096 bytes) is lost, as on a
    // line.
    void write(std::span<const std::uint8_t> bytes);

private:
    int ownEnd_ = -1;
    int otherEnd_ = -1; // held open, or closing path() would count as a hang-up of its own
    std::string path_;
};

} // namespace karvo
