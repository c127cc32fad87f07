#include "simulator/simulator.h"

#include <array>
#include <utility>

namespace karvo::sim
{

namespace
{

constexpr std::array<std::pair<std::string_view, Fault>, 18> faults{{
    {"none", Fault::none},
    {"silence", Fault::silence},
    {"unknown-identification", Fault::unknownIdentification},
    {"wrong-check-byte", Fault::wrongCheckByte},
    {"short-block", Fault::shortBlock},
    {"late-block", Fault::lateBlock},
    {"torn-block", Fault::tornBlock},
    {"refused-command", Fault::refusedCommand},
    {"refused-frame", Fault::refusedFrame},
    {"silent-loader", Fault::silentLoader},
    {"strict-loader", Fault::strictLoader},
    {"terse-loader", Fault::terseLoader},
    {"changed-byte", Fault::changedByte},
    {"silent-update", Fault::silentUpdate},
    {"late-reply", Fault::lateReply},
    {"garbled-reply", Fault::garbledReply},
    {"excess-reply", Fault::excessReply},
    {"hang-up", Fault::hangUp},
}};

} // namespace

std::optional<Fault> faultByName(std::string_view name)
{
    for (const auto& [faultName, fault] : faults) {
        if (faultName == name)
            return fault;
    }
    return std::nullopt;
}

std::vector<std::string_view> faultNames()
{
    std::vector<std::string_view> names;
    names.reserve(faults.size());
    for (const auto& [faultName, fault] : faults)
        names.push_back(faultName);
    return names;
}

} // namespace karvo::sim
