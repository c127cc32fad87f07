#include "simulator/decoder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>

namespace karvo::sim
{

namespace
{

struct CvValue {
    int cv;
    std::uint8_t value;
};

enum class Kind { older, newer, trailer, receiver };
enum class Build : std::uint8_t { standard = 0, laneControl = 1, tacho = 2 };
enum class Processor { atmega168, atmega328, atmega328p, unrecorded };

struct Date {
    std::uint8_t day, month, year; // year - 2000; all 0: none recorded
};

struct Model {
    std::string_view name;
    std::string_view identification;
    Kind kind;
    std::uint8_t firmware;
    std::uint8_t subLevel;
    Build build;
    Date date;
    Processor processor;
    int topStep; // speed step 28; 0: no speed table
};

constexpr Date noDate{0, 0, 0};

using enum Kind;
using enum Build;
using enum Processor;

// One for each identification, firmware generation and special build.
constexpr std::array models{
    Model{"kv07", "27", newer, 6, 2, standard, {14, 3, 18}, atmega328, 160},
    Model{"kv07-f3", "27", newer, 3, 1, standard, {22, 9, 13}, atmega328, 160},
    Model{"kv07-f4", "27", newer, 4, 0, standard, {17, 6, 14}, atmega328, 160},
    Model{"kv07-f5", "27", newer, 5, 3, standard, {8, 12, 15}, atmega328, 120},
    Model{"kv07-v1", "27", newer, 1, 0, standard, {5, 3, 13}, atmega328, 0},
    Model{"kv07-tacho", "27", newer, 6, 1, tacho, {30, 1, 18}, atmega328, 160},
    Model{"kv07-lc", "27", newer, 6, 2, laneControl, {14, 3, 18}, atmega328, 160},
    Model{"kv08", "28", newer, 6, 4, standard, {2, 11, 19}, atmega328p, 165},
    Model{"kv08-f3", "28", newer, 3, 2, standard, {6, 10, 13}, atmega328, 165},
    Model{"kv08-f4", "28", newer, 4, 1, standard, {1, 7, 14}, atmega328, 165},
    Model{"kv08-f5", "28", newer, 5, 1, standard, {20, 12, 15}, atmega328p, 120},
    Model{"kv08-v1", "28", newer, 1, 1, standard, {19, 4, 13}, atmega328, 0},
    Model{"kv08-tacho", "28", newer, 6, 1, tacho, {30, 1, 18}, atmega328p, 165},
    Model{"kv08-lc", "28", newer, 6, 4, laneControl, {2, 11, 19}, atmega328p, 165},
    Model{"kv04", "14", older, 4, 1, standard, noDate, atmega168, 150},
    Model{"kv04-2008", "04", older, 1, 0, standard, noDate, unrecorded, 175},
    Model{"kv04-2008-v1", "04", older, 2, 0, standard, noDate, atmega168, 175},
    Model{"kv04-2008-v2", "04", older, 3, 2, standard, noDate, atmega168, 150},
    Model{"kv04-f4", "24", older, 5, 0, standard, noDate, atmega168, 155},
    Model{"kv04-mai10", "24", older, 5, 2, standard, {14, 5, 10}, atmega168, 155},
    Model{"kv05", "15", older, 4, 1, standard, noDate, atmega168, 150},
    Model{"kv05-f5", "25", older, 5, 0, standard, noDate, atmega168, 155},
    Model{"kv05-mai10", "25", older, 5, 2, standard, {14, 5, 10}, atmega168, 155},
    Model{"kv05-nov12", "25", older, 6, 0, standard, {20, 11, 12}, atmega168, 155},
    Model{"kv06", "16", older, 4, 1, standard, noDate, atmega168, 150},
    Model{"kv06-f6", "26", older, 5, 0, standard, noDate, atmega168, 155},
    Model{"kv06-mai10", "26", older, 5, 2, standard, {14, 5, 10}, atmega168, 155},
    Model{"kv06-nov12", "26", older, 6, 0, standard, {20, 11, 12}, atmega168, 155},
    Model{"trailer", "A7", trailer, 3, 1, standard, {11, 2, 17}, atmega328, 0},
    Model{"trailer-v1", "A7", trailer, 1, 0, standard, {9, 9, 14}, atmega328, 0},
    Model{"receiver", "80", receiver, 5, 3, standard, {27, 2, 22}, atmega328, 0},
    Model{"receiver-readonly", "81", receiver, 4, 2, standard, {24, 2, 16}, unrecorded, 0},
};

// What every vehicle decoder leaves the factory with: address 3, lights dimmed, indicators at 1.5 Hz,
// distance control set for a van.
constexpr CvValue vehicleValues[] = {
    {1, 3},    {2, 20},   {3, 4},    {4, 10},   {5, 140},  {6, 80},   {15, 0},   {16, 130}, {17, 0},
    {18, 128}, {19, 1},   {20, 2},   {21, 0},   {22, 4},   {23, 8},   {24, 16},  {25, 0},   {26, 1},
    {27, 0},   {28, 40},  {29, 0},   {30, 66},  {31, 33},  {32, 5},   {33, 60},  {34, 60},  {35, 45},
    {36, 12},  {37, 100}, {40, 3},   {41, 6},   {42, 9},   {43, 20},  {44, 20},  {45, 50},  {48, 25},
    {49, 2},   {50, 15},  {51, 10},  {52, 110}, {53, 12},  {54, 20},  {55, 4},   {56, 30},  {57, 1},
    {60, 3},   {61, 1},   {62, 25},  {63, 50},  {64, 8},   {65, 16},  {66, 95},  {67, 2},   {68, 7},
    {98, 1},   {100, 0},  {101, 0},  {102, 30}, {103, 35}, {104, 70}, {105, 5},  {106, 12}, {110, 50},
    {111, 20}, {112, 1},  {113, 10}, {115, 3},  {120, 25}, {121, 25}, {122, 40}, {125, 80}, {130, 6},
    {131, 18}, {135, 90}, {140, 45}, {141, 15}, {145, 2},  {150, 10}, {151, 22}, {155, 33}, {160, 1},
    {161, 0},  {162, 10}, {163, 5},  {164, 5},  {165, 8},  {166, 8},  {167, 10}, {168, 20}, {169, 30},
    {170, 40}, {171, 50},
};

// Servo ends and speed; of CV174 and CV175 only one may hold a value.
constexpr CvValue servoValues[] = {{153, 12}, {172, 60}, {173, 120}, {174, 15}, {175, 0}, {176, 4}};

// A receiver switches lights or turnouts for the vehicles that pass it: no motor, no speed table.
constexpr CvValue receiverValues[] = {
    {1, 3},   {2, 1},   {3, 4},    {9, 2},    {10, 5},  {17, 0},   {18, 128}, {19, 10}, {20, 20}, {29, 0},
    {30, 3},  {31, 7},  {40, 12},  {41, 24},  {50, 1},  {51, 2},   {52, 100}, {53, 10}, {54, 15}, {60, 1},
    {74, 2},  {76, 5},  {77, 30},  {78, 60},  {80, 1},  {90, 25},  {91, 50},  {100, 0}, {110, 8}, {112, 1},
    {120, 4}, {130, 1}, {140, 20}, {150, 35}, {160, 1}, {478, 18}, {479, 4},
};

constexpr int maker = 13; // public domain and do-it-yourself decoders
constexpr int firstSpeedStep = 8;
constexpr int lastOwnCv = 496; // below the record of the firmware

class Memory
{
public:
    explicit Memory(std::size_t size) : values_(size) {}

