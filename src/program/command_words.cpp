#include "program/command_words.h"

#include <algorithm>

namespace karvo
{

namespace
{

bool isOption(const std::string& word, SingleDash singleDash, std::span<const OptionForm> forms)
{
    if (word.size() < 2 || word[0] != '-')
        return false;
    const bool isLetter = word.size() == 2 && std::any_of(forms.begin(), forms.end(), [&](const auto& form) {
                              return form.letter == word[1];
                          });
    return word[1] == '-' || isLetter || singleDash == SingleDash::startsOption;
}

const OptionForm* formOf(std::string_view typed, std::span<const OptionForm> forms)
{
    const auto found = std::find_if(forms.begin(), forms.end(), [&](const OptionForm& form) {
        const bool isLetter = typed.size() == 2 && form.letter != 0 && typed[1] == form.letter;
        return isLetter || (typed.starts_with("--") && typed.substr(2) == form.name);
    });
    return found == forms.end() ? nullptr : &*found;
}

} // namespace

CommandWords::CommandWords(std::span<const std::string> words, std::span<const OptionForm> forms,
                           SingleDash singleDash)
    : rest_(words), forms_(forms)
{
    bool anyOptions = true;
    while (!rest_.empty()) {
        const std::string& word = rest_.front();
        rest_ = rest_.subspan(1);
        if (anyOptions && word == "--")
            anyOptions = false;
        else if (anyOptions && isOption(word, singleDash, forms))
            takeOption(word);
        else
            plain_.push_back(word);
    }
}

void CommandWords::takeOption(const std::string& word)
{
    const auto equals = std::min(word.find('='), word.size());
    const bool hasValue = equals < word.size();
    const std::string typed = word.substr(0, equals);
    const OptionForm* const form = formOf(typed, forms_);
    if (form == nullptr)
        return note(WordFault::Kind::unknownOption, typed);
    if (form->value.empty()) {
        given_.push_back({form->name, {}});
        return hasValue ? note(WordFault::Kind::takesNoValue, word, form) : void();
    }
    if (hasValue) {
        given_.push_back({form->name, word.substr(equals + 1)});
    } else if (!rest_.empty()) {
        given_.push_back({form->name, rest_.front()});
        rest_ = rest_.subspan(1);
    } else {
        note(WordFault::Kind::needsValue, word, form);
    }
}

void CommandWords::note(WordFault::Kind kind, const std::string& typed, const OptionForm* form)
{
    if (!fault_)
        fault_ = WordFault{kind, typed, form};
}

bool CommandWords::has(std::string_view option) const
{
    return std::any_of(given_.begin(), given_.end(), [&](const Given& one) { return one.name == option; });
}

std::string CommandWords::value(std::string_view option) const
{
    const auto all = values(option);
    return all.empty() ? std::string() : all.back();
}

std::vector<std::string> CommandWords::values(std::string_view option) const
{
    std::vector<std::string> values;
    for (const Given& one : given_) {
        if (one.name == option)
            values.push_back(one.value);
    }
    return values;
}

std::string faultText(const WordFault& fault)
{
    if (fault.kind == WordFault::Kind::unknownOption)
        return "unknown option " + fault.typed;
    const char* const lack = fault.kind == WordFault::Kind::needsValue ? " needs a value" : " takes no value";
    return std::string("--").append(fault.form->name).append(lack);
}

std::string optionRows(std::span<const HelpedOption> options, std::size_t helpColumn)
{
    std::string rows;
    for (const HelpedOption& option : options) {
        if (option.help.empty())
            continue;
        std::string row = "  --";
        row.append(option.name);
        if (!option.value.empty())
            row.append(1, ' ').append(option.value);
        row.resize(std::max(row.size() + 1, helpColumn), ' ');
        for (const char letter : option.help + "\n") {
            rows += row + letter;
            row = letter == '\n' ? std::string(helpColumn, ' ') : std::string();
        }
    }
    return rows;
}

} // namespace karvo
