// The main list, a decoder and the ports, as lines or as JSON.
#pragma once

#include "platform/port_map.h"
#include "workbench/workbench.h"

#include <QJsonDocument>
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

// To standard output.
void printJson(const QJsonDocument& document);

// A value that is no number, or none, is null.
QJsonValue numberOrNull(const Text& text);

void printList(const ProgramState& state, bool json);
void printDecoder(const ProgramState& state, bool json);
void printPorts(const std::vector<PresentPort>& ports, bool json);

// To standard error: devices without a number, with the option that gives them one.
void printNewPorts(const std::vector<NewPort>& ports);

void printOfflineLists(bool json);

// The name of an offline list on the command line: "kv07" for the menu item "mnu_kv07".
QString offlineListName(std::string_view menuItem);

} // namespace karvo
