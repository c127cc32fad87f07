// A decoder as the programming interface sees it: what it answers to "%", and its memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvo::sim
{

struct Decoder {
    std::string name;                 // as on the command line, such as "kv07" or "kv07-f3"
    std::string identification;       // the two characters answered to "%"
    std::vector<std::uint8_t> memory; // 512 or 1024 values; memory[n - 1] is CV n
};

// A factory-fresh, believable decoder; nothing for an unknown name. Letter case does not matter.
std::optional<Decoder> decoderByName(std::string_view name);

// All names, in the order in which help texts list them.
std::vector<std::string> decoderNames();

} // namespace karvo::sim
