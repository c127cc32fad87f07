#include "editors/sheet_file.h"

#include "cvdata/description_fields.h"
#include "language/language_code.h"
#include "program/text_lines.h"

#include <algorithm>
#include <utility>

namespace karvo
{

namespace
{

using Kind = SheetFault::Kind;

constexpr std::size_t nameLimit = 40;
constexpr int highestCv = CvTable::lastRow;

bool isName(TextView word)
{
    const auto fits = [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
    };
    return !word.empty() && word.size() <= nameLimit && std::all_of(word.begin(), word.end(), fits);
}

bool isWeight(int number)
{
    return number >= 1 && number <= 128 && (number & (number - 1)) == 0;
}

std::optional<LanguageCode> languageOf(TextView word)
{
    const auto found = std::find_if(allLanguages.begin(), allLanguages.end(), [&](LanguageCode code) {
        return textFromUtf8(languageFiles(code).isoCode) == word;
    });
    return found == allLanguages.end() ? std::nullopt : std::optional(*found);
}

// The words of a line; a last one without its ";" counts too, as people leave it out.
std::vector<Text> wordsOfLine(TextView line)
{
    Text whole(trimmed(line));
    if (!whole.ends_with(u';'))
        whole += u';';
    std::vector<Text> words;
    for (const TextView field : fieldsOf(whole))
        words.emplace_back(trimmed(field));
    return words;
}

class SheetParser
{
public:
    std::variant<FunctionSheet, SheetFault> parse(std::span<const std::uint8_t> content)
    {
        LineReader lines(content);
        while (const auto line = lines.next()) {
            line_ = lines.number();
            if (line_ > sheetLineLimit)
                return SheetFault{Kind::tooLong, line_};
            const TextView text = trimmed(*line);
            if (text.empty() || text.starts_with(u'#'))
                continue;
            words_ = wordsOfLine(text);
            if (!take())
                return *fault_;
        }
        return finished();
    }

private:
    std::variant<FunctionSheet, SheetFault> finished()
    {
        line_ = std::max(line_, 1);
        const bool hasField = std::any_of(sheet_.sections.begin(), sheet_.sections.end(),
                                          [](const SheetSection& one) { return !one.fields.empty(); });
        if (sheet_.item.empty())
            fail(Kind::noSheet);
        else if (sheet_.words.empty())
            fail(Kind::noTitle);
        else if (!hasField && sheet_.sentences.empty())
            fail(Kind::nothingInIt);
        if (fault_)
            return *fault_;
        if (sheet_.window.empty())
            sheet_.window = sheet_.item;
        return std::move(sheet_);
    }

    bool fail(Kind kind, TextView word = {})
    {
        fault_ = SheetFault{kind, line_, Text(word)};
        return false;
    }

    const Text& word(std::size_t index) const
    {
        static const Text none;
        return index < words_.size() ? words_[index] : none;
    }

    bool take()
    {
        if (sheet_.item.empty())
            return takeFirst();
        struct Reader {
            TextView word;
            bool (SheetParser::*take)();
        };
        static constexpr Reader readers[] = {{u"text", &SheetParser::takeText},
                                             {u"models", &SheetParser::takeModels},
                                             {u"window", &SheetParser::takeWindow},
                                             {u"picture", &SheetParser::takePicture},
                                             {u"section", &SheetParser::takeSection},
                                             {u"note", &SheetParser::takeNote},
                                             {u"cv", &SheetParser::takeCv},
                                             {u"shown", &SheetParser::takeShown},
                                             {u"bits", &SheetParser::takeBits},
                                             {u"switch", &SheetParser::takeSwitch},
                                             {u"number", &SheetParser::takeNumber},
                                             {u"address", &SheetParser::takeAddress},
                                             {u"measured", &SheetParser::takeMeasured},
                                             {u"set", &SheetParser::takeSet},
                                             {u"only", &SheetParser::takeOnly},
                                             {u"unless", &SheetParser::takeUnless},
                                             {u"variant", &SheetParser::takeVariant},
                                             {u"ready", &SheetParser::takeReadyMade},
                                             {u"sentence", &SheetParser::takeSentence}};
        const auto* const reader = std::find_if(std::begin(readers), std::end(readers),
                                                [&](const Reader& one) { return one.word == word(0); });
        return reader == std::end(readers) ? fail(Kind::unknownWord, word(0)) : (this->*reader->take)();
    }

