// Which decoder stands on the bench: model, firmware and build, from its identification and its memory
// (docs/protocol.md, "Which decoder it is").
#pragma once

#include "link/link.h"
#include "program/text.h"

#include <string_view>

namespace karvo
{

enum class Model { kv04, kv05, kv06, kv07, kv08, trailer, receiver, xtModule };

// A receiver by the roadside, or the module that is built like one.
constexpr bool isReceiver(Model model)
{
    return model == Model::receiver || model == Model::xtModule;
}

enum class Generation {
    standard,
    until2008First,
    until2008Second,
    until2008Last,
    from2009,
    may2010,
    november2012,
    undated, // type codes 4 to 6 without a date in their memory
    v1,
    f3,
    f4,
    f5,
    tacho,
    laneControl
};

enum class Processor { atmega168, atmega328 };

struct FirmwareDate {
    int year = 0; // 2000 to 2255; 0 when not recorded
    int month = 0;
    int day = 0;
    bool isRecorded() const { return year != 0; }
};

struct DecoderProfile {
    TypeCode typeCode = TypeCode::kv04;
    Model model = Model::kv07;
    Generation generation = Generation::standard;
    Processor processor = Processor::atmega328;
    bool processorIsRead = false; // from the decoder's memory; else it is the usual one of the model
    int firmwareVersion = 0;      // 0 in an offline list
    int subLevel = 0;
    int firmwareLevel = 3;
    FirmwareDate firmwareDate;

    // The KV04 until December 2008: its type text is message 299, in whatever language.
    bool isOlderKv04() const;
};

DecoderProfile profileOf(TypeCode typeCode, TextView identification, const CvImage& image,
                         const ReceiverValues& receiver);

// Any type code without a decoder of its own is a receiver's.
Model modelOfTypeCode(TypeCode typeCode);

// The processor of a decoder that does not say which it has.
Processor usualProcessor(Model model);

// "04" to "08"; empty for the others.
TextView modelCode(Model model);

// "KV04" to "KV08", "KV-XT", ...: as shown to people, the same in every language.
TextView modelName(Model model);

// What the decoder is called: message 299 for the KV04 until December 2008, else the name of the model.
Text typeText(const DecoderProfile& profile, const LanguageTables& texts);

// "ATmega168" or "ATmega328".
TextView processorName(Processor processor);

} // namespace karvo
