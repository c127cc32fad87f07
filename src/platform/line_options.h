// The line that a program's command line asks for: which devices stand behind the port numbers, and whether a
// simulated interface stands in for them.
#pragma once

#include "platform/port_map.h"
#include "program/serial_port.h"

#include <QStringList>

#include <memory>

namespace karvo
{

struct PortMappings {
    std::vector<PortMapping> mappings;
    QString wrong; // the first argument that is no mapping; empty when all are
};

// The arguments of all options "--map-port".
PortMappings parsePortMappings(const QStringList& arguments);

struct SimulationRequest {
    QString decoder; // of "--simulate"
    QString fault;   // empty for none
    bool unpaced = false;
};

struct SimulatedLine {
    std::unique_ptr<SerialPort> port; // nothing when the request names what there is not
    QString wrong;                    // then: what is wrong, with the names that there are
};

// A simulated interface that answers on port `number`.
SimulatedLine simulatedLine(const SimulationRequest& request, int number);

} // namespace karvo
