// What may stand on the command lines of the three programs: understood, and told in their help, from one
// table each.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace karvo
{

struct OptionForm {
    std::string_view name;  // without "--"
    std::string_view value; // what stands for its value in the help; empty for a switch
    char letter = 0;        // "-h"; 0: none
};

struct HelpedOption : OptionForm {
    std::string help; // lines behind the first one begin under it; empty: the help does not name the option
};

enum class SingleDash {
    startsOption, // "-x" is an unknown option
    isWord        // whoever owns it, such as the window system, takes it
};

struct WordFault {
    enum class Kind { unknownOption, needsValue, takesNoValue };
    Kind kind;
    std::string typed;                // the word, without what is attached to an unknown option
    const OptionForm* form = nullptr; // nothing for an unknown one
};

// The words of a command line, in UTF-8, behind the program's name.
class CommandWords
{
public:
    // A value follows its option or stands behind "="; behind "--" everything is a plain word. The forms must
    // stay where they are.
    CommandWords(std::span<const std::string> words, std::span<const OptionForm> forms,
                 SingleDash singleDash);

    // The first one; the words behind it have been understood all the same.
    const std::optional<WordFault>& fault() const { return fault_; }

    bool has(std::string_view option) const;
    // The last one counts; empty when the option is not there.
    std::string value(std::string_view option) const;
    std::vector<std::string> values(std::string_view option) const;
    // All that is no option, in its order.
    const std::vector<std::string>& plain() const { return plain_; }

private:
    void takeOption(const std::string& word);
    void note(WordFault::Kind kind, const std::string& typed, const OptionForm* form = nullptr);

    struct Given {
        std::string_view name;
        std::string value;
    };

    std::span<const std::string> rest_;
    std::span<const OptionForm> forms_;
    std::vector<Given> given_;
    std::vector<std::string> plain_;
    std::optional<WordFault> fault_;
};

// "--port needs a value", "unknown option --prt": for a program that speaks English alone.
std::string faultText(const WordFault& fault);

// A row for each option that has a help, with a line end behind each one.
std::string optionRows(std::span<const HelpedOption> options, std::size_t helpColumn);

template <typename Options>
std::vector<OptionForm> formsOf(const Options& options)
{
    return {options.begin(), options.end()};
}

} // namespace karvo
