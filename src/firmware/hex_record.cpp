#include "firmware/hex_record.h"

#include "program/bytes.h"

namespace karvo
{

namespace
{

constexpr std::size_t bytesAroundData = 5; // length, address (2), type, checksum
constexpr std::size_t longestLine = 1 + 2 * (255 + bytesAroundData);
constexpr TextView mayTrail = u" \t\x1A";

std::uint8_t lowByte(std::size_t number)
{
    return static_cast<std::uint8_t>(number & 0xFF);
}

} // namespace

TextView withoutTrail(TextView line)
{
    return line.substr(0, line.find_last_not_of(mayTrail) + 1);
}

std::variant<HexRecord, FileFault> hexRecordOf(TextView line)
{
    if (line.empty() || line.front() != u':')
        return FileFault::lineForm;
    if (line.size() > longestLine)
        return FileFault::lineLength;
    const auto bytes = bytesFromHex(line.substr(1));
    if (!bytes || bytes->empty())
        return FileFault::lineForm;
    if (bytes->size() != bytes->front() + bytesAroundData)
        return FileFault::lineLength;
    if (checkByte(*bytes) != 0)
        return FileFault::lineSum;
    const Bytes& all = *bytes;
    if (all[3] > static_cast<std::uint8_t>(HexRecordType::linearStart))
        return FileFault::lineType;
    return HexRecord{all[1] * std::size_t{256} + all[2], static_cast<HexRecordType>(all[3]),
                     Bytes(all.begin() + 4, all.end() - 1)};
}

std::optional<FileRefusal> refusalBehindEnd(LineReader& reader)
{
    while (const auto line = reader.next()) {
        if (!withoutTrail(*line).empty())
            return FileRefusal{FileFault::linesBehindEnd, reader.number()};
    }
    return std::nullopt;
}

Text hexRecordLine(const HexRecord& record)
{
    Bytes bytes = {lowByte(record.data.size()), lowByte(record.address / 256), lowByte(record.address),
                   static_cast<std::uint8_t>(record.type)};
    bytes.insert(bytes.end(), record.data.begin(), record.data.end());
    bytes.push_back(lowByte(0x100U - checkByte(bytes)));
    Text line = u":";
    for (const auto byte : bytes)
        line += hexPair(byte);
    return line;
}

} // namespace karvo
