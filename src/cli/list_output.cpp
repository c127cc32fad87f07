#include "cli/list_output.h"

#include "cli/terminal.h"
#include "cvdata/cv_details.h"
#include "cvdata/description_choice.h"
#include "cvdata/text_report.h"
#include "platform/text_conversion.h"
#include "workbench/describe.h"

#include <QJsonArray>
#include <QJsonDocument>
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

void printJson(const QJsonDocument& document)
{
    std::fputs(document.toJson(QJsonDocument::Indented).constData(), stdout);
}

QJsonValue numberOrNull(const Text& text)
{
    const auto number = numberFromText(text);
    return number ? QJsonValue(*number) : QJsonValue();
}

void printList(const ProgramState& state, bool json)
{
    if (json) {
        printJson(QJsonDocument(QJsonObject{{QStringLiteral("decoder"), profileObject(state)},
                                            {QStringLiteral("cvs"), cvArray(state.set.table)}}));
        return;
    }
    printLine(stdout, state.set.loadedData);
    for (const Text& line : linesOfEveryCv(state.set, state.texts))
        printLine(stdout, line);
}

void printDecoder(const ProgramState& state, bool json)
{
    const auto model = modelName(modelOfTypeCode(state.link.typeCode));
    if (json) {
        printJson(QJsonDocument(
            QJsonObject{{QStringLiteral("identification"), toQString(state.link.identification)},
                        {QStringLiteral("typeCode"), state.link.typeCode},
                        {QStringLiteral("model"), toQString(model)}}));
        return;
    }
    printLine(stdout, Text(model) + u" (" + state.link.identification + u")");
}

void printPorts(const std::vector<PresentPort>& ports, bool json)
{
    QJsonArray array;
    for (const PresentPort& port : ports) {
        if (!json) {
            const QString name = QStringLiteral("COM%1").arg(port.number);
            const QString device = port.device == name ? QString() : QStringLiteral("  ") + port.device;
            printLine(stdout, toText((name + device + QStringLiteral("  ") + port.description).trimmed()));
            continue;
        }
        array.append(QJsonObject{{QStringLiteral("port"), port.number},
                                 {QStringLiteral("device"), port.device},
                                 {QStringLiteral("description"), port.description}});
    }
    if (json)
        printJson(QJsonDocument(array));
}

void printNewPorts(const std::vector<NewPort>& ports)
{
    for (const NewPort& port : ports) {
        const QString line = QStringLiteral("%1  %2  (--map-port COM%3=%1)");
        printLine(stderr, toText(line.arg(port.device, port.description, QString::number(port.number))));
    }
}

void printOfflineLists(bool json)
{
    QJsonArray array;
    for (const OfflineList& list : offlineLists()) {
        array.append(offlineListName(list.menuItem));
        if (!json)
            printLine(stdout, toText(offlineListName(list.menuItem)));
    }
    if (json)
        printJson(QJsonDocument(array));
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
