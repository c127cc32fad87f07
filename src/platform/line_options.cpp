#include "platform/line_options.h"

#include "platform/simulated_port.h"

namespace karvo
{

namespace
{

template <typename Names>
QString joined(const Names& names)
{
    QStringList list;
    for (const auto& name : names)
        list.append(QString::fromStdString(std::string(name)));
    return list.join(QStringLiteral(", "));
}

} // namespace

PortMappings parsePortMappings(const QStringList& arguments)
{
    PortMappings parsed;
    for (const QString& argument : arguments) {
        const auto mapping = parsePortMapping(argument);
        if (mapping.error != PortMappingError::none)
            return {{}, argument};
        parsed.mappings.push_back(mapping.mapping);
    }
    return parsed;
}

SimulatedLine simulatedLine(const SimulationRequest& request, int number)
{
    auto decoder = sim::decoderByName(request.decoder.toStdString());
    if (!decoder)
        return {nullptr, QStringLiteral("There is no simulated decoder %1. There are: %2")
                             .arg(request.decoder, joined(sim::decoderNames()))};
    const auto fault =
        request.fault.isEmpty() ? sim::Fault::none : sim::faultByName(request.fault.toStdString());
    if (!fault)
        return {nullptr, QStringLiteral("There is no fault %1. There are: %2")
                             .arg(request.fault, joined(sim::faultNames()))};
    const auto pace = request.unpaced ? sim::Pace::none : sim::Pace::line;
    return {std::make_unique<SimulatedPort>(sim::Simulator(std::move(*decoder), pace, *fault), number), {}};
}

} // namespace karvo
