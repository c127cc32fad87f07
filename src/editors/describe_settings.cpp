#include "editors/describe_settings.h"

#include "cvdata/cv_details.h"
#include "cvdata/cv_use.h"
#include "cvdata/main_list.h"
#include "editors/speed_curves.h"
#include "link/write.h"

#include <algorithm>
#include <set>

namespace karvo
{

namespace
{

constexpr int wholeCv = 255;

// They act when they are written, or hold nothing that a person sets.
bool isNoSetting(int cv)
{
    constexpr int firstLive = 243;
    constexpr int lastLive = 246;
    return cv == resetCv || isTakeOverCv(cv) || (cv >= firstLive && cv <= lastLive);
}

// Windows that are no sheets, by the group that they change.
std::string windowOf(CvGroup group, Model model)
{
    switch (group) {
    case CvGroup::addresses:
        return "dcc_adresse";
    case CvGroup::braking:
        return "bremsen";
    case CvGroup::speedTable:
        return "fahrstufen";
    case CvGroup::servo:
        return isReceiver(model) ? "servo_setup" : "servo1";
    default:
        return {};
    }
}

void replaceAll(Text& words, TextView mark, const Text& value)
{
    for (auto at = words.find(mark); at != Text::npos; at = words.find(mark, at + value.size()))
        words.replace(at, mark.size(), value);
}

class Describer
{
public:
    Describer(const CvSet& set, const SheetStore& sheets, const LanguageTables& texts, LanguageCode language)
        : set_(set), table_(set.table), sheets_(sheets), texts_(texts), language_(language)
    {
    }

    std::vector<DescribedGroup> describe()
    {
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            const auto group = static_cast<CvGroup>(i);
            groups_[i] = {group, texts_.caption(captionOf(group)), {}};
        }
        for (const StoredSheet& one : sheets_.sheets) {
            if (one.isOwn || !isFor(one.sheet.models, set_.profile))
                continue;
            addSentences(one.sheet);
            addLongNumbers(one.sheet);
        }
        addSpeedTable();
        addAddresses();
        for (int cv = 1; cv <= CvTable::lastRow; ++cv)
            addCv(cv);
        std::vector<DescribedGroup> told(groups_.begin(), groups_.end());
        std::erase_if(told, [](const DescribedGroup& group) { return group.settings.empty(); });
        return told;
    }

private:
    bool isTold(int cv) const
    {
        return isUsed(table_, cv) && !isNoSetting(cv) && isInForce(table_, set_.profile.model, cv);
    }

    void add(CvGroup group, DescribedSetting setting)
    {
        if (setting.item.empty())
            setting.item = windowOf(group, set_.profile.model);
        groups_[static_cast<std::size_t>(group)].settings.push_back(std::move(setting));
    }

    std::string itemOf(int cv, int bits = wholeCv) const
    {
        const FunctionSheet* const sheet = sheets_.sheetOf(set_.profile, cv, bits);
        return sheet == nullptr ? std::string() : sheet->item;
    }

    bool isFactory(int cv, int bits = wholeCv) const
    {
        const auto value = table_.value(cv);
        const auto factory = numberFromText(table_.at(cv, Column::factoryValue));
        return isReadOnly(table_, cv) || !factory || (value && ((*value ^ *factory) & bits) == 0);
    }

    Text meaning(int cv) const
    {
        const auto value = table_.value(cv);
        return isCvValue(value) ? meaningOf(*value, kindOf(table_, cv), comma())
                                : texts_.caption(Caption::settingUnknown);
    }

    Text named(const Text& name, const Text& what) const
    {
        return texts_.caption(Caption::settingIs, {name, what});
    }

    // "{102}" in the words is what CV102 means, "{#102}" its plain value.
    Text filled(Text words, const std::vector<int>& cvs) const
    {
        for (const int cv : cvs) {
            const Text number = textFromNumber(cv);
            replaceAll(words, joined({u"{", number, u"}"}), meaning(cv));
            replaceAll(words, joined({u"{#", number, u"}"}), table_.at(cv, Column::value));
        }
        return words;
    }

    void addSentences(const FunctionSheet& sheet)
    {
        for (const SheetSentence& sentence : sheet.sentences) {
            const bool isSaid = isFor(sentence.models, set_.profile) &&
                                holdsOneOf(sentence.onlyWhere, table_) &&
                                (sentence.unless.empty() || !holdsAll(sentence.unless, table_)) &&
                                std::all_of(sentence.cvs.begin(), sentence.cvs.end(),
                                            [&](int cv) { return isTold(cv) && !told_.contains(cv); });
            if (!isSaid)
                continue;
            DescribedSetting setting{filled(sentence.words.in(language_), sentence.cvs), sentence.cvs};
            setting.item = sheet.item;
            setting.isFactory =
                std::all_of(sentence.cvs.begin(), sentence.cvs.end(), [&](int cv) { return isFactory(cv); });
            told_.insert(sentence.cvs.begin(), sentence.cvs.end());
            add(groupOf(sentence.cvs.front()), std::move(setting));
        }
    }

