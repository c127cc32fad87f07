// What is shown of a memory: sixteen bytes to a row, in decimal or hexadecimal, beside what it is compared
// with.
#pragma once

#include "cvdata/cv_set.h"
#include "firmware/memory_image.h"

namespace karvo
{

inline constexpr std::size_t bytesInRow = 16;

struct ComparedMemory {
    Text name;
    MemoryImage image;
    bool isBenchList = false; // of which each byte's value is told anyway
};

class MemoryView
{
public:
    const MemoryImage& image() const { return image_; }
    const std::optional<ComparedMemory>& compared() const { return compared_; }
    bool isHexadecimal() const { return hexadecimal_; }

    void show(MemoryImage image) { image_ = std::move(image); }
    void compareWith(std::optional<ComparedMemory> other) { compared_ = std::move(other); }
    void useHexadecimal(bool wanted) { hexadecimal_ = wanted; }

    std::size_t rowCount() const { return (image_.size() + bytesInRow - 1) / bytesInRow; }

    // "0x0040" or "64"
    Text addressText(std::size_t address) const;

    // "1B" or "27", with a mark behind it where it differs from what it is compared with; empty for a hole.
    Text cellText(std::size_t address) const;

    // A byte that is known on one side alone does not differ.
    bool differs(std::size_t address) const;

    // Ascending.
    std::vector<std::size_t> differences() const;

    // The next one behind an address, and again from the start behind the last; backwards likewise.
    std::optional<std::size_t> nextDifference(std::size_t from, bool forward) const;

    // Where the next place behind `from` begins that is looked for, and again from the start behind the last:
    // "CV65", bytes in the base that is shown ("27 1", "1B 01"), or a word of a CV's name in this table.
    std::optional<std::size_t> find(TextView wanted, const CvTable& names, std::size_t from) const;

    // Lines of tabs, each with its address in front: these bytes, or all where there are fewer than two.
    Text copied(std::vector<std::size_t> addresses) const;

private:
    Text byteText(std::size_t address) const;
    std::optional<Bytes> bytesOf(TextView wanted) const;
    bool holdsAt(std::size_t address, const Bytes& bytes) const;
    template <typename Condition>
    std::optional<std::size_t> nextWhere(std::size_t from, const Condition& condition) const;

    MemoryImage image_;
    std::optional<ComparedMemory> compared_;
    bool hexadecimal_ = false;
};

// What is known of the byte in focus, a line each: its CV, address and value, the name and the value in the
// list, and what it is compared with.
std::vector<Text> byteDetails(const MemoryView& view, std::size_t address, const CvSet& set,
                              const LanguageTables& texts);

} // namespace karvo
