// A link with everything it needs, scripted, and short texts in place of a language.
#pragma once

#include "link/link.h"
#include "support/case_table.h"
#include "support/scripted_seams.h"

namespace karvo::test
{

inline void setText(LanguageTables& texts, int message, TextView text)
{
    texts.messages[static_cast<std::size_t>(message)] = u"0000" + Text(text);
}

inline void setCaption(LanguageTables& texts, int caption, TextView text)
{
    texts.captions[static_cast<std::size_t>(caption)] = u"0000" + Text(text);
}

using NumberedTexts = std::initializer_list<std::pair<int, TextView>>;

inline void setTexts(LanguageTables& texts, NumberedTexts messages, NumberedTexts captions = {})
{
    for (const auto& [number, text] : messages)
        setText(texts, number, text);
    for (const auto& [number, text] : captions)
        setCaption(texts, number, text);
}

// Each text is its own number: "m36", "c600".
inline void numberEveryText(LanguageTables& texts)
{
    for (int number = 1; number <= 1000; ++number) {
        setText(texts, number, u"m" + textFromNumber(number));
        setCaption(texts, number, u"c" + textFromNumber(number));
    }
}

// Those of a file: "message|233|no reply".
inline void addTexts(LanguageTables& texts, const std::string& file)
{
    for (const auto& [kind, number, words] : casesOf<3>(file)) {
        const auto place = std::stoul(number);
        auto& text = kind == "message" ? texts.messages[place]
                     : kind == "menu"  ? texts.menu[place]
                                       : texts.captions[place];
        text = u"0000" + textFromUtf8(words);
    }
}

// Data whose value at position n is a mix of n, and its check byte.
inline Bytes blockOf(std::size_t dataBytes)
{
    Bytes block;
    unsigned sum = 0;
    for (std::size_t n = 1; n <= dataBytes; ++n) {
        block.push_back(static_cast<std::uint8_t>((n * 7 + n / 256) & 0xFF));
        sum += block.back();
    }
    block.push_back(static_cast<std::uint8_t>(sum % 256));
    return block;
}

struct LinkBench : ScriptedSeams {
    LinkBench() { addTexts(texts, "link/texts.txt"); }

    LanguageTables texts;
    LinkState state;
    Link link{state, line, line, prompts, view, texts};
};

} // namespace karvo::test
