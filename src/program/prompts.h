// What the logic asks or tells a person directly: boxes in the window program, the terminal on the command
// line.
#pragma once

#include "program/text.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace karvo
{

// A second kind of file that can be saved, with the folder that it belongs in.
struct OtherFileKind {
    Text filter;
    Text extension;
    std::filesystem::path folder;
};

// What a file dialog starts with.
struct FileRequest {
    Text title;
    std::filesystem::path folder;
    Text filter;    // "*.kvr"
    Text extension; // added to a name that has another or none: "kvr"
    Text name;      // proposed; empty for none
    std::optional<OtherFileKind> other = std::nullopt;
    std::filesystem::path shipped = {}; // a folder that came with the program, offered beside `folder`
};

enum class SaveChoice { save, discard, cancel };

// What a Yes answers for. The command line's --yes answers usual questions only: each of the others wants its
// own word behind --force, since a Yes given beforehand may cost a decoder.
enum class QuestionKind {
    usual,
    limits,  // values outside their limits, unused and read-only CVs are written
    vehicle, // the list belongs to another generation or processor than the vehicle
    backup   // what the vehicle holds can not be kept
};

// Which answer the Enter key gives.
enum class ProposedAnswer { no, yes };

enum class PromptIcon { none, information, warning, stop };

class Prompts
{
public:
    virtual ~Prompts() = default;

    // A box with an OK button. Lines are separated by CR LF.
    virtual void message(const Text& text, PromptIcon icon = PromptIcon::none) = 0;

    // The same under the title "error", with the icon of a warning.
    virtual void error(const Text& text) = 0;

    // A Yes/No box; true for Yes. Closing the box is No.
    virtual bool question(const Text& text, QuestionKind kind = QuestionKind::usual,
                          ProposedAnswer proposed = ProposedAnswer::no) = 0;

    // Nothing when cancelled.
    virtual std::optional<Text> input(const Text& title, const Text& prompt, const Text& initial) = 0;

    // One of the options by its place, the current one proposed. Nothing when cancelled.
    virtual std::optional<std::size_t> choice(const Text& title, const Text& prompt,
                                              const std::vector<Text>& options, std::size_t current) = 0;

    // The file that was chosen; nothing when cancelled.
    virtual std::optional<std::filesystem::path> openFile(const FileRequest& request) = 0;

    // Any number of them; none when cancelled.
    virtual std::vector<std::filesystem::path> openFiles(const FileRequest& request) = 0;

    // A name with the extension of the kind that was chosen; a file of that name has been agreed to be
    // replaced.
    virtual std::optional<std::filesystem::path> saveFile(const FileRequest& request) = 0;

    // A Save/Discard/Cancel box. Closing the box is Cancel.
    virtual SaveChoice saveChanges(const Text& text) = 0;

    // End the program now, without asking: returns at once, a wait under way reports `ended`, nothing further
    // is shown.
    virtual void endProgram() = 0;
};

} // namespace karvo
