#include "simulator/simulator.h"

#include <numeric>
#include <set>

namespace karvo::sim
{

namespace
{

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

constexpr Time never = 3600s;

Decoder decoder(std::string_view name)
{
    return decoderByName(name).value();
}

Bytes bytesOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

// What the simulator answers, however late.
Bytes answer(Simulator& simulator, const Bytes& sent, Time now = 0us)
{
    simulator.receive(sent, now);
    return simulator.take(never);
}

Bytes blockOf(const Decoder& model)
{
    Bytes block = model.memory;
    block.push_back(static_cast<std::uint8_t>(std::accumulate(block.begin(), block.end(), 0) % 256));
    return block;
}

TEST(Simulator, AnswersPercentWithItsIdentification)
{
    for (const auto& [name, reply] :
         {std::pair{"kv07", "27"}, {"trailer", "A7"}, {"receiver-readonly", "81"}}) {
        Simulator simulator(decoder(name), Pace::none, Fault::none);
        EXPECT_EQ(answer(simulator, {0x25}), bytesOf(reply)) << name;
    }
}

TEST(Simulator, BlockIsTheMemoryAndItsSum)
{
    for (const auto& [name, length] : {std::pair{"kv04", 513U}, {"kv08", 1025U}, {"receiver", 513U}}) {
        Simulator simulator(decoder(name), Pace::none, Fault::none);
        const Bytes block = answer(simulator, {0x45, 0x52});
        EXPECT_EQ(block.size(), length) << name;
        EXPECT_EQ(block, blockOf(decoder(name))) << name;
    }
}

TEST(Simulator, CheckByteOfASumOf511Is255)
{
    Decoder flat = decoder("kv07");
    flat.memory.assign(1024, 0);
    flat.memory[0] = 255;
    flat.memory[1023] = 254;
    flat.memory[511] = 2;
    Simulator simulator(flat, Pace::none, Fault::none);
    EXPECT_EQ(answer(simulator, {0x45, 0x52}).back(), 0xFF);
}

TEST(Simulator, WriteStoresTheValueAndAcknowledgesTwice)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}), Bytes{6});
    EXPECT_EQ(answer(simulator, {0x63, 0xC8, 0x2B}), Bytes{6});
    EXPECT_EQ(simulator.decoder().memory[99], 200);
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}), Bytes{6});
    EXPECT_EQ(answer(simulator, {0x00, 0x00, 0x00}), Bytes{6});
    EXPECT_EQ(simulator.decoder().memory[0], 0);
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}), Bytes{6});
    EXPECT_EQ(answer(simulator, {0xFF, 0xFF, 0xFE}), Bytes{6});
    EXPECT_EQ(simulator.decoder().memory[255], 255);
}

TEST(Simulator, WriteWithAWrongCheckByteIsRefusedAndStoresNothing)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    const Bytes before = simulator.decoder().memory;
    answer(simulator, {0x45, 0x57, 0x53});
    EXPECT_EQ(answer(simulator, {0x63, 0xC8, 0x2C}), Bytes{21});
    EXPECT_EQ(simulator.decoder().memory, before);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("27")) << "the next command is understood again";
}

TEST(Simulator, PercentInsideAFrameIsFrameData)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    answer(simulator, {0x45, 0x57, 0x53});
    EXPECT_EQ(answer(simulator, {0x25, 0x25}), Bytes{});
    EXPECT_EQ(answer(simulator, {0x4A}), Bytes{6});
    EXPECT_EQ(simulator.decoder().memory[37], 37);
}

TEST(Simulator, AFrameIsAwaitedForTwoSeconds)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    answer(simulator, {0x45, 0x57, 0x53}, 0us);
    EXPECT_EQ(answer(simulator, {0x25}, 2'000'000us), Bytes{}) << "still frame data";
    EXPECT_EQ(answer(simulator, {0x25}, 4'000'001us), bytesOf("27"));
    EXPECT_EQ(answer(simulator, {0x25}, 4'000'002us), bytesOf("27"));
}

TEST(Simulator, LiveValuesAreAcknowledgedAndChangeNoCv)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    const Bytes before = simulator.decoder().memory;
    for (const Bytes& packet : {Bytes{2, 255, 1}, Bytes{3, 254, 1}, Bytes{1, 0, 1}}) {
        EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x4D}), Bytes{6});
        EXPECT_EQ(answer(simulator, packet), Bytes{6});
    }
    EXPECT_EQ(simulator.decoder().memory, before);
    answer(simulator, {0x45, 0x57, 0x4D});
    EXPECT_EQ(answer(simulator, {1, 0, 2}), Bytes{21});
}

