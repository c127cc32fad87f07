#include "editors/lane_view.h"

#include <algorithm>

namespace karvo
{

LaneView laneView(const PictureValues& values)
{
    const auto value = [&](int cv) { return values(cv).value_or(0); };
    LaneView view;
    view.mode = value(177);
    view.leftOfLine = value(178) == 1;
    view.threshold = value(179);
    view.strength = value(180);
    view.straight = values(181).value_or(LaneView::centre);
    view.lowest = std::max(view.straight - value(182), 0);
    view.highest = std::min(view.straight + value(182), 255);
    view.stopAfter = value(183) * 100;
    view.speedStep = value(184);
    return view;
}

std::vector<Text> laneTexts(const PictureWords& words, const LaneView& view)
{
    const LanguageTables& texts = words.texts;
    const auto number = [](int value) { return textFromNumber(value); };
    std::vector<Text> all = {joined({u"CV177 = ", number(view.mode), u": ", wordOf(words, 177, view.mode)})};
    if (view.mode == LaneView::off)
        return all;
    all.push_back(texts.caption(view.leftOfLine ? Caption::laneLeftOfLine : Caption::laneRightOfLine));
    all.push_back(texts.caption(Caption::laneRange,
                                {number(view.straight), number(view.lowest), number(view.highest)}));
    all.push_back(texts.caption(Caption::laneStopAfter, {durationText(view.stopAfter, words.decimalComma)}));
    all.push_back(texts.caption(Caption::laneTopStep, {number(view.speedStep)}));
    return all;
}

} // namespace karvo
