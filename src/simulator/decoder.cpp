#include "simulator/decoder.h"

#include "simulator/lacking_cvs.h"

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
    Model{"receiver-undated", "80", receiver, 1, 0, standard, noDate, unrecorded, 0},
    Model{"receiver-2014", "80", receiver, 2, 1, standard, {30, 6, 14}, atmega168, 0},
    Model{"receiver-2015", "80", receiver, 4, 1, standard, {1, 9, 15}, atmega168, 0},
    Model{"receiver-2016", "80", receiver, 4, 0, standard, {24, 2, 16}, atmega328, 0},
    Model{"receiver-readonly", "81", receiver, 4, 2, standard, {24, 2, 16}, unrecorded, 0},
};

constexpr CvValue addressValues[] = {{1, 3}, {3, 4}, {15, 0}, {16, 129}, {17, 0}, {18, 128}, {29, 0}};

constexpr CvValue lightValues[] = {{62, 200}, {63, 60}, {64, 255}, {65, 30}, {66, 40},
                                   {67, 5},   {68, 45}, {69, 2},   {100, 5}, {101, 60}};

// Run-out, distance control, and the automatics of buses and fire engines.
constexpr CvValue drivingValues[] = {
    {4, 8},   {21, 17}, {48, 20}, {49, 180}, {50, 128}, {51, 6},   {52, 110},
    {53, 20}, {54, 40}, {57, 31}, {58, 20},  {102, 12}, {103, 10}, {104, 50},
    {105, 2}, {106, 4}, {107, 8}, {108, 90}, {109, 30}, {110, 24}, {111, 20},
};

constexpr CvValue batteryValues[] = {{55, 10}, {56, 14}, {153, 165}, {154, 150}};

// Function keys, switches and infrared reports of the newer models.
constexpr CvValue newerValues[] = {
    {9, 2},  {22, 7}, {23, 3},  {24, 3},  {26, 128}, {27, 3},   {33, 1},  {34, 4},    {35, 5},  {36, 9},
    {37, 6}, {38, 8}, {112, 1}, {160, 3}, {161, 1},  {162, 20}, {163, 5}, {164, 133}, {167, 1}, {168, 17},
};

// Battery voltage in units of 20 mV.
constexpr CvValue measuredBattery = {505, 196};

constexpr CvValue eightOutputs[] = {{113, 255}, {114, 255}, {115, 255}, {116, 255},
                                    {117, 255}, {118, 255}, {119, 255}, {120, 255}};

constexpr CvValue laneControlValues[] = {{177, 1},   {178, 0},  {179, 120}, {180, 60},
                                         {181, 128}, {182, 50}, {183, 20},  {184, 18}};

constexpr CvValue tachoValues[] = {{177, 33}, {178, 4}, {179, 100}, {180, 87}};

// Ends and speed of a servo; of CV174 and CV175 only one may hold a value.
constexpr CvValue servoValues[] = {{172, 100}, {173, 156}, {174, 15}, {175, 0}, {176, 10}};

constexpr CvValue trailerValues[] = {{21, 1}, {113, 7}, {114, 2}, {115, 1}};

// A receiver switches lights or turnouts for the vehicles that pass it: no motor, no speed table.
constexpr CvValue receiverValues[] = {
    {9, 1},    {10, 5},   {30, 1},   {31, 2},   {32, 7},   {35, 17},  {50, 1},   {51, 1},
    {52, 2},   {53, 3},   {54, 4},   {55, 5},   {56, 6},   {57, 1},   {60, 200}, {61, 200},
    {62, 200}, {63, 200}, {64, 200}, {65, 200}, {66, 200}, {67, 200}, {74, 2},   {77, 30},
    {78, 30},  {80, 1},   {90, 25},  {91, 25},  {112, 1},  {478, 18}, {479, 4},
};

constexpr int maker = 13; // public domain and do-it-yourself decoders
constexpr int baseSpeed = 5;
constexpr int topSpeedWithoutTable = 128;
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
        for (const auto& [cv, value] : values)
            set(cv, value);
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
    for (int cv = 257; cv <= lastOwnCv; ++cv)
        memory.set(cv, cv * 37 + model.firmware * 11);
    for (int cv = 513; cv <= memory.size(); ++cv)
        memory.set(cv, cv < 960 ? cv * 53 + model.subLevel * 7 : 255);
}

// Speed step n is CV (98 - n). Real motors want small steps at the slow end.
void setSpeedTable(Memory& memory, int topStep)
{
    for (int step = 1; step <= 28; ++step) {
        const int steepness = (step - 1) * (step + 8);
        memory.set(98 - step, baseSpeed + (topStep - baseSpeed) * steepness / (27 * 36));
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

void setDriving(Memory& memory, const Model& model)
{
    memory.set(drivingValues);
    memory.set(2, baseSpeed);
    memory.set(5, model.topStep > 0 ? model.topStep : topSpeedWithoutTable);
    if (model.topStep > 0)
        setSpeedTable(memory, model.topStep);
}

void setNewerFunctions(Memory& memory, const Model& model)
{
    memory.set(newerValues);
    memory.set(servoValues);
    memory.set(measuredBattery.cv, measuredBattery.value);
    if (model.identification == "28")
        memory.set(eightOutputs);
    if (model.build == laneControl)
        memory.set(laneControlValues);
    if (model.build == tacho)
        memory.set(tachoValues);
}

void setVehicle(Memory& memory, const Model& model)
{
    memory.set(lightValues);
    if (model.kind == trailer) {
        memory.set(trailerValues);
        return;
    }
    setDriving(memory, model);
    if (model.identification != "04" && model.identification != "14")
        memory.set(batteryValues);
    if (model.kind == newer)
        setNewerFunctions(memory, model);
}

// A receiver keeps its firmware level in CV72 and repeats its firmware version in CV73.
void setReceiver(Memory& memory, const Model& model)
{
    memory.set(receiverValues);
    memory.set(servoValues);
    memory.set(72, model.subLevel);
    memory.set(73, model.firmware);
}

Decoder build(const Model& model)
{
    Memory memory(model.kind == newer ? 1024 : 512);
    setOwnRange(memory, model);
    memory.set(addressValues);
    if (model.kind == receiver)
        setReceiver(memory, model);
    else
        setVehicle(memory, model);
    for (const int cv : lackingCvs(model.name))
        memory.set(cv, 0);
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
        if (isSameName(model.name, name))
            return build(model);
    }
    return std::nullopt;
}

std::vector<std::string> decoderNames()
{
    std::vector<std::string> names;
    names.reserve(models.size());
    for (const Model& model : models)
        names.emplace_back(model.name);
    return names;
}

} // namespace karvo::sim
