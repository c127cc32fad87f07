#include "simulator/simulator.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>

namespace karvo::sim
{
namespace
{

using namespace std::chrono_literals;
using namespace std::string_literals;
using Bytes = std::vector<std::uint8_t>;

constexpr Time never = 3600s;

Simulator simulator(std::string_view name, Pace pace = Pace::none, Fault fault = Fault::none)
{
    return {decoderByName(name).value(), pace, fault};
}

// What it answers, however late.
std::string answer(Simulator& simulator, const std::string& sent, Time now = 0us)
{
    simulator.receive(Bytes(sent.begin(), sent.end()), now);
    const Bytes received = simulator.take(never);
    return {received.begin(), received.end()};
}

std::string blockOf(const Bytes& memory)
{
    std::string block(memory.begin(), memory.end());
    return block + static_cast<char>(std::accumulate(memory.begin(), memory.end(), 0) % 256);
}

TEST(Simulator, AnswersAndStoresWhatItIsSent)
{
    struct Case {
        Fault fault;
        std::string sent;
        std::string reply;
        std::size_t place = 0; // where `value` is stored
        std::uint8_t value = 3;
    };
    const Case cases[] = {
        {Fault::none, "xyz%", "27"},
        {Fault::none, "E%", "27"},
        {Fault::none, "EW%", "27"},
        {Fault::none, "%%", "2727"},
        {Fault::none, "R", ""},
        {Fault::none, "er", ""},
        {Fault::none, "EWX", ""},
        {Fault::none, "EEWS", "\6"},
        {Fault::none, "EWEWS", "\6"},
        {Fault::none, "EWS\x63\xC8\x2B", "\6\6", 99, 200},
        {Fault::none, "EWS\0\0\0"s, "\6\6", 0, 0},
        {Fault::none, "EWS\xFF\xFF\xFE", "\6\6", 255, 255},
        {Fault::none, "EWS\x63\xC8\x2C%",
         "\6\x15"
         "27"},                                  // a wrong check byte
        {Fault::none, "EWS%%J", "\6\6", 37, 37}, // "%" is data here
        {Fault::none, "EWM\1\0\1"s, "\6\6"},
        {Fault::none, "EWM\3\xFE\1", "\6\6"},
        {Fault::none, "EWM\0\1\1"s, "\6\x15"},
        {Fault::none, "EWM\4\1\5", "\6\x15"},
        {Fault::none, "EWM\2\1\4", "\6\x15"},
        {Fault::silence, "%EREWS\x63\xC8\x2B", ""},
        {Fault::unknownIdentification, "%", "99"},
        {Fault::refusedCommand, "EWS%EWM%",
         "\x15"
         "27\x15"
         "27"},
        {Fault::refusedFrame, "EWS\x63\xC8\x2B", "\6\x15"},
    };
    for (const Case& expected : cases) {
        auto kv07 = simulator("kv07", Pace::none, expected.fault);
        EXPECT_EQ(answer(kv07, expected.sent), expected.reply) << expected.sent;
        Bytes memory = decoderByName("kv07")->memory;
        memory[expected.place] = expected.value;
        EXPECT_EQ(kv07.decoder().memory, memory) << expected.sent;
        const bool isLive = expected.sent.starts_with("EWM") && expected.reply == "\6\6";
        EXPECT_EQ(kv07.liveValues().size(), isLive ? 1U : 0U) << expected.sent;
    }
    auto kv07 = simulator("kv07");
    answer(kv07, "EWM\2\xFF\1");
    EXPECT_EQ(kv07.liveValues()[0].channel, 2);
    EXPECT_EQ(kv07.liveValues()[0].value, 255);
}

TEST(Simulator, ABlockIsTheMemoryAndItsSum)
{
    for (const char* const name : {"kv04", "kv08", "receiver", "trailer"}) {
        const std::string whole = blockOf(decoderByName(name)->memory);
        std::string wrong = whole;
        ++wrong.back();
        const std::pair<Fault, std::string> cases[] = {
            {Fault::none, whole},
            {Fault::wrongCheckByte, wrong},
            {Fault::shortBlock, whole.substr(0, whole.size() - 100)},
            {Fault::hangUp, whole.substr(0, whole.size() / 2)}};
        for (const auto& [fault, block] : cases) {
            auto device = simulator(name, Pace::none, fault);
            EXPECT_EQ(answer(device, "ER"), block) << name << " " << static_cast<int>(fault);
        }
    }
}

// At 4800 baud a byte takes 2083.3 us.
TEST(Simulator, KeepsTheTimeOfTheLine)
{
    struct Case {
        const char* name;
        Pace pace;
        Fault fault;
        std::vector<std::pair<Time, std::string>> sent;
        std::vector<std::pair<Time, std::size_t>> readable; // by then so many bytes in all
    };
    const Case cases[] = {
        {"kv07",
         Pace::line,
         Fault::none,
         {{1000us, "%"}},
         {{5165us, 0}, {5166us, 1}, {7248us, 1}, {7249us, 2}}},
        {"kv07",
         Pace::line,
         Fault::none,
         {{0us, "ER"}},
         {{6248us, 0}, {6249us, 1}, {2'139'581us, 1024}, {2'139'582us, 1025}}},
        {"kv07", Pace::line, Fault::none, {{0us, "EW"}, {100us, "S"}}, {{8331us, 0}, {8332us, 1}}},
        {"kv04",
         Pace::line,
         Fault::none,
         {{0us, "ER"}, {10'000us, "%"}},
         {{1'072'916us, 513}, {1'077'083us, 515}}},
        {"kv07", Pace::none, Fault::none, {{77us, "ER"}}, {{76us, 0}, {77us, 1025}}},
        {"kv07", Pace::line, Fault::lateBlock, {{1s, "ER"}}, {{13'006'248us, 0}, {13'006'249us, 1}}},
        // 300 ms behind each 128 bytes; a long block ends within 5 s all the same.
        {"kv04",
         Pace::line,
         Fault::tornBlock,
         {{0us, "ER"}},
         {{270'832us, 128}, {572'914us, 128}, {572'915us, 129}, {never, 513}}},
        {"kv07", Pace::line, Fault::tornBlock, {{0us, "ER"}}, {{4'539'582us, 1025}}},
        // A frame is awaited for 2 s.
        {"kv07",
         Pace::none,
         Fault::none,
         {{0us, "EWS"}, {2s, "%"}, {4'000'001us, "%"}},
         {{2s, 1}, {never, 3}}},
    };
    for (const Case& expected : cases) {
        auto device = simulator(expected.name, expected.pace, expected.fault);
        for (const auto& [moment, bytes] : expected.sent)
            device.receive(Bytes(bytes.begin(), bytes.end()), moment);
        std::size_t readable = 0;
        for (const auto& [moment, count] : expected.readable) {
            const auto next = device.nextEvent();
            readable += device.take(moment).size();
            EXPECT_EQ(readable, count) << expected.name << " " << moment.count();
            EXPECT_TRUE(next) << "as long as something is on its way";
        }
    }
}

TEST(Simulator, HangsUpInTheMiddleOfTheBlockAndOnce)
{
    auto device = simulator("kv04", Pace::line, Fault::hangUp);
    device.receive(Bytes{'E', 'R'}, 0us);
    EXPECT_FALSE(device.hungUp(537'498us));
    EXPECT_TRUE(device.hungUp(537'499us)); // 4166 and 256 bytes of 2083.33
    EXPECT_EQ(device.take(never).size(), 256U);
    EXPECT_EQ(device.nextEvent(), 537'499us);
    EXPECT_EQ(answer(device, "%", 600'000us), "") << "nothing passes a line that is gone";
    device.reconnect();
    EXPECT_FALSE(device.hungUp(700'000us));
    EXPECT_EQ(answer(device, "ER", 700'000us).size(), 513U);

    device.setFault(Fault::hangUp);
    answer(device, "ER", 3s);
    device.setFault(Fault::unknownIdentification);
    device.reconnect();
    EXPECT_EQ(answer(device, "%", 6s), "99") << "a fault that was set since stays";
}

TEST(Simulator, AReconnectLosesWhatWasOnItsWay)
{
    auto device = simulator("kv07", Pace::line);
    device.receive(Bytes{'E', 'R'}, 0us);
    device.take(50'000us);
    device.reconnect();
    EXPECT_EQ(device.nextEvent(), std::nullopt);
    EXPECT_EQ(answer(device, "EWS", 60'000us), "\6");
    device.reconnect();
    EXPECT_EQ(answer(device, "%", 70'000us), "27") << "no frame is awaited any more";
}

TEST(Fault, EveryNameGivesAFaultOfItsOwn)
{
    std::set<Fault> faults;
    for (const std::string_view name : faultNames())
        EXPECT_TRUE(faults.insert(faultByName(name).value()).second) << name;
    EXPECT_EQ(faults.size(), static_cast<std::size_t>(Fault::hangUp) + 1) << "none is without a name";
    EXPECT_EQ(faultByName("hangup"), std::nullopt);
}

} // namespace
} // namespace karvo::sim