TEST(Simulator, UnknownBytesAreIgnoredUntilACommandIsRecognised)
{
    const std::vector<std::pair<std::string_view, Bytes>> cases{
        {"xyz%", bytesOf("27")},
        {"E%", bytesOf("27")},
        {"EW%", bytesOf("27")},
        {"%%", bytesOf("2727")},
        {"R", {}},
        {"EWX", {}},
        {"EEWS", {6}},
        {"EWEWS", {6}},
        {"er", {}},
    };
    for (const auto& [sent, expected] : cases) {
        Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
        EXPECT_EQ(answer(simulator, bytesOf(sent)), expected) << sent;
    }
}

TEST(Simulator, CommandMayArriveByteByByte)
{
    Simulator simulator(decoder("kv04"), Pace::none, Fault::none);
    EXPECT_EQ(answer(simulator, {0x45}), Bytes{});
    EXPECT_EQ(answer(simulator, {0x52}).size(), 513U);
}

TEST(SimulatorPace, IdentificationFollowsTheLineTimeOfTheCommand)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::none);
    simulator.receive(Bytes{0x25}, 1000us);
    EXPECT_EQ(simulator.nextEvent(), 5166us); // 2083 for "%", 2083 for the first byte of the reply
    EXPECT_EQ(simulator.take(5165us), Bytes{});
    EXPECT_EQ(simulator.take(5166us), bytesOf("2"));
    EXPECT_EQ(simulator.nextEvent(), 7249us);
    EXPECT_EQ(simulator.take(7248us), Bytes{});
    EXPECT_EQ(simulator.take(7249us), bytesOf("7"));
    EXPECT_EQ(simulator.nextEvent(), std::nullopt);
}

TEST(SimulatorPace, LongBlockTakesTheTimeOf1027Bytes)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::none);
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    EXPECT_EQ(simulator.nextEvent(), 6249us); // 4166 for the command, 2083 for the first byte
    EXPECT_EQ(simulator.take(2'139'581us).size(), 1024U);
    EXPECT_EQ(simulator.take(2'139'582us).size(), 1U); // 4166 and 1025 bytes at 4800 baud
}

TEST(SimulatorPace, BytesSentInASecondPieceWaitForTheLine)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::none);
    simulator.receive(Bytes{0x45, 0x57}, 0us);
    simulator.receive(Bytes{0x53}, 100us);
    EXPECT_EQ(simulator.nextEvent(), 8332us); // 4166 for two bytes, 2083 for the third, 2083 for the reply
}

TEST(SimulatorPace, AnswersNeverOvertakeEachOther)
{
    Simulator simulator(decoder("kv04"), Pace::line, Fault::none);
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    simulator.receive(Bytes{0x25}, 10'000us);
    const Bytes all = simulator.take(never);
    ASSERT_EQ(all.size(), 515U);
    EXPECT_EQ(all[513], '1');
    EXPECT_EQ(all[514], '4');
}

TEST(SimulatorPace, WithoutPaceEverythingIsReadableAtOnce)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    simulator.receive(Bytes{0x45, 0x52}, 77us);
    EXPECT_EQ(simulator.take(77us).size(), 1025U);
}

TEST(SimulatorFault, SilenceAnswersNothingAndStoresNothing)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::silence);
    const Bytes before = simulator.decoder().memory;
    EXPECT_EQ(answer(simulator, bytesOf("%ER")), Bytes{});
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53, 0x63, 0xC8, 0x2B}), Bytes{});
    EXPECT_EQ(simulator.nextEvent(), std::nullopt);
    EXPECT_EQ(simulator.decoder().memory, before);
}

TEST(SimulatorFault, UnknownIdentificationIs99)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::unknownIdentification);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("99"));
}

TEST(SimulatorFault, WrongCheckByteIsOffByOne)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::wrongCheckByte);
    Bytes expected = blockOf(decoder("kv07"));
    ++expected.back();
    EXPECT_EQ(answer(simulator, {0x45, 0x52}), expected);
}

TEST(SimulatorFault, ShortBlockEnds100BytesEarly)
{
    Simulator simulator(decoder("kv04"), Pace::none, Fault::shortBlock);
    Bytes expected = blockOf(decoder("kv04"));
    expected.resize(413);
    EXPECT_EQ(answer(simulator, {0x45, 0x52}), expected);
}

TEST(SimulatorFault, LateBlockStartsAfterTwelveSeconds)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::lateBlock);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("27"));
    simulator.receive(Bytes{0x45, 0x52}, 1'000'000us);
    EXPECT_EQ(simulator.nextEvent(), 13'006'249us);
    EXPECT_EQ(simulator.take(never), blockOf(decoder("kv07")));
}

