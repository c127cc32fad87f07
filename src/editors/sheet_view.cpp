#include "editors/sheet_view.h"

#include "cvdata/battery.h"
#include "cvdata/cv_details.h"
#include "cvdata/dcc_address.h"
#include "editors/dcc_addresses.h"
#include "editors/editor_gate.h"

#include <algorithm>

namespace karvo
{

namespace
{

using Kind = SheetViewField::Kind;
using FileKind = SheetField::Kind;

// What of a sheet the model does not have.
struct Lacking {
    std::vector<int> cvs;
    std::vector<std::pair<int, int>> bits; // CV and weight
};

class Resolver
{
public:
    Resolver(const CvSet& set, const LanguageTables& texts, LanguageCode language)
        : set_(set), table_(set.table), texts_(texts), language_(language)
    {
    }

    // Nothing where the model does not have it, which is noted.
    std::optional<SheetViewField> resolved(const SheetField& field)
    {
        for (const int cv : field.cvs) {
            if (!isUsed(table_, cv))
                lacking_.cvs.push_back(cv);
        }
        if (std::any_of(field.cvs.begin(), field.cvs.end(), [&](int cv) { return !isUsed(table_, cv); }))
            return std::nullopt;
        SheetViewField view = described(field);
        switch (field.kind) {
        case FileKind::cv:
            return whole(std::move(view), 255);
        case FileKind::bits:
            return whole(std::move(view), field.bits);
        case FileKind::namedSwitch:
            return namedSwitch(std::move(view), field.bits);
        case FileKind::number:
            return longNumber(std::move(view));
        case FileKind::address:
            return address(std::move(view));
        case FileKind::shown:
            return shown(std::move(view));
        case FileKind::measured:
            return measured(std::move(view));
        case FileKind::set:
            break;
        }
        return toBeSet(std::move(view), field);
    }

    // "KV04: not CV22, CV60 (bit 128)."
    Text lackingText() const
    {
        auto cvs = lacking_.cvs;
        std::sort(cvs.begin(), cvs.end());
        cvs.erase(std::unique(cvs.begin(), cvs.end()), cvs.end());
        Text names = namesOfCvs(cvs);
        for (const auto& [cv, weight] : lacking_.bits) {
            if (!names.empty())
                names += u", ";
            names += texts_.caption(Caption::bitOfCv, {textFromNumber(cv), textFromNumber(weight)});
        }
        if (names.empty())
            return {};
        return texts_.message(Message::sheetLacks, {Text(modelName(set_.profile.model)), names});
    }

    const Lacking& lacking() const { return lacking_; }

private:
    SheetViewField described(const SheetField& field) const
    {
        SheetViewField view;
        view.cvs = field.cvs;
        view.name = field.words.in(language_);
        if (field.cvs.empty())
            return view;
        const int cv = field.cvs.front();
        const CvDetails details = cvDetails(table_, cv);
        if (view.name.empty())
            view.name = details.name;
        view.explanation = details.explanation;
        view.values = details.values;
        view.advice = details.advice;
        view.meaning = kindOf(table_, cv);
        const ValueLimits limits = limitsOf(table_, cv);
        view.lower = limits.lower;
        view.upper = limits.upper;
        view.factory = numberFromText(details.factoryValue);
        return view;
    }

    std::optional<SheetViewField> whole(SheetViewField view, int bits)
    {
        const int cv = view.cvs.front();
        if (isReadOnly(table_, cv))
            return shown(std::move(view));
        const CvDetails details = cvDetails(table_, cv);
        if (!details.isSetOfSwitches) {
            const bool isTime = view.meaning.unit && view.meaning.unit->isTime();
            view.kind = !view.meaning.choices.empty() ? Kind::choice : isTime ? Kind::time : Kind::number;
            return view;
        }
        view.kind = Kind::switches;
        for (std::size_t bit = 0; bit < details.bits.size(); ++bit) {
            const int weight = bitWeight(bit);
            if ((bits & weight) == 0)
                continue;
            if (details.isLive(bit))
                view.switches.push_back({cv, weight, details.bits[bit]});
            else if (bits != 255)
                lacking_.bits.emplace_back(cv, weight);
        }
        return view.switches.empty() ? std::nullopt : std::optional(std::move(view));
    }