    bool takeFirst()
    {
        if (word(0) != u"sheet")
            return fail(Kind::noSheet, word(0));
        openedWords_ = &sheet_.words;
        openedModels_ = &sheet_.models;
        return takeName(sheet_.item, 1);
    }

    bool takeName(std::string& name, std::size_t index)
    {
        if (!isName(word(index)))
            return fail(Kind::wrongName, word(index));
        name = utf8FromText(word(index));
        return true;
    }

    bool takeWindow() { return takeName(sheet_.window, 1); }

    bool takePicture() { return takeName(sheet_.picture, 1); }

    bool takeText()
    {
        if (word(2).empty())
            return fail(Kind::emptyText);
        if (word(1).empty()) {
            openedWords_->takeForAll(word(2));
            return true;
        }
        const auto language = languageOf(word(1));
        if (!language)
            return fail(Kind::unknownLanguage, word(1));
        openedWords_->take(*language, word(2));
        return true;
    }

    bool takeModels()
    {
        for (std::size_t i = 1; i < words_.size(); ++i) {
            const auto model = sheetModelOf(word(i));
            if (!model)
                return fail(Kind::unknownModel, word(i));
            openedModels_->push_back(*model);
        }
        return words_.size() > 1 || fail(Kind::unknownModel);
    }

    // What `text`, `models`, `only` and `unless` lines that follow belong to.
    template <typename Part>
    void open(Part& part)
    {
        openedWords_ = &part.words;
        openedModels_ = &part.models;
        openedField_ = nullptr;
        openedSentence_ = nullptr;
    }

    bool takeSection()
    {
        open(sheet_.sections.emplace_back());
        return true;
    }

    bool takeNote()
    {
        auto& notes = sheet_.sections.empty() ? sheet_.notes : sheet_.sections.back().notes;
        open(notes.emplace_back());
        return true;
    }

    std::optional<int> cvAt(std::size_t index)
    {
        const auto cv = numberFromText(word(index));
        if (cv && *cv >= 1 && *cv <= highestCv)
            return cv;
        fail(Kind::wrongNumber, word(index));
        return std::nullopt;
    }

    bool addField(SheetField field)
    {
        if (sheet_.sections.empty())
            return fail(Kind::misplaced, word(0));
        for (const int cv : field.cvs) {
            int& taken = taken_[static_cast<std::size_t>(cv)];
            if ((taken & field.bits) != 0)
                return fail(Kind::repeated, u"CV" + textFromNumber(cv));
            taken |= field.bits;
        }
        SheetField& added = sheet_.sections.back().fields.emplace_back(std::move(field));
        open(added);
        openedField_ = &added;
        return true;
    }

    bool takeWhole(SheetField::Kind kind)
    {
        const auto cv = cvAt(1);
        return cv && addField({.kind = kind, .cvs = {*cv}});
    }

    bool takeCv() { return takeWhole(SheetField::Kind::cv); }
    bool takeShown() { return takeWhole(SheetField::Kind::shown); }

    bool takeWeights(SheetField::Kind kind)
    {
        const auto cv = cvAt(1);
        if (!cv)
            return false;
        SheetField field{.kind = kind, .cvs = {*cv}, .bits = 0};
        for (std::size_t i = 2; i < words_.size(); ++i) {
            const auto weight = numberFromText(word(i));
            if (!weight || !isWeight(*weight) || (field.bits & *weight) != 0)
                return fail(Kind::wrongNumber, word(i));
            field.bits |= *weight;
        }
        const bool isOne = isWeight(field.bits);
        if (field.bits == 0 || (kind == SheetField::Kind::namedSwitch && !isOne))
            return fail(Kind::wrongNumber);
        return addField(std::move(field));
    }

    bool takeBits() { return takeWeights(SheetField::Kind::bits); }
    bool takeSwitch() { return takeWeights(SheetField::Kind::namedSwitch); }

