// The main list, a decoder and the ports, as lines or as JSON.
#pragma once

#include "cli/output.h"
#include "platform/port_map.h"
#include "workbench/workbench.h"

#include <QJsonValue>
#include <QString>

#include <vector>

namespace karvo
{

struct PresentPort {
    int number;
    QString device;
    QString description;
};

// A value that is no number, or none, is null.
QJsonValue numberOrNull(const Text& text);

void printList(Output& output, const ProgramState& state);
void printDecoder(Output& output, const ProgramState& state);

// Devices without a number go to standard error, with the option that gives them one.
void printPorts(Output& output, const std::vector<PresentPort>& ports, const std::vector<NewPort>& newPorts);

void printOfflineLists(Output& output);

// The name of an offline list on the command line: "kv07" for the menu item "mnu_kv07".
QString offlineListName(std::string_view menuItem);

} // namespace karvo
