#include "simulator/simulator.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <sstream>

namespace karvo::sim
{
namespace
{

using namespace std::chrono_literals;
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
    for (const auto& [fault, sent, reply, stored] : test::casesOf<4>("simulator/answers.txt")) {
        auto kv07 = simulator("kv07", Pace::none, faultByName(fault).value());
        EXPECT_EQ(answer(kv07, sent), reply) << sent;
        Bytes memory = decoderByName("kv07")->memory;
        std::istringstream values(stored);
        char equals = 0;
        for (std::size_t place = 0, value = 0; values >> place >> equals >> value;)
            memory[place] = static_cast<std::uint8_t>(value);
        EXPECT_EQ(kv07.decoder().memory, memory) << sent;
        const bool isLive = sent.starts_with("EWM") && reply == "\6\6";
        EXPECT_EQ(kv07.liveValues().size(), isLive ? 1U : 0U) << sent;
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

TEST(Simulator, KeepsTheTimeOfTheLine)
{
    for (const auto& [name, pace, fault, sent, readable] : test::casesOf<5>("simulator/timing.txt")) {
        auto device = simulator(name, pace == "line" ? Pace::line : Pace::none, faultByName(fault).value());
        std::istringstream commands(sent);
        std::string command;
        for (std::int64_t moment = 0; commands >> moment >> command;)
            device.receive(Bytes(command.begin(), command.end()), Time(moment));
        std::istringstream counts(readable);
        std::size_t total = 0;
        std::size_t count = 0;
        for (std::int64_t moment = 0; counts >> moment >> count;) {
            const auto next = device.nextEvent();
            total += device.take(Time(moment)).size();
            EXPECT_EQ(total, count) << name << " " << sent << " " << moment;
            EXPECT_TRUE(next) << "as long as something is on its way";
        }
    }
}

TEST(Simulator, TellsEachCommandAndReplyToWhoeverWatches)
{
    for (const auto& [fault, baud, sent, expected] : test::casesOf<4>("simulator/watched.txt")) {
        auto device = simulator("kv07", Pace::none, faultByName(fault).value());
        device.setBaud(std::stoi(baud));
        std::string told;
        device.setWatcher([&](const Passed& passed) {
            told += std::string(told.empty() ? "" : " ") + (passed.isReply ? '<' : '>') +
                    std::string(passed.word) + '=' +
                    (passed.word == "block" ? "*" : std::string(passed.bytes.begin(), passed.bytes.end()));
        });
        std::istringstream pieces(sent);
        Time moment = 0us;
        for (std::string piece; std::getline(pieces, piece, '~'); moment += 3s)
            device.receive(Bytes(piece.begin(), piece.end()), moment);
        EXPECT_EQ(told, expected);
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

// What holds for every one; what tells them apart is what the descriptions of the CVs are chosen by.
TEST(Decoder, LeavesTheFactoryInOrder)
{
    const auto names = decoderNames();
    EXPECT_EQ(names.size(), 36U);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const auto decoder = decoderByName(name);
        ASSERT_TRUE(decoder);
        EXPECT_EQ(decoder->name, name);
        const auto cv = [&](std::size_t number) { return int{decoder->memory.at(number - 1)}; };
        const bool isNewer = decoder->identification == "27" || decoder->identification == "28";
        EXPECT_EQ(decoder->memory.size(), isNewer ? 1024U : 512U);
        EXPECT_TRUE(cv(1) == 3 && cv(29) == 0) << "the short address three";
        EXPECT_TRUE(cv(174) == 0 || cv(175) == 0);
        for (std::size_t number = 258; number <= 496; ++number)
            EXPECT_NE(cv(number), cv(number - 1)) << "a shifted block must show";
        const bool hasNoTable = name == "kv07-v1" || name == "kv08-v1" || name.starts_with("trailer") ||
                                name.starts_with("receiver");
        if (hasNoTable) {
            EXPECT_EQ(cv(73), name.starts_with("receiver") ? cv(7) : 0);
            continue;
        }
        EXPECT_EQ(cv(97), 5);
        EXPECT_EQ(cv(2), 5) << "the base speed is that of step 1";
        EXPECT_EQ(cv(5), cv(70)) << "the top speed is that of step 28";
        EXPECT_GE(cv(73), 4);
        for (std::size_t step = 2; step <= 28; ++step)
            EXPECT_GT(cv(98 - step), cv(98 - step + 1)) << "step " << step;
    }
    EXPECT_EQ(decoderByName("KV07-F3")->name, "kv07-f3");
    for (const auto* name : {"", "kv", "kv07-", "kv09", "kv077", " kv07"})
        EXPECT_FALSE(decoderByName(name)) << name;
}

} // namespace
} // namespace karvo::sim