    bool takeNumber()
    {
        constexpr std::size_t most = 3; // it has to fit an int
        SheetField field{.kind = SheetField::Kind::number, .cvs = {}};
        for (std::size_t i = 1; i < words_.size(); ++i) {
            const auto cv = cvAt(i);
            if (!cv)
                return false;
            field.cvs.push_back(*cv);
        }
        if (field.cvs.size() < 2 || field.cvs.size() > most)
            return fail(Kind::wrongNumber);
        return addField(std::move(field));
    }

    bool takeAddress()
    {
        if (word(1) != u"first" && word(1) != u"second")
            return fail(Kind::unknownWord, word(1));
        return addField({.kind = SheetField::Kind::address, .cvs = {word(1) == u"first" ? 1 : 3}});
    }

    bool takeMeasured() { return addField({.kind = SheetField::Kind::measured, .cvs = {}}); }

    bool takeSet()
    {
        const auto cv = cvAt(1);
        if (!cv)
            return false;
        SheetField field{.kind = SheetField::Kind::set, .cvs = {*cv}};
        if (word(2) != u"factory") {
            field.value = numberFromText(word(2));
            if (!isCvValue(field.value))
                return fail(Kind::wrongNumber, word(2));
        }
        return addField(std::move(field));
    }

    std::optional<std::vector<CvChange>> valuesAt(std::size_t index)
    {
        auto values = changesFromText(word(index));
        if (!values)
            fail(Kind::wrongValues, word(index));
        return values;
    }

    bool takeOnly()
    {
        const bool isOfSet = openedField_ != nullptr && openedField_->kind == SheetField::Kind::set;
        if (!isOfSet && openedSentence_ == nullptr)
            return fail(Kind::misplaced, word(0));
        auto& alternatives = isOfSet ? openedField_->onlyWhere : openedSentence_->onlyWhere;
        for (std::size_t i = 1; i < std::max<std::size_t>(words_.size(), 2); ++i) {
            const auto values = valuesAt(i);
            if (!values)
                return false;
            alternatives.push_back(*values);
        }
        return true;
    }

    bool takeUnless()
    {
        if (openedSentence_ == nullptr)
            return fail(Kind::misplaced, word(0));
        const auto values = valuesAt(1);
        if (values)
            openedSentence_->unless = *values;
        return values.has_value();
    }

    bool addValueSet(std::vector<SheetValueSet>& sets, SheetValueSet set, std::size_t index)
    {
        const auto values = valuesAt(index);
        if (!values)
            return false;
        set.values = *values;
        open(sets.emplace_back(std::move(set)));
        return true;
    }

    bool takeVariant() { return addValueSet(sheet_.variants, {}, 1); }

    // "ready;Pre_Licht1;CV9=0;" of a menu item, "ready;CV67=3;" of the sheet alone.
    bool takeReadyMade()
    {
        SheetValueSet set;
        const bool isOfItem = words_.size() > 2;
        if (isOfItem && !takeName(set.item, 1))
            return false;
        return addValueSet(sheet_.readyMade, std::move(set), isOfItem ? 2 : 1);
    }

    bool takeSentence()
    {
        SheetSentence sentence;
        for (std::size_t i = 1; i < words_.size(); ++i) {
            const auto cv = cvAt(i);
            if (!cv)
                return false;
            sentence.cvs.push_back(*cv);
        }
        if (sentence.cvs.empty())
            return fail(Kind::wrongNumber);
        SheetSentence& added = sheet_.sentences.emplace_back(std::move(sentence));
        open(added);
        openedSentence_ = &added;
        return true;
    }

    FunctionSheet sheet_;
    std::optional<SheetFault> fault_;
    int line_ = 0;
    std::vector<Text> words_; // of the line
    SheetWords* openedWords_ = nullptr;
    std::vector<SheetModel>* openedModels_ = nullptr;
    SheetField* openedField_ = nullptr;
    SheetSentence* openedSentence_ = nullptr;
    std::array<int, CvTable::lastRow + 1> taken_{}; // the bits of each CV that a field has
};

} // namespace

std::variant<FunctionSheet, SheetFault> parseSheet(std::span<const std::uint8_t> content)
{
    return SheetParser().parse(content);
}

} // namespace karvo
