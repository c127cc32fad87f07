#include "cli/line_options.h"

#include "platform/simulated_port.h"
#include "platform/text_conversion.h"

namespace karvo
{

namespace
{

template <typename Names>
Text listOf(const Names& names)
{
    Text list;
    for (const auto& name : names)
        list += (list.empty() ? Text() : u", ") + textFromUtf8(name);
    return list;
}

} // namespace

std::variant<std::vector<PortMapping>, Text> portMappings(const CliArguments& arguments,
                                                          const LanguageTables& texts)
{
    std::vector<PortMapping> mappings;
    for (const QString& word : arguments.portMappings) {
        const auto parsed = parsePortMapping(word);
        if (parsed.error != PortMappingError::none)
            return texts.message(Message::wrongPortMapping, {toText(word)});
        mappings.push_back(parsed.mapping);
    }
    return mappings;
}

std::variant<std::unique_ptr<SerialPort>, Text> simulatedLine(const CliArguments& arguments, int number,
                                                              const LanguageTables& texts)
{
    auto decoder = sim::decoderByName(arguments.simulatedDecoder.toStdString());
    if (!decoder)
        return texts.message(Message::noSimulatedDecoder,
                             {toText(arguments.simulatedDecoder), listOf(sim::decoderNames())});
    const auto fault =
        arguments.fault.isEmpty() ? sim::Fault::none : sim::faultByName(arguments.fault.toStdString());
    if (!fault)
        return texts.message(Message::noSimulatedFault, {toText(arguments.fault), listOf(sim::faultNames())});
    const auto pace = arguments.unpaced ? sim::Pace::none : sim::Pace::line;
    return std::make_unique<SimulatedPort>(sim::Simulator(std::move(*decoder), pace, *fault), number);
}

} // namespace karvo
