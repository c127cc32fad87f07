// The three text tables of the chosen language. An entry is a whole line of its file; its first four
// characters are a numbering field for translators and are never shown.
#pragma once

#include "language/text_numbers.h"
#include "program/text.h"

#include <array>
#include <initializer_list>

namespace karvo
{

// Entries 1 to N; entry 0 is never filled.
using MessageTable = std::array<Text, 1001>;
using MenuTable = std::array<Text, 501>;
using CaptionTable = std::array<Text, 1001>;

// From the fifth character on; empty for a shorter line.
Text shownText(TextView entry);

struct LanguageTables {
    MessageTable messages;
    MenuTable menu;
    CaptionTable captions;

    // Empty for a missing entry.
    Text message(Message number) const { return shownText(messages[static_cast<std::size_t>(number)]); }
    Text menuCaption(std::size_t number) const;

    // The caption up to its first tab.
    Text caption(Caption number) const;

    // The same with "{1}", "{2}" and so on filled in.
    Text message(Message number, std::initializer_list<Text> words) const;
    Text caption(Caption number, std::initializer_list<Text> words) const;
};

} // namespace karvo
