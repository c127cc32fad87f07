#include "cvdata/list_header.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace karvo
{

namespace
{

constexpr char16_t versionMark = u'*';
constexpr TextView moduleName = u"KV05-XT";

struct HeaderForm {
    TextView model;
    TextView generation; // the words behind the model
    TypeCode typeCode;
    Generation meaning;
};

// A model's first form also stands for words that are not listed here.
constexpr HeaderForm forms[] = {
    {u"KV04", u"172", TypeCode::kv04, Generation::from2009},
    {u"KV04", u"180", TypeCode::kv04, Generation::until2008First},
    {u"KV04", u"180 V1", TypeCode::kv04, Generation::until2008Second},
    {u"KV04", u"172 Mai10", TypeCode::kv04From2010, Generation::undated},
    {u"KV04", u"Mai10", TypeCode::kv04From2010, Generation::may2010},
    {u"KV05", u"", TypeCode::kv05, Generation::standard},
    {u"KV05", u"172 Mai10", TypeCode::kv05From2010, Generation::undated},
    {u"KV05", u"Mai10", TypeCode::kv05From2010, Generation::may2010},
    {u"KV05", u"November12", TypeCode::kv05From2010, Generation::november2012},
    {u"KV06", u"", TypeCode::kv06, Generation::standard},
    {u"KV06", u"172 Mai10", TypeCode::kv06From2010, Generation::undated},
    {u"KV06", u"Mai10", TypeCode::kv06From2010, Generation::may2010},
    {u"KV06", u"November12", TypeCode::kv06From2010, Generation::november2012},
    {u"KV07", u"", TypeCode::kv07, Generation::standard},
    {u"KV07", u"LC", TypeCode::kv07, Generation::laneControl},
    {u"KV07", u"Tacho", TypeCode::kv07, Generation::tacho},
    {u"KV07", u"F3", TypeCode::kv07, Generation::f3},
    {u"KV07", u"F4", TypeCode::kv07, Generation::f4},
    {u"KV07", u"F5", TypeCode::kv07, Generation::f5},
    {u"KV07", u"V1", TypeCode::kv07, Generation::v1},
    {u"KV08", u"", TypeCode::kv08, Generation::standard},
    {u"KV08", u"LC", TypeCode::kv08, Generation::laneControl},
    {u"KV08", u"Tacho", TypeCode::kv08, Generation::tacho},
    {u"KV08", u"F3", TypeCode::kv08, Generation::f3},
    {u"KV08", u"F4", TypeCode::kv08, Generation::f4},
    {u"KV08", u"F5", TypeCode::kv08, Generation::f5},
    {u"KV08", u"V1", TypeCode::kv08, Generation::v1},
    {u"AN07", u"", TypeCode::trailer, Generation::standard},
    {u"AN07", u"V1", TypeCode::trailer, Generation::v1},
};

std::vector<TextView> wordsOf(TextView text)
{
    std::vector<TextView> words;
    while (!(text = trimmed(text)).empty()) {
        const auto end = std::min(text.find_first_of(u" \t"), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

bool isPresetWord(TextView word)
{
    return word == u"Bus" || word == u"Feuerwehr";
}

const HeaderForm* formOf(TextView model, TextView generation)
{
    const HeaderForm* found = nullptr;
    for (const HeaderForm& form : forms) {
        if (form.model == model && (found == nullptr || form.generation == generation))
            found = &form;
    }
    return found;
}

DecoderProfile profileOf(const HeaderForm& form)
{
    DecoderProfile profile;
    profile.typeCode = form.typeCode;
    profile.model = modelOfTypeCode(form.typeCode);
    profile.generation = form.meaning;
    return profile;
}

DecoderProfile moduleProfile()
{
    DecoderProfile profile;
    profile.typeCode = TypeCode::receiver;
    profile.model = Model::xtModule;
    return profile;
}

// The model's name and what stands behind it, up to the mark of a preset.
std::optional<ListModel> modelOfWords(const std::vector<TextView>& words)
{
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (formOf(*word, {}) == nullptr)
            continue;
        const auto preset = std::find_if(word, words.end(), isPresetWord);
        Text generation;
        for (auto next = word + 1; next != preset; ++next)
            generation += joined({generation.empty() ? u"" : u" ", *next});
        const HeaderForm& form = *formOf(*word, generation);
        return ListModel{profileOf(form), preset != words.end(), form.generation == generation};
    }
    return std::nullopt;
}

} // namespace

std::optional<ListModel> modelOfHeader(TextView header)
{
    const TextView name = header.substr(0, header.find(versionMark));
    auto model = name.find(moduleName) != TextView::npos
                     ? std::optional<ListModel>(ListModel{moduleProfile()})
                     : modelOfWords(wordsOf(name));
    if (!model)
        return std::nullopt;
    model->profile.processor = usualProcessor(model->profile.model);
    model->profile.firmwareVersion = versionInHeader(header).value_or(0);
    return model;
}

std::optional<int> versionInHeader(TextView header)
{
    const auto mark = header.rfind(versionMark);
    const auto version = mark == TextView::npos ? std::nullopt : numberFromText(header.substr(mark + 1));
    return version && *version >= 0 && *version <= 255 ? version : std::nullopt;
}

Text headerWithVersion(TextView header, int version)
{
    const Text ending = versionMark + textFromNumber(version);
    return Text(header) + (header.ends_with(ending) ? Text() : ending);
}

} // namespace karvo