    std::optional<SheetViewField> namedSwitch(SheetViewField view, int weight)
    {
        const Text name = view.name;
        auto field = whole(std::move(view), weight);
        if (field && !field->switches.empty())
            field->switches.front().word = name;
        return field;
    }

    std::optional<SheetViewField> longNumber(SheetViewField view) const
    {
        view.kind = Kind::longNumber;
        view.meaning.unit.reset();
        view.lower = 0;
        view.upper = 0;
        view.factory = 0;
        for (const int cv : view.cvs) {
            view.upper = view.upper * 256 + limitsOf(table_, cv).upper;
            const auto factory = numberFromText(table_.at(cv, Column::factoryValue));
            view.factory =
                factory && view.factory ? std::optional(*view.factory * 256 + *factory) : std::nullopt;
        }
        return view;
    }

    std::optional<SheetViewField> address(SheetViewField view) const
    {
        view.kind = Kind::address;
        const auto form = usesLongAddresses(table_) ? AddressForm::longForm : AddressForm::shortForm;
        const bool isFirst = view.cvs.front() == 1;
        view.shownText = isFirst ? firstAddressOf(table_, form) : secondAddressOf(table_, form);
        if (form == AddressForm::longForm)
            view.cvs = isFirst ? std::vector{17, 18} : std::vector{15, 16};
        return view;
    }

    std::optional<SheetViewField> shown(SheetViewField view) const
    {
        view.kind = Kind::shown;
        if (const auto value = table_.value(view.cvs.front()))
            view.shownText = meaningOf(*value, view.meaning, comma());
        return view;
    }

    std::optional<SheetViewField> measured(SheetViewField view) const
    {
        view.kind = Kind::measured;
        const auto units = measuredBattery(set_.profile, set_.rawReply);
        if (!units)
            return std::nullopt;
        view.shownText = voltsText(*units, comma()) + u" V";
        return view;
    }

    std::optional<SheetViewField> toBeSet(SheetViewField view, const SheetField& field) const
    {
        view.kind = Kind::set;
        view.setTo = field.value ? field.value : view.factory;
        if (!view.setTo || !holdsOneOf(field.onlyWhere, table_))
            return std::nullopt;
        view.shownText = meaningOf(*view.setTo, view.meaning, comma());
        return view;
    }

    bool comma() const { return language_ != LanguageCode::english; }

