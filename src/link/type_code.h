// What a decoder's identification says of it (docs/protocol.md, "The line").
#pragma once

namespace karvo
{

// The numbers stand in the names of some files.
enum class TypeCode {
    kv04 = 0,
    kv05 = 1,
    kv06 = 2,
    kv04From2010 = 4,
    kv05From2010 = 5,
    kv06From2010 = 6,
    kv07 = 7,
    kv08 = 8,
    trailer = 57,
    receiver = 80,
    readOnlyReceiver = 81 // answers a full read only; a write takes it for unknown
};

constexpr int numberOf(TypeCode code)
{
    return static_cast<int>(code);
}

// Receivers, and whatever is built like them.
constexpr bool isReceiver(TypeCode code)
{
    return code >= TypeCode::receiver;
}

constexpr bool isKv07OrKv08(TypeCode code)
{
    return code == TypeCode::kv07 || code == TypeCode::kv08;
}

} // namespace karvo