    void set(int cv, int value)
    {
        values_[static_cast<std::size_t>(cv) - 1] = static_cast<std::uint8_t>(value);
    }

    void set(std::span<const CvValue> values)
    {
        for (const auto& [cv, value] : values) {
            set(cv, value);
        }
    }

    int size() const { return static_cast<int>(values_.size()); }
    std::vector<std::uint8_t> values() const { return values_; }

private:
    std::vector<std::uint8_t> values_;
};

// The decoder's own range: counters and corrections, and erased memory towards the end. Neighbours differ, so
// that a block that has shifted by a byte shows.
void setOwnRange(Memory& memory, const Model& model)
{
    for (int cv = 257; cv <= lastOwnCv; ++cv) {
        memory.set(cv, cv * 37 + model.firmware * 11);
    }
    for (int cv = 513; cv <= memory.size(); ++cv) {
        memory.set(cv, cv < 960 ? cv * 53 + model.subLevel * 7 : 255);
    }
}

// Speed step n is CV (98 - n). Real motors want small steps at the slow end.
void setSpeedTable(Memory& memory, int topStep)
{
    for (int step = 1; step <= 28; ++step) {
        const int steepness = (step - 1) * (step + 8);
        memory.set(98 - step, firstSpeedStep + (topStep - firstSpeedStep) * steepness / (27 * 36));
    }
}

void setSignature(Memory& memory, Processor processor)
{
    switch (processor) {
    case atmega168:
        memory.set(std::array{CvValue{509, 0x1E}, CvValue{510, 0x94}, CvValue{511, 0x06}});
        break;
    case atmega328:
        memory.set(std::array{CvValue{509, 0x1E}, CvValue{510, 0x95}, CvValue{511, 0x14}});
        break;
    case atmega328p:
        memory.set(std::array{CvValue{509, 0x1E}, CvValue{510, 0x95}, CvValue{511, 0x0F}});
        break;
    case unrecorded:
        memory.set(std::array{CvValue{509, 255}, CvValue{510, 255}, CvValue{511, 255}});
        break;
    }
}

void setFirmwareRecord(Memory& memory, const Model& model)
{
    memory.set(7, model.firmware);
    memory.set(8, maker);
    memory.set(497, model.subLevel);
    memory.set(498, static_cast<int>(model.build));
    memory.set(499, model.date.day);
    memory.set(500, model.date.month);
    memory.set(501, model.date.year);
    setSignature(memory, model.processor);
}

void setVehicle(Memory& memory, const Model& model)
{
    memory.set(vehicleValues);
    memory.set(99, model.firmware >= 3 ? 1 : 0);
    if (model.kind != trailer) {
        memory.set(servoValues);
    }
    if (model.topStep > 0) {
        setSpeedTable(memory, model.topStep);
    }
}

// A receiver keeps its firmware level in CV72 and repeats its firmware version in CV73.
void setReceiver(Memory& memory, const Model& model)
{
    memory.set(receiverValues);
    memory.set(72, model.subLevel);
    memory.set(73, model.firmware);
}

Decoder build(const Model& model)
{
    Memory memory(model.kind == newer ? 1024 : 512);
    setOwnRange(memory, model);
    if (model.kind == receiver) {
        setReceiver(memory, model);
    } else {
        setVehicle(memory, model);
    }
    setFirmwareRecord(memory, model);
    return {std::string(model.name), std::string(model.identification), memory.values()};
}

bool isSameName(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

} // namespace

std::optional<Decoder> decoderByName(std::string_view name)
{
    for (const Model& model : models) {
        if (isSameName(model.name, name)) {
            return build(model);
        }
    }
    return std::nullopt;
}

std::vector<std::string> decoderNames()
{
    std::vector<std::string> names;
    for (const Model& model : models) {
        names.emplace_back(model.name);
    }
    return names;
}

} // namespace karvo::sim
