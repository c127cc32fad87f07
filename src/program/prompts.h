// What the logic asks or tells a person directly: boxes in the window program, the terminal on the command
// line.
#pragma once

#include "program/text.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace karvo
{

enum class PromptIcon { none, information, warning, stop };

class Prompts
{
public:
    virtual ~Prompts() = default;

    // A box with an OK button. Lines are separated by CR LF.
    virtual void message(const Text& text, PromptIcon icon = PromptIcon::none) = 0;

    // A Yes/No box; true for Yes. Closing the box is No.
    virtual bool question(const Text& text) = 0;

    // Nothing when cancelled.
    virtual std::optional<Text> input(const Text& title, const Text& prompt, const Text& initial) = 0;

    // One of the options by its place, the current one proposed. Nothing when cancelled.
    virtual std::optional<std::size_t> choice(const Text& title, const Text& prompt,
                                              const std::vector<Text>& options, std::size_t current) = 0;

    // End the program now, without asking: returns at once, a wait under way reports `ended`, nothing further
    // is shown.
    virtual void endProgram() = 0;
};

} // namespace karvo
