#include "link/port_choice.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{

using test::LinkBench;

TEST(PortChoiceTest, OnlyOneToThirtyOneIsAPort)
{
    EXPECT_EQ(portNumberFromSetting(Text(u"31")), 31);
    for (const TextView stored : {u"", u"0", u"32", u"-4", u"COM5", u"5.0"})
        EXPECT_EQ(portNumberFromSetting(Text(stored)), 1) << utf8FromText(stored);
    EXPECT_EQ(portNumberFromSetting(std::nullopt), 1);
    EXPECT_EQ(portNumberToBeginWith({5}), 5);
    EXPECT_EQ(portNumberToBeginWith({4, 5}), 1);
}

TEST(PortChoiceTest, TheSearchTriesAllInOrderAndChoosingStoresTheNumber)
{
    LinkBench bench;
    test::MemorySettings settings;
    bench.line.stayPresent({12, 1, 31});
    choosePort(bench.state, bench.line, settings, 12);
    EXPECT_EQ(settings.values["Parameter/Com_Port"], u"12");
    EXPECT_EQ(bench.state.portNumber, 12);
    ASSERT_FALSE(bench.line.open());
    EXPECT_EQ(searchPorts(bench.state, bench.line), (std::vector<int>{1, 12, 31}));
    EXPECT_FALSE(bench.line.isOpen());
    EXPECT_EQ(bench.line.portNumber(), 12);
    EXPECT_EQ(bench.journal,
              (test::Journal{"open 12", "close", "open 1", "close", "open 12", "close", "open 31", "close"}));
    bench.line.open();
    choosePort(bench.state, bench.line, settings, 4);
    EXPECT_FALSE(bench.line.isOpen());
}

} // namespace karvo