TEST(SimulatorFault, TornBlockPausesAfterEach128Bytes)
{
    Simulator simulator(decoder("kv04"), Pace::line, Fault::tornBlock);
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    Bytes block = simulator.take(270'832us); // 4166 and 128 bytes of 2083.33
    EXPECT_EQ(block.size(), 128U);
    EXPECT_EQ(simulator.nextEvent(), 572'915us); // 300 ms and one byte later
    const Bytes rest = simulator.take(never);
    block.insert(block.end(), rest.begin(), rest.end());
    EXPECT_EQ(block, blockOf(decoder("kv04")));
}

TEST(SimulatorFault, TornLongBlockStillEndsWithinFiveSeconds)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::tornBlock);
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    EXPECT_EQ(simulator.take(4'539'582us).size(), 1025U); // eight pauses
}

TEST(SimulatorFault, RefusedCommandAnswers21AndAwaitsNoFrame)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::refusedCommand);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("27"));
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}), Bytes{21});
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x4D}), Bytes{21});
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("27"));
}

TEST(SimulatorFault, RefusedFrameAnswers21OnlyToTheFrame)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::refusedFrame);
    const Bytes before = simulator.decoder().memory;
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}), Bytes{6});
    EXPECT_EQ(answer(simulator, {0x63, 0xC8, 0x2B}), Bytes{21});
    EXPECT_EQ(simulator.decoder().memory, before);
}

TEST(SimulatorFault, HangUpComesInTheMiddleOfTheBlockAndOnce)
{
    Simulator simulator(decoder("kv04"), Pace::line, Fault::hangUp);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("14"));
    simulator.reconnect();
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    EXPECT_FALSE(simulator.hungUp(537'498us));
    EXPECT_TRUE(simulator.hungUp(537'499us)); // 4166 and 256 bytes of 2083.33
    EXPECT_EQ(simulator.take(never).size(), 256U);
    EXPECT_EQ(simulator.nextEvent(), 537'499us);

    simulator.receive(Bytes{0x25}, 600'000us);
    EXPECT_EQ(simulator.take(never), Bytes{}) << "nothing passes a line that is gone";

    simulator.reconnect();
    EXPECT_FALSE(simulator.hungUp(700'000us));
    EXPECT_EQ(answer(simulator, {0x45, 0x52}, 700'000us), blockOf(decoder("kv04")));
}

TEST(SimulatorFault, FaultSetAfterAHangUpSurvivesTheReconnect)
{
    Simulator simulator(decoder("kv04"), Pace::none, Fault::hangUp);
    answer(simulator, {0x45, 0x52});
    simulator.setFault(Fault::unknownIdentification);
    simulator.reconnect();
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("99"));
}

TEST(SimulatorFault, FaultMayChangeBetweenTwoExchanges)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::silence);
    EXPECT_EQ(answer(simulator, {0x25}), Bytes{});
    simulator.setFault(Fault::none);
    EXPECT_EQ(answer(simulator, {0x25}), bytesOf("27"));
}

TEST(Simulator, ReconnectLosesWhatWasOnItsWay)
{
    Simulator simulator(decoder("kv07"), Pace::line, Fault::none);
    simulator.receive(Bytes{0x45, 0x52}, 0us);
    simulator.take(50'000us);
    simulator.reconnect();
    EXPECT_EQ(simulator.nextEvent(), std::nullopt);
    EXPECT_EQ(answer(simulator, {0x45, 0x57, 0x53}, 60'000us), Bytes{6});
    simulator.reconnect();
    EXPECT_EQ(answer(simulator, {0x25}, 70'000us), bytesOf("27")) << "no frame is awaited any more";
}

TEST(Fault, EveryNameGivesAFaultOfItsOwn)
{
    std::set<Fault> faults;
    for (const std::string_view name : faultNames())
        EXPECT_TRUE(faults.insert(faultByName(name).value()).second) << name;
    EXPECT_EQ(faults.size(), static_cast<std::size_t>(Fault::hangUp) + 1) << "none is without a name";
    EXPECT_EQ(faultByName("hangup"), std::nullopt);
    EXPECT_EQ(faultByName(""), std::nullopt);
}

TEST(Simulator, KeepsLiveValuesAndStoresNone)
{
    Simulator simulator(decoder("kv07"), Pace::none, Fault::none);
    EXPECT_EQ(answer(simulator, bytesOf("EWM")), (Bytes{6}));
    EXPECT_EQ(answer(simulator, {2, 255, 1}), (Bytes{6}));
    for (const Bytes& wrong : {Bytes{4, 1, 5}, Bytes{0, 1, 1}, Bytes{2, 1, 4}}) {
        answer(simulator, bytesOf("EWM"));
        EXPECT_EQ(answer(simulator, wrong), (Bytes{21}));
    }
    ASSERT_EQ(simulator.liveValues().size(), 1U);
    EXPECT_EQ(simulator.liveValues()[0].channel, 2);
    EXPECT_EQ(simulator.liveValues()[0].value, 255);
    EXPECT_EQ(simulator.decoder().memory, decoder("kv07").memory);
}

} // namespace

} // namespace karvo::sim
