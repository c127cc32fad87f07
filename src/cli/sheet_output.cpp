#include "cli/sheet_output.h"

#include "platform/text_conversion.h"

#include <QJsonArray>
#include <QJsonObject>

namespace karvo
{

namespace
{

constexpr TextView ticked = u"[x] ";
constexpr TextView unticked = u"[ ] ";

QLatin1StringView wordOf(SheetViewField::Kind kind)
{
    using Kind = SheetViewField::Kind;
    switch (kind) {
    case Kind::switches:
        return QLatin1StringView("switches");
    case Kind::choice:
        return QLatin1StringView("choice");
    case Kind::number:
        return QLatin1StringView("number");
    case Kind::time:
        return QLatin1StringView("time");
    case Kind::longNumber:
        return QLatin1StringView("longNumber");
    case Kind::address:
        return QLatin1StringView("address");
    case Kind::shown:
        return QLatin1StringView("shown");
    case Kind::measured:
        return QLatin1StringView("measured");
    case Kind::set:
        break;
    }
    return QLatin1StringView("set");
}

Text namesOf(const SheetViewField& field)
{
    Text names;
    for (const int cv : field.cvs)
        names += joined({names.empty() ? u"CV" : u" + CV", textFromNumber(cv)});
    return names;
}

// What the value of a field means, in words and units.
Text meaningOf(const SheetViewField& field, const SheetValues& values, const ProgramState& state)
{
    if (!field.isEdited())
        return field.shownText;
    const auto value = values.value(field);
    if (!value)
        return state.texts.caption(Caption::settingUnknown);
    return meaningOf(*value, field.meaning, state.language != LanguageCode::english);
}

Text lineOf(const SheetViewField& field, const SheetValues& values, const ProgramState& state)
{
    const LanguageTables& texts = state.texts;
    const bool isSet = field.kind == SheetViewField::Kind::set;
    const Text meaning = meaningOf(field, values, state);
    const Text what = isSet ? texts.caption(Caption::sheetWillBeSet, {meaning}) : meaning;
    const auto value = field.isEdited() ? values.value(field) : std::nullopt;
    Text line =
        joined({u"  ", namesOf(field), value ? u" = " : u"", value ? textFromNumber(*value) : Text(),
                field.cvs.empty() ? u"" : u"  ", texts.caption(Caption::settingIs, {field.name, what})});
    if (field.isEdited() && field.factory && !values.isFactory(field))
        line += joined({u"  * ", texts.caption(Caption::sheetNotFactory, {textFromNumber(*field.factory)})});
    return line;
}

QJsonObject objectOf(const SheetViewField& field, const SheetValues& values, const ProgramState& state)
{
    QJsonArray cvs;
    for (const int cv : field.cvs)
        cvs.append(cv);
    const auto value = field.isEdited() ? values.value(field) : field.setTo;
    QJsonArray switches;
    for (const SheetSwitch& one : field.switches)
        switches.append(QJsonObject{{QStringLiteral("weight"), one.weight},
                                    {QStringLiteral("name"), toQString(one.word)},
                                    {QStringLiteral("on"), values.bit(one.cv, one.weight)}});
    QJsonObject object{{QStringLiteral("cvs"), cvs},
                       {QStringLiteral("kind"), wordOf(field.kind)},
                       {QStringLiteral("name"), toQString(field.name)},
                       {QStringLiteral("value"), value ? QJsonValue(*value) : QJsonValue()},
                       {QStringLiteral("factory"), field.factory ? QJsonValue(*field.factory) : QJsonValue()},
                       {QStringLiteral("meaning"), toQString(meaningOf(field, values, state))}};
    if (!switches.isEmpty())
        object.insert(QStringLiteral("switches"), switches);
    return object;
}

QJsonArray arrayOf(const std::vector<Text>& texts)
{
    QJsonArray array;
    for (const Text& text : texts)
        array.append(toQString(text));
    return array;
}

// A switch with its box, and whether it is not as it was made.
Text switchText(const SheetSwitch& one, const SheetValues& values, const LanguageTables& texts)
{
    const bool isOn = values.bit(one.cv, one.weight);
    const auto factory = values.factory(one.cv);
    Text text = joined({isOn ? ticked : unticked, one.word});
    if (factory && ((*factory & one.weight) != 0) != isOn)
        text += joined(
            {u"  * ", texts.caption(Caption::sheetNotFactory,
                                    {texts.caption(isOn ? Caption::settingOff : Caption::settingOn)})});
    return text;
}

void printField(Output& output, const SheetViewField& field, const SheetValues& values,
                const ProgramState& state)
{
    if (field.switches.empty())
        return output.line(lineOf(field, values, state));
    // A switch that is called as its CV stands alone.
    const bool isAlone = field.switches.size() == 1 && field.switches.front().word == field.name;
    if (!isAlone)
        output.line(joined({u"  ", namesOf(field), u"  ", field.name}));
    for (const SheetSwitch& one : field.switches)
        output.line(joined(
            {u"  ", isAlone ? namesOf(field) : Text(2, u' '), u"  ", switchText(one, values, state.texts)}));
}

void printSection(Output& output, const SheetViewSection& section, const SheetValues& values,
                  const ProgramState& state)
{
    output.line(Text());
    if (!section.title.empty())
        output.line(section.title);
    for (const Text& note : section.notes)
        output.line(u"  " + note);
    for (const SheetViewField& field : section.fields)
        printField(output, field, values, state);
}

QJsonArray sectionsOf(const SheetView& view, const SheetValues& values, const ProgramState& state)
{
    QJsonArray sections;
    for (const SheetViewSection& section : view.sections) {
        QJsonArray fields;
        for (const SheetViewField& field : section.fields)
            fields.append(objectOf(field, values, state));
        sections.append(QJsonObject{{QStringLiteral("title"), toQString(section.title)},
                                    {QStringLiteral("notes"), arrayOf(section.notes)},
                                    {QStringLiteral("fields"), fields}});
    }
    return sections;
}

} // namespace

void printSheet(Output& output, const SheetView& view, const SheetValues& values, const ProgramState& state)
{
    output.line(view.title);
    for (const Text& note : view.notes)
        output.line(note);
    for (const SheetViewSection& section : view.sections)
        printSection(output, section, values, state);
    if (!view.leftOut.empty()) {
        output.line(Text());
        output.line(view.leftOut);
    }
    output.put(QStringLiteral("sheet"),
               QJsonObject{{QStringLiteral("item"), QString::fromStdString(view.item)},
                           {QStringLiteral("title"), toQString(view.title)},
                           {QStringLiteral("notes"), arrayOf(view.notes)},
                           {QStringLiteral("sections"), sectionsOf(view, values, state)},
                           {QStringLiteral("leftOut"), toQString(view.leftOut)},
                           {QStringLiteral("values"), toQString(values.asText())}});
}

void printSettings(Output& output, const std::vector<DescribedGroup>& groups)
{
    QJsonArray array;
    for (const DescribedGroup& group : groups) {
        if (!array.isEmpty())
            output.line(Text());
        output.line(group.title);
        QJsonArray settings;
        for (const DescribedSetting& setting : group.settings) {
            output.line((setting.isFactory ? u"    " : u"  * ") + setting.sentence);
            QJsonArray cvs;
            for (const int cv : setting.cvs)
                cvs.append(cv);
            settings.append(QJsonObject{{QStringLiteral("sentence"), toQString(setting.sentence)},
                                        {QStringLiteral("cvs"), cvs},
                                        {QStringLiteral("isFactory"), setting.isFactory},
                                        {QStringLiteral("sheet"), QString::fromStdString(setting.item)}});
        }
        array.append(QJsonObject{{QStringLiteral("group"), toQString(Text(wordOf(group.group)))},
                                 {QStringLiteral("title"), toQString(group.title)},
                                 {QStringLiteral("settings"), settings}});
    }
    output.put(QStringLiteral("groups"), array);
}

} // namespace karvo
