// A link with everything it needs, scripted, and short texts in place of a language.
#pragma once

#include "link/link.h"
#include "support/scripted_seams.h"

#include <numeric>

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

inline void setTexts(LanguageTables& texts, NumberedTexts messages, NumberedTexts captions)
{
    for (const auto& [number, text] : messages)
        setText(texts, number, text);
    for (const auto& [number, text] : captions)
        setCaption(texts, number, text);
}

// Each text is its own number: "m36", "c600".
inline void numberTexts(LanguageTables& texts, const std::vector<int>& messages,
                        const std::vector<int>& captions)
{
    for (const int number : messages)
        setText(texts, number, u"m" + textFromNumber(number));
    for (const int number : captions)
        setCaption(texts, number, u"c" + textFromNumber(number));
}

inline void numberEveryText(LanguageTables& texts)
{
    std::vector<int> all(1000);
    std::iota(all.begin(), all.end(), 1);
    numberTexts(texts, all, all);
}

inline LanguageTables linkTexts()
{
    LanguageTables texts;
    setTexts(texts, {{233, u"no reply"}, {234, u"unknown decoder"}, {273, u"wrong check byte"}},
             {{884, u"read all"}, {887, u"no reply status"}});
    setTexts(texts, {{660, u"join group {1}"}, {661, u"{1} of {2} bytes"}}, {});
    setTexts(texts, {{662, u"nothing came"}, {663, u"reply {1}"}}, {});
    return texts;
}

// The texts of a write, each with its number.
inline void addWriteTexts(LanguageTables& texts)
{
    numberTexts(texts,
                {83, 85, 86, 87, 88, 89, 90, 91, 92, 93, 94, 294, 296, 297, 572, 683, 684, 685, 686, 695},
                {873, 900, 901, 902, 903});
    setCaption(texts, 888, u"writing CV");
    texts.menu[76] = u"0000menu 76";
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

struct LinkBench {
    Journal journal;
    ScriptedLine line{journal};
    ScriptedPrompts prompts{journal};
    RecordingView view{journal};
    LanguageTables texts = linkTexts();
    LinkState state;
    Link link{state, line, line, prompts, view, texts};
};

} // namespace karvo::test
