#include "cli/list_output.h"

#include "cvdata/cv_details.h"
#include "cvdata/decoder_profile.h"
#include "cvdata/description_choice.h"
#include "cvdata/text_report.h"
#include "platform/text_conversion.h"

#include <QJsonArray>
#include <QJsonObject>

namespace karvo
{

namespace
{

QJsonObject cvObject(const CvTable& table, int cv)
{
    const CvDetails details = cvDetails(table, cv);
    return {{QStringLiteral("cv"), cv},
            {QStringLiteral("value"), numberOrNull(details.value)},
            {QStringLiteral("name"), toQString(details.name)},
            {QStringLiteral("explanation"), toQString(details.explanation)},
            {QStringLiteral("lower"), numberOrNull(details.lowerLimit)},
            {QStringLiteral("upper"), numberOrNull(details.upperLimit)},
            {QStringLiteral("factory"), numberOrNull(details.factoryValue)}};
}

QJsonArray cvArray(const CvTable& table)
{
    QJsonArray cvs;
    for (const int cv : table.describedCvs())
        cvs.append(cvObject(table, cv));
    return cvs;
}

QJsonObject profileObject(const ProgramState& state)
{
    const CvSet& set = state.set;
    const auto description = set.descriptionPath.filename();
    QJsonObject object{{QStringLiteral("model"), toQString(modelName(set.profile.model))},
                       {QStringLiteral("type"), toQString(typeText(set.profile, state.texts))},
                       {QStringLiteral("description"), pathToQString(description)},
                       {QStringLiteral("offline"), set.isOffline()}};
    if (!set.isOffline()) {
        object.insert(QStringLiteral("firmware"), set.profile.firmwareVersion);
        object.insert(QStringLiteral("sublevel"), set.profile.subLevel);
        object.insert(QStringLiteral("processor"), toQString(processorName(set.profile.processor)));
    }
    return object;
}

} // namespace

QJsonValue numberOrNull(const Text& text)
{
    const auto number = numberFromText(text);
    return number ? QJsonValue(*number) : QJsonValue();
}

void printList(Output& output, const ProgramState& state)
{
    output.put(QStringLiteral("decoder"), profileObject(state));
    output.put(QStringLiteral("cvs"), cvArray(state.set.table));
    output.line(state.set.loadedData);
    for (const Text& line : linesOfEveryCv(state.set, state.texts))
        output.line(line);
}

void printDecoder(Output& output, const ProgramState& state)
{
    const Text model(modelName(modelOfTypeCode(state.link.typeCode)));
    output.put(QStringLiteral("identification"), toQString(state.link.identification));
    output.put(QStringLiteral("typeCode"), numberOf(state.link.typeCode));
    output.put(QStringLiteral("model"), toQString(model));
    output.line(model + u" (" + state.link.identification + u")");
}

void printPorts(Output& output, const std::vector<PresentPort>& ports, const std::vector<NewPort>& newPorts)
{
    QJsonArray present;
    for (const PresentPort& port : ports) {
        const QString name = QStringLiteral("COM%1").arg(port.number);
        const QString device = port.device == name ? QString() : QStringLiteral("  ") + port.device;
        output.line(toText((name + device + QStringLiteral("  ") + port.description).trimmed()));
        present.append(QJsonObject{{QStringLiteral("port"), port.number},
                                   {QStringLiteral("device"), port.device},
                                   {QStringLiteral("description"), port.description}});
    }
    QJsonArray unnumbered;
    for (const NewPort& port : newPorts) {
        const QString line = QStringLiteral("%1  %2  (--map-port COM%3=%1)");
        output.remark(toText(line.arg(port.device, port.description, QString::number(port.number))));
        unnumbered.append(QJsonObject{{QStringLiteral("device"), port.device},
                                      {QStringLiteral("description"), port.description},
                                      {QStringLiteral("freePort"), port.number}});
    }
    output.put(QStringLiteral("ports"), present);
    output.put(QStringLiteral("withoutNumber"), unnumbered);
}

void printOfflineLists(Output& output)
{
    QJsonArray names;
    for (const OfflineList& list : offlineLists()) {
        names.append(offlineListName(list.menuItem));
        output.line(toText(offlineListName(list.menuItem)));
    }
    output.put(QStringLiteral("lists"), names);
}

QString offlineListName(std::string_view menuItem)
{
    constexpr std::string_view prefix = "mnu_";
    const auto name = menuItem.substr(prefix.size());
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))
        .toLower()
        .replace(QLatin1Char('_'), QLatin1Char('-'));
}

} // namespace karvo