    // A number over several CVs, the high part first, which is told as one. `pattern` has a place for it, or
    // for the name before it.
    void addNumber(Caption pattern, const Text& name, const std::vector<int>& cvs, const std::string& item)
    {
        DescribedSetting setting{{}, cvs, true, item};
        int number = 0;
        for (const int cv : cvs) {
            const auto value = table_.value(cv);
            if (!isTold(cv) || told_.contains(cv) || !value)
                return;
            number = number * 256 + *value;
            setting.isFactory = setting.isFactory && isFactory(cv);
        }
        setting.sentence = name.empty() ? texts_.caption(pattern, {textFromNumber(number)})
                                        : texts_.caption(pattern, {name, textFromNumber(number)});
        told_.insert(cvs.begin(), cvs.end());
        add(groupOf(cvs.front()), std::move(setting));
    }

    void addAddresses()
    {
        addNumber(Caption::settingFirstAddress, {}, {1}, {});
        addNumber(Caption::settingFirstAddress, {}, {17, 18}, {});
        addNumber(Caption::settingSecondAddress, {}, {3}, {});
        addNumber(Caption::settingSecondAddress, {}, {15, 16}, {});
        addNumber(Caption::settingFirstServoAddress, {}, {11, 12}, {});
        addNumber(Caption::settingSecondServoAddress, {}, {13, 14}, {});
    }

    void addLongNumbers(const FunctionSheet& sheet)
    {
        for (const SheetSection& section : sheet.sections) {
            for (const SheetField& field : section.fields) {
                if (field.kind == SheetField::Kind::number)
                    addNumber(Caption::settingIs, field.words.in(language_), field.cvs, sheet.item);
            }
        }
    }

    CvGroup groupOf(int cv) const
    {
        const auto groups = kindOf(table_, cv).groups;
        return groups.empty() ? CvGroup::mode : groups.front().group;
    }

    void addSpeedTable()
    {
        constexpr int first = 1;
        DescribedSetting setting;
        for (int step = first; step <= speedStepCount; ++step) {
            const int cv = cvOfSpeedStep(step);
            if (!isUsed(table_, cv) || !hasSpeedTable(table_))
                return;
            setting.cvs.push_back(cv);
            setting.isFactory = setting.isFactory && isFactory(cv);
        }
        setting.sentence =
            texts_.caption(Caption::settingSteps, {table_.at(cvOfSpeedStep(first), Column::value),
                                                   table_.at(cvOfSpeedStep(speedStepCount), Column::value)});
        told_.insert(setting.cvs.begin(), setting.cvs.end());
        add(CvGroup::speedTable, std::move(setting));
    }

    void addCv(int cv)
    {
        if (!isTold(cv) || told_.contains(cv))
            return;
        const CvGroup group = groupOf(cv);
        if (cvDetails(table_, cv).isSetOfSwitches)
            addSwitches(cv, group, kindOf(table_, cv));
        else
            add(group, {named(table_.at(cv, Column::text), meaning(cv)), {cv}, isFactory(cv), itemOf(cv)});
    }

    // The switches of other groups are told there, one by one.
    void addSwitches(int cv, CvGroup group, const CvKind& kind)
    {
        int own = wholeCv;
        for (const GroupShare& share : kind.groups) {
            if (share.bits == wholeCv)
                continue;
            own &= ~share.bits;
            for (std::size_t bit = 0; bit < 8; ++bit) {
                if ((share.bits & bitWeight(bit)) != 0)
                    addSwitch(share.group, cv, bit);
            }
        }
        addOwnSwitches(cv, group, own);
    }

    void addSwitch(CvGroup group, int cv, std::size_t bit)
    {
        const CvDetails details = cvDetails(table_, cv);
        const auto value = table_.value(cv);
        if (!details.isLive(bit) || !value)
            return;
        const int weight = bitWeight(bit);
        const bool isOn = (*value & weight) != 0;
        add(group, {named(joined({details.name, u", ", details.bits[bit]}),
                          texts_.caption(isOn ? Caption::settingOn : Caption::settingOff)),
                    {cv},
                    isFactory(cv, weight),
                    itemOf(cv, weight)});
    }

    void addOwnSwitches(int cv, CvGroup group, int bits)
    {
        const CvDetails details = cvDetails(table_, cv);
        const int value = table_.value(cv).value_or(0);
        Text on;
        std::vector<std::size_t> live;
        for (std::size_t bit = 0; bit < details.bits.size(); ++bit) {
            if (!details.isLive(bit) || (bits & bitWeight(bit)) == 0)
                continue;
            live.push_back(bit);
            if ((value & bitWeight(bit)) != 0)
                on += (on.empty() ? Text() : Text(u", ")) + details.bits[bit];
        }
        if (live.size() == 1)
            addSwitch(group, cv, live.front());
        else if (!live.empty())
            add(group, {named(details.name, on.empty() ? texts_.caption(Caption::settingNone) : on),
                        {cv},
                        isFactory(cv, bits),
                        itemOf(cv, bits)});
    }

    bool comma() const { return language_ != LanguageCode::english; }

    const CvSet& set_;
    const CvTable& table_;
    const SheetStore& sheets_;
    const LanguageTables& texts_;
    LanguageCode language_;
    std::array<DescribedGroup, cvGroupCount> groups_;
    std::set<int> told_;
};

} // namespace

std::vector<DescribedGroup> describeSettings(const CvSet& set, const SheetStore& sheets,
                                             const LanguageTables& texts, LanguageCode language)
{
    return Describer(set, sheets, texts, language).describe();
}

} // namespace karvo