    const CvSet& set_;
    const CvTable& table_;
    const LanguageTables& texts_;
    LanguageCode language_;
    Lacking lacking_;
};

std::vector<Text> notesOf(const std::vector<SheetNote>& notes, const CvSet& set, LanguageCode language)
{
    std::vector<Text> texts;
    for (const SheetNote& note : notes) {
        if (isFor(note.models, set.profile))
            texts.push_back(note.words.in(language));
    }
    return texts;
}

std::vector<SheetViewValues> valuesOf(const std::vector<SheetValueSet>& sets, const CvSet& set,
                                      LanguageCode language)
{
    std::vector<SheetViewValues> views;
    for (const SheetValueSet& one : sets) {
        if (!isFor(one.models, set.profile))
            continue;
        SheetViewValues& view =
            views.emplace_back(SheetViewValues{one.words.in(language), one.item, one.values});
        std::erase_if(view.values, [&](const CvChange& value) { return !isUsed(set.table, value.cv); });
    }
    return views;
}

// The fields of the model's sections; what it lacks stays noted in the resolver.
std::vector<SheetViewSection> sectionsOf(const FunctionSheet& sheet, const CvSet& set, LanguageCode language,
                                         Resolver& resolver)
{
    std::vector<SheetViewSection> sections;
    for (const SheetSection& section : sheet.sections) {
        if (!isFor(section.models, set.profile))
            continue;
        SheetViewSection view{section.words.in(language), notesOf(section.notes, set, language)};
        for (const SheetField& field : section.fields) {
            if (!isFor(field.models, set.profile))
                continue;
            if (auto resolved = resolver.resolved(field))
                view.fields.push_back(std::move(*resolved));
        }
        if (!view.fields.empty())
            sections.push_back(std::move(view));
    }
    return sections;
}

Text namesOf(const std::vector<SheetModel>& models)
{
    Text names;
    for (const SheetModel& model : models)
        names += (names.empty() ? Text() : Text(u", ")) + wordOf(model);
    return names;
}

// A sheet that only sets values has none to edit; any other needs one.
bool isSomethingToDo(const FunctionSheet& sheet, const std::vector<SheetViewSection>& sections)
{
    const auto isToEdit = [](const SheetField& field) {
        return field.kind != FileKind::set && field.kind != FileKind::shown &&
               field.kind != FileKind::measured;
    };
    const bool wantsEdited =
        std::any_of(sheet.sections.begin(), sheet.sections.end(), [&](const SheetSection& section) {
            return std::any_of(section.fields.begin(), section.fields.end(), isToEdit);
        });
    return std::any_of(sections.begin(), sections.end(), [&](const SheetViewSection& section) {
        return std::any_of(section.fields.begin(), section.fields.end(), [&](const SheetViewField& field) {
            return field.isEdited() || (!wantsEdited && field.kind == Kind::set);
        });
    });
}

} // namespace

const SheetViewValues* SheetView::readyMadeOf(std::string_view menuItem) const
{
    const auto found = std::find_if(readyMade.begin(), readyMade.end(), [&](const SheetViewValues& one) {
        return !one.item.empty() && one.item == menuItem;
    });
    return found == readyMade.end() ? nullptr : &*found;
}

SheetView viewOf(const FunctionSheet& sheet, const CvSet& set, const LanguageTables& texts,
                 LanguageCode language)
{
    Resolver resolver(set, texts, language);
    SheetView view;
    view.item = sheet.item;
    view.window = sheet.window;
    view.picture = sheet.picture;
    view.title = sheet.words.in(language);
    view.notes = notesOf(sheet.notes, set, language);
    view.sections = sectionsOf(sheet, set, language, resolver);
    view.variants = valuesOf(sheet.variants, set, language);
    view.readyMade = valuesOf(sheet.readyMade, set, language);
    view.leftOut = resolver.lackingText();
    return view;
}

std::optional<Text> whyNotOpen(const FunctionSheet& sheet, const CvSet& set, const LanguageTables& texts)
{
    if (set.isEmpty())
        return texts.message(Message::editorNeedsList);
    const Text model(modelName(set.profile.model));
    if (!isFor(sheet.models, set.profile))
        return texts.message(Message::editorNotForModel, {model, namesOf(sheet.models)});
    Resolver resolver(set, texts, LanguageCode::german);
    const auto sections = sectionsOf(sheet, set, LanguageCode::german, resolver);
    if (isSomethingToDo(sheet, sections))
        return std::nullopt;
    auto cvs = resolver.lacking().cvs;
    std::sort(cvs.begin(), cvs.end());
    if (cvs.empty())
        return texts.message(Message::sheetNothingLeft, {model});
    return texts.message(Message::editorLacksCvs, {model, namesOfCvs(cvs)});
}

std::string objectNameOf(const SheetViewField& field)
{
    std::string name = "CV" + std::to_string(field.cvs.empty() ? 0 : field.cvs.front());
    return field.cvs.size() > 1 ? name + "_" + std::to_string(field.cvs.back()) : name;
}

std::string objectNameOf(const SheetSwitch& one)
{
    return "CV" + std::to_string(one.cv) + "_" + std::to_string(one.weight);
}

} // namespace karvo
